// EnvironmentVariable: sets a variable of the environment, or takes it away, until the end of its scope.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace vantor::testing {

class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value) : m_name(std::move(name)) {
        if (const char* const before = std::getenv(m_name.c_str()))
            m_before = before;
        assign(value);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { assign(m_before); }

private:
    void assign(const std::optional<std::string>& value) {
        if (value)
            ::setenv(m_name.c_str(), value->c_str(), 1);
        else
            ::unsetenv(m_name.c_str());
    }

    std::string m_name;
    std::optional<std::string> m_before;
};

} // namespace vantor::testing
