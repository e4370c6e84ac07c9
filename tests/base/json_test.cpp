#include "base/json.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using testing::repeated;
using namespace std::string_literals;

std::string written(JsonWriter::Layout layout, const std::function<void(JsonWriter&)>& write) {
    JsonWriter out(layout);
    write(out);
    return std::string(out.written());
}

std::string compact(const std::function<void(JsonWriter&)>& write) {
    return written(JsonWriter::Layout::Compact, write);
}

template <typename Value>
std::optional<Value> whole(std::string_view json, bool (JsonReader::*read)(Value&)) {
    JsonReader in(json);
    Value value{};
    if (!(in.*read)(value) || !in.finished())
        return std::nullopt;
    return value;
}

std::optional<std::string> text(std::string_view json) {
    return whole<std::string>(json, &JsonReader::readText);
}

std::optional<double> number(std::string_view json) {
    return whole<double>(json, &JsonReader::readNumber);
}

std::optional<std::int64_t> integer(std::string_view json) {
    return whole<std::int64_t>(json, &JsonReader::readInteger);
}

bool skipsWhole(std::string_view json) {
    JsonReader in(json);
    in.skip();
    return in.finished();
}

std::string nested(std::string_view open, int depth, std::string_view middle, std::string_view close) {
    return repeated(depth, open) + std::string(middle) + repeated(depth, close);
}

void writeExample(JsonWriter& out) {
    out.startObject();
    out.key("a");
    out.startArray();
    out.integer(1);
    out.number(0.5);
    out.endArray();
    out.key("b");
    out.startArray();
    out.endArray();
    out.key("c");
    out.startObject();
    out.endObject();
    out.key("d");
    out.text("é/\"\n");
    out.endObject();
}

TEST(JsonWriter, WritesCompactWithoutAnySpaceOrIndentedByTwo) {
    EXPECT_EQ(compact(writeExample), R"({"a":[1,0.5],"b":[],"c":{},"d":"é/\"\n"})");
    EXPECT_EQ(written(JsonWriter::Layout::Indented, writeExample), "{\n"
                                                                   "  \"a\": [\n"
                                                                   "    1,\n"
                                                                   "    0.5\n"
                                                                   "  ],\n"
                                                                   "  \"b\": [],\n"
                                                                   "  \"c\": {},\n"
                                                                   "  \"d\": \"é/\\\"\\n\"\n"
                                                                   "}");
}

TEST(JsonWriter, EscapesControlCharactersAndNothingThatNeedsNone) {
    EXPECT_EQ(compact([](JsonWriter& out) { out.text("\0\x01\x1F\b\f\r\t\\/\x7F\u2028"s); }),
              "\"\\u0000\\u0001\\u001F\\b\\f\\r\\t\\\\/\x7F\u2028\"");
    EXPECT_EQ(compact([](JsonWriter& out) { out.text({}); }), "\"\"");
}

TEST(JsonWriter, WritesAsZeroWhatJsonCannotHold) {
    using Limits = std::numeric_limits<double>;
    for (const auto value : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        const auto json = compact([&](JsonWriter& out) { out.number(value); });
        EXPECT_EQ(number(json), 0) << json;
    }
}

TEST(JsonReader, ReadsMembersAndElementsInOrder) {
    JsonReader in(R"( { "x" : [ 1 , 2 ] , "y" : { } , "x" : "again" } )");
    std::vector<std::string> heard;
    EXPECT_TRUE(in.readObject([&](std::string_view key) {
        heard.emplace_back(key);
        if (heard.size() > 1) {
            in.skip();
            return;
        }
        in.readArray([&] {
            std::int64_t value = 0;
            in.readInteger(value);
            heard.push_back(std::to_string(value));
        });
    }));
    EXPECT_TRUE(in.finished());
    EXPECT_THAT(heard, ElementsAre("x", "1", "2", "y", "x"));
}

TEST(JsonReader, ReadsEscapesAndPassesOverAByteOrderMarkInFront) {
    EXPECT_EQ(text("\"\xED\x9F\xBF\xEE\x80\x80\""), "\xED\x9F\xBF\xEE\x80\x80");
    EXPECT_EQ(text(R"("\"\\\/\b\f\n\r\t\u00e9\u0000\uD83D\uDC69")"), "\"\\/\b\f\n\r\t\u00E9\0\U0001F469"s);
    EXPECT_EQ(text("\uFEFF\"a\""), "a");
    EXPECT_FALSE(text("\uFEFF\uFEFF\"a\""));
    EXPECT_FALSE(text("\"a\"\uFEFF"));
}

TEST(UnreadableText, IsAFailureWhetherReadOrSkipped) {
    for (const auto& json : testing::tableOf<std::string>(
             "\"", "\"a", "\"\\\"", "\"\\x\"", "\"\\u12\"", "\"\\u12G4\"", "'a'", "\"\n\"", "\"\t\"",
             "\"\0\""s, "\"\x1F\"", "\"\xFF\"", "\"\xC3\"", "\"\xC0\xAF\"", "\"\xED\xA0\x80\"",
             "\"\xF4\x90\x80\x80\"", "\"\xE2\x82\"")) {
        SCOPED_TRACE(::testing::PrintToString(json));
        EXPECT_FALSE(text(json));
        EXPECT_FALSE(skipsWhole(json));
        EXPECT_FALSE(skipsWhole("[" + json + "]"));
        EXPECT_FALSE(skipsWhole("{" + json + ":1}"));
    }
}

TEST(ReadNumber, IsWhatItSaysOrAFailure) {
    struct Number {
        std::string json;
        std::optional<double> number;
        std::optional<std::int64_t> integer;
    };
    for (const auto& [json, asNumber, asInteger] : testing::tableOf(
             Number{"0", 0, 0}, Number{"-0", 0, 0}, Number{"7.0", 7, 7}, Number{"7.5", 7.5, {}},
             Number{"70e-1", 7, 7}, Number{"1E2", 100, 100}, Number{"-12", -12, -12},
             Number{"9223372036854775807", 0x1p63, std::numeric_limits<std::int64_t>::max()},
             Number{"9223372036854775808", 0x1p63, {}},
             Number{"-9223372036854775808", -0x1p63, std::numeric_limits<std::int64_t>::min()},
             Number{"9223372036854774784.0", 0x1.fffffffffffffp62, 9223372036854774784},
             Number{"-9223372036854774784.0", -0x1.fffffffffffffp62, -9223372036854774784},
             Number{"-9223372036854775809", -0x1p63, {}}, Number{"18446744073709551615", 0x1p64, {}},
             Number{"18446744073709551616", 0x1p64, {}}, Number{"1e999", {}, {}}, Number{"-1e999", {}, {}},
             Number{"1e-999", {}, {}}, Number{"5e-324", 5e-324, {}},
             Number{"1.7976931348623157e308", 1.7976931348623157e308, {}},
             Number{"795173400.123456", 795173400.123456, {}}, Number{"0.1", 0.1, {}},
             Number{"123456789012345678901234567890", 123456789012345678901234567890.0, {}},
             Number{"+1", {}, {}}, Number{".5", {}, {}}, Number{"1.", {}, {}}, Number{"01", {}, {}},
             Number{"0x1", {}, {}}, Number{"1e", {}, {}}, Number{"-", {}, {}}, Number{"", {}, {}},
             Number{"NaN", {}, {}}, Number{"Infinity", {}, {}}, Number{"1,5", {}, {}}, Number{"1 2", {}, {}},
             Number{"\"1\"", {}, {}}, Number{"true", {}, {}}, Number{"null", {}, {}}, Number{"[1]", {}, {}},
             Number{"{}", {}, {}})) {
        SCOPED_TRACE(::testing::PrintToString(json));
        EXPECT_EQ(number(json), asNumber);
        EXPECT_EQ(integer(json), asInteger);
    }
}

TEST(UnreadableJson, IsAFailureHoweverItIsRead) {
    for (const auto& json : testing::tableOf<std::string>(
             "", " ", "\uFEFF", "[", "]", "{", "}", "[1", "[1,", "[1,]", "[,1]", "[,]", "[1 2]", "[1]]",
             "[1],", "[1] x", "[1]\0"s, "{\"a\"", "{\"a\":", "{\"a\":1", "{\"a\":1,", "{\"a\":1,}",
             "{,\"a\":1}", "{\"a\" 1}", "{\"a\":}", "{a:1}", "{'a':1}", "{1:1}", "{null:1}",
             "{\"a\":1 \"b\":2}", "{\"a\":1}{", "[}", "{]", "[1}", "{\"a\":1]", "[tru]", "[nul]", "[True]",
             "[undefined]", "// [1]", "[1] // x", "[/* */1]", "nul", "[\"a]", "\0[1]"s)) {
        SCOPED_TRACE(::testing::PrintToString(json));
        EXPECT_FALSE(skipsWhole(json));
        JsonReader in(json);
        // Member by member, the other of the two ways.
        if (!in.takeNull() && json.find('{') < json.find('['))
            in.readObject([&](std::string_view) { in.skip(); });
        else
            in.readArray([&] { in.skip(); });
        EXPECT_FALSE(in.finished());
        EXPECT_TRUE(in.failed());
    }
}

TEST(JsonReader, PassesOverValuesHoweverDeepTheyAreNested) {
    for (const auto& [open, close] : {std::pair{"[", "]"}, std::pair{"{\"a\":", "}"}}) {
        EXPECT_TRUE(skipsWhole(nested(open, 1'000'000, "1", close)));
        EXPECT_FALSE(skipsWhole(nested(open, 1'000'000, "1", close) + close));
        EXPECT_FALSE(skipsWhole(nested(open, 1'000'000, "", "")));
    }
    EXPECT_TRUE(skipsWhole(nested("[{\"a\":", 1'000, "[]", "},{},[]]")));
    EXPECT_FALSE(skipsWhole(nested("[{\"a\":", 1'000, "[]", "]}")));
}

TEST(JsonReader, GivesWhatItPassesOverAsItIsWritten) {
    // The last of these are texts and numbers that no value can hold.
    for (const std::string_view json :
         {R"({"a" : [1, "\u00e9"]})", "[ ]", "{}", "true", "false", "null", "-0.5E+07", R"("\ud800")",
          R"({"\udc00":"\ud800"})", "1e309", "-1e-999999999999"}) {
        const auto text = " \t" + std::string(json) + "\r\n";
        JsonReader in(text);
        EXPECT_EQ(in.skip(), json);
        EXPECT_TRUE(in.finished()) << json;
    }
    EXPECT_TRUE(skipsWhole(std::string(400, '9')));
}

// Which are skipped all the same, above.
TEST(JsonReader, ReadsNoHalfCharactersNorBracketsInPlaceOfAValue) {
    for (const auto* half :
         {R"("\ud800")", R"("\udc00")", R"("\ud800\ud800")", R"("\ud800a")", R"("\udc00\ud800")"})
        EXPECT_FALSE(text(half)) << half;
    for (const auto& deep : {nested("[", 1'000'000, "", "]"), nested("{\"a\":", 1'000'000, "1", "}")}) {
        EXPECT_FALSE(text(deep));
        EXPECT_FALSE(number(deep));
        EXPECT_FALSE(integer(deep));
    }
}

TEST(JsonReader, FailsForGoodOnceItHasFailed) {
    JsonReader in("[1,2]");
    std::string value;
    EXPECT_FALSE(in.readText(value));
    EXPECT_TRUE(in.failed());
    EXPECT_FALSE(in.readArray([] { FAIL(); }));
    EXPECT_FALSE(in.readObject([](std::string_view) { FAIL(); }));
    EXPECT_FALSE(in.takeNull());
    double number = 0;
    EXPECT_FALSE(in.readNumber(number));
    in.skip();
    EXPECT_FALSE(in.finished());
}

TEST(JsonReader, TakesANullAndLeavesAnythingElseStanding) {
    JsonReader in("[null,1,nil]");
    std::vector<bool> nulls;
    EXPECT_FALSE(in.readArray([&] {
        nulls.push_back(in.takeNull());
        if (!nulls.back() && !in.failed())
            in.skip();
    }));
    EXPECT_THAT(nulls, ElementsAre(true, false, false));
}

RC_GTEST_PROP(JsonProperty, ValuesReadBackAsWrittenToTheLastBit, (std::uint64_t bits, std::int64_t whole)) {
    const auto value = *testing::text();
    for (const auto layout : {JsonWriter::Layout::Compact, JsonWriter::Layout::Indented})
        RC_ASSERT(text(written(layout, [&](JsonWriter& out) { out.text(value); })) == value);
    RC_ASSERT(integer(compact([&](JsonWriter& out) { out.integer(whole); })) == whole);
    const auto real = std::bit_cast<double>(bits);
    RC_PRE(std::isfinite(real));
    const auto read = number(compact([&](JsonWriter& out) { out.number(real); }));
    RC_ASSERT(read.has_value());
    RC_ASSERT(std::bit_cast<std::uint64_t>(*read) == bits);
}

RC_GTEST_PROP(JsonProperty, NoBytesAreACrash, ()) {
    const auto json =
        *rc::gen::oneOf(testing::bytes(), testing::text(), testing::damaged(compact(writeExample)));
    const bool isJson = skipsWhole(json);
    JsonReader in(json);
    in.readObject([&](std::string_view) { in.skip(); });
    if (in.finished())
        RC_ASSERT(isJson);
    static_cast<void>(text(json));
    static_cast<void>(number(json));
    static_cast<void>(integer(json));
}

} // namespace
} // namespace vantor
