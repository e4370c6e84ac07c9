// Where windows are and how large: within the screen, and from one opening to the next.
#pragma once

#include "platform/key_value_store.h"

#include <QObject>
#include <QSize>
#include <QWidget>
#include <optional>
#include <string>

namespace vantor::ui {

// The largest that a window may be for all of it, its frame too, to stand within the free part of its screen.
[[nodiscard]] QSize roomOnScreen(const QWidget& window);
// Moves a shown window up and to the left as far as it stands beyond the free part of its screen.
void moveOntoScreen(QWidget& window);

// Lets a window become as small as its screen, whatever the least is that it may be elsewhere.
void allowForScreen(QWidget& window);

// How large its user made a window of this name that stands over one with a WindowPlace; absent where that was never done. To be
// held against what it needs and what its screen has by then.
[[nodiscard]] std::optional<QSize> rememberedSize(const QWidget& window);
void rememberSize(const QWidget& window, const QSize& size);

// Lives as a child of its window: gives it its place back at once, and stores it when the window closes. Where its screen
// is smaller than the window, or than the least it may be, the screen decides.
class WindowPlace : public QObject {
public:
    // `defaultSize` serves where nothing is remembered.
    WindowPlace(QWidget* window, KeyValueStore& store, const QSize& defaultSize);

    // The store of that one which this window is, or stands over; null where there is none.
    [[nodiscard]] static KeyValueStore* storeFor(const QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_window;
    KeyValueStore& m_store;
    std::string m_key;
};

} // namespace vantor::ui
