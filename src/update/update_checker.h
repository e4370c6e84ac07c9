// UpdateChecker: asks the product's web site for a newer version, and tells where to download it.
//
// - Nothing is downloaded or installed. Every failure is silent: what was known before holds on.
// - A newer version is remembered, so that the next start knows of it before any answer.
// - At most one answer is asked for every six hours, however often the program is started; an answer that
//   makes no sense, or that does not come, counts as one.
// - Every change of what is available is announced through willChange() before it takes effect; whoever
//   hears of it may read, but not change or destroy, the checker.
// - Borrows the client, the store and the timer, which have to outlive it. One instance serves the whole
//   program; it belongs to the user-interface thread. An answer or a tick that comes when it is gone is
//   ignored.
#pragma once

#include "base/signal.h"
#include "base/timestamp.h"
#include "platform/http_client.h"
#include "platform/key_value_store.h"
#include "platform/timer.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

class UpdateChecker {
public:
    enum class Change { AvailableVersion, DownloadURL };

    // Knows at once of the newer version that an earlier run remembered under the same prefix.
    UpdateChecker(std::string endpoint, const std::string& keyPrefix, std::string currentVersion,
                  HttpClient& client, KeyValueStore& defaults, Timer& timer, Clock clock = Timestamp::now);
    UpdateChecker(const UpdateChecker&) = delete;
    UpdateChecker& operator=(const UpdateChecker&) = delete;
    ~UpdateChecker() = default;

    // Tells what is about to change; the new state can be read on the next turn of the event loop.
    [[nodiscard]] Signal<Change>& willChange() { return m_willChange; }

    // The newer version and the web address of its download; both are there, or neither.
    [[nodiscard]] const std::optional<std::string>& availableVersion() const { return m_availableVersion; }
    [[nodiscard]] const std::optional<std::string>& downloadURL() const { return m_downloadURL; }

    // The program's own version.
    [[nodiscard]] const std::string& currentVersion() const { return m_currentVersion; }
    [[nodiscard]] const std::string& endpoint() const { return m_endpoint; }
    [[nodiscard]] const std::string& lastKnownVersionKey() const { return m_lastKnownVersionKey; }
    [[nodiscard]] const std::string& lastKnownURLKey() const { return m_lastKnownURLKey; }
    [[nodiscard]] const std::string& lastCheckKey() const { return m_lastCheckKey; }
    // From one answer to the next question.
    [[nodiscard]] static constexpr std::chrono::seconds minCheckInterval() { return std::chrono::hours(6); }

    // Checks now and then again and again; starting twice leaves one timer.
    void start();
    // Asks, unless the last answer is younger than minCheckInterval() or dates from the future.
    void checkForUpdate();

    // Compares the whole numbers between the points, one by one and of any length; pieces that are no whole
    // number do not count, and missing numbers are 0.
    [[nodiscard]] static bool isVersion(std::string_view a, std::string_view newerThan);

private:
    void takeAnswer(const std::optional<std::string>& body);
    void publish(const std::optional<std::string>& version, const std::optional<std::string>& url);

    std::string m_endpoint;
    std::string m_lastKnownVersionKey;
    std::string m_lastKnownURLKey;
    std::string m_lastCheckKey;
    std::string m_currentVersion;
    HttpClient& m_client;
    KeyValueStore& m_defaults;
    Timer& m_timer;
    Clock m_clock;
    std::optional<std::string> m_availableVersion;
    std::optional<std::string> m_downloadURL;
    Signal<Change> m_willChange;
    // Owns nothing: what others hold weakly, to learn whether the checker is still there.
    std::shared_ptr<UpdateChecker> m_self;
};

} // namespace vantor
