// What the update check makes of an answer: the first line is the program's own version, the second the version
// that an earlier run remembered, the rest the body. A bad answer changes nothing but the time of the check; a
// good one tells a version and a web address. Versions compare as a consistent order.

#include "tests/support/manual_timer.h"
#include "tests/support/memory_key_value_store.h"
#include "update/update_checker.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "fuzz/require.h"

using namespace vantor;

namespace {

using testing::ManualTimer;
using testing::MemoryKeyValueStore;

constexpr const char* kVersionKey = "check.lastKnownVersion";
constexpr const char* kURLKey = "check.lastKnownDownloadURL";
constexpr const char* kDateKey = "check.lastCheckDate";
constexpr const char* kRememberedURL = "https://vantor.example/remembered";
constexpr Timestamp kNow{800'000'000};

// Keeps the one question until it is answered.
class OneQuestion final : public HttpClient {
public:
    void get(std::string_view, const HttpLimits&,
             std::function<void(std::optional<std::string> body)> onAnswer) override {
        require(!m_onAnswer);
        m_onAnswer = std::move(onAnswer);
    }
    void answer(std::string_view body) {
        require(static_cast<bool>(m_onAnswer));
        std::exchange(m_onAnswer, nullptr)(std::string(body));
    }

private:
    std::function<void(std::optional<std::string> body)> m_onAnswer;
};

// A program of the given version, from its start on.
struct Program {
    Program(std::string version, MemoryKeyValueStore& defaults)
        : checker("https://vantor.example/version", "check", std::move(version), client, defaults, timer,
                  [] { return kNow; }) {}

    OneQuestion client;
    ManualTimer timer;
    UpdateChecker checker;
};

bool startsWithIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return text.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                      [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); });
}

// Nothing that a browser, a shell or a list of addresses would read as anything but one web address.
void requireHarmless(std::string_view url) {
    require(startsWithIgnoringCase(url, "http://") || startsWithIgnoringCase(url, "https://"));
    require(std::ranges::all_of(url, [](char c) { return c > ' ' && c < '\x7F'; }));
    require(url.find_first_of("\"<>\\^`{|}") == std::string_view::npos);
}

// What is published is stored, and the next start knows it at once.
void requireConsistent(const UpdateChecker& checker, MemoryKeyValueStore& defaults) {
    require(checker.availableVersion().has_value() == checker.downloadURL().has_value());
    const Program next(checker.currentVersion(), defaults);
    require(next.checker.availableVersion() == checker.availableVersion());
    require(next.checker.downloadURL() == checker.downloadURL());
    if (!checker.availableVersion())
        return;
    require(!checker.availableVersion()->empty());
    require(UpdateChecker::isVersion(*checker.availableVersion(), checker.currentVersion()));
    requireHarmless(*checker.downloadURL());
    require(defaults.text(kVersionKey) == checker.availableVersion());
    require(defaults.text(kURLKey) == checker.downloadURL());
}

void requireOrder(const std::array<std::string_view, 3>& versions) {
    constexpr std::size_t kCount = 3;
    std::array<std::array<bool, kCount>, kCount> newer{};
    for (std::size_t a = 0; a < kCount; ++a) {
        for (std::size_t b = 0; b < kCount; ++b)
            newer[a][b] = UpdateChecker::isVersion(versions[a], versions[b]);
    }
    for (std::size_t a = 0; a < kCount; ++a) {
        require(!newer[a][a]);
        for (std::size_t b = 0; b < kCount; ++b) {
            require(!newer[a][b] || !newer[b][a]);
            for (std::size_t c = 0; c < kCount; ++c) {
                require(!newer[a][b] || !newer[b][c] || newer[a][c]);
                // Neither newer is as good as equal, so that both stand on the same side of any third.
                if (!newer[a][b] && !newer[b][a])
                    require(newer[a][c] == newer[b][c] && newer[c][a] == newer[c][b]);
            }
        }
    }
}

std::string_view takeLine(std::string_view& text) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view body(reinterpret_cast<const char*>(data), size);
    const auto own = takeLine(body);
    const auto remembered = takeLine(body);

    // Older than any number that the answer can hold, so that it takes up every answer that is one.
    MemoryKeyValueStore eagerDefaults;
    Program eager("-1" + std::string(size, '0'), eagerDefaults);
    eager.checker.checkForUpdate();
    eager.client.answer(body);
    requireConsistent(eager.checker, eagerDefaults);
    const auto& version = eager.checker.availableVersion();

    MemoryKeyValueStore defaults;
    defaults.setText(kVersionKey, remembered);
    defaults.setText(kURLKey, kRememberedURL);
    Program program(std::string(own), defaults);
    const auto knownBefore = program.checker.availableVersion();
    program.checker.checkForUpdate();
    program.client.answer(body);
    require(defaults.date(kDateKey).has_value());
    if (version) {
        requireConsistent(program.checker, defaults);
        const bool isNewer = UpdateChecker::isVersion(*version, own);
        require(program.checker.availableVersion().has_value() == isNewer);
        require(defaults.values.size() == (isNewer ? 3 : 1));
    } else {
        require(program.checker.availableVersion() == knownBefore);
        require(defaults.text(kVersionKey) == remembered && defaults.text(kURLKey) == kRememberedURL);
        require(defaults.values.size() == 3);
    }

    requireOrder({own, remembered, version ? std::string_view(*version) : body});
    return 0;
}
