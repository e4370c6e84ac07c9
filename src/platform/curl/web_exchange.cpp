#include "platform/curl/web_exchange.h"

#include "base/web_address.h"

#include <algorithm>
#include <csignal>
#include <string_view>
#include <utility>

namespace vantor {
namespace {

constexpr int kMostRedirects = 20;

// Once for the program, on whichever thread comes first.
bool isLibraryReady() {
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready;
}

std::string partOf(CURLU* url, CURLUPart part) {
    char* text = nullptr;
    if (curl_url_get(url, part, &text, 0) != CURLUE_OK)
        return {};
    const std::unique_ptr<char, decltype(&curl_free)> owned(text, curl_free);
    return text;
}

// By the host's own text, as the library has spelled it out: no name but localhost is looked up.
bool isLoopback(std::string host) {
    std::ranges::transform(host, host.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return host == "localhost" || host == "[::1]" ||
           (host.starts_with("127.") && host.find_first_not_of("0123456789.") == std::string::npos &&
            std::ranges::count(host, '.') == 3);
}

bool isLoopback(CURLU* url) {
    return isLoopback(partOf(url, CURLUPART_HOST));
}

// The library writes to connections that the other side has closed.
void blockBrokenPipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

WebExchange::WebExchange(std::string address, const HttpLimits& limits, std::string authorities)
    : m_address(std::move(address)),
      m_limits(limits),
      m_authorities(std::move(authorities)),
      m_transfers(isLibraryReady() ? curl_multi_init() : nullptr),
      m_end(Clock::now() + limits.whole),
      m_lastSign(Clock::now()) {}

void WebExchange::cancel() {
    m_isCancelled = true;
    if (m_transfers)
        curl_multi_wakeup(m_transfers.get());
}

std::optional<std::string> WebExchange::run() {
    blockBrokenPipeSignal();
    const Transfer transfer(m_transfers ? curl_easy_init() : nullptr);
    if (!transfer)
        return std::nullopt;
    auto url = urlThatMayBeAsked(m_address);
    for (int redirects = 0; url && redirects <= kMostRedirects; ++redirects) {
        prepare(transfer.get(), url.get());
        if (!perform(transfer.get()))
            return std::nullopt;
        const auto next = nextAddress(transfer.get());
        if (!next)
            return std::move(m_body);
        auto nextUrl = urlThatMayBeAsked(*next);
        if (!nextUrl || partOf(nextUrl.get(), CURLUPART_SCHEME) != partOf(url.get(), CURLUPART_SCHEME))
            return std::nullopt;
        url = std::move(nextUrl);
    }
    return std::nullopt;
}

// Decided on what the library made of the address, as that is where it connects to.
WebExchange::Url WebExchange::urlThatMayBeAsked(const std::string& address) {
    Url url(curl_url());
    if (!url || !isWebAddress(address) ||
        curl_url_set(url.get(), CURLUPART_URL, address.c_str(), CURLU_DISALLOW_USER) != CURLUE_OK)
        return nullptr;
    const auto scheme = partOf(url.get(), CURLUPART_SCHEME);
    return scheme == "https" || (scheme == "http" && isLoopback(url.get())) ? std::move(url) : nullptr;
}

void WebExchange::prepare(CURL* transfer, CURLU* url) {
    m_body.clear();
    curl_easy_reset(transfer);
    curl_easy_setopt(transfer, CURLOPT_CURLU, url);
    curl_easy_setopt(transfer, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
    curl_easy_setopt(transfer, CURLOPT_USERAGENT, "vantor-prep");
    curl_easy_setopt(transfer, CURLOPT_ACCEPT_ENCODING, "gzip");
    curl_easy_setopt(transfer, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    curl_easy_setopt(transfer, CURLOPT_FORBID_REUSE, 1L);
    if (isLoopback(url))
        curl_easy_setopt(transfer, CURLOPT_PROXY, "");
    if (!m_authorities.empty()) {
        curl_easy_setopt(transfer, CURLOPT_CAINFO, m_authorities.c_str());
        curl_easy_setopt(transfer, CURLOPT_CAPATH, nullptr);
    }
    // Threads and signals do not go together, and a name server that stays silent is not waited for in the end.
    curl_easy_setopt(transfer, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(transfer, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(transfer, CURLOPT_HEADERFUNCTION, takeHeader);
    curl_easy_setopt(transfer, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, takeBody);
    curl_easy_setopt(transfer, CURLOPT_WRITEDATA, this);
}

// Whether the answer came, and whole.
bool WebExchange::perform(CURL* transfer) {
    if (curl_multi_add_handle(m_transfers.get(), transfer) != CURLM_OK)
        return false;
    bool isWhole = false;
    while (!m_isCancelled) {
        int running = 0;
        if (curl_multi_perform(m_transfers.get(), &running) != CURLM_OK)
            break;
        int left = 0;
        if (const auto* const message = curl_multi_info_read(m_transfers.get(), &left)) {
            isWhole = message->msg == CURLMSG_DONE && message->data.result == CURLE_OK;
            break;
        }
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(
            std::min(m_end, m_lastSign + m_limits.silence) - Clock::now());
        if (wait.count() <= 0)
            break;
        const auto longest = static_cast<int>(std::min<std::chrono::milliseconds::rep>(wait.count(), 60'000));
        curl_multi_poll(m_transfers.get(), nullptr, 0, longest, nullptr);
    }
    curl_multi_remove_handle(m_transfers.get(), transfer);
    return isWhole && m_isBehindHeaders;
}

// Where the answer sends to.
std::optional<std::string> WebExchange::nextAddress(CURL* transfer) const {
    const char* address = nullptr;
    curl_easy_getinfo(transfer, CURLINFO_REDIRECT_URL, &address);
    return address != nullptr ? std::optional<std::string>(address) : std::nullopt;
}

// Less than all of it taken ends the transfer.
std::size_t WebExchange::takeHeader(char* bytes, std::size_t one, std::size_t count, void* self) {
    auto& exchange = *static_cast<WebExchange*>(self);
    const std::string_view line(bytes, one * count);
    // The library takes a connection that ends among the headers for the end of an empty answer.
    if (line.starts_with("HTTP/"))
        exchange.m_isBehindHeaders = false;
    else if (line.find_first_not_of("\r\n") == std::string_view::npos)
        exchange.m_isBehindHeaders = true;
    return exchange.isWithin(line.size()) ? line.size() : 0;
}

std::size_t WebExchange::takeBody(char* bytes, std::size_t one, std::size_t count, void* self) {
    auto& exchange = *static_cast<WebExchange*>(self);
    if (!exchange.isWithin(one * count))
        return 0;
    exchange.m_body.append(bytes, one * count);
    return one * count;
}

bool WebExchange::isWithin(std::size_t more) {
    m_lastSign = Clock::now();
    m_received += more;
    return m_received <= m_limits.mostBytes;
}

} // namespace vantor
