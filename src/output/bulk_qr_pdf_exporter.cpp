#include "output/bulk_qr_pdf_exporter.h"

#include "base/text.h"

#include <algorithm>
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

struct CardLine {
    std::string text;
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

std::string placeLine(const SetData& set) {
    const bool both = !set.model.empty() && !set.location.empty();
    return set.model + (both ? " · " : "") + set.location;
}

std::string itemsLine(const SetData& set) {
    std::vector<std::string> texts;
    texts.reserve(set.items.size());
    for (const auto& item : set.items)
        texts.push_back(item.color.empty() ? item.name : item.name + " (" + item.color + ")");
    return joined(texts, ", ");
}

std::vector<CardLine> linesOf(const SetData& set, const CardLayout& layout) {
    const PdfFont headlineFont{layout.headlineSize, true};
    const PdfFont textFont{layout.textSize, false};
    std::vector<CardLine> lines;
    for (auto& [text, font] : {CardLine{set.headline(), headlineFont}, CardLine{placeLine(set), textFont},
                               CardLine{itemsLine(set), textFont}}) {
        if (!text.empty())
            lines.push_back({shortenedTo(onOneLine(text), layout.mostCharacters), font});
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
        const double natural = canvas.textWidth(line.text, line.font);
        const double width = std::min(natural, cell.width - kTextMargin);
        canvas.drawText(line.text, line.font, {middle - width / 2, y + kLeading},
                        natural > 0 ? width / natural : 1);
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
