#include "model/shoot_json.h"
#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using testing::differences;

constexpr auto kItem = R"({"color":"","id":"00000000-0000-4000-8000-000000000121","name":"tee"})";
constexpr auto kSet =
    R"({"brand":"Nike","email":"a@example.com","id":"00000000-0000-4000-8000-000000000012",)"
    R"("items":[ITEM],"location":"Studio A","model":"Anna","setNumber":"12","taggedCount":7,)"
    R"("timestamp":795173400.5})";
constexpr auto kActivation = R"({"activatedAt":795173401.0,"setId":"00000000-0000-4000-8000-000000000012"})";
constexpr auto kShoot = R"({"activationLog":[ACTIVATION],"client":"Nike","date":795173400.0,)"
                        R"("id":"00000000-0000-4000-8000-000000000001","location":"Ibiza","name":"Zomer",)"
                        R"("sets":[SET],"watchFolderPath":"/x"})";

std::string with(std::string text, std::string_view from, std::string_view to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

const std::string& exampleJson() {
    static const auto kText = with(with(with(kShoot, "SET", kSet), "ITEM", kItem), "ACTIVATION", kActivation);
    return kText;
}

Shoot exampleShoot() {
    Shoot shoot;
    shoot.id = testing::numberedId(1);
    shoot.name = "Zomer";
    shoot.location = "Ibiza";
    shoot.client = "Nike";
    shoot.date = testing::kMorning;
    SetData set;
    set.id = testing::numberedId(12);
    set.setNumber = "12";
    set.brand = "Nike";
    set.items = {{testing::numberedId(121), "tee", ""}};
    set.model = "Anna";
    set.location = "Studio A";
    set.timestamp = {795173400.5};
    set.taggedCount = 7;
    set.email = "a@example.com";
    shoot.sets = {set};
    shoot.watchFolderPath = "/x";
    shoot.activationLog = {{set.id, {795173401}}};
    return shoot;
}

std::optional<Shoot> read(std::string_view json) {
    return readShoot(json, DateForm::SecondsSinceReference);
}

std::string written(const Shoot& shoot, DateForm dates = DateForm::SecondsSinceReference) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoot(out, shoot, dates);
    return std::string(out.written());
}

TEST(ShootJson, IsWrittenToTheLetter) {
    EXPECT_EQ(written(exampleShoot()), exampleJson());
}

TEST(ShootJson, WritesDatesAsTextWhenAsked) {
    const auto json = written(exampleShoot(), DateForm::Iso8601);
    auto expected = with(exampleJson(), "795173400.0", "\"2026-03-14T09:30:00Z\"");
    expected = with(expected, "795173400.5", "\"2026-03-14T09:30:00Z\"");
    expected = with(expected, "795173401.0", "\"2026-03-14T09:30:01Z\"");
    EXPECT_EQ(json, expected);
}

TEST(ShootJson, WritesAnEmptyColour) {
    EXPECT_NE(written(exampleShoot()).find(R"("color":"")"), std::string::npos);
}

TEST(ShootJson, WritesOneSetAsItStandsInAShoot) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeSet(out, exampleShoot().sets[0], DateForm::SecondsSinceReference);
    EXPECT_EQ(out.written(), with(kSet, "ITEM", kItem));
}

TEST(ShootJson, ReadsEveryFieldAndKeepsEveryId) {
    const auto shoot = read(exampleJson());
    ASSERT_TRUE(shoot);
    EXPECT_EQ(differences(*shoot, exampleShoot()), "");
}

TEST(ShootJson, SetWithoutTaggedCountAndEmailHasNoneOfEither) {
    auto json = with(exampleJson(), R"("email":"a@example.com",)", "");
    json = with(json, R"("taggedCount":7,)", "");
    const auto shoot = read(json);
    ASSERT_TRUE(shoot);
    EXPECT_EQ(shoot->sets[0].taggedCount, 0);
    EXPECT_EQ(shoot->sets[0].email, "");
}

TEST(ShootJson, SetWithoutEmailKeepsItsTaggedCount) {
    const auto shoot = read(with(exampleJson(), R"("email":"a@example.com",)", ""));
    ASSERT_TRUE(shoot);
    EXPECT_EQ(shoot->sets[0].taggedCount, 7);
    EXPECT_EQ(shoot->sets[0].email, "");
}

TEST(ShootJson, ShootWithoutActivationLogHasAnEmptyOne) {
    const auto shoot =
        read(with(exampleJson(), with(R"("activationLog":[ACTIVATION],)", "ACTIVATION", kActivation), ""));
    ASSERT_TRUE(shoot);
    EXPECT_TRUE(shoot->activationLog.empty());
}

TEST(ShootJson, ShootWithoutWatchFolderPathHasNoneAndIsWrittenWithoutIt) {
    const auto json = with(exampleJson(), R"(,"watchFolderPath":"/x")", "");
    const auto shoot = read(json);
    ASSERT_TRUE(shoot);
    EXPECT_FALSE(shoot->watchFolderPath);
    EXPECT_EQ(written(*shoot), json);
}

TEST(ShootJson, KeepsAWatchFolderPathAndTellsAnEmptyOneFromNone) {
    EXPECT_EQ(written(*read(exampleJson())), exampleJson());
    const auto json = with(exampleJson(), "\"/x\"", "\"\"");
    EXPECT_EQ(read(json)->watchFolderPath, "");
    EXPECT_EQ(written(*read(json)), json);
}

TEST(ShootJson, NullForAnOptionalKeyIsAsIfTheKeyWereMissing) {
    for (const auto& [from, to] : {std::pair{R"("email":"a@example.com")", R"("email":null)"},
                                   std::pair{R"("taggedCount":7)", R"("taggedCount":null)"},
                                   std::pair{R"("watchFolderPath":"/x")", R"("watchFolderPath":null)"}})
        EXPECT_TRUE(read(with(exampleJson(), from, to))) << to;
    EXPECT_EQ(read(with(exampleJson(), R"("email":"a@example.com")", R"("email":null)"))->sets[0].email, "");
    EXPECT_EQ(read(with(exampleJson(), R"("taggedCount":7)", R"("taggedCount":null)"))->sets[0].taggedCount,
              0);
    EXPECT_FALSE(
        read(with(exampleJson(), R"("watchFolderPath":"/x")", R"("watchFolderPath":null)"))->watchFolderPath);
}

TEST(ShootJson, IgnoresUnknownKeysWhateverTheyHold) {
    const std::string open(1'000'000, '[');
    const std::string close(1'000'000, ']');
    for (const auto& value :
         {std::string(R"({"sets":[null,{}],"x":1e5})"), std::string("1e309"), std::string("-1e-999"),
          std::string(400, '9'), std::string(R"(["\ud800"])"), open + close}) {
        const auto json = with(exampleJson(), R"("client")", R"("extra":)" + value + R"(,"Name":1,"client")");
        const auto shoot = read(with(json, R"("color")", R"("":)" + value + R"(,"color")"));
        ASSERT_TRUE(shoot) << value.substr(0, 40);
        EXPECT_EQ(differences(*shoot, exampleShoot()), "");
    }
}

TEST(ShootJson, LastOfEqualKeysHolds) {
    auto json = with(exampleJson(), R"("client":"Nike")", R"("client":"Puma","client":"Nike")");
    json = with(json, R"("taggedCount":7)", R"("taggedCount":8,"taggedCount":7)");
    json = with(json, R"("sets":)", R"("sets":[],"sets":)");
    json = with(json, R"("activationLog":)",
                with(R"("activationLog":[ACTIVATION,ACTIVATION],"activationLog":)", "ACTIVATION,ACTIVATION",
                     kActivation));
    json = with(json, R"("watchFolderPath":"/x")", R"("watchFolderPath":null,"watchFolderPath":"/x")");
    const auto shoot = read(json);
    ASSERT_TRUE(shoot);
    EXPECT_EQ(differences(*shoot, exampleShoot()), "");
    EXPECT_TRUE(read(with(exampleJson(), R"("sets":)",
                          with(R"("sets":[SET],"sets":)", "SET", with(kSet, "ITEM", kItem))))
                    ->sets.size() == 1U);
    EXPECT_EQ(read(with(exampleJson(), R"("taggedCount":7)", R"("taggedCount":7,"taggedCount":null)"))
                  ->sets[0]
                  .taggedCount,
              0);
    EXPECT_FALSE(read(with(exampleJson(), R"("watchFolderPath":"/x")",
                           R"("watchFolderPath":"/x","watchFolderPath":null)"))
                     ->watchFolderPath);
}

TEST(ShootJson, IsMindfulOfTheCaseOfKeys) {
    EXPECT_FALSE(read(with(exampleJson(), R"("setNumber")", R"("setnumber")")));
}

TEST(ShootJson, TakesAWholeNumberInAnyForm) {
    for (const auto* seven : {"7.0", "70e-1", "0.7E1", "7.000"}) {
        EXPECT_EQ(read(with(exampleJson(), R"("taggedCount":7)", R"("taggedCount":)" + std::string(seven)))
                      ->sets[0]
                      .taggedCount,
                  7);
    }
    EXPECT_EQ(read(with(exampleJson(), R"("taggedCount":7)", R"("taggedCount":-9223372036854775808)"))
                  ->sets[0]
                  .taggedCount,
              std::numeric_limits<std::int64_t>::min());
}

TEST(ShootJson, RefusesCountsThatAreNoneAndNumbersOutOfRange) {
    for (const auto* count :
         {"7.5", "9223372036854775808", "-9223372036854775809", "1e19", "1e999", "\"7\"", "true", "[7]"}) {
        EXPECT_FALSE(
            read(with(exampleJson(), R"("taggedCount":7)", R"("taggedCount":)" + std::string(count))))
            << count;
    }
    for (const auto* date : {"1e999", "-1e999", "NaN", "\"795173400\"", "\"2026-03-14T09:30:00Z\"", "null"})
        EXPECT_FALSE(read(with(exampleJson(), "795173400.5", date))) << date;
}

TEST(ShootJson, EachDateFormRefusesTheOther) {
    const auto text = written(exampleShoot(), DateForm::Iso8601);
    EXPECT_TRUE(readShoot(text, DateForm::Iso8601));
    EXPECT_FALSE(readShoot(text, DateForm::SecondsSinceReference));
    EXPECT_FALSE(readShoot(exampleJson(), DateForm::Iso8601));
    EXPECT_FALSE(readShoot(with(text, "2026-03-14T09:30:00Z", "14-03-2026"), DateForm::Iso8601));
}

TEST(ShootJson, RefusesIdsThatAreNone) {
    for (const auto* bad :
         {"", "1", "00000000-0000-4000-8000-00000000000G", "00000000000040008000000000000001"})
        EXPECT_FALSE(read(with(exampleJson(), "00000000-0000-4000-8000-000000000001", bad))) << bad;
}

TEST(ShootJson, SetWithoutARequiredKeyMakesTheWholeListUnreadable) {
    for (const auto* key : {"timestamp", "setNumber", "items"}) {
        const auto list = "[" + exampleJson() + "," +
                          with(exampleJson(), "\"" + std::string(key) + "\"", "\"other\"") + "]";
        EXPECT_FALSE(readShoots(list, DateForm::SecondsSinceReference)) << key;
    }
    EXPECT_EQ(
        readShoots("[" + exampleJson() + "," + exampleJson() + "]", DateForm::SecondsSinceReference)->size(),
        2U);
}

// Each key of the example with the kind of value it wants.
struct Key {
    const char* name;
    char kind;
    bool required;
};

void PrintTo(const Key& each, std::ostream* out) {
    *out << each.name;
}

class ShootJsonKey : public ::testing::TestWithParam<Key> {
protected:
    // Where the value of the key's first member stands, and how long it is.
    static std::pair<std::size_t, std::size_t> valueOf(std::string_view json, std::string_view name) {
        const auto at = json.find("\"" + std::string(name) + "\":") + name.size() + 3;
        int depth = 0;
        bool inText = false;
        for (auto end = at;; ++end) {
            const char c = json[end];
            if (c == '"')
                inText = !inText;
            if (inText)
                continue;
            if (depth == 0 && (c == ',' || c == '}' || c == ']'))
                return {at, end - at};
            depth += c == '[' || c == '{' ? 1 : c == ']' || c == '}' ? -1 : 0;
        }
    }
    [[nodiscard]] static std::string withValue(std::string_view value) {
        auto json = exampleJson();
        const auto [at, length] = valueOf(json, GetParam().name);
        return json.replace(at, length, value);
    }
};

TEST_P(ShootJsonKey, TakesAValueOfItsTypeAndRefusesOthers) {
    using Value = std::pair<char, const char*>;
    for (const auto& [kind, value] : {Value('t', "\"text\""), Value('n', "1.25"), Value('l', "[]"),
                                      Value('o', "{}"), Value('b', "true"), Value('b', "false")})
        EXPECT_EQ(read(withValue(value)).has_value(), kind == GetParam().kind) << value;
}

TEST_P(ShootJsonKey, IsRefusedWithoutAnyValueOrWithGarbage) {
    for (const auto* value : {"", "x", "'a'", "\"", "[", "]", "{", "}", ",", ":", "1 2", "nulll", "NaN",
                              "\"\xFF\"", R"("\ud800")", R"("\udc00")", "[1,]", "[[]", "{\"a\"}"})
        EXPECT_FALSE(read(withValue(value))) << value;
}

TEST_P(ShootJsonKey, MayBeNullOrMissingOnlyWhereItIsOptional) {
    EXPECT_EQ(read(withValue("null")).has_value(), !GetParam().required);
    const auto renamed = with(exampleJson(), "\"" + std::string(GetParam().name) + "\":", "\"renamed\":");
    EXPECT_EQ(read(renamed).has_value(), !GetParam().required);
}

TEST_P(ShootJsonKey, IsRefusedWithAMillionBrackets) {
    const std::string open(1'000'000, '[');
    const std::string close(1'000'000, ']');
    EXPECT_FALSE(read(withValue(open + close)));
    EXPECT_FALSE(read(withValue(open)));
    EXPECT_FALSE(read(withValue("\"x\",\"ignored\":" + open)));
    std::string objects;
    for (int i = 0; i < 1'000'000; ++i)
        objects += "{\"a\":";
    EXPECT_FALSE(read(withValue(objects)));
}

INSTANTIATE_TEST_SUITE_P(
    Keys, ShootJsonKey,
    ::testing::Values(Key{"activationLog", 'l', false}, Key{"client", 't', true}, Key{"date", 'n', true},
                      Key{"sets", 'l', true}, Key{"name", 't', true}, Key{"watchFolderPath", 't', false},
                      Key{"activatedAt", 'n', true}, Key{"setId", '-', true}, Key{"brand", 't', true},
                      Key{"email", 't', false}, Key{"id", '-', true}, Key{"items", 'l', true},
                      Key{"location", 't', true}, Key{"model", 't', true}, Key{"setNumber", 't', true},
                      Key{"taggedCount", '-', false}, Key{"timestamp", 'n', true}, Key{"color", 't', true}));

TEST(ShootJson, IsUnreadableWhereverItIsCutOff) {
    const auto& json = exampleJson();
    for (std::size_t length = 0; length < json.size(); ++length)
        EXPECT_FALSE(read(std::string_view(json).substr(0, length))) << length;
    EXPECT_TRUE(read(json));
}

TEST(ShootJson, IsUnreadableWithGarbageBehindIt) {
    for (const auto* garbage : {"x", ",", "}", "{}", "null", "\xFF", "\uFEFF"})
        EXPECT_FALSE(read(exampleJson() + garbage)) << garbage;
    EXPECT_FALSE(read(exampleJson() + std::string(1, '\0')));
    EXPECT_TRUE(read(" \r\n\t" + exampleJson() + " \r\n\t"));
    EXPECT_TRUE(read("\uFEFF" + exampleJson()));
}

TEST(ShootJson, IsNeitherAListNorAnythingElse) {
    for (const auto& json :
         {std::string(), std::string("null"), std::string("{}"), std::string("[]"), "[" + exampleJson() + "]",
          std::string("\"shoot\""), std::string("7"), std::string(1'000'000, '['), std::string(1000, '\0')})
        EXPECT_FALSE(read(json)) << json.substr(0, 40);
    EXPECT_FALSE(readShoots(exampleJson(), DateForm::SecondsSinceReference));
    EXPECT_EQ(readShoots("[]", DateForm::SecondsSinceReference)->size(), 0U);
    for (const auto* list : {"[null]", "[{}]", "[[]]", "[1]", "[,]", "[", "{\"shoots\":[]}"})
        EXPECT_FALSE(readShoots(list, DateForm::SecondsSinceReference)) << list;
}

RC_GTEST_PROP(ShootJsonProperty, ReadsBackToTheLastBitWithNumberDates, ()) {
    const auto shoots = *testing::generated<std::vector<Shoot>>();
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, shoots, DateForm::SecondsSinceReference);
    const auto back = readShoots(out.written(), DateForm::SecondsSinceReference);
    RC_ASSERT(back.has_value());
    RC_ASSERT(differences(*back, shoots) == "");
}

RC_GTEST_PROP(ShootJsonProperty, ReadsBackToTheSecondWithTextDates, ()) {
    const auto shoot = *testing::generated<Shoot>({.moments = testing::wholeSecond()});
    JsonWriter out(JsonWriter::Layout::Indented);
    writeShoot(out, shoot, DateForm::Iso8601);
    const auto back = readShoot(out.written(), DateForm::Iso8601);
    RC_ASSERT(back.has_value());
    RC_ASSERT(differences(*back, shoot) == "");
}

RC_GTEST_PROP(ShootJsonProperty, NoBytesAreACrashAndWhatIsReadCanBeWritten, ()) {
    const auto json = *rc::gen::oneOf(testing::bytes(), testing::text(), testing::damaged(exampleJson()));
    if (const auto shoot = read(json)) {
        const auto back = read(written(*shoot));
        RC_ASSERT(back.has_value());
        RC_ASSERT(differences(*back, *shoot) == "");
    }
}

} // namespace
} // namespace vantor
