#include "ui/window_place.h"

#include <QEvent>

namespace vantor::ui {

WindowPlace::WindowPlace(QWidget* window, KeyValueStore& store, const QSize& defaultSize)
    : QObject(window),
      m_window(window),
      m_store(store),
      m_key("vantorprep.windowPlace." + window->objectName().toStdString()) {
    window->resize(defaultSize);
    if (const auto place = m_store.text(m_key))
        window->restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(*place)));
    window->installEventFilter(this);
}

bool WindowPlace::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Close)
        m_store.setText(m_key, m_window->saveGeometry().toBase64().toStdString());
    return false;
}

} // namespace vantor::ui
