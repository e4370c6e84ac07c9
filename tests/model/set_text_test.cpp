#include "base/text.h"
#include "model/shoot.h"
#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>

namespace vantor {
namespace {

using testing::differences;
using testing::Ignoring;
using testing::kMorning;
using testing::TextCase;

constexpr auto kExample = "SET:12\n"
                          "BRAND:Noorderlicht\n"
                          "ITEM:coated pants/brown\n"
                          "ITEM:sweater/blue navy\n"
                          "MODEL:Anna\n"
                          "LOCATION:Studio A";

std::string parsed(std::string_view text) {
    const auto set = SetData::parse(text, kMorning);
    return set ? testing::summary(*set) : "(absent)";
}

TEST(QrText, OfTheExampleIsWrittenToTheLetterAndReadsBackAsANewSet) {
    const auto original = testing::noorderlicht();
    EXPECT_EQ(original.toQRText(), kExample);
    const auto set = SetData::parse(kExample, {5}).value();
    EXPECT_EQ(differences(set, original, Ignoring::Identity), "");
    EXPECT_EQ(set.timestamp.secondsSinceReference, 5);
    EXPECT_EQ(set.taggedCount, 0);
    const std::set<Uuid> ids{set.id,      set.items[0].id,      set.items[1].id,
                             original.id, original.items[0].id, original.items[1].id};
    EXPECT_EQ(ids.size(), 6U) << "all ids are fresh";
}

TEST(QrText, KeepsValuesAsStoredAndLeavesOutEmptyFieldsButNoItems) {
    EXPECT_EQ(SetData().toQRText(), "");
    SetData set;
    set.setNumber = " 1:2 ";
    set.brand = "\"Søster\"; \\ Co\t";
    set.items = {{{}, "", ""}, {{}, "", "red"}, {{}, "tee", ""}};
    set.email = "anna@example.com";
    EXPECT_EQ(set.toQRText(),
              "SET: 1:2 \nBRAND:\"Søster\"; \\ Co\t\nITEM:\nITEM:/red\nITEM:tee\nEMAIL:anna@example.com");
}

TEST(QrText, HasItsLinesInAFixedOrderAndALineBreakInsideAValueAsASpace) {
    SetData set;
    set.setNumber = "1\nBRAND:x";
    set.brand = "a\r\nb";
    set.items = {{{}, "tee\u2028shirt", "off\rwhite"}};
    set.model = "An\u0085na";
    set.location = "x\vy\fz";
    set.email = "a\u2029b";
    EXPECT_EQ(set.toQRText(), "SET:1 BRAND:x\nBRAND:a b\nITEM:tee shirt/off white\nMODEL:An na\n"
                              "LOCATION:x y z\nEMAIL:a b");
}

TEST(ReadQrText, IsTolerantOfTyping) {
    for (const auto& [behaviour, text, summary] : testing::tableOf(
             TextCase{"Nothing", "", "(absent)"}, TextCase{"Blank", " ", "(absent)"},
             TextCase{"BlankLines", "\n \r\n\t\u00A0\n", "(absent)"},
             TextCase{"ItemAlone", "ITEM:shirt", "(absent)"}, TextCase{"NoNumber", "SET:", "(absent)"},
             TextCase{"BlankNumber", "SET: ", "(absent)"}, TextCase{"NoColon", "SET", "(absent)"},
             TextCase{"UnknownTags", "foo:bar\nNOTE:x", "(absent)"},
             TextCase{"OnlyColons", ":::", "(absent)"},
             TextCase{"NeitherNumberNorBrand", "MODEL:Anna\nLOCATION:x\nEMAIL:y", "(absent)"},
             TextCase{"LongerTag", "SETS:1", "(absent)"}, TextCase{"BrandAlone", "BRAND:X", "|X|||"},
             TextCase{"LastNumberHolds", "SET:1\nSET:2", "2||||"},
             TextCase{"EmptyNumberChangesNothing", "SET:1\nSET:", "1||||"},
             TextCase{"EveryItemCounts", "SET:1\nITEM:a\nITEM:b", "1|||||a+|b+"},
             TextCase{"ColonInAValue", "SET:a:b", "a:b||||"}, TextCase{"ColonsInFront", "::SET:5", "5||||"},
             TextCase{"ColonInFrontOfAValue", "SET::5", ":5||||"},
             TextCase{"SmallLettersAndBlanks", "set : 12", "12||||"},
             TextCase{"FirstSlashSplits", "SET:1\nITEM:a/b/c", "1|||||a+b/c"},
             TextCase{"ColourAloneIsAName", "SET:1\nITEM:/red", "1|||||red+"},
             TextCase{"BlankNameBeforeASecondSlashStays", "SET:1\nITEM:/ /red", "1|||||+red"},
             TextCase{"ItemIsTrimmed", "SET:1\nITEM: shirt ", "1|||||shirt+"},
             TextCase{"EmptyItemIsNone", "SET:1\nITEM:", "1||||"},
             TextCase{"SlashIsNoItem", "SET:1\nITEM:/", "1||||"},
             TextCase{"BlanksAroundASlashAreNoItem", "SET:1\nITEM: / ", "1||||"},
             TextCase{"SlashesAreNoItem", "SET:1\nITEM://///", "1||||"},
             TextCase{"UnknownTagsArePassedOver", "SET:1\nfoo:bar\nNOTE:x", "1||||"},
             TextCase{"LinesEndInCrLf", "SET:1\r\nBRAND:X\r\nITEM:a/b\r\n", "1|X||||a+b"},
             TextCase{"LinesEndInAnyBreak", "SET:1\rBRAND:X\u2028MODEL:Y\u2029EMAIL:z\u0085LOCATION:l",
                      "1|X|Y|l|z"},
             TextCase{"NumberWithoutColonIsLost", "set 12\nBrand : Noorderlicht\nitem: sweater / blue navy",
                      "|Noorderlicht||||sweater+blue navy"},
             TextCase{"AnyBlanksAreTrimmed", "\u00A0sEt\u2003:\u30001\u00A0", "1||||"},
             TextCase{"BlanksInsideStay", "SET:Zoé X", "Zoé X||||"},
             TextCase{"ColonWithAnAccentSplitsNothing", "SET:1\nBRAND:\u0301x", "1||||"},
             TextCase{"ColonWithAnAccentInAValue", "SET:1\nBRAND:X:\u0301", "1|X:\u0301|||"},
             TextCase{"SlashWithAnAccentSplitsNothing", "SET:1\nITEM:a/\u0301b", "1|||||a/\u0301b+"},
             TextCase{"SlashBehindAPrefixSplitsNothing", "SET:1\nITEM:\u0600/b", "1|||||\u0600/b+"}))
        EXPECT_EQ(parsed(text), summary) << behaviour;
}

TEST(HeadlineAndDescription, JoinWhatIsThere) {
    EXPECT_EQ(testing::noorderlicht().headline(), "Set 12 — Noorderlicht");
    EXPECT_EQ(testing::noorderlicht().description(), "coated pants brown, sweater blue navy");
    SetData set;
    EXPECT_EQ(set.headline() + set.description(), "");
    set.setNumber = "12b";
    EXPECT_EQ(set.headline(), "Set 12b");
    set.setNumber.clear();
    set.brand = "Nike";
    EXPECT_EQ(set.headline(), "Nike");
    set.items = {{{}, "jeans", ""}, {{}, "", "red"}, {{}, "", ""}};
    EXPECT_EQ(set.description(), "jeans,  red, ");
}

// What reading trims or splits is lost by the format's nature.
RC_GTEST_PROP(QrTextProperty, ReadsBackWhatItWrites, ()) {
    const auto set = *testing::plainSet("/");
    auto expected = set;
    expected.taggedCount = 0;
    const auto read = SetData::parse(set.toQRText(), kMorning);
    RC_ASSERT(read.has_value());
    RC_ASSERT(differences(*read, expected, Ignoring::Identity) == "");
}

RC_GTEST_PROP(QrTextProperty, HasALineForEveryFieldAndItemWhateverTheyHold, ()) {
    const auto set = *testing::generated<SetData>();
    std::size_t expected = set.items.size();
    for (const auto* field : {&set.setNumber, &set.brand, &set.model, &set.location, &set.email})
        expected += field->empty() ? 0U : 1U;
    std::size_t lines = 0;
    const auto text = set.toQRText();
    Lines all(text);
    while (all.next())
        ++lines;
    RC_ASSERT(lines == std::max<std::size_t>(expected, 1));
}

RC_GTEST_PROP(QrTextProperty, NoTextIsACrash, ()) {
    const auto text = *rc::gen::oneOf(testing::bytes(), testing::text(), testing::damaged(kExample));
    if (const auto set = SetData::parse(text, kMorning)) {
        RC_ASSERT(set->setNumber + set->brand != "");
        static_cast<void>(set->toQRText());
        static_cast<void>(set->headline());
        static_cast<void>(set->description());
    }
}

} // namespace
} // namespace vantor
