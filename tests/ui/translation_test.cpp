// Walks through all windows in another language.

#include "base/checksum.h"
#include "tests/support/extracted_texts.h"
#include "tests/support/pseudo_translation.h"
#include "tests/ui/everything_seen.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/file_notices.h"
#include "ui/sheets/catalog_picker_menu.h"
#include "view/document_notices.h"
#include "view/start_notices.h"
#include "view/version_list.h"

#include <new>

namespace vantor::testing {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr auto kProject = VANTOR_EXAMPLES "/..";

class Translation : public UiTest {
protected:
    Translation() { m_services.siteHost = "σελίδα"; }

    // Notes what a window says that was not translated. All data in it are Greek.
    void look(QWidget& window) {
        ++m_looked;
        for (const auto& [where, text, isMarkup] : everythingSeen(window)) {
            if (PseudoTranslation::isUntranslated(text.toStdString()))
                m_untranslated.push_back(
                    (where + QStringLiteral(" \u201C") + text + QStringLiteral("\u201D")).toStdString());
        }
    }
    void lookAndClose(QWidget& window) {
        look(window);
        closeSheets();
    }

    void addGreekData() {
        addShoot("άλφα", "βήτα");
        addShoot("γάμμα", "δέλτα");
        addSet("1", "", {SetItem::make("ήτα", "")});
        addSet("");
        addSet("2", "ζήτα", {SetItem::make("ήτα", "θήτα")});
        addProduct("ήτα", {"θήτα"}, "ζήτα");
        addProduct("ιώτα", {});
        catalog().addClient("κάππα");
        catalog().addBrand("λάμδα");
        manager().activateSet(shoot().sets[0].id);
        announceVersion("9", "https://vantor.example/9");
        settle();
    }

    void lookIntoEmptyWindows() {
        look(openMain());
        for (const auto* const name :
             {"newShootSheet", "clientsSheet", "catalogSheet", "versionsSheet", "shortcutsSheet"})
            lookAndClose(openWindow(name));
        addShoot("γάμμα");
        look(main());
        auto& sheet = openWindow("newSetSheet");
        for (auto* const menu : menusWithin(*find<ui::CatalogPickerMenu>(sheet, "catalogPicker").menu()))
            look(*menu);
        lookAndClose(sheet);
        manager().deleteShoot(shoot().id);
        settle();
    }

    void lookIntoFullWindows() {
        addGreekData();
        find<QLineEdit>(main(), "searchField").setText("ω");
        settle();
        look(main());
        find<QLineEdit>(main(), "searchField").clear();
        settle();
        visitWindows("ζήτα", [this](QWidget& window) { look(window); });
        auto& products = openWindow("catalogSheet");
        for (const auto* const brand : {"ζήτα", "λάμδα"}) {
            choose(find<QComboBox>(products, "brandPicker"), brand);
            look(products);
        }
        closeSheets();
    }

    // What the file dialogs are handed.
    void lookAtFiles() {
        m_dialogs.whereToSave.reset();
        for (const auto& [name, button] :
             {std::pair("importSheet", "chooseFileButton"), std::pair("qrSheet", "saveButton"),
              std::pair("catalogSheet", "exportButton")}) {
            click(openWindow(name), button);
            closeSheets();
        }
        for (const auto* const name : {"exportCsv", "exportJson", "save"})
            give(name);
        for (const auto& name : m_dialogs.typeNames)
            expectTranslated(name);
    }

    void lookIntoVersions() {
        auto& versions = openWindow("versionsSheet");
        look(versions);
        for (int restored = 0; restored < 2; ++restored) {
            click(versions, "restoreAllButton");
            settleReads();
        }
        lookAndClose(versions);
    }

    void expectTranslated(const std::string& text) {
        EXPECT_FALSE(PseudoTranslation::isUntranslated(text)) << text;
    }

    // Versions of every kind and time, whatever there is of them.
    void lookAtVersions() {
        const auto now = Timestamp::parseIso8601("2026-12-20T12:00:00Z").value();
        for (const auto kind :
             {Version::Kind::RestorePoint, Version::Kind::DailyCopy, Version::Kind::SetAside}) {
            for (const auto isReadable : {false, true}) {
                for (const auto* const before : {"", "α"})
                    expectTranslated(lineOf({kind, now, before, {{1, 1}}, {}, {}, {}, isReadable}, now).what);
            }
        }
        for (int day = 0; day < 400; day += day < 2 ? 1 : 28) {
            const Timestamp at{now.secondsSinceReference - 86400.0 * day};
            for (const auto beginning : {Beginning::Small, Beginning::Capital})
                expectTranslated(whenInWords({{}, at, {}, {}, {}, {}, {}, true}, now, beginning));
        }
        expectTranslated(countsInWords({1, 1}) + countsInWords({2, 2}));
        VersionList list;
        int read = 0;
        for (const auto& content : {std::optional<LibraryVersion>(), std::optional(LibraryVersion{}),
                                    std::optional(LibraryVersion{std::vector<Shoot>(), {}})}) {
            list.show({{{}, now, {}, {}, "/α" + std::to_string(++read), {}, {}, true}});
            list.choose(0);
            ASSERT_TRUE(list.beginReading());
            list.finishReading(content);
            expectTranslated(list.reasonForNoShoots());
        }
    }

    // What is told of a start on these files.
    void lookAtStart(const std::map<std::filesystem::path, std::string>& files) {
        MemoryFileStore disk;
        disk.files = files;
        ManualTimer timer;
        StoreFolder folder(
            disk, "/α", m_clock.clock(), [](const auto& work) { work(); }, timer);
        Document document(&folder.shoots(), &folder.catalog(), m_clock.clock(), &folder.points());
        document.loadOnce();
        Notices notices([] { return std::chrono::milliseconds(0); });
        tellHowItLoaded(document, folder, notices, m_urls, [&](Store store, const auto& onFound) {
            onFound(newestGoodVersion(disk, "/α", store));
        });
        for (; notices.current() != nullptr; notices.dismiss()) {
            expectTranslated(notices.current()->text);
            for (const auto& action : notices.current()->actions)
                expectTranslated(action.text);
        }
    }

    void lookAtStarts() {
        const std::string shoots = storeOf({Shoot::make("α", "", "", m_clock.now())});
        const std::string catalog = R"({"products":[],"clients":["α"],"brands":[]})";
        for (const auto* const changed : {"shoots", "catalog", ""}) {
            std::map<std::filesystem::path, std::string> files{{"/α/shoots.json", shoots},
                                                               {"/α/catalog.json", catalog}};
            for (const std::string store : {"shoots", "catalog"}) {
                if (*changed == '\0' || store == changed)
                    files["/α/" + store + ".json.checksum"] = checksumOf("other") + '\n';
            }
            lookAtStart(files);
        }
        lookAtStart({{"/α/shoots.json", "x"}, {"/α/catalog.json", "x"}});
        lookAtStart({{"/α/shoots.json", "x"},
                     {"/α/catalog.json", "x"},
                     {"/α/backups/shoots-2026-03-14.json", shoots},
                     {"/α/backups/catalog-2026-03-14.json", catalog}});
    }

    // What is told of files that cannot be read, and of lines that bring nothing.
    void lookAtNotices() {
        using enum FileStore::ReadFailure;
        const auto lookAtIt = [this] {
            ASSERT_NE(m_notices.current(), nullptr);
            expectTranslated(m_notices.current()->text);
            m_notices.dismiss();
        };
        for (const auto why : {Missing, TooLarge, Unreadable}) {
            ui::tellUnreadable(m_services, "/α", why);
            lookAtIt();
        }
        ui::tellNoUtf8(m_services, "/α");
        lookAtIt();
        addShoot("α");
        for (const auto* const csv : {"Set;Merk\n1;α\n2", "Set;Merk\n1\n2"}) {
            manager().importCSV(csv, shoot().id);
            lookAtIt();
        }
    }

    void lookAtFailures() {
        using enum FileFailure::Reason;
        for (const auto reason : {NoSpace, NotPermitted, ReadOnly, Missing, NameTooLong, NameTaken, NotAFile,
                                  Abandoned, NotDurable, Other})
            expectTranslated(reasonInWords({reason}));
        m_files.failsToReplace = true;
        addShoot("άλφα");
        look(main());
        m_dialogs.whereToSave = "/ω/ω";
        addSet("1");
        click(main(), "saveButton");
        look(main());
        main().close();
        settle();
        lookAndClose(sheet("quitQuestion"));
        m_files.failsToReplace = false;
        m_stores.saveAgain();
        look(main());
        click(main(), "saveButton");
        look(main());
        give("undo");
        look(main());
        give("redo");
        auto set = shoot().sets[0];
        set.brand = std::string(3000, '1');
        manager().updateSet(set.id, set);
        settle();
        auto& code = openWindow("qrSheet");
        click(code, "saveButton");
        look(code);
    }

    void lookIntoAlert() {
        m_files.files["/in/broken.vantor"] = "no shoot";
        m_dialogs.whatToOpen = "/in/broken.vantor";
        click(main(), "openButton");
        settleReads();
        lookAndClose(sheet("alert"));
    }

    // What sheets say when what they were opened for is gone, or a list is too much.
    void lookIntoProblems() {
        const auto importInto = [this](QWidget& sheet, const QString& text) {
            find<QPlainTextEdit>(sheet, "csvText").setPlainText(text);
            click(sheet, "importButton");
            settleReads();
            lookAndClose(sheet);
        };
        for (const auto* const name : {"newSetSheet", "editSetSheet", "importSheet"}) {
            addShoot("άλφα");
            addSet("1", "ζήτα");
            auto& sheet = openWindow(name);
            manager().deleteShoot(shoot().id);
            if (name == std::string_view("importSheet")) {
                importInto(sheet, "1;ζήτα");
                continue;
            }
            find<QLineEdit>(sheet, "brandField").setText("ζήτα");
            click(sheet, "confirmButton");
            lookAndClose(sheet);
        }
        importInto(openWindow("importSheet"), QStringLiteral("1\n").repeated(100'001));
        m_services.clock = []() -> Timestamp { throw std::bad_alloc(); };
        importInto(openWindow("importSheet"), "1;ζήτα");
        m_services.clock = m_clock.clock();
        auto& product = openWindow("editProductSheet");
        while (!catalog().products().empty())
            catalog().deleteProduct(catalog().products().front().id);
        click(product, "confirmButton");
        lookAndClose(product);
    }

    PseudoTranslation m_translation;
    const DocumentNotices m_documentNotices{m_document, &m_stores, m_notices};
    std::vector<std::string> m_untranslated;
    int m_looked = 0;
};

TEST_F(Translation, LeavesNoTextOfAnyWindowInDutch) {
    lookIntoEmptyWindows();
    lookIntoFullWindows();
    lookIntoAlert();
    lookAtFiles();
    lookIntoProblems();
    lookIntoVersions();
    give("about");
    lookAndClose(sheet("alert"));
    lookAtVersions();
    lookAtStarts();
    lookAtNotices();
    lookAtFailures();
    EXPECT_THAT(m_untranslated, IsEmpty());
    EXPECT_GE(m_looked, 30);

    // Whoever translates what is extracted has translated all of it.
    const auto extracted = extractedTexts(kProject);
    std::vector<std::string> unknown;
    for (const auto& text : m_translation.lookedUp()) {
        if (!extracted.contains(text))
            unknown.push_back(text);
    }
    EXPECT_THAT(unknown, IsEmpty());

    // And the walk came by everything that the windows have to say.
    std::vector<std::string> unseen;
    for (const auto& [text, places] : extracted) {
        const bool ofWindows =
            places.find("src/ui/") != std::string::npos || places.find("src/view/") != std::string::npos;
        if (ofWindows && !m_translation.lookedUp().contains(text))
            unseen.push_back(text);
    }
    EXPECT_THAT(unseen, IsEmpty());
}

TEST_F(Translation, LookingFindsWhatWasNotTranslated) {
    QWidget window;
    window.setWindowTitle(QString::fromStdString(PseudoTranslation::translated("Sluiten (Ctrl+W)")));
    look(window);
    EXPECT_THAT(m_untranslated, IsEmpty());
    window.setToolTip("Sluiten");
    look(window);
    EXPECT_THAT(m_untranslated, Contains(::testing::HasSubstr("Sluiten")));
}

} // namespace
} // namespace vantor::testing
