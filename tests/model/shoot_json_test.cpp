#include "model/shoot_json.h"
#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using namespace std::string_literals;
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

TEST(ShootJson, IsWrittenToTheLetterAndEveryFieldRead) {
    EXPECT_EQ(written(exampleShoot()), exampleJson());
    EXPECT_EQ(differences(read(exampleJson()).value(), exampleShoot()), "");
}

TEST(ShootJson, OptionalFieldThatIsMissingOrNullHasTheValueItIsMadeWith) {
    struct Case {
        std::string key;
        std::string value;
        std::function<void(Shoot&)> remove;
    };
    for (const auto& [key, value, remove] :
         {Case{"email", R"("a@example.com")", [](Shoot& shoot) { shoot.sets[0].email = ""; }},
          Case{"taggedCount", "7", [](Shoot& shoot) { shoot.sets[0].taggedCount = 0; }},
          Case{"watchFolderPath", R"("/x")", [](Shoot& shoot) { shoot.watchFolderPath.reset(); }},
          Case{"activationLog", "[" + std::string(kActivation) + "]",
               [](Shoot& shoot) { shoot.activationLog.clear(); }}}) {
        SCOPED_TRACE(key);
        auto expected = exampleShoot();
        remove(expected);
        const auto member = "\"" + key + "\":" + value;
        for (const auto& other :
             {R"("other":1)"s, "\"" + key + "\":null", member + ",\"" + key + "\":null"}) {
            const auto shoot = read(with(exampleJson(), member, other));
            ASSERT_TRUE(shoot) << other;
            EXPECT_EQ(differences(*shoot, expected), "") << other;
        }
    }
}

TEST(ShootJson, LeavesOutAnAbsentWatchFolderPathAndTellsAnEmptyOneFromNone) {
    for (const auto* member : {R"(,"watchFolderPath":"/x")", R"(,"watchFolderPath":"")", ""}) {
        const auto json = with(exampleJson(), R"(,"watchFolderPath":"/x")", member);
        EXPECT_EQ(written(read(json).value()), json);
    }
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
    json = with(json, R"("sets":)", with(R"("sets":[SET],"sets":)", "SET", with(kSet, "ITEM", kItem)));
    json = with(json, R"("activationLog":)",
                R"("activationLog":[)" + std::string(kActivation) + R"(],"activationLog":)");
    json = with(json, R"("watchFolderPath":"/x")", R"("watchFolderPath":null,"watchFolderPath":"/x")");
    const auto shoot = read(json);
    ASSERT_TRUE(shoot);
    EXPECT_EQ(differences(*shoot, exampleShoot()), "");
}

TEST(ShootJson, RefusesCountsThatAreNoneAndNumbersOutOfRange) {
    const auto counting = [](const std::string& count) {
        return read(with(exampleJson(), R"("taggedCount":7)", R"("taggedCount":)" + count));
    };
    for (const auto* count : {"7.0", "-9223372036854775808"})
        EXPECT_TRUE(counting(count)) << count;
    for (const auto* count : {"7.5", "9223372036854775808", "1e999", "\"7\"", "true", "[7]"})
        EXPECT_FALSE(counting(count)) << count;
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

TEST(ShootJson, OneBadShootMakesTheWholeListUnreadable) {
    const auto bad = with(exampleJson(), R"("timestamp")", R"("other")");
    EXPECT_FALSE(readShoots("[" + exampleJson() + "," + bad + "]", DateForm::SecondsSinceReference));
    const auto good = "[" + exampleJson() + "," + exampleJson() + "]";
    EXPECT_EQ(readShoots(good, DateForm::SecondsSinceReference).value().size(), 2U);
}

// Where the value of the key's first member stands, and how long it is.
std::pair<std::size_t, std::size_t> valueOf(std::string_view json, std::string_view key) {
    const auto at = json.find("\"" + std::string(key) + "\":") + key.size() + 3;
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

template <typename Record>
class ShootJsonFields : public ::testing::Test {};

using Records = ::testing::Types<SetItem, SetData, SetActivation, Shoot>;
TYPED_TEST_SUITE(ShootJsonFields, Records, );

// Texts, numbers, lists; ids and counts take none of the values below.
template <typename Value>
constexpr char kKind = ValueList<Value> ? 'l' : 'o';
template <>
constexpr char kKind<std::string> = 't';
template <>
constexpr char kKind<std::optional<std::string>> = 't';
template <>
constexpr char kKind<Timestamp> = 'n';

TYPED_TEST(ShootJsonFields, TakeAValueOfTheirTypeAndNothingElse) {
    const std::string open(1'000'000, '[');
    const std::string close(1'000'000, ']');
    std::string objects;
    for (int i = 0; i < 1'000'000; ++i)
        objects += "{\"a\":";
    forEachField<TypeParam>([&]<typename Value>(const Field<TypeParam, Value>& field) {
        SCOPED_TRACE(std::string(field.key));
        const auto isRead = [&](const std::string& value) {
            auto json = exampleJson();
            const auto [at, length] = valueOf(json, field.key);
            return read(json.replace(at, length, value)).has_value();
        };
        using Kind = std::pair<char, const char*>;
        for (const auto& [kind, value] : {Kind{'t', "\"text\""}, Kind{'n', "1.25"}, Kind{'l', "[]"},
                                          Kind{'-', "{}"}, Kind{'-', "true"}, Kind{'-', "false"}})
            EXPECT_EQ(isRead(value), kind == kKind<Value>) << value;
        for (const auto* value : {"", "x", "'a'", "\"", "[", "]", "{", "}", ",", ":", "1 2", "nulll", "NaN",
                                  "\"\xFF\"", R"("\ud800")", R"("\udc00")", "[1,]", "[[]", "{\"a\"}"})
            EXPECT_FALSE(isRead(value)) << value;
        EXPECT_EQ(isRead("null"), !field.isRequired);
        const auto key = "\"" + std::string(field.key) + "\":";
        EXPECT_EQ(read(with(exampleJson(), key, "\"renamed\":")).has_value(), !field.isRequired);
        EXPECT_FALSE(isRead(open + close));
        EXPECT_FALSE(isRead(open));
        EXPECT_FALSE(isRead("\"x\",\"ignored\":" + open));
        EXPECT_FALSE(isRead(objects));
    });
}

TEST(ShootJson, IsNeitherAListNorAnythingElseAndHasNoGarbageBehindIt) {
    for (const auto& json : {""s, "null"s, "{}"s, "[]"s, "[" + exampleJson() + "]", "\"shoot\""s, "7"s,
                             std::string(1'000'000, '['), std::string(1000, '\0')})
        EXPECT_FALSE(read(json)) << json.substr(0, 40);
    for (const auto& garbage : {"x"s, ","s, "}"s, "{}"s, "null"s, "\xFF"s, "\uFEFF"s, "\0"s})
        EXPECT_FALSE(read(exampleJson() + garbage)) << garbage;
    EXPECT_TRUE(read("\uFEFF \r\n\t" + exampleJson() + " \r\n\t"));
    for (const auto& list :
         {exampleJson(), "[null]"s, "[{}]"s, "[[]]"s, "[1]"s, "[,]"s, "["s, "{\"shoots\":[]}"s})
        EXPECT_FALSE(readShoots(list, DateForm::SecondsSinceReference)) << list;
    EXPECT_EQ(readShoots("[]", DateForm::SecondsSinceReference).value().size(), 0U);
}

RC_GTEST_PROP(ShootJsonProperty, ReadsBackToTheLastBitWithNumberDates, ()) {
    const auto shoots = *testing::generated<std::vector<Shoot>>();
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, shoots, DateForm::SecondsSinceReference);
    const auto back = readShoots(out.written(), DateForm::SecondsSinceReference);
    RC_ASSERT(back.has_value());
    RC_ASSERT(differences(*back, shoots) == "");
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
