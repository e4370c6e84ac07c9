// QtDesktopSettings: a DesktopSettings that asks the desktop's settings portal, over its bus.
//
// - Nothing waits for the portal but awaitAnswers(). What it does not tell, or not in a form that makes sense, is
//   unknown; nothing else comes of a bus or a portal that is missing, broken or slow.
// - A portal that comes later, or anew, is asked again. While there is none, what was known last stays.
// - As signals on the bus, each change of a setting is told by itself.
#pragma once

#include "platform/desktop_settings.h"
#include "platform/qt/settings_portal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QString>
#include <QVariant>
#include <array>
#include <chrono>

namespace vantor {

class QtDesktopSettings final : public DesktopSettings {
public:
    // Asks at once.
    explicit QtDesktopSettings(const QDBusConnection& bus = QDBusConnection::sessionBus());
    QtDesktopSettings(const QtDesktopSettings&) = delete;
    QtDesktopSettings& operator=(const QtDesktopSettings&) = delete;

    // Runs the event loop, without the user's input, until what was asked is answered, but not for longer. Without
    // it, the first picture of a window would be that of a desktop of which nothing is known.
    void awaitAnswers(std::chrono::milliseconds atMost);

    [[nodiscard]] const DesktopLook& look() const override { return m_look; }

private:
    struct Setting;
    static const std::array<Setting, 4> kSettings;

    void askForAll();
    void ask(const Setting& setting, const QString& function);
    void answered(const Setting& setting, const QString& function, const QDBusMessage& reply);
    void take(const Setting& setting, QVariant value);

    SettingsPortal m_portal;
    QDBusServiceWatcher m_owner;
    DesktopLook m_look;
    int m_unanswered = 0;
    QEventLoop* m_wait = nullptr;
};

} // namespace vantor
