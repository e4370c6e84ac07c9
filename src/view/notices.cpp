#include "view/notices.h"

#include <algorithm>
#include <utility>

namespace vantor {

void Notices::removeTopic(const std::string& topic) {
    if (topic.empty())
        return;
    std::erase_if(m_errors, [&](const Notice& notice) { return notice.topic == topic; });
    if (m_other && m_other->notice.topic == topic)
        m_other.reset();
}

void Notices::show(Notice notice) {
    removeTopic(notice.topic);
    notice.number = ++m_count;
    if (notice.kind == Notice::Kind::Error)
        m_errors.push_back(std::move(notice));
    else
        m_other = {std::move(notice), m_stopwatch() + kShown};
    m_didChange.emit();
}

void Notices::withdraw(const std::string& topic) {
    removeTopic(topic);
    m_didChange.emit();
}

void Notices::dismiss() {
    if (!m_errors.empty())
        m_errors.pop_back();
    else
        m_other.reset();
    m_didChange.emit();
}

void Notices::expire() {
    if (!m_other || m_other->until > m_stopwatch())
        return;
    m_other.reset();
    m_didChange.emit();
}

const Notice* Notices::current() const {
    if (!m_errors.empty())
        return &m_errors.back();
    return m_other ? &m_other->notice : nullptr;
}

std::optional<std::chrono::milliseconds> Notices::timeLeft() const {
    using namespace std::chrono_literals;
    return m_other ? std::optional(std::max(m_other->until - m_stopwatch(), 0ms)) : std::nullopt;
}

} // namespace vantor
