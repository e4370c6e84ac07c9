// Measures how long a set's text may get before printed cards are no longer read, and prints the table of
// docs/qr-reading-limits.md. Takes about twenty minutes; -v tells of every step.

#include "tests/output/code_readers.h"
#include "tests/output/printed_cards.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vantor;
using namespace vantor::testing;

constexpr std::size_t kCardsPerStep = 20;
// A card that is not read is looked at once more from a little further away, as any hand does.
constexpr double kSecondLook = 0.95;

// What the 40 sizes of code hold at level M.
constexpr std::array<std::size_t, 40> kCapacities{14,   26,   42,   62,   84,   106,  122,  152,  180,  213,
                                                  251,  287,  331,  362,  412,  450,  504,  560,  624,  666,
                                                  711,  779,  857,  911,  997,  1059, 1125, 1190, 1264, 1370,
                                                  1452, 1538, 1628, 1722, 1809, 1911, 1989, 2099, 2213, 2331};

using Reader = std::optional<std::string> (*)(const GrayPicture&);
constexpr std::array<Reader, 2> kReaders{readByZxing, readByZbar};

// Up to where every card was read, and how many of the longer ones were all the same.
class Limit {
public:
    void add(std::size_t bytes, std::size_t read) {
        if (read == kCardsPerStep && m_behind == 0) {
            m_bytes = bytes;
        } else {
            m_readBehind += read;
            m_behind += kCardsPerStep;
        }
    }
    [[nodiscard]] std::string text() const {
        const auto behind = std::to_string(m_readBehind) + " of " + std::to_string(m_behind);
        return std::to_string(m_bytes) + (m_behind == 0 ? "" : " (" + behind + ")");
    }

private:
    std::size_t m_bytes = 0;
    std::size_t m_readBehind = 0;
    std::size_t m_behind = 0;
};

// Which of the sets' cards the reader reads, and reads right.
std::vector<bool> readCards(Reader reader, const SetList& sets, const std::vector<GrayPicture>& cards) {
    std::vector<bool> right;
    for (std::size_t i = 0; i < cards.size(); ++i)
        right.push_back(reader(cards[i]) == sets[i].toQRText());
    return right;
}

std::size_t count(const std::vector<bool>& right) {
    return static_cast<std::size_t>(std::count(right.begin(), right.end(), true));
}

void measure(BulkQRDensity density, int dotsPerInch, bool isVerbose) {
    // The same texts whatever the order of the runs.
    std::mt19937 random(1);
    std::array<Limit, kReaders.size()> atFirst;
    std::array<Limit, kReaders.size()> atSecond;
    const std::string name(rawValue(density));
    for (std::size_t version = 2; version <= kCapacities.size(); ++version) {
        SetList sets;
        const auto least = kCapacities[version - 2] + 1;
        const auto most = kCapacities[version - 1];
        for (std::size_t i = 0; i < kCardsPerStep; ++i)
            sets.push_back(setOfBytes(i == 0 ? most : least + random() % (most - least + 1), random));
        const auto cards = printedCards(sets, density, dotsPerInch);
        std::vector<GrayPicture> again;
        for (std::size_t reader = 0; reader < kReaders.size(); ++reader) {
            auto right = readCards(kReaders[reader], sets, cards);
            const auto first = count(right);
            if (first < right.size()) {
                if (again.empty())
                    again = printedCards(sets, density, static_cast<int>(dotsPerInch * kSecondLook));
                const auto second = readCards(kReaders[reader], sets, again);
                for (std::size_t i = 0; i < right.size(); ++i)
                    right[i] = right[i] || second[i];
            }
            atFirst[reader].add(most, first);
            atSecond[reader].add(most, count(right));
            if (isVerbose)
                std::fprintf(stderr, "%s, %d dpi, up to %zu bytes, reader %zu: %zu, then %zu of %zu\n",
                             name.c_str(), dotsPerInch, most, reader, first, count(right), right.size());
        }
    }
    std::printf("| %s | %d | %s | %s | %s | %s |\n", name.c_str(), dotsPerInch, atFirst[0].text().c_str(),
                atSecond[0].text().c_str(), atFirst[1].text().c_str(), atSecond[1].text().c_str());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) {
    const bool isVerbose = argc > 1 && std::string_view(argv[1]) == "-v";
    std::printf(
        "| density | dots per inch | zxing-cpp | zxing-cpp, second look | zbar | zbar, second look |\n"
        "|---|---|---|---|---|---|\n");
    for (const int dotsPerInch : {150, 300, 600}) {
        for (const auto density : kAllDensities)
            measure(density, dotsPerInch, isVerbose);
    }
}
