#include "tests/support/read_file.h"
#include "tests/ui/everything_seen.h"
#include "tests/ui/ui_fixture.h"
#include "ui/sheets/catalog_picker_menu.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTabBar>
#include <QTextDocument>
#include <QThreadPool>
#include <array>
#include <filesystem>
#include <regex>
#include <set>

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
    const QString seen = QString::fromStdString("a<U+0009>b<U+000A>c<U+0001><U+007F>d");
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

// --- everything that any window shows

// Markup, shortcuts, the mark of an unsaved window, a place for a value, a direction that is never closed, one that
// was never opened, and a control character.
const std::string kHostile = "<u>kanarie</u> &amp; &Kn && [*] %1 \u2067\u202Ex\u0007y";
const QString kWord = QStringLiteral("kanarie");

// Where a window shows the hostile text otherwise than whole, closed off, and with a sign for what cannot be seen.
std::vector<std::string> breaches(const std::vector<Seen>& seen) {
    const auto whole = QString::fromStdString(shownText(kHostile));
    std::vector<std::string> found;
    for (const auto& [where, text, isMarkup] : seen) {
        if (isMarkup || text.count(kWord) != text.count(whole) || text.contains(QChar(7)))
            found.push_back(
                (where + QStringLiteral(" \u201C") + text + QStringLiteral("\u201D")).toStdString());
    }
    return found;
}

bool showsHostileText(const std::vector<Seen>& seen) {
    return std::ranges::any_of(seen, [](const Seen& each) { return each.text.contains(kWord); });
}

struct HostileWindow {
    const char* name;
    // Whether there is a place in it where the text can be read.
    bool shows;
};

void PrintTo(const HostileWindow& window, std::ostream* out) {
    *out << window.name;
}

constexpr auto kWindows = std::to_array<HostileWindow>({
    {"main", true},
    {"newShootSheet", true},
    {"newSetSheet", false},
    {"editSetSheet", false},
    {"importSheet", false},
    {"bulkExportSheet", true},
    {"clientsSheet", true},
    {"catalogSheet", true},
    {"editProductSheet", true},
    {"catalogImportSheet", false},
    {"qrSheet", true},
    {"versionsSheet", true},
    {"shortcutsSheet", false},
});

class HostileWindows : public HostileText {
protected:
    HostileWindows() {
        openWith(kHostile);
        // Two shoots, for the picker.
        addShoot(kHostile, kHostile);
        manager().setActiveShootId(manager().shoots()[1].id);
        catalog().addClient(kHostile);
        catalog().addBrand(kHostile);
        addProduct(kHostile, {kHostile, kHostile}, kHostile);
        // One more is deleted, and stands in a version.
        manager().deleteShoot(addShoot(kHostile));
        manager().setActiveShootId(manager().shoots()[1].id);
        announceVersion("9", "https://vantor.example/9");
    }
    ~HostileWindows() override { settleReads(); }
};

class EveryWindow : public HostileWindows, public ::testing::WithParamInterface<HostileWindow> {};

TEST_P(EveryWindow, ShowsHostileTextAsItIs) {
    auto& window = openWindow(GetParam().name);
    const auto seen = everythingSeen(window);
    EXPECT_THAT(breaches(seen), IsEmpty());
    EXPECT_EQ(showsHostileText(seen), GetParam().shows);
}

TEST_P(EveryWindow, ShowsHostileTextAsItIsWhereThereIsLittleRoom) {
    auto& window = openWindow(GetParam().name);
    window.resize(window.minimumSize());
    settle();
    EXPECT_THAT(breaches(everythingSeen(window)), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(HostileText, EveryWindow, ::testing::ValuesIn(kWindows),
                         [](const auto& window) { return std::string(window.param.name); });

TEST(HostileTextOf, EverySheetOfTheProgramIsLookedAt) {
    std::set<std::string> lookedAt;
    for (const auto& window : kWindows)
        lookedAt.insert(window.name);
    std::set<std::string> missed;
    std::size_t found = 0;
    const std::regex sheetName("\"([A-Za-z]+Sheet)\"");
    for (const auto& file : std::filesystem::recursive_directory_iterator(
             std::filesystem::path(VANTOR_EXAMPLES) / "../src/ui")) {
        if (file.path().extension() != ".cpp")
            continue;
        const auto source = readFile(file.path());
        for (auto match = std::sregex_iterator(source.begin(), source.end(), sheetName);
             match != std::sregex_iterator(); ++match, ++found) {
            if (!lookedAt.contains((*match)[1]))
                missed.insert((*match)[1]);
        }
    }
    EXPECT_THAT(missed, IsEmpty());
    EXPECT_EQ(found, std::size(kWindows) - 1);
}

TEST_F(HostileWindows, QuestionsShowHostileTextAsItIs) {
    click(row(), "deleteButton");
    auto seen = everythingSeen(sheet("confirmation"));
    EXPECT_THAT(breaches(seen), IsEmpty());
    EXPECT_TRUE(showsHostileText(seen));
    click(sheet("confirmation"), "cancelDeletion");
    click(main(), "deleteShootButton");
    seen = everythingSeen(sheet("confirmation"));
    EXPECT_THAT(breaches(seen), IsEmpty());
    EXPECT_TRUE(showsHostileText(seen));
}

TEST_F(HostileWindows, ProgressShowsNoMarkup) {
    m_dialogs.whereToSave = "/out/cards.pdf";
    click(main(), "bulkExportButton");
    auto& opened = sheet("bulkExportSheet");
    find<QAbstractButton>(opened, "exportButton").click();
    EXPECT_THAT(breaches(everythingSeen(find(opened, "exportProgress"))), IsEmpty());
    QThreadPool::globalInstance()->waitForDone();
}

TEST_F(HostileWindows, TheGeneratorShowsNoMarkup) {
    auto& view = openGenerator();
    click(view, "addItemButton");
    for (auto* const field : view.findChildren<QLineEdit*>())
        field->setText(QString::fromStdString(kHostile));
    click(view, "generateButton");
    EXPECT_THAT(breaches(everythingSeen(view)), IsEmpty());
    const auto text = find<QPlainTextEdit>(view, "codeText").toPlainText();
    EXPECT_TRUE(text.contains(kWord));
    EXPECT_FALSE(text.contains(QChar(7)));
}

TEST_F(HostileWindows, MenusShowHostileTextAsItIs) {
    click(main(), "newSetButton");
    auto& picker = find<ui::CatalogPickerMenu>(sheet("newSetSheet"), "catalogPicker");
    std::vector<QMenu*> menus{picker.menu()};
    for (std::size_t i = 0; i < menus.size(); ++i) {
        // What opening it does, without a popup on screen.
        Q_EMIT menus[i]->aboutToShow();
        for (const auto* const action : menus[i]->actions()) {
            if (action->menu() != nullptr)
                menus.push_back(action->menu());
        }
    }
    ASSERT_EQ(menus.size(), 3U) << "of all brands, of the brand, of the product";
    for (auto* const menu : menus) {
        const auto seen = everythingSeen(*menu);
        EXPECT_THAT(breaches(seen), IsEmpty());
        EXPECT_TRUE(showsHostileText(seen));
    }
}

TEST_F(HostileWindows, ContextMenuShowsNoMarkup) {
    row().openMenu(main().mapToGlobal(QPoint(50, 50)));
    auto* const menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    EXPECT_THAT(breaches(everythingSeen(*menu)), IsEmpty());
    menu->close();
}

TEST_F(HostileWindows, LookingFindsEveryKindOfBreach) {
    QWidget window;
    const auto hostile = QString::fromStdString(kHostile);
    const auto shown = QString::fromStdString(shownText(kHostile));
    EXPECT_THAT(breaches(everythingSeen(window)), IsEmpty());
    const auto finds = [&](auto* widget) {
        const std::unique_ptr<QWidget> made(widget);
        made->setParent(&window);
        return !breaches(everythingSeen(window)).empty();
    };
    const auto label = [](const QString& text, Qt::TextFormat format) {
        auto* const made = new QLabel(text);
        made->setTextFormat(format);
        return made;
    };
    const auto withToolTip = [](const QString& text) {
        auto* const made = new QWidget;
        made->setToolTip(text);
        return made;
    };
    EXPECT_FALSE(finds(label(shown, Qt::PlainText)));
    EXPECT_TRUE(finds(label(shown, Qt::AutoText)));
    EXPECT_TRUE(finds(label(hostile, Qt::PlainText)));
    auto* const toldInFull = new QWidget;
    ui::tellInFull(toldInFull, shown);
    EXPECT_FALSE(finds(toldInFull));
    EXPECT_TRUE(finds(withToolTip(shown)));
    EXPECT_TRUE(finds(withToolTip(ui::plainToolTip(shown)))) << "its markup is read aloud";
    EXPECT_FALSE(finds(new QPushButton(ui::dataInMenu(kHostile))));
    EXPECT_TRUE(finds(new QPushButton(shown)));
    auto* const menu = new QMenu;
    menu->addAction(shown);
    EXPECT_TRUE(finds(menu));
    auto* const box = new QComboBox;
    box->addItem(hostile);
    EXPECT_TRUE(finds(box));
    window.setAccessibleName(hostile);
    EXPECT_THAT(breaches(everythingSeen(window)), ::testing::Not(IsEmpty()));
    window.setAccessibleName(QString());
    EXPECT_THAT(breaches(everythingSeen(window)), IsEmpty());
    window.setWindowTitle(shown);
    EXPECT_THAT(breaches(everythingSeen(window)), ::testing::Not(IsEmpty()));
}

} // namespace
} // namespace vantor::testing
