// Remembers where a window was and how large, from one opening to the next.
#pragma once

#include "platform/key_value_store.h"

#include <QObject>
#include <QWidget>
#include <string>

namespace vantor::ui {

// Lives as a child of its window: gives it its place back at once, and stores it when the window closes.
class WindowPlace : public QObject {
public:
    // `defaultSize` serves where nothing is remembered.
    WindowPlace(QWidget* window, KeyValueStore& store, const QSize& defaultSize);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_window;
    KeyValueStore& m_store;
    std::string m_key;
};

} // namespace vantor::ui
