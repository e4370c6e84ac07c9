#include "base/text.h"
#include "output/bulk_qr_pdf_exporter.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/pdf_canvas.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "tests/support/command.h"
#include "tests/support/environment_variable.h"
#include "tests/support/examples.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/read_file.h"
#include "tests/support/table.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <memory>
#include <numeric>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::noorderlicht;
using ::testing::Optional;
using testing::repeated;

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

// A page that was drawn on.
struct Page {
    struct Text {
        std::string text;
        double x;
        double width;
        double stretch;
    };

    Page() { written << std::fixed << std::setprecision(4); }

    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const auto& piece : pieces)
            all.push_back(piece.text);
        return all;
    }

    // All of it in order: points from its lower left corner, and the stroke in grey, alpha, width, dash and gap.
    std::ostringstream written;
    std::vector<Bitmap> codes;
    std::vector<Text> pieces;
};

struct Recording {
    double width = 0;
    double height = 0;
    std::vector<Page> pages;
    std::size_t pagesEnded = 0;
    bool isFinished = false;
    // What finish() answers.
    bool succeeds = true;
    // The width of every character, in parts of the font's size.
    double characterWidth = 0.5;
};

// Draws nothing, and remembers it all.
class RecordingCanvas final : public PdfCanvas {
public:
    RecordingCanvas(Recording& recording, ByteSink& sink) : m_recording(recording), m_sink(sink) {}

    void beginPage() override { m_recording.pages.emplace_back(); }
    void endPage() override { ++m_recording.pagesEnded; }
    void strokeLines(std::span<const PdfLine> lines, const PdfStroke& stroke) override {
        page().written << stroke.gray << ' ' << stroke.alpha << ' ' << stroke.width << ' ' << stroke.dash
                       << ' ' << stroke.gap << '\n';
        for (const auto& [from, to] : lines)
            page().written << from.x << ' ' << from.y << " to " << to.x << ' ' << to.y << '\n';
    }
    void drawBitmap(const Bitmap& picture, const PdfRect& into) override {
        EXPECT_EQ(into.width, into.height);
        page().written << "code " << into.width << " at " << into.x << ' ' << into.y << '\n';
        page().codes.push_back(picture);
    }
    [[nodiscard]] double textWidth(std::string_view text, const PdfFont& font) override {
        return static_cast<double>(characters(text).size()) * font.size * m_recording.characterWidth;
    }
    void drawText(std::string_view text, const PdfFont& font, PdfPoint origin, double stretch) override {
        page().written << text << (font.bold ? ", bold " : ", ") << font.size << " at " << origin.x << ' '
                       << origin.y << '\n';
        page().pieces.push_back({std::string(text), origin.x, textWidth(text, font) * stretch, stretch});
    }
    bool finish() override {
        m_recording.isFinished = true;
        return m_recording.succeeds && m_sink.write("recorded");
    }

private:
    Page& page() { return m_recording.pages.back(); }

    Recording& m_recording;
    ByteSink& m_sink;
};

class BulkQRPDFExporterTest : public ::testing::Test {
protected:
    [[nodiscard]] PdfCanvasFactory canvases() {
        return [this](ByteSink& sink, double width, double height) {
            recording.width = width;
            recording.height = height;
            return std::make_unique<RecordingCanvas>(recording, sink);
        };
    }

    // The first page of the sets.
    const Page& draw(const SetList& sets, BulkQRDensity density) {
        recording.pages.clear();
        recording.pagesEnded = 0;
        EXPECT_TRUE(BulkQRPDFExporter(encoder, canvases(), memory).exportTo(sets, density, "cards.pdf"));
        return recording.pages.at(0);
    }

    Recording recording;
    QrencodeEncoder encoder;
    testing::MemoryFileStore memory;
};

TEST_F(BulkQRPDFExporterTest, FillsPagesAndBeginsAnotherForTheRest) {
    EXPECT_THAT(kAllDensities, ElementsAre(BulkQRDensity::large, BulkQRDensity::compact));
    using Counts = std::vector<std::size_t>;
    struct Case {
        BulkQRDensity density;
        Counts cardsOnPages;
    };
    for (const auto& [density, cardsOnPages] :
         {Case{BulkQRDensity::large, {1}}, Case{BulkQRDensity::large, {4}},
          Case{BulkQRDensity::large, {4, 1}}, Case{BulkQRDensity::large, {4, 4}},
          Case{BulkQRDensity::large, {4, 4, 1}}, Case{BulkQRDensity::compact, {1}},
          Case{BulkQRDensity::compact, {9}}, Case{BulkQRDensity::compact, {9, 1}},
          Case{BulkQRDensity::compact, {9, 9}}}) {
        const auto count = std::accumulate(cardsOnPages.begin(), cardsOnPages.end(), std::size_t{0});
        const auto sets = numberedSets(count);
        draw(sets, density);
        EXPECT_EQ(recording.width, 595.28);
        EXPECT_EQ(recording.height, 841.89);
        EXPECT_TRUE(recording.isFinished);
        EXPECT_EQ(recording.pagesEnded, cardsOnPages.size()) << count;
        Counts cards;
        std::vector<std::string> headlines;
        for (const auto& page : recording.pages) {
            cards.push_back(page.codes.size());
            for (const auto& text : page.texts())
                headlines.push_back(text);
        }
        EXPECT_EQ(cards, cardsOnPages) << count;
        EXPECT_TRUE(std::ranges::equal(headlines, sets, {}, {}, &SetData::headline)) << count;
    }
}

// Cutting lines first, then row by row from the top left, each code above its lines of text, which stand in the middle.
TEST_F(BulkQRPDFExporterTest, DrawsCardsWhereTheyAreCut) {
    auto bare = SetData::make(testing::kMorning);
    bare.email = "anna@example.com";
    draw({noorderlicht(), setOf("1", ""), bare, bare, bare}, BulkQRDensity::large);
    const std::string large = "0.5000 0.4000 0.5000 3.0000 3.0000\n"
                              "297.6400 24.0000 to 297.6400 817.8900\n"
                              "24.0000 420.9450 to 571.2800 420.9450\n";
    ASSERT_EQ(recording.pages.size(), 2U);
    EXPECT_EQ(recording.pages[0].written.str(),
              large + "code 127.0000 at 97.3200 586.2925\n"
                      "Set 12 — Noorderlicht, bold 15.0000 at 82.0700 559.5425\n"
                      "Anna · Studio A, 10.0000 at 123.3200 544.0425\n"
                      "coated pants (brown), sweater (blue nav…, 10.0000 at 60.8200 528.5425\n"
                      "code 127.0000 at 370.9600 570.7925\n"
                      "Set 1, bold 15.0000 at 415.7100 544.0425\n"
                      "code 127.0000 at 97.3200 162.9725\n"
                      "code 127.0000 at 370.9600 162.9725\n");
    EXPECT_EQ(recording.pages[1].written.str(), large + "code 127.0000 at 97.3200 559.9175\n");

    draw({noorderlicht(), bare, bare, bare}, BulkQRDensity::compact);
    EXPECT_EQ(recording.pages[0].written.str(), "0.5000 0.4000 0.5000 3.0000 3.0000\n"
                                                "206.4267 24.0000 to 206.4267 817.8900\n"
                                                "388.8533 24.0000 to 388.8533 817.8900\n"
                                                "24.0000 288.6300 to 571.2800 288.6300\n"
                                                "24.0000 553.2600 to 571.2800 553.2600\n"
                                                "code 85.0000 at 72.7133 668.4500\n"
                                                "Set 12 — Noorderlicht, bold 11.0000 at 57.4633 646.7000\n"
                                                "Anna · Studio A, 8.0000 at 85.2133 633.7000\n"
                                                "coated pants (brown), sweat…, 8.0000 at 59.2133 620.7000\n"
                                                "code 85.0000 at 255.1400 647.0750\n"
                                                "code 85.0000 at 437.5667 647.0750\n"
                                                "code 85.0000 at 72.7133 382.4450\n");
}

// To 4 points from either side of the cell.
TEST_F(BulkQRPDFExporterTest, NarrowsLinesThatAreWiderThanTheirCellAndNoOthers) {
    struct Case {
        BulkQRDensity density;
        double characterWidth;
        std::string number;
        std::string brand;
        double stretch;
    };
    for (const auto& [density, characterWidth, number, brand, stretch] :
         {// 40 characters of 15 points, or 28 of 11.
          Case{BulkQRDensity::large, 1, "1", std::string(100, 'm'), 265.64 / 600},
          Case{BulkQRDensity::compact, 1, "1", std::string(100, 'm'), 174.4266666667 / 308},
          // Ten just fit.
          Case{BulkQRDensity::large, 265.64 / 15 / 10, "123456", "", 1},
          Case{BulkQRDensity::large, 265.64 / 15 / 10, "1234567", "", 10.0 / 11}}) {
        recording.characterWidth = characterWidth;
        const auto& line = draw({setOf(number, brand)}, density).pieces.at(0);
        EXPECT_NEAR(line.stretch, stretch, kTolerance) << number;
        EXPECT_NEAR(line.x, 28, kTolerance) << number;
    }
    recording.characterWidth = 0;
    EXPECT_EQ(draw({setOf("1", "\u200B")}, BulkQRDensity::large).pieces.at(0).stretch, 1);
}

TEST_F(BulkQRPDFExporterTest, WritesWhatIsKnownAndDropsEmptyLines) {
    struct Case {
        std::string number, brand, model, location;
        std::vector<std::pair<std::string, std::string>> items;
        std::vector<std::string> lines;
    };
    for (const auto& [number, brand, model, location, items, lines] : std::vector<Case>{
             {"12", "", "", "", {}, {"Set 12"}},
             {"", "Marvis", "", "", {}, {"Marvis"}},
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
         }) {
        auto set = setOf(number, brand);
        set.model = model;
        set.location = location;
        for (const auto& [name, color] : items)
            set.items.push_back(SetItem::make(name, color));
        EXPECT_EQ(draw({set}, BulkQRDensity::large).texts(), lines);
    }
}

TEST_F(BulkQRPDFExporterTest, SetsTextsThatRunFromRightToLeftInPiecesFromLeftToRight) {
    auto set = setOf("א1", "2");
    set.model = "Anna";
    set.location = "\u202Ezaal";
    set.items = {SetItem::make("שמלה", "כחול"), SetItem::make("jurk\r\nlang", ""),
                 SetItem::make("ab" + repeated(40, "ש"), "")};
    const auto& page = draw({set}, BulkQRDensity::large);
    ASSERT_THAT(page.texts(),
                ElementsAre("Set ", "א1", " — ", "2", "Anna", " · ", "\u202Ezaal", "שמלה", " (", "כחול", ")",
                            ", ", "jurk lang", ", ", "ab" + repeated(13, "ש"), "…"));
    // Each line's pieces follow one another and stand in the middle of the cell together.
    const auto& drawn = page.pieces;
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_NEAR(drawn[i].x, drawn[i - 1].x + drawn[i - 1].width, kTolerance);
    EXPECT_NEAR((drawn[0].x + drawn[3].x + drawn[3].width) / 2, 160.82, kTolerance);
}

TEST_F(BulkQRPDFExporterTest, ShortensLinesOfMoreCharactersThanFit) {
    for (const auto& [density, most] :
         {std::pair{BulkQRDensity::large, 40}, std::pair{BulkQRDensity::compact, 28}}) {
        // As users count: a letter with its marks, a family, a flag, a syllable are one character each.
        for (const auto* const one :
             {"m", "é", "e\u0301\u0302", "👩‍🎨", "🇳🇱", "👨‍👩‍👧", "각"}) {
            auto set = setOf("", repeated(most, one));
            set.model = repeated(most + 1, one);
            set.items = {SetItem::make(repeated(most - 1, one), "")};
            EXPECT_THAT(
                draw({set}, density).texts(),
                ElementsAre(repeated(most, one), repeated(most - 1, one) + "…", repeated(most - 1, one)));
        }
    }
}

TEST_F(BulkQRPDFExporterTest, LeavesTheCellEmptyWhereATextIsTooLong) {
    const auto tooLong = setOf("99", std::string(2332, 'x'));
    const auto& page =
        draw({setOf("1", ""), tooLong, setOf("3", "\xFF"), setOf("4", ""), tooLong}, BulkQRDensity::large);
    // The others stay in their places.
    for (const auto* const card :
         {"code 127.0000 at 97.3200 570.7925\nSet 1,", "code 127.0000 at 370.9600 173.8475\nSet 4,"})
        EXPECT_THAT(page.written.str(), HasSubstr(card));
    EXPECT_EQ(page.codes.size(), 2U);
    ASSERT_EQ(recording.pages.size(), 2U);
    EXPECT_TRUE(recording.pages[1].codes.empty() && recording.pages[1].pieces.empty());
}

TEST_F(BulkQRPDFExporterTest, DrawsEveryModuleOfACodeEquallyLarge) {
    const QRGenerator generator(encoder);
    for (const std::size_t bytes : {0U, 20U, 100U, 139U, 400U, 1000U, 2000U, 2320U}) {
        const auto set = setOf("", std::string(bytes, 'x'));
        const auto& picture = draw({set}, BulkQRDensity::compact).codes.at(0);
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
    const SetList sets{setOf("1", ""), setOf("99", std::string(2332, 'x')),
                       setOf("", std::string(2320, 'x'))};
    // 23 and 179 modules, on 127 points and on 85.
    for (const auto& [density, smallCode, largeCode] :
         {std::tuple(BulkQRDensity::large, 1.947947, 0.250294),
          std::tuple(BulkQRDensity::compact, 1.303744, 0.167520)}) {
        std::vector<std::string> reported;
        std::vector<std::optional<double>> edges;
        EXPECT_TRUE(BulkQRPDFExporter(encoder, canvases(), memory)
                        .exportTo(sets, density, "cards.pdf", {},
                                  [&](const SetData& set, std::optional<double> edge) {
                                      reported.push_back(set.setNumber);
                                      edges.push_back(edge);
                                  }));
        EXPECT_THAT(reported, ElementsAre("1", "99", ""));
        EXPECT_THAT(edges, ElementsAre(Optional(DoubleNear(smallCode, 1e-5)), ::testing::Eq(std::nullopt),
                                       Optional(DoubleNear(largeCode, 1e-5))));
    }
}

TEST_F(BulkQRPDFExporterTest, TellsItsProgressBeforeEachCardEncodesItOnceAndReportsItOnceItIsDrawn) {
    struct CountingEncoder : QrEncoder {
        std::optional<Bitmap> encode(std::string_view bytes) const override {
            ++calls;
            return QrencodeEncoder().encode(bytes);
        }
        mutable std::size_t calls = 0;
    };
    const CountingEncoder counting;
    using Counts = std::vector<std::size_t>;
    std::vector<Counts> told;
    std::vector<Counts> reported;
    const auto done = [&] {
        std::size_t drawn = 0;
        for (const auto& page : recording.pages)
            drawn += page.codes.size();
        return Counts{counting.calls, drawn};
    };
    const auto progress = [&](std::size_t count) {
        told.push_back(done());
        EXPECT_EQ(told.size(), count + 1);
        return true;
    };
    EXPECT_TRUE(BulkQRPDFExporter(counting, canvases(), memory)
                    .exportTo(numberedSets(5), BulkQRDensity::large, "cards.pdf", progress,
                              [&](const SetData&, std::optional<double>) { reported.push_back(done()); }));
    EXPECT_THAT(told, ElementsAre(Counts{0, 0}, Counts{1, 1}, Counts{2, 2}, Counts{3, 3}, Counts{4, 4}));
    EXPECT_THAT(reported, ElementsAre(Counts{1, 1}, Counts{2, 2}, Counts{3, 3}, Counts{4, 4}, Counts{5, 5}));
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

    testing::TemporaryFolder folder;
    PosixFileStore files;
};

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

TEST_F(BulkQRPDFFileTest, LeavesNothingBehindWhereItFails) {
    EXPECT_FALSE(exportTo(folder / "cards.pdf", {}));
    std::filesystem::create_directory(folder / "taken");
    for (const std::filesystem::path& to :
         {folder / "taken", folder / "missing/cards.pdf", std::filesystem::path()})
        EXPECT_FALSE(exportTo(to, numberedSets(1))) << to;
    recording.succeeds = false;
    for (const auto& canvas :
         {PdfCanvasFactory([](ByteSink&, double, double) { return std::unique_ptr<PdfCanvas>(); }),
          canvases()})
        EXPECT_FALSE(BulkQRPDFExporter(encoder, canvas, files)
                         .exportTo(numberedSets(1), BulkQRDensity::large, folder / "cards.pdf"));
    EXPECT_TRUE(recording.isFinished);
    EXPECT_THAT(folder.names(), ElementsAre("taken"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "taken"));
}

TEST_F(BulkQRPDFFileTest, EveryHeadlineCanBeFoundOnItsPageWithItsValuesApart) {
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
    ASSERT_TRUE(exportTo(folder / "cards.pdf", {setOf("א1", "2")}));
    // In the order in which it stands on paper.
    EXPECT_THAT(textOf("-raw"),
                ::testing::AllOf(::testing::StartsWith("Set 1"), HasSubstr("א"), HasSubstr("— 2")));
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
    set.model = repeated(12, "e" + repeated(40, "\u0301"));
    set.location = "🧥 李娜 فستان \u202E\x01";
    ASSERT_TRUE(exportTo(folder / "cards.pdf", {set, noorderlicht()}));
    // The card behind it is drawn all the same.
    EXPECT_THAT(textOf(""), HasSubstr("Set 12 — Noorderlicht"));
}

} // namespace
} // namespace vantor
