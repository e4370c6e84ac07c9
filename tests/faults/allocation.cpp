// Fails every request for memory while both stores are loaded, changed and saved, each in a process of its own, once
// and from then on.
//
// Whatever becomes of the process, each file holds its old content or its new one. A process that can go on after a
// save that failed saves again, and has to have lost nothing.

#include "base/checksum.h"
#include "platform/posix/posix_file_store.h"
#include "store/restore_point_file.h"
#include "store/store_folder.h"
#include "tests/faults/counted_stores.h"
#include "tests/support/manual_timer.h"
#include "tests/support/wrapped_allocation.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace {

// How many requests there were, and which of them fail. Nothing fails as long as nothing is to.
std::size_t requests = 0;
std::size_t firstToFail = 0;
bool failsOnwards = false;

bool fails() {
    ++requests;
    return firstToFail != 0 && (failsOnwards ? requests >= firstToFail : requests == firstToFail);
}

} // namespace

namespace vantor::testing {

bool isGranted() {
    return !fails();
}
void obtained(std::size_t) {}
void returned(std::size_t) {}

} // namespace vantor::testing

namespace vantor::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kRecords = 12;

enum Ending { Done = 0, ThrewWhileLoading = 3, ThrewWhileSaving = 4 };

std::string bytesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::map<fs::path, std::string> filesIn(const fs::path& folder) {
    std::map<fs::path, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder)] = bytesOf(entry.path());
    }
    return files;
}

// What the process does that is to be short of memory.
int startAndSave(const fs::path& folder) {
    const PosixFileStore files;
    const auto atOnce = [](const std::function<void()>& work) { work(); };
    const auto clock = [] { return Timestamp{795173400}; };
    testing::ManualTimer timer;
    std::optional<StoreFolder> stores;
    std::optional<Document> document;
    try {
        stores.emplace(files, folder, clock, atOnce, timer);
        document.emplace(&stores->shoots(), &stores->catalog(), clock, &stores->points());
        document->loadOnce();
    } catch (const std::bad_alloc&) {
        return ThrewWhileLoading;
    }
    try {
        ShootManager shoots(*document);
        ProductCatalog catalog(*document);
        change(shoots, 1);
        change(catalog, 1);
        return Done;
    } catch (const std::bad_alloc&) {
        firstToFail = 0;
        document->saveShoots();
        document->saveCatalog();
        return ThrewWhileSaving;
    }
}

class Attack {
public:
    explicit Attack(fs::path folder) : m_folder(std::move(folder)) {
        const PosixFileStore files;
        testing::ManualTimer timer;
        StoreFolder stores(
            files, m_folder, Timestamp::now, [](const std::function<void()>&) {}, timer);
        Document document(&stores.shoots(), &stores.catalog());
        fill(document, kRecords);
        m_old = filesIn(m_folder);
    }

    // How many requests there are when none fails.
    std::size_t count() {
        // The child tells through memory that both have.
        auto* const told = static_cast<std::size_t*>(
            ::mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
        const int status = inAProcess([&] {
            requests = 0;
            const int ending = startAndSave(m_folder);
            *told = requests;
            return ending;
        });
        const auto all = *told;
        ::munmap(told, sizeof(std::size_t));
        m_new = filesIn(m_folder);
        const bool works = WIFEXITED(status) && WEXITSTATUS(status) == Done &&
                           m_new["shoots.json"] != m_old["shoots.json"] &&
                           m_new["catalog.json"] != m_old["catalog.json"];
        return works ? all : 0;
    }

    void fail(std::size_t request, bool onwards) {
        restore();
        const int status = inAProcess([&] {
            requests = 0;
            firstToFail = request;
            failsOnwards = onwards;
            return startAndSave(m_folder);
        });
        const std::string what = "request " + std::to_string(request) + (onwards ? " and all behind it" : "");
        ++m_endings[ending(status)];
        for (const auto& [name, bytes] : filesIn(m_folder)) {
            if (name.filename().string().starts_with(PosixFileStore::kTemporaryPrefix))
                ++m_unfinished;
            else if (name.extension() == ".checksum")
                checkChecksum(m_folder / name, bytes, what);
            else if (!m_old.contains(name) && !m_new.contains(name))
                breach(what + ": " + name.string() + " appeared");
            else if (bytes != m_new[name] && (!m_old.contains(name) || bytes != m_old[name]))
                breach(what + ": " + name.string() + " is torn");
            else if (WIFEXITED(status) && WEXITSTATUS(status) == Done && bytes != m_new[name])
                ++m_silent;
        }
        for (const auto* const name : {"shoots.json", "catalog.json"}) {
            if (!fs::exists(m_folder / name))
                breach(what + ": " + name + " is gone");
        }
        PosixFileStore().removeLeftovers(m_folder);
        PosixFileStore().removeLeftovers(m_folder / kPointFolder);
        for (const auto& [name, bytes] : filesIn(m_folder)) {
            if (name.filename().string().starts_with(PosixFileStore::kTemporaryPrefix))
                breach(what + ": " + name.string() + " left after the next start");
        }
    }

    int conclude(std::size_t tried, std::size_t all) const {
        std::cout << "allocation: " << tried << " times short of memory at " << all << " requests:";
        for (const auto& [how, count] : m_endings)
            std::cout << ' ' << count << ' ' << how << ',';
        std::cout << ' ' << m_unfinished << " unfinished files until the next start, " << m_silent
                  << " old contents kept in silence, " << m_breaches << " breaches\n";
        return m_breaches == 0 && tried > 0 ? 0 : 1;
    }

private:
    template <typename Work>
    static int inAProcess(Work work) {
        std::cout.flush();
        const auto child = ::fork();
        if (child == 0) {
            // What a dying process says of itself is no finding.
            if (std::freopen("/dev/null", "w", stderr) == nullptr)
                ::_exit(99);
            ::_exit(work());
        }
        int status = 0;
        if (child < 0 || ::waitpid(child, &status, 0) != child)
            std::abort();
        return status;
    }

    static std::string ending(int status) {
        if (WIFSIGNALED(status))
            return "killed by signal " + std::to_string(WTERMSIG(status));
        switch (WEXITSTATUS(status)) {
        case Done:
            return "unnoticed";
        case ThrewWhileLoading:
            return "thrown out of loading";
        case ThrewWhileSaving:
            return "thrown out of saving and saved later";
        default:
            return "ended with " + std::to_string(WEXITSTATUS(status));
        }
    }

    void restore() const {
        for (const auto& entry : fs::directory_iterator(m_folder))
            fs::remove_all(entry);
        for (const auto& [name, bytes] : m_old)
            std::ofstream(m_folder / name, std::ios::binary) << bytes;
    }

    // It may be gone, but not blame somebody for what stands in its store.
    void checkChecksum(fs::path name, const std::string& bytes, const std::string& what) {
        const auto store = bytesOf(name.replace_extension());
        if (bytes.find(checksumOf(store) + '\n') == std::string::npos)
            breach(what + ": the checksum is not of " + name.string());
    }

    void breach(const std::string& what) {
        if (++m_breaches <= 20)
            std::cerr << "allocation: " << what << '\n';
    }

    fs::path m_folder;
    std::map<fs::path, std::string> m_old;
    std::map<fs::path, std::string> m_new;
    std::map<std::string, int> m_endings;
    int m_unfinished = 0;
    int m_silent = 0;
    int m_breaches = 0;
};

int run() {
    auto name = std::string(fs::is_directory("/dev/shm") ? "/dev/shm" : "/tmp") + "/vantor-faults-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        return 2;
    Attack attack(name);
    const auto all = attack.count();
    std::size_t tried = 0;
    for (std::size_t request = 1; request <= all; ++request) {
        for (const bool onwards : {false, true}) {
            attack.fail(request, onwards);
            ++tried;
        }
    }
    fs::remove_all(name);
    return attack.conclude(tried, all);
}

} // namespace
} // namespace vantor::faults

int main() {
    return vantor::faults::run();
}
