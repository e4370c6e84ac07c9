#include "base/text.h"
#include "output/bulk_qr_pdf_exporter.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "tests/output/recording_canvas.h"
#include "tests/support/command.h"
#include "tests/support/environment_variable.h"
#include "tests/support/examples.h"
#include "tests/support/gray_picture.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::DoubleNear;
using testing::DrawnBitmap;
using testing::DrawnLines;
using testing::DrawnText;
using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::IsEmpty;
using testing::MemoryFileStore;
using testing::noorderlicht;
using ::testing::Optional;
using testing::Recording;
using testing::TemporaryFolder;

constexpr double kTolerance = 1e-6;

SetData setOf(std::string number, std::string brand) {
    auto set = SetData::make(testing::kMorning);
    set.setNumber = std::move(number);
    set.brand = std::move(brand);
    return set;
}

SetList numberedSets(std::size_t count) {
    SetList sets;
    for (std::size_t i = 1; i <= count; ++i)
        sets.push_back(setOf(std::to_string(i), ""));
    return sets;
}

SetData tooLongSet() {
    return setOf("99", std::string(2332, 'x'));
}

void expectAt(const PdfRect& rect, double x, double y, double edge) {
    EXPECT_NEAR(rect.x, x, kTolerance);
    EXPECT_NEAR(rect.y, y, kTolerance);
    EXPECT_NEAR(rect.width, edge, kTolerance);
    EXPECT_NEAR(rect.height, edge, kTolerance);
}

std::string repeated(const std::string& piece, std::size_t count) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i)
        out += piece;
    return out;
}

class BulkQRPDFExporterTest : public ::testing::Test {
protected:
    // Draws the sets on paper that only remembers.
    const Recording& draw(const SetList& sets, BulkQRDensity density) {
        recording.pages.clear();
        const MemoryFileStore files;
        EXPECT_TRUE(
            BulkQRPDFExporter(encoder, recording.factory(), files).exportTo(sets, density, "cards.pdf"));
        return recording;
    }

    std::size_t codesDrawn() const {
        std::size_t codes = 0;
        for (std::size_t page = 0; page < recording.pages.size(); ++page)
            codes += recording.all<DrawnBitmap>(page).size();
        return codes;
    }

    Recording recording;
    QrencodeEncoder encoder;
};

TEST_F(BulkQRPDFExporterTest, KnowsItsDensities) {
    EXPECT_THAT(kAllDensities, ElementsAre(BulkQRDensity::large, BulkQRDensity::compact));
    EXPECT_EQ(rawValue(BulkQRDensity::large), "large");
    EXPECT_EQ(rawValue(BulkQRDensity::compact), "compact");
    EXPECT_EQ(cardLayout(BulkQRDensity::large).cardsPerPage(), 4);
    EXPECT_EQ(cardLayout(BulkQRDensity::compact).cardsPerPage(), 9);
}

TEST_F(BulkQRPDFExporterTest, FillsPagesAndBeginsAnotherForTheRest) {
    struct Case {
        BulkQRDensity density;
        std::size_t sets;
        std::vector<std::size_t> cardsOnPages;
    };
    const std::vector<Case> cases{
        {BulkQRDensity::large, 1, {1}},       {BulkQRDensity::large, 4, {4}},
        {BulkQRDensity::large, 5, {4, 1}},    {BulkQRDensity::large, 8, {4, 4}},
        {BulkQRDensity::large, 9, {4, 4, 1}}, {BulkQRDensity::compact, 1, {1}},
        {BulkQRDensity::compact, 9, {9}},     {BulkQRDensity::compact, 10, {9, 1}},
        {BulkQRDensity::compact, 18, {9, 9}},
    };
    for (const auto& [density, sets, cardsOnPages] : cases) {
        draw(numberedSets(sets), density);
        EXPECT_EQ(recording.width, 595.28);
        EXPECT_EQ(recording.height, 841.89);
        EXPECT_TRUE(recording.isFinished);
        ASSERT_EQ(recording.pages.size(), cardsOnPages.size()) << sets;
        EXPECT_EQ(recording.pagesEnded, cardsOnPages.size()) << sets;
        recording.pagesEnded = 0;
        std::vector<std::string> headlines;
        for (std::size_t page = 0; page < cardsOnPages.size(); ++page) {
            EXPECT_EQ(recording.all<DrawnBitmap>(page).size(), cardsOnPages[page]);
            for (const auto& text : recording.texts(page))
                headlines.push_back(text);
        }
        ASSERT_EQ(headlines.size(), sets);
        for (std::size_t i = 0; i < sets; ++i)
            EXPECT_EQ(headlines[i], "Set " + std::to_string(i + 1));
    }
}

// All of a page, in order: points from its lower left corner, and the stroke in grey, alpha, width, dash and gap.
std::string written(const Recording::Page& page) {
    std::ostringstream out;
    for (const auto& drawn : page) {
        if (const auto* const drawing = std::get_if<DrawnLines>(&drawn)) {
            const auto& [lines, stroke] = *drawing;
            out << std::defaultfloat << stroke.gray << ' ' << stroke.alpha << ' ' << stroke.width << ' '
                << stroke.dash << ' ' << stroke.gap << '\n'
                << std::fixed << std::setprecision(4);
            for (const auto& [from, to] : lines)
                out << from.x << ' ' << from.y << " to " << to.x << ' ' << to.y << '\n';
        } else if (const auto* const code = std::get_if<DrawnBitmap>(&drawn)) {
            EXPECT_EQ(code->into.width, code->into.height);
            out << "code " << code->into.width << " at " << code->into.x << ' ' << code->into.y << '\n';
        } else {
            const auto& [text, font, origin, stretch] = std::get<DrawnText>(drawn);
            EXPECT_EQ(stretch, 1);
            out << text << (font.bold ? ", bold " : ", ") << font.size << " at " << origin.x << ' '
                << origin.y << '\n';
        }
    }
    return out.str();
}

// Cutting lines first, then row by row from the top left, each code above its lines of text, which stand in the middle.
TEST_F(BulkQRPDFExporterTest, DrawsCardsWhereTheyAreCut) {
    auto bare = SetData::make(testing::kMorning);
    bare.email = "anna@example.com";
    draw({noorderlicht(), setOf("1", ""), bare, bare, bare}, BulkQRDensity::large);
    const std::string large = "0.5 0.4 0.5 3 3\n"
                              "297.6400 24.0000 to 297.6400 817.8900\n"
                              "24.0000 420.9450 to 571.2800 420.9450\n";
    ASSERT_EQ(recording.pages.size(), 2U);
    EXPECT_EQ(written(recording.pages[0]),
              large + "code 127.0000 at 97.3200 586.2925\n"
                      "Set 12 — Noorderlicht, bold 15.0000 at 82.0700 559.5425\n"
                      "Anna · Studio A, 10.0000 at 123.3200 544.0425\n"
                      "coated pants (brown), sweater (blue nav…, 10.0000 at 60.8200 528.5425\n"
                      "code 127.0000 at 370.9600 570.7925\n"
                      "Set 1, bold 15.0000 at 415.7100 544.0425\n"
                      "code 127.0000 at 97.3200 162.9725\n"
                      "code 127.0000 at 370.9600 162.9725\n");
    EXPECT_EQ(written(recording.pages[1]), large + "code 127.0000 at 97.3200 559.9175\n");

    SetList sets(10, bare);
    sets[0] = noorderlicht();
    draw(sets, BulkQRDensity::compact);
    const std::string compact = "0.5 0.4 0.5 3 3\n"
                                "206.4267 24.0000 to 206.4267 817.8900\n"
                                "388.8533 24.0000 to 388.8533 817.8900\n"
                                "24.0000 288.6300 to 571.2800 288.6300\n"
                                "24.0000 553.2600 to 571.2800 553.2600\n";
    ASSERT_EQ(recording.pages.size(), 2U);
    EXPECT_EQ(written(recording.pages[0]), compact +
                                               "code 85.0000 at 72.7133 668.4500\n"
                                               "Set 12 — Noorderlicht, bold 11.0000 at 57.4633 646.7000\n"
                                               "Anna · Studio A, 8.0000 at 85.2133 633.7000\n"
                                               "coated pants (brown), sweat…, 8.0000 at 59.2133 620.7000\n"
                                               "code 85.0000 at 255.1400 647.0750\n"
                                               "code 85.0000 at 437.5667 647.0750\n"
                                               "code 85.0000 at 72.7133 382.4450\n"
                                               "code 85.0000 at 255.1400 382.4450\n"
                                               "code 85.0000 at 437.5667 382.4450\n"
                                               "code 85.0000 at 72.7133 117.8150\n"
                                               "code 85.0000 at 255.1400 117.8150\n"
                                               "code 85.0000 at 437.5667 117.8150\n");
    EXPECT_EQ(written(recording.pages[1]), compact + "code 85.0000 at 72.7133 647.0750\n");
}

TEST_F(BulkQRPDFExporterTest, NarrowsLinesThatAreWiderThanTheirCell) {
    recording.characterWidth = 1;
    draw({setOf("1", std::string(100, 'm'))}, BulkQRDensity::large);
    const auto large = recording.all<DrawnText>(0).at(0);
    // 40 characters of 15 points have 273.64 - 8 to fit in.
    EXPECT_NEAR(large.stretch, 265.64 / 600, kTolerance);
    EXPECT_NEAR(large.origin.x, 28, kTolerance);

    draw({setOf("1", std::string(100, 'm'))}, BulkQRDensity::compact);
    const auto compact = recording.all<DrawnText>(0).at(0);
    // 28 characters of 11 points have 182.43 - 8.
    EXPECT_NEAR(compact.stretch, 174.4266666667 / 308, kTolerance);
    EXPECT_NEAR(compact.origin.x, 28, kTolerance);
}

TEST_F(BulkQRPDFExporterTest, LeavesLinesThatJustFitAsTheyAre) {
    recording.characterWidth = 265.64 / 15 / 10;
    draw({setOf("123456", "")}, BulkQRDensity::large);
    EXPECT_EQ(recording.all<DrawnText>(0).at(0).stretch, 1);
    EXPECT_NEAR(recording.all<DrawnText>(0).at(0).origin.x, 28, kTolerance);
    draw({setOf("1234567", "")}, BulkQRDensity::large);
    EXPECT_NEAR(recording.all<DrawnText>(0).at(0).stretch, 10.0 / 11, kTolerance);
    recording.characterWidth = 0;
    draw({setOf("1", "\u200B")}, BulkQRDensity::large);
    EXPECT_EQ(recording.all<DrawnText>(0).at(0).stretch, 1);
}

TEST_F(BulkQRPDFExporterTest, WritesWhatIsKnownAndDropsEmptyLines) {
    struct Case {
        std::string number, brand, model, location;
        std::vector<std::pair<std::string, std::string>> items;
        std::vector<std::string> lines;
    };
    const std::vector<Case> cases{
        {"12", "Marvis", "", "", {}, {"Set 12 — Marvis"}},
        {"12", "", "", "", {}, {"Set 12"}},
        {"", "Marvis", "", "", {}, {"Marvis"}},
        {"", "", "Anna", "", {}, {"Anna"}},
        {"", "", "", "Studio", {}, {"Studio"}},
        {"1", "", "Anna", "Studio", {}, {"Set 1", "Anna · Studio"}},
        {"1", "", "", "", {{"jurk", ""}}, {"Set 1", "jurk"}},
        {"1", "", "", "", {{"jurk", "rood"}}, {"Set 1", "jurk (rood)"}},
        {"1", "", "", "", {{"jurk", "rood"}, {"hoed", ""}}, {"Set 1", "jurk (rood), hoed"}},
        {"1", "", "", "", {{"", ""}}, {"Set 1"}},
        {"1", "", "", "", {{"", "rood"}}, {"Set 1", " (rood)"}},
        {"1", "", "", "", {{"", ""}, {"", ""}}, {"Set 1", ", "}},
        {"", "", "A", "", {{"b", ""}}, {"A", "b"}},
        {"1", "a\nb", "c\r\nd\u2028e", "", {}, {"Set 1 — a b", "c d e"}},
    };
    for (const auto& [number, brand, model, location, items, lines] : cases) {
        auto set = setOf(number, brand);
        set.model = model;
        set.location = location;
        for (const auto& [name, color] : items)
            set.items.push_back(SetItem::make(name, color));
        draw({set}, BulkQRDensity::large);
        EXPECT_EQ(recording.texts(0), lines);
    }
}

TEST_F(BulkQRPDFExporterTest, SetsTextsThatRunFromRightToLeftInPiecesFromLeftToRight) {
    auto set = setOf("א1", "2");
    set.model = "Anna";
    set.location = "\u202Ezaal";
    set.items = {SetItem::make("שמלה", "כחול"), SetItem::make("jurk\r\nlang", ""),
                 SetItem::make("ab" + repeated("ש", 40), "")};
    draw({set}, BulkQRDensity::large);
    ASSERT_THAT(recording.texts(0),
                ElementsAre("Set ", "א1", " — ", "2", "Anna", " · ", "\u202Ezaal", "שמלה", " (", "כחול", ")",
                            ", ", "jurk lang", ", ", "ab" + repeated("ש", 13), "…"));
    // Each line's pieces follow one another and stand in the middle of the cell together.
    const auto drawn = recording.all<DrawnText>(0);
    const auto width = [&](const DrawnText& text) {
        return static_cast<double>(characterCount(text.text)) * text.font.size * recording.characterWidth *
               text.stretch;
    };
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_NEAR(drawn[i].origin.x, drawn[i - 1].origin.x + width(drawn[i - 1]), kTolerance);
    EXPECT_NEAR((drawn[0].origin.x + drawn[3].origin.x + width(drawn[3])) / 2, 160.82, kTolerance);
}

TEST_F(BulkQRPDFExporterTest, ShortensLinesOfMoreCharactersThanFit) {
    struct Case {
        BulkQRDensity density;
        std::size_t most;
    };
    for (const auto& [density, most] : {Case{BulkQRDensity::large, 40}, Case{BulkQRDensity::compact, 28}}) {
        // As users count: a letter with its marks, a family, a flag, a syllable are one character each.
        for (const std::string one :
             {"m", "é", "e\u0301\u0302", "👩‍🎨", "🇳🇱", "👨‍👩‍👧", "각"}) {
            auto set = setOf("", repeated(one, most));
            set.model = repeated(one, most + 1);
            set.items = {SetItem::make(repeated(one, most - 1), "")};
            draw({set}, density);
            EXPECT_THAT(recording.texts(0), ElementsAre(repeated(one, most), repeated(one, most - 1) + "…",
                                                        repeated(one, most - 1)));
        }
    }
}

TEST_F(BulkQRPDFExporterTest, LeavesTheCellEmptyWhereATextIsTooLong) {
    auto invalid = setOf("3", "\xFF");
    draw({setOf("1", ""), tooLongSet(), invalid, setOf("4", ""), tooLongSet()}, BulkQRDensity::large);
    ASSERT_EQ(recording.pages.size(), 2U);
    const auto codes = recording.all<DrawnBitmap>(0);
    ASSERT_EQ(codes.size(), 2U);
    // The others stay in their places.
    expectAt(codes[0].into, 97.32, 570.7925, 127);
    expectAt(codes[1].into, 370.96, 173.8475, 127);
    EXPECT_THAT(recording.texts(0), ElementsAre("Set 1", "Set 4"));
    EXPECT_EQ(recording.pages[1].size(), 1U);
    EXPECT_EQ(recording.all<DrawnLines>(1).size(), 1U);
}

TEST_F(BulkQRPDFExporterTest, DrawsEveryModuleOfACodeEquallyLarge) {
    const QRGenerator generator(encoder);
    for (const std::size_t bytes : {0U, 20U, 100U, 139U, 400U, 1000U, 2000U, 2320U}) {
        const auto set = setOf("", std::string(bytes, 'x'));
        draw({set}, BulkQRDensity::compact);
        const auto picture = recording.all<DrawnBitmap>(0).at(0).picture;
        const auto modules = generator.modules(set.toQRText());
        ASSERT_TRUE(modules);
        const int pixels = picture.width() / modules->width();
        EXPECT_EQ(picture.width(), pixels * modules->width());
        EXPECT_EQ(picture.height(), picture.width());
        EXPECT_GE(picture.width(), 600);
        // No more than that takes.
        EXPECT_LT((pixels - 1) * modules->width(), 600);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                ASSERT_EQ(picture.isBlack(x, y), modules->isBlack(x / pixels, y / pixels)) << x << ", " << y;
        }
    }
}

TEST_F(BulkQRPDFExporterTest, TellsHowLargeModulesAre) {
    const MemoryFileStore files;
    const BulkQRPDFExporter exporter(encoder, recording.factory(), files);
    const SetList sets{setOf("1", ""), tooLongSet(), setOf("", std::string(2320, 'x'))};
    // 23 and 179 modules, on 127 points and on 85.
    for (const auto& [density, smallCode, largeCode] :
         {std::tuple(BulkQRDensity::large, 1.947947, 0.250294),
          std::tuple(BulkQRDensity::compact, 1.303744, 0.167520)}) {
        std::vector<std::string> reported;
        std::vector<std::optional<double>> edges;
        EXPECT_TRUE(exporter.exportTo(sets, density, "cards.pdf", {},
                                      [&](const SetData& set, std::optional<double> edge) {
                                          reported.push_back(set.setNumber);
                                          edges.push_back(edge);
                                      }));
        EXPECT_THAT(reported, ElementsAre("1", "99", ""));
        EXPECT_THAT(edges, ElementsAre(Optional(DoubleNear(smallCode, 1e-5)), Eq(std::nullopt),
                                       Optional(DoubleNear(largeCode, 1e-5))));
    }
}

TEST_F(BulkQRPDFExporterTest, EncodesEachTextOnce) {
    struct CountingEncoder : QrEncoder {
        std::optional<Bitmap> encode(std::string_view bytes) const override {
            ++calls;
            return QrencodeEncoder().encode(bytes);
        }
        mutable int calls = 0;
    };
    const CountingEncoder counting;
    const MemoryFileStore files;
    EXPECT_TRUE(BulkQRPDFExporter(counting, recording.factory(), files)
                    .exportTo(numberedSets(5), BulkQRDensity::large, "cards.pdf", {},
                              [](const SetData&, std::optional<double>) {}));
    EXPECT_EQ(counting.calls, 5);
}

TEST_F(BulkQRPDFExporterTest, TellsItsProgressBeforeEachCardAndReportsItOnceItIsDrawn) {
    const MemoryFileStore files;
    std::vector<std::size_t> told;
    std::vector<std::size_t> drawnWhenTold;
    std::vector<std::size_t> drawnWhenReported;
    const auto progress = [&](std::size_t count) {
        told.push_back(count);
        drawnWhenTold.push_back(codesDrawn());
        return true;
    };
    EXPECT_TRUE(BulkQRPDFExporter(encoder, recording.factory(), files)
                    .exportTo(numberedSets(6), BulkQRDensity::large, "cards.pdf", progress,
                              [&](const SetData&, std::optional<double>) {
                                  drawnWhenReported.push_back(codesDrawn());
                              }));
    EXPECT_THAT(told, ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_EQ(drawnWhenTold, told);
    EXPECT_THAT(drawnWhenReported, ElementsAre(1, 2, 3, 4, 5, 6));
}

// On a disk, where what is left behind can be seen.
class BulkQRPDFFileTest : public BulkQRPDFExporterTest {
protected:
    FileResult exportTo(const std::filesystem::path& path, const SetList& sets,
                        const BulkQRPDFExporter::Progress& progress = {}) {
        return BulkQRPDFExporter(encoder, CairoPdfCanvas::make, files)
            .exportTo(sets, BulkQRDensity::large, path, progress);
    }

    // What another program finds in the file, which is checked by a third.
    [[nodiscard]] std::string textOf(const std::string& options) const {
        const auto path = (folder / "cards.pdf").string();
        EXPECT_EQ(testing::runCommand("qpdf --check " + path).status, 0);
        const auto text = testing::runCommand("pdftotext -enc UTF-8 " + options + " " + path + " -");
        EXPECT_EQ(text.status, 0) << text.output;
        return text.output;
    }

    TemporaryFolder folder;
    PosixFileStore files;
};

TEST_F(BulkQRPDFFileTest, WritesNothingWithoutSets) {
    EXPECT_FALSE(exportTo(folder / "cards.pdf", {}));
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(BulkQRPDFFileTest, KeepsTheOldFileWhenAbandonedAndReplacesItOtherwise) {
    std::ofstream(folder / "cards.pdf") << "old";
    for (const std::size_t last : {0U, 3U, 4U, 9U, 10U}) {
        EXPECT_EQ(testing::readFile(folder / "cards.pdf"), "old");
        const auto done =
            exportTo(folder / "cards.pdf", numberedSets(10), [&](std::size_t drawn) { return drawn < last; });
        EXPECT_EQ(bool(done), last == 10) << last;
        EXPECT_THAT(folder.names(), ElementsAre("cards.pdf"));
    }
    EXPECT_EQ(testing::readFile(folder / "cards.pdf").substr(0, 5), "%PDF-");
}

TEST_F(BulkQRPDFFileTest, FailsWhereNoFileCanBe) {
    std::filesystem::create_directory(folder / "taken");
    EXPECT_FALSE(exportTo(folder / "taken", numberedSets(1)));
    EXPECT_FALSE(exportTo(folder / "missing/cards.pdf", numberedSets(1)));
    EXPECT_FALSE(exportTo("", numberedSets(1)));
    EXPECT_THAT(folder.names(), ElementsAre("taken"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "taken"));
}

TEST_F(BulkQRPDFFileTest, FailsWhenThereIsNoCanvasOrItFails) {
    recording.succeeds = false;
    for (const auto& canvases :
         {PdfCanvasFactory([](ByteSink&, double, double) { return std::unique_ptr<PdfCanvas>(); }),
          recording.factory()}) {
        const BulkQRPDFExporter exporter(encoder, canvases, files);
        EXPECT_FALSE(exporter.exportTo(numberedSets(1), BulkQRDensity::large, folder / "cards.pdf"));
        EXPECT_THAT(folder.names(), IsEmpty());
    }
    EXPECT_TRUE(recording.isFinished);
}

TEST_F(BulkQRPDFFileTest, EveryHeadlineCanBeFoundOnItsPage) {
    auto sets = numberedSets(9);
    for (auto& set : sets)
        set.brand = "Søster & Zoë";
    ASSERT_TRUE(exportTo(folder / "cards.pdf", sets));
    for (std::size_t page = 1; page <= 3; ++page) {
        const auto text = textOf("-f " + std::to_string(page) + " -l " + std::to_string(page));
        for (std::size_t i = 1; i <= sets.size(); ++i) {
            const auto headline = sets[i - 1].headline();
            EXPECT_EQ(text.find(headline) != std::string::npos, (i + 3) / 4 == page) << headline;
        }
    }
}

TEST_F(BulkQRPDFFileTest, KeepsLettersFromRightToLeftWithinTheirOwnValue) {
    ASSERT_TRUE(exportTo(folder / "cards.pdf", {setOf("א1", "2")}));
    // In the order in which it stands on paper.
    EXPECT_THAT(textOf("-raw"), ::testing::AllOf(::testing::StartsWith("Set 1"), ::testing::HasSubstr("א"),
                                                 ::testing::HasSubstr("— 2")));
}

TEST_F(BulkQRPDFFileTest, MakesEqualFilesOfEqualSets) {
    const testing::EnvironmentVariable date("SOURCE_DATE_EPOCH", "1773480600");
    SetList sets(6, noorderlicht());
    sets.push_back(testing::troublesomeSet());
    ASSERT_TRUE(exportTo(folder / "one.pdf", sets));
    ASSERT_TRUE(exportTo(folder / "other.pdf", sets));
    EXPECT_TRUE(testing::readFile(folder / "one.pdf") == testing::readFile(folder / "other.pdf"));
}

TEST_F(BulkQRPDFFileTest, DrawsWhateverTextsHold) {
    auto set = setOf(std::string("1\0002", 3), "\uFFFF\uFDD0\U0010FFFF");
    set.model = repeated("e" + repeated("\u0301", 40), 12);
    set.location = "🧥 李娜 فستان \u202E\x01";
    ASSERT_TRUE(exportTo(folder / "cards.pdf", {set, noorderlicht()}));
    // The card behind it is drawn all the same.
    EXPECT_THAT(textOf(""), ::testing::HasSubstr("Set 12 — Noorderlicht"));
}

} // namespace
} // namespace vantor
