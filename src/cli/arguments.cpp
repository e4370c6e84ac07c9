#include "cli/arguments.h"

#include "base/text.h"
#include "base/text_lookup.h"

#include <algorithm>
#include <array>
#include <map>
#include <vector>

namespace vantor::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kProgramHelp = toLookUp(
    R"(vantor-prep-cli — QR-kaarten van een shoot maken zonder venster

Gebruik:
  vantor-prep-cli cards INVOER --output BESTAND.pdf [--density large|compact]
  vantor-prep-cli qr INVOER --output MAP
  vantor-prep-cli convert INVOER --output BESTAND
  vantor-prep-cli list INVOER
  vantor-prep-cli parse [BESTAND]

Opdrachten:
  cards    drukt de QR-kaarten van een shoot af als PDF
  qr       bewaart per set een QR-code als PNG
  convert  zet .csv, .vantor en .json in elkaar om
  list     toont per set een regel: de naam, een tab en de items
  parse    leest de tekst van één kaart en toont de set als JSON

INVOER is een .vantor-, .json- of .csv-bestand, of - met --from csv of --from vantor
voor de standaardinvoer. Een shoot uit CSV heet naar zijn bestand, en de regels komen
er net als in het programma in omgekeerde volgorde uit: de nieuwste set eerst.

  --help     toont deze hulp, of die van een opdracht: vantor-prep-cli cards --help
  --version  toont de versie

Uitgangscode: 0 gelukt, 1 mislukt, 2 verkeerd gebruik.
)");

constexpr std::string_view kCardsHelp = toLookUp(
    R"(Gebruik: vantor-prep-cli cards INVOER --output BESTAND.pdf [--density large|compact]

Zet de QR-kaarten van alle sets van een shoot op A4-pagina's, klaar om te printen en te
snijden. Sets waarvan de tekst niet in een QR-code past krijgen een lege kaart; zij en
sets met een te fijne code (modules kleiner dan 0,33 mm) worden op de standaardfout
genoemd.

  --output BESTAND.pdf  waar de PDF komt
  --density large       4 kaarten per pagina (zonder deze optie ook)
  --density compact     9 kaarten per pagina
  --from csv|vantor     wat er op de standaardinvoer staat, als INVOER - is
  --help, --version

Regels uit een CSV-bestand komen in omgekeerde volgorde, net als in het programma: de
nieuwste set eerst.
)");

constexpr std::string_view kQrHelp = toLookUp(
    R"(Gebruik: vantor-prep-cli qr INVOER --output MAP

Bewaart van elke set van een shoot de QR-code als PNG van 600 bij 600 pixels. De
bestanden heten SET-nummer-merk.png; een / of een stuurteken in een naam wordt een -,
gelijke namen krijgen een volgnummer. Een map die er nog niet is wordt gemaakt.

  --output MAP       waar de bestanden komen
  --from csv|vantor  wat er op de standaardinvoer staat, als INVOER - is
  --help, --version

Regels uit een CSV-bestand komen in omgekeerde volgorde, net als in het programma: de
nieuwste set eerst.
)");

constexpr std::string_view kConvertHelp = toLookUp(
    R"(Gebruik: vantor-prep-cli convert INVOER --output BESTAND

Zet een shoot om, zoals importeren en exporteren in het programma: van .csv, .vantor of
.json naar .csv, .vantor of .json. De extensie van BESTAND bepaalt de vorm.

  --output BESTAND   waar de shoot komt
  --from csv|vantor  wat er op de standaardinvoer staat, als INVOER - is
  --help, --version

Een shoot uit CSV heet naar zijn bestand, en de regels komen er in omgekeerde volgorde
in, net als in het programma: de nieuwste set eerst.
)");

constexpr std::string_view kListHelp = toLookUp(
    R"(Gebruik: vantor-prep-cli list INVOER

Toont per set een regel: de naam van de set, een tab en de items.

  --from csv|vantor  wat er op de standaardinvoer staat, als INVOER - is
  --help, --version

Regels uit een CSV-bestand komen in omgekeerde volgorde, net als in het programma: de
nieuwste set eerst.
)");

constexpr std::string_view kParseHelp = toLookUp(
    R"(Gebruik: vantor-prep-cli parse [BESTAND]

Leest de tekst van één kaart, uit BESTAND of van de standaardinvoer, en toont de set als
JSON met de sleutels van het shootbestand. De uitgangscode is 1 als de tekst geen set
bevat.

  --help, --version
)");

// The command line taken apart: options by name, and what is left.
struct Words {
    std::map<std::string_view, std::string_view> options;
    std::vector<std::string_view> files;
};

// What one call takes.
struct Syntax {
    std::string_view about;
    std::vector<std::string_view> options;
};

// Takes the arguments behind the call's name apart; a text when they are not of the call's form.
std::variant<Words, std::string> takeApart(std::span<const std::string_view> arguments,
                                           const Syntax& syntax) {
    Words words;
    bool onlyFiles = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto word = arguments[i];
        if (onlyFiles || word == "-" || !word.starts_with("-")) {
            words.files.push_back(word);
            continue;
        }
        if (word == "--") {
            onlyFiles = true;
            continue;
        }
        const auto equals = word.find('=');
        const auto name = word.substr(0, equals);
        if (std::ranges::find(syntax.options, name) == syntax.options.end())
            return lookUp("onbekende optie ‘%1’", {name});
        if (words.options.contains(name))
            return lookUp("optie ‘%1’ staat er meer dan eens", {name});
        if (equals != std::string_view::npos)
            words.options[name] = word.substr(equals + 1);
        else if (i + 1 < arguments.size())
            words.options[name] = arguments[++i];
        else
            return lookUp("achter ‘%1’ ontbreekt een waarde", {name});
    }
    return words;
}

std::optional<Format> formatNamed(std::string_view name) {
    if (name == "csv")
        return Format::Csv;
    if (name == "vantor" || name == "json")
        return Format::ShootFile;
    return std::nullopt;
}

std::string noSuchFormat(std::string_view file) {
    return lookUp("‘%1’ is geen .vantor-, .json- of .csv-bestand", {file});
}

std::string tooManyFiles(std::string_view second) {
    return lookUp("te veel bestanden: ‘%1’", {second});
}

// Reads the arguments of one call that has an input; each step says what is wrong, and then the rest is moot.
class CallReader {
public:
    CallReader(std::string_view about, std::vector<std::string_view> options,
               std::span<const std::string_view> arguments)
        : m_about(about) {
        options.emplace_back("--from");
        auto apart = takeApart(arguments, {about, std::move(options)});
        if (auto* const words = std::get_if<Words>(&apart))
            m_words = std::move(*words);
        else
            m_problem = std::get<std::string>(std::move(apart));
    }

    Input input() {
        Input input;
        const auto from = option("--from");
        if (m_words.files.empty() || m_words.files.front().empty()) {
            complain(lookUp("INVOER ontbreekt"));
        } else if (m_words.files.size() > 1) {
            complain(tooManyFiles(m_words.files[1]));
        } else if (m_words.files.front() == "-") {
            const auto format = formatNamed(from.value_or(""));
            if (!format)
                complain(lookUp("bij INVOER - hoort --from csv of --from vantor"));
            input.format = format.value_or(Format::Csv);
        } else {
            input.path = fs::path(m_words.files.front());
            const auto format = from ? formatNamed(*from) : formatOf(*input.path);
            if (!format && from)
                complain(lookUp("--from kent alleen csv en vantor"));
            else if (!format)
                complain(noSuchFormat(m_words.files.front()));
            input.format = format.value_or(Format::Csv);
        }
        return input;
    }

    fs::path output() {
        const auto output = option("--output");
        if (!output || output->empty())
            complain(lookUp("--output ontbreekt"));
        return output.value_or("");
    }

    BulkQRDensity density() {
        const auto name = option("--density");
        const auto found = std::ranges::find_if(kAllDensities, [&](BulkQRDensity density) {
            return rawValue(density) == name.value_or("large");
        });
        if (found != kAllDensities.end())
            return *found;
        complain(lookUp("--density kent alleen large en compact"));
        return BulkQRDensity::large;
    }

    void complain(std::string problem) {
        if (m_problem.empty())
            m_problem = std::move(problem);
    }

    Call finished(Call call) {
        if (m_problem.empty())
            return call;
        return Misuse{std::move(m_problem), m_about};
    }

private:
    std::optional<std::string_view> option(std::string_view name) const {
        const auto found = m_words.options.find(name);
        return found == m_words.options.end() ? std::nullopt : std::optional(found->second);
    }

    std::string_view m_about;
    Words m_words;
    std::string m_problem;
};

Call readCards(std::span<const std::string_view> arguments) {
    CallReader reader("cards", {"--output", "--density"}, arguments);
    return reader.finished(CardsCall{reader.input(), reader.output(), reader.density()});
}

Call readQr(std::span<const std::string_view> arguments) {
    CallReader reader("qr", {"--output"}, arguments);
    return reader.finished(QrCall{reader.input(), reader.output()});
}

Call readConvert(std::span<const std::string_view> arguments) {
    CallReader reader("convert", {"--output"}, arguments);
    ConvertCall call{reader.input(), reader.output()};
    const auto format = formatOf(call.output);
    if (!format)
        reader.complain(noSuchFormat(call.output.string()));
    call.format = format.value_or(Format::Csv);
    return reader.finished(std::move(call));
}

Call readList(std::span<const std::string_view> arguments) {
    CallReader reader("list", {}, arguments);
    return reader.finished(ListCall{reader.input()});
}

Call readParse(std::span<const std::string_view> arguments) {
    auto apart = takeApart(arguments, {"parse", {}});
    if (auto* const problem = std::get_if<std::string>(&apart))
        return Misuse{std::move(*problem), "parse"};
    const auto& files = std::get<Words>(apart).files;
    if (files.size() > 1)
        return Misuse{tooManyFiles(files[1]), "parse"};
    if (files.empty() || files.front() == "-")
        return ParseCall{};
    if (files.front().empty())
        return Misuse{lookUp("de naam van BESTAND is leeg"), "parse"};
    return ParseCall{fs::path(files.front())};
}

struct CallForm {
    std::string_view name;
    std::string_view help;
    Call (*read)(std::span<const std::string_view> arguments);
};

constexpr std::array kCallForms{CallForm{"cards", kCardsHelp, readCards}, CallForm{"qr", kQrHelp, readQr},
                                CallForm{"convert", kConvertHelp, readConvert},
                                CallForm{"list", kListHelp, readList},
                                CallForm{"parse", kParseHelp, readParse}};

// Null where there is no such call.
const CallForm* callNamed(std::string_view name) {
    const auto found = std::ranges::find(kCallForms, name, &CallForm::name);
    return found == kCallForms.end() ? nullptr : &*found;
}

// Whether the option stands among the arguments, and not behind "--".
bool asksFor(std::span<const std::string_view> arguments, std::string_view option) {
    const auto end = std::ranges::find(arguments, "--");
    return std::find(arguments.begin(), end, option) != end;
}

} // namespace

std::optional<Format> formatOf(const std::filesystem::path& file) {
    const auto extension = lowerCased(file.extension().string());
    return formatNamed(extension.empty() ? std::string_view() : std::string_view(extension).substr(1));
}

std::string helpText(std::string_view about) {
    const auto* const form = callNamed(about);
    return lookUp(form != nullptr ? form->help : kProgramHelp);
}

Call readArguments(std::span<const std::string_view> arguments) {
    if (arguments.empty())
        return Misuse{lookUp("geen opdracht gegeven"), ""};
    const auto name = arguments.front();
    const auto* const form = callNamed(name);
    if (name == "--help" || name == "-h")
        return HelpCall{};
    if (name == "--version")
        return VersionCall{};
    if (form == nullptr)
        return Misuse{lookUp("onbekende opdracht ‘%1’", {name}), ""};
    if (asksFor(arguments, "--help") || asksFor(arguments, "-h"))
        return HelpCall{form->name};
    if (asksFor(arguments, "--version"))
        return VersionCall{};
    return form->read(arguments.subspan(1));
}

} // namespace vantor::cli
