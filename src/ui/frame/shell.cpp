#include "ui/frame/shell.h"

#include "ui/generator/qr_generator_view.h"
#include "ui/main/prep_main_view.h"
#include "ui/sheets/sheet.h"

#include <QApplication>
#include <QShortcut>
#include <utility>

namespace vantor::ui {
namespace {

void bringForward(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    // A window that a sheet blocks takes no keys.
    auto* const front = windowInFrontOf(&window);
    front->raise();
    front->activateWindow();
}

} // namespace

Shell::~Shell() {
    delete m_generator.data();
    delete m_main.data();
}

PrepMainView& Shell::openMain() {
    if (!m_main) {
        m_main = new PrepMainView(m_services, [this] { openGenerator(); });
        m_main->setAttribute(Qt::WA_DeleteOnClose);
    }
    bringForward(*m_main);
    return static_cast<PrepMainView&>(*m_main);
}

QRGeneratorView& Shell::openGenerator() {
    if (!m_generator) {
        m_generator = new QRGeneratorView(m_services);
        m_generator->setAttribute(Qt::WA_DeleteOnClose);
        for (const auto& keys : {QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)})
            QObject::connect(new QShortcut(keys, m_generator), &QShortcut::activated, m_generator,
                             &QWidget::close);
        QObject::connect(new QShortcut(Qt::CTRL | Qt::Key_Q, m_generator), &QShortcut::activated, m_generator,
                         [] { QApplication::closeAllWindows(); });
    }
    bringForward(*m_generator);
    return static_cast<QRGeneratorView&>(*m_generator);
}

void Shell::openFiles(HandedFiles handed) {
    openMain().openShootFiles(std::move(handed));
}

} // namespace vantor::ui
