#include "view/document_notices.h"

#include "base/text_lookup.h"

#include <algorithm>
#include <utility>

namespace vantor {
namespace {

const std::string kStepTopic = "step";
const std::string kSavingTopic = "saving";

std::string linesLeftOut(const ImportReport& leftOut) {
    constexpr std::size_t kMostNamed = 5;
    std::string numbers;
    for (std::size_t i = 0; i < std::min(leftOut.size(), kMostNamed); ++i)
        numbers += (i > 0 ? ", " : "") + std::to_string(leftOut[i].line);
    if (leftOut.size() > kMostNamed)
        numbers += ", …";
    return leftOut.size() == 1
               ? lookUp("1 regel overgeslagen: regel %1", {numbers})
               : lookUp("%1 regels overgeslagen: regel %2", {std::to_string(leftOut.size()), numbers});
}

} // namespace

std::string reasonInWords(const FileFailure& failure) {
    using enum FileFailure::Reason;
    switch (failure.reason) {
    case NoSpace:
        return lookUp("de schijf is vol");
    case NotPermitted:
        return lookUp("je mag daar niet schrijven");
    case ReadOnly:
        return lookUp("de schijf is alleen te lezen");
    case Missing:
        return lookUp("de map is er niet");
    case NameTooLong:
        return lookUp("de naam is te lang");
    case NameTaken:
        return lookUp("die naam is al in gebruik");
    case NotAFile:
        return lookUp("daar staat geen gewoon bestand");
    case Abandoned:
        return lookUp("het is afgebroken");
    case NotDurable:
        return lookUp("de schijf bevestigt niet dat het er staat");
    case Other:
        break;
    }
    return failure.systemError != 0 ? failure.systemText() : lookUp("het lukte niet");
}

DocumentNotices::DocumentNotices(Document& document, StoreFolder* folder, Notices& notices)
    : m_document(document),
      m_folder(folder),
      m_notices(notices) {
    m_changes = document.didChange().connect([this](const Changed& changed) { tellStep(changed); });
    if (folder != nullptr)
        m_saving = folder->savingChanged().connect([this] { tellSaving(); });
}

void DocumentNotices::tellStep(const Changed& changed) {
    using Cause = Changed::Cause;
    if (changed.step.empty()) {
        if (!changed.leftOut.empty())
            m_notices.show({Notice::Kind::Warning,
                            lookUp("Niets geïmporteerd; %1", {linesLeftOut(changed.leftOut)}),
                            {},
                            kStepTopic});
        return;
    }
    // What it offered to take back is not the newest step any more.
    m_notices.withdraw(kStepTopic);
    if (!changed.isTold)
        return;
    Notice notice{Notice::Kind::Done, changed.step, {}, kStepTopic};
    if (changed.cause == Cause::Undone) {
        notice.text = lookUp("Ongedaan gemaakt: %1", {changed.step});
        notice.actions.push_back({lookUp("Opnieuw"), [this] { m_document.redo(); }});
    } else {
        if (!changed.leftOut.empty())
            notice.text = lookUp("%1; %2", {changed.step, linesLeftOut(changed.leftOut)});
        notice.actions.push_back({lookUp("Ongedaan maken"), [this] { m_document.undo(); }});
    }
    m_notices.show(std::move(notice));
}

void DocumentNotices::tellSaving() {
    const auto unsaved = m_folder->unsaved();
    if (unsaved) {
        m_notices.show({Notice::Kind::Error,
                        lookUp("Niet bewaard: %1", {reasonInWords(unsaved->why)}),
                        {{lookUp("Opnieuw proberen"), [this] { m_folder->saveAgain(); }}},
                        kSavingTopic});
    } else if (m_wasUnsaved) {
        m_notices.show({Notice::Kind::Done, lookUp("Alles is weer bewaard"), {}, kSavingTopic});
    }
    m_wasUnsaved = unsaved.has_value();
}

} // namespace vantor
