#include "platform/posix/posix_file_store.h"
#include "tests/support/command.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/sheets/sheet_test.h"
#include "ui/sheets/bulk_qr_export_sheet.h"

#include <QCheckBox>
#include <QLayout>
#include <QProgressDialog>
#include <QScrollArea>
#include <QSemaphore>
#include <QThreadPool>
#include <atomic>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class BulkExportTest : public SheetTest {
protected:
    // What is still held back ends with the test, however that ends.
    ~BulkExportTest() override { m_mayDraw.release(1000); }

    // The sheet on real files, for a shoot of sets "Merk1" to "Merk<count>".
    QDialog& openOnDisk(unsigned count, PdfCanvasFactory canvases = CairoPdfCanvas::make) {
        if (m_main == nullptr)
            openMain();
        SetList sets;
        for (unsigned i = 1; i <= count; ++i) {
            auto set = SetData::make(m_clock.now());
            set.setNumber = std::to_string(i);
            set.brand = "Merk" + std::to_string(i);
            sets.push_back(std::move(set));
        }
        m_onDisk.emplace(servicesOn(m_disk, std::move(canvases)));
        m_dialogs.whereToSave = m_folder / "kaarten.pdf";
        (new ui::BulkQRExportSheet(m_main.get(), std::move(sets), "Texel", *m_onDisk))->open();
        return awaitSheet("bulkExportSheet");
    }

    // A canvas that draws no card before it may.
    PdfCanvasFactory held() {
        return [this](ByteSink& sink, double width, double height) {
            class Held : public PdfCanvas {
            public:
                Held(std::unique_ptr<PdfCanvas> canvas, QSemaphore& mayDraw, std::atomic<int>& cards)
                    : m_canvas(std::move(canvas)),
                      m_mayDraw(mayDraw),
                      m_cards(cards) {}
                void beginPage() override { m_canvas->beginPage(); }
                void endPage() override { m_canvas->endPage(); }
                void strokeLines(std::span<const PdfLine> lines, const PdfStroke& stroke) override {
                    m_canvas->strokeLines(lines, stroke);
                }
                void drawBitmap(const Bitmap& picture, const PdfRect& into) override {
                    m_mayDraw.acquire();
                    ++m_cards;
                    m_canvas->drawBitmap(picture, into);
                }
                double textWidth(std::string_view text, const PdfFont& font) override {
                    return m_canvas->textWidth(text, font);
                }
                void drawText(std::string_view text, const PdfFont& font, PdfPoint origin,
                              double stretch) override {
                    m_canvas->drawText(text, font, origin, stretch);
                }
                bool finish() override { return m_canvas->finish(); }

            private:
                std::unique_ptr<PdfCanvas> m_canvas;
                QSemaphore& m_mayDraw;
                std::atomic<int>& m_cards;
            };
            return std::make_unique<Held>(CairoPdfCanvas::make(sink, width, height), m_mayDraw, m_cards);
        };
    }

    bool awaitClosing() {
        const bool closed = runUntil([this] { return !isOpen("bulkExportSheet"); });
        settle();
        return closed;
    }

    static std::vector<QCheckBox*> boxes(const QWidget& sheet) {
        return allVisible<QCheckBox>(sheet, "cardCheckBox");
    }

    [[nodiscard]] std::string printedText() const {
        return runCommand("pdftotext -layout '" + (m_folder / "kaarten.pdf").string() + "' -").output;
    }

    TemporaryFolder m_folder;
    PosixFileStore m_disk;
    std::optional<ui::Services> m_onDisk;
    QSemaphore m_mayDraw;
    std::atomic<int> m_cards{0};
};

TEST_F(BulkExportTest, SaysWhatItIsForWithAllSelected) {
    openMainWithSets(3);
    const auto& sheet = openBulkExport();
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Bulk QR-export",
                            "Exporteer QR-kaarten van meerdere sets in één PDF, klaar om te printen.",
                            "Dichtheid / Groot — 4 per A4 / Compact — 9 per A4",
                            "Deselecteer alles / 3 geselecteerd", "(list)", "Annuleer / Exporteer PDF..."));
    EXPECT_GE(find(sheet, "cardList").height(), 240);
    const auto& column = *find<QScrollArea>(sheet, "sheetPane").widget()->layout();
    EXPECT_EQ(column.contentsMargins(), QMargins(24, 24, 24, 0));
    EXPECT_EQ(column.spacing(), 16);
    EXPECT_TRUE(find<QAbstractButton>(sheet, "densityLarge").isChecked());
    EXPECT_FALSE(find<QAbstractButton>(sheet, "densityCompact").isChecked());
    EXPECT_TRUE(find(sheet, "exportButton").isEnabled());
}

TEST_F(BulkExportTest, ShowsTheSetsInTheShootsOrderWithTheNamesOfTheirItems) {
    openMain();
    addShoot("Texel");
    addSet("2", "Zara");
    addSet("1", "Nike", {SetItem::make("jas", "rood"), SetItem::make("broek", "")});
    const auto& sheet = openBulkExport();
    EXPECT_THAT(rowTexts(sheet, "cardHeadline"),
                ElementsAre(shoot().sets[0].headline(), shoot().sets[1].headline()));
    EXPECT_THAT(rowTexts(sheet, "cardItems"), ElementsAre("jas, broek"));
}

TEST_F(BulkExportTest, TheButtonOffersAllUntilAllAreSelected) {
    openMainWithSets(6);
    const auto& sheet = openBulkExport();
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

TEST_F(BulkExportTest, TheRowsTextsAreTheBoxsLabel) {
    openMainWithSets(2);
    const auto& sheet = openBulkExport();
    QTest::mouseClick(allVisible<QWidget>(sheet, "cardHeadline").at(1), Qt::LeftButton);
    settle();
    EXPECT_TRUE(boxes(sheet).at(0)->isChecked());
    EXPECT_FALSE(boxes(sheet).at(1)->isChecked());
}

TEST_F(BulkExportTest, SetsAreSelectedWithKeysAlone) {
    openMainWithSets(3);
    const auto& sheet = openBulkExport();
    find(sheet, "cardList").setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_FALSE(boxes(sheet).at(1)->isChecked());
    EXPECT_EQ(textOf(sheet, "selectedCount"), "2 geselecteerd");
    EXPECT_TRUE(isOpen("bulkExportSheet"));
    press(Qt::Key_Space);
    EXPECT_TRUE(boxes(sheet).at(1)->isChecked());
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_FALSE(boxes(sheet).at(1)->isChecked());
}

TEST_F(BulkExportTest, CancellingTheDialogKeepsTheSheetAndItsSelection) {
    auto& sheet = openOnDisk(3);
    m_dialogs.whereToSave.reset();
    click(*boxes(sheet).at(0));
    click(sheet, "exportButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("Texel-QR-kaarten.pdf"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("pdf")));
    EXPECT_TRUE(isOpen("bulkExportSheet"));
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
    EXPECT_THAT(printedText(), ::testing::ContainsRegex("Merk1(.|\n)*Merk2(.|\n)*Merk3"));
    EXPECT_THAT(printedText(), ::testing::Not(HasSubstr("Merk4")));
}

TEST_F(BulkExportTest, TheDensityDecidesHowManyPages) {
    for (const auto& [density, pages] : {std::pair("densityLarge", "3"), std::pair("densityCompact", "1")}) {
        auto& sheet = openOnDisk(9);
        click(sheet, density);
        EXPECT_TRUE(find<QAbstractButton>(sheet, density).isChecked());
        click(sheet, "exportButton");
        ASSERT_TRUE(awaitClosing());
        EXPECT_THAT(runCommand("pdfinfo '" + (m_folder / "kaarten.pdf").string() + "'").output,
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
    auto& sheet = openOnDisk(12, held());
    click(sheet, "exportButton");
    EXPECT_FALSE(find(sheet, "exportButton").isEnabled());
    EXPECT_EQ(find<QProgressDialog>(sheet, "exportProgress").minimumDuration(), 500);
    ASSERT_TRUE(runUntil([&] { return isOpen("exportProgress"); }));
    const auto& progress = dynamic_cast<QProgressDialog&>(this->sheet("exportProgress"));
    EXPECT_EQ(progress.labelText(), "QR-kaarten worden gemaakt...");
    EXPECT_EQ(progress.maximum(), 12);
    EXPECT_EQ(progress.value(), 0);
    m_mayDraw.release(5);
    EXPECT_TRUE(runUntil([&] { return progress.value() == 5; }));
    m_mayDraw.release(7);
    ASSERT_TRUE(awaitClosing());
    EXPECT_FALSE(isOpen("exportProgress"));
    EXPECT_THAT(m_folder.names(), ElementsAre("kaarten.pdf"));
}

TEST_F(BulkExportTest, ACancelledExportLeavesNoFileAndTheSheetAsItWas) {
    auto& sheet = openOnDisk(60, held());
    click(*boxes(sheet).at(0));
    // With the sheet's own button, and with Escape once its progress is shown.
    for (const bool isShown : {false, true}) {
        m_cards = 0;
        click(sheet, "exportButton");
        if (isShown) {
            ASSERT_TRUE(runUntil([&] { return isOpen("exportProgress"); }));
            auto& progress = dynamic_cast<QProgressDialog&>(this->sheet("exportProgress"));
            // Its Escape is a shortcut, which only the active window has.
            ASSERT_TRUE(runUntil([&] { return progress.isActiveWindow(); }));
            QTest::keyClick(&progress, Qt::Key_Escape);
            ASSERT_TRUE(runUntil([&] { return progress.wasCanceled(); }));
        } else {
            click(sheet, "cancelButton");
        }
        m_mayDraw.release(60);
        ASSERT_TRUE(runUntil([&] { return find(sheet, "exportButton").isEnabled(); }));
        settle();
        // The one that was being drawn, of 59.
        EXPECT_LE(m_cards, 1);
        EXPECT_TRUE(isOpen("bulkExportSheet"));
        EXPECT_FALSE(isOpen("exportProgress"));
        EXPECT_EQ(textOf(sheet, "selectedCount"), "59 geselecteerd");
        EXPECT_THAT(m_folder.names(), IsEmpty());
        while (m_mayDraw.tryAcquire()) {
        }
    }
    click(sheet, "cancelButton");
    EXPECT_FALSE(isOpen("bulkExportSheet"));
}

TEST_F(BulkExportTest, TheWindowMayGoDuringAnExport) {
    auto& sheet = openOnDisk(10, held());
    click(sheet, "exportButton");
    m_main.reset();
    m_mayDraw.release(10);
    QThreadPool::globalInstance()->waitForDone();
    settle();
    EXPECT_FALSE(isOpen("bulkExportSheet"));
    EXPECT_FALSE(isOpen("exportProgress"));
}

TEST_F(BulkExportTest, WorksOnTheSetsAsTheyWere) {
    openMainWithSets(3);
    const auto& sheet = openBulkExport();
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
