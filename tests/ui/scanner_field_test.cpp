#include "tests/support/event_loop.h"
#include "tests/ui/ui_fixture.h"

#include <QClipboard>
#include <QMenu>
#include <QThread>

namespace vantor::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// The key that types a character, a line feed as Return, and its text.
std::pair<int, QString> keyOf(char character) {
    const QChar typed = QLatin1Char(character);
    return character == '\n' ? std::pair<int, QString>(Qt::Key_Return, "\r")
                             : std::pair(typed.toUpper().unicode(), typed);
}

// Types a text as a scanner does, so many milliseconds a key; the result is the time of the last one.
std::uint64_t burst(QWidget& on, std::uint64_t at, std::string_view text, std::uint64_t pace = 5) {
    for (const char each : text) {
        const auto [key, typed] = keyOf(each);
        pressAt(on, at += pace, key, typed);
    }
    return at;
}

// Longer than a scanner ever pauses, and than the field looks once more for keys after that.
void silence() {
    runFor(200ms);
    runFor(50ms);
    settle();
}

// --- the field by itself

class Scanner : public ::testing::Test {
protected:
    Scanner() : m_field([this] { submit(); }) {
        m_field.show();
        m_field.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_field));
        m_field.setFocus();
    }

    void submit() {
        m_cards.push_back(m_field.text().toStdString());
        m_field.clear();
    }
    std::uint64_t type(std::uint64_t at, const char* text) { return burst(m_field, at, text); }

    ui::ScannerField m_field;
    std::vector<std::string> m_cards;
};

TEST_F(Scanner, SubmitsAWholeCardOnceItFallsSilentAfterAReturn) {
    auto at = type(1000, "SET:1\nBRAND:Marvis\nITEM:broek/bruin");
    silence();
    EXPECT_EQ(m_field.text(), "SET:1\nBRAND:Marvis\nITEM:broek/bruin");
    EXPECT_THAT(m_cards, IsEmpty());
    type(at, "\n");
    EXPECT_THAT(m_cards, IsEmpty());
    silence();
    EXPECT_EQ(m_field.text(), "");
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:Marvis\nITEM:broek/bruin"));
}

TEST_F(Scanner, JudgesKeysThatHadToWaitByTheirOwnTimes) {
    std::uint64_t at = 1000;
    for (const bool timerComesFirst : {false, true}) {
        SCOPED_TRACE(timerComesFirst);
        m_cards.clear();
        at = type(at + 5000, "SET:1\n");
        // The program is busy for longer than a scanner pauses, while the keys are pressed on time.
        QThread::msleep(250);
        if (timerComesFirst)
            QCoreApplication::processEvents();
        at = type(at, "BRAND:X\n");
        EXPECT_THAT(m_cards, IsEmpty());
        silence();
        EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X"));
    }
}

TEST_F(Scanner, TwoCardsThatWaitedTogetherStayTwo) {
    const auto at = type(1000, "SET:1\nBRAND:X\n");
    type(at + 400, "SET:2\nBRAND:X\n");
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X"));
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X", "SET:2\nBRAND:X"));
}

TEST_F(Scanner, ReturnInAnEmptyFieldDoesNothing) {
    type(1000, "\n");
    silence();
    EXPECT_THAT(m_cards, IsEmpty());
    type(5000, "\na");
    EXPECT_EQ(m_field.text(), "a");
}

TEST_F(Scanner, ModifiersPressedOnTheirWayDoNotCount) {
    auto at = type(1000, "a\n");
    pressAt(m_field, at += 10, Qt::Key_Shift);
    pressAt(m_field, at += 10, Qt::Key_B, QStringLiteral("B"), Qt::ShiftModifier);
    EXPECT_EQ(m_field.text(), "a\nB");
    at = type(at, "\n");
    pressAt(m_field, at + 10, Qt::Key_Shift);
    silence();
    EXPECT_THAT(m_cards, ElementsAre("a\nB")) << "one after the last Return holds the card up";
}

TEST_F(Scanner, AllKeysThatScannersSendForAnEndOfLineBreakLinesAndEndCards) {
    struct LineKey {
        int key;
        const char* text;
        Qt::KeyboardModifiers modifiers;
    };
    std::uint64_t at = 1000;
    for (const auto& [key, text, modifiers] :
         {LineKey{Qt::Key_Return, "\r", Qt::NoModifier}, LineKey{Qt::Key_Enter, "\r", Qt::KeypadModifier},
          LineKey{Qt::Key_J, "\n", Qt::ControlModifier}, LineKey{Qt::Key_J, "", Qt::ControlModifier},
          LineKey{Qt::Key_M, "\r", Qt::ControlModifier}, LineKey{Qt::Key_M, "", Qt::ControlModifier},
          LineKey{Qt::Key_unknown, "\n", Qt::NoModifier}}) {
        SCOPED_TRACE(std::to_string(key) + " \"" + text + "\"");
        m_cards.clear();
        at = type(at + 5000, "SET:1");
        pressAt(m_field, at += 15, key, QLatin1String(text), modifiers);
        at = type(at, "BRAND:X");
        pressAt(m_field, at += 15, key, QLatin1String(text), modifiers);
        EXPECT_EQ(m_field.text(), "SET:1\nBRAND:X");
        silence();
        EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X"));
    }
}

TEST_F(Scanner, TakesPastedTextOfSeveralLines) {
    QApplication::clipboard()->setText(QStringLiteral("SET:7\nBRAND:Zoé\nITEM:a/b"));
    pressAt(m_field, 1000, Qt::Key_V, QString(), Qt::ControlModifier);
    EXPECT_EQ(m_field.text(), "SET:7\nBRAND:Zoé\nITEM:a/b");
    type(9000, "\n");
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:7\nBRAND:Zoé\nITEM:a/b"));
}

TEST_F(Scanner, CanBeEditedWithTheKeyboardKeepsATabOfACardAndComposedTextBreaksTheLineToo) {
    burst(m_field, 1000, "abc", 300);
    pressAt(m_field, 3000, Qt::Key_Backspace);
    pressAt(m_field, 4000, Qt::Key_Home);
    auto at = type(5000, "x");
    EXPECT_EQ(m_field.text(), "xab");

    m_field.clear();
    at = type(at + 5000, "SET:1");
    pressAt(m_field, at += 5, Qt::Key_Tab, QStringLiteral("\t"));
    type(at, "b\n");
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\tb"));

    m_field.setText(QStringLiteral("SET:1"));
    // Without a time of its own, as what is composed has none either.
    pressAt(m_field, 0, Qt::Key_Return, QStringLiteral("\r"));
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("é"));
    QApplication::sendEvent(&m_field, &composed);
    EXPECT_EQ(m_field.text(), "SET:1\né");
}

// --- in the main window

class ScannerInWindow : public UiTest {
protected:
    ScannerInWindow() { openMainWithSets(2); }

    [[nodiscard]] ui::ScannerField& field() {
        return static_cast<ui::ScannerField&>(find(main(), "scannerField"));
    }
    [[nodiscard]] QLineEdit& search() { return find<QLineEdit>(main(), "searchField"); }
    std::uint64_t type(std::uint64_t at, const char* text) { return burst(main(), at, text); }

    std::uint64_t m_at = 1000;
};

TEST_F(ScannerInWindow, ScansACard) {
    EXPECT_EQ(QApplication::focusWidget(), &field()) << "from the start";
    type(1000, "SET:2\nBRAND:Marvis\nITEM:x/y\n");
    silence();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_THAT(shoot().sets, SizeIs(2));
    EXPECT_THAT(shoot().sets[1].items, IsEmpty());
    EXPECT_THAT(shoot().activationLog, SizeIs(1));
    type(9000, "SET:5\nBRAND:Marvis\nITEM:x/y\n");
    silence();
    ASSERT_THAT(shoot().sets, SizeIs(3));
    EXPECT_EQ(manager().activeSetId(), shoot().sets[0].id);
    ASSERT_THAT(shoot().sets[0].items, SizeIs(1));
    EXPECT_EQ(shoot().sets[0].items[0].color, "y");
}

TEST_F(ScannerInWindow, BurstStaysInTheFieldWhateverComesUpMeanwhile) {
    struct Interruption {
        const char* name;
        std::function<void()> comes;
        std::function<bool()> isStillThere;
    };
    const auto sheetIsEmpty = [&] {
        const auto fields = sheet("newSetSheet").findChildren<QLineEdit*>();
        return std::ranges::all_of(fields, [](const QLineEdit* each) { return each->text().isEmpty(); });
    };
    for (const auto& [name, comes, isStillThere] : {
             Interruption{"another field", [&] { search().setFocus(); },
                          [&] { return search().hasFocus() && search().text().isEmpty(); }},
             Interruption{"a menu", [&] { rows().front()->openMenu(main().mapToGlobal(QPoint(50, 50))); },
                          [] { return QApplication::activePopupWidget() != nullptr; }},
             Interruption{"a question", [&] { click(main(), "deleteShootButton"); },
                          [&] { return isOpen("confirmation"); }},
             Interruption{"a sheet", [&] { openWindow("newSetSheet"); }, sheetIsEmpty},
         }) {
        SCOPED_TRACE(name);
        manager().activateSet(shoot().sets[0].id);
        field().setFocus();
        m_at = type(m_at + 5000, "SET:2\nBRAND");
        comes();
        m_at = type(m_at, ":Marvis\n");
        silence();
        EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
        EXPECT_THAT(shoot().sets, SizeIs(2));
        EXPECT_EQ(field().text(), "");
        EXPECT_TRUE(isStillThere());
        if (auto* const menu = QApplication::activePopupWidget())
            menu->close();
        closeSheets();
    }
    // Once the scanner is silent, the keys are where the focus is.
    search().setFocus();
    type(m_at + 5000, "mar");
    EXPECT_EQ(search().text(), "mar");
    EXPECT_EQ(field().text(), "");
}

// Types on a window as the window system does, which hands nothing to a window that is blocked.
void pressOnWindow(QWidget& on, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
        qt_handleKeyEvent(on.windowHandle(), type, key, modifiers, text);
}

void typeOnWindow(QWidget& on, std::string_view text) {
    for (const char each : text) {
        const auto [key, typed] = keyOf(each);
        pressOnWindow(on, key, typed);
    }
}

// A sheet as it is before the desktop has given it the focus.
class OpeningSheet {
public:
    explicit OpeningSheet(QWidget& over) : m_dialog(&over), m_field(&m_dialog) {
        m_dialog.setWindowModality(Qt::WindowModal);
        m_dialog.setAttribute(Qt::WA_ShowWithoutActivating);
        m_dialog.open();
    }
    void giveFocus() {
        m_field.setFocus();
        m_dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_dialog));
    }
    [[nodiscard]] QString typed() const { return m_field.text(); }
    [[nodiscard]] QDialog& dialog() { return m_dialog; }

private:
    QDialog m_dialog;
    QLineEdit m_field;
};

TEST_F(ScannerInWindow, CardThatBeginsBeforeASheetHasTheFocusIsWhole) {
    OpeningSheet sheet(main());
    typeOnWindow(main(), "SET:2\nBR");
    EXPECT_EQ(field().text(), "SET:2\nBR");
    sheet.giveFocus();
    typeOnWindow(sheet.dialog(), "AND:Marvis\n");
    EXPECT_EQ(sheet.typed(), "");
    silence();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_THAT(shoot().sets, SizeIs(2));
}

TEST_F(ScannerInWindow, SheetWithTheFocusHasTheCardsThatBeginInItAndBlocksItsWindowWhole) {
    OpeningSheet sheet(main());
    sheet.giveFocus();
    typeOnWindow(sheet.dialog(), "SET:2");
    EXPECT_EQ(sheet.typed(), "SET:2");
    typeOnWindow(main(), "SET:2\n");
    silence();
    EXPECT_EQ(field().text(), "");
    pressOnWindow(main(), Qt::Key_F1);
    EXPECT_THAT(m_urls.addresses, IsEmpty());
}

TEST_F(ScannerInWindow, HandsKeysBeforeASheetHasTheFocusLeaveTheFieldAsItWas) {
    for (const auto* const before : {"", "SET:2"}) {
        field().setText(before);
        OpeningSheet sheet(main());
        for (const auto* const key : {"1", "2"}) {
            typeOnWindow(main(), key);
            silence();
            EXPECT_EQ(field().text(), before);
        }
    }
    EXPECT_THAT(shoot().activationLog, IsEmpty());
}

TEST_F(ScannerInWindow, NothingElseReachesAWindowThatASheetIsOpeningOver) {
    {
        OpeningSheet sheet(main());
        pressOnWindow(main(), Qt::Key_F1);
        pressOnWindow(main(), Qt::Key_N, QStringLiteral("\x0e"), Qt::ControlModifier);
        typeOnWindow(main(), "\n ");
        QTest::mouseClick(main().windowHandle(), Qt::LeftButton, {},
                          find(main(), "newSetButton").mapTo(&main(), QPoint(5, 5)));
        settle();
        EXPECT_THAT(m_urls.addresses, IsEmpty());
        EXPECT_FALSE(isOpen("newShootSheet"));
        EXPECT_FALSE(isOpen("newSetSheet"));
        EXPECT_EQ(field().text(), "");
    }
    returnToMain();
    pressOnWindow(main(), Qt::Key_F1);
    EXPECT_THAT(m_urls.addresses, SizeIs(1));
}

TEST_F(ScannerInWindow, LeavesKeysBeforeASheetHasTheFocusToTheFieldThatTookThem) {
    search().setFocus();
    OpeningSheet sheet(main());
    typeOnWindow(main(), "SET:2\n");
    EXPECT_EQ(field().text(), "");
    EXPECT_EQ(search().text(), "");
}

TEST_F(ScannerInWindow, BurstTriggersNoShortcuts) {
    auto at = type(1000, "SET:1");
    pressAt(main(), at += 5, Qt::Key_N, QStringLiteral("\x0e"), Qt::ControlModifier);
    pressAt(main(), at += 5, Qt::Key_F1);
    settle();
    EXPECT_FALSE(isOpen("newShootSheet"));
    EXPECT_THAT(m_urls.addresses, IsEmpty());
    // The same keys from a hand do.
    pressAt(main(), at += 5000, Qt::Key_F1);
    EXPECT_THAT(m_urls.addresses, SizeIs(1));
    pressAt(main(), at + 5000, Qt::Key_N, QStringLiteral("\x0e"), Qt::ControlModifier);
    settle();
    EXPECT_TRUE(isOpen("newShootSheet"));
}

TEST_F(ScannerInWindow, TakesWhatIsTypedWhileNothingTakesText) {
    for (auto* const elsewhere : {&find(main(), "setList"), &find(main(), "clientsButton")}) {
        field().clear();
        elsewhere->setFocus();
        ASSERT_EQ(QApplication::focusWidget(), elsewhere);
        type(m_at += 5000, "SET:2\nBRAND:Marvis");
        EXPECT_EQ(QApplication::focusWidget(), &field());
        EXPECT_EQ(field().text(), "SET:2\nBRAND:Marvis") << elsewhere->objectName().toStdString();
    }
}

TEST_F(ScannerInWindow, LeavesSpaceAndCommandsWhereTheFocusIs) {
    find(main(), "manualButton").setFocus();
    type(1000, " ");
    EXPECT_THAT(m_urls.addresses, SizeIs(1)) << "Space presses the button";
    pressAt(main(), 3000, Qt::Key_A, QStringLiteral("\x01"), Qt::ControlModifier);
    pressAt(main(), 5000, Qt::Key_A, QStringLiteral("a"), Qt::AltModifier);
    pressAt(main(), 7000, Qt::Key_Down);
    EXPECT_NE(QApplication::focusWidget(), &field());
    EXPECT_EQ(field().text(), "");
}

TEST_F(ScannerInWindow, LeavesAltToTheMenusAndHasTheKeysAgainAfterThem) {
    for (const auto& [letter, menu] : {std::pair('b', "Bestand"), std::pair('e', "Bewerken"),
                                       std::pair('l', "Beeld"), std::pair('h', "Help"), std::pair('x', "")}) {
        SCOPED_TRACE(letter);
        const QChar key = QLatin1Char(letter);
        pressAt(main(), m_at += 5000, key.toUpper().unicode(), key, Qt::AltModifier);
        const auto* const opened = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_EQ(opened != nullptr ? opened->title().remove('&') : QString(), menu);
        pressAt(main(), m_at += 5000, Qt::Key_Escape);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        pressAt(main(), m_at += 5000, Qt::Key_X, "x", Qt::MetaModifier);
        EXPECT_EQ(field().text(), "");
        m_at = type(m_at, "SET:1");
        EXPECT_EQ(field().text(), "SET:1");
        field().clear();
    }
}

TEST_F(ScannerInWindow, UndoAfterACardIsTheProgramsAndLeavesTheFieldEmpty) {
    manager().deleteSet(shoot().sets[0].id);
    type(1000, "SET:2\nBRAND:Marvis\n");
    silence();
    pressAt(main(), 9000, Qt::Key_Z, QStringLiteral("\x1a"), Qt::ControlModifier);
    settle();
    EXPECT_EQ(field().text(), "");
    EXPECT_THAT(shoot().sets, SizeIs(2));
}

TEST_F(ScannerInWindow, LeavesWhatIsTypedInAnotherField) {
    search().setFocus();
    burst(main(), 1000, "marvis", 3);
    EXPECT_EQ(search().text(), "marvis");
    auto& number = find<QLineEdit>(openWindow("newSetSheet"), "setNumberField");
    number.setFocus();
    type(9000, "12b");
    EXPECT_EQ(number.text(), "12b");
    EXPECT_EQ(field().text(), "");
}

} // namespace
} // namespace vantor::testing
