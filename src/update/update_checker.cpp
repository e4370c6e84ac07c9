#include "update/update_checker.h"

#include "base/json.h"
#include "base/text.h"
#include "base/web_address.h"

#include <algorithm>
#include <compare>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using namespace std::chrono_literals;

constexpr HttpLimits kLimits{6s, 8s, 65'536};

struct Answer {
    std::string version;
    std::string downloadURL;
};

std::optional<Answer> readAnswer(std::string_view body) {
    Answer answer;
    JsonReader in(body);
    in.readObject([&](std::string_view key) {
        if (key == "version")
            in.readText(answer.version);
        else if (key == "download_url")
            in.readText(answer.downloadURL);
        else
            in.skip();
    });
    if (!in.finished() || answer.version.empty() || !isWebAddress(answer.downloadURL))
        return std::nullopt;
    return answer;
}

// A whole number of any length.
struct Number {
    bool negative = false;
    // Without leading zeros; none for 0.
    std::string_view digits;

    friend bool operator==(const Number&, const Number&) = default;
    friend std::strong_ordering operator<=>(const Number& a, const Number& b) {
        if (a.negative != b.negative)
            return b.negative <=> a.negative;
        const auto& smaller = a.negative ? b : a;
        const auto& larger = a.negative ? a : b;
        if (smaller.digits.size() != larger.digits.size())
            return smaller.digits.size() <=> larger.digits.size();
        return smaller.digits <=> larger.digits;
    }
};

std::optional<Number> readNumber(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    return Number{negative && !text.empty(), text};
}

std::vector<Number> numbersOf(std::string_view version) {
    std::vector<Number> numbers;
    while (true) {
        const auto point = findCharacter(version, '.');
        if (const auto number = readNumber(version.substr(0, point)))
            numbers.push_back(*number);
        if (point == std::string_view::npos)
            return numbers;
        version.remove_prefix(point + 1);
    }
}

} // namespace

UpdateChecker::UpdateChecker(std::string endpoint, const std::string& keyPrefix, std::string currentVersion,
                             HttpClient& client, KeyValueStore& defaults, Timer& timer, Clock clock)
    : m_endpoint(std::move(endpoint)),
      m_lastKnownVersionKey(keyPrefix + ".lastKnownVersion"),
      m_lastKnownURLKey(keyPrefix + ".lastKnownDownloadURL"),
      m_lastCheckKey(keyPrefix + ".lastCheckDate"),
      m_currentVersion(std::move(currentVersion)),
      m_client(client),
      m_defaults(defaults),
      m_timer(timer),
      m_clock(std::move(clock)),
      m_self(this, [](UpdateChecker*) {}) {
    const auto version = m_defaults.text(m_lastKnownVersionKey);
    const auto url = m_defaults.text(m_lastKnownURLKey);
    if (version && url && isWebAddress(*url) && isVersion(*version, m_currentVersion))
        publish(version, url);
}

void UpdateChecker::start() {
    checkForUpdate();
    m_timer.startRepeating(minCheckInterval(), [weak = std::weak_ptr(m_self)] {
        if (const auto self = weak.lock())
            self->checkForUpdate();
    });
}

void UpdateChecker::checkForUpdate() {
    if (const auto last = m_defaults.date(m_lastCheckKey)) {
        const std::chrono::duration<double> elapsed(m_clock().secondsSinceReference -
                                                    last->secondsSinceReference);
        if (elapsed < minCheckInterval())
            return;
    }
    m_client.get(m_endpoint, kLimits, [weak = std::weak_ptr(m_self)](const std::optional<std::string>& body) {
        if (const auto self = weak.lock())
            self->takeAnswer(body);
    });
}

void UpdateChecker::takeAnswer(const std::optional<std::string>& body) {
    // Also when the site is out of order, so that it is not asked all the more.
    m_defaults.setDate(m_lastCheckKey, m_clock());
    if (!body)
        return;
    const auto answer = readAnswer(*body);
    if (!answer)
        return;
    if (isVersion(answer->version, m_currentVersion)) {
        publish(answer->version, answer->downloadURL);
        m_defaults.setText(m_lastKnownVersionKey, answer->version);
        m_defaults.setText(m_lastKnownURLKey, answer->downloadURL);
    } else {
        publish(std::nullopt, std::nullopt);
        m_defaults.remove(m_lastKnownVersionKey);
        m_defaults.remove(m_lastKnownURLKey);
    }
}

void UpdateChecker::publish(const std::optional<std::string>& version,
                            const std::optional<std::string>& url) {
    if (m_availableVersion != version) {
        m_willChange.emit(Change::AvailableVersion);
        m_availableVersion = version;
    }
    if (m_downloadURL != url) {
        m_willChange.emit(Change::DownloadURL);
        m_downloadURL = url;
    }
}

bool UpdateChecker::isVersion(std::string_view a, std::string_view newerThan) {
    auto ours = numbersOf(a);
    auto theirs = numbersOf(newerThan);
    const auto count = std::max(ours.size(), theirs.size());
    ours.resize(count);
    theirs.resize(count);
    const auto [our, their] = std::mismatch(ours.begin(), ours.end(), theirs.begin());
    return our != ours.end() && *our > *their;
}

} // namespace vantor
