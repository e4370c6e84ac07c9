#include "platform/cairo/cairo_pdf_canvas.h"
#include "tests/support/command.h"
#include "tests/support/environment_variable.h"
#include "tests/support/gray_picture.h"
#include "tests/support/read_file.h"
#include "tests/support/string_sink.h"
#include "tests/support/table.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <ctime>
#include <fstream>
#include <functional>
#include <regex>
#include <string>
#include <vector>

namespace vantor {
namespace {

using testing::EnvironmentVariable;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::StringSink;

constexpr double kWidth = 595.28;
constexpr double kHeight = 841.89;
constexpr PdfFont kRegular{10, false};
constexpr PdfFont kBold{15, true};
constexpr PdfRect kSquare{100, 200, 127, 127};

using Drawing = std::function<void(PdfCanvas&)>;

void drawOnPages(PdfCanvas& canvas, const std::vector<Drawing>& pages) {
    for (const auto& page : pages) {
        canvas.beginPage();
        page(canvas);
        canvas.endPage();
    }
}

Drawing textAt(const std::string& text, PdfFont font, PdfPoint origin, double stretch = 1) {
    return [=](PdfCanvas& canvas) { canvas.drawText(text, font, origin, stretch); };
}

Bitmap chessboard(int edge) {
    Bitmap picture(edge, edge);
    for (int y = 0; y < edge; ++y) {
        for (int x = 0; x < edge; ++x) {
            // Not symmetric, so that turning it over would show.
            if ((x + y) % 2 == 0 || (x < 3 && y < 2))
                picture.setBlack(x, y);
        }
    }
    return picture;
}

// A finished document, as the tools of others see it.
class Document {
public:
    explicit Document(const std::vector<Drawing>& pages) {
        StringSink sink;
        const auto canvas = CairoPdfCanvas::make(sink, kWidth, kHeight);
        EXPECT_TRUE(canvas);
        drawOnPages(*canvas, pages);
        EXPECT_TRUE(canvas->finish());
        m_bytes = sink.bytes();
        std::ofstream(path(), std::ios::binary) << m_bytes;
        EXPECT_THAT(seenBy("qpdf --check"), HasSubstr("No syntax or stream encoding errors found"));
    }

    [[nodiscard]] const std::string& bytes() const { return m_bytes; }

    // What a tool prints that is called with these options and then the document, and perhaps more.
    [[nodiscard]] std::string seenBy(const std::string& tool, const std::string& more = "") const {
        const auto result = testing::runCommand(tool + " " + path() + " " + more);
        EXPECT_EQ(result.status, 0) << tool << ": " << result.output;
        return result.output;
    }

    // The file without compression, every run of white space one space.
    [[nodiscard]] std::string source() const {
        const auto written = seenBy("qpdf --qdf --object-streams=disable", "-");
        return std::regex_replace(written, std::regex("\\s+"), " ");
    }

    [[nodiscard]] testing::GrayPicture printed(int dotsPerInch) const {
        const auto picture = (m_folder / "page").string();
        static_cast<void>(seenBy(
            "pdftoppm -gray -singlefile -aa no -aaVector no -r " + std::to_string(dotsPerInch), picture));
        return testing::readPgm(picture + ".pgm").value_or(testing::GrayPicture{});
    }

    // The pictures in it, in PNG form.
    [[nodiscard]] std::string picture(const std::string& number) const {
        static_cast<void>(seenBy("pdfimages -png", (m_folder / "picture").string()));
        return testing::readFile(m_folder / ("picture-" + number + ".png"));
    }

private:
    [[nodiscard]] std::string path() const { return (m_folder / "document.pdf").string(); }

    testing::TemporaryFolder m_folder;
    std::string m_bytes;
};

// Where the tool that extracts text found a word; its y points down.
struct Word {
    double left;
    double top;
    double right;
    double bottom;
};

Word wordIn(const Document& document, const std::string& word) {
    const auto found = document.seenBy("pdftotext -bbox", "-");
    std::smatch match;
    const std::regex form("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"([0-9.]+)\">" +
                          word + "<");
    if (!std::regex_search(found, match, form)) {
        ADD_FAILURE() << word << " is not in " << found;
        return {};
    }
    return {std::stod(match[1]), std::stod(match[2]), std::stod(match[3]), std::stod(match[4])};
}

TEST(CairoPdfCanvas, MakesSoundPagesOfExactlyTheGivenSizeWithoutTitleOrAuthor) {
    const Document document({textAt("een", kRegular, {50, 50}),
                             [](PdfCanvas& canvas) {
                                 canvas.strokeLines(std::vector<PdfLine>{{{10, 10}, {20, 20}}}, {});
                                 canvas.drawBitmap(chessboard(9), kSquare);
                             },
                             [](PdfCanvas&) {}});
    const auto source = document.source();
    const std::regex boxes(R"(/MediaBox \[ 0 0 595\.28 841\.89 \])");
    EXPECT_EQ(std::distance(std::sregex_iterator(source.begin(), source.end(), boxes), {}), 3);
    EXPECT_THAT(source, Not(::testing::ContainsRegex("/(Title|Author|Subject|Keywords|Creator) ")));
    const auto told = document.seenBy("pdfinfo");
    EXPECT_THAT(told, HasSubstr("595.28 x 841.89 pts (A4)"));
    EXPECT_THAT(told, ::testing::ContainsRegex("Pages: +3\n"));
}

TEST(CairoPdfCanvas, EmbedsItsFontsAsSubsets) {
    const Document document(
        {textAt("Set 12", kBold, {50, 500}), textAt("coltrui (crème)", kRegular, {50, 400})});
    const auto fonts = document.seenBy("pdffonts");
    const std::regex line("[A-Z]{6}\\+(\\S+) +.* +(yes|no) +(yes|no) +(yes|no) +[0-9]+ +[0-9]+\n");
    std::vector<std::string> names;
    for (auto match = std::sregex_iterator(fonts.begin(), fonts.end(), line); match != std::sregex_iterator();
         ++match) {
        names.push_back((*match)[1]);
        EXPECT_EQ((*match)[2], "yes") << "not embedded: " << names.back();
        EXPECT_EQ((*match)[3], "yes") << "no subset: " << names.back();
    }
    EXPECT_THAT(names, ::testing::UnorderedElementsAre("LiberationSans-Bold", "LiberationSans")) << fonts;
}

TEST(CairoPdfCanvas, TextCanBeExtracted) {
    const std::vector<std::string> texts{
        "Set 12 — Søster & Zoë", "½ maat, “crème” · €", "Ångström…", "Łódź", "Ελλάδα", "Москва"};
    std::vector<Drawing> pages;
    for (const auto& text : texts)
        pages.push_back(textAt(text, kBold, {50, 500}));
    const auto extracted = Document(pages).seenBy("pdftotext -enc UTF-8", "-");
    for (const auto& text : texts)
        EXPECT_THAT(extracted, HasSubstr(text));
}

TEST(CairoPdfCanvas, TextStartsAtItsOriginOnTheBaseline) {
    const Document document({textAt("Hxx", kRegular, {97.32, 544.0425})});
    const auto word = wordIn(document, "Hxx");
    EXPECT_NEAR(word.left, 97.32, 0.01);
    // The baseline lies between the top and the bottom of the line.
    EXPECT_LT(word.top, kHeight - 544.0425);
    EXPECT_GT(word.bottom, kHeight - 544.0425);
    // At 720 dots an inch a capital H stands on the baseline to a tenth of a point.
    const auto page = document.printed(720);
    int lowest = 0;
    for (int y = 0; y < page.height; ++y) {
        for (int x = 970; x < 1100; ++x) {
            if (page.at(x, y) < 128)
                lowest = y;
        }
    }
    EXPECT_NEAR(lowest / 10.0, kHeight - 544.0425, 0.2);
    // A stretch scales the width alone.
    const auto narrow = wordIn(Document({textAt("Hxx", kRegular, {97.32, 544.0425}, 0.5)}), "Hxx");
    EXPECT_NEAR(narrow.left, 97.32, 0.01);
    EXPECT_NEAR(narrow.right - narrow.left, (word.right - word.left) / 2, 0.05);
    EXPECT_NEAR(narrow.bottom - narrow.top, word.bottom - word.top, 0.05);
}

TEST(CairoPdfCanvas, MeasuresTextAsItIsDrawn) {
    StringSink sink;
    const auto canvas = CairoPdfCanvas::make(sink, kWidth, kHeight);
    ASSERT_TRUE(canvas);
    for (const auto& font : {kRegular, kBold, PdfFont{8, true}}) {
        const auto width = canvas->textWidth("WandelVesten", font);
        const auto word = wordIn(Document({textAt("WandelVesten", font, {100, 500})}), "WandelVesten");
        EXPECT_NEAR(word.right - word.left, width, 0.02 * width);
        // The bold letters are wider, and sizes scale exactly.
        EXPECT_NEAR(canvas->textWidth("WandelVesten", {font.size * 2, font.bold}), 2 * width, 0.02);
    }
    EXPECT_GT(canvas->textWidth("WandelVesten", {10, true}), canvas->textWidth("WandelVesten", {10, false}));
    EXPECT_EQ(canvas->textWidth("", kRegular), 0);
}

TEST(CairoPdfCanvas, StrokesLinesWhereTheyAreWithTheGivenDashesGreyAndOpacity) {
    const Document document({[](PdfCanvas& canvas) {
        canvas.strokeLines(std::vector<PdfLine>{{{100, 700}, {100, 600}}, {{200, 650}, {300, 650}}},
                           {.gray = 0, .alpha = 1, .width = 4, .dash = 10, .gap = 5});
        canvas.strokeLines(std::vector<PdfLine>{{{100, 400}, {200, 400}}}, {.width = 10});
        // 0.4 of grey 0.5 over white is 0.8.
        canvas.strokeLines(std::vector<PdfLine>{{{100, 300}, {200, 300}}},
                           {.gray = 0.5, .alpha = 0.4, .width = 20, .dash = 100, .gap = 1});
    }});
    EXPECT_THAT(document.source(), HasSubstr("[ 10 5] 0 d"));
    const auto page = document.printed(72);
    const auto isBlack = [&](double x, double y) {
        return page.at(static_cast<int>(x), static_cast<int>(kHeight - y)) < 128;
    };
    // Each line begins with a whole dash.
    for (const auto& [x, y] : {std::pair(100.0, 695.0), {100, 680}, {205, 650}, {220, 650}})
        EXPECT_TRUE(isBlack(x, y)) << x << ", " << y;
    for (const auto& [x, y] :
         {std::pair(100.0, 687.5), {212.5, 650}, {100, 710}, {100, 590}, {195, 650}, {205, 655}})
        EXPECT_FALSE(isBlack(x, y)) << x << ", " << y;
    for (int x = 101; x < 199; ++x)
        EXPECT_EQ(page.at(x, static_cast<int>(kHeight - 400)), 0) << x;
    EXPECT_NEAR(page.at(150, static_cast<int>(kHeight - 300)), 204, 2);
    EXPECT_EQ(page.at(150, static_cast<int>(kHeight - 320)), 255);
}

TEST(CairoPdfCanvas, KeepsEveryPixelOfAPictureInOneBitWithoutSmoothing) {
    for (const int edge : {1, 7, 8, 9, 31, 32, 33, 612, 716}) {
        const auto picture = chessboard(edge);
        const Document document({[&](PdfCanvas& canvas) { canvas.drawBitmap(picture, kSquare); }});
        const auto png = testing::decodePng(document.picture("000"));
        ASSERT_TRUE(png);
        EXPECT_EQ(png->width, edge);
        EXPECT_EQ(png->height, edge);
        EXPECT_TRUE(png->pixels == testing::grayPicture(picture).pixels) << edge;
        const auto size = std::to_string(edge);
        EXPECT_THAT(document.seenBy("pdfimages -list"),
                    ::testing::ContainsRegex("stencil +" + size + " +" + size + " +- +1 +1 +[^ ]+ +no "));
        EXPECT_THAT(document.source(), Not(HasSubstr("/Interpolate true")));
    }
}

TEST(CairoPdfCanvas, DrawsPicturesUprightIntoTheirRectangle) {
    Bitmap corner(2, 2);
    corner.setBlack(0, 0);
    const Document document({[&](PdfCanvas& canvas) { canvas.drawBitmap(corner, {100, 200, 60, 40}); }});
    const auto page = document.printed(144);
    for (int y = 0; y < page.height; ++y) {
        for (int x = 0; x < page.width; ++x) {
            const double pointX = (x + 0.5) / 2;
            const double pointY = kHeight - (y + 0.5) / 2;
            const bool isInside = pointX > 101 && pointX < 129 && pointY > 221 && pointY < 239;
            const bool isOutside = pointX < 99 || pointX > 131 || pointY < 219 || pointY > 241;
            if (isInside || isOutside) {
                ASSERT_EQ(page.at(x, y), isInside ? 0 : 255) << pointX << ", " << pointY;
            }
        }
    }
}

TEST(CairoPdfCanvas, DrawsEveryScript) {
    const auto texts = testing::tableOf<std::string>("🧥👗👩‍🎨🇳🇱", "李娜 上衣", "فستان أحمر",
                                                     "שמלה", "पोशाक", "ชุด", "\u0301\u0302",
                                                     "e\u0301\u0302\u0303", "a\tb\x01\x7F\u200B\u202E\uFEFF",
                                                     "\U000F0000\U0010FFFF\uFFFF", "𝔘𝔫𝔦𝔠𝔬𝔡𝔢", " ", "");
    const Document document({[&](PdfCanvas& canvas) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const auto y = 800 - 40 * static_cast<double>(i);
            const auto width = canvas.textWidth(texts[i], kBold);
            EXPECT_GE(width, 0);
            EXPECT_LT(width, 500) << texts[i];
            canvas.drawText(texts[i], kBold, {50, y}, 1);
        }
    }});
    // Every font is embedded, whatever it was taken from.
    EXPECT_FALSE(
        std::regex_search(document.seenBy("pdffonts"), std::regex(" no +(yes|no) +(yes|no) +[0-9]+ +0\n")));
}

TEST(CairoPdfCanvas, MarksWhatCannotBeDrawnAndDrawsTheRest) {
    const std::vector<std::string> texts{"a\377b",   "a\xE2\x82",    "a\uFFFFb",
                                         "a\uFDD0b", "a\U0010FFFFb", std::string("a\0b", 3)};
    const Document document({[&](PdfCanvas& canvas) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            // Measured and drawn alike, one character wider than what is left of it.
            const auto rest = i == 1 ? "a" : "ab";
            EXPECT_GT(canvas.textWidth(texts[i], kRegular), canvas.textWidth(rest, kRegular)) << i;
            canvas.drawText(texts[i], kRegular, {50, 500 - 20 * static_cast<double>(i)}, 1);
        }
        canvas.drawText("daarna", kRegular, {50, 50}, 1);
    }});
    EXPECT_THAT(document.seenBy("pdftotext", "-"), HasSubstr("daarna"));
}

TEST(CairoPdfCanvas, MakesEqualFilesWhereTheDateIsFixed) {
    const EnvironmentVariable date("SOURCE_DATE_EPOCH", "1773480600");
    const std::vector<Drawing> pages{[](PdfCanvas& canvas) {
                                         canvas.strokeLines(std::vector<PdfLine>{{{10, 10}, {20, 20}}}, {});
                                         canvas.drawBitmap(chessboard(99), kSquare);
                                         canvas.drawText("Set 12 — Søster", kBold, {50, 500}, 0.9);
                                         canvas.drawText("🧥 李娜 فستان", kRegular, {50, 400}, 1);
                                     },
                                     textAt("bladzijde twee", kRegular, {50, 50})};
    const auto bytes = Document(pages).bytes();
    EXPECT_EQ(bytes, Document(pages).bytes());
    EXPECT_THAT(bytes, HasSubstr("20260314093000"));
}

TEST(CairoPdfCanvas, WritesThePresentWhereTheFixedDateIsNone) {
    const auto year = [] {
        const auto now = std::time(nullptr);
        return std::to_string(1900 + std::gmtime(&now)->tm_year);
    };
    for (const auto* const value : {"", "gisteren", "12x", "99999999999999999999"}) {
        const EnvironmentVariable date("SOURCE_DATE_EPOCH", value);
        const auto before = year();
        const Document document({textAt("een", kRegular, {50, 50})});
        EXPECT_THAT(document.source(), ::testing::AnyOf(HasSubstr("/CreationDate (D:" + before),
                                                        HasSubstr("/CreationDate (D:" + year())))
            << value;
    }
}

TEST(CairoPdfCanvas, FailsWhereverTheSinkIsFullOrDrawingFailed) {
    const EnvironmentVariable date("SOURCE_DATE_EPOCH", "1773480600");
    const auto drawAll = [](ByteSink& sink) {
        const auto canvas = CairoPdfCanvas::make(sink, kWidth, kHeight);
        if (!canvas)
            return false;
        drawOnPages(*canvas, {textAt("een", kRegular, {50, 50}),
                              [](PdfCanvas& page) { page.drawBitmap(chessboard(99), kSquare); }});
        return canvas->finish();
    };
    StringSink whole;
    ASSERT_TRUE(drawAll(whole));
    const auto size = whole.bytes().size();
    for (const auto room :
         {std::size_t{0}, std::size_t{1}, std::size_t{20}, size / 4, size / 2, size * 3 / 4, size - 1}) {
        StringSink sink(room);
        EXPECT_FALSE(drawAll(sink)) << room << " of " << size;
    }
    StringSink justEnough(size);
    EXPECT_TRUE(drawAll(justEnough));
    // A rectangle without a width cannot be drawn into, and leaves the page unfinished.
    StringSink sink;
    const auto canvas = CairoPdfCanvas::make(sink, kWidth, kHeight);
    ASSERT_TRUE(canvas);
    drawOnPages(*canvas, {[](PdfCanvas& page) { page.drawBitmap(chessboard(9), {100, 100, 0, 0}); }});
    EXPECT_FALSE(canvas->finish());
}

TEST(CairoPdfCanvas, MayBeFinishedTwiceOrNotAtAll) {
    StringSink sink;
    {
        const auto canvas = CairoPdfCanvas::make(sink, kWidth, kHeight);
        ASSERT_TRUE(canvas);
        drawOnPages(*canvas, {textAt("een", kRegular, {50, 50})});
        EXPECT_TRUE(canvas->finish());
        const auto size = sink.bytes().size();
        EXPECT_TRUE(canvas->finish());
        EXPECT_EQ(sink.bytes().size(), size);
    }
    StringSink abandoned;
    {
        const auto canvas = CairoPdfCanvas::make(abandoned, kWidth, kHeight);
        ASSERT_TRUE(canvas);
        canvas->beginPage();
        canvas->drawText("een", kRegular, {50, 50}, 1);
    }
}

} // namespace
} // namespace vantor
