#include "ui/widgets/text.h"

namespace vantor::ui {

QString plainToolTip(const QString& text) {
    // Tool tips guess whether they hold markup; only text that is markup for sure is never guessed wrong.
    return text.isEmpty()
               ? QString()
               : QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

} // namespace vantor::ui
