#include "platform/curl/curl_http_client.h"

#include "platform/curl/web_exchange.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace vantor {

using OnAnswer = std::function<void(std::optional<std::string> body)>;

// One question: its exchange on a thread of its own, and whom to tell.
class CurlHttpClient::Question {
public:
    Question(std::string address, const HttpLimits& limits, std::string authorities, OnAnswer onAnswer)
        : m_onAnswer(std::move(onAnswer)),
          m_exchange(std::move(address), limits, std::move(authorities)) {}
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;
    ~Question() {
        m_exchange.cancel();
        if (m_thread.joinable())
            m_thread.join();
    }

    // `onBody` is called once, on any thread.
    void begin(const OnAnswer& onBody) {
        try {
            m_thread = std::thread([this, onBody] { onBody(m_exchange.run()); });
        } catch (const std::system_error&) {
            onBody(std::nullopt);
        }
    }

    [[nodiscard]] OnAnswer takeOnAnswer() { return std::move(m_onAnswer); }

private:
    OnAnswer m_onAnswer;
    WebExchange m_exchange;
    std::thread m_thread;
};

CurlHttpClient::CurlHttpClient(Post post, std::string authorities)
    : m_post(std::move(post)),
      m_authorities(std::move(authorities)) {}

CurlHttpClient::~CurlHttpClient() = default;

void CurlHttpClient::get(std::string_view address, const HttpLimits& limits, OnAnswer onAnswer) {
    m_questions.push_back(
        std::make_shared<Question>(std::string(address), limits, m_authorities, std::move(onAnswer)));
    const auto answer = [this](const std::weak_ptr<Question>& asked, std::optional<std::string> body) {
        // The client is there as long as its question is.
        auto question = asked.lock();
        if (!question)
            return;
        std::erase(m_questions, question);
        const auto tell = question->takeOnAnswer();
        question.reset();
        tell(std::move(body));
    };
    const std::weak_ptr asked = m_questions.back();
    m_questions.back()->begin([post = m_post, answer, asked](std::optional<std::string> body) {
        post([answer, asked, body = std::move(body)] { answer(asked, body); });
    });
}

} // namespace vantor
