// ScriptedHttpClient: an HttpClient without a network, which keeps every question until the test answers it.
#pragma once

#include "platform/http_client.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantor::testing {

class ScriptedHttpClient final : public HttpClient {
public:
    void get(std::string_view address, const HttpLimits& limits,
             std::function<void(std::optional<std::string> body)> onAnswer) override {
        ++questions;
        lastAddress = address;
        lastLimits = limits;
        m_waiting.push_back(std::move(onAnswer));
    }

    // Answers the oldest question that waits.
    void answer(std::optional<std::string> body) {
        ASSERT_FALSE(m_waiting.empty()) << "nobody asked";
        const auto onAnswer = std::move(m_waiting.front());
        m_waiting.pop_front();
        onAnswer(std::move(body));
    }

    int questions = 0;
    std::string lastAddress;
    HttpLimits lastLimits{};

private:
    std::deque<std::function<void(std::optional<std::string> body)>> m_waiting;
};

} // namespace vantor::testing
