#include "platform/curl/curl_http_client.h"
#include "tests/support/event_loop.h"
#include "tests/support/loopback_server.h"
#include "tests/support/server_certificate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTimer>
#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using testing::answering;
using ::testing::HasSubstr;
using testing::LoopbackServer;
using ::testing::Not;
using testing::post;
using testing::redirecting;
using testing::response;
using testing::runFor;
using testing::runUntil;
using testing::ServerCertificate;
using ::testing::StartsWith;

using Text = std::optional<std::string>;

// Whatever is to run into a limit of time has its own.
constexpr HttpLimits kLimits{1h, 1h, 65'536};

struct Outcome {
    int answers = 0;
    Text body;
};

class CurlHttpClientTest : public ::testing::Test {
protected:
    Outcome ask(const std::string& address, const HttpLimits& limits = kLimits) {
        Outcome outcome;
        client->get(address, limits, [&](Text body) {
            ++outcome.answers;
            outcome.body = std::move(body);
        });
        EXPECT_EQ(outcome.answers, 0) << "answered before get() returned";
        EXPECT_TRUE(runUntil([&] { return outcome.answers > 0; }));
        // Time for a second answer that must not come.
        runFor(20ms);
        EXPECT_EQ(outcome.answers, 1);
        return outcome;
    }

    std::unique_ptr<CurlHttpClient> client = std::make_unique<CurlHttpClient>(post);
};

TEST_F(CurlHttpClientTest, GivesTheBody) {
    const LoopbackServer server(answering("inhoud"));
    EXPECT_EQ(ask(server.address()).body, "inhoud");
}

TEST_F(CurlHttpClientTest, GivesEveryByte) {
    std::string bytes;
    for (int i = 0; i < 512; ++i)
        bytes += static_cast<char>(i % 256);
    const LoopbackServer server(answering(bytes));
    EXPECT_EQ(ask(server.address()).body, bytes);
}

TEST_F(CurlHttpClientTest, GivesEmptyBody) {
    const LoopbackServer server(answering(""));
    EXPECT_EQ(ask(server.address()).body, "");
}

TEST_F(CurlHttpClientTest, AsksWithAPlainGet) {
    const LoopbackServer server(answering("x"));
    ask(server.address("/wp-json/vantor/v1/version-prep"));
    ASSERT_EQ(server.requests.size(), 1U);
    EXPECT_THAT(server.requests.front(), AllOf(StartsWith("GET /wp-json/vantor/v1/version-prep HTTP/1.1\r\n"),
                                               Not(HasSubstr("Cookie")), Not(HasSubstr("Authorization")),
                                               Not(HasSubstr("Upgrade")), Not(HasSubstr("If-"))));
}

TEST_F(CurlHttpClientTest, KeepsNothingFromOneQuestionToTheNext) {
    const LoopbackServer server(
        answering("x", "200 OK",
                  "Set-Cookie: spoor=1; Path=/\r\nCache-Control: public, max-age=3600\r\n"
                  "ETag: \"1\"\r\nLast-Modified: Sat, 14 Mar 2026 09:00:00 GMT\r\n"));
    EXPECT_EQ(ask(server.address()).body, "x");
    EXPECT_EQ(ask(server.address()).body, "x");
    ASSERT_EQ(server.requests.size(), 2U);
    EXPECT_EQ(server.connections, 2);
    EXPECT_EQ(server.requests[0], server.requests[1]);
}

TEST_F(CurlHttpClientTest, SendsNoCookieAndNoRefererAlongWithARedirect) {
    const LoopbackServer server([&](QTcpSocket& socket) {
        socket.write(server.requests.size() == 1
                         ? response("", "302 Found", "Location: /verder\r\nSet-Cookie: spoor=1; Path=/\r\n")
                         : response("eind"));
    });
    EXPECT_EQ(ask(server.address()).body, "eind");
    ASSERT_EQ(server.requests.size(), 2U);
    EXPECT_THAT(server.requests[1], AllOf(Not(HasSubstr("Cookie")), Not(HasSubstr("spoor"))));
}

TEST_F(CurlHttpClientTest, SendsNoCredentials) {
    const LoopbackServer server(
        answering("verboden", "401 Unauthorized", "WWW-Authenticate: Basic realm=\"x\"\r\n"));
    EXPECT_EQ(ask(server.address()).body, "verboden");
    EXPECT_EQ(ask("http://gebruiker:geheim@" + server.address().substr(7)).body, std::nullopt);
    ASSERT_EQ(server.requests.size(), 1U);
    EXPECT_THAT(server.requests.front(), Not(HasSubstr("Authorization")));
}

class StatusTest : public CurlHttpClientTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(StatusTest, IsNotLookedAt) {
    const LoopbackServer server(answering("inhoud", GetParam()));
    EXPECT_EQ(ask(server.address()).body, "inhoud");
}

INSTANTIATE_TEST_SUITE_P(All, StatusTest,
                         ::testing::Values("200 OK", "201 Created", "203 X", "206 Partial Content", "299 X",
                                           "300 Multiple Choices", "302 Found", "400 Bad Request",
                                           "401 Unauthorized", "402 Payment Required", "403 Forbidden",
                                           "404 Not Found", "405 Method Not Allowed", "407 X", "408 X",
                                           "409 Conflict", "410 Gone", "418 X", "429 Too Many Requests",
                                           "451 X", "499 X", "500 Internal Server Error",
                                           "501 Not Implemented", "502 X", "503 Service Unavailable", "504 X",
                                           "599 X"));

// Limits

TEST_F(CurlHttpClientTest, WaitsNoLongerThanTheSilenceLimitForTheFirstByte) {
    const LoopbackServer server([](QTcpSocket&) {});
    const auto outcome = ask(server.address(), {300ms, 1h, 1000});
    EXPECT_EQ(outcome.body, std::nullopt);
}

TEST_F(CurlHttpClientTest, WaitsNoLongerThanTheSilenceLimitWithinTheBody) {
    const LoopbackServer server([](QTcpSocket& socket) { socket.write(response("inhoud").chopped(2)); });
    const auto outcome = ask(server.address(), {300ms, 1h, 1000});
    EXPECT_EQ(outcome.body, std::nullopt);
}

TEST_F(CurlHttpClientTest, IsPatientWithSlowAnswersWithinTheLimits) {
    const LoopbackServer server([](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n");
        auto* const timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
        timer->start(100);
    });
    // Longer in all than any silence may be.
    const auto outcome = ask(server.address(), {1s, 1h, 1000});
    EXPECT_EQ(outcome.body, std::string(20, 'x'));
}

LoopbackServer::Respond trickling(const QByteArray& start) {
    return [start](QTcpSocket& socket) {
        socket.write(start);
        auto* const timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
        timer->start(20);
    };
}

class TrickleTest : public CurlHttpClientTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(TrickleTest, EndsAtTheLimitForTheWhole) {
    const LoopbackServer server(trickling(GetParam().c_str()));
    const auto outcome = ask(server.address(), {1h, 300ms, 65'536});
    EXPECT_EQ(outcome.body, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, TrickleTest,
                         ::testing::Values("HTTP/1.1 200 ", "HTTP/1.1 200 OK\r\nX-Endless: ",
                                           "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n",
                                           "HTTP/1.1 200 OK\r\n\r\n",
                                           "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3e8\r\n"));

TEST_F(CurlHttpClientTest, EndsARingOfRedirects) {
    const LoopbackServer server(redirecting("/rond"));
    const auto outcome = ask(server.address());
    EXPECT_EQ(outcome.body, std::nullopt);
    EXPECT_EQ(server.requests.size(), 21U);
}

TEST_F(CurlHttpClientTest, CountsRedirectsIntoTheLimitForTheWhole) {
    const LoopbackServer server([](QTcpSocket& socket) {
        QTimer::singleShot(100, &socket,
                           [&socket] { socket.write(response("", "302 Found", "Location: /rond\r\n")); });
    });
    const auto outcome = ask(server.address(), {1h, 500ms, 1000});
    EXPECT_EQ(outcome.body, std::nullopt);
}

struct Length {
    const char* name;
    // What comes before the last answer, and what is in it: its headers and its body.
    QByteArray before;
    qsizetype headers;
    qsizetype body;
    bool isTaken;
};

void PrintTo(const Length& each, std::ostream* out) {
    *out << each.name;
}

class LengthTest : public CurlHttpClientTest, public ::testing::WithParamInterface<Length> {};

// So many bytes with the empty line behind them.
QByteArray headers(const QByteArray& status, qsizetype bytes) {
    const auto start = "HTTP/1.1 " + status + "\r\nX-Filler: ";
    return start + QByteArray(bytes - start.size() - 4, 'x') + "\r\n\r\n";
}

TEST_P(LengthTest, OfTheWholeExchangeHasOneLimit) {
    const auto& [name, before, headerBytes, bodyBytes, isTaken] = GetParam();
    const QByteArray body(bodyBytes, 'x');
    const LoopbackServer server([&](QTcpSocket& socket) {
        if (before.contains("Location") && server.requests.size() == 1) {
            socket.write(before);
        } else {
            socket.write((server.requests.size() == 1 ? before : "") + headers("200 OK", headerBytes) + body);
            socket.disconnectFromHost();
        }
    });
    EXPECT_EQ(ask(server.address()).body, isTaken ? Text(body.toStdString()) : std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    All, LengthTest,
    ::testing::Values(
        Length{"OneLess", "", 100, 65'435, true}, Length{"Exactly", "", 100, 65'436, true},
        Length{"OneMore", "", 100, 65'437, false}, Length{"Megabyte", "", 100, 1'048'576, false},
        Length{"ManyHeaders", "", 65'000, 536, true}, Length{"TooManyHeaders", "", 65'000, 537, false},
        Length{"InterimAnswer", headers("100 Continue", 30'000), 30'000, 5'536, true},
        Length{"TooLongInterimAnswer", headers("100 Continue", 30'000), 30'000, 5'537, false},
        Length{"Redirect", response("", "302 Found", "Location: /verder\r\n"), 100, 65'000, true},
        Length{"TooLongRedirect",
               response("", "302 Found", "Location: /" + std::string(30'000, 'x') + "\r\n"), 30'000, 5'536,
               false}),
    [](const auto& each) { return each.param.name; });

TEST_F(CurlHttpClientTest, StopsReadingAnEndlessBody) {
    const QByteArray block(16'384, 'x');
    const LoopbackServer server([&](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\n\r\n");
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, &block] {
            if (socket.bytesToWrite() == 0)
                socket.write(block);
        });
    });
    const auto outcome = ask(server.address());
    EXPECT_EQ(outcome.body, std::nullopt);
}

// Redirects

TEST_F(CurlHttpClientTest, FollowsRedirectsOnTheLoopbackAddress) {
    for (const auto* const status : {"301 Moved Permanently", "302 Found", "303 See Other",
                                     "307 Temporary Redirect", "308 Permanent Redirect"}) {
        const LoopbackServer other(answering("daar"));
        const LoopbackServer server(redirecting(other.address("/nieuw"), status));
        EXPECT_EQ(ask(server.address()).body, "daar") << status;
        ASSERT_EQ(other.requests.size(), 1U);
        EXPECT_THAT(other.requests.front(), StartsWith("GET /nieuw "));
    }
}

TEST_F(CurlHttpClientTest, FollowsRelativeRedirects) {
    const LoopbackServer server([&](QTcpSocket& socket) {
        socket.write(server.requests.size() < 3 ? response("", "302 Found", "Location: ../b?c=d\r\n")
                                                : response("eind"));
    });
    EXPECT_EQ(ask(server.address("/x/a")).body, "eind");
    EXPECT_THAT(server.requests.back(), StartsWith("GET /b?c=d "));
}

class RefusedRedirectTest : public CurlHttpClientTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(RefusedRedirectTest, IsNoAnswer) {
    const LoopbackServer server(redirecting(GetParam()));
    const auto outcome = ask(server.address());
    EXPECT_EQ(outcome.body, std::nullopt);
    EXPECT_EQ(server.requests.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(All, RefusedRedirectTest,
                         ::testing::Values("http://192.0.2.1/", "https://192.0.2.1/", "//192.0.2.1/",
                                           "file:///etc/hostname", "ftp://127.0.0.1/", "data:text/plain,x",
                                           "qrc:/x", "about:blank", "javascript:x",
                                           "http://localhost.vantor.example/",
                                           "http://127.0.0.1.vantor.example/",
                                           "http://vantor.example@192.0.2.1/", "http://"));

TEST_F(CurlHttpClientTest, GivesTheBodyOfARedirectToNowhere) {
    const LoopbackServer server(answering("hier", "302 Found"));
    EXPECT_EQ(ask(server.address()).body, "hier");
}

// What is no answer

class ForbiddenAddressTest : public CurlHttpClientTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(ForbiddenAddressTest, IsNotEvenAsked) {
    const auto outcome = ask(GetParam());
    EXPECT_EQ(outcome.body, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, ForbiddenAddressTest,
                         ::testing::Values("", "x", "/etc/hostname", "file:///etc/hostname",
                                           "ftp://127.0.0.1/", "data:,x", "http://192.0.2.1/", "http://",
                                           "https://", "https:///x", "http://a b/",
                                           "http://localhost.vantor.example/", "\xFF"));

TEST_F(CurlHttpClientTest, HasNoneWhenNobodyListens) {
    std::string address;
    {
        const LoopbackServer server(answering("x"));
        address = server.address();
    }
    const auto outcome = ask(address);
    EXPECT_EQ(outcome.body, std::nullopt);
}

class BrokenResponseTest : public CurlHttpClientTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(BrokenResponseTest, IsNoAnswer) {
    const LoopbackServer server([](QTcpSocket& socket) {
        socket.write(GetParam().data(), static_cast<qint64>(GetParam().size()));
        socket.disconnectFromHost();
    });
    EXPECT_EQ(ask(server.address()).body, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, BrokenResponseTest,
                         ::testing::Values("", "geen http\r\n\r\n", "HTTP/1.1 200 OK\r\n",
                                           "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nkort",
                                           "HTTP/1.1 500 X\r\nContent-Length: 10\r\n\r\nkort"));

// Lifetime

TEST_F(CurlHttpClientTest, IsSilentOnceItIsGone) {
    const LoopbackServer server([](QTcpSocket& socket) {
        QTimer::singleShot(50, &socket, [&socket] { socket.write(response("x")); });
    });
    int answers = 0;
    auto gone = std::make_unique<CurlHttpClient>(post);
    gone->get(server.address(), kLimits, [&](const Text&) { ++answers; });
    gone->get("file:///x", kLimits, [&](const Text&) { ++answers; });
    EXPECT_TRUE(runUntil([&] { return !server.requests.empty(); }) || answers > 0);
    answers = 0;
    gone.reset();
    runFor(150ms);
    EXPECT_EQ(answers, 0);
}

TEST_F(CurlHttpClientTest, MayBeAskedAgainByItsAnswer) {
    const LoopbackServer server(answering("x"));
    Text second;
    client->get(server.address(), kLimits, [&](const Text&) {
        client->get(server.address(), kLimits, [&](Text body) { second = std::move(body); });
    });
    EXPECT_TRUE(runUntil([&] { return second.has_value(); }));
}

TEST_F(CurlHttpClientTest, MayBeDestroyedByAnyAnswer) {
    const LoopbackServer server(answering("kort"));
    const LoopbackServer endless(answering(std::string(100'000, 'x')));
    const LoopbackServer silent([](QTcpSocket&) {});
    for (const auto& address :
         {server.address(), endless.address(), silent.address(), std::string("file:///x")}) {
        auto other = std::make_unique<CurlHttpClient>(post);
        int answers = 0;
        other->get(address, {100ms, 1h, 1000}, [&](const Text&) {
            ++answers;
            other.reset();
        });
        EXPECT_TRUE(runUntil([&] { return answers == 1; })) << address;
        runFor(20ms);
        EXPECT_EQ(answers, 1) << address;
    }
}

TEST_F(CurlHttpClientTest, AnswersManyQuestionsAtOnceEachOnItsOwn) {
    const LoopbackServer server([&](QTcpSocket& socket) {
        const auto& request = server.requests.back();
        socket.write(response(request.substr(5, request.find(' ', 5) - 5)));
    });
    std::vector<std::string> bodies;
    for (const auto* const path : {"/a", "/b", "/c", "/d"})
        client->get(server.address(path), kLimits,
                    [&](const Text& body) { bodies.push_back(body.value_or("geen")); });
    EXPECT_TRUE(runUntil([&] { return bodies.size() == 4; }));
    EXPECT_THAT(bodies, ::testing::UnorderedElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(server.connections, 4);
}

// Encrypted

class EncryptedTest : public CurlHttpClientTest {
protected:
    void trust(const ServerCertificate& trusted) {
        client = std::make_unique<CurlHttpClient>(post, trusted.file());
    }

    ServerCertificate certificate;
};

TEST_F(EncryptedTest, GivesTheBody) {
    trust(certificate);
    const LoopbackServer server(certificate.server(), answering("geheim"));
    EXPECT_EQ(ask(server.address()).body, "geheim");
    ASSERT_EQ(server.requests.size(), 1U);
    EXPECT_THAT(server.requests.front(), StartsWith("GET / HTTP/1.1\r\n"));
}

TEST_F(EncryptedTest, HasNoneWhereTheCertificateDoesNotConvince) {
    const LoopbackServer server(certificate.server(), answering("geheim"));
    EXPECT_EQ(ask(server.address()).body, std::nullopt);
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(EncryptedTest, HasNoneWhereTheCertificateHasRunOut) {
    const ServerCertificate old("IP:127.0.0.1", -1);
    trust(old);
    const LoopbackServer server(old.server(), answering("geheim"));
    EXPECT_EQ(ask(server.address()).body, std::nullopt);
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(EncryptedTest, HasNoneWhereTheCertificateIsForAnotherHost) {
    const ServerCertificate others("DNS:vantor.example,IP:127.0.0.2");
    trust(others);
    const LoopbackServer server(others.server(), answering("geheim"));
    EXPECT_EQ(ask(server.address()).body, std::nullopt);
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(EncryptedTest, HasNoneWhereTheOtherSideDoesNotEncrypt) {
    const LoopbackServer server(answering("open"));
    auto address = server.address();
    address.replace(0, 4, "https");
    EXPECT_EQ(ask(address, {500ms, 1s, 1000}).body, std::nullopt);
}

TEST_F(EncryptedTest, FollowsRedirectsToEncryptedPlaces) {
    trust(certificate);
    const LoopbackServer other(certificate.server(), answering("daar"));
    const LoopbackServer server(certificate.server(), redirecting(other.address()));
    EXPECT_EQ(ask(server.address()).body, "daar");
}

TEST_F(EncryptedTest, NeverFollowsARedirectFromOneSchemeToTheOther) {
    trust(certificate);
    const LoopbackServer open(answering("open"));
    const LoopbackServer encrypted(certificate.server(), answering("geheim"));
    const LoopbackServer toOpen(certificate.server(), redirecting(open.address()));
    const LoopbackServer toEncrypted(redirecting(encrypted.address()));
    EXPECT_EQ(ask(toOpen.address()).body, std::nullopt);
    EXPECT_EQ(ask(toEncrypted.address()).body, std::nullopt);
    EXPECT_TRUE(open.requests.empty());
    EXPECT_TRUE(encrypted.requests.empty());
}

} // namespace
} // namespace vantor
