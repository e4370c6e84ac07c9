// SettingsPortal: the desktop's settings as they stand on its bus (interface org.freedesktop.portal.Settings).
#pragma once

#include <QDBusAbstractInterface>
#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QString>

namespace vantor {

class SettingsPortal final : public QDBusAbstractInterface {
    Q_OBJECT

public:
    explicit SettingsPortal(const QDBusConnection& bus);

    // A call of one of its functions that read a setting, without waiting.
    [[nodiscard]] QDBusPendingCall read(const QString& function, const QString& group, const QString& key);

    // By the name that it has on the bus, where the toolkit looks for it.
    Q_SIGNAL void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};

} // namespace vantor
