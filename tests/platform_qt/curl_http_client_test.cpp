// What becomes of every way in which a server can answer, or fail to.

#include "platform/curl/curl_http_client.h"
#include "tests/support/event_loop.h"
#include "tests/support/loopback_server.h"
#include "tests/support/server_certificate.h"

#include <gmock/gmock.h>
#include <zlib.h>

#include <QElapsedTimer>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using testing::answering;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LoopbackServer;
using ::testing::Not;
using testing::post;
using testing::redirecting;
using testing::response;
using testing::runFor;
using testing::runUntil;
using testing::ServerCertificate;
using ::testing::SizeIs;
using ::testing::StartsWith;

using Text = std::optional<std::string>;
using Respond = LoopbackServer::Respond;

// Whatever is to run into a limit of time has its own.
constexpr HttpLimits kLimits{1h, 1h, 65'536};
const std::string kBody = R"({"version":"3.0","download_url":"https://vantor.example/3.0"})";
const QByteArray kHead = "HTTP/1.1 200 OK\r\n";
const QByteArray kChunked = kHead + "Transfer-Encoding: chunked\r\n\r\n";

class CurlHttpClientTest : public ::testing::Test {
protected:
    // The body.
    Text ask(const std::string& address, const HttpLimits& limits = kLimits) {
        int answers = 0;
        Text answer;
        client->get(address, limits, [&](Text body) {
            ++answers;
            answer = std::move(body);
        });
        EXPECT_EQ(answers, 0) << "answered before get() returned";
        EXPECT_TRUE(runUntil([&] { return answers > 0; }));
        // Time for a second answer that must not come.
        runFor(20ms);
        EXPECT_EQ(answers, 1);
        return answer;
    }
    void trust(const ServerCertificate& trusted) {
        client = std::make_unique<CurlHttpClient>(post, trusted.file());
    }

    std::unique_ptr<CurlHttpClient> client = std::make_unique<CurlHttpClient>(post);
};

TEST_F(CurlHttpClientTest, GivesEveryByteWhateverTheStatus) {
    std::string bytes;
    for (int i = 0; i < 512; ++i)
        bytes += static_cast<char>(i % 256);
    for (const auto& body : {std::string(), bytes}) {
        const LoopbackServer server(answering(body));
        EXPECT_EQ(ask(server.address()), body);
    }
    for (const int status : {201, 203, 206, 299, 300, 302, 400, 401, 402, 403, 404, 405, 407,
                             408, 409, 410, 418, 429, 451, 499, 500, 501, 502, 503, 504, 599}) {
        const LoopbackServer server(answering(kBody, std::to_string(status) + " X"));
        EXPECT_EQ(ask(server.address()), kBody) << status;
    }
}

TEST_F(CurlHttpClientTest, AsksWithAPlainGetAndKeepsNothingFromOneQuestionToTheNext) {
    const LoopbackServer server(
        answering("x", "200 OK",
                  "Set-Cookie: spoor=1; Path=/\r\nCache-Control: public, max-age=3600\r\n"
                  "ETag: \"1\"\r\nLast-Modified: Sat, 14 Mar 2026 09:00:00 GMT\r\n"));
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(ask(server.address("/wp-json/vantor/v1/version-prep")), "x");
    ASSERT_THAT(server.requests, SizeIs(2));
    EXPECT_THAT(server.requests[0], AllOf(StartsWith("GET /wp-json/vantor/v1/version-prep HTTP/1.1\r\n"),
                                          Not(HasSubstr("Cookie")), Not(HasSubstr("Authorization")),
                                          Not(HasSubstr("Upgrade")), Not(HasSubstr("If-"))));
    EXPECT_EQ(server.requests[0], server.requests[1]);
    EXPECT_EQ(server.connections, 2);
}

TEST_F(CurlHttpClientTest, SendsNoCookieRefererOrCredentialsAlongWithARedirectOrWhenAskedForThem) {
    const LoopbackServer server([&](QTcpSocket& socket) {
        socket.write(server.requests.size() == 1
                         ? response("", "302 Found", "Location: /verder\r\nSet-Cookie: spoor=1; Path=/\r\n")
                         : response("verboden", "401 X", "WWW-Authenticate: Basic realm=\"x\"\r\n"));
    });
    EXPECT_EQ(ask(server.address()), "verboden");
    EXPECT_EQ(ask("http://gebruiker:geheim@" + server.address().substr(7)), std::nullopt);
    ASSERT_THAT(server.requests, SizeIs(2));
    EXPECT_THAT(server.requests[1], AllOf(Not(HasSubstr("Cookie")), Not(HasSubstr("spoor")),
                                          Not(HasSubstr("Referer")), Not(HasSubstr("Authorization"))));
}

TEST_F(CurlHttpClientTest, DoesNotEvenAskWhatIsNoAddressOfThisMachineOrEncrypted) {
    for (const auto* const address : {"", "x", "/etc/hostname", "file:///etc/hostname", "ftp://127.0.0.1/",
                                      "data:,x", "http://192.0.2.1/", "http://", "https://", "https:///x",
                                      "http://a b/", "http://localhost.vantor.example/", "\xFF"})
        EXPECT_EQ(ask(address), std::nullopt) << address;
}

Respond sending(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) { socket.write(bytes); };
}

Respond sendingAndClosing(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) {
        socket.write(bytes);
        socket.disconnectFromHost();
    };
}

// Then a byte every few milliseconds: so many, or without end.
Respond trickling(const QByteArray& bytes, std::chrono::milliseconds pause = 20ms) {
    return [bytes, pause](QTcpSocket& socket) {
        socket.write(bytes);
        auto* const drip = new QTimer(&socket);
        QObject::connect(drip, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
        drip->start(pause);
    };
}

// Then the block again and again, as fast as it is read.
Respond flooding(const QByteArray& bytes, const QByteArray& block) {
    return [bytes, block](QTcpSocket& socket) {
        socket.write(bytes);
        auto* const tide = new QTimer(&socket);
        QObject::connect(tide, &QTimer::timeout, &socket, [&socket, block] {
            const auto* const encrypted = qobject_cast<QSslSocket*>(&socket);
            const auto waiting = encrypted != nullptr ? encrypted->encryptedBytesToWrite() : 0;
            if (socket.state() == QAbstractSocket::ConnectedState && socket.bytesToWrite() + waiting == 0)
                socket.write(block);
        });
        tide->start(0);
    };
}

// So many redirects, and then the answer, or nothing.
Respond redirectingTimes(int times, bool answers = true) {
    return [times, answers, done = std::make_shared<int>(0)](QTcpSocket& socket) {
        if (++*done <= times)
            socket.write(response("", "302 Found", "Location: /verder\r\n"));
        else if (answers)
            socket.write(response(kBody));
    };
}

QByteArray chunk(const std::string& bytes) {
    return QByteArray::number(bytes.size(), 16) + "\r\n" + QByteArray::fromStdString(bytes) + "\r\n";
}

// In the form that zlib has this number for.
std::string compressed(std::string text, int form) {
    std::string bytes(text.size() + 100, '\0');
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, form, 9, Z_DEFAULT_STRATEGY), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return bytes;
}

std::string gzipped(const std::string& text) {
    return compressed(text, 15 + 16);
}

Respond answeringEncoded(const std::string& body, const std::string& encoding) {
    return answering(body, "200 OK", "Content-Encoding: " + encoding + "\r\n");
}

// So many bytes with the empty line behind them.
QByteArray headers(const QByteArray& status, qsizetype bytes) {
    const auto start = "HTTP/1.1 " + status + "\r\nX-Filler: ";
    return start + QByteArray(bytes - start.size() - 4, 'x') + "\r\n\r\n";
}

// An answer of so many bytes, behind an interim answer or a redirect.
Respond answeringAtLength(qsizetype headerBytes, qsizetype bodyBytes, const QByteArray& before = "") {
    const auto answer = headers("200 OK", headerBytes) + QByteArray(bodyBytes, 'x');
    if (!before.contains("Location"))
        return sendingAndClosing(before + answer);
    return [answer, before, isFirst = std::make_shared<bool>(true)](QTcpSocket& socket) {
        (std::exchange(*isFirst, false) ? sending(before) : sendingAndClosing(answer))(socket);
    };
}

// What ends the question.
enum class End { Itself, Silence, Whole };

struct Exchange {
    const char* name;
    Respond respond;
    Text body = std::nullopt;
    End end = End::Itself;
};

std::vector<Exchange> kindsOfContent() {
    const auto body = QByteArray::fromStdString(kBody);
    const auto answeringAs = [](const std::string& header) { return answering(kBody, "200 OK", header); };
    const auto withLength = [&](qsizetype length) {
        return sendingAndClosing(kHead + "Content-Length: " + QByteArray::number(length) + "\r\n\r\n" + body);
    };
    const auto half = body.size() / 2;
    return {
        {"a web page", answeringAs("Content-Type: text/html\r\n"), kBody},
        {"another character set", answeringAs("Content-Type: application/json; charset=utf-16\r\n"), kBody},
        {"a download", answeringAs("Content-Disposition: attachment; filename=\"../x.desktop\"\r\n"), kBody},
        {"an old protocol", sendingAndClosing("HTTP/1.0 200 OK\r\n\r\n" + body), kBody},
        {"behind an interim answer", sending("HTTP/1.1 100 Continue\r\n\r\n" + response(kBody)), kBody},
        {"until closed", sendingAndClosing(kHead + "\r\n" + body), kBody},
        {"in pieces", trickling(kHead + "Content-Length: 20\r\n\r\n", 1ms), std::string(20, 'x')},
        {"chunked", sending(kChunked + chunk(kBody.substr(0, 7)) + chunk(kBody.substr(7)) + "0\r\n\r\n"),
         kBody},
        {"chunked with a trailer", sending(kChunked + chunk(kBody) + "0\r\nX-Extra: 1\r\n\r\n"), kBody},
        {"chunks cut off", sendingAndClosing(kChunked + chunk(kBody.substr(0, 7)))},
        {"chunk without a size", sendingAndClosing(kChunked + "veel\r\n" + body + "\r\n0\r\n\r\n")},
        {"no content", sending("HTTP/1.1 204 No Content\r\n\r\n"), ""},
        {"not modified", sending("HTTP/1.1 304 Not Modified\r\n\r\n"), ""},
        {"length within the body", withLength(half), kBody.substr(0, static_cast<std::size_t>(half))},
        {"length of nothing", withLength(0), ""},
        {"length behind the end", withLength(body.size() + 1)},
        {"length far behind the end", withLength(99'999'999'999'999)},
        {"gzip", answeringEncoded(gzipped(kBody), "gzip"), kBody},
        {"deflate", answeringEncoded(compressed(kBody, 15), "deflate"), kBody},
        {"gzip of much", answeringEncoded(gzipped(std::string(65'000, 'x')), "gzip"),
         std::string(65'000, 'x')},
        {"gzip of one byte more", answeringEncoded(gzipped(std::string(65'537, 'x')), "gzip")},
        {"gzip of fifty megabytes", answeringEncoded(gzipped(std::string(50'000'000, 'x')), "gzip")},
        {"gzip that is none", answeringEncoded(kBody, "gzip")},
        {"gzip twice", answeringEncoded(gzipped(gzipped(kBody)), "gzip"), gzipped(kBody)},
        {"gzip without saying so", answering(gzipped(kBody)), gzipped(kBody)},
        {"not http", sendingAndClosing("SSH-2.0-OpenSSH_9.2\r\n")},
        {"without headers", sendingAndClosing(body)},
        {"headers cut off", sendingAndClosing(kHead + "Content-Length: 1")},
        {"an error cut off", sendingAndClosing("HTTP/1.1 500 X\r\nContent-Length: 10\r\n\r\nkort")},
        {"nothing", sendingAndClosing("")},
        {"broken off",
         [body](QTcpSocket& socket) {
             socket.write(kHead + "Content-Length: 1000\r\n\r\n" + body);
             socket.flush();
             socket.abort();
         }},
    };
}

// Headers, interim answers and redirects count like the body.
std::vector<Exchange> lengths() {
    const auto interim = headers("100 Continue", 30'000);
    const auto redirect = [](std::size_t bytes) {
        return response("", "302 Found", "Location: /" + std::string(bytes, 'x') + "\r\n");
    };
    const QByteArray block(16'384, 'x');
    const auto taken = [](std::size_t bytes) { return std::string(bytes, 'x'); };
    return {
        {"one less", answeringAtLength(100, 65'435), taken(65'435)},
        {"exactly", answeringAtLength(100, 65'436), taken(65'436)},
        {"one more", answeringAtLength(100, 65'437)},
        {"a megabyte", answeringAtLength(100, 1'048'576)},
        {"many headers", answeringAtLength(65'000, 536), taken(536)},
        {"too many headers", answeringAtLength(65'000, 537)},
        {"an interim answer", answeringAtLength(30'000, 5'536, interim), taken(5'536)},
        {"too long an interim answer", answeringAtLength(30'000, 5'537, interim)},
        {"a redirect", answeringAtLength(100, 65'000, redirect(6)), taken(65'000)},
        {"too long a redirect", answeringAtLength(30'000, 5'536, redirect(30'000))},
        {"a body without end", flooding(kHead + "\r\n", block)},
        {"chunks without end", flooding(kChunked, chunk(taken(16'384)))},
        {"interim answers without end", flooding("", "HTTP/1.1 100 Continue\r\n\r\n")},
        {"headers without end", flooding(kHead, "X-Endless: " + block + "\r\n")},
        {"a header without end", flooding(kHead + "X-Endless: ", block)},
        {"a status without end", flooding("HTTP/1.1 200 ", block)},
        {"twenty redirects", redirectingTimes(20), kBody},
        {"twenty-one redirects", redirectingTimes(21)},
        {"a redirect to nowhere", answering(kBody, "302 Found"), kBody},
    };
}

std::vector<Exchange> hangs() {
    const auto body = QByteArray::fromStdString(kBody);
    return {
        {"silent from the start", sending(""), {}, End::Silence},
        {"silent within the status", sending("HTTP/1.1 2"), {}, End::Silence},
        {"silent within the headers", sending(kHead + "Content-Type: applic"), {}, End::Silence},
        {"silent before the body", sending(kHead + "Content-Length: 10\r\n\r\n"), {}, End::Silence},
        {"silent within the body", sending(kHead + "Content-Length: 1000\r\n\r\n" + body), {}, End::Silence},
        {"silent behind a chunk", sending(kChunked + chunk(kBody)), {}, End::Silence},
        {"silent instead of closing", sending(kHead + "\r\n" + body), {}, End::Silence},
        {"silent behind the redirect", redirectingTimes(1, false), {}, End::Silence},
        {"trickling status", trickling("HTTP/1.1 200 "), {}, End::Whole},
        {"trickling header", trickling(kHead + "X-Endless: "), {}, End::Whole},
        {"trickling body", trickling(kHead + "\r\n" + body), {}, End::Whole},
        {"trickling body of a length", trickling(kHead + "Content-Length: 1000\r\n\r\n"), {}, End::Whole},
        {"trickling chunk", trickling(kChunked + "3e8\r\n"), {}, End::Whole},
        {"slow redirects",
         [](QTcpSocket& socket) {
             QTimer::singleShot(
                 100, &socket, [&socket] { socket.write(response("", "302 Found", "Location: /rond\r\n")); });
         },
         {},
         End::Whole},
    };
}

class Exchanges : public CurlHttpClientTest,
                  public ::testing::WithParamInterface<std::vector<Exchange> (*)()> {};

TEST_P(Exchanges, GiveTheWholeBodyOrNone) {
    for (const auto& [name, respond, body, end] : GetParam()()) {
        SCOPED_TRACE(name);
        const LoopbackServer server(respond);
        QElapsedTimer elapsed;
        elapsed.start();
        // Nothing else may end it.
        const auto answer = ask(server.address(), {end == End::Silence ? 400ms : kLimits.silence,
                                                   end == End::Whole ? 400ms : kLimits.whole, 65'536});
        EXPECT_TRUE(answer == body) << answer.value_or("(none)").substr(0, 200);
        if (end != End::Itself) {
            EXPECT_GE(elapsed.elapsed(), 390);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Exchanges, ::testing::Values(kindsOfContent, lengths, hangs));

TEST_F(CurlHttpClientTest, GivesTheBeginningOfACompressedBodyThatIsCutOffAndIsPatientWithASlowOne) {
    // Who reads it sees that it is not all: the length that came with it was right.
    const LoopbackServer server(answeringEncoded(gzipped(kBody).substr(0, 50), "gzip"));
    const auto body = ask(server.address()).value_or("");
    EXPECT_LT(body.size(), kBody.size());
    EXPECT_THAT(kBody, StartsWith(body));
    // Longer in all than any silence may be.
    const LoopbackServer slow(trickling(kHead + "Content-Length: 20\r\n\r\n", 100ms));
    EXPECT_EQ(ask(slow.address(), {1s, 1h, 1000}), std::string(20, 'x'));
}

TEST_F(CurlHttpClientTest, HasNoneWhenNobodyListensOrTakesUpTheConnection) {
    std::string address;
    {
        const LoopbackServer server(answering("x"));
        address = server.address();
    }
    EXPECT_EQ(ask(address), std::nullopt);
    // A queue that is full with others that wait.
    QTcpServer server;
    server.setListenBacklogSize(1);
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    server.pauseAccepting();
    std::vector<std::unique_ptr<QTcpSocket>> waiting;
    do {
        waiting.push_back(std::make_unique<QTcpSocket>());
        waiting.back()->connectToHost(QHostAddress::LocalHost, server.serverPort());
        ASSERT_LT(waiting.size(), 100U);
    } while (waiting.back()->waitForConnected(300));
    EXPECT_EQ(ask("http://127.0.0.1:" + std::to_string(server.serverPort()) + "/", {400ms, 1h, 1000}),
              std::nullopt);
}

// Redirects

TEST_F(CurlHttpClientTest, FollowsRedirectsOnTheLoopbackAddress) {
    for (const int status : {301, 302, 303, 307, 308}) {
        const LoopbackServer other(answering("daar"));
        const LoopbackServer server(redirecting(other.address("/nieuw"), std::to_string(status) + " X"));
        EXPECT_EQ(ask(server.address()), "daar") << status;
        ASSERT_THAT(other.requests, SizeIs(1));
        EXPECT_THAT(other.requests.front(), StartsWith("GET /nieuw "));
    }
    const LoopbackServer relative([&](QTcpSocket& socket) {
        socket.write(relative.requests.size() < 3 ? response("", "302 Found", "Location: ../b?c=d\r\n")
                                                  : response("eind"));
    });
    EXPECT_EQ(ask(relative.address("/x/a")), "eind");
    EXPECT_THAT(relative.requests.back(), StartsWith("GET /b?c=d "));
}

TEST_F(CurlHttpClientTest, FollowsNoRedirectWithoutEndNorToWhatItWouldNotAsk) {
    const LoopbackServer ring(redirecting("/rond"));
    EXPECT_EQ(ask(ring.address()), std::nullopt);
    EXPECT_THAT(ring.requests, SizeIs(21));
    const LoopbackServer other(answering(kBody));
    // Reaches the other server all the same, so that it would notice.
    auto elsewhere = other.address();
    elsewhere.replace(elsewhere.find("127.0.0.1"), 9, "0.0.0.0");
    for (const auto* const to :
         {elsewhere.c_str(), "http://192.0.2.1/", "https://192.0.2.1/", "//192.0.2.1/",
          "file:///etc/hostname", "ftp://127.0.0.1/", "gopher://127.0.0.1/", "data:text/plain,x", "qrc:/x",
          "about:blank", "javascript:alert(1)", "http://localhost.vantor.example/",
          "http://127.0.0.1.vantor.example/", "http://127.0.0.1@192.0.2.1/", "http://", "http:///"}) {
        const LoopbackServer server(redirecting(to));
        EXPECT_EQ(ask(server.address()), std::nullopt) << to;
        EXPECT_THAT(server.requests, SizeIs(1)) << to;
    }
    EXPECT_EQ(other.connections, 0);
}

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

TEST_F(CurlHttpClientTest, MayBeAskedAgainOrDestroyedByAnyAnswer) {
    const LoopbackServer server(answering("kort"));
    Text second;
    client->get(server.address(), kLimits, [&](const Text&) {
        client->get(server.address(), kLimits, [&](Text body) { second = std::move(body); });
    });
    EXPECT_TRUE(runUntil([&] { return second.has_value(); }));
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

TEST_F(CurlHttpClientTest, AsksNothingWhereTheCertificateDoesNotConvince) {
    const ServerCertificate unknown;
    const ServerCertificate old("IP:127.0.0.1", -1);
    const ServerCertificate others("DNS:vantor.example,IP:127.0.0.2");
    for (const auto* const certificate : {&unknown, &old, &others}) {
        if (certificate != &unknown)
            trust(*certificate);
        const LoopbackServer server(certificate->server(), answering("geheim"));
        EXPECT_EQ(ask(server.address()), std::nullopt);
        EXPECT_THAT(server.requests, IsEmpty());
    }
}

TEST_F(CurlHttpClientTest, SpeaksEncryptedAndStaysSoAndHasNoneWhereTheOtherSideDoesNot) {
    const LoopbackServer silent(sending(""));
    QTcpServer plain;
    QObject::connect(&plain, &QTcpServer::newConnection, &plain,
                     [&plain] { sendingAndClosing(response(kBody))(*plain.nextPendingConnection()); });
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    EXPECT_EQ(ask("https" + silent.address().substr(4), {400ms, 1h, 1000}), std::nullopt);
    EXPECT_EQ(ask("https://127.0.0.1:" + std::to_string(plain.serverPort()) + "/"), std::nullopt);

    const ServerCertificate certificate;
    trust(certificate);
    const auto& tls = certificate.server();
    const LoopbackServer open(answering("open"));
    const LoopbackServer encrypted(tls, answering("geheim"));
    const LoopbackServer toEncrypted(tls, redirecting(encrypted.address()));
    EXPECT_EQ(ask(toEncrypted.address()), "geheim");
    EXPECT_THAT(encrypted.requests, SizeIs(1));
    EXPECT_EQ(ask(LoopbackServer(tls, redirecting(open.address())).address()), std::nullopt);
    EXPECT_EQ(ask(LoopbackServer(redirecting(encrypted.address())).address()), std::nullopt);
    EXPECT_EQ(
        ask(LoopbackServer(tls, flooding(kHead, "X-Endless: " + QByteArray(16'384, 'x') + "\r\n")).address()),
        std::nullopt);
    EXPECT_THAT(open.requests, IsEmpty());
    EXPECT_THAT(encrypted.requests, SizeIs(1));
}

} // namespace
} // namespace vantor
