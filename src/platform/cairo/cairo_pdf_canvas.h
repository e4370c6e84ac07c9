// CairoPdfCanvas: PdfCanvas on cairo and Pango.
//
// - Text is set in Liberation Sans, characters that it lacks in the system's sans-serif; fonts are
//   embedded as subsets and the text can be extracted.
// - The file names no title and no author. Its date is the present, or SOURCE_DATE_EPOCH (seconds since 1970)
//   where the environment sets it, so that equal input gives equal files.
// - Memory does not grow with the number of pages beyond what their index takes.
#pragma once

#include "platform/pdf_canvas.h"

#include <memory>

namespace vantor {

class CairoPdfCanvas final : public PdfCanvas {
public:
    // See PdfCanvasFactory.
    [[nodiscard]] static std::unique_ptr<PdfCanvas> make(ByteSink& sink, double width, double height);

    ~CairoPdfCanvas() override;

    void beginPage() override;
    void endPage() override;
    void strokeLines(std::span<const PdfLine> lines, const PdfStroke& stroke) override;
    void drawBitmap(const Bitmap& picture, const PdfRect& into) override;
    [[nodiscard]] double textWidth(std::string_view text, const PdfFont& font) override;
    void drawText(std::string_view text, const PdfFont& font, PdfPoint origin, double stretch) override;
    bool finish() override;

private:
    struct State;

    explicit CairoPdfCanvas(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

} // namespace vantor
