#include "cli/commands.h"

#include "base/file_name.h"
#include "base/text.h"
#include "base/text_lookup.h"
#include "cli/input.h"
#include "formats/set_csv.h"
#include "formats/shoot_file.h"
#include "output/bulk_qr_pdf_exporter.h"
#include "output/qr_generator.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <new>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vantor::cli {
namespace {

namespace fs = std::filesystem;

constexpr int kPngEdge = 600;

// Shows progress once the work has taken a while, and then a few times a second.
class ProgressMeter {
public:
    // `dutch` has "%1" for what is done and "%2" for all.
    ProgressMeter(Console& console, std::size_t all, std::string_view dutch)
        : m_console(console),
          m_all(all),
          m_dutch(dutch) {}
    ProgressMeter(const ProgressMeter&) = delete;
    ProgressMeter& operator=(const ProgressMeter&) = delete;
    ~ProgressMeter() { m_console.endProgress(); }

    void advance(std::size_t done) {
        const auto now = std::chrono::steady_clock::now();
        if (now < m_next)
            return;
        m_next = now + std::chrono::milliseconds(200);
        m_console.showProgress(lookUp(m_dutch, {std::to_string(done), std::to_string(m_all)}));
    }

private:
    Console& m_console;
    std::size_t m_all;
    std::string_view m_dutch;
    std::chrono::steady_clock::time_point m_next =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
};

class Runner {
public:
    Runner(const Services& services, Console& console) : m_services(services), m_console(console) {}

    int operator()(const CardsCall& call) const {
        const auto shoot = read(call.input);
        if (!shoot)
            return kFailed;
        if (shoot->sets.empty())
            return failure(lookUp("%1: geen sets gevonden", {nameOf(call.input.path)}));
        const BulkQRPDFExporter exporter(m_services.encoder, m_services.canvases, m_services.files);
        ProgressMeter meter(m_console, shoot->sets.size(), toLookUp("%1 van %2 kaarten"));
        const auto written = exporter.exportTo(
            shoot->sets, call.density, call.output,
            [&](std::size_t drawn) {
                meter.advance(drawn);
                return true;
            },
            [this](const SetData& set, std::optional<double> edge) { warnOfPoorCode(set, edge); });
        return written ? kDone : cannotWrite(call.output);
    }

    int operator()(const QrCall& call) const {
        const auto shoot = read(call.input);
        if (!shoot)
            return kFailed;
        if (!m_services.files.createFolders(call.folder))
            return failure(lookUp("%1: map kan niet gemaakt worden", {call.folder.string()}));
        const QRGenerator generator(m_services.encoder);
        TakenNames taken;
        ProgressMeter meter(m_console, shoot->sets.size(), toLookUp("%1 van %2 codes"));
        std::size_t done = 0;
        for (const auto& set : shoot->sets) {
            meter.advance(done++);
            const auto picture = generator.generate(set.toQRText(), kPngEdge);
            if (!picture) {
                warnOf(set, lookUp("de tekst past niet in een QR-code; overgeslagen"));
                continue;
            }
            const auto bytes = m_services.pngs.encode(*picture);
            const auto path = call.folder / freeName(set, taken);
            if (!bytes || !m_services.files.replace(path, *bytes))
                return cannotWrite(path);
        }
        return kDone;
    }

    int operator()(const ConvertCall& call) const {
        const auto shoot = read(call.input);
        if (!shoot)
            return kFailed;
        const auto text = call.format == Format::Csv ? writeSetCSV(*shoot) : writeShootFile(*shoot);
        return m_services.files.replace(call.output, text) ? kDone : cannotWrite(call.output);
    }

    int operator()(const ListCall& call) const {
        const auto shoot = read(call.input);
        if (!shoot)
            return kFailed;
        std::string text;
        for (const auto& set : shoot->sets)
            text += onOneCell(set.headline()) + '\t' + onOneCell(set.description()) + '\n';
        return show(text);
    }

    int operator()(const ParseCall& call) const {
        auto outcome = readTextFrom(call.path, m_services.files);
        if (const auto* const problem = std::get_if<Problem>(&outcome))
            return failure(problem->text);
        const auto set =
            SetData::parse(withoutByteOrderMark(std::get<std::string>(outcome)), Timestamp::now());
        if (!set) {
            return failure(lookUp("%1: geen set gevonden; een kaart heeft een regel SET: of BRAND:",
                                  {nameOf(call.path)}));
        }
        m_console.printJson(writeSetObject(*set) + "\n");
        return flushed();
    }

    int operator()(const HelpCall& call) const { return show(helpText(call.about)); }

    int operator()(const VersionCall&) const { return show("vantor-prep-cli " VANTOR_VERSION "\n"); }

    int operator()(const Misuse& misuse) const {
        const auto call = misuse.about.empty() ? std::string() : " " + std::string(misuse.about);
        m_console.complain(lookUp("%1 (hulp: vantor-prep-cli%2 --help)", {misuse.problem, call}));
        return kMisused;
    }

private:
    static std::string onOneCell(std::string_view text) {
        auto out = onOneLine(text);
        std::ranges::replace(out, '\t', ' ');
        return out;
    }

    // Names given out, ignoring case, and for each proposed one the last number that it was given.
    struct TakenNames {
        std::unordered_set<std::string> names;
        std::unordered_map<std::string, int> numbers;
    };

    // The name that the program proposes, as a file name of its own. Nobody looks at it before the file is there, so that
    // it holds nothing which could mislead or drive a terminal.
    static std::string freeName(const SetData& set, TakenNames& taken) {
        auto shown = characters("SET-" + set.setNumber + "-" + set.brand);
        std::ranges::replace_if(shown, isControl, U'-');
        const auto named = [text = utf8(shown)](const std::string& ending) {
            return fileNamePart(text, ending.size()) + ending;
        };
        auto free = named(".png");
        auto& number = taken.numbers[caseFolded(free)];
        if (++number > 1)
            free = named("-" + std::to_string(number) + ".png");
        while (!taken.names.insert(caseFolded(free)).second)
            free = named("-" + std::to_string(++number) + ".png");
        return free;
    }

    std::optional<Shoot> read(const Input& input) const {
        auto outcome = readShootFrom(input, m_services.files);
        if (auto* const shoot = std::get_if<Shoot>(&outcome))
            return std::move(*shoot);
        m_console.complain(std::get<Problem>(outcome).text);
        return std::nullopt;
    }

    void warnOf(const SetData& set, std::string_view what) const {
        const auto name = onOneCell(set.headline());
        m_console.complain((name.empty() ? lookUp("set zonder nummer en merk") : name) + ": " +
                           std::string(what));
    }

    void warnOfPoorCode(const SetData& set, std::optional<double> moduleEdge) const {
        if (!moduleEdge)
            warnOf(set, lookUp("de tekst past niet in een QR-code; de kaart blijft leeg"));
        else if (*moduleEdge < kSmallestModule)
            warnOf(set, lookUp("de QR-code is fijn: modules kleiner dan 0,33 mm op deze kaart"));
    }

    int failure(std::string_view reason) const {
        m_console.complain(reason);
        return kFailed;
    }

    int cannotWrite(const fs::path& path) const {
        return failure(lookUp("%1: kan niet geschreven worden", {path.string()}));
    }

    int show(std::string_view text) const {
        m_console.print(text);
        return flushed();
    }

    int flushed() const {
        return m_console.flush() ? kDone : failure(lookUp("standaarduitvoer: kan niet geschreven worden"));
    }

    const Services& m_services;
    Console& m_console;
};

// What a call works on is what there is too little memory for.
struct InputName {
    std::string operator()(const ParseCall& call) const { return nameOf(call.path); }
    template <typename Other>
    std::string operator()(const Other& call) const {
        if constexpr (requires { call.input; })
            return nameOf(call.input.path);
        else
            return "vantor-prep-cli";
    }
};

} // namespace

int run(const Call& call, const Services& services, Console& console) {
    try {
        return std::visit(Runner(services, console), call);
    } catch (const std::bad_alloc&) {
        console.complain(lookUp("%1: te weinig geheugen", {std::visit(InputName(), call)}));
        return kFailed;
    }
}

} // namespace vantor::cli
