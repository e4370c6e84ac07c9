// DocumentNotices: tells what was done to the document, and whether it is saved.
//
// - After every deletion and import, and after undo and redo: what happened, with the way back, as long as that is the
//   newest step.
// - While something is not saved: that, and why, with "Opnieuw proberen"; and once when all is saved again.
// - Borrows all that it is given.
#pragma once

#include "store/document.h"
#include "store/store_folder.h"
#include "view/notices.h"

#include <string>

namespace vantor {

class DocumentNotices {
public:
    // Without a folder nothing is ever saved.
    DocumentNotices(Document& document, StoreFolder* folder, Notices& notices);

private:
    void tellStep(const Changed& changed);
    void tellSaving();

    Document& m_document;
    StoreFolder* m_folder;
    Notices& m_notices;
    bool m_wasUnsaved = false;
    Subscription m_changes;
    Subscription m_saving;
};

// Why a file could not be written, as a person says it: "de schijf is vol".
[[nodiscard]] std::string reasonInWords(const FileFailure& failure);

} // namespace vantor
