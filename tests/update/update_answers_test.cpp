// What the checker makes of every kind of answer. A good one is published and remembered; a bad one leaves no
// trace but the time of the check. No answer makes anything but a web address of what the browser is given.

#include "tests/support/manual_timer.h"
#include "tests/support/memory_key_value_store.h"
#include "tests/support/scripted_http_client.h"
#include "tests/support/standing_clock.h"
#include "update/update_checker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {
namespace {

using namespace std::string_literals;
using ::testing::AnyOf;
using ::testing::IsEmpty;
using testing::ManualTimer;
using testing::MemoryKeyValueStore;
using testing::ScriptedHttpClient;
using testing::StandingClock;
using ::testing::StartsWith;

using Text = std::optional<std::string>;

constexpr const char* kVersionKey = "check.lastKnownVersion";
constexpr const char* kURLKey = "check.lastKnownDownloadURL";
constexpr const char* kDateKey = "check.lastCheckDate";
constexpr const char* kDownload = "https://vantor.example/download";
constexpr const char* kRememberedVersion = "2.0";
constexpr const char* kRememberedURL = "https://vantor.example/2.0";
constexpr Timestamp kNow{800'000'000.25};

struct Answer {
    std::string name;
    Text body;
    // Where version 3.0 can be downloaded; absent where the answer is a bad one.
    Text url;
};

void PrintTo(const Answer& each, std::ostream* out) {
    *out << each.name;
}

// What the checker knows before the answer comes, from an earlier run.
enum class Memory { None, Newer };

void PrintTo(Memory memory, std::ostream* out) {
    *out << (memory == Memory::None ? "nothing known" : "a newer version known");
}

class UpdateAnswersTest : public ::testing::TestWithParam<std::tuple<Answer, Memory>> {
protected:
    UpdateAnswersTest() {
        if (std::get<Memory>(GetParam()) == Memory::Newer) {
            defaults.setText(kVersionKey, kRememberedVersion);
            defaults.setText(kURLKey, kRememberedURL);
        }
    }

    UpdateChecker makeChecker() {
        return {"https://vantor.example/version", "check", "1.9.9", client, defaults, timer, clock.clock()};
    }

    ScriptedHttpClient client;
    MemoryKeyValueStore defaults;
    ManualTimer timer;
    StandingClock clock{kNow};
};

TEST_P(UpdateAnswersTest, IsBelievedWholeOrLeavesNoTraceButItsTime) {
    const auto& answer = std::get<Answer>(GetParam());
    auto checker = makeChecker();
    const auto versionBefore = checker.availableVersion();
    const auto urlBefore = checker.downloadURL();
    int changes = 0;
    const auto subscription = checker.willChange().connect([&](UpdateChecker::Change) { ++changes; });

    checker.checkForUpdate();
    client.answer(answer.body);

    const auto version = answer.url ? Text("3.0") : versionBefore;
    const auto url = answer.url ? answer.url : urlBefore;
    EXPECT_EQ(checker.availableVersion(), version);
    EXPECT_EQ(checker.downloadURL(), url);
    EXPECT_EQ(changes, answer.url ? 2 : 0);
    EXPECT_EQ(defaults.text(kVersionKey), version);
    EXPECT_EQ(defaults.text(kURLKey), url);
    ASSERT_TRUE(defaults.date(kDateKey));
    EXPECT_EQ(defaults.date(kDateKey)->secondsSinceReference, kNow.secondsSinceReference);
    EXPECT_EQ(defaults.values.size(), version ? 3U : 1U);

    const auto next = makeChecker();
    EXPECT_EQ(next.availableVersion(), version);
    EXPECT_EQ(next.downloadURL(), url);
    if (url) {
        EXPECT_THAT(*url, AnyOf(StartsWith("https://"), StartsWith("http://"), StartsWith("HTTPS://"),
                                StartsWith("hTTp://")));
    }
}

// The answer whose address stands as given between the quotes.
std::string withURL(std::string_view inQuotes) {
    return R"({"version":"3.0","download_url":")" + std::string(inQuotes) + R"("})";
}

// The answer whose member reads as given.
std::string withURLValue(std::string_view value) {
    return R"({"version":"3.0","download_url":)" + std::string(value) + "}";
}
std::string withVersionValue(std::string_view value) {
    return R"({"version":)" + std::string(value) + R"(,"download_url":"https://vantor.example/download"})";
}

std::vector<Answer> addresses() {
    std::vector<Answer> answers;
    const auto web = [&](const char* name, const std::string& url) {
        answers.push_back({name, withURL(url), url});
    };
    const auto other = [&](const char* name, std::string_view inQuotes) {
        answers.push_back({name, withURL(inQuotes), std::nullopt});
    };
    web("Https", kDownload);
    web("Http", "http://vantor.example/download");
    web("HttpsInCapitals", "HTTPS://VANTOR.EXAMPLE/DOWNLOAD");
    web("HttpInBothCases", "hTTp://vantor.example");
    web("Port", "https://vantor.example:8443/");
    web("UserInfo", "https://vantor.example:x@elsewhere.example/");
    web("Punycode", "https://xn--vantr-kua.example/");
    web("Ipv4", "http://127.0.0.1/");
    web("Ipv6", "https://[2001:db8::1]:443/x");
    web("QueryAndFragment", "https://vantor.example/d?v=3.0&os=linux#top");
    web("EscapedLineFeed", "https://vantor.example/%0D%0Ax");
    web("SchemeWithinThePath", "https://vantor.example/javascript:alert(1)");
    web("LongPath", "https://vantor.example/" + std::string(60'000, 'x'));
    answers.push_back(
        {"JsonEscapes", withURL(R"(https:\/\/vantor.example\/downl\u006Fad)"), Text(kDownload)});

    other("Javascript", "javascript:alert(1)");
    other("JavascriptInCapitals", "JAVASCRIPT:alert(1)");
    other("JavascriptWithAHost", "javascript://vantor.example/%0aalert(1)");
    other("JavascriptWithATabInside", R"(java\tscript:alert(1))");
    other("JavascriptBehindABlank", " javascript:alert(1)");
    other("Data", "data:text/html,<b>x</b>");
    other("DataBase64", "data:text/html;base64,PGI+");
    other("File", "file:///etc/passwd");
    other("FileOnAHost", "file://vantor.example/etc/passwd");
    other("FileInCapitals", "FILE:///etc/passwd");
    other("Ftp", "ftp://vantor.example/prep");
    other("Sftp", "sftp://vantor.example/prep");
    other("Mailto", "mailto:a@vantor.example");
    other("Telephone", "tel:+31201234567");
    other("Share", "smb://vantor.example/prep");
    other("WebSocket", "wss://vantor.example/");
    other("Blob", "blob:https://vantor.example/1");
    other("About", "about:blank");
    other("ViewSource", "view-source:https://vantor.example/");
    other("Intent", "intent://vantor.example/#Intent;scheme=https;end");
    other("OwnScheme", "vantor-prep://open");
    other("LongerScheme", "httpsx://vantor.example/");
    other("SchemeInFront", "xhttps://vantor.example/");
    other("NestedSchemes", "https:https://vantor.example/");
    other("SchemeOfOtherLetters", "\xEF\xBD\x88ttps://vantor.example/");
    other("Empty", "");
    other("Blank", " ");
    other("BlankInFront", " https://vantor.example/");
    other("BlankBehind", "https://vantor.example/ ");
    other("BlankWithin", "https://vantor.example/a b");
    other("BlankInTheHost", "https://vantor example/");
    other("TabInFront", R"(\thttps://vantor.example/)");
    other("LineFeedBehind", R"(https://vantor.example/\n)");
    other("LineFeedWithin", R"(https://vantor.example/\r\nx)");
    other("NulBehind", R"(https://vantor.example/\u0000)");
    other("NulInTheHost", R"(https://vantor.example\u0000.elsewhere.example/)");
    other("ControlCharacter", R"(https://vantor.example/\u0007)");
    other("Delete", "https://vantor.example/\x7F");
    other("NextLineCharacter", R"(https://vantor.example/\u0085)");
    other("NoBreakSpaceInFront", R"(\u00A0https://vantor.example/)");
    other("ZeroWidthSpaceInFront", R"(\u200Bhttps://vantor.example/)");
    other("ByteOrderMarkInFront", R"(\uFEFFhttps://vantor.example/)");
    other("RightToLeftOverride", R"(https://vantor.example/\u202Efdp)");
    other("UnescapedHost", "https://vant\xC3\xB8r.example/");
    other("LookAlikeHost", "https://v\xD0\xB0ntor.example/");
    other("FullWidthPoint", "https://vantor\xEF\xBC\x8E"
                            "example/");
    other("BackslashBeforeAt", R"(https://vantor.example\\@elsewhere.example/)");
    other("BackslashesForSlashes", R"(https:\\\\vantor.example\\download)");
    other("TwoAts", "https://vantor.example@elsewhere.example@x/");
    other("UserWithoutHost", "https://vantor@/");
    other("PortWithoutHost", "https://:443/");
    other("PortThatIsNoNumber", "https://vantor.example:download/");
    other("PortOfManyDigits", "https://vantor.example:4294967739/");
    other("BracketLeftOpen", "https://[2001:db8::1/");
    other("BrokenEscape", "https://vantor.example/%4");
    other("Markup", "https://vantor.example/<b>");
    other("Quote", R"(https://vantor.example/\")");
    other("InAngleBrackets", "<https://vantor.example/>");
    other("NoHost", "https://");
    other("NoHostButAPath", "https:///download");
    other("NoHostButAQuery", "https://?download");
    other("NoSlashes", "https:vantor.example");
    other("OneSlash", "https:/vantor.example");
    other("SchemeOnly", "https");
    other("SchemeRelative", "//vantor.example/download");
    other("Path", "/download");
    other("RelativePath", "download");
    other("ParentPath", "../download");
    other("QueryOnly", "?v=3.0");
    other("HostOnly", "vantor.example");
    other("WindowsPath", R"(C:\\prep.exe)");
    other("WindowsShare", R"(\\\\vantor.example\\prep)");
    other("Words", "geen adres");
    for (const auto* const value : {"null", "true", "7", "[]", R"(["https://vantor.example/"])",
                                    R"({"url":"https://vantor.example/"})"})
        answers.push_back({"UrlValue" + std::to_string(answers.size()), withURLValue(value), std::nullopt});
    return answers;
}

std::vector<Answer> shapes() {
    std::vector<Answer> answers;
    const auto good = [&](const char* name, const std::string& body) {
        answers.push_back({name, body, kDownload});
    };
    const auto bad = [&](const char* name, const Text& body) {
        answers.push_back({name, body, std::nullopt});
    };
    const auto plain = withURL(kDownload);
    const auto members = plain.substr(1, plain.size() - 2);
    const auto nested = [&](std::size_t depth) {
        return R"({"a":)" + std::string(depth, '[') + std::string(depth, ']') + "," + members + "}";
    };

    good("Plain", plain);
    good("SpreadOut", "\r\n\t { \"download_url\" : \"https://vantor.example/download\" ,\n \"version\" : "
                      "\"\\u0033.0\" } \r\n");
    good("OtherMembers", R"({"a":[1,{"version":"9"}],"b":null,"c":-1.5e5,"":"",)" + members + "}");
    good("EscapedKeys", R"({"\u0076ersion":"3.0","download\u005Furl":"https://vantor.example/download"})");
    good("ByteOrderMark", "\xEF\xBB\xBF" + plain);
    good("NestedAsDeepAsCanBe", nested(512));
    good("VeryLarge", R"({"notes":")" + std::string(65'000, 'x') + "\"," + members + "}");
    good("LastOfSeveralUrls", R"({"version":"3.0","download_url":"javascript:x",)" + members + "}");

    bad("FirstOfSeveralUrls", "{" + members + R"(,"download_url":"javascript:x"})");
    bad("NoBody", std::nullopt);
    bad("NothingInIt", "");
    bad("Blanks", " \r\n\t");
    bad("ByteOrderMarkOnly", "\xEF\xBB\xBF");
    bad("TwoByteOrderMarks", "\xEF\xBB\xBF\xEF\xBB\xBF" + plain);
    bad("PlainText", "3.0 https://vantor.example/download");
    bad("WebPage", "<!DOCTYPE html><title>3.0</title>");
    bad("WebPageWithTheAnswerInIt", "<script>" + plain + "</script>");
    bad("Null", "null");
    bad("True", "true");
    bad("Number", "3.0");
    bad("String", "\"3.0\"");
    bad("EmptyArray", "[]");
    bad("AnswerInAnArray", "[" + plain + "]");
    bad("AnswerInAnObject", R"({"data":)" + plain + "}");
    bad("EmptyObject", "{}");
    bad("NestedTooDeep", nested(513));
    bad("NestedWithoutEnd", R"({"a":)" + std::string(60'000, '['));
    bad("NotClosed", "{" + members);
    bad("NotOpened", members + "}");
    bad("TextBehind", plain + "x");
    bad("SecondObjectBehind", plain + "{}");
    bad("CommaBehindTheLast", "{" + members + ",}");
    bad("NoCommaBetween", R"({"a":1 )" + members + "}");
    bad("Comment", "{/* 3.0 */" + members + "}");
    bad("SingleQuotes", "{'version':'3.0','download_url':'https://vantor.example/download'}");
    bad("NamesWithoutQuotes", R"({version:"3.0",download_url:"https://vantor.example/download"})");
    bad("NotANumber", R"({"a":NaN,)" + members + "}");
    bad("NulInFront", "\0"s + plain);
    bad("NulBehindIt", plain + "\0"s);
    bad("NulBetween", "{\0"s + members + "}");
    bad("RawLineFeedInAString", "{\"a\":\"\n\"," + members + "}");
    bad("InvalidUtf8InTheVersion", withVersionValue("\"3.0\xFF\""));
    bad("InvalidUtf8Elsewhere", "{\"a\":\"\xC3\"," + members + "}");
    bad("OverlongUtf8", "{\"a\":\"\xC0\xAF\"," + members + "}");
    bad("SurrogateInUtf8", "{\"a\":\"\xED\xA0\x80\"," + members + "}");
    bad("HalfASurrogateEscape", R"({"a":"\uD800",)" + members + "}");
    bad("Utf16", [&] {
        std::string bytes = "\xFF\xFE";
        for (const char c : plain)
            bytes += {c, '\0'};
        return bytes;
    }());

    bad("VersionMissing", R"({"download_url":"https://vantor.example/download"})");
    bad("VersionEmpty", withVersionValue("\"\""));
    bad("VersionInCapitals", R"({"VERSION":"3.0","download_url":"https://vantor.example/download"})");
    bad("VersionNull", withVersionValue("null"));
    bad("VersionNumber", withVersionValue("3.0"));
    bad("VersionTrue", withVersionValue("true"));
    bad("VersionArray", withVersionValue(R"(["3.0"])"));
    bad("VersionObject", withVersionValue(R"({"major":3})"));
    bad("UrlMissing", R"({"version":"3.0"})");
    bad("UrlInOtherLetters", R"({"version":"3.0","downloadURL":"https://vantor.example/download"})");
    // Old versions too are only believed together with an address.
    bad("OldVersionWithoutAnAddress", R"({"version":"1.0","download_url":"geen adres"})");
    bad("OldVersionWithAnotherScheme", R"({"version":"1.0","download_url":"file:///etc/passwd"})");
    return answers;
}

std::string nameOf(const ::testing::TestParamInfo<std::tuple<Answer, Memory>>& info) {
    return std::get<Answer>(info.param).name +
           (std::get<Memory>(info.param) == Memory::None ? "" : "WhileANewerVersionIsKnown");
}

INSTANTIATE_TEST_SUITE_P(Addresses, UpdateAnswersTest,
                         ::testing::Combine(::testing::ValuesIn(addresses()),
                                            ::testing::Values(Memory::None, Memory::Newer)),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(Shapes, UpdateAnswersTest,
                         ::testing::Combine(::testing::ValuesIn(shapes()),
                                            ::testing::Values(Memory::None, Memory::Newer)),
                         nameOf);

} // namespace
} // namespace vantor
