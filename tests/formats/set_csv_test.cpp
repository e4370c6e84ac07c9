#include "base/text.h"
#include "base/text_lookup.h"
#include "formats/set_csv.h"
#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/generators.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <ostream>
#include <set>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using testing::Ignoring;
using ::testing::IsEmpty;
using testing::kMorning;

std::vector<SetData> read(std::string_view text) {
    std::vector<SetData> sets;
    readSetCSV(text, kMorning, [&](SetData set) { sets.push_back(std::move(set)); });
    return sets;
}

// number|brand|model|location|email, then |name+colour for every item.
std::string summary(const SetData& set) {
    auto text = set.setNumber + "|" + set.brand + "|" + set.model + "|" + set.location + "|" + set.email;
    for (const auto& item : set.items)
        text += "|" + item.name + "+" + item.color;
    return text;
}

std::vector<std::string> summaries(std::string_view text) {
    std::vector<std::string> all;
    for (const auto& set : read(text))
        all.push_back(summary(set));
    return all;
}

bool hasLines(std::string_view text) {
    return readSetCSV(text, kMorning, [](const SetData&) {});
}

constexpr auto kDocumented = "Set;Merk;Items;Model;Locatie\n"
                             "1;Marvis;coated pants/brown, sweater/blue navy;Anna;Studio A";

TEST(ReadSetCsv, ReadsTheDocumentedExample) {
    const auto sets = read(kDocumented);
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(summary(sets[0]), "1|Marvis|Anna|Studio A||coated pants+brown|sweater+blue navy");
    EXPECT_EQ(sets[0].taggedCount, 0);
    EXPECT_EQ(sets[0].timestamp.secondsSinceReference, kMorning.secondsSinceReference);
    const std::set<Uuid> ids{sets[0].id, sets[0].items[0].id, sets[0].items[1].id, Uuid()};
    EXPECT_EQ(ids.size(), 4U) << "fresh ids";
}

TEST(ReadSetCsv, GivesNothingForAHeaderAlone) {
    for (const auto* text : {"", "\n\n", " \t\n\u00A0", "Set;Merk", "Set;Merk\n\n  \n\t\r\n"}) {
        EXPECT_THAT(summaries(text), IsEmpty()) << text;
        EXPECT_FALSE(hasLines(text)) << text;
    }
    EXPECT_TRUE(hasLines("Set;Merk\nx"));
}

TEST(ReadSetCsv, TakesTheFirstFilledLineAsTheHeaderWhateverItSays) {
    EXPECT_THAT(summaries("1;Nike;jeans\n2;Puma;tee\n3;Nike;sok"), IsEmpty());
    EXPECT_THAT(summaries("\n \t\nMerk\nNike"), ElementsAre("1|Nike|||"));
}

TEST(ReadSetCsv, PassesOverALineWithoutBrandAndItems) {
    EXPECT_THAT(summaries("Set;Merk;Items;Model;Locatie\n1;;;Anna;Studio A\n2;;/;Anna;Studio A"), IsEmpty());
}

TEST(ReadSetCsv, NumbersALineWithoutOneByItsPositionAmongTheFilledLines) {
    EXPECT_THAT(summaries("Set;Merk\n\n;a\n \n;b\n7;c\n;\n;d"),
                ElementsAre("1|a|||", "2|b|||", "7|c|||", "5|d|||"));
    EXPECT_THAT(summaries("Merk\na\nb"), ElementsAre("1|a|||", "2|b|||"));
    EXPECT_THAT(summaries("Merk;Set\na"), ElementsAre("1|a|||"));
}

TEST(ReadSetCsv, ReadsFurtherItemColumnsAsOneItemEach) {
    EXPECT_THAT(summaries("Set;Items;Item 2\n1;a/red, b;c/blue"), ElementsAre("1|||||a+red|b+|c+blue"));
    EXPECT_THAT(summaries("Item 1;Set;ITEM 2;item3\na,b;1;c,d/e;/"), ElementsAre("1|||||a+|b+|c,d+e"));
    EXPECT_THAT(summaries("Item 1;Item 2;Item 3\na"), ElementsAre("1|||||a+"));
}

TEST(ReadSetCsv, SplitsItemsAtCommasAndFirstSlashes) {
    EXPECT_THAT(summaries("Items\njeans"), ElementsAre("1|||||jeans+"));
    EXPECT_THAT(summaries("Items\na/b/c"), ElementsAre("1|||||a+b/c"));
    EXPECT_THAT(summaries("Items\n/blue"), ElementsAre("1|||||blue+"));
    EXPECT_THAT(summaries("Items\n , a / red ,, /,/ ,b"), ElementsAre("1|||||a+red|b+"));
}

TEST(ReadSetCsv, KeepsSemicolonInsideQuotes) {
    EXPECT_THAT(summaries("Set;Merk;Model\n1;\"Nike; Co\";Anna"), ElementsAre("1|Nike; Co|Anna||"));
}

TEST(ReadSetCsv, TakesAnyLineEnd) {
    const auto lines = summaries("Set;Merk\n1;a\n2;b\n");
    EXPECT_THAT(lines, ElementsAre("1|a|||", "2|b|||"));
    for (const auto* end : {"\r\n", "\r", "\u2028", "\u2029", "\u0085", "\v", "\f"}) {
        const std::string e = end;
        EXPECT_EQ(summaries("Set;Merk" + e + "1;a" + e + "2;b" + e), lines);
        EXPECT_EQ(summaries("Set;Merk" + e + "1;a" + e + "2;b"), lines) << "without one at the end";
    }
}

struct Header {
    std::string behaviour;
    std::string header;
    std::string summary;
};

void PrintTo(const Header& each, std::ostream* out) {
    *out << ::testing::PrintToString(each.header);
}

class SetCsvHeader : public ::testing::TestWithParam<Header> {};

// Under every header the line "1;2;3;4;5;6".
TEST_P(SetCsvHeader, TellsTheColumns) {
    EXPECT_THAT(summaries(GetParam().header + "\n1;2;3;4;5;6"), ElementsAre(GetParam().summary));
}

INSTANTIATE_TEST_SUITE_P(
    Headers, SetCsvHeader,
    ::testing::Values(Header{"AsDocumented", "Set;Merk;Items;Model;Locatie;Email", "1|2|4|5|6|3+"},
                      Header{"InAnyOrder", "email;locatie;model;items;merk;set", "6|5|3|2|1|4+"},
                      Header{"InEnglishCapitals", "E-MAIL;LOCATION;MODEL;ITEM;BRAND;SET", "6|5|3|2|1|4+"},
                      Header{"Trimmed", " Set ;\tMerk;x;y;z;q", "1|2|||"},
                      Header{"ByPartsOfWords", "Settings;Merknaam;;;;", "1|2|||"},
                      Header{"BrandByNaam", "Nummer;Naam;;;;", "1|2|||"},
                      Header{"BrandByName", "x;Name;Set;;;", "3|2|||"},
                      Header{"BrandByProduct", "Product;Merk;;;;", "1|1|||"},
                      Header{"OneCellForTwoColumns", "Setnaam;Merk;;;;", "1|1|||"},
                      Header{"ByTheFirstThatMatches", "Merk;Merk;Set;Set;;", "3|1|||"},
                      Header{"WithoutTaggedCounts", "Merk;Getagd;Set;;;", "3|1|||"},
                      Header{"WithoutQuotesInside", "\"Se\"\"t\";Brand;;;;", "1|2|||"},
                      Header{"SemicolonsInsideQuotes", "\"a;Set\";Merk;;;;", "1|2|||"},
                      Header{"ItemsAndSetInOneCell", "Itemset;Merk;;;;", "1|2||||1+"}),
    [](const auto& each) { return each.param.behaviour; });

TEST(ReadSetCsv, LowerCasesTheHeaderWhateverTheLetters) {
    EXPECT_THAT(summaries("ÉSET;MERK\n5;x"), ElementsAre("5|x|||"));
}

TEST(ReadSetCsv, LeavesFieldsBehindTheEndOfALineEmptyAndIgnoresFurtherCells) {
    EXPECT_THAT(summaries("Merk;Model;Locatie\nNike\nPuma;Anna;Studio;x;y"),
                ElementsAre("1|Nike|||", "2|Puma|Anna|Studio|"));
}

TEST(ReadSetCsv, IgnoresTaggedCounts) {
    const auto sets = read("Set;Merk;Getagd\n1;Nike;12");
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets[0].taggedCount, 0);
}

TEST(ReadSetCsv, PassesOverAByteOrderMark) {
    EXPECT_THAT(summaries("\uFEFFSet;Merk\n1;Nike"), ElementsAre("1|Nike|||"));
    EXPECT_FALSE(hasLines("\uFEFF\n\nSet;Merk\n"));
}

TEST(ReadSetCsv, SplitsOnlyAtSemicolonsOfTheirOwn) {
    EXPECT_THAT(summaries("Merk;Model\nNi;\u0301ke;Anna"), ElementsAre("1|Ni;\u0301ke|Anna||"));
}

TEST(ReadSetCsv, TakesNulBytesAndBytesThatAreNoText) {
    const std::string text("Merk;Model\nNi\0ke;\xFF\n\0\n", 21);
    const auto sets = read(text);
    ASSERT_EQ(sets.size(), 2U);
    EXPECT_EQ(sets[0].brand, std::string("Ni\0ke", 5));
    EXPECT_EQ(sets[0].model, "\xFF");
}

TEST(ReadSetCsv, TakesAVeryLongLine) {
    std::string text = "Merk;Items\n";
    text.append(100'000'000, 'x');
    const auto sets = read(text);
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets[0].brand.size(), 100'000'000U);
    EXPECT_FALSE(hasLines(std::string_view(text).substr(11)));
}

Shoot shootOf(SetList sets) {
    Shoot shoot;
    shoot.sets = std::move(sets);
    return shoot;
}

constexpr std::string_view kHeader = "Set;Merk;Items;Model;Locatie;Email;Getagd";

std::string writtenLine(const SetData& set) {
    const auto text = writeSetCSV(shootOf({set}));
    EXPECT_TRUE(text.starts_with(std::string(kHeader) + "\n")) << text;
    return text.substr(kHeader.size() + 1);
}

TEST(WriteSetCsv, WritesTheHeaderAloneForAShootWithoutSets) {
    EXPECT_EQ(writeSetCSV({}), kHeader);
}

TEST(WriteSetCsv, WritesALineASetInTheirOrder) {
    SetData nike;
    nike.setNumber = "3";
    nike.brand = "Nike";
    nike.items = {{{}, "jeans", ""}, {{}, "tee", "white"}};
    nike.model = "Anna";
    nike.taggedCount = 2;
    EXPECT_EQ(writtenLine(nike), "3;Nike;jeans, tee/white;Anna;;;2");
    EXPECT_EQ(writeSetCSV(shootOf({nike, testing::noorderlicht()})),
              std::string(kHeader) +
                  "\n3;Nike;jeans, tee/white;Anna;;;2\n"
                  "12;Noorderlicht;coated pants/brown, sweater/blue navy;Anna;Studio A;;0");
}

TEST(WriteSetCsv, QuotesACellThatHoldsASemicolonAQuoteOrALineFeed) {
    SetData set;
    set.brand = "Nike; Co";
    set.model = "Anna \"A\"";
    set.location = "a\nb";
    set.items = {{{}, "a;b", ""}};
    EXPECT_EQ(writtenLine(set), ";\"Nike; Co\";\"a;b\";\"Anna \"\"A\"\"\";\"a\nb\";;0");
}

TEST(WriteSetCsv, LeavesTheItemsCellEmptyForASetWithoutItems) {
    SetData set;
    set.setNumber = "1";
    set.brand = "x";
    EXPECT_EQ(writtenLine(set), "1;x;;;;;0");
}

TEST(WriteSetCsv, WritesCountsOfAnySize) {
    SetData set;
    set.taggedCount = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(writtenLine(set), ";;;;;;-9223372036854775808");
}

TEST(WriteSetCsv, LeavesBlanksAndCommasUnquoted) {
    SetData set;
    set.setNumber = " 1 ";
    set.brand = "a,b\tc\rd";
    EXPECT_EQ(writtenLine(set), " 1 ;a,b\tc\rd;;;;;0");
}

// A header as a translator has it, and how a file under it is read.
struct TranslatedHeader {
    std::string behaviour;
    std::string written;
    std::string read;
    std::string summary;
};

void PrintTo(const TranslatedHeader& each, std::ostream* out) {
    *out << each.read;
}

class SetCsvTranslation : public ::testing::TestWithParam<TranslatedHeader> {
protected:
    void SetUp() override {
        setTextLookup([](std::string_view dutch) {
            return dutch == kHeader ? GetParam().written : std::string(dutch);
        });
    }
    void TearDown() override { setTextLookup({}); }
};

TEST_P(SetCsvTranslation, IsWrittenAndReadBack) {
    EXPECT_EQ(writeSetCSV({}), GetParam().written);
    EXPECT_THAT(summaries(GetParam().read + "\n1;2;3;4;5;6;7"), ElementsAre(GetParam().summary));
}

const std::string kFrench = "Tenue;Marque;Articles;Modèle;Lieu;Courriel;Marqué";
const std::string kMisleading = "Nr.;Kollektion;Setteile;Modelname;Product location;Mail;Set items";

INSTANTIATE_TEST_SUITE_P(
    Headers, SetCsvTranslation,
    ::testing::Values(
        TranslatedHeader{"AllColumnsByTheirTitles", kFrench, kFrench, "1|2|4|5|6|3+"},
        TranslatedHeader{"InAnyOrderAndCase", kFrench, "MARQUÉ; courriel ;LIEU;\"modèle\";x;marque;tenue",
                         "7|6|4|3|2"},
        TranslatedHeader{"DutchAsWell", kFrench, std::string(kHeader), "1|2|4|5|6|3+"},
        TranslatedHeader{"WordsBeforeTitles", kFrench, "Marque;Merk;Tenue;Set;Item;;", "4|2||||5+"},
        TranslatedHeader{"OnlyWholeTitles", kFrench, "Tenues;Marque;Lieu 2;;;;", "1|2|||"},
        TranslatedHeader{"TitlesThatHoldWordsOfOtherColumns", kMisleading, kMisleading, "1|2|4|5|6|3+"},
        TranslatedHeader{"FewerTitlesThanColumns", "A;B", "A;B;Item", "1|2||||3+"}),
    [](const auto& each) { return each.param.behaviour; });

// A set that the format can hold whole.
rc::Gen<SetData> writableSet() {
    return rc::gen::map(testing::plainSet("/,"), [](SetData set) {
        if (set.brand.empty())
            set.brand = "Nike";
        return set;
    });
}

RC_GTEST_PROP(SetCsvProperty, ReadsBackWhatItWrites, ()) {
    auto shoot = shootOf(*testing::fewOf<SetList>(writableSet()));
    const auto sets = read(writeSetCSV(shoot));
    for (auto& set : shoot.sets)
        set.taggedCount = 0;
    RC_ASSERT(differences(sets, std::vector<SetData>(shoot.sets.begin(), shoot.sets.end()),
                          Ignoring::Identity) == "");
}

RC_GTEST_PROP(SetCsvProperty, NoBytesAreACrash, ()) {
    const auto text = *rc::gen::oneOf(testing::bytes(), testing::text(), testing::damaged(kDocumented));
    for (const auto& set : read(text)) {
        RC_ASSERT(!set.setNumber.empty());
        RC_ASSERT((!set.brand.empty() || !set.items.empty()));
    }
}

} // namespace
} // namespace vantor
