// UpdateOverHttp: update checks over the real client, the real settings and servers of the test's own.
#pragma once

#include "platform/curl/curl_http_client.h"
#include "platform/qt/qt_key_value_store.h"
#include "platform/qt/qt_timer.h"
#include "tests/support/event_loop.h"
#include "tests/support/standing_clock.h"
#include "tests/support/temporary_folder.h"
#include "update/update_checker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantor::testing {

// Asks the real client, with the test's own patience where it has one.
class HurriedClient final : public HttpClient {
public:
    void get(std::string_view address, const HttpLimits& limits,
             std::function<void(std::optional<std::string> body)> onAnswer) override {
        m_client->get(address,
                      {silence.value_or(limits.silence), whole.value_or(limits.whole), limits.mostBytes},
                      std::move(onAnswer));
    }

    // Takes the certificate in this file for an authority's.
    void trust(const std::string& file) { m_client = std::make_unique<CurlHttpClient>(post, file); }

    std::optional<std::chrono::milliseconds> silence;
    std::optional<std::chrono::milliseconds> whole;

private:
    std::unique_ptr<CurlHttpClient> m_client = std::make_unique<CurlHttpClient>(post);
};

class UpdateOverHttp : public ::testing::Test {
protected:
    // Of version 1.9.9.
    std::unique_ptr<UpdateChecker> makeChecker(const std::string& endpoint) {
        return std::make_unique<UpdateChecker>(endpoint, "vantorprep.updateChecker", "1.9.9", client,
                                               defaults, timer, clock.clock());
    }

    // Checks once, whenever the last answer came, and waits for what is stored about the new one.
    void check(UpdateChecker& checker) {
        clock.set({clock.now().secondsSinceReference + 21'600});
        checker.checkForUpdate();
        EXPECT_TRUE(runUntil([&] { return isStored(checker, clock.now()); }));
    }
    [[nodiscard]] bool isStored(const UpdateChecker& checker, Timestamp moment) const {
        const auto date = defaults.date(checker.lastCheckKey());
        return date && date->secondsSinceReference == moment.secondsSinceReference;
    }

    TemporaryFolder folder;
    HurriedClient client;
    QtKeyValueStore defaults{folder / "instellingen.ini"};
    QtTimer timer;
    StandingClock clock{{800'000'000.25}};
};

} // namespace vantor::testing
