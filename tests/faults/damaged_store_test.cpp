// Stores whose file was damaged: cut off anywhere, with a bit turned over, with blocks that were never written.

#include "platform/posix/posix_file_store.h"
#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "tests/support/differences.h"
#include "tests/support/environment_variable.h"
#include "tests/support/examples.h"
#include "tests/support/lone_stores.h"
#include "tests/support/standing_clock.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vantor {
namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// How the tests speak to either store.
struct Shoots {
    static constexpr auto kFile = "shoots.json";
    testing::LoneShoots store;

    explicit Shoots(StoreFile& file) : store(&file) {}
    [[nodiscard]] const std::vector<Shoot>& data() const { return store.shoots(); }
    [[nodiscard]] bool isEmpty() const { return data().empty(); }
    void fill() {
        const auto shoots = testing::storedShoots();
        std::for_each(shoots.rbegin(), shoots.rend(), [&](const auto& shoot) { store.insertShoot(shoot); });
        store.save();
    }
    void change() {
        store.insertShoot(Shoot::make("Nieuw", "", "", testing::kMorning));
        store.save();
    }
};

struct Catalog {
    static constexpr auto kFile = "catalog.json";
    testing::LoneCatalog store;

    explicit Catalog(StoreFile& file) : store(&file) {}
    [[nodiscard]] CatalogData data() const { return store.document.library().catalog; }
    [[nodiscard]] bool isEmpty() const { return store.products().empty(); }
    void fill() { store.set(testing::storedCatalog()); }
    void change() { store.addBrand("Nieuw"); }
};

// How many fields differ; a value that goes on in another line does not begin with a path.
template <typename Data>
std::ptrdiff_t fieldsThatDiffer(const Data& a, const Data& b) {
    const auto text = "\n" + testing::differences(a, b);
    std::ptrdiff_t count = 0;
    for (std::size_t i = 1; i < text.size(); ++i)
        count += text[i - 1] == '\n' && (text[i] == '[' || text[i] == '.') ? 1 : 0;
    return count;
}

enum class Loaded { Whole, NotAtAll };

template <typename Each>
class DamagedStore : public ::testing::Test {
protected:
    DamagedStore() : m_path(m_folder / Each::kFile) {
        auto file = storeFile();
        Each made(file);
        made.fill();
        m_whole = bytesOf(m_path);
        Each read(file);
        read.store.load();
        m_data = read.data();
        EXPECT_FALSE(read.isEmpty());
    }

    // Starts with these bytes as the file, makes a change, and looks at what is on the disk then.
    Loaded startWith(const std::string& bytes) {
        for (const auto& name : m_folder.names())
            fs::remove(m_folder / name);
        std::ofstream(m_path, std::ios::binary) << bytes;
        auto file = storeFile();
        Each started(file);
        started.store.load();
        const auto loaded = started.isEmpty() ? Loaded::NotAtAll : Loaded::Whole;
        if (loaded == Loaded::Whole) {
            const auto differing = fieldsThatDiffer(m_data, started.data());
            m_mostDiffering = std::max(m_mostDiffering, differing);
        } else {
            EXPECT_EQ(bytesOf(m_path), bytes) << "changed by loading alone";
        }
        started.change();

        Each again(file);
        again.store.load();
        EXPECT_EQ(testing::differences(started.data(), again.data()), "");
        std::vector<std::string> aside;
        for (const auto& name : m_folder.names()) {
            if (name.find(".unreadable-") != std::string::npos)
                aside.push_back(bytesOf(m_folder / name));
        }
        EXPECT_EQ(aside, loaded == Loaded::Whole ? std::vector<std::string>{} : std::vector{bytes});
        return loaded;
    }

    [[nodiscard]] StoreFile storeFile() const { return {m_files, m_path, m_clock.clock()}; }

    // The syncs of a disk would take most of the time.
    testing::EnvironmentVariable m_temporary{
        "TMPDIR", fs::is_directory("/dev/shm") ? std::optional<std::string>("/dev/shm") : std::nullopt};
    testing::TemporaryFolder m_folder;
    PosixFileStore m_files;
    testing::StandingClock m_clock{testing::kMorning};
    fs::path m_path;
    std::string m_whole;
    std::decay_t<decltype(std::declval<Each>().data())> m_data;
    std::ptrdiff_t m_mostDiffering = 0;
};

struct FileName {
    template <typename Each>
    static std::string GetName(int) {
        return fs::path(Each::kFile).stem().string();
    }
};

using Stores = ::testing::Types<Shoots, Catalog>;
TYPED_TEST_SUITE(DamagedStore, Stores, FileName);

TYPED_TEST(DamagedStore, LoadsNothingOfAFileThatIsCutOffAtAnyByteOrHasBlocksOfZeros) {
    for (std::size_t length = 0; length < this->m_whole.size(); ++length)
        ASSERT_EQ(this->startWith(this->m_whole.substr(0, length)), Loaded::NotAtAll) << length << " bytes";
    EXPECT_EQ(this->startWith(this->m_whole), Loaded::Whole);
    EXPECT_EQ(this->m_mostDiffering, 0);
    std::cout << "damaged_store: " << TypeParam::kFile << " cut at each of " << this->m_whole.size()
              << " bytes: loaded 0 times, set aside every time\n";
    // What a file system may leave of a file whose content it never wrote.
    static constexpr std::size_t kBlock = 64;
    for (std::size_t at = 0; at < this->m_whole.size(); at += kBlock) {
        auto bytes = this->m_whole;
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), std::min(kBlock, bytes.size() - at),
                    '\0');
        ASSERT_EQ(this->startWith(bytes), Loaded::NotAtAll) << "from byte " << at;
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.end(), '\0');
        ASSERT_EQ(this->startWith(bytes), Loaded::NotAtAll) << "all from byte " << at;
    }
    ASSERT_EQ(this->startWith(this->m_whole + std::string(kBlock, '\0')), Loaded::NotAtAll);
}

TYPED_TEST(DamagedStore, LoadsAllButOneFieldOrNothingWhenABitIsTurnedOver) {
    static constexpr int kFlips = 10'000;
    static constexpr std::uint32_t kSeed = 20260314;
    std::mt19937 random(kSeed);
    int whole = 0;
    for (int i = 0; i < kFlips; ++i) {
        auto bytes = this->m_whole;
        const auto at = random() % (8 * bytes.size());
        bytes[at / 8] = static_cast<char>(bytes[at / 8] ^ (1 << at % 8));
        whole += this->startWith(bytes) == Loaded::Whole ? 1 : 0;
        ASSERT_LE(this->m_mostDiffering, 1) << "bit " << at;
        ASSERT_FALSE(this->HasFailure()) << "bit " << at;
    }
    EXPECT_GT(whole, 0);
    EXPECT_LT(whole, kFlips);
    std::cout << "damaged_store: " << TypeParam::kFile << " with one bit turned over, " << kFlips
              << " times, seed " << kSeed << ": loaded " << whole << " times with one field changed at most, "
              << kFlips - whole << " times set aside\n";
}

} // namespace
} // namespace vantor
