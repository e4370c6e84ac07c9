#include "tests/output/printed_cards.h"

#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "tests/support/command.h"
#include "tests/support/temporary_folder.h"

#include <array>
#include <string>

namespace vantor::testing {
namespace {

constexpr std::array kWords{"jurk", "broek", "coltrui",  "geëxporteerd", "crème", "blauw", "naïef", "zijde",
                            "wol",  "Zoë",   "Ångström", "½ maat",       "24",    "7b",    "李娜",  "🧥"};

// One page, printed by another program than drew it.
GrayPicture printedPage(const std::filesystem::path& document, std::size_t page, int dotsPerInch,
                        const TemporaryFolder& folder) {
    const auto picture = folder / "page";
    const auto number = std::to_string(page);
    const auto result =
        runCommand("pdftoppm -gray -singlefile -r " + std::to_string(dotsPerInch) + " -f " + number + " -l " +
                   number + " " + document.string() + " " + picture.string());
    EXPECT_EQ(result.status, 0) << result.output;
    return readPgm(picture.string() + ".pgm").value();
}

} // namespace

SetData setOfBytes(std::size_t bytes, std::mt19937& random) {
    auto set = SetData::make(Timestamp{0});
    set.setNumber = std::to_string(random() % 100);
    set.brand = "B";
    const auto word = [&random] { return kWords[random() % kWords.size()]; };
    while (set.toQRText().size() <= bytes) {
        const auto* const color = word();
        set.items.push_back(SetItem::make(word(), color));
    }
    set.items.pop_back();
    for (auto length = set.toQRText().size(); length < bytes; ++length)
        set.brand += static_cast<char>('a' + random() % 26);
    return set;
}

std::vector<GrayPicture> printedCards(const SetList& sets, BulkQRDensity density, int dotsPerInch) {
    const TemporaryFolder folder;
    const auto document = folder / "cards.pdf";
    const QrencodeEncoder encoder;
    const PosixFileStore files;
    if (!BulkQRPDFExporter(encoder, CairoPdfCanvas::make, files).exportTo(sets, density, document))
        return {};

    static constexpr double kPointsPerInch = 72;
    const std::size_t columns = density == BulkQRDensity::large ? 2 : 3;
    const auto perPage = columns * columns;
    std::vector<GrayPicture> cards;
    for (std::size_t first = 0; first < sets.size(); first += perPage) {
        const auto page = printedPage(document, first / perPage + 1, dotsPerInch, folder);
        const double margin = 24 / kPointsPerInch * dotsPerInch;
        const double width = (page.width - 2 * margin) / static_cast<double>(columns);
        const double height = (page.height - 2 * margin) / static_cast<double>(columns);
        for (std::size_t i = first; i < std::min(first + perPage, sets.size()); ++i) {
            const auto column = (i - first) % columns;
            const auto row = (i - first) / columns;
            const double x = margin + static_cast<double>(column) * width;
            const double y = margin + static_cast<double>(row) * height;
            cards.push_back(cropped(page, static_cast<int>(x), static_cast<int>(y), static_cast<int>(width),
                                    static_cast<int>(height)));
        }
    }
    return cards;
}

} // namespace vantor::testing
