#include "platform/cairo/cairo_pdf_canvas.h"

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
#include <utility>

namespace vantor {
namespace {

// Calls a library's own release function when the owner goes.
template <auto kRelease>
struct Releaser {
    template <typename T>
    void operator()(T* object) const {
        kRelease(object);
    }
};

using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
using Pattern = std::unique_ptr<cairo_pattern_t, Releaser<cairo_pattern_destroy>>;
using FontOptions = std::unique_ptr<cairo_font_options_t, Releaser<cairo_font_options_destroy>>;
using Layout = std::unique_ptr<PangoLayout, Releaser<g_object_unref>>;
using FontDescription = std::unique_ptr<PangoFontDescription, Releaser<pango_font_description_free>>;

cairo_status_t writeToSink(void* closure, const unsigned char* bytes, unsigned int length) {
    auto& sink = *static_cast<ByteSink*>(closure);
    return sink.write({reinterpret_cast<const char*>(bytes), length}) ? CAIRO_STATUS_SUCCESS
                                                                      : CAIRO_STATUS_WRITE_ERROR;
}

std::optional<std::string> fixedDate() {
    const char* const seconds = std::getenv("SOURCE_DATE_EPOCH");
    if (seconds == nullptr)
        return std::nullopt;
    std::int64_t since1970 = 0;
    const auto end = seconds + std::strlen(seconds);
    if (std::from_chars(seconds, end, since1970).ptr != end)
        return std::nullopt;
    static constexpr double kReferenceSince1970 = 978307200;
    return Timestamp{static_cast<double>(since1970) - kReferenceSince1970}.iso8601();
}

std::uint8_t reversedBits(std::uint8_t byte) {
    std::uint8_t out = 0;
    for (int i = 0; i < 8; ++i)
        out = static_cast<std::uint8_t>((out << 1) | ((byte >> i) & 1));
    return out;
}

// cairo's one-bit pictures keep the leftmost pixel in the lowest bit of a native word on little-endian machines
// and in the highest on others.
Surface maskOf(const Bitmap& picture) {
    Surface mask(cairo_image_surface_create(CAIRO_FORMAT_A1, picture.width(), picture.height()));
    unsigned char* out = cairo_image_surface_get_data(mask.get());
    if (out == nullptr)
        return mask;
    const int stride = cairo_image_surface_get_stride(mask.get());
    for (int y = 0; y < picture.height(); ++y, out += stride) {
        const auto row = picture.row(y);
        for (std::size_t i = 0; i < row.size(); ++i)
            out[i] = std::endian::native == std::endian::little ? reversedBits(row[i]) : row[i];
    }
    cairo_surface_mark_dirty(mask.get());
    return mask;
}

} // namespace

struct CairoPdfCanvas::State {
    Surface surface;
    Context context;
    Layout layout;
    double pageHeight = 0;
    std::optional<PdfFont> font;

    [[nodiscard]] bool failed() const {
        return cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS ||
               cairo_status(context.get()) != CAIRO_STATUS_SUCCESS;
    }

    // Lays out one line; measuring and drawing the same line lays it out once.
    PangoLayoutLine* line(std::string_view text, const PdfFont& wanted) {
        if (font != wanted) {
            const FontDescription description(pango_font_description_from_string("Liberation Sans,sans-serif"));
            pango_font_description_set_absolute_size(description.get(), wanted.size * PANGO_SCALE);
            pango_font_description_set_weight(description.get(),
                                              wanted.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
            pango_layout_set_font_description(layout.get(), description.get());
            font = wanted;
        }
        if (text != std::string_view(pango_layout_get_text(layout.get())))
            pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
        return pango_layout_get_line_readonly(layout.get(), 0);
    }
};

std::unique_ptr<PdfCanvas> CairoPdfCanvas::make(ByteSink& sink, double width, double height) {
    auto state = std::make_unique<State>();
    state->surface.reset(cairo_pdf_surface_create_for_stream(writeToSink, &sink, width, height));
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
    cairo_set_dash(context, dashes.data(), static_cast<int>(dashes.size()), 0);
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
    cairo_surface_finish(m_state->surface.get());
    return cairo_surface_status(m_state->surface.get()) == CAIRO_STATUS_SUCCESS;
}

} // namespace vantor
