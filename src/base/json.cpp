#include "base/json.h"

#include "base/text.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>
#include <vector>

namespace vantor {
namespace {

// The library refuses all else that no text can hold, but takes the escape of a low surrogate on its own.
bool holdsSurrogate(std::string_view text) {
    for (auto at = text.find('\xED'); at != std::string_view::npos; at = text.find('\xED', at + 1)) {
        if (text.substr(at + 1, 1) >= "\xA0")
            return true;
    }
    return false;
}

// Takes one text into a string.
struct TextHandler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TextHandler> {
    std::string& out;

    explicit TextHandler(std::string& target) : out(target) {}
    bool String(const char* text, rapidjson::SizeType length, bool) {
        out.assign(text, length);
        return !holdsSurrogate(out);
    }
};

// Absent when the value is too large, or too close to zero, for the type.
template <typename Number>
std::optional<Number> converted(std::string_view text) {
    Number value = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace

// Walks the text by the grammar alone; what a text or a number means is for its reader.
struct JsonReader::Source {
    std::string_view text;
    std::size_t at = 0;
    rapidjson::Reader unescaping;
    std::string scratch;

    explicit Source(std::string_view json) : text(json) {}

    // Zero, which no JSON begins with, at the end.
    [[nodiscard]] char next() const { return at < text.size() ? text[at] : '\0'; }

    bool take(char wanted) {
        if (next() != wanted)
            return false;
        ++at;
        return true;
    }

    bool take(std::string_view word) {
        if (text.substr(at, word.size()) != word)
            return false;
        at += word.size();
        return true;
    }

    char peek() {
        at = std::min(text.find_first_not_of(" \t\r\n", at), text.size());
        return next();
    }

    // A text as it is written, quotes and escapes and all.
    std::optional<std::string_view> takeText() {
        const auto from = at;
        if (!take('"'))
            return std::nullopt;
        while (!take('"')) {
            const char c = next();
            if (static_cast<unsigned char>(c) < 0x20 || (c == '\\' && !takeEscape()))
                return std::nullopt;
            if (c != '\\')
                ++at;
        }
        const auto written = text.substr(from, at - from);
        return isValidUtf8(written) ? std::optional(written) : std::nullopt;
    }

    bool takeEscape() {
        take('\\');
        const char kind = next();
        if (std::string_view("\"\\/bfnrtu").find(kind) == std::string_view::npos)
            return false;
        ++at;
        if (kind != 'u')
            return true;
        const auto digits = text.substr(at, 4);
        at += digits.size();
        return digits.size() == 4 && std::all_of(digits.begin(), digits.end(), isHexDigit);
    }

    // A number as it is written.
    std::optional<std::string_view> takeNumber() {
        const auto from = at;
        take('-');
        if (!take('0') && !takeDigits())
            return std::nullopt;
        if (take('.') && !takeDigits())
            return std::nullopt;
        if (take('e') || take('E')) {
            if (!take('+'))
                take('-');
            if (!takeDigits())
                return std::nullopt;
        }
        return text.substr(from, at - from);
    }

    // At least one.
    bool takeDigits() {
        const auto from = at;
        while (isDigit(next()))
            ++at;
        return at > from;
    }

    // Any value but an array or an object.
    bool takeScalar() {
        switch (peek()) {
        case '"':
            return takeText().has_value();
        case 't':
            return take("true");
        case 'f':
            return take("false");
        case 'n':
            return take("null");
        default:
            return takeNumber().has_value();
        }
    }

    bool takeColon() { return peek() == ':' && take(':'); }

    bool takeKey() {
        peek();
        return takeText() && takeColon();
    }

    // Any value. What it needs to remember of an open bracket is one bit, whatever the text has in store.
    bool takeValue() {
        std::vector<bool> inObject;
        const auto closing = [&] { return inObject.back() ? '}' : ']'; };
        while (true) {
            if (const char bracket = peek(); bracket == '{' || bracket == '[') {
                take(bracket);
                inObject.push_back(bracket == '{');
                if (peek() != closing()) {
                    if (inObject.back() && !takeKey())
                        return false;
                    continue;
                }
            } else if (!takeScalar()) {
                return false;
            }
            while (!inObject.empty() && peek() == closing()) {
                take(closing());
                inObject.pop_back();
            }
            if (inObject.empty())
                return true;
            if (!take(',') || (inObject.back() && !takeKey()))
                return false;
        }
    }

    bool unescape(std::string_view written, std::string& out) {
        if (written.find('\\') == std::string_view::npos) {
            out.assign(written, 1, written.size() - 2);
            return true;
        }
        rapidjson::MemoryStream stream(written.data(), written.size());
        TextHandler handler(out);
        return !unescaping.Parse<rapidjson::kParseStopWhenDoneFlag>(stream, handler).IsError();
    }

    bool takeText(std::string& out) {
        peek();
        const auto written = takeText();
        return written && unescape(*written, out);
    }
};

JsonReader::JsonReader(std::string_view text)
    : m_source(std::make_unique<Source>(withoutByteOrderMark(text))),
      m_markLength(text.size() - withoutByteOrderMark(text).size()) {}

JsonReader::~JsonReader() = default;

bool JsonReader::fail() {
    m_failed = true;
    return false;
}

bool JsonReader::enter(char bracket) {
    if (m_failed || m_source->peek() != bracket)
        return fail();
    return m_source->take(bracket);
}

bool JsonReader::nextMember(bool first) {
    if (m_failed)
        return false;
    if (m_source->peek() == '}') {
        m_source->take('}');
        return false;
    }
    return ((first || m_source->take(',')) && m_source->takeText(m_key) && m_source->takeColon()) || fail();
}

bool JsonReader::nextElement(bool first) {
    if (m_failed)
        return false;
    if (m_source->peek() == ']') {
        m_source->take(']');
        return false;
    }
    if (first)
        return true;
    // A comma promises an element; without this a bracket behind it would pass as the end.
    return (m_source->take(',') && m_source->peek() != ']') || fail();
}

bool JsonReader::readText(std::string& out) {
    return (!m_failed && m_source->takeText(out)) || fail();
}

bool JsonReader::readText(std::string_view& out) {
    if (!readText(m_source->scratch))
        return false;
    out = m_source->scratch;
    return true;
}

bool JsonReader::readNumber(double& out) {
    m_source->peek();
    const auto written = m_failed ? std::nullopt : m_source->takeNumber();
    const auto value = written ? converted<double>(*written) : std::nullopt;
    if (!value)
        return fail();
    out = *value;
    return true;
}

bool JsonReader::readInteger(std::int64_t& out) {
    m_source->peek();
    const auto from = m_source->at;
    double number = 0;
    if (!readNumber(number))
        return false;
    if (const auto whole = converted<std::int64_t>(m_source->text.substr(from, m_source->at - from))) {
        out = *whole;
        return true;
    }
    // The bounds are powers of two: the largest integer itself is no double, and the least was read above.
    if (!(number > -0x1p63 && number < 0x1p63 && std::trunc(number) == number))
        return fail();
    out = static_cast<std::int64_t>(number);
    return true;
}

bool JsonReader::takeNull() {
    if (m_failed || m_source->peek() != 'n')
        return false;
    return m_source->take("null") || fail();
}

std::string_view JsonReader::skip() {
    m_source->peek();
    const auto from = m_source->at;
    if (m_failed || !m_source->takeValue()) {
        fail();
        return {};
    }
    return m_source->text.substr(from, m_source->at - from);
}

bool JsonReader::finished() {
    if (m_failed)
        return false;
    m_source->peek();
    return m_source->at == m_source->text.size() || fail();
}

std::size_t JsonReader::position() const {
    return m_markLength + m_source->at;
}

struct JsonWriter::Target {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> compact{buffer};
    rapidjson::PrettyWriter<rapidjson::StringBuffer> indented{buffer};
    Layout layout;

    explicit Target(Layout chosen) : layout(chosen) { indented.SetIndent(' ', 2); }

    template <typename Write>
    void write(Write&& write) {
        if (layout == Layout::Compact)
            write(compact);
        else
            write(indented);
    }
};

JsonWriter::JsonWriter(Layout layout) : m_target(std::make_unique<Target>(layout)) {}
JsonWriter::~JsonWriter() = default;

void JsonWriter::startObject() {
    m_target->write([](auto& out) { out.StartObject(); });
}

void JsonWriter::key(std::string_view name) {
    m_target->write([&](auto& out) { out.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); });
}

void JsonWriter::endObject() {
    m_target->write([](auto& out) { out.EndObject(); });
}

void JsonWriter::startArray() {
    m_target->write([](auto& out) { out.StartArray(); });
}

void JsonWriter::endArray() {
    m_target->write([](auto& out) { out.EndArray(); });
}

void JsonWriter::text(std::string_view value) {
    // An empty view may hold no address, which the library would take for a missing text.
    const char* bytes = value.empty() ? "" : value.data();
    m_target->write([&](auto& out) { out.String(bytes, static_cast<rapidjson::SizeType>(value.size())); });
}

void JsonWriter::integer(std::int64_t value) {
    m_target->write([&](auto& out) { out.Int64(value); });
}

void JsonWriter::number(double value) {
    m_target->write([&](auto& out) { out.Double(std::isfinite(value) ? value : 0); });
}

std::string_view JsonWriter::written() const {
    return {m_target->buffer.GetString(), m_target->buffer.GetSize()};
}

} // namespace vantor
