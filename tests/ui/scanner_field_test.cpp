#include "tests/support/event_loop.h"
#include "tests/ui/ui_fixture.h"

#include <QClipboard>
#include <QMenu>
#include <QThread>
#include <ostream>

namespace vantor::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto kNoModifiers = Qt::KeyboardModifiers();

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

    void key(std::uint64_t at, char character) {
        pressAt(m_field, at, QChar(QLatin1Char(character)).toUpper().unicode(),
                QString(QLatin1Char(character)));
    }
    void returnKey(std::uint64_t at) { pressAt(m_field, at, Qt::Key_Return, QStringLiteral("\r")); }

    // Types a text as a scanner does, a line feed as Return, so many milliseconds a key; the result is the time of
    // the last one.
    std::uint64_t burst(std::uint64_t at, const char* text, std::uint64_t pace = 5) {
        for (; *text != '\0'; ++text) {
            at += pace;
            if (*text == '\n')
                returnKey(at);
            else
                key(at, *text);
        }
        return at;
    }

    // Longer than a scanner ever pauses, and than the field looks once more for keys after that.
    static void silence() {
        runFor(200ms);
        runFor(50ms);
    }

    ui::ScannerField m_field;
    std::vector<std::string> m_cards;
};

TEST_F(Scanner, SubmitsAWholeCardOnceItFallsSilent) {
    burst(1000, "SET:1\nBRAND:Marvis\nITEM:broek/bruin\n");
    EXPECT_THAT(m_cards, IsEmpty());
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:Marvis\nITEM:broek/bruin"));
    EXPECT_EQ(m_field.text(), "");
    silence();
    EXPECT_THAT(m_cards, SizeIs(1));
}

TEST_F(Scanner, SubmitsNothingWithoutAReturn) {
    burst(1000, "SET:1");
    silence();
    EXPECT_THAT(m_cards, IsEmpty());
    EXPECT_EQ(m_field.text(), "SET:1");
}

TEST_F(Scanner, ReturnThatIsFollowedInTimeBreaksTheLine) {
    key(1000, 'a');
    returnKey(1050);
    key(1050 + 120, 'b');
    EXPECT_THAT(m_cards, IsEmpty());
    EXPECT_EQ(m_field.text(), "a\nb");
}

TEST_F(Scanner, ReturnThatIsFollowedTooLateEndsTheCard) {
    key(1000, 'a');
    returnKey(1050);
    key(1050 + 121, 'b');
    EXPECT_THAT(m_cards, ElementsAre("a"));
    EXPECT_EQ(m_field.text(), "b");
}

TEST_F(Scanner, SeveralReturnsAreEmptyLines) {
    burst(1000, "a\n\nb\n");
    silence();
    EXPECT_THAT(m_cards, ElementsAre("a\n\nb"));
}

TEST_F(Scanner, JudgesKeysThatHadToWaitByTheirOwnTimes) {
    const auto at = burst(1000, "SET:1\n");
    // The program is busy for longer than a scanner pauses, while the keys are pressed on time.
    QThread::msleep(250);
    burst(at, "BRAND:X\n");
    EXPECT_THAT(m_cards, IsEmpty());
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X"));
}

TEST_F(Scanner, LooksForKeysOnceMoreBeforeItTakesSilenceForTheEnd) {
    auto at = burst(1000, "SET:1\n");
    QThread::msleep(250);
    // The timer comes first, the keys a turn of the loop behind it.
    QCoreApplication::processEvents();
    burst(at, "BRAND:X\n");
    EXPECT_THAT(m_cards, IsEmpty());
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X"));
}

TEST_F(Scanner, TwoCardsThatWaitedTogetherStayTwo) {
    const auto at = burst(1000, "SET:1\nBRAND:X\n");
    burst(at + 400, "SET:2\nBRAND:X\n");
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X"));
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X", "SET:2\nBRAND:X"));
}

TEST_F(Scanner, ReturnInAnEmptyFieldDoesNothing) {
    returnKey(1000);
    silence();
    EXPECT_THAT(m_cards, IsEmpty());
    returnKey(5000);
    key(5010, 'a');
    EXPECT_EQ(m_field.text(), "a");
}

TEST_F(Scanner, ModifiersPressedOnTheirWayDoNotCount) {
    key(1000, 'a');
    returnKey(1010);
    pressAt(m_field, 1020, Qt::Key_Shift);
    pressAt(m_field, 1030, Qt::Key_B, QStringLiteral("B"), Qt::ShiftModifier);
    EXPECT_EQ(m_field.text(), "a\nB");
}

TEST_F(Scanner, ModifierAfterTheLastReturnDoesNotHoldTheCardUp) {
    key(1000, 'a');
    returnKey(1010);
    pressAt(m_field, 1020, Qt::Key_Shift);
    silence();
    EXPECT_THAT(m_cards, ElementsAre("a"));
}

struct LineKey {
    const char* name;
    int key;
    const char* text;
    Qt::KeyboardModifiers modifiers;
};

void PrintTo(const LineKey& each, std::ostream* out) {
    *out << each.name;
}

class ScannerReturn : public Scanner, public ::testing::WithParamInterface<LineKey> {
protected:
    void lineKey(std::uint64_t at) {
        pressAt(m_field, at, GetParam().key, QLatin1String(GetParam().text), GetParam().modifiers);
    }
};

TEST_P(ScannerReturn, BreaksALineAndEndsACard) {
    burst(1000, "SET:1");
    lineKey(1040);
    burst(1045, "BRAND:X");
    lineKey(1100);
    EXPECT_EQ(m_field.text(), "SET:1\nBRAND:X");
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\nBRAND:X"));
}

INSTANTIATE_TEST_SUITE_P(Keys, ScannerReturn,
                         ::testing::Values(LineKey{"Return", Qt::Key_Return, "\r", kNoModifiers},
                                           LineKey{"Enter", Qt::Key_Enter, "\r", Qt::KeypadModifier},
                                           LineKey{"ControlJ", Qt::Key_J, "\n", Qt::ControlModifier},
                                           LineKey{"ControlJWithoutText", Qt::Key_J, "", Qt::ControlModifier},
                                           LineKey{"ControlM", Qt::Key_M, "\r", Qt::ControlModifier},
                                           LineKey{"ControlMWithoutText", Qt::Key_M, "", Qt::ControlModifier},
                                           LineKey{"LineFeedKey", Qt::Key_unknown, "\n", kNoModifiers}),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(Scanner, TakesPastedTextOfSeveralLines) {
    QApplication::clipboard()->setText(QStringLiteral("SET:7\nBRAND:Zoé\nITEM:a/b"));
    pressAt(m_field, 1000, Qt::Key_V, QString(), Qt::ControlModifier);
    EXPECT_EQ(m_field.text(), "SET:7\nBRAND:Zoé\nITEM:a/b");
    returnKey(9000);
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:7\nBRAND:Zoé\nITEM:a/b"));
}

TEST_F(Scanner, TypingByHandSubmitsOnReturnToo) {
    burst(1000, "SET:3\n", 180);
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:3"));
}

TEST_F(Scanner, CanBeEditedWithTheKeyboard) {
    burst(1000, "abc", 300);
    pressAt(m_field, 3000, Qt::Key_Backspace);
    pressAt(m_field, 4000, Qt::Key_Home);
    key(5000, 'x');
    EXPECT_EQ(m_field.text(), "xab");
}

TEST_F(Scanner, KeepsATabOfACard) {
    auto at = burst(1000, "SET:1");
    pressAt(m_field, at += 5, Qt::Key_Tab, QStringLiteral("\t"));
    burst(at, "b\n");
    silence();
    EXPECT_THAT(m_cards, ElementsAre("SET:1\tb"));
}

TEST_F(Scanner, ComposedTextBreaksTheLineToo) {
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
    [[nodiscard]] ui::ScannerField& field() {
        return static_cast<ui::ScannerField&>(find(main(), "scannerField"));
    }
    [[nodiscard]] QLineEdit& search() { return find<QLineEdit>(main(), "searchField"); }

    std::uint64_t burst(std::uint64_t at, const char* text, std::uint64_t pace = 5) {
        for (; *text != '\0'; ++text) {
            at += pace;
            if (*text == '\n')
                pressAt(main(), at, Qt::Key_Return, QStringLiteral("\r"));
            else
                pressAt(main(), at, QChar(QLatin1Char(*text)).toUpper().unicode(),
                        QString(QLatin1Char(*text)));
        }
        return at;
    }

    static void silence() {
        runFor(200ms);
        runFor(50ms);
        settle();
    }

    std::uint64_t m_at = 1000;
};

TEST_F(ScannerInWindow, HasTheFocusFromTheStart) {
    openMain();
    addShoot("Ibiza");
    EXPECT_EQ(QApplication::focusWidget(), &field());
}

TEST_F(ScannerInWindow, ScansACard) {
    openMainWithSets(2);
    burst(1000, "SET:2\nBRAND:Marvis\nITEM:x/y\n");
    silence();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_THAT(shoot().sets, SizeIs(2));
    EXPECT_THAT(shoot().sets[1].items, IsEmpty());
    EXPECT_THAT(shoot().activationLog, SizeIs(1));
    burst(9000, "SET:5\nBRAND:Marvis\nITEM:x/y\n");
    silence();
    ASSERT_THAT(shoot().sets, SizeIs(3));
    EXPECT_EQ(manager().activeSetId(), shoot().sets[0].id);
    ASSERT_THAT(shoot().sets[0].items, SizeIs(1));
    EXPECT_EQ(shoot().sets[0].items[0].color, "y");
}

TEST_F(ScannerInWindow, BlankTextIsLeftAlone) {
    openMainWithSets(1);
    const auto saves = m_files.replacements.size();
    burst(1000, "   \n");
    silence();
    EXPECT_EQ(field().text(), "   ");
    EXPECT_EQ(m_files.replacements.size(), saves);
}

TEST_F(ScannerInWindow, BurstStaysInTheFieldWhenTheFocusMoves) {
    openMainWithSets(2);
    auto at = burst(1000, "SET:2\nBRAND");
    search().setFocus();
    at = burst(at, ":Marvis\n");
    EXPECT_EQ(search().text(), "");
    silence();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_EQ(field().text(), "");
    // Once the scanner is silent, the keys are where the focus is.
    search().setFocus();
    burst(at + 5000, "mar");
    EXPECT_EQ(search().text(), "mar");
    EXPECT_EQ(field().text(), "");
}

TEST_F(ScannerInWindow, BurstStaysInTheFieldWhenASheetOpens) {
    openMainWithSets(2);
    auto at = burst(1000, "SET:2\nBRAND");
    click(main(), "newSetButton");
    ASSERT_TRUE(isOpen("newSetSheet"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet("newSetSheet")));
    burst(at, ":Marvis\n");
    silence();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_THAT(shoot().sets, SizeIs(2));
    EXPECT_TRUE(isOpen("newSetSheet"));
    for (const auto* const typed : sheet("newSetSheet").findChildren<QLineEdit*>())
        EXPECT_EQ(typed->text(), "") << typed->objectName().toStdString();
}

// Types on a window as the window system does, which hands nothing to a window that is blocked.
void pressOnWindow(QWidget& on, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
        qt_handleKeyEvent(on.windowHandle(), type, key, modifiers, text);
}

void typeOnWindow(QWidget& on, const char* text) {
    for (; *text != '\0'; ++text) {
        const QChar character = QLatin1Char(*text);
        if (character == QLatin1Char('\n'))
            pressOnWindow(on, Qt::Key_Return, QStringLiteral("\r"));
        else
            pressOnWindow(on, character.toUpper().unicode(), character);
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
    openMainWithSets(2);
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

TEST_F(ScannerInWindow, CardThatBeginsInASheetIsTheSheets) {
    openMainWithSets(2);
    OpeningSheet sheet(main());
    sheet.giveFocus();
    typeOnWindow(sheet.dialog(), "SET:2");
    EXPECT_EQ(sheet.typed(), "SET:2");
    EXPECT_EQ(field().text(), "");
}

TEST_F(ScannerInWindow, HandsKeyBeforeASheetHasTheFocusLeavesNothingInTheField) {
    openMainWithSets(2);
    OpeningSheet sheet(main());
    typeOnWindow(main(), "1");
    silence();
    EXPECT_EQ(field().text(), "");
    typeOnWindow(main(), "2");
    silence();
    EXPECT_EQ(field().text(), "");
    EXPECT_THAT(shoot().activationLog, IsEmpty());
}

TEST_F(ScannerInWindow, HandsKeyBeforeASheetHasTheFocusLeavesWhatStoodInTheField) {
    openMainWithSets(2);
    field().setText("SET:2");
    OpeningSheet sheet(main());
    typeOnWindow(main(), "1");
    silence();
    EXPECT_EQ(field().text(), "SET:2");
}

TEST_F(ScannerInWindow, NothingElseReachesAWindowThatASheetIsOpeningOver) {
    openMainWithSets(2);
    {
        OpeningSheet sheet(main());
        pressOnWindow(main(), Qt::Key_F1);
        pressOnWindow(main(), Qt::Key_N, QStringLiteral("\x0e"), Qt::ControlModifier);
        pressOnWindow(main(), Qt::Key_Return, QStringLiteral("\r"));
        pressOnWindow(main(), Qt::Key_Space, QStringLiteral(" "));
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

TEST_F(ScannerInWindow, SheetWithTheFocusBlocksItsWindowWhole) {
    openMainWithSets(2);
    OpeningSheet sheet(main());
    sheet.giveFocus();
    typeOnWindow(main(), "SET:2\n");
    silence();
    EXPECT_EQ(field().text(), "");
    pressOnWindow(main(), Qt::Key_F1);
    EXPECT_THAT(m_urls.addresses, IsEmpty());
}

TEST_F(ScannerInWindow, LeavesKeysBeforeASheetHasTheFocusToTheFieldThatTookThem) {
    openMainWithSets(2);
    search().setFocus();
    OpeningSheet sheet(main());
    typeOnWindow(main(), "SET:2\n");
    EXPECT_EQ(field().text(), "");
    EXPECT_EQ(search().text(), "");
}

TEST_F(ScannerInWindow, BurstAnswersNoQuestion) {
    openMainWithSets(2);
    auto at = burst(1000, "SET:2\nBRAND");
    click(main(), "deleteShootButton");
    ASSERT_TRUE(isOpen("confirmation"));
    burst(at, ":Marvis\n");
    silence();
    EXPECT_TRUE(isOpen("confirmation"));
    EXPECT_THAT(manager().shoots(), SizeIs(1));
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
}

TEST_F(ScannerInWindow, BurstStaysInTheFieldWhenAMenuOpens) {
    openMainWithSets(2);
    auto at = burst(1000, "SET:2\nBRAND");
    rows().front()->openMenu(main().mapToGlobal(QPoint(50, 50)));
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    burst(at, ":Marvis\n");
    silence();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_THAT(shoot().sets, SizeIs(2));
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QApplication::activePopupWidget()->close();
}

TEST_F(ScannerInWindow, BurstTriggersNoShortcuts) {
    openMainWithSets(1);
    auto at = burst(1000, "SET:1");
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
    openMainWithSets(2);
    for (auto* const elsewhere : {&find(main(), "setList"), &find(main(), "clientsButton")}) {
        field().clear();
        elsewhere->setFocus();
        ASSERT_EQ(QApplication::focusWidget(), elsewhere);
        burst(m_at += 5000, "SET:2\nBRAND:Marvis");
        EXPECT_EQ(QApplication::focusWidget(), &field());
        EXPECT_EQ(field().text(), "SET:2\nBRAND:Marvis") << elsewhere->objectName().toStdString();
    }
}

TEST_F(ScannerInWindow, LeavesSpaceAndCommandsWhereTheFocusIs) {
    openMainWithSets(2);
    auto& button = find(main(), "manualButton");
    button.setFocus();
    pressAt(main(), 1000, Qt::Key_Space, QStringLiteral(" "));
    EXPECT_THAT(m_urls.addresses, SizeIs(1)) << "Space presses the button";
    pressAt(main(), 3000, Qt::Key_A, QStringLiteral("\x01"), Qt::ControlModifier);
    pressAt(main(), 5000, Qt::Key_A, QStringLiteral("a"), Qt::AltModifier);
    pressAt(main(), 7000, Qt::Key_Down);
    EXPECT_NE(QApplication::focusWidget(), &field());
    EXPECT_EQ(field().text(), "");
}

TEST_F(ScannerInWindow, LeavesAltToTheMenusAndHasTheKeysAgainAfterThem) {
    openMainWithSets(2);
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
        m_at = burst(m_at, "SET:1");
        EXPECT_EQ(field().text(), "SET:1");
        field().clear();
    }
}

TEST_F(ScannerInWindow, UndoAfterACardIsTheProgramsAndLeavesTheFieldEmpty) {
    openMainWithSets(2);
    manager().deleteSet(shoot().sets[0].id);
    burst(1000, "SET:2\nBRAND:Marvis\n");
    silence();
    pressAt(main(), 9000, Qt::Key_Z, QStringLiteral("\x1a"), Qt::ControlModifier);
    settle();
    EXPECT_EQ(field().text(), "");
    EXPECT_THAT(shoot().sets, SizeIs(2));
}

TEST_F(ScannerInWindow, LeavesWhatIsTypedInAnotherField) {
    openMainWithSets(2);
    search().setFocus();
    burst(1000, "marvis", 3);
    EXPECT_EQ(search().text(), "marvis");
    EXPECT_EQ(field().text(), "");
}

TEST_F(ScannerInWindow, LeavesWhatIsTypedInASheet) {
    openMainWithSets(2);
    auto& opened = open("newSetButton", "newSetSheet");
    auto& number = find<QLineEdit>(opened, "setNumberField");
    number.setFocus();
    burst(1000, "12b");
    EXPECT_EQ(number.text(), "12b");
    EXPECT_EQ(field().text(), "");
}

} // namespace
} // namespace vantor::testing
