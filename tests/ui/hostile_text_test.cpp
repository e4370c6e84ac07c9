#include "tests/support/read_file.h"
#include "tests/ui/everything_seen.h"
#include "tests/ui/ui_fixture.h"
#include "ui/sheets/catalog_picker_menu.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QLabel>
#include <QMenu>
#include <QThreadPool>
#include <array>
#include <filesystem>
#include <regex>
#include <set>

namespace vantor::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Written from right to left, and never closed.
const std::string kReversing = "abc\u202Egnp.exe";

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

TEST_F(HostileText, MarkupOfAVersionIsNotInterpreted) {
    openMain();
    announceVersion("9.<b>&x</b>", "https://vantor.example/9");
    ASSERT_TRUE(isShown(main(), "updateButton"));
    EXPECT_EQ(textOf(main(), "updateButton"), "v9.<b>&&x</b> beschikbaar");
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
    EXPECT_EQ(showsHostileText(everythingSeen(window)), GetParam().shows);
    EXPECT_THAT(breaches(everythingSeen(window)), IsEmpty());
    window.resize(window.minimumSize());
    settle();
    EXPECT_THAT(breaches(everythingSeen(window)), IsEmpty()) << "where there is little room";
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

TEST_F(HostileWindows, QuestionsAndMenusOfSetsShowHostileTextAsItIs) {
    for (auto* const button : {&find<QAbstractButton>(row(), "deleteButton"),
                               &find<QAbstractButton>(main(), "deleteShootButton")}) {
        click(*button);
        const auto seen = everythingSeen(sheet("confirmation"));
        EXPECT_THAT(breaches(seen), IsEmpty());
        EXPECT_TRUE(showsHostileText(seen));
        click(sheet("confirmation"), "cancelDeletion");
    }
    row().openMenu(main().mapToGlobal(QPoint(50, 50)));
    auto* const menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    EXPECT_THAT(breaches(everythingSeen(*menu)), IsEmpty());
    menu->close();
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
    const auto menus = menusWithin(*picker.menu());
    ASSERT_EQ(menus.size(), 3U) << "of all brands, of the brand, of the product";
    for (auto* const menu : menus) {
        const auto seen = everythingSeen(*menu);
        EXPECT_THAT(breaches(seen), IsEmpty());
        EXPECT_TRUE(showsHostileText(seen));
    }
}

TEST_F(HostileWindows, LookingFindsEveryKindOfBreach) {
    const auto hostile = QString::fromStdString(kHostile);
    const auto shown = QString::fromStdString(shownText(kHostile));
    struct Example {
        const char* name;
        bool isBreach;
        std::function<void(QWidget&)> show;
    };
    const auto label = [](const QString& text, Qt::TextFormat format) {
        return [=](QWidget& in) { (new QLabel(text, &in))->setTextFormat(format); };
    };
    const auto button = [](const QString& text) { return [=](QWidget& in) { new QPushButton(text, &in); }; };
    for (const auto& [name, isBreach, show] : {
             Example{"nothing", false, [](QWidget&) {}},
             Example{"plain label", false, label(shown, Qt::PlainText)},
             Example{"label of markup", true, label(shown, Qt::AutoText)},
             Example{"label as it came", true, label(hostile, Qt::PlainText)},
             Example{"told in full", false, [&](QWidget& in) { ui::tellInFull(&in, shown); }},
             Example{"tool tip", true, [&](QWidget& in) { in.setToolTip(shown); }},
             Example{"tool tip whose markup is read aloud", true,
                     [&](QWidget& in) { in.setToolTip(ui::plainToolTip(shown)); }},
             Example{"button", false, button(ui::dataInMenu(kHostile))},
             Example{"button with a mnemonic", true, button(shown)},
             Example{"menu", true, [&](QWidget& in) { (new QMenu(&in))->addAction(shown); }},
             Example{"box", true, [&](QWidget& in) { (new QComboBox(&in))->addItem(hostile); }},
             Example{"name", true, [&](QWidget& in) { in.setAccessibleName(hostile); }},
             Example{"title", true, [&](QWidget& in) { in.setWindowTitle(shown); }},
         }) {
        QWidget window;
        show(window);
        EXPECT_EQ(breaches(everythingSeen(window)).empty(), !isBreach) << name;
    }
}

} // namespace
} // namespace vantor::testing
