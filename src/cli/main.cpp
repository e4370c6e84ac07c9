// vantor-prep-cli: makes QR cards and converts shoots without a window. Never touches the user's own stores.

#include "cli/arguments.h"
#include "cli/commands.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "platform/terminal.h"

#include <string_view>
#include <vector>

int main(int argc, char** argv) {
    using namespace vantor;
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const PosixFileStore files;
    const QrencodeEncoder encoder;
    const LibpngWriter pngs;
    cli::Console console(standardErrorIsTerminal());
    return cli::run(cli::readArguments(arguments), {files, encoder, pngs, CairoPdfCanvas::make}, console);
}
