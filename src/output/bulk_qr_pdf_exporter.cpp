#include "output/bulk_qr_pdf_exporter.h"

#include "base/text.h"
#include "model/headline.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

constexpr double kGapUnderCode = 8;
// A line takes this much of its font's size and the leading.
constexpr double kLineHeight = 1.25;
constexpr double kLeading = 3;
// Kept free of text at the sides of a cell, both together.
constexpr double kTextMargin = 8;
constexpr int kLeastPixels = 600;
constexpr PdfStroke kCuttingLine{.gray = 0.5, .alpha = 0.4, .width = 0.5, .dash = 3, .gap = 3};

// Text to be set one piece behind the other, from left to right, whatever direction each is written in.
using Pieces = std::vector<std::string>;

struct CardLine {
    Pieces pieces;
    PdfFont font;

    [[nodiscard]] double height() const { return font.size * kLineHeight + kLeading; }
};

PdfRect usableArea() {
    return {kPageMargin, kPageMargin, kPageWidth - 2 * kPageMargin, kPageHeight - 2 * kPageMargin};
}

// The cell of the card at this place on its page, row by row from the top left.
PdfRect cellOf(std::size_t place, const CardLayout& layout) {
    const auto area = usableArea();
    const auto columns = static_cast<std::size_t>(layout.columns);
    const auto column = place % columns;
    const auto row = place / columns;
    const double width = area.width / layout.columns;
    const double height = area.height / layout.rows;
    return {area.x + static_cast<double>(column) * width,
            area.y + area.height - static_cast<double>(row + 1) * height, width, height};
}

std::vector<PdfLine> cuttingLines(const CardLayout& layout) {
    const auto area = usableArea();
    std::vector<PdfLine> lines;
    for (int i = 1; i < layout.columns; ++i) {
        const double x = area.x + i * (area.width / layout.columns);
        lines.push_back({{x, area.y}, {x, area.y + area.height}});
    }
    for (int i = 1; i < layout.rows; ++i) {
        const double y = area.y + i * (area.height / layout.rows);
        lines.push_back({{area.x, y}, {area.x + area.width, y}});
    }
    return lines;
}

Pieces placeLine(const SetData& set) {
    const bool both = !set.model.empty() && !set.location.empty();
    return {set.model, both ? " · " : "", set.location};
}

Pieces itemsLine(const SetData& set) {
    Pieces pieces;
    for (const auto& item : set.items) {
        if (!pieces.empty())
            pieces.emplace_back(", ");
        pieces.push_back(item.name);
        if (!item.color.empty())
            pieces.insert(pieces.end(), {" (", item.color, ")"});
    }
    return pieces;
}

bool mayReorder(std::string_view text) {
    return std::ranges::any_of(characters(text), [](char32_t c) { return isRightToLeft(c) || isControl(c); });
}

// The line cut to so many characters. Where nothing in it is written from right to left it is one piece, so that letters
// meet as a font wants them to.
Pieces cutTo(std::size_t mostCharacters, const Pieces& pieces) {
    static constexpr std::string_view kEllipsis = "…";
    const auto whole = onOneLine(joined(pieces, ""));
    const auto cut = shortenedTo(whole, mostCharacters);
    if (!mayReorder(cut))
        return {cut};
    const bool isCut = cut != whole;
    auto rest = cut.size() - (isCut ? kEllipsis.size() : 0);
    Pieces kept;
    for (const auto& piece : pieces) {
        auto text = onOneLine(piece);
        text.resize(std::min(text.size(), rest));
        rest -= text.size();
        if (!text.empty())
            kept.push_back(std::move(text));
    }
    if (isCut)
        kept.emplace_back(kEllipsis);
    return kept;
}

std::vector<CardLine> linesOf(const SetData& set, const CardLayout& layout) {
    const PdfFont headlineFont{layout.headlineSize, true};
    const PdfFont textFont{layout.textSize, false};
    std::vector<CardLine> lines;
    for (const auto& [pieces, font] :
         {CardLine{headlinePieces(set), headlineFont}, CardLine{placeLine(set), textFont},
          CardLine{itemsLine(set), textFont}}) {
        if (!joined(pieces, "").empty())
            lines.push_back({cutTo(layout.mostCharacters, pieces), font});
    }
    return lines;
}

// The code with every module the same whole number of pixels wide.
Bitmap evenlyStretched(const Bitmap& modules) {
    const int pixelsPerModule = (kLeastPixels + modules.width() - 1) / modules.width();
    return stretched(modules, pixelsPerModule * modules.width());
}

// In millimetres.
double moduleEdge(const Bitmap& modules, const CardLayout& layout) {
    static constexpr double kMillimetresPerPoint = 25.4 / 72;
    return layout.qrEdge / modules.width() * kMillimetresPerPoint;
}

// Narrowed where it is wider than `most`.
void drawCentred(const CardLine& line, double middle, double baseline, double most, PdfCanvas& canvas) {
    std::vector<double> widths;
    for (const auto& piece : line.pieces)
        widths.push_back(canvas.textWidth(piece, line.font));
    const double natural = std::accumulate(widths.begin(), widths.end(), 0.0);
    const double width = std::min(natural, most);
    const double stretch = natural > 0 ? width / natural : 1;
    double x = middle - width / 2;
    for (std::size_t i = 0; i < line.pieces.size(); ++i) {
        canvas.drawText(line.pieces[i], line.font, {x, baseline}, stretch);
        x += widths[i] * stretch;
    }
}

void drawCard(const SetData& set, const Bitmap& modules, const PdfRect& cell, const CardLayout& layout,
              PdfCanvas& canvas) {
    const auto lines = linesOf(set, layout);
    double textHeight = 0;
    for (const auto& line : lines)
        textHeight += line.height();

    const double middle = cell.x + cell.width / 2;
    const double top = cell.y + cell.height / 2 + (layout.qrEdge + kGapUnderCode + textHeight) / 2;
    const double codeBottom = top - layout.qrEdge;
    canvas.drawBitmap(evenlyStretched(modules),
                      {middle - layout.qrEdge / 2, codeBottom, layout.qrEdge, layout.qrEdge});

    double y = codeBottom - kGapUnderCode;
    for (const auto& line : lines) {
        y -= line.height();
        drawCentred(line, middle, y + kLeading, cell.width - kTextMargin, canvas);
    }
}

} // namespace

std::string_view rawValue(BulkQRDensity density) {
    return density == BulkQRDensity::large ? "large" : "compact";
}

const CardLayout& cardLayout(BulkQRDensity density) {
    static constexpr CardLayout kLarge{2, 2, 127, 15, 10, 40};
    static constexpr CardLayout kCompact{3, 3, 85, 11, 8, 28};
    return density == BulkQRDensity::large ? kLarge : kCompact;
}

BulkQRPDFExporter::BulkQRPDFExporter(const QrEncoder& encoder, PdfCanvasFactory canvases,
                                     const FileStore& files)
    : m_generator(encoder),
      m_canvases(std::move(canvases)),
      m_files(files) {}

FileResult BulkQRPDFExporter::exportTo(const SetList& sets, BulkQRDensity density,
                                       const std::filesystem::path& to, const Progress& progress,
                                       const CardReport& report) const {
    if (sets.empty())
        return FileFailure{FileFailure::Reason::Abandoned};
    return m_files.replace(to, [&](ByteSink& sink) {
        const auto canvas = m_canvases(sink, kPageWidth, kPageHeight);
        return canvas && drawPages(*canvas, sets, cardLayout(density), progress, report) && canvas->finish();
    });
}

bool BulkQRPDFExporter::drawPages(PdfCanvas& canvas, const SetList& sets, const CardLayout& layout,
                                  const Progress& progress, const CardReport& report) const {
    const auto perPage = static_cast<std::size_t>(layout.cardsPerPage());
    const auto lines = cuttingLines(layout);
    for (std::size_t first = 0; first < sets.size(); first += perPage) {
        canvas.beginPage();
        canvas.strokeLines(lines, kCuttingLine);
        const auto end = std::min(first + perPage, sets.size());
        for (std::size_t i = first; i < end; ++i) {
            if (progress && !progress(i))
                return false;
            const auto modules = m_generator.modules(sets[i].toQRText());
            if (modules)
                drawCard(sets[i], *modules, cellOf(i - first, layout), layout, canvas);
            if (report)
                report(sets[i], modules ? std::optional(moduleEdge(*modules, layout)) : std::nullopt);
        }
        canvas.endPage();
    }
    return true;
}

} // namespace vantor
