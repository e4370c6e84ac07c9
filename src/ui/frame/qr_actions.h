// What can be done with a set's QR code on screen.
#pragma once

#include "model/shoot.h"
#include "ui/frame/services.h"
#include "ui/widgets/widgets.h"

#include <QTimer>

namespace vantor::ui {

// Edges in pixels: of codes that are copied or saved, and of those that are shown.
inline constexpr int kSavedCodeSize = 600;
inline constexpr int kShownCodeSize = 300;

// Asks where to, and writes the code as a PNG of 600 × 600 pixels; the notice strip tells what became of it.
void saveQRAsPng(const QWidget* asking, const SetData& set, const Services& services);

// CopiedNote: says for a moment that a code was copied. Keeps its place while it says nothing.
class CopiedNote : public TextLabel {
public:
    CopiedNote();

    void tell();

private:
    QTimer m_hiding;
};

} // namespace vantor::ui
