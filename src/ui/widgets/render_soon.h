// RenderSoon: redraws once on the next turn of the event loop, however often it was asked to.
//
// Stores announce a change before it takes effect; by the next turn it has. Does nothing once it is gone.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <utility>

namespace vantor::ui {

class RenderSoon {
public:
    explicit RenderSoon(std::function<void()> render) {
        m_timer.setSingleShot(true);
        QObject::connect(&m_timer, &QTimer::timeout, [render = std::move(render)] { render(); });
    }

    void request() {
        if (!m_timer.isActive())
            m_timer.start(0);
    }

private:
    QTimer m_timer;
};

} // namespace vantor::ui
