// What becomes of every way in which a server can answer, or fail to. A bad answer leaves no trace but the time of
// the check, and nothing but a web address reaches the browser.

#include "platform/qt/qt_url_opener.h"
#include "tests/platform_qt/update_over_http.h"
#include "tests/support/loopback_server.h"
#include "tests/support/recording_desktop.h"
#include "tests/support/server_certificate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using testing::answering;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::LoopbackServer;
using testing::RecordingDesktop;
using testing::redirecting;
using testing::response;
using testing::ServerCertificate;

using Text = std::optional<std::string>;
using Respond = LoopbackServer::Respond;

constexpr const char* kRememberedURL = "https://vantor.example/2.0";
const std::string kNewerURL = "https://vantor.example/3.0";
const std::string kNewer = R"({"version":"3.0","download_url":")" + kNewerURL + R"("})";

class UpdateAnswersOverHttp : public testing::UpdateOverHttp {
protected:
    UpdateAnswersOverHttp() {
        defaults.setText("vantorprep.updateChecker.lastKnownVersion", "2.0");
        defaults.setText("vantorprep.updateChecker.lastKnownDownloadURL", kRememberedURL);
    }

    // Lets a checker that knows version 2.0 ask the address, and holds what it knows then against what it should.
    void expectBelieved(const std::string& endpoint, bool isBelieved) {
        const auto checker = makeChecker(endpoint);
        ASSERT_EQ(checker->availableVersion(), "2.0");
        check(*checker);
        const Text version = isBelieved ? "3.0" : "2.0";
        const Text url = isBelieved ? kNewerURL : kRememberedURL;
        EXPECT_EQ(checker->availableVersion(), version);
        EXPECT_EQ(checker->downloadURL(), url);
        EXPECT_EQ(defaults.text(checker->lastKnownVersionKey()), version);
        EXPECT_EQ(defaults.text(checker->lastKnownURLKey()), url);
    }
};

Respond sending(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) { socket.write(bytes); };
}

Respond sendingAndClosing(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) {
        socket.write(bytes);
        socket.disconnectFromHost();
    };
}

// Then a byte every few milliseconds, without end.
Respond trickling(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) {
        socket.write(bytes);
        auto* const drip = new QTimer(&socket);
        QObject::connect(drip, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
        drip->start(20);
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

// So many redirects, and then the answer.
Respond redirectingTimes(int times) {
    return [times, done = std::make_shared<int>(0)](QTcpSocket& socket) {
        socket.write(++*done <= times ? response("", "302 Found", "Location: /verder\r\n")
                                      : response(kNewer));
    };
}

QByteArray chunk(const std::string& bytes) {
    return QByteArray::number(bytes.size(), 16) + "\r\n" + QByteArray::fromStdString(bytes) + "\r\n";
}

QByteArray deflated(const std::string& text) {
    // Without the length that the toolkit puts in front.
    return qCompress(QByteArray::fromStdString(text), 9).sliced(4);
}

QByteArray gzipped(const std::string& text) {
    std::uint32_t checksum = 0xFFFFFFFF;
    for (const char c : text) {
        checksum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            checksum = (checksum >> 1) ^ ((checksum & 1) != 0 ? 0xEDB88320U : 0U);
    }
    const auto littleEndian = [](std::uint32_t number) {
        QByteArray bytes;
        for (int i = 0; i < 4; ++i)
            bytes += static_cast<char>(number >> (8 * i) & 0xFF);
        return bytes;
    };
    const auto stream = deflated(text);
    return QByteArray("\x1F\x8B\x08\0\0\0\0\0\0\x03", 10) + stream.sliced(2, stream.size() - 6) +
           littleEndian(~checksum) + littleEndian(static_cast<std::uint32_t>(text.size()));
}

Respond answeringEncoded(const QByteArray& body, const std::string& encoding) {
    return answering(body.toStdString(), "200 OK", "Content-Encoding: " + encoding + "\r\n");
}

std::string filledUp(std::size_t bytes) {
    return kNewer + std::string(bytes - kNewer.size(), ' ');
}

// What ends the question.
enum class End { Itself, Silence, Whole };

struct Exchange {
    std::string name;
    Respond respond;
    bool isBelieved;
    End end = End::Itself;
};

void PrintTo(const Exchange& each, std::ostream* out) {
    *out << each.name;
}

class UpdateExchange : public UpdateAnswersOverHttp, public ::testing::WithParamInterface<Exchange> {};

TEST_P(UpdateExchange, IsBelievedWholeOrLeavesNoTraceButItsTime) {
    // Nothing else may end it.
    client.silence = GetParam().end == End::Silence ? 400ms : 1h;
    client.whole = GetParam().end == End::Whole ? 400ms : 1h;
    const LoopbackServer server(GetParam().respond);
    QElapsedTimer elapsed;
    elapsed.start();
    expectBelieved(server.address(), GetParam().isBelieved);
    if (GetParam().end != End::Itself) {
        EXPECT_GE(elapsed.elapsed(), 390);
    }
}

std::vector<Exchange> kindsOfContent() {
    const auto answeringAs = [](const std::string& header) { return answering(kNewer, "200 OK", header); };
    const QByteArray header = "HTTP/1.1 200 OK\r\n";
    const auto newer = QByteArray::fromStdString(kNewer);
    const auto half = newer.size() / 2;
    return {
        {"AsJson", answeringAs("Content-Type: application/json\r\n"), true},
        {"AsAWebPage", answeringAs("Content-Type: text/html\r\n"), true},
        {"AsAPicture", answeringAs("Content-Type: image/png\r\n"), true},
        {"InAnotherCharacterSet", answeringAs("Content-Type: application/json; charset=utf-16\r\n"), true},
        {"AsADownload", answeringAs("Content-Disposition: attachment; filename=\"../x.desktop\"\r\n"), true},
        {"OfAnOldProtocol", sendingAndClosing("HTTP/1.0 200 OK\r\n\r\n" + newer), true},
        {"BehindAnInterimAnswer", sending("HTTP/1.1 100 Continue\r\n\r\n" + response(kNewer)), true},
        {"InPieces",
         [](QTcpSocket& socket) {
             socket.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(kNewer.size()) +
                          "\r\n\r\n");
             auto* const drip = new QTimer(&socket);
             QObject::connect(drip, &QTimer::timeout, &socket, [&socket, i = std::size_t{0}]() mutable {
                 if (i < kNewer.size())
                     socket.write(kNewer.data() + i++, 1);
             });
             drip->start(1);
         },
         true},
        {"UntilClosed", sendingAndClosing(header + "\r\n" + newer), true},
        {"Chunked",
         sending(header + "Transfer-Encoding: chunked\r\n\r\n" + chunk(kNewer.substr(0, 7)) +
                 chunk(kNewer.substr(7)) + "0\r\n\r\n"),
         true},
        {"ChunkedWithATrailer",
         sending(header + "Transfer-Encoding: chunked\r\n\r\n" + chunk(kNewer) + "0\r\nX-Extra: 1\r\n\r\n"),
         true},
        {"ChunksCutOff",
         sendingAndClosing(header + "Transfer-Encoding: chunked\r\n\r\n" + chunk(kNewer.substr(0, 7))),
         false},
        {"ChunkWithoutASize",
         sendingAndClosing(header + "Transfer-Encoding: chunked\r\n\r\nveel\r\n" + newer + "\r\n0\r\n\r\n"),
         false},
        {"NoContent", sending("HTTP/1.1 204 No Content\r\n\r\n"), false},
        {"NotModified", sending("HTTP/1.1 304 Not Modified\r\n\r\n"), false},
        {"MoreThanItsLength",
         sendingAndClosing(header + "Content-Length: " + QByteArray::number(newer.size()) + "\r\n\r\n" +
                           newer + newer),
         true},
        {"LengthWithinTheAnswer",
         sendingAndClosing(header + "Content-Length: " + QByteArray::number(half) + "\r\n\r\n" + newer),
         false},
        {"LengthBehindTheEnd",
         sendingAndClosing(header + "Content-Length: " + QByteArray::number(newer.size() + 1) + "\r\n\r\n" +
                           newer),
         false},
        {"LengthFarBehindTheEnd",
         sendingAndClosing(header + "Content-Length: 99999999999999\r\n\r\n" + newer), false},
        {"LengthOfNothing", sendingAndClosing(header + "Content-Length: 0\r\n\r\n" + newer), false},
        {"Gzip", answeringEncoded(gzipped(kNewer), "gzip"), true},
        {"Deflate", answeringEncoded(deflated(kNewer), "deflate"), true},
        {"GzipOfALargeAnswer", answeringEncoded(gzipped(filledUp(65'000)), "gzip"), true},
        {"GzipOfOneByteMore", answeringEncoded(gzipped(filledUp(65'537)), "gzip"), false},
        {"GzipOfFiftyMegabytes", answeringEncoded(gzipped(filledUp(50'000'000)), "gzip"), false},
        {"GzipCutOff", answeringEncoded(gzipped(kNewer).chopped(20), "gzip"), false},
        {"GzipThatIsNone", answeringEncoded(newer, "gzip"), false},
        {"GzipTwice", answeringEncoded(gzipped(gzipped(kNewer).toStdString()), "gzip"), false},
        {"GzipWithoutSayingSo", answering(gzipped(kNewer).toStdString()), false},
        {"EndlessBody", flooding(header + "\r\n" + newer, QByteArray(16'384, ' ')), false},
        {"EndlessChunks",
         flooding(header + "Transfer-Encoding: chunked\r\n\r\n" + chunk(kNewer),
                  chunk(std::string(16'384, ' '))),
         false},
        {"InterimAnswersWithoutEnd", flooding("", "HTTP/1.1 100 Continue\r\n\r\n"), false},
        {"HeadersWithoutEnd", flooding(header, "X-Endless: " + QByteArray(16'384, 'x') + "\r\n"), false},
        {"HeaderLineWithoutEnd", flooding(header + "X-Endless: ", QByteArray(16'384, 'x')), false},
        {"StatusWithoutEnd", flooding("HTTP/1.1 200 ", QByteArray(16'384, 'x')), false},
        {"NotHttp", sendingAndClosing("SSH-2.0-OpenSSH_9.2\r\n"), false},
        {"WithoutHeaders", sendingAndClosing(newer), false},
        {"HeadersCutOff", sendingAndClosing(header + "Content-Length: 1"), false},
        {"Nothing", sendingAndClosing(""), false},
        {"BrokenOff",
         [newer](QTcpSocket& socket) {
             socket.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n" + newer);
             socket.flush();
             socket.abort();
         },
         false},
    };
}

std::vector<Exchange> redirects() {
    // An answer that would be believed, had the server not sent elsewhere for it.
    const auto elsewhere = [](const std::string& to) {
        return answering(kNewer, "302 Found", "Location: " + to + "\r\n");
    };
    return {
        {"RedirectOnce", redirectingTimes(1), true},
        {"RedirectTwentyTimes", redirectingTimes(20), true},
        {"RedirectTwentyOneTimes", redirectingTimes(21), false},
        {"RedirectInARing", redirecting("/"), false},
        {"RedirectNowhere", answering(kNewer, "302 Found"), true},
        {"RedirectToAFile", elsewhere("file:///etc/hostname"), false},
        {"RedirectToData",
         elsewhere("data:application/json,%7B%22version%22:%223.0%22,%22download_url%22:%22https://x%22%7D"),
         false},
        {"RedirectToFtp", elsewhere("ftp://127.0.0.1/"), false},
        {"RedirectToAScript", elsewhere("javascript:alert(1)"), false},
        {"RedirectToThePast", elsewhere("gopher://127.0.0.1/"), false},
        {"RedirectAway", elsewhere("http://192.0.2.1/"), false},
        {"RedirectAwayByUserInfo", elsewhere("http://127.0.0.1@192.0.2.1/"), false},
        {"RedirectAwayByName", elsewhere("http://127.0.0.1.vantor.example/"), false},
        {"RedirectFromHttpToHttps", elsewhere("https://127.0.0.1:1/"), false},
        {"RedirectToNoHost", elsewhere("http:///"), false},
    };
}

std::vector<Exchange> hangs() {
    const QByteArray header = "HTTP/1.1 200 OK\r\n";
    const auto newer = QByteArray::fromStdString(kNewer);
    return {
        {"SilentFromTheStart", sending(""), false, End::Silence},
        {"SilentWithinTheStatus", sending("HTTP/1.1 2"), false, End::Silence},
        {"SilentWithinTheHeaders", sending(header + "Content-Type: applic"), false, End::Silence},
        {"SilentBeforeTheBody", sending(header + "Content-Length: 10\r\n\r\n"), false, End::Silence},
        {"SilentWithinTheBody", sending(header + "Content-Length: 1000\r\n\r\n" + newer), false,
         End::Silence},
        {"SilentBehindAChunk", sending(header + "Transfer-Encoding: chunked\r\n\r\n" + chunk(kNewer)), false,
         End::Silence},
        {"SilentUntilClosedThatNeverIs", sending(header + "\r\n" + newer), false, End::Silence},
        {"SilentBehindTheRedirect",
         [done = std::make_shared<int>(0)](QTcpSocket& socket) {
             if (++*done == 1)
                 socket.write(response("", "302 Found", "Location: /stil\r\n"));
         },
         false, End::Silence},
        {"TricklingStatus", trickling("HTTP/1.1 200 "), false, End::Whole},
        {"TricklingHeader", trickling(header + "X-Endless: "), false, End::Whole},
        {"TricklingBody", trickling(header + "\r\n" + newer), false, End::Whole},
    };
}

INSTANTIATE_TEST_SUITE_P(Content, UpdateExchange, ::testing::ValuesIn(kindsOfContent()),
                         [](const auto& each) { return each.param.name; });
INSTANTIATE_TEST_SUITE_P(Redirects, UpdateExchange, ::testing::ValuesIn(redirects()),
                         [](const auto& each) { return each.param.name; });
INSTANTIATE_TEST_SUITE_P(Hangs, UpdateExchange, ::testing::ValuesIn(hangs()),
                         [](const auto& each) { return each.param.name; });

TEST_F(UpdateAnswersOverHttp, FollowsNoRedirectToAnAddressThatIsNotThisMachinesOwn) {
    const LoopbackServer other(answering(kNewer));
    // Reaches the server all the same, so that it would notice.
    auto elsewhere = other.address();
    elsewhere.replace(elsewhere.find("127.0.0.1"), 9, "0.0.0.0");
    const LoopbackServer server(redirecting(elsewhere));
    expectBelieved(server.address(), false);
    EXPECT_EQ(server.requests.size(), 1U);
    EXPECT_EQ(other.connections, 0);
}

TEST_F(UpdateAnswersOverHttp, GivesUpOnAConnectionThatNobodyTakesUp) {
    client.silence = 400ms;
    // Its queue is full with others that wait.
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
    expectBelieved("http://127.0.0.1:" + std::to_string(server.serverPort()) + "/", false);
}

// Encrypted

TEST_F(UpdateAnswersOverHttp, BelievesAServerWithAGoodCertificate) {
    const ServerCertificate good;
    client.trust(good.file());
    const LoopbackServer server(good.server(), answering(kNewer));
    expectBelieved(server.address(), true);
}

TEST_F(UpdateAnswersOverHttp, AsksNothingOfAServerWithABadCertificate) {
    const ServerCertificate unknown;
    const ServerCertificate old("IP:127.0.0.1", -1);
    const ServerCertificate others("DNS:vantor.example");
    for (const auto* const certificate : {&unknown, &old, &others}) {
        if (certificate != &unknown)
            client.trust(certificate->file());
        const LoopbackServer server(certificate->server(), answering(kNewer));
        expectBelieved(server.address(), false);
        EXPECT_THAT(server.requests, IsEmpty());
    }
}

TEST_F(UpdateAnswersOverHttp, GivesUpOnHeadersWithoutEnd) {
    client.silence = client.whole = 1h;
    const ServerCertificate certificate;
    client.trust(certificate.file());
    const LoopbackServer server(
        certificate.server(),
        flooding("HTTP/1.1 200 OK\r\n", "X-Endless: " + QByteArray(16'384, 'x') + "\r\n"));
    expectBelieved(server.address(), false);
}

TEST_F(UpdateAnswersOverHttp, FollowsNoRedirectOutOfTheEncryption) {
    const ServerCertificate certificate;
    client.trust(certificate.file());
    const LoopbackServer open(answering(kNewer));
    const LoopbackServer server(certificate.server(), redirecting(open.address()));
    expectBelieved(server.address(), false);
    EXPECT_EQ(server.requests.size(), 1U);
    EXPECT_THAT(open.requests, IsEmpty());
}

TEST_F(UpdateAnswersOverHttp, GivesUpWhereTheEncryptionIsNotTakenUp) {
    client.silence = 400ms;
    const LoopbackServer silent(sending(""));
    auto address = silent.address();
    address.replace(0, 4, "https");
    expectBelieved(address, false);
}

TEST_F(UpdateAnswersOverHttp, HasNoneFromAServerThatAnswersInTheOpen) {
    QTcpServer open;
    QObject::connect(&open, &QTcpServer::newConnection, &open, [&open] {
        auto* const socket = open.nextPendingConnection();
        socket->write(response(kNewer));
        socket->disconnectFromHost();
    });
    ASSERT_TRUE(open.listen(QHostAddress::LocalHost));
    expectBelieved("https://127.0.0.1:" + std::to_string(open.serverPort()) + "/", false);
}

// The browser

class UpdateAddress : public UpdateAnswersOverHttp, public ::testing::WithParamInterface<const char*> {
protected:
    // What a click on the notice opens.
    static std::vector<std::string> opened(const UpdateChecker& checker) {
        RecordingDesktop desktop;
        QtUrlOpener opener;
        if (const auto& url = checker.downloadURL())
            opener.open(*url);
        return desktop.opened;
    }
};

class UpdateWebAddress : public UpdateAddress {};
class UpdateOtherAddress : public UpdateAddress {};

TEST_P(UpdateWebAddress, ReachesTheBrowser) {
    const std::string url = GetParam();
    const LoopbackServer server(answering(R"({"version":"3.0","download_url":")" + url + R"("})"));
    const auto checker = makeChecker(server.address());
    check(*checker);
    EXPECT_THAT(opened(*checker), ElementsAre(url));
    EXPECT_THAT(opened(*makeChecker(server.address())), ElementsAre(url));
}

INSTANTIATE_TEST_SUITE_P(All, UpdateWebAddress,
                         ::testing::Values("https://vantor.example/download?v=3.0#linux",
                                           "http://vantor.example/a%20b", "https://xn--vantr-kua.example/",
                                           "https://vantor.example:8443/", "http://[2001:db8::1]/x"));

TEST_P(UpdateOtherAddress, DoesNotReachTheBrowser) {
    const std::string url = GetParam();
    const LoopbackServer server(answering(R"({"version":"3.0","download_url":")" + url + R"("})"));
    const auto checker = makeChecker(server.address());
    check(*checker);
    EXPECT_THAT(opened(*checker), ElementsAre(kRememberedURL));

    // As when somebody else wrote it into the settings.
    defaults.setText(checker->lastKnownVersionKey(), "3.0");
    defaults.setText(checker->lastKnownURLKey(), url);
    EXPECT_THAT(opened(*makeChecker(server.address())), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, UpdateOtherAddress,
                         ::testing::Values("javascript:alert(1)", "file:///etc/passwd", "/etc/passwd",
                                           "ftp://vantor.example/", "data:text/html,x",
                                           "mailto:a@vantor.example", " https://vantor.example/",
                                           "https:vantor.example", "//vantor.example/", "vantor.example",
                                           "https://vant\xC3\xB8r.example/", ""));

} // namespace
} // namespace vantor
