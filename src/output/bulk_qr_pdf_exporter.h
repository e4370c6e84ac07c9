// BulkQRPDFExporter: the QR cards of many sets on A4 pages, with cutting lines, as one PDF file.
//
// - Lengths are points, the origin is the page's lower left corner.
// - Codes are drawn from their modules, a whole number of pixels each, so that all modules are equally wide.
// - Borrows what it is given for its lifetime; keeps nothing between exports.
#pragma once

#include "model/shoot.h"
#include "output/qr_generator.h"
#include "platform/file_store.h"
#include "platform/pdf_canvas.h"
#include "platform/qr_encoder.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

namespace vantor {

enum class BulkQRDensity { large, compact };

inline constexpr std::array kAllDensities{BulkQRDensity::large, BulkQRDensity::compact};

// "large" or "compact".
[[nodiscard]] std::string_view rawValue(BulkQRDensity density);

struct CardLayout {
    int columns;
    int rows;
    // Edge of the code with its quiet zone.
    double qrEdge;
    double headlineSize;
    double textSize;
    // User-perceived characters in a line; longer ones are shortened.
    std::size_t mostCharacters;

    [[nodiscard]] int cardsPerPage() const { return columns * rows; }
};

[[nodiscard]] const CardLayout& cardLayout(BulkQRDensity density);

inline constexpr double kPageWidth = 595.28;
inline constexpr double kPageHeight = 841.89;
inline constexpr double kPageMargin = 24;

// Printed modules smaller than this, in millimetres, are beyond many hand scanners.
inline constexpr double kSmallestModule = 0.33;

class BulkQRPDFExporter {
public:
    // Called before each card with the number of cards drawn so far; false abandons the export.
    using Progress = std::function<bool(std::size_t drawn)>;
    // Called after each card with the edge of one module of its code, in millimetres; absent when the set's text
    // is too long for a code.
    using CardReport = std::function<void(const SetData& set, std::optional<double> moduleEdge)>;

    BulkQRPDFExporter(const QrEncoder& encoder, PdfCanvasFactory canvases, const FileStore& files);

    // Writes the cards of the sets, in their order, to the file, replacing it whole. Fails, and nothing is written,
    // when there are no sets, the file cannot be written, or the export was abandoned. A set whose text is too long
    // for a code leaves its cell empty.
    FileResult exportTo(const SetList& sets, BulkQRDensity density, const std::filesystem::path& to,
                        const Progress& progress = {}, const CardReport& report = {}) const;

private:
    bool drawPages(PdfCanvas& canvas, const SetList& sets, const CardLayout& layout, const Progress& progress,
                   const CardReport& report) const;

    QRGenerator m_generator;
    PdfCanvasFactory m_canvases;
    const FileStore& m_files;
};

} // namespace vantor
