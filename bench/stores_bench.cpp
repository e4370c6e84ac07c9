#include "base/text.h"
#include "model/shoot_json.h"
#include "platform/posix/posix_file_store.h"
#include "store/product_catalog.h"
#include "store/restore_point_file.h"
#include "store/shoot_manager.h"
#include "store/store_folder.h"
#include "view/set_filter.h"

#include <fcntl.h>
#include <malloc.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "bench/benches.h"
#include "bench/comparison.h"
#include "bench/sample_data.h"
#include "edit/restore_edits.h"

namespace vantor::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSets = 10000;

// What one would write for exactly these records with the JSON library alone: events into structs.
struct EventsIntoShoots : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, EventsIntoShoots> {
    std::vector<Shoot> shoots;
    int depth = 0;
    std::string key;

    bool Default() { return true; }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        key.assign(text, length);
        return true;
    }
    // Arrays and objects alternate: [ { sets:[ { items:[ {.
    bool StartArray() { return ++depth > 0; }
    bool EndArray(rapidjson::SizeType) { return --depth >= 0; }
    bool StartObject() {
        ++depth;
        if (depth == 2)
            shoots.emplace_back();
        else if (depth == 4)
            shoots.back().sets.emplace_back();
        else if (depth == 6)
            shoots.back().sets.back().items.emplace_back();
        return true;
    }
    bool EndObject(rapidjson::SizeType) { return --depth >= 0; }
    bool Int(int value) { return Double(value); }
    bool Uint(unsigned value) { return Double(value); }
    bool Double(double value) {
        if (key == "timestamp")
            shoots.back().sets.back().timestamp.secondsSinceReference = value;
        else if (key == "taggedCount")
            shoots.back().sets.back().taggedCount = static_cast<std::int64_t>(value);
        else if (key == "date")
            shoots.back().date.secondsSinceReference = value;
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        const std::string_view value(text, length);
        if (depth == 6)
            return take(shoots.back().sets.back().items.back(), value);
        if (depth == 4)
            return take(shoots.back().sets.back(), value);
        return take(shoots.back(), value);
    }
    bool take(SetItem& item, std::string_view value) {
        if (key == "id")
            item.id = Uuid::parse(value).value_or(Uuid());
        else if (key == "name")
            item.name = value;
        else if (key == "color")
            item.color = value;
        return true;
    }
    bool take(SetData& set, std::string_view value) {
        if (key == "id")
            set.id = Uuid::parse(value).value_or(Uuid());
        else if (key == "setNumber")
            set.setNumber = value;
        else if (key == "brand")
            set.brand = value;
        else if (key == "model")
            set.model = value;
        else if (key == "location")
            set.location = value;
        else if (key == "email")
            set.email = value;
        return true;
    }
    bool take(Shoot& shoot, std::string_view value) {
        if (key == "id")
            shoot.id = Uuid::parse(value).value_or(Uuid());
        else if (key == "name")
            shoot.name = value;
        else if (key == "location")
            shoot.location = value;
        else if (key == "client")
            shoot.client = value;
        return true;
    }
};

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void member(Writer& out, std::string_view key, std::string_view value) {
    out.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    out.String(value.empty() ? "" : value.data(), static_cast<rapidjson::SizeType>(value.size()));
}

void writeAlone(Writer& out, const std::vector<Shoot>& shoots) {
    out.StartArray();
    for (const auto& shoot : shoots) {
        out.StartObject();
        out.Key("activationLog");
        out.StartArray();
        out.EndArray();
        member(out, "client", shoot.client);
        out.Key("date");
        out.Double(shoot.date.secondsSinceReference);
        member(out, "id", shoot.id.text());
        member(out, "location", shoot.location);
        member(out, "name", shoot.name);
        out.Key("sets");
        out.StartArray();
        for (const auto& set : shoot.sets) {
            out.StartObject();
            member(out, "brand", set.brand);
            member(out, "email", set.email);
            member(out, "id", set.id.text());
            out.Key("items");
            out.StartArray();
            for (const auto& item : set.items) {
                out.StartObject();
                member(out, "color", item.color);
                member(out, "id", item.id.text());
                member(out, "name", item.name);
                out.EndObject();
            }
            out.EndArray();
            member(out, "location", set.location);
            member(out, "model", set.model);
            member(out, "setNumber", set.setNumber);
            out.Key("taggedCount");
            out.Int64(set.taggedCount);
            out.Key("timestamp");
            out.Double(set.timestamp.secondsSinceReference);
            out.EndObject();
        }
        out.EndArray();
        out.EndObject();
    }
    out.EndArray();
}

std::string serialised(const std::vector<Shoot>& shoots) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, shoots, DateForm::SecondsSinceReference);
    return std::string(out.written());
}

fs::path scratchFolder() {
    static const auto folder = [] {
        auto path = fs::temp_directory_path() / ("vantor-bench-" + std::to_string(::getpid()));
        fs::create_directories(path);
        return path;
    }();
    return folder;
}

// Writing, syncing and renaming, without a look at what could go wrong.
void writeSyncRename(const std::string& bytes) {
    const auto temporary = scratchFolder() / "plain.tmp";
    const auto target = scratchFolder() / "plain.json";
    const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (::write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        std::perror("write");
    ::fsync(file);
    ::close(file);
    ::rename(temporary.c_str(), target.c_str());
    const int folder = ::open(scratchFolder().c_str(), O_RDONLY | O_DIRECTORY);
    ::fsync(folder);
    ::close(folder);
}

class NoTimer final : public Timer {
public:
    void startRepeating(std::chrono::milliseconds, std::function<void()>) override {}
    void startOnce(std::chrono::milliseconds, std::function<void()>) override {}
    void stop() override {}
};

const PosixFileStore& disk() {
    static const PosixFileStore files;
    return files;
}

// Shoots in a document, which lives in a file of its own, or in none.
struct Kept {
    Document document;
    ShootManager shoots{document};

    Kept(const std::vector<Shoot>& all, StoreFile* file) : document(file) {
        document.perform(restoreAll(document.library(), {all, std::nullopt}, {}));
        shoots.setActiveShootId(all.front().id);
    }
};

std::unique_ptr<Kept> keptIn(const std::string& name, const std::vector<Shoot>& shoots) {
    static std::map<std::string, StoreFile> storeFiles;
    return std::make_unique<Kept>(
        shoots, &storeFiles.try_emplace(name, disk(), scratchFolder() / name).first->second);
}

// Replaces one set of the first shoot by one that differs.
void changeOne(ShootManager& shoots, std::size_t number) {
    const auto& sets = shoots.shoots().front().sets;
    auto set = sets[number % sets.size()];
    set.location += '.';
    shoots.updateSet(set.id, set);
}

void enlistJson() {
    static const auto shoots = sampleShoots(kSets);
    static const auto json = serialised(shoots);
    compare(
        {"load 10,000 sets with 50,000 items", "RapidJSON alone into the same structs", 1.3},
        [] { keep(readShoots(json, DateForm::SecondsSinceReference)); },
        [] {
            static constexpr unsigned kFlags = rapidjson::kParseFullPrecisionFlag |
                                               rapidjson::kParseValidateEncodingFlag |
                                               rapidjson::kParseIterativeFlag;
            EventsIntoShoots handler;
            rapidjson::Reader reader;
            rapidjson::StringStream stream(json.c_str());
            reader.Parse<kFlags>(stream, handler);
            keep(handler.shoots);
        });
    compare(
        {"serialise 10,000 sets with 50,000 items", "RapidJSON alone out of the same structs", 1.3},
        [] {
            JsonWriter out(JsonWriter::Layout::Compact);
            writeShoots(out, shoots, DateForm::SecondsSinceReference);
            keep(out.written());
        },
        [] {
            rapidjson::StringBuffer buffer;
            Writer out(buffer);
            writeAlone(out, shoots);
            keep(buffer.GetString());
        });
    static const auto kept = keptIn("save.json", shoots);
    compare(
        {"save 10,000 sets, whole and durably", "serialising, writing, syncing, renaming", 1.3, Uses::Disk},
        [] { kept->document.saveShoots(); }, [] { writeSyncRename(serialised(shoots)); });
}

void enlistImports() {
    static const auto shoots = sampleShoots(kSets);
    static const auto csv = sampleSetCsv(kSets);
    static std::unique_ptr<Kept> fresh;
    static const auto before = keptIn("before.json", shoots);
    static const auto result = [] {
        auto kept = keptIn("imported.json", shoots);
        kept->shoots.importCSV(csv, shoots.front().id);
        return kept;
    }();
    compare(
        {"import 10,000 CSV lines into 10,000 sets", "one save of the result", 3, Uses::Disk},
        [] { fresh = keptIn("import.json", shoots); },
        [] { fresh->shoots.importCSV(csv, shoots.front().id); }, [] { result->document.saveShoots(); });
    compare(
        {"undo of an import of 10,000 lines", "one save of what was before", 1.5, Uses::Disk},
        [] {
            fresh = keptIn("import.json", shoots);
            fresh->shoots.importCSV(csv, shoots.front().id);
        },
        [] { fresh->document.undo(); }, [] { before->document.saveShoots(); });

    static const auto catalogCsv = sampleCatalogCsv(20000);
    static const auto smallCatalogCsv = sampleCatalogCsv(5000);
    static const auto names = [] {
        Document document;
        ProductCatalog catalog(document);
        catalog.importCSV(catalogCsv, "");
        std::vector<std::string> all;
        for (const auto& product : catalog.products())
            all.push_back(product.name);
        // Back into an order that has nothing to do with the alphabet.
        std::ranges::sort(all, {}, [](const auto& name) { return std::hash<std::string>{}(name); });
        return all;
    }();
    const auto import = [](const std::string& text) {
        Document document;
        ProductCatalog catalog(document);
        keep(catalog.importCSV(text, ""));
    };
    compare(
        {"catalogue import of 20,000 products", "sorting their names once", 10}, [=] { import(catalogCsv); },
        [] {
            std::vector<std::string> keys;
            keys.reserve(names.size());
            std::ranges::transform(names, std::back_inserter(keys), collationKey);
            std::ranges::sort(keys);
            keep(keys);
        });
    const double nLogN = 20000 * std::log(20000) / (5000 * std::log(5000));
    compare(
        {"catalogue import of 20,000 products again", "the same of 5,000", nLogN * 1.2},
        [=] { import(catalogCsv); }, [=] { import(smallCatalogCsv); });
}

void enlistSearch() {
    static const auto sets = sampleSets(kSets, 5);
    compare(
        {"search of 10,000 sets", "case folding of the same texts once", 1.5},
        [] { keep(filteredSets(sets, "niet te vinden")); },
        [] {
            for (const auto& set : sets) {
                keep(caseFolded(set.brand));
                keep(caseFolded(set.model));
                keep(caseFolded(set.setNumber));
                for (const auto& item : set.items)
                    keep(caseFolded(item.name));
            }
        });
}

void enlistScans() {
    static const auto shoots = sampleShoots(kSets);
    static const auto kept = keptIn("scan.json", shoots);
    static const auto known = shoots.front().sets.back().toQRText();
    static std::size_t unknown = 0;
    compare(
        {"scan of a known card among 10,000 sets", "one save of the store", 1.2, Uses::Disk},
        [] { kept->shoots.handleScanInput(known); }, [] { kept->document.saveShoots(); });
    compare(
        {"scan of an unknown card among 10,000 sets", "one save of the store", 1.2, Uses::Disk},
        [] { kept->shoots.handleScanInput("SET:nieuw" + std::to_string(++unknown)); },
        [] { kept->document.saveShoots(); });
}

void enlistChanges() {
    static const auto shoots = sampleShoots(kSets);
    static const auto kept = keptIn("change.json", shoots);
    static std::size_t changes = 0;
    compare(
        {"change of one set among 10,000", "one save of the store", 1.1, Uses::Disk},
        [] { changeOne(kept->shoots, ++changes); }, [] { kept->document.saveShoots(); });

    constexpr std::size_t kEdits = 200;
    Kept unsaved(shoots, nullptr);
    const auto before = ::mallinfo2().uordblks;
    for (std::size_t i = 0; i < kEdits; ++i)
        changeOne(unsaved.shoots, i * (kSets / kEdits));
    constexpr double kMiB = 1024.0 * 1024.0;
    note("memory of 200 changes of single sets among 10,000 that can be taken back",
         static_cast<double>(::mallinfo2().uordblks - before) / kMiB, "MiB", 4);
}

// Starts in that folder, up to when everything is loaded.
void start(const fs::path& path) {
    NoTimer timer;
    StoreFolder folder(
        disk(), path, Timestamp::now, [](const std::function<void()>&) {}, timer);
    Document document(&folder.shoots(), &folder.catalog(), Timestamp::now, &folder.points());
    document.loadOnce();
    keep(document.library().shoots);
}

void enlistStart() {
    constexpr int kPoints = 50;
    static const auto without = scratchFolder() / "without";
    static const auto with = scratchFolder() / "with";
    const auto shoots = serialised(sampleShoots(kSets));
    for (const auto& folder : {without, with}) {
        fs::create_directories(folder / kPointFolder);
        disk().replace(folder / "shoots.json", shoots);
    }
    const auto at = Timestamp::now();
    const auto point = with / kPointFolder / (compactTime(at) + ".jsonl");
    disk().replace(point, writePoint({at, {}, 1, kSets, {}}, shoots, "{}"));
    for (int i = 1; i < kPoints; ++i)
        fs::create_hard_link(point,
                             with / kPointFolder / (compactTime({at.secondsSinceReference - i}) + ".jsonl"));
    compare(
        {"start with 10,000 sets and 50 restore points", "the same without", 1.05}, [] { start(with); },
        [] { start(without); });
}

} // namespace

void enlistStores() {
    enlistJson();
    enlistImports();
    enlistSearch();
    enlistScans();
    enlistChanges();
    enlistStart();
}

} // namespace vantor::bench
