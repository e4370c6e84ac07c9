// HttpClient: fetches one small answer from the network.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

struct HttpLimits {
    // Longest silence of the other side.
    std::chrono::milliseconds silence;
    // Longest time for the whole answer, however busy the other side is.
    std::chrono::milliseconds whole;
    // A larger body is no answer.
    std::size_t mostBytes;
};

class HttpClient {
public:
    virtual ~HttpClient() = default;

    // Asks for the address with a plain GET, without cookies, credentials or a cache. Only https is spoken,
    // and http with a loopback address; redirects are followed within the same scheme. `onAnswer` is called
    // once, later, on the user-interface thread: with the body, whatever the status said, or with none when
    // there was no whole answer within the limits. It is not called any more once the client is gone.
    virtual void get(std::string_view address, const HttpLimits& limits,
                     std::function<void(std::optional<std::string> body)> onAnswer) = 0;
};

} // namespace vantor
