#include "tests/support/read_file.h"
#include "tests/ui/everything_seen.h"
#include "tests/ui/ui_fixture.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QLabel>
#include <QMenu>
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

TEST_F(HostileWindows, EveryWindowShowsHostileTextAsItIs) {
    std::set<std::string> lookedAt;
    std::set<std::string> showing;
    visitWindows(QString::fromStdString(kHostile), [&](QWidget& window) {
        const auto name = window.objectName().toStdString();
        lookedAt.insert(name);
        const auto seen = everythingSeen(window);
        EXPECT_THAT(breaches(seen), IsEmpty()) << name;
        if (std::ranges::any_of(seen, [](const Seen& each) { return each.text.contains(kWord); }))
            showing.insert(name);
        // Where there is little room.
        if (window.isVisible() && window.windowType() != Qt::Popup) {
            window.resize(window.minimumSize());
            settle();
            EXPECT_THAT(breaches(everythingSeen(window)), IsEmpty()) << name;
        }
        if (const auto* const code = window.findChild<QPlainTextEdit*>("codeText")) {
            EXPECT_FALSE(code->toPlainText().contains(QChar(7)));
        }
    });
    EXPECT_THAT(showing, ::testing::IsSupersetOf({"main", "newShootSheet", "bulkExportSheet", "clientsSheet",
                                                  "catalogSheet", "editProductSheet", "qrSheet",
                                                  "versionsSheet", "confirmation"}));

    std::set<std::string> sheets;
    const std::regex sheetName("\"([A-Za-z]+Sheet)\"");
    for (const auto& file : std::filesystem::recursive_directory_iterator(VANTOR_EXAMPLES "/../src/ui")) {
        const auto source = file.path().extension() == ".cpp" ? readFile(file.path()) : std::string();
        for (std::sregex_iterator match(source.begin(), source.end(), sheetName), end; match != end; ++match)
            sheets.insert((*match)[1]);
    }
    EXPECT_THAT(sheets, ::testing::SizeIs(kSheets.size()));
    EXPECT_THAT(lookedAt, ::testing::IsSupersetOf(sheets)) << "a sheet that no test looks at";
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
