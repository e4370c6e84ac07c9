#include "tests/ui/ui_fixture.h"

#include <QLabel>
#include <QMessageBox>
#include <QTextDocument>

namespace vantor::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kMarkup = "<b>vet</b> <img src=\"file:///etc/passwd\"> &amp; <a href='https://x'>klik</a>";
// Written from right to left, and never closed.
const std::string kReversing = "abc\u202Egnp.exe";
const std::string kIsolated = "\u2068abc\u202Egnp.exe\u2069";

// The labels of a window that read their text as markup.
std::vector<std::string> labelsOfMarkup(const QWidget& within) {
    std::vector<std::string> found;
    for (const auto* const label : within.findChildren<QLabel*>()) {
        const bool isMarkup = label->textFormat() == Qt::AutoText ? Qt::mightBeRichText(label->text())
                                                                  : label->textFormat() != Qt::PlainText;
        if (isMarkup)
            found.push_back(label->objectName().toStdString() + ": " + label->text().toStdString());
    }
    return found;
}

// What a tool tip would show, read as the tool tip reads it.
std::string shownToolTip(const QWidget& widget) {
    const auto tip = widget.toolTip();
    if (!Qt::mightBeRichText(tip))
        return tip.toStdString();
    QTextDocument document;
    document.setHtml(tip);
    return document.toPlainText().toStdString();
}

class HostileText : public UiTest {
protected:
    // A shoot with one set, whose texts are all the same.
    void openWith(const std::string& text) {
        openMain();
        addShoot(text, text);
        auto set = SetData::make(m_clock.now());
        set.setNumber = text;
        set.brand = text;
        set.model = text;
        set.location = text;
        set.items = {SetItem::make(text, text)};
        const auto setId = set.id;
        manager().addSet(shoot().id, std::move(set));
        manager().activateSet(setId);
        settle();
    }
    [[nodiscard]] ui::SetRow& row() { return *rows().front(); }
};

TEST_F(HostileText, MarkupIsShownAsItIs) {
    openWith(kMarkup);
    addShoot("Tweede");
    manager().setActiveShootId(manager().shoots()[1].id);
    settle();
    const auto text = QString::fromStdString(kMarkup);
    EXPECT_EQ(textOf(main(), "shootName"), text);
    EXPECT_EQ(textOf(main(), "clientTag"), text);
    EXPECT_EQ(textOf(row(), "headline"), "Set " + text + " — " + text);
    EXPECT_EQ(textOf(row(), "description"), text + " " + text);
    EXPECT_EQ(entries(find<QComboBox>(main(), "shootPicker")), QStringList({"Tweede", text}));
    EXPECT_THAT(labelsOfMarkup(main()), IsEmpty());
    for (const auto* const name : {"shootName", "clientTag", "shootPicker", "activeText"}) {
        const auto& widget = find(main(), name);
        if (!widget.toolTip().isEmpty()) {
            EXPECT_THAT(shownToolTip(widget), HasSubstr(kMarkup)) << name;
        }
    }
    main().resize(700, 500);
    settle();
    ASSERT_NE(find(row(), "headline").toolTip(), "");
    EXPECT_THAT(shownToolTip(find(row(), "headline")), HasSubstr(kMarkup));
    EXPECT_THAT(shownToolTip(find(main(), "shootPicker")), HasSubstr(kMarkup));
}

TEST_F(HostileText, MarkupIsShownAsItIsInQuestions) {
    openWith(kMarkup);
    click(row(), "deleteButton");
    auto& aboutSet = dynamic_cast<QMessageBox&>(sheet("confirmation"));
    EXPECT_EQ(aboutSet.textFormat(), Qt::PlainText);
    EXPECT_THAT(aboutSet.text().toStdString(), HasSubstr(kMarkup));
    EXPECT_THAT(labelsOfMarkup(aboutSet), IsEmpty());
    click(aboutSet, "cancelDeletion");
    click(main(), "deleteShootButton");
    auto& aboutShoot = dynamic_cast<QMessageBox&>(sheet("confirmation"));
    EXPECT_EQ(aboutShoot.text().toStdString(), "Shoot \"" + kMarkup + "\" verwijderen?");
    EXPECT_THAT(labelsOfMarkup(aboutShoot), IsEmpty());
}

TEST_F(HostileText, MarkupIsShownAsItIsInTheQrSheet) {
    openWith(kMarkup);
    click(row(), "qrButton");
    auto& opened = sheet("qrSheet");
    EXPECT_THAT(textOf(opened, "sheetTitle").toStdString(), HasSubstr(kMarkup));
    EXPECT_THAT(labelsOfMarkup(opened), IsEmpty());
    EXPECT_EQ(find<QPlainTextEdit>(opened, "codeText").toPlainText().toStdString(),
              shoot().sets[0].toQRText());
}

TEST_F(HostileText, MarkupOfAVersionIsNotInterpreted) {
    openMain();
    announceVersion("9.<b>&x</b>", "https://vantor.example/9");
    ASSERT_TRUE(isShown(main(), "updateButton"));
    EXPECT_EQ(textOf(main(), "updateButton"), "v9.<b>&&x</b> beschikbaar");
}

TEST_F(HostileText, DirectionControlsCannotReachTheirNeighbours) {
    openWith(kReversing);
    const auto isolated = QString::fromStdString(kIsolated);
    EXPECT_EQ(textOf(main(), "shootName"), isolated);
    EXPECT_EQ(textOf(main(), "clientTag"), isolated);
    for (const auto* const name : {"headline", "description"}) {
        const auto text = textOf(row(), name);
        EXPECT_TRUE(text.contains(QChar(0x2068)) && text.endsWith(QChar(0x2069))) << name;
    }
    const auto active = textOf(main(), "activeText");
    EXPECT_TRUE(active.startsWith("Actief: ") && active.endsWith(QChar(0x2069)));
    click(row(), "deleteButton");
    const auto question = dynamic_cast<QMessageBox&>(sheet("confirmation")).text();
    EXPECT_TRUE(question.startsWith("Set \"") &&
                question.endsWith(QString(QChar(0x2069)) + "\" verwijderen?"));
    click(sheet("confirmation"), "cancelDeletion");
    click(main(), "deleteShootButton");
    EXPECT_EQ(dynamic_cast<QMessageBox&>(sheet("confirmation")).text(),
              "Shoot \"" + isolated + "\" verwijderen?");
}

TEST_F(HostileText, ControlCharactersCanBeSeen) {
    openWith("a\tb\nc\x01\x7F"
             "d");
    const QString seen = QString::fromStdString("a\u2409b\u240Ac\u2401\u2421d");
    EXPECT_EQ(textOf(main(), "shootName"), seen);
    EXPECT_EQ(textOf(main(), "clientTag"), seen);
    EXPECT_TRUE(textOf(row(), "headline").contains(seen)) << textOf(row(), "headline").toStdString();
    EXPECT_TRUE(textOf(row(), "description").contains(seen));
}

TEST_F(HostileText, DataIsNotChangedByBeingShown) {
    openWith(kReversing);
    m_dialogs.whereToSave = "/out/a";
    click(main(), "saveButton");
    EXPECT_THAT(m_files.files["/out/a"], HasSubstr("abc"));
    EXPECT_EQ(m_dialogs.proposedNames.back(), kReversing + ".vantor");
    click(row(), "qrButton");
    m_dialogs.whereToSave.reset();
    click(sheet("qrSheet"), "saveButton");
    EXPECT_EQ(m_dialogs.proposedNames.back(), "SET-" + kReversing + "-" + kReversing + ".png");
}

TEST_F(HostileText, AmpersandsMakeNoMnemonics) {
    openWith("H&M");
    EXPECT_EQ(textOf(main(), "shootName"), "H&M");
    EXPECT_EQ(textOf(main(), "clientTag"), "H&M");
    addShoot("B&B");
    EXPECT_EQ(entries(find<QComboBox>(main(), "shootPicker")), QStringList({"B&B", "H&M"}));
}

TEST_F(HostileText, VeryLongTextsStayInTheirPlaces) {
    openWith(std::string(20'000, 'w'));
    main().resize(10, 10);
    settle();
    EXPECT_EQ(main().size(), QSize(700, 500));
    for (const auto* const name : {"shootName", "clientTag", "activeText", "scannerField"}) {
        const auto& widget = find(main(), name);
        EXPECT_TRUE(widget.parentWidget()->rect().contains(widget.geometry())) << name;
    }
    EXPECT_EQ(row().width(), find<ui::RecyclingList>(main(), "setList").viewport()->width());
    click(main(), "deleteShootButton");
    EXPECT_LE(sheet("confirmation").width(), main().screen()->availableSize().width());
    EXPECT_LE(sheet("confirmation").height(), main().screen()->availableSize().height());
}

TEST_F(HostileText, ScannedTextIsShownAsItWas) {
    openMain();
    addShoot("Ibiza");
    find<QLineEdit>(main(), "scannerField")
        .setText(QString::fromStdString("SET:<i>1</i>\nBRAND:" + kReversing));
    click(main(), "activateScanButton");
    EXPECT_EQ(shoot().sets[0].brand, kReversing);
    EXPECT_TRUE(textOf(row(), "headline").contains("<i>1</i>"));
}

} // namespace
} // namespace vantor::testing
