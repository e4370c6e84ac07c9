// Recording: what was drawn on a PdfCanvas that draws nothing, page by page, in order.
#pragma once

#include "platform/pdf_canvas.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vantor::testing {

struct DrawnLines {
    std::vector<PdfLine> lines;
    PdfStroke stroke;
};

struct DrawnBitmap {
    Bitmap picture;
    PdfRect into;
};

struct DrawnText {
    std::string text;
    PdfFont font;
    PdfPoint origin;
    double stretch;
};

struct Recording {
    using Page = std::vector<std::variant<DrawnLines, DrawnBitmap, DrawnText>>;

    // Width and height that the canvas was made with.
    double width = 0;
    double height = 0;
    std::vector<Page> pages;
    std::size_t pagesEnded = 0;
    bool isFinished = false;
    // What finish() answers.
    bool succeeds = true;
    // The width of every character, in parts of the font's size.
    double characterWidth = 0.5;

    // All drawn on a page that is of one kind.
    template <typename Kind>
    [[nodiscard]] std::vector<Kind> all(std::size_t page) const {
        std::vector<Kind> found;
        for (const auto& drawn : pages.at(page)) {
            if (const auto* const one = std::get_if<Kind>(&drawn))
                found.push_back(*one);
        }
        return found;
    }
    [[nodiscard]] std::vector<std::string> texts(std::size_t page) const {
        std::vector<std::string> found;
        for (const auto& drawn : all<DrawnText>(page))
            found.push_back(drawn.text);
        return found;
    }

    // Makes canvases that record here; their files hold kFile.
    [[nodiscard]] PdfCanvasFactory factory();

    static constexpr std::string_view kFile = "recorded";
};

class RecordingCanvas final : public PdfCanvas {
public:
    RecordingCanvas(Recording& recording, ByteSink& sink) : m_recording(recording), m_sink(sink) {}

    void beginPage() override { m_recording.pages.emplace_back(); }
    void endPage() override { ++m_recording.pagesEnded; }
    void strokeLines(std::span<const PdfLine> lines, const PdfStroke& stroke) override {
        m_recording.pages.back().emplace_back(DrawnLines{{lines.begin(), lines.end()}, stroke});
    }
    void drawBitmap(const Bitmap& picture, const PdfRect& into) override {
        m_recording.pages.back().emplace_back(DrawnBitmap{picture, into});
    }
    [[nodiscard]] double textWidth(std::string_view text, const PdfFont& font) override {
        // Counts the bytes that begin a character.
        double characters = 0;
        for (const char c : text)
            characters += (static_cast<unsigned char>(c) & 0xC0) == 0x80 ? 0 : 1;
        return characters * font.size * m_recording.characterWidth;
    }
    void drawText(std::string_view text, const PdfFont& font, PdfPoint origin, double stretch) override {
        m_recording.pages.back().emplace_back(DrawnText{std::string(text), font, origin, stretch});
    }
    bool finish() override {
        m_recording.isFinished = true;
        return m_recording.succeeds && m_sink.write(Recording::kFile);
    }

private:
    Recording& m_recording;
    ByteSink& m_sink;
};

inline PdfCanvasFactory Recording::factory() {
    return [this](ByteSink& sink, double pageWidth, double pageHeight) {
        width = pageWidth;
        height = pageHeight;
        return std::make_unique<RecordingCanvas>(*this, sink);
    };
}

} // namespace vantor::testing
