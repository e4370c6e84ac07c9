// GrayPicture: a picture in shades of grey, as a camera or a scanner would hand it to a reader of codes.
#pragma once

#include "platform/bitmap.h"

#include <png.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::testing {

// Rows from top to bottom, one byte a pixel, black is 0.
struct GrayPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    [[nodiscard]] std::uint8_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

[[nodiscard]] inline GrayPicture blankPicture(int width, int height) {
    return {
        width, height,
        std::vector<std::uint8_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 255)};
}

// Absent when it is no such file.
[[nodiscard]] inline std::optional<GrayPicture> readPgm(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::string kind;
    int width = 0;
    int height = 0;
    int white = 0;
    in >> kind >> width >> height >> white;
    if (!in || kind != "P5" || width < 1 || height < 1 || white != 255)
        return std::nullopt;
    in.get();
    auto picture = blankPicture(width, height);
    in.read(reinterpret_cast<char*>(picture.pixels.data()),
            static_cast<std::streamsize>(picture.pixels.size()));
    return in ? std::optional(std::move(picture)) : std::nullopt;
}

// Absent when it is no such picture. Whoever uses it links libpng.
[[nodiscard]] inline std::optional<GrayPicture> decodePng(std::string_view bytes) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0)
        return std::nullopt;
    image.format = PNG_FORMAT_GRAY;
    auto picture = blankPicture(static_cast<int>(image.width), static_cast<int>(image.height));
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0)
        return std::nullopt;
    return picture;
}

[[nodiscard]] inline GrayPicture grayPicture(const Bitmap& picture) {
    auto out = blankPicture(picture.width(), picture.height());
    auto pixel = out.pixels.begin();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            *pixel++ = picture.isBlack(x, y) ? 0 : 255;
    }
    return out;
}

[[nodiscard]] inline GrayPicture cropped(const GrayPicture& from, int x, int y, int width, int height) {
    auto out = blankPicture(width, height);
    auto pixel = out.pixels.begin();
    for (int row = y; row < y + height; ++row) {
        for (int column = x; column < x + width; ++column)
            *pixel++ = from.at(column, row);
    }
    return out;
}

} // namespace vantor::testing
