#include "base/text.h"
#include "base/text_lookup.h"
#include "formats/set_csv.h"
#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <set>

namespace vantor {
namespace {

using namespace std::string_literals;
using testing::differences;
using ::testing::ElementsAre;
using testing::kMorning;
using testing::summary;
using testing::TextCase;

std::vector<SetData> read(std::string_view text) {
    return readSetCSV(text, kMorning).sets;
}

std::vector<std::string> summaries(std::string_view text) {
    std::vector<std::string> all;
    for (const auto& set : read(text))
        all.push_back(summary(set));
    return all;
}

constexpr auto kDocumented = "Set;Merk;Items;Model;Locatie\n"
                             "1;Marvis;coated pants/brown, sweater/blue navy;Anna;Studio A";

TEST(ReadSetCsv, ReadsTheDocumentedExample) {
    const auto set = read(kDocumented).at(0);
    EXPECT_EQ(summary(set), "1|Marvis|Anna|Studio A||coated pants+brown|sweater+blue navy");
    EXPECT_EQ(set.taggedCount, 0);
    EXPECT_EQ(set.timestamp.secondsSinceReference, kMorning.secondsSinceReference);
    const std::set<Uuid> ids{set.id, set.items[0].id, set.items[1].id, Uuid()};
    EXPECT_EQ(ids.size(), 4U) << "fresh ids";
}

TEST(ReadSetCsv, GivesNothingForAHeaderAlone) {
    for (const auto* text :
         {"", "\n\n", " \t\n\u00A0", "Set;Merk", "Set;Merk\n\n  \n\t\r\n", "\uFEFF\n\nSet;Merk\n"}) {
        EXPECT_THAT(summaries(text), ::testing::IsEmpty()) << text;
        EXPECT_FALSE(readSetCSV(text, kMorning).hasLines) << text;
    }
    EXPECT_TRUE(readSetCSV("Set;Merk\nx", kMorning).hasLines);
}

TEST(ReadSetCsv, MakesASetOfEachLine) {
    using Sets = std::vector<std::string>;
    struct Case {
        std::string behaviour;
        std::string text;
        Sets sets;
    };
    for (const auto& [behaviour, text, sets] : testing::tableOf(
             Case{"first filled line is the header", "1;Nike;jeans\n2;Puma;tee\n3;Nike;sok", {}},
             Case{"header behind blank lines", "\n \t\nMerk\nNike", {"1|Nike|||"}},
             Case{"byte order mark", "\uFEFFSet;Merk\n1;Nike", {"1|Nike|||"}},
             Case{"letters in the header with accents", "ÉSET;MERK\n5;x", {"5|x|||"}},
             Case{"no set without brand and items",
                  "Set;Merk;Items;Model;Locatie\n1;;;Anna;Studio A\n2;;/;Anna;Studio A",
                  {}},
             Case{"number by the place among the filled lines",
                  "Set;Merk\n\n;a\n \n;b\n7;c\n;\n;d",
                  {"1|a|||", "2|b|||", "7|c|||", "5|d|||"}},
             Case{"number by place without a column", "Merk\na\nb", {"1|a|||", "2|b|||"}},
             Case{"number by place behind the line's end", "Merk;Set\na", {"1|a|||"}},
             Case{"item columns", "Set;Items;Item 2\n1;a/red, b;c/blue", {"1|||||a+red|b+|c+blue"}},
             Case{"item columns in any order and case",
                  "Item 1;Set;ITEM 2;item3\na,b;1;c,d/e;/",
                  {"1|||||a+|b+|c,d+e"}},
             Case{"fewer items than columns", "Item 1;Item 2;Item 3\na", {"1|||||a+"}},
             Case{"first slash splits", "Items\na/b/c", {"1|||||a+b/c"}},
             Case{"colour alone is a name", "Items\n/blue", {"1|||||blue+"}},
             Case{"blanks and empty items", "Items\n , a / red ,, /,/ ,b", {"1|||||a+red|b+"}},
             Case{"semicolon inside quotes", "Set;Merk;Model\n1;\"Nike; Co\";Anna", {"1|Nike; Co|Anna||"}},
             Case{"semicolon with an accent", "Merk;Model\nNi;\u0301ke;Anna", {"1|Ni;\u0301ke|Anna||"}},
             Case{"fewer and more cells than columns",
                  "Merk;Model;Locatie\nNike\nPuma;Anna;Studio;x;y",
                  {"1|Nike|||", "2|Puma|Anna|Studio|"}},
             Case{"bytes that are no text",
                  "Merk;Model\nNi\0ke;\xFF\n\0\n"s,
                  {"1|Ni\0ke|\xFF||"s, "2|\0|||"s}}))
        EXPECT_EQ(summaries(text), sets) << behaviour;
}

TEST(ReadSetCsv, TakesAnyLineEnd) {
    for (const std::string end : {"\n", "\r\n", "\r", "\u2028", "\u2029", "\u0085", "\v", "\f"}) {
        for (const auto& last : {end, std::string()})
            EXPECT_THAT(summaries("Set;Merk" + end + "1;a" + end + "2;b" + last),
                        ElementsAre("1|a|||", "2|b|||"));
    }
}

// Under every header the line "1;2;3;4;5;6".
TEST(SetCsvHeader, TellsTheColumns) {
    for (const auto& [behaviour, header, summary] : testing::tableOf(
             TextCase{"AsDocumented", "Set;Merk;Items;Model;Locatie;Email", "1|2|4|5|6|3+"},
             TextCase{"InAnyOrder", "email;locatie;model;items;merk;set", "6|5|3|2|1|4+"},
             TextCase{"InEnglishCapitals", "E-MAIL;LOCATION;MODEL;ITEM;BRAND;SET", "6|5|3|2|1|4+"},
             TextCase{"Trimmed", " Set ;\tMerk;x;y;z;q", "1|2|||"},
             TextCase{"ByPartsOfWords", "Settings;Merknaam;;;;", "1|2|||"},
             TextCase{"BrandByNaam", "Nummer;Naam;;;;", "1|2|||"},
             TextCase{"BrandByName", "x;Name;Set;;;", "3|2|||"},
             TextCase{"BrandByProduct", "Product;Merk;;;;", "1|1|||"},
             TextCase{"OneCellForTwoColumns", "Setnaam;Merk;;;;", "1|1|||"},
             TextCase{"ByTheFirstThatMatches", "Merk;Merk;Set;Set;;", "3|1|||"},
             TextCase{"WithoutTaggedCounts", "Merk;Getagd;Set;;;", "3|1|||"},
             TextCase{"WithoutQuotesInside", "\"Se\"\"t\";Brand;;;;", "1|2|||"},
             TextCase{"SemicolonsInsideQuotes", "\"a;Set\";Merk;;;;", "1|2|||"},
             TextCase{"ItemsAndSetInOneCell", "Itemset;Merk;;;;", "1|2||||1+"}))
        EXPECT_THAT(summaries(header + "\n1;2;3;4;5;6"), ElementsAre(summary)) << behaviour;
}

TEST(ReadSetCsv, TakesAVeryLongLine) {
    const auto sets = read("Merk;Items\n" + std::string(100'000'000, 'x') + ";tee");
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets[0].brand.size(), 100'000'000U);
    EXPECT_EQ(sets[0].items.size(), 1U);
}

Shoot shootOf(SetList sets) {
    Shoot shoot;
    shoot.sets = std::move(sets);
    return shoot;
}

constexpr std::string_view kHeader = "Set;Merk;Items;Model;Locatie;Email;Getagd";

TEST(WriteSetCsv, WritesALineASetInTheirOrder) {
    EXPECT_EQ(writeSetCSV({}), kHeader);
    SetData nike;
    nike.setNumber = "3";
    nike.brand = "Nike";
    nike.items = {{{}, "jeans", ""}, {{}, "tee", "white"}};
    nike.model = "Anna";
    nike.taggedCount = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(writeSetCSV(shootOf({nike, testing::noorderlicht(), {}})),
              std::string(kHeader) +
                  "\n3;Nike;jeans, tee/white;Anna;;;-9223372036854775808\n"
                  "12;Noorderlicht;coated pants/brown, sweater/blue navy;Anna;Studio A;;0\n"
                  ";;;;;;0");
}

TEST(WriteSetCsv, QuotesACellThatHoldsASemicolonAQuoteOrALineFeedAndNoOther) {
    SetData set;
    set.setNumber = " 1 ";
    set.brand = "Nike; Co";
    set.model = "Anna \"A\"";
    set.location = "a\nb";
    set.items = {{{}, "a;b", ""}};
    set.email = "a,b\tc\rd";
    EXPECT_EQ(writeSetCSV(shootOf({set})),
              std::string(kHeader) + "\n 1 ;\"Nike; Co\";\"a;b\";\"Anna \"\"A\"\"\";\"a\nb\";a,b\tc\rd;0");
}

TEST(SetCsv, HeaderThatWasTranslatedIsWrittenAndReadBack) {
    const std::string french = "Tenue;Marque;Articles;Modèle;Lieu;Courriel;Marqué";
    const std::string misleading = "Nr.;Kollektion;Setteile;Modelname;Product location;Mail;Set items";
    struct Case {
        std::string behaviour;
        // As the translator has it, and above the line that is read.
        std::string translated;
        std::string header;
        std::string summary;
    };
    for (const auto& [behaviour, translated, header, summary] : testing::tableOf(
             Case{"all columns by their titles", french, french, "1|2|4|5|6|3+"},
             Case{"in any order and case", french, "MARQUÉ; courriel ;LIEU;\"modèle\";x;marque;tenue",
                  "7|6|4|3|2"},
             Case{"Dutch as well", french, std::string(kHeader), "1|2|4|5|6|3+"},
             Case{"words before titles", french, "Marque;Merk;Tenue;Set;Item;;", "4|2||||5+"},
             Case{"only whole titles", french, "Tenues;Marque;Lieu 2;;;;", "1|2|||"},
             Case{"titles that hold words of other columns", misleading, misleading, "1|2|4|5|6|3+"},
             Case{"fewer titles than columns", "A;B", "A;B;Item", "1|2||||3+"})) {
        SCOPED_TRACE(behaviour);
        setTextLookup([title = translated](std::string_view dutch) {
            return dutch == kHeader ? title : std::string(dutch);
        });
        EXPECT_EQ(writeSetCSV({}), translated);
        EXPECT_THAT(summaries(header + "\n1;2;3;4;5;6;7"), ElementsAre(summary));
    }
    setTextLookup({});
}

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
                          testing::Ignoring::Identity) == "");
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
