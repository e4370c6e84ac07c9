// QtHttpClient: an HttpClient that forgets everything between two questions.
//
// - Each question has a connection of its own. Nothing is shared: no cookies, no cache, no credentials.
// - A certificate that does not convince is no answer.
#pragma once

#include "platform/http_client.h"

#include <QObject>

namespace vantor {

class QtHttpClient final : public HttpClient {
public:
    void get(std::string_view address, const HttpLimits& limits,
             std::function<void(std::optional<std::string> body)> onAnswer) override;

private:
    // Owns the questions that have no answer yet.
    QObject m_questions;
};

} // namespace vantor
