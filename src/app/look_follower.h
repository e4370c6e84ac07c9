// LookFollower: keeps the application's look in step with what the desktop, its toolkit and the environment say.
#pragma once

#include "base/signal.h"
#include "platform/desktop_settings.h"
#include "view/look.h"

#include <QObject>
#include <functional>
#include <optional>
#include <string>

namespace vantor {

class LookFollower final : public QObject {
public:
    // `apply` sets the application's style and palette: now, and whenever another look is wanted, once on the next
    // turn of the event loop, however many changes were told. `environment` is VANTOR_COLOR_SCHEME.
    //
    // The palette of the application must still be that of the platform, and a style that changes the platform's
    // palette by itself, in polish() or standardPalette(), would be taken for the platform.
    LookFollower(DesktopSettings& desktop, std::string environment, std::function<void(const Look&)> apply);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void schedule();
    void update();

    DesktopSettings& m_desktop;
    std::string m_environment;
    std::function<void(const Look&)> m_apply;
    bool m_platformIsDark;
    bool m_themeHasChanged = false;
    std::optional<Look> m_applied;
    Subscription m_subscription;
};

} // namespace vantor
