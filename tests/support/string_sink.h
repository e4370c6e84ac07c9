// StringSink: a ByteSink into a string, which can be full after a number of bytes.
#pragma once

#include "platform/byte_sink.h"

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace vantor::testing {

class StringSink final : public ByteSink {
public:
    explicit StringSink(std::size_t room = std::numeric_limits<std::size_t>::max()) : m_room(room) {}

    bool write(std::string_view more) override {
        m_full = m_full || more.size() > m_room - m_bytes.size();
        if (!m_full)
            m_bytes += more;
        return !m_full;
    }

    [[nodiscard]] const std::string& bytes() const { return m_bytes; }

private:
    std::size_t m_room;
    std::string m_bytes;
    bool m_full = false;
};

} // namespace vantor::testing
