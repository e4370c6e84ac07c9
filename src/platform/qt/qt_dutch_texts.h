// The texts that the toolkit itself shows, in Dutch: buttons, menus of text fields, file dialogs.
#pragma once

class QCoreApplication;

namespace vantor {

// Once, before the first window, whatever the desktop's language. Dates and numbers follow. What the
// toolkit's translation lacks, or everything where it is not installed, stays English.
void useDutchTexts(QCoreApplication& application);

} // namespace vantor
