#include "output/bulk_qr_pdf_exporter.h"
#include "output/qr_generator.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"

#include <fcntl.h>
#include <qrencode.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/benches.h"
#include "bench/comparison.h"
#include "bench/sample_data.h"

namespace vantor::bench {
namespace {

constexpr std::size_t kTextBytes = 120;

void encodeAlone(const std::string& text) {
    QRcode* const code = QRcode_encodeData(
        static_cast<int>(text.size()), reinterpret_cast<const unsigned char*>(text.data()), 0, QR_ECLEVEL_M);
    keep(code->data[0]);
    QRcode_free(code);
}

std::string scratchFile(const std::string& name) {
    return (std::filesystem::temp_directory_path() / ("vantor-bench-" + std::to_string(::getpid()) + name))
        .string();
}

struct Child {
    double processorMilliseconds = 1e9;
    double peakMiB = 1e9;
};

// What a process of its own needed, from its start to its end; what it prints is dropped.
Child run(std::vector<std::string> words) {
    std::vector<char*> arguments;
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t silently{};
    ::posix_spawn_file_actions_init(&silently);
    ::posix_spawn_file_actions_addopen(&silently, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error = ::posix_spawn(&process, arguments[0], &silently, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&silently);
    if (error != 0)
        return {};
    int status = 0;
    struct rusage usage {};
    ::wait4(process, &status, 0, &usage);
    if (status != 0)
        return {};
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return {milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / 1024};
}

// Of a process that exports so many cards.
double peakMemoryOfExport(const std::string& program, std::size_t count, const std::string& path) {
    return run({program, "--cards", std::to_string(count), path}).peakMiB;
}

} // namespace

int exportCards(std::size_t count, const char* path) {
    auto held = sampleSets(10000, 2, kTextBytes);
    SetList cards;
    for (std::size_t i = 0; i < count; ++i) {
        cards.push_back(std::move(held[i]));
    }
    const QrencodeEncoder encoder;
    const PosixFileStore files;
    const BulkQRPDFExporter exporter(encoder, CairoPdfCanvas::make, files);
    return exporter.exportTo(cards, BulkQRDensity::compact, path) ? EXIT_SUCCESS : EXIT_FAILURE;
}

void enlistCards(const char* program) {
    static const QrencodeEncoder encoder;
    static const PosixFileStore files;
    static const BulkQRPDFExporter exporter(encoder, CairoPdfCanvas::make, files);
    static const auto sets = sampleSets(1000, 2, kTextBytes);
    static const auto path = scratchFile("-cards.pdf");
    static const auto text = sets.front().toQRText();

    compare(
        {"one 600 x 600 code, 120 bytes of text", "libqrencode alone", 1.4},
        [] { keep(QRGenerator(encoder).generate(text, 600)); }, [] { encodeAlone(text); });
    compare(
        {"1,000 compact cards to a file", "encoding the 1,000 codes", 5},
        [] { exporter.exportTo(sets, BulkQRDensity::compact, path); },
        [] {
            for (const auto& set : sets)
                encodeAlone(set.toQRText());
        });

    const double thousand = peakMemoryOfExport(program, 1000, path);
    note("bytes a card of 1,000", static_cast<double>(std::filesystem::file_size(path)) / 1000, "bytes",
         1700);
    const double tenThousand = peakMemoryOfExport(program, 10000, path);
    note("peak memory of 1,000 cards", thousand, "MiB", 24);
    note("more than that for 10,000 cards", tenThousand - thousand, "MiB", 4);
    std::filesystem::remove(path);

    double start = 1e9;
    for (int i = 0; i < 20; ++i)
        start = std::min(start, run({VANTOR_CLI, "--version"}).processorMilliseconds);
    note("a start of vantor-prep-cli, of processor time", start, "ms", 50);
}

} // namespace vantor::bench
