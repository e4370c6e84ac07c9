#include "platform/libpng/libpng_writer.h"

#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <vector>

namespace vantor {
namespace {

void append(png_structp png, png_bytep bytes, png_size_t length) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), length);
}

// The library reports errors with a long jump, so nothing in here may need a destructor.
bool writePicture(png_structp png, png_infop info, const Bitmap& picture, std::string& out,
                  const std::uint8_t* whiteIsSet) {
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    png_set_write_fn(png, &out, append, nullptr);
    // Rows repeat within a module; a filter would hide that from the compressor.
    png_set_filter(png, 0, PNG_FILTER_NONE);
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width()),
                 static_cast<png_uint_32>(picture.height()), 1, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const auto rowBytes = picture.row(0).size();
    for (int y = 0; y < picture.height(); ++y)
        png_write_row(png, whiteIsSet + rowBytes * static_cast<std::size_t>(y));
    png_write_end(png, nullptr);
    return true;
}

} // namespace

std::optional<std::string> LibpngWriter::encode(const Bitmap& picture) const {
    if (picture.width() < 1 || picture.height() < 1)
        return std::nullopt;
    // In a greyscale PNG a set bit is white.
    std::vector<std::uint8_t> inverted;
    inverted.reserve(picture.row(0).size() * static_cast<std::size_t>(picture.height()));
    for (int y = 0; y < picture.height(); ++y) {
        for (const auto byte : picture.row(y))
            inverted.push_back(static_cast<std::uint8_t>(~byte));
    }
    std::string out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (png == nullptr)
        return std::nullopt;
    png_infop info = png_create_info_struct(png);
    const bool written = info != nullptr && writePicture(png, info, picture, out, inverted.data());
    png_destroy_write_struct(&png, &info);
    return written ? std::optional(std::move(out)) : std::nullopt;
}

} // namespace vantor
