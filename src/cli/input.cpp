#include "cli/input.h"

#include "base/text.h"
#include "base/text_lookup.h"
#include "formats/list_limit.h"
#include "formats/set_csv.h"
#include "formats/shoot_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "edit/shoot_edits.h"

namespace vantor::cli {
namespace {

namespace fs = std::filesystem;

std::string lineOf(std::string_view bytes, std::size_t offset) {
    return std::to_string(
        1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

std::string inMiB(std::uint64_t bytes) {
    return std::to_string((bytes + (1U << 20U) - 1) >> 20U) + " MiB";
}

Problem tooLarge(const std::optional<fs::path>& path, std::uint64_t most) {
    std::error_code error;
    const auto size = path ? fs::file_size(*path, error) : most + 1;
    if (path && !error) {
        return {lookUp("%1: te groot voor een CSV-bestand: %2, hoogstens %3",
                       {nameOf(path), inMiB(size), inMiB(most)})};
    }
    return {
        lookUp("%1: te groot voor een CSV-bestand: meer dan %2, hoogstens %2", {nameOf(path), inMiB(most)})};
}

Outcome<std::string> readStandardInput(std::uint64_t most) {
    std::string bytes;
    std::array<char, 65536> buffer{};
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), stdin)) {
        bytes.append(buffer.data(), count);
        if (bytes.size() > most)
            return tooLarge(std::nullopt, most);
    }
    if (std::ferror(stdin) != 0)
        return Problem{lookUp("%1: kan niet gelezen worden", {nameOf(std::nullopt)})};
    return bytes;
}

Outcome<std::string> readBytes(const std::optional<fs::path>& path, const FileStore& files,
                               std::uint64_t most) {
    if (!path)
        return readStandardInput(most);
    auto result = files.read(*path, most);
    if (result.bytes)
        return *std::move(result.bytes);
    switch (result.failure) {
    case FileStore::ReadFailure::Missing:
        return Problem{lookUp("%1: bestaat niet", {nameOf(path)})};
    case FileStore::ReadFailure::TooLarge:
        return tooLarge(path, most);
    case FileStore::ReadFailure::Unreadable:
        break;
    }
    return Problem{lookUp("%1: kan niet gelezen worden of is geen gewoon bestand", {nameOf(path)})};
}

Outcome<std::string> readText(const std::optional<fs::path>& path, const FileStore& files,
                              std::uint64_t most) {
    auto outcome = readBytes(path, files, most);
    if (const auto* const bytes = std::get_if<std::string>(&outcome)) {
        if (const auto bad = firstInvalidUtf8(*bytes))
            return Problem{lookUp("%1: regel %2: geen geldige UTF-8", {nameOf(path), lineOf(*bytes, *bad)})};
    }
    return outcome;
}

Outcome<Shoot> readCsv(const Input& input, const FileStore& files) {
    auto text = readText(input.path, files, kMostCsvBytes);
    if (auto* const problem = std::get_if<Problem>(&text))
        return std::move(*problem);
    const auto& csv = std::get<std::string>(text);
    if (const auto lines = lineCount(csv); lines > kMostListLines) {
        return Problem{lookUp("%1: te lang voor een lijst: %2 regels, hoogstens %3",
                              {nameOf(input.path), std::to_string(lines), std::to_string(kMostListLines)})};
    }
    const auto now = Timestamp::now();
    auto shoot = Shoot::make(input.path ? input.path->stem().string() : lookUp("shoot"), "", "", now);
    readSetCSV(csv, now, [&](SetData set) { shoot.sets.push_front(std::move(set)); });
    if (shoot.sets.empty()) {
        return Problem{
            lookUp("%1: geen sets gevonden; verwacht een kopregel als Set;Merk;Items;Model;Locatie "
                   "en daaronder een regel per set",
                   {nameOf(input.path)})};
    }
    return shoot;
}

Outcome<Shoot> readShootFileFrom(const Input& input, const FileStore& files) {
    auto bytes = readBytes(input.path, files, FileStore::kNoLimit);
    if (auto* const problem = std::get_if<Problem>(&bytes))
        return std::move(*problem);
    const auto& text = std::get<std::string>(bytes);
    // As a shoot that is opened: a new one, of now.
    if (auto read = readShootFile(text)) {
        auto opened = importShoot(*std::move(read), Timestamp::now());
        return std::move(opened.shoots.put.front().element);
    }
    return Problem{lookUp("%1: regel %2: geen geldig shootbestand",
                          {nameOf(input.path), lineOf(text, whereUnreadable(text))})};
}

} // namespace

std::string nameOf(const std::optional<fs::path>& path) {
    return path ? path->string() : lookUp("standaardinvoer");
}

Outcome<Shoot> readShootFrom(const Input& input, const FileStore& files) {
    return input.format == Format::Csv ? readCsv(input, files) : readShootFileFrom(input, files);
}

Outcome<std::string> readTextFrom(const std::optional<fs::path>& path, const FileStore& files) {
    return readText(path, files, kMostCsvBytes);
}

} // namespace vantor::cli
