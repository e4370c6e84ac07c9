#include "platform/cairo/cairo_pdf_canvas.h"

#include "base/releaser.h"
#include "base/timestamp.h"

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace vantor {
namespace {

using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
using Pattern = std::unique_ptr<cairo_pattern_t, Releaser<cairo_pattern_destroy>>;
using FontOptions = std::unique_ptr<cairo_font_options_t, Releaser<cairo_font_options_destroy>>;
using GlibText = std::unique_ptr<char, Releaser<g_free>>;
using Layout = std::unique_ptr<PangoLayout, Releaser<g_object_unref>>;
using FontDescription = std::unique_ptr<PangoFontDescription, Releaser<pango_font_description_free>>;

// Remembers a failure, since cairo forgets some on its way to the surface's status.
struct Output {
    ByteSink& sink;
    bool failed = false;

    static cairo_status_t write(void* closure, const unsigned char* bytes, unsigned int length) {
        auto& output = *static_cast<Output*>(closure);
        if (!output.sink.write({reinterpret_cast<const char*>(bytes), length}))
            output.failed = true;
        return output.failed ? CAIRO_STATUS_WRITE_ERROR : CAIRO_STATUS_SUCCESS;
    }
};

std::optional<std::string> fixedDate() {
    const char* const seconds = std::getenv("SOURCE_DATE_EPOCH");
    if (seconds == nullptr)
        return std::nullopt;
    std::int64_t since1970 = 0;
    const auto end = seconds + std::strlen(seconds);
    const auto [rest, error] = std::from_chars(seconds, end, since1970);
    if (error != std::errc{} || rest != end)
        return std::nullopt;
    static constexpr double kReferenceSince1970 = 978307200;
    return Timestamp{static_cast<double>(since1970) - kReferenceSince1970}.iso8601();
}

// cairo stops drawing altogether at bytes that are no UTF-8 and at what Unicode calls noncharacters. Zero
// would end the text.
std::string drawable(std::string_view text) {
    const GlibText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    std::string out;
    out.reserve(text.size());
    for (const char* at = valid.get(); *at != '\0';) {
        const gunichar character = g_utf8_get_char(at);
        const char* const next = g_utf8_next_char(at);
        const bool isNoncharacter =
            (character >= 0xFDD0 && character <= 0xFDEF) || (character & 0xFFFE) == 0xFFFE;
        if (isNoncharacter)
            out += "\uFFFD";
        else
            out.append(at, next);
        at = next;
    }
    return out;
}

constexpr std::array<std::uint8_t, 256> kReversedBits = [] {
    std::array<std::uint8_t, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        unsigned reversed = 0;
        for (unsigned bit = 0; bit < 8; ++bit)
            reversed = reversed << 1 | (byte >> bit & 1);
        table[byte] = static_cast<std::uint8_t>(reversed);
    }
    return table;
}();

// cairo's one-bit pictures keep the leftmost pixel in the lowest bit of a native word on little-endian
// machines and in the highest on others.
Surface maskOf(const Bitmap& picture) {
    Surface mask(cairo_image_surface_create(CAIRO_FORMAT_A1, picture.width(), picture.height()));
    unsigned char* out = cairo_image_surface_get_data(mask.get());
    if (out == nullptr)
        return mask;
    const int stride = cairo_image_surface_get_stride(mask.get());
    for (int y = 0; y < picture.height(); ++y, out += stride) {
        const auto row = picture.row(y);
        for (std::size_t i = 0; i < row.size(); ++i)
            out[i] = std::endian::native == std::endian::little ? kReversedBits[row[i]] : row[i];
    }
    cairo_surface_mark_dirty(mask.get());
    return mask;
}

} // namespace

struct CairoPdfCanvas::State {
    explicit State(ByteSink& sink) : output{sink} {}

    Output output;
    Surface surface;
    Context context;
    Layout layout;
    double pageHeight = 0;
    std::optional<PdfFont> font;
    std::string text;

    [[nodiscard]] bool failed() const {
        return output.failed || cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS ||
               cairo_status(context.get()) != CAIRO_STATUS_SUCCESS;
    }

    // Lays out one line; measuring and drawing the same line lays it out once.
    PangoLayoutLine* line(std::string_view wantedText, const PdfFont& wantedFont) {
        if (font != wantedFont) {
            const FontDescription description(
                pango_font_description_from_string("Liberation Sans,sans-serif"));
            pango_font_description_set_absolute_size(description.get(), wantedFont.size * PANGO_SCALE);
            pango_font_description_set_weight(description.get(),
                                              wantedFont.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
            pango_layout_set_font_description(layout.get(), description.get());
            font = wantedFont;
        }
        if (text != wantedText) {
            text = wantedText;
            const auto shown = drawable(text);
            pango_layout_set_text(layout.get(), shown.data(), static_cast<int>(shown.size()));
        }
        return pango_layout_get_line_readonly(layout.get(), 0);
    }
};

std::unique_ptr<PdfCanvas> CairoPdfCanvas::make(ByteSink& sink, double width, double height) {
    auto state = std::make_unique<State>(sink);
    state->surface.reset(cairo_pdf_surface_create_for_stream(Output::write, &state->output, width, height));
    state->context.reset(cairo_create(state->surface.get()));
    state->layout.reset(pango_cairo_create_layout(state->context.get()));
    state->pageHeight = height;
    if (const auto date = fixedDate())
        cairo_pdf_surface_set_metadata(state->surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, date->c_str());

    // Glyphs are placed by the font's own measures, not by a screen's.
    const FontOptions options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    PangoContext* const text = pango_layout_get_context(state->layout.get());
    pango_cairo_context_set_font_options(text, options.get());
    pango_context_set_round_glyph_positions(text, FALSE);
    pango_layout_set_single_paragraph_mode(state->layout.get(), TRUE);

    if (state->failed())
        return nullptr;
    return std::unique_ptr<PdfCanvas>(new CairoPdfCanvas(std::move(state)));
}

CairoPdfCanvas::CairoPdfCanvas(std::unique_ptr<State> state) : m_state(std::move(state)) {}

CairoPdfCanvas::~CairoPdfCanvas() {
    // cairo writes the rest of the file as it goes; by then the sink would have to be there still.
    finish();
}

void CairoPdfCanvas::beginPage() {
    cairo_identity_matrix(m_state->context.get());
}

void CairoPdfCanvas::endPage() {
    cairo_show_page(m_state->context.get());
}

void CairoPdfCanvas::strokeLines(std::span<const PdfLine> lines, const PdfStroke& stroke) {
    cairo_t* const context = m_state->context.get();
    const std::array<double, 2> dashes{stroke.dash, stroke.gap};
    cairo_save(context);
    cairo_set_source_rgba(context, stroke.gray, stroke.gray, stroke.gray, stroke.alpha);
    cairo_set_line_width(context, stroke.width);
    cairo_set_dash(context, dashes.data(), stroke.dash > 0 ? static_cast<int>(dashes.size()) : 0, 0);
    for (const auto& line : lines) {
        cairo_move_to(context, line.from.x, m_state->pageHeight - line.from.y);
        cairo_line_to(context, line.to.x, m_state->pageHeight - line.to.y);
    }
    cairo_stroke(context);
    cairo_restore(context);
}

void CairoPdfCanvas::drawBitmap(const Bitmap& picture, const PdfRect& into) {
    cairo_t* const context = m_state->context.get();
    const Surface mask = maskOf(picture);
    const Pattern pattern(cairo_pattern_create_for_surface(mask.get()));
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
    cairo_save(context);
    cairo_translate(context, into.x, m_state->pageHeight - into.y - into.height);
    cairo_scale(context, into.width / picture.width(), into.height / picture.height());
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_mask(context, pattern.get());
    cairo_restore(context);
}

double CairoPdfCanvas::textWidth(std::string_view text, const PdfFont& font) {
    PangoRectangle logical;
    pango_layout_line_get_extents(m_state->line(text, font), nullptr, &logical);
    return static_cast<double>(logical.width) / PANGO_SCALE;
}

void CairoPdfCanvas::drawText(std::string_view text, const PdfFont& font, PdfPoint origin, double stretch) {
    cairo_t* const context = m_state->context.get();
    cairo_save(context);
    cairo_translate(context, origin.x, m_state->pageHeight - origin.y);
    cairo_scale(context, stretch, 1);
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_move_to(context, 0, 0);
    pango_cairo_show_layout_line(context, m_state->line(text, font));
    cairo_restore(context);
}

bool CairoPdfCanvas::finish() {
    // A context that failed draws nothing more, which the surface does not know.
    const bool drawn = !m_state->failed();
    cairo_surface_finish(m_state->surface.get());
    return drawn && !m_state->failed();
}

} // namespace vantor
