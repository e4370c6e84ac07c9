#include "tests/platform_qt/update_over_http.h"
#include "tests/support/loopback_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTimer>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using testing::answering;
using testing::LoopbackServer;
using testing::runFor;
using testing::runUntil;
using ::testing::StartsWith;

using Text = std::optional<std::string>;

constexpr const char* kPath = "/wp-json/vantor/v1/version-prep";
constexpr const char* kDownload = "https://vantor.example/download";
constexpr Timestamp kNow{800'000'000.25};

std::string answerOf(const std::string& version) {
    return R"({"version":")" + version + R"(","download_url":")" + kDownload + R"("})";
}

class UpdateOverHttpTest : public testing::UpdateOverHttp {
protected:
    std::unique_ptr<UpdateChecker> makeChecker(const LoopbackServer& server) {
        return UpdateOverHttp::makeChecker(server.address(kPath));
    }
};

TEST_F(UpdateOverHttpTest, NoticesANewerVersionAndForgetsItWhenItIsInstalled) {
    std::string body = answerOf("2.0");
    const LoopbackServer server([&](QTcpSocket& socket) { socket.write(testing::response(body)); });
    const auto checker = makeChecker(server);
    check(*checker);
    EXPECT_EQ(checker->availableVersion(), "2.0");
    EXPECT_EQ(checker->downloadURL(), kDownload);
    ASSERT_EQ(server.requests.size(), 1U);
    EXPECT_THAT(server.requests.front(), StartsWith(std::string("GET ") + kPath + " HTTP/1.1\r\n"));
    EXPECT_EQ(makeChecker(server)->availableVersion(), "2.0");

    body = answerOf("1.9.9");
    check(*checker);
    EXPECT_EQ(checker->availableVersion(), std::nullopt);
    EXPECT_EQ(makeChecker(server)->availableVersion(), std::nullopt);
}

struct Response {
    const char* name;
    std::string status;
    std::string body;
    Text available;
};

void PrintTo(const Response& each, std::ostream* out) {
    *out << each.name;
}

class ResponseTest : public UpdateOverHttpTest, public ::testing::WithParamInterface<Response> {};

TEST_P(ResponseTest, LeadsToANoticeOrNot) {
    const LoopbackServer server(answering(GetParam().body, GetParam().status));
    const auto checker = makeChecker(server);
    check(*checker);
    EXPECT_EQ(checker->availableVersion(), GetParam().available);
    EXPECT_EQ(defaults.text(checker->lastKnownVersionKey()), GetParam().available);
}

INSTANTIATE_TEST_SUITE_P(
    All, ResponseTest,
    ::testing::Values(
        Response{"Newer", "200 OK", answerOf("1.10"), "1.10"},
        Response{"Equal", "200 OK", answerOf("1.9.9"), std::nullopt},
        Response{"Older", "200 OK", answerOf("1.9.8"), std::nullopt},
        Response{"NewerWithAnErrorStatus", "500 Kapot", answerOf("2.0"), "2.0"},
        Response{"NewerThatIsNotFound", "404 Niet gevonden", answerOf("2.0"), "2.0"},
        Response{"NoJson", "200 OK", "<html>2.0</html>", std::nullopt},
        Response{"WrongTypes", "200 OK", R"({"version":2.0,"download_url":["x"]})", std::nullopt},
        Response{"Empty", "200 OK", "", std::nullopt},
        Response{"NotAURL", "200 OK", R"({"version":"2.0","download_url":"hier"})", std::nullopt},
        Response{"Large", "200 OK", answerOf("2.0") + std::string(65'000, ' '), "2.0"},
        Response{"Megabyte", "200 OK", answerOf("2.0") + std::string(1'000'000, ' '), std::nullopt}),
    [](const auto& each) { return each.param.name; });

TEST_F(UpdateOverHttpTest, FollowsARedirect) {
    const LoopbackServer other(answering(answerOf("2.0")));
    const LoopbackServer server(testing::redirecting(other.address()));
    const auto checker = makeChecker(server);
    check(*checker);
    EXPECT_EQ(checker->availableVersion(), "2.0");
}

TEST_F(UpdateOverHttpTest, CountsNoConnectionAsAnAnswer) {
    auto server = std::make_unique<LoopbackServer>(answering(""));
    const auto checker = makeChecker(*server);
    server.reset();
    check(*checker);
    EXPECT_EQ(checker->availableVersion(), std::nullopt);
}

TEST_F(UpdateOverHttpTest, GivesUpOnATrickle) {
    client.whole = 500ms;
    const LoopbackServer server([](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\n\r\n" + QByteArray::fromStdString(answerOf("2.0")));
        auto* const drip = new QTimer(&socket);
        QObject::connect(drip, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
        drip->start(20);
    });
    const auto checker = makeChecker(server);
    check(*checker);
    EXPECT_EQ(checker->availableVersion(), std::nullopt);
}

TEST_F(UpdateOverHttpTest, AsksOnceWhenStartedTwiceAndAgainAfterExactlySixHours) {
    const LoopbackServer server(answering(answerOf("2.0")));
    const auto checker = makeChecker(server);
    checker->start();
    EXPECT_TRUE(runUntil([&] { return isStored(*checker, kNow); }));
    checker->start();
    clock.set({kNow.secondsSinceReference + 21'599.875});
    checker->checkForUpdate();
    runFor(100ms);
    EXPECT_EQ(server.requests.size(), 1U);

    clock.set({kNow.secondsSinceReference + 21'600});
    checker->checkForUpdate();
    EXPECT_TRUE(runUntil([&] { return isStored(*checker, clock.now()); }));
    EXPECT_EQ(server.requests.size(), 2U);
}

TEST_F(UpdateOverHttpTest, IgnoresAnAnswerThatComesTooLateForTheChecker) {
    const LoopbackServer server([](QTcpSocket& socket) {
        QTimer::singleShot(50, &socket, [&socket] { socket.write(testing::response(answerOf("2.0"))); });
    });
    auto checker = makeChecker(server);
    const auto dateKey = checker->lastCheckKey();
    checker->start();
    EXPECT_TRUE(runUntil([&] { return !server.requests.empty(); }));
    checker.reset();
    runFor(200ms);
    EXPECT_FALSE(defaults.date(dateKey));
}

} // namespace
} // namespace vantor
