#include "platform/qt/settings_portal.h"

namespace vantor {

SettingsPortal::SettingsPortal(const QDBusConnection& bus)
    : QDBusAbstractInterface(QStringLiteral("org.freedesktop.portal.Desktop"),
                             QStringLiteral("/org/freedesktop/portal/desktop"),
                             "org.freedesktop.portal.Settings", bus, nullptr) {}

QDBusPendingCall SettingsPortal::read(const QString& function, const QString& group, const QString& key) {
    return asyncCall(function, group, key);
}

} // namespace vantor
