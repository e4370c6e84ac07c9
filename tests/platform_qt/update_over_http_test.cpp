// Update checks over the real client, the real settings and a server of the test's own.

#include "platform/curl/curl_http_client.h"
#include "platform/qt/qt_key_value_store.h"
#include "platform/qt/qt_timer.h"
#include "tests/support/event_loop.h"
#include "tests/support/loopback_server.h"
#include "tests/support/standing_clock.h"
#include "tests/support/temporary_folder.h"
#include "update/update_checker.h"

#include <gtest/gtest.h>

#include <string>

namespace vantor::testing {
namespace {

TEST(UpdateOverHttp, BelievesAnAnswerOverARestartAndOneCutOffLeavesNoTraceButItsTime) {
    const TemporaryFolder folder;
    QtKeyValueStore defaults(folder / "instellingen.ini");
    CurlHttpClient client(post);
    QtTimer timer;
    StandingClock clock{{800'000'000.25}};
    const std::string url = "https://vantor.example/3.0";
    const auto answer = response(R"({"version":"3.0","download_url":")" + url + R"("})");
    for (const bool isWhole : {true, false}) {
        const LoopbackServer server([&](QTcpSocket& socket) {
            socket.write(isWhole ? answer : answer.chopped(1));
            socket.disconnectFromHost();
        });
        UpdateChecker checker(server.address(), "updates", "1.9.9", client, defaults, timer, clock.clock());
        EXPECT_EQ(checker.availableVersion().has_value(), !isWhole);
        clock.set({clock.now().secondsSinceReference + 21'600});
        checker.checkForUpdate();
        EXPECT_TRUE(runUntil([&] {
            const auto date = QtKeyValueStore(folder / "instellingen.ini").date(checker.lastCheckKey());
            return date && date->secondsSinceReference == clock.now().secondsSinceReference;
        }));
        EXPECT_EQ(checker.availableVersion(), "3.0");
        EXPECT_EQ(checker.downloadURL(), url);
    }
}

} // namespace
} // namespace vantor::testing
