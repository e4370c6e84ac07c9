// Loads and saves the stores as the application does, for the attacks beside it to interrupt.
//
//   store_driver [--most-per-write BYTES] COMMAND
//     fill FOLDER RECORDS     makes both stores, of so many sets and products
//     run FOLDER              keeps restore points, changes and saves both for ever; tells before and after each change
//                             which it is
//     save FOLDER             loads both, makes one change in each, saves
//     save-shoots FOLDER      the same of one of them
//     save-catalog FOLDER
//     insist FOLDER           the same of both; what was not saved is told, and tried again after a line of input
//     intruded FOLDER         the same of both, whose files others replace by "other shoots.json" and the like once they
//                             are loaded
//     check FOLDER            starts anew, and tells what it found
//     replace FILE SIZE       replaces a file by so many bytes
//
// Ends with 0 when the stores, or the replacement, say that all is saved, with 1 when they say that it is not, and with
// 2 when asked for anything else.
// getppid() marks where the work begins, since nothing else calls it.

#include "base/checksum.h"
#include "platform/posix/posix_file_store.h"
#include "store/restore_point_file.h"
#include "store/store_folder.h"
#include "store/versions.h"
#include "tests/faults/counted_stores.h"
#include "tests/support/manual_timer.h"

#include <unistd.h>

#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <functional>
#include <iostream>
#include <limits>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

namespace {

// A file system may take less than it is given at any time, and then go on.
std::size_t mostPerWrite = std::numeric_limits<std::size_t>::max();

} // namespace

extern "C" {
ssize_t __real_write(int descriptor, const void* bytes, std::size_t count);
ssize_t __wrap_write(int descriptor, const void* bytes, std::size_t count) {
    return __real_write(descriptor, bytes, std::min(count, mostPerWrite));
}
}

namespace vantor::faults {
namespace {

namespace fs = std::filesystem;

void atOnce(const std::function<void()>& work) {
    work();
}

// A thread of its own, as the application has one.
class Background {
public:
    void add(std::function<void()> work) {
        const std::lock_guard lock(m_mutex);
        m_work.push_back(std::move(work));
        m_more.notify_one();
    }

private:
    [[noreturn]] void run() {
        while (true) {
            std::unique_lock lock(m_mutex);
            m_more.wait(lock, [this] { return !m_work.empty(); });
            const auto work = std::move(m_work.front());
            m_work.pop_front();
            lock.unlock();
            work();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_more;
    std::deque<std::function<void()>> m_work;
    std::thread m_thread{[this] { run(); }};
};

struct Stores {
    PosixFileStore files;
    testing::ManualTimer timer;
    StoreFolder folder;
    Document document{&folder.shoots(), &folder.catalog(), Timestamp::now, &folder.points()};
    ShootManager shoots{document};
    ProductCatalog catalog{document};

    explicit Stores(const fs::path& path, RestorePoints::Background background = atOnce)
        : folder(files, path, Timestamp::now, std::move(background), timer) {}

    void load() {
        shoots.load();
        catalog.load();
    }
    void change();
    // The exit status of the driver.
    [[nodiscard]] int status() const { return folder.unsaved() ? 1 : 0; }
};

// In one call, so that whoever reads along finds whole lines.
void tell(std::string_view what, int state) {
    const auto line = std::string(what) + " " + std::to_string(state) + "\n";
    if (__real_write(STDOUT_FILENO, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        std::exit(1);
}

template <typename Store>
int nextChange(const Store& store) {
    return stateOf(store).value_or(0) + 1;
}

[[noreturn]] void run(const fs::path& path) {
    static Background background;
    static Stores stores(path, [](std::function<void()> work) { background.add(std::move(work)); });
    stores.load();
    int shootState = nextChange(stores.shoots);
    int catalogState = nextChange(stores.catalog);
    while (true) {
        stores.folder.points().keep(stores.document.library(), {});
        tell("shoots begin", shootState);
        change(stores.shoots, shootState);
        tell("shoots done", shootState++);
        tell("catalog begin", catalogState);
        change(stores.catalog, catalogState);
        tell("catalog done", catalogState++);
    }
}

void Stores::change() {
    faults::change(shoots, nextChange(shoots));
    faults::change(catalog, nextChange(catalog));
}

int save(const fs::path& path, bool withShoots, bool withCatalog) {
    Stores stores(path);
    stores.load();
    if (withShoots)
        change(stores.shoots, nextChange(stores.shoots));
    if (withCatalog)
        change(stores.catalog, nextChange(stores.catalog));
    return stores.status();
}

int insist(const fs::path& path) {
    Stores stores(path);
    stores.load();
    stores.change();
    if (stores.status() != 0) {
        tell("unsaved", stores.status());
        std::cin.get();
        stores.timer.fire();
    }
    return stores.status();
}

int intruded(const fs::path& path) {
    Stores stores(path);
    stores.load();
    for (const auto* const name : {"shoots.json", "catalog.json"}) {
        std::error_code error;
        fs::rename(path / (std::string("other ") + name), path / name, error);
    }
    stores.change();
    return stores.status();
}

template <typename Store>
std::string described(const Store& store, const fs::path& file) {
    if (const auto state = stateOf(store))
        return std::to_string(*state);
    return fs::exists(file) ? "torn" : "missing";
}

std::pair<int, int> unfinishedAndAside(const fs::path& path) {
    std::pair<int, int> counts;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        const auto name = entry.path().filename().string();
        counts.first += name.starts_with(PosixFileStore::kTemporaryPrefix) ? 1 : 0;
        counts.second += name.find(".unreadable-") != std::string::npos ? 1 : 0;
    }
    return counts;
}

// How many restore points do not hold what they were made of.
int tornPoints(const FileStore& files, const fs::path& folder) {
    int torn = 0;
    for (const auto& version : versionsIn(files, folder)) {
        if (version.point.empty())
            continue;
        const auto bytes = files.read(version.point).bytes.value_or("");
        const auto head = readPointHead(bytes);
        const auto lines = linesOfPoint(bytes);
        const bool isWhole =
            head && lines &&
            checksumOf(std::string(lines->shoots) + '\n' + std::string(lines->catalog)) == head->checksum;
        torn += isWhole ? 0 : 1;
    }
    return torn;
}

int check(const fs::path& path) {
    const auto before = unfinishedAndAside(path);
    Stores stores(path, [](const std::function<void()>&) {});
    stores.load();
    const auto after = unfinishedAndAside(path);
    std::cout << described(stores.shoots, path / "shoots.json") << ' '
              << described(stores.catalog, path / "catalog.json") << ' ' << before.first << ' ' << after.first
              << ' ' << after.second << ' ' << tornPoints(stores.files, path) << '\n';
    return 0;
}

int make(const fs::path& path, int records) {
    Stores stores(path, [](const std::function<void()>&) {});
    fill(stores.document, records);
    return stores.status();
}

int replace(const fs::path& file, int size) {
    std::string bytes(static_cast<std::size_t>(size), '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>('a' + i % 251 % 26);
    return PosixFileStore().replace(file, bytes) ? 0 : 1;
}

int start(std::span<char*> arguments) {
    std::vector<std::string> words(arguments.begin() + 1, arguments.end());
    if (words.size() > 2 && words[0] == "--most-per-write") {
        mostPerWrite = static_cast<std::size_t>(number(words[1]).value());
        words.erase(words.begin(), words.begin() + 2);
    }
    const std::map<std::string, std::function<int(const fs::path&)>> commands{
        {"run", [](const fs::path& path) -> int { run(path); }},
        {"save", [](const fs::path& path) { return save(path, true, true); }},
        {"save-shoots", [](const fs::path& path) { return save(path, true, false); }},
        {"save-catalog", [](const fs::path& path) { return save(path, false, true); }},
        {"insist", insist},
        {"intruded", intruded},
        {"check", check},
    };
    ::getppid();
    if (words.size() == 2 && commands.contains(words[0]))
        return commands.at(words[0])(words[1]);
    if (words.size() == 3 && words[0] == "fill")
        return make(words[1], number(words[2]).value());
    if (words.size() == 3 && words[0] == "replace")
        return replace(words[1], number(words[2]).value());
    std::cerr << "store_driver: what is it to do?\n";
    return 2;
}

} // namespace
} // namespace vantor::faults

int main(int argc, char** argv) {
    return vantor::faults::start({argv, static_cast<std::size_t>(argc)});
}
