// WebExchange: asks for one address, follows where it is sent, and comes to an end within its limits.
//
// Headers count like the body, also those of interim answers and of redirects.
#pragma once

#include "platform/http_client.h"

#include <curl/curl.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace vantor {

class WebExchange {
public:
    // The limits begin to count now. `authorities` is a file of certificates; empty: the system's.
    WebExchange(std::string address, const HttpLimits& limits, std::string authorities);

    // Waits for the body; none where there is no whole answer, or the address may not be asked. Once, on any thread.
    [[nodiscard]] std::optional<std::string> run();
    // Ends run() without a body. On any thread.
    void cancel();

private:
    using Clock = std::chrono::steady_clock;
    template <auto kCleanup>
    struct Release {
        void operator()(auto* handle) const { kCleanup(handle); }
    };
    using Transfer = std::unique_ptr<CURL, Release<curl_easy_cleanup>>;
    using Transfers = std::unique_ptr<CURLM, Release<curl_multi_cleanup>>;
    using Url = std::unique_ptr<CURLU, Release<curl_url_cleanup>>;

    static std::size_t takeHeader(char* bytes, std::size_t one, std::size_t count, void* self);
    static std::size_t takeBody(char* bytes, std::size_t one, std::size_t count, void* self);
    [[nodiscard]] bool isWithin(std::size_t more);
    [[nodiscard]] static Url urlThatMayBeAsked(const std::string& address);
    void prepare(CURL* transfer, CURLU* url);
    [[nodiscard]] bool perform(CURL* transfer);
    [[nodiscard]] std::optional<std::string> nextAddress(CURL* transfer) const;

    std::string m_address;
    HttpLimits m_limits;
    std::string m_authorities;
    Transfers m_transfers;
    std::atomic<bool> m_isCancelled = false;
    Clock::time_point m_end;
    Clock::time_point m_lastSign;
    std::size_t m_received = 0;
    bool m_isBehindHeaders = false;
    std::string m_body;
};

} // namespace vantor
