// Shell: the program's two windows, each there at most once, and the files that the desktop hands over.
#pragma once

#include "ui/frame/services.h"
#include "ui/main/handed_files.h"

#include <QPointer>
#include <QWidget>

namespace vantor::ui {

class PrepMainView;
class QRGeneratorView;

class Shell {
public:
    explicit Shell(const Services& services) : m_services(services) {}
    ~Shell();
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    // Open the window, or bring the one that is open to the front.
    PrepMainView& openMain();
    QRGeneratorView& openGenerator();

    // Adds the shoot of each file, in order, in the main window, which comes to the front. Reads them beside it.
    void openFiles(HandedFiles handed);

private:
    const Services& m_services;
    QPointer<QWidget> m_main;
    QPointer<QWidget> m_generator;
};

} // namespace vantor::ui
