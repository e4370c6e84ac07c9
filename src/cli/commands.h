// What each call of the command-line program does.
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "platform/file_store.h"
#include "platform/pdf_canvas.h"
#include "platform/png_writer.h"
#include "platform/qr_encoder.h"

namespace vantor::cli {

// The services that the calls work with; all outlive them.
struct Services {
    const FileStore& files;
    const QrEncoder& encoder;
    const PngWriter& pngs;
    PdfCanvasFactory canvases;
};

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kMisused = 2;

// Carries the call out and says how it went: kDone, kFailed with the reason (a lack of memory among them) on standard
// error and no file changed by a failing write, or kMisused.
[[nodiscard]] int run(const Call& call, const Services& services, Console& console);

} // namespace vantor::cli
