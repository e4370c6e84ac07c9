#include "tests/support/environment_variable.h"
#include "view/version_list.h"

#include <gmock/gmock.h>

#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace vantor::testing {
namespace {

using Kind = Version::Kind;

// Before anything asks where it is.
const EnvironmentVariable kZone("TZ", "Europe/Amsterdam");

Timestamp at(const char* moment) {
    return Timestamp::parseIso8601(moment).value();
}

Version version(Kind kind, const char* moment, const char* path, const char* before = "") {
    Version made{kind, at(moment), before, Version::Counts{3, 74}, {}, {}, {}, true};
    (kind == Kind::RestorePoint ? made.point : made.shoots) = path;
    return made;
}

Version unreadable(Version version) {
    version.counts.reset();
    version.isReadable = false;
    return version;
}

TEST(VersionLine, SaysWhenWhatForAndHowMuch) {
    // 0:20 on the 21st in Amsterdam, where the 20th is yesterday.
    const auto now = at("2026-11-20T23:20:00Z");
    auto few = version(Kind::RestorePoint, "2026-11-20T23:05:00Z", "p", "Shoot \"Zomer\" verwijderd");
    few.counts = {1, 1};
    auto hostile = version(Kind::RestorePoint, "2026-11-20T22:59:59Z", "p", "a\nb");
    auto catalogOnly = version(Kind::SetAside, "2026-02-03T08:00:00Z", "p");
    catalogOnly.counts.reset();
    // When, the same within a sentence, what for, and how much.
    const std::vector<std::tuple<Version, const char*, const char*, const char*, const char*>> cases{
        {few, "Vandaag 00:05", "vandaag 00:05", "voor: Shoot \"Zomer\" verwijderd", "1 shoot, 1 set"},
        {hostile, "Gisteren 23:59", "gisteren 23:59", "voor: a<U+000A>b", "3 shoots, 74 sets"},
        {version(Kind::RestorePoint, "2026-11-18T08:41:00Z", "p"), "18 november 09:41", "18 november 09:41",
         "eerste wijziging van de dag", "3 shoots, 74 sets"},
        {unreadable(version(Kind::RestorePoint, "2025-12-31T22:00:00Z", "p")), "31 december 2025 23:00",
         "31 december 2025 23:00", "niet te lezen", "—"},
        // A copy is of a day, wherever it is looked at.
        {version(Kind::DailyCopy, "2026-11-21T00:00:00Z", "p"), "Vandaag", "vandaag", "kopie van die dag",
         "3 shoots, 74 sets"},
        {version(Kind::DailyCopy, "2026-11-20T00:00:00Z", "p"), "Gisteren", "gisteren", "kopie van die dag",
         "3 shoots, 74 sets"},
        {version(Kind::DailyCopy, "2025-03-01T00:00:00Z", "p"), "1 maart 2025", "1 maart 2025",
         "kopie van die dag", "3 shoots, 74 sets"},
        {unreadable(version(Kind::SetAside, "2026-08-18T07:41:00Z", "p")), "18 augustus 09:41",
         "18 augustus 09:41", "niet te lezen, opzij gezet", "—"},
        {catalogOnly, "3 februari 09:00", "3 februari 09:00", "opzij gezet", "—"},
    };
    for (const auto& [version, when, withinSentence, what, counts] : cases) {
        const auto line = lineOf(version, now);
        EXPECT_EQ(line.when, when);
        EXPECT_EQ(line.what, what) << when;
        EXPECT_EQ(line.counts, counts) << when;
        EXPECT_EQ(whenInWords(version, now, Beginning::Small), withinSentence);
    }
}

TEST(VersionShootLine, SaysHowManySetsWhichDayAndWhose) {
    const auto now = at("2026-11-21T12:00:00Z");
    auto shoot = Shoot::make("Zomer\top Texel", "", "Noorderlicht", at("2026-11-20T23:30:00Z"));
    for (int i = 0; i < 28; ++i)
        shoot.sets.push_back({});
    EXPECT_EQ(lineOf(shoot, now).name, "Zomer<U+0009>op Texel");
    EXPECT_EQ(lineOf(shoot, now).about, "28 sets · 21 november · Noorderlicht");
    shoot.client = " ";
    shoot.date = at("2024-05-01T12:00:00Z");
    shoot.sets = {};
    shoot.sets.push_back({});
    EXPECT_EQ(lineOf(shoot, now).about, "1 set · 1 mei 2024");
}

class VersionListTest : public ::testing::Test {
protected:
    VersionListTest() {
        m_list.show({version(Kind::RestorePoint, "2026-11-20T10:00:00Z", "newer"),
                     version(Kind::SetAside, "2026-11-19T10:00:00Z", "older")});
    }

    static LibraryVersion holding(const char* shoot) {
        return {std::vector{Shoot::make(shoot, "", "", {})}, std::nullopt};
    }

    VersionList m_list;
};

TEST_F(VersionListTest, ReadsOneVersionAtATimeAndShowsOnlyTheChosenOne) {
    EXPECT_FALSE(m_list.beginReading());
    m_list.choose(0);
    EXPECT_EQ(m_list.beginReading()->point, "newer");
    m_list.choose(1);
    EXPECT_FALSE(m_list.beginReading());
    m_list.finishReading(holding("of the newer"));
    EXPECT_EQ(m_list.content(), nullptr);
    EXPECT_EQ(m_list.reasonForNoShoots(), "");
    EXPECT_EQ(m_list.beginReading()->shoots, "older");
    m_list.finishReading(holding("of the older"));
    EXPECT_EQ(m_list.shoots().at(0).name, "of the older");
    EXPECT_FALSE(m_list.beginReading());
}

TEST_F(VersionListTest, KnowsWhatItReadAlsoWhenVersionsCameInFront) {
    m_list.choose(1);
    static_cast<void>(m_list.beginReading());
    m_list.finishReading(holding("of the older"));
    auto more = m_list.versions();
    more.insert(more.begin(), version(Kind::RestorePoint, "2026-11-21T10:00:00Z", "newest"));
    m_list.show(more);
    EXPECT_EQ(m_list.chosen(), nullptr);
    EXPECT_EQ(m_list.content(), nullptr);
    m_list.choose(2);
    EXPECT_EQ(m_list.shoots().at(0).name, "of the older");
    EXPECT_FALSE(m_list.beginReading());
    m_list.choose(3);
    EXPECT_EQ(m_list.chosen(), nullptr);
}

TEST_F(VersionListTest, SaysWhyThereAreNoShoots) {
    using Case = std::pair<std::optional<LibraryVersion>, const char*>;
    for (const auto& [content, reason] :
         {Case{std::nullopt, "Deze versie is niet te lezen."},
          Case{LibraryVersion{std::vector<Shoot>(), std::nullopt}, "Geen shoots in deze versie."},
          Case{LibraryVersion{std::nullopt, CatalogData()}, "Alleen de productcatalogus, zonder shoots."}}) {
        VersionList list;
        list.show(m_list.versions());
        list.choose(0);
        static_cast<void>(list.beginReading());
        list.finishReading(content);
        EXPECT_EQ(list.reasonForNoShoots(), reason);
        EXPECT_EQ(list.content() != nullptr, content.has_value());
        EXPECT_TRUE(list.shoots().empty());
    }
}

} // namespace
} // namespace vantor::testing
