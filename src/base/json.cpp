#include "base/json.h"

#include "base/text.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

namespace vantor {
namespace {

// Numbers are checked here but converted by the standard library: exactly, and without the undefined shifts of
// this one for a zero with an exponent.
constexpr unsigned kScalarFlags = rapidjson::kParseStopWhenDoneFlag | rapidjson::kParseNumbersAsStringsFlag |
                                  rapidjson::kParseValidateEncodingFlag;
constexpr unsigned kSkipFlags = kScalarFlags | rapidjson::kParseIterativeFlag;

// The library refuses all else that is not valid UTF-8, but takes the escape of a low surrogate on its own.
bool holdsSurrogate(std::string_view text) {
    for (auto at = text.find('\xED'); at != std::string_view::npos; at = text.find('\xED', at + 1)) {
        if (text.substr(at + 1, 1) >= "\xA0")
            return true;
    }
    return false;
}

// Takes one text into a string, and refuses everything else.
struct TextHandler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TextHandler> {
    std::string& out;

    explicit TextHandler(std::string& target) : out(target) {}
    bool Default() { return false; }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        out.assign(text, length);
        return !holdsSurrogate(out);
    }
};

// Takes one number, as it is written, into a string.
struct NumberHandler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, NumberHandler> {
    std::string& out;

    explicit NumberHandler(std::string& target) : out(target) {}
    bool Default() { return false; }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        out.assign(text, length);
        return true;
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

struct NullHandler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, NullHandler> {
    bool Default() { return false; }
    bool Null() { return true; }
};

// Lets any value pass that is not nested too deep.
struct SkipHandler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, SkipHandler> {
    int depth = 0;

    bool enter() { return ++depth <= kMaximumJsonDepth; }
    bool leave() { return --depth >= 0; }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        return !holdsSurrogate({text, length});
    }
    bool StartObject() { return enter(); }
    bool EndObject(rapidjson::SizeType) { return leave(); }
    bool StartArray() { return enter(); }
    bool EndArray(rapidjson::SizeType) { return leave(); }
};

} // namespace

struct JsonReader::Source {
    rapidjson::MemoryStream stream;
    rapidjson::Reader reader;
    std::string scratch;

    explicit Source(std::string_view text) : stream(text.data(), text.size()) {}

    template <unsigned kFlags, typename Handler>
    bool parse(Handler& handler) {
        return !reader.Parse<kFlags>(stream, handler).IsError();
    }
};

JsonReader::JsonReader(std::string_view text)
    : m_source(std::make_unique<Source>(withoutByteOrderMark(text))),
      m_markLength(text.size() - withoutByteOrderMark(text).size()) {}

JsonReader::~JsonReader() = default;

char JsonReader::peek() {
    rapidjson::SkipWhitespace(m_source->stream);
    return m_source->stream.Peek();
}

bool JsonReader::fail() {
    m_failed = true;
    return false;
}

bool JsonReader::enter(char bracket) {
    if (m_failed || peek() != bracket)
        return fail();
    m_source->stream.Take();
    return true;
}

bool JsonReader::nextMember(bool first) {
    if (m_failed)
        return false;
    char next = peek();
    if (next == '}') {
        m_source->stream.Take();
        return false;
    }
    if (!first) {
        if (next != ',')
            return fail();
        m_source->stream.Take();
        next = peek();
    }
    TextHandler handler(m_key);
    if (next != '"' || !m_source->parse<kScalarFlags>(handler) || peek() != ':')
        return fail();
    m_source->stream.Take();
    return true;
}

bool JsonReader::nextElement(bool first) {
    if (m_failed)
        return false;
    const char next = peek();
    if (next == ']') {
        m_source->stream.Take();
        return false;
    }
    if (first)
        return true;
    if (next != ',')
        return fail();
    m_source->stream.Take();
    // A comma promises an element; without this a bracket behind it would pass as the end.
    return peek() != ']' || fail();
}

bool JsonReader::readText(std::string& out) {
    TextHandler handler(out);
    if (m_failed || peek() != '"' || !m_source->parse<kScalarFlags>(handler))
        return fail();
    return true;
}

bool JsonReader::readText(std::string_view& out) {
    if (!readText(m_source->scratch))
        return false;
    out = m_source->scratch;
    return true;
}

bool JsonReader::readNumber(double& out) {
    NumberHandler handler(m_source->scratch);
    if (m_failed || !m_source->parse<kScalarFlags>(handler))
        return fail();
    const auto value = converted<double>(m_source->scratch);
    if (!value)
        return fail();
    out = *value;
    return true;
}

bool JsonReader::readInteger(std::int64_t& out) {
    double number = 0;
    if (!readNumber(number))
        return false;
    if (const auto whole = converted<std::int64_t>(m_source->scratch)) {
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
    if (m_failed || peek() != 'n')
        return false;
    NullHandler handler;
    return m_source->parse<kScalarFlags>(handler) || fail();
}

void JsonReader::skip() {
    SkipHandler handler;
    if (m_failed || !m_source->parse<kSkipFlags>(handler))
        fail();
}

bool JsonReader::finished() {
    if (m_failed)
        return false;
    rapidjson::SkipWhitespace(m_source->stream);
    return m_source->stream.Tell() == m_source->stream.size_ || fail();
}

std::size_t JsonReader::position() const {
    return m_markLength + m_source->stream.Tell();
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
