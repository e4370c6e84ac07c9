#include "platform/qt/settings_portal.h"

#include <QMetaType>

namespace vantor {

SettingsPortal::SettingsPortal(const QDBusConnection& bus)
    : QDBusAbstractInterface(QStringLiteral("org.freedesktop.portal.Desktop"),
                             QStringLiteral("/org/freedesktop/portal/desktop"),
                             "org.freedesktop.portal.Settings", bus, nullptr) {
    // The toolkit finds the types of a signal by their names, and knows this one only once something was sent or
    // received that has it; until then it connects nothing, and says nothing.
    qRegisterMetaType<QDBusVariant>();
}

QDBusPendingCall SettingsPortal::read(const QString& function, const QString& group, const QString& key) {
    return asyncCall(function, group, key);
}

} // namespace vantor
