// PdfCanvas: draws the pages of one PDF file (ISO 32000-1), which goes into a sink as it is made.
//
// - Lengths are points (1/72 inch). The origin is the page's lower left corner and y points up.
// - Pages are drawn one after the other; what is drawn belongs to the page last begun.
// - Drawing reports nothing: finish() says whether the file is whole.
#pragma once

#include "platform/bitmap.h"
#include "platform/byte_sink.h"

#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace vantor {

struct PdfPoint {
    double x = 0;
    double y = 0;
};

struct PdfRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

struct PdfLine {
    PdfPoint from;
    PdfPoint to;
};

struct PdfStroke {
    // Black to white as 0 to 1, and transparent to opaque as 0 to 1.
    double gray = 0;
    double alpha = 1;
    double width = 1;
    // Lengths of the dashes and of the gaps between them; without dashes the line is solid.
    double dash = 0;
    double gap = 0;
};

// The document's sans-serif font.
struct PdfFont {
    double size = 0;
    bool bold = false;

    friend bool operator==(const PdfFont&, const PdfFont&) = default;
};

class PdfCanvas {
public:
    virtual ~PdfCanvas() = default;

    virtual void beginPage() = 0;
    virtual void endPage() = 0;

    // Strokes all lines at once; each starts with a whole dash.
    virtual void strokeLines(std::span<const PdfLine> lines, const PdfStroke& stroke) = 0;

    // Paints the picture's black pixels, stretched over the rectangle without smoothing.
    virtual void drawBitmap(const Bitmap& picture, const PdfRect& into) = 0;

    // The width of a line of text. Line breaks are not for this canvas.
    [[nodiscard]] virtual double textWidth(std::string_view text, const PdfFont& font) = 0;

    // Sets a line of text in black from `origin`, its start on the baseline; `stretch` scales its width.
    virtual void drawText(std::string_view text, const PdfFont& font, PdfPoint origin, double stretch) = 0;

    // Completes the file. False when it could not be made or the sink did not take all of it.
    virtual bool finish() = 0;
};

// Makes a canvas for pages of the given size in points, writing to a sink that outlives it; null on failure.
using PdfCanvasFactory =
    std::function<std::unique_ptr<PdfCanvas>(ByteSink& sink, double width, double height)>;

} // namespace vantor
