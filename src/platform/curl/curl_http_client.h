// CurlHttpClient: an HttpClient that asks beside the window and forgets everything between two questions.
//
// - Each question has a thread and connections of its own. Nothing is shared: no cookies, no cache, no credentials.
// - A certificate that does not convince is no answer.
// - Proxies are those of the environment, but for loopback addresses, which are asked without one.
// - Whatever the other side does, a question ends at its limits, and at once when the client goes.
#pragma once

#include "platform/http_client.h"

#include <memory>
#include <string>
#include <vector>

namespace vantor {

class CurlHttpClient final : public HttpClient {
public:
    // Runs the work later, on the thread that asks. Is called on any thread.
    using Post = std::function<void(std::function<void()> work)>;

    // `authorities` is a file of the certificates to trust instead of the system's; empty: the system's.
    explicit CurlHttpClient(Post post, std::string authorities = {});
    CurlHttpClient(const CurlHttpClient&) = delete;
    CurlHttpClient& operator=(const CurlHttpClient&) = delete;
    ~CurlHttpClient() override;

    void get(std::string_view address, const HttpLimits& limits,
             std::function<void(std::optional<std::string> body)> onAnswer) override;

private:
    class Question;

    Post m_post;
    std::string m_authorities;
    // Those that have no answer yet. Nobody else owns one, so that a late answer finds none.
    std::vector<std::shared_ptr<Question>> m_questions;
};

} // namespace vantor
