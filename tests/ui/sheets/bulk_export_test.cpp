#include "platform/posix/posix_file_store.h"
#include "tests/support/command.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/ui_fixture.h"
#include "ui/sheets/bulk_qr_export_sheet.h"

#include <QCheckBox>
#include <QProgressDialog>
#include <QSemaphore>
#include <QThreadPool>
#include <atomic>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Makes no code before it may.
class HeldEncoder final : public QrEncoder {
public:
    [[nodiscard]] std::optional<Bitmap> encode(std::string_view bytes) const override {
        mayEncode.acquire();
        ++codes;
        return QrencodeEncoder().encode(bytes);
    }
    mutable QSemaphore mayEncode;
    mutable std::atomic<int> codes = 0;
};

class BulkExportTest : public UiTest {
protected:
    // What is still held back ends with the test, however that ends.
    ~BulkExportTest() override { m_held.mayEncode.release(1000); }

    // The sheet on real files, for a shoot of sets "Merk1" to "Merk<count>".
    QDialog& openOnDisk(std::size_t count) { return openOnDisk(count, m_encoder); }
    QDialog& openOnDisk(std::size_t count, const QrEncoder& encoder) {
        openMain();
        SetList sets;
        for (std::size_t i = 1; i <= count; ++i) {
            sets.push_back(SetData::make(m_clock.now()));
            sets[i - 1].brand = "Merk" + std::to_string(i);
        }
        m_onDisk.emplace(servicesOn(m_disk, encoder));
        m_dialogs.whereToSave = m_folder / "kaarten.pdf";
        (new ui::BulkQRExportSheet(m_main.get(), std::move(sets), "Texel", *m_onDisk))->open();
        return awaitSheet("bulkExportSheet");
    }

    bool awaitClosing() {
        const bool closed = runUntil([this] { return !isOpen("bulkExportSheet"); });
        settle();
        return closed;
    }

    static std::vector<QCheckBox*> boxes(const QWidget& sheet) {
        return allVisible<QCheckBox>(sheet, "cardCheckBox");
    }

    // What a program makes of what was printed.
    [[nodiscard]] std::string printed(const std::string& program) const {
        return runCommand("cd '" + m_folder.path().string() + "' && " + program).output;
    }

    TemporaryFolder m_folder;
    PosixFileStore m_disk;
    std::optional<ui::Services> m_onDisk;
    HeldEncoder m_held;
};

TEST_F(BulkExportTest, ShowsTheSetsInTheShootsOrderWithTheNamesOfTheirItems) {
    openMain();
    addShoot("Texel");
    addSet("2", "Zara");
    addSet("1", "Nike", {SetItem::make("jas", "rood"), SetItem::make("broek", "")});
    const auto& sheet = openWindow("bulkExportSheet");
    EXPECT_THAT(textsOf(sheet, "cardHeadline"),
                ElementsAre(shoot().sets[0].headline(), shoot().sets[1].headline()));
    EXPECT_THAT(textsOf(sheet, "cardItems"), ElementsAre("jas, broek"));
}

TEST_F(BulkExportTest, TheButtonOffersAllUntilAllAreSelected) {
    openMainWithSets(6);
    const auto& sheet = openWindow("bulkExportSheet");
    click(*boxes(sheet).at(2));
    for (const int selected : {5, 6, 0}) {
        SCOPED_TRACE(selected);
        EXPECT_EQ(textOf(sheet, "selectAllButton"), selected == 6 ? "Deselecteer alles" : "Selecteer alles");
        EXPECT_EQ(textOf(sheet, "selectedCount"), QString("%1 geselecteerd").arg(selected));
        EXPECT_EQ(find(sheet, "exportButton").isEnabled(), selected > 0);
        EXPECT_EQ(std::ranges::count_if(boxes(sheet), &QCheckBox::isChecked), selected);
        click(sheet, "selectAllButton");
    }
}

TEST_F(BulkExportTest, SetsAreSelectedByTheirTextsAndWithKeysAlone) {
    openMainWithSets(3);
    const auto& sheet = openWindow("bulkExportSheet");
    const auto expectChecked = [&](std::vector<bool> expected) {
        std::vector<bool> checked;
        for (const auto* const box : boxes(sheet))
            checked.push_back(box->isChecked());
        EXPECT_EQ(checked, expected);
    };
    expectChecked({true, true, true});
    QTest::mouseClick(allVisible<QWidget>(sheet, "cardHeadline").at(2), Qt::LeftButton);
    expectChecked({true, true, false});
    find(sheet, "cardList").setFocus(Qt::TabFocusReason);
    find<ui::RecyclingList>(sheet, "cardList").setCurrentRow(1);
    press(Qt::Key_Return);
    expectChecked({true, false, false});
    press(Qt::Key_Space);
    expectChecked({true, true, false});
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    expectChecked({true, false, false});
    EXPECT_TRUE(isOpen("bulkExportSheet"));
}

TEST_F(BulkExportTest, CancellingTheDialogKeepsTheSheetAndItsSelection) {
    auto& sheet = openOnDisk(3);
    m_dialogs.whereToSave.reset();
    click(*boxes(sheet).at(0));
    click(sheet, "exportButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("Texel-QR-kaarten.pdf"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("pdf")));
    EXPECT_EQ(textOf(sheet, "selectedCount"), "2 geselecteerd");
    EXPECT_FALSE(boxes(sheet).at(0)->isChecked());
    EXPECT_TRUE(find(sheet, "exportButton").isEnabled());
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(BulkExportTest, PrintsTheSelectedSetsInTheShootsOrderWhateverTheyWereSelectedIn) {
    auto& sheet = openOnDisk(4);
    click(sheet, "selectAllButton");
    for (const std::size_t row : {2U, 0U, 1U})
        click(*boxes(sheet).at(row));
    click(sheet, "exportButton");
    ASSERT_TRUE(awaitClosing());
    EXPECT_THAT(m_folder.names(), ElementsAre("kaarten.pdf"));
    const auto text = printed("pdftotext -layout kaarten.pdf -");
    EXPECT_THAT(text, ::testing::ContainsRegex("Merk1(.|\n)*Merk2(.|\n)*Merk3"));
    EXPECT_THAT(text, ::testing::Not(HasSubstr("Merk4")));
}

TEST_F(BulkExportTest, TheDensityDecidesHowManyPages) {
    for (const auto& [density, pages] : {std::pair("densityLarge", "3"), std::pair("densityCompact", "1")}) {
        auto& sheet = openOnDisk(9);
        click(sheet, density);
        EXPECT_TRUE(find<QAbstractButton>(sheet, density).isChecked());
        click(sheet, "exportButton");
        ASSERT_TRUE(awaitClosing());
        EXPECT_THAT(printed("pdfinfo kaarten.pdf"),
                    ::testing::ContainsRegex(std::string("Pages: +") + pages + "\n"));
    }
}

TEST_F(BulkExportTest, ClosesWithoutAWordWhenTheFileCannotBeWritten) {
    auto& sheet = openOnDisk(2);
    m_dialogs.whereToSave = m_folder / "geen map" / "kaarten.pdf";
    click(sheet, "exportButton");
    EXPECT_TRUE(awaitClosing());
    EXPECT_THAT(m_folder.names(), IsEmpty());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(BulkExportTest, AnExportOfHalfASecondShowsHowFarItIs) {
    auto& sheet = openOnDisk(12, m_held);
    click(sheet, "exportButton");
    EXPECT_FALSE(find(sheet, "exportButton").isEnabled());
    EXPECT_EQ(find<QProgressDialog>(sheet, "exportProgress").minimumDuration(), 500);
    ASSERT_TRUE(runUntil([&] { return isOpen("exportProgress"); }));
    const auto& progress = dynamic_cast<QProgressDialog&>(this->sheet("exportProgress"));
    EXPECT_EQ(progress.labelText(), "QR-kaarten worden gemaakt...");
    EXPECT_EQ(progress.maximum(), 12);
    EXPECT_EQ(progress.value(), 0);
    m_held.mayEncode.release(5);
    EXPECT_TRUE(runUntil([&] { return progress.value() == 5; }));
    m_held.mayEncode.release(7);
    ASSERT_TRUE(awaitClosing());
    EXPECT_FALSE(isOpen("exportProgress"));
    EXPECT_THAT(m_folder.names(), ElementsAre("kaarten.pdf"));
}

TEST_F(BulkExportTest, ACancelledExportLeavesNoFileAndTheSheetAsItWas) {
    auto& sheet = openOnDisk(60, m_held);
    click(*boxes(sheet).at(0));
    // With the sheet's own button, and with Escape once its progress is shown.
    for (const bool isShown : {false, true}) {
        m_held.codes = 0;
        click(sheet, "exportButton");
        if (isShown) {
            ASSERT_TRUE(runUntil([&] { return isOpen("exportProgress"); }));
            // Its Escape is a shortcut, which only the active window has.
            QTest::keyClick(&awaitSheet("exportProgress"), Qt::Key_Escape);
        } else {
            click(sheet, "cancelButton");
        }
        m_held.mayEncode.release(60);
        ASSERT_TRUE(runUntil([&] { return find(sheet, "exportButton").isEnabled(); }));
        settle();
        EXPECT_LE(m_held.codes, 1) << "the one that was being made, of 59";
        EXPECT_TRUE(isOpen("bulkExportSheet"));
        EXPECT_FALSE(isOpen("exportProgress"));
        EXPECT_EQ(textOf(sheet, "selectedCount"), "59 geselecteerd");
        EXPECT_THAT(m_folder.names(), IsEmpty());
        m_held.mayEncode.acquire(m_held.mayEncode.available());
    }
    click(sheet, "cancelButton");
    EXPECT_FALSE(isOpen("bulkExportSheet"));
}

TEST_F(BulkExportTest, TheWindowMayGoDuringAnExport) {
    auto& sheet = openOnDisk(10, m_held);
    click(sheet, "exportButton");
    m_main.reset();
    m_held.mayEncode.release(10);
    QThreadPool::globalInstance()->waitForDone();
    settle();
    EXPECT_FALSE(isOpen("bulkExportSheet"));
    EXPECT_FALSE(isOpen("exportProgress"));
}

TEST_F(BulkExportTest, WorksOnTheSetsAsTheyWere) {
    openMainWithSets(3);
    const auto& sheet = openWindow("bulkExportSheet");
    manager().deleteShoot(shoot().id);
    settle();
    EXPECT_EQ(textOf(sheet, "selectedCount"), "3 geselecteerd");
    m_dialogs.whereToSave = "/tmp/kaarten.pdf";
    click(sheet, "exportButton");
    ASSERT_TRUE(awaitClosing());
    EXPECT_THAT(m_files.files.at("/tmp/kaarten.pdf"), HasSubstr("%PDF-"));
}

} // namespace
} // namespace vantor::testing
