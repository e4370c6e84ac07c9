// The command line of vantor-prep-cli, one argument after each NUL: wrong usage is told, and what is accepted is
// well-formed and reads the same again when it is written out in full.

#include "cli/arguments.h"
#include "output/bulk_qr_pdf_exporter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "fuzz/require.h"

using namespace vantor;
using namespace vantor::cli;

namespace {

using Words = std::vector<std::string>;

constexpr std::array<std::string_view, 5> kCalls{"cards", "qr", "convert", "list", "parse"};

Call read(const Words& words) {
    // Each of its very length, so that reading behind its end is noticed.
    std::vector<std::string> copies;
    for (const auto& word : words) {
        copies.push_back(word);
        copies.back().shrink_to_fit();
    }
    const std::vector<std::string_view> arguments(copies.begin(), copies.end());
    return readArguments(arguments);
}

// The call with every option told, and the file behind "--".
class InFull {
public:
    Words operator()(const CardsCall& call) const {
        require(std::ranges::find(kAllDensities, call.density) != kAllDensities.end());
        return withInput({"cards", written(call.output), "--density=" + std::string(rawValue(call.density))},
                         call.input);
    }
    Words operator()(const QrCall& call) const { return withInput({"qr", written(call.folder)}, call.input); }
    Words operator()(const ConvertCall& call) const {
        require(formatOf(call.output) == call.format);
        return withInput({"convert", written(call.output)}, call.input);
    }
    Words operator()(const ListCall& call) const { return withInput({"list"}, call.input); }
    Words operator()(const ParseCall& call) const {
        if (!call.path)
            return {"parse", "-"};
        require(!call.path->empty());
        return {"parse", "--", call.path->string()};
    }
    Words operator()(const HelpCall& call) const {
        if (call.about.empty())
            return {"--help"};
        require(std::ranges::find(kCalls, call.about) != kCalls.end());
        return {std::string(call.about), "--help"};
    }
    Words operator()(const VersionCall&) const { return {"--version"}; }
    Words operator()(const Misuse& misuse) const {
        require(!misuse.problem.empty());
        require(misuse.about.empty() || std::ranges::find(kCalls, misuse.about) != kCalls.end());
        require(helpText(misuse.about).find("Gebruik:") != std::string_view::npos);
        return {};
    }

private:
    static std::string written(const std::filesystem::path& output) {
        require(!output.empty());
        return "--output=" + output.string();
    }
    static Words withInput(Words words, const Input& input) {
        require(!input.path || (!input.path->empty() && *input.path != "-"));
        words.emplace_back(input.format == Format::Csv ? "--from=csv" : "--from=vantor");
        words.emplace_back("--");
        words.push_back(input.path ? input.path->string() : "-");
        return words;
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Words words;
    for (std::string_view rest(reinterpret_cast<const char*>(data), size); !rest.empty();) {
        const auto word = rest.substr(0, rest.find('\0'));
        words.emplace_back(word);
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    }
    const auto call = read(words);
    const auto inFull = std::visit(InFull(), call);
    if (std::holds_alternative<Misuse>(call))
        return 0;
    const auto again = read(inFull);
    require(again.index() == call.index());
    require(std::visit(InFull(), again) == inFull);
    return 0;
}
