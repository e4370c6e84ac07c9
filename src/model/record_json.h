// The JSON form of records, written and read by the table of their fields (model/record_fields.h).
//
// Writing: a field a member, in the order of the table; an absent std::optional is left out.
// Reading: members may come in any order, unknown ones are ignored whatever they hold, of equal ones the last holds. A required
// member that is missing, null or of another type fails the whole text; an optional one that is missing or
// null keeps the value that the record is made with.
#pragma once

#include "base/json.h"
#include "base/timestamp.h"
#include "base/uuid.h"
#include "model/record_fields.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace vantor {

enum class DateForm {
    // A number: seconds since 2001-01-01T00:00:00Z.
    SecondsSinceReference,
    // A text: ISO 8601 in UTC.
    Iso8601,
};

// A value whose type is judged later, if at all: as it stands in the text that is read, empty where there is none.
struct UnreadJson {
    std::string_view json;
};

// For a record that files hold in more than one form: Type takes part in reading in its place, and its record()
// makes the record of it, or nothing where the text is none.
template <typename Record>
struct StoredForm {};

class RecordWriter {
public:
    RecordWriter(JsonWriter& out, DateForm dates) : m_out(out), m_dates(dates) {}

    template <HasFields Record>
    void write(const Record& record) {
        m_out.startObject();
        forEachField<Record>([&](const auto& field) { writeMember(field.key, record.*field.member); });
        m_out.endObject();
    }
    void write(const std::string& value) { m_out.text(value); }
    void write(std::int64_t value) { m_out.integer(value); }
    void write(const Uuid& value) {
        const auto characters = value.characters();
        m_out.text({characters.data(), characters.size()});
    }
    void write(const Timestamp& value) {
        if (m_dates == DateForm::Iso8601)
            m_out.text(value.iso8601());
        else
            m_out.number(value.secondsSinceReference);
    }
    template <ValueList List>
    void write(const List& list) {
        m_out.startArray();
        for (const auto& element : list)
            write(element);
        m_out.endArray();
    }

private:
    template <typename Value>
    void writeMember(std::string_view key, const Value& value) {
        m_out.key(key);
        write(value);
    }
    template <typename Value>
    void writeMember(std::string_view key, const std::optional<Value>& value) {
        if (value)
            writeMember(key, *value);
    }

    JsonWriter& m_out;
    DateForm m_dates;
};

class RecordReader {
public:
    RecordReader(JsonReader& in, DateForm dates) : m_in(in), m_dates(dates) {}

    // False, and the reader failed, when what comes next is not such a value.
    template <HasFields Record>
    bool read(Record& record) {
        if constexpr (requires { typename StoredForm<Record>::Type; }) {
            typename StoredForm<Record>::Type stored;
            if (!readMembers(stored))
                return false;
            std::optional<Record> made = std::move(stored).record();
            if (!made)
                return m_in.fail();
            record = *std::move(made);
            return true;
        } else {
            return readMembers(record);
        }
    }
    bool read(std::string& value) { return m_in.readText(value); }
    bool read(std::int64_t& value) { return m_in.readInteger(value); }
    bool read(UnreadJson& value) {
        value.json = m_in.skip();
        return !m_in.failed();
    }
    template <typename Value>
    bool read(std::optional<Value>& value) {
        return read(value.emplace());
    }
    bool read(Uuid& value) { return readParsed(value, Uuid::parse); }
    bool read(Timestamp& value) {
        if (m_dates == DateForm::Iso8601)
            return readParsed(value, Timestamp::parseIso8601);
        return m_in.readNumber(value.secondsSinceReference);
    }
    template <ValueList List>
    bool read(List& list) {
        list.clear();
        return m_in.readArray([&] {
            growSparingly(list);
            list.emplace_back();
            read(list.back());
        });
    }

private:
    template <typename Record>
    bool readMembers(Record& record) {
        std::uint32_t seen = 0;
        m_in.readObject([&](std::string_view key) {
            std::uint32_t bit = 1;
            bool isKnown = false;
            forEachField<Record>([&](const auto& field) {
                if (!isKnown && field.key == key) {
                    isKnown = true;
                    seen |= bit;
                    readMember(record.*field.member, field.isRequired);
                }
                bit <<= 1U;
            });
            if (!isKnown)
                m_in.skip();
        });
        static constexpr auto kRequired = requiredBits<Record>();
        return (seen & kRequired) == kRequired ? !m_in.failed() : m_in.fail();
    }

    // The first field's bit is the lowest.
    template <typename Record>
    static consteval std::uint32_t requiredBits() {
        static_assert(std::tuple_size_v<std::remove_const_t<decltype(kFields<Record>)>> <= 32);
        std::uint32_t bits = 0;
        std::uint32_t bit = 1;
        forEachField<Record>([&](const auto& field) {
            bits |= field.isRequired ? bit : 0;
            bit <<= 1U;
        });
        return bits;
    }

    template <typename Value>
    void readMember(Value& value, bool isRequired) {
        if (!isRequired && m_in.takeNull())
            value = Value();
        else
            read(value);
    }

    // Doubling a long list of small records in a hostile file would take many times the file's size for a moment.
    template <typename List>
    static void growSparingly(List& list) {
        static constexpr std::size_t kLong = 1024;
        if constexpr (requires { list.capacity(); }) {
            if (list.size() >= kLong && list.size() == list.capacity())
                list.reserve(list.size() + list.size() / 6);
        }
    }

    template <typename Value, typename Parse>
    bool readParsed(Value& value, Parse parse) {
        std::string_view text;
        if (!m_in.readText(text))
            return false;
        const auto parsed = parse(text);
        if (!parsed)
            return m_in.fail();
        value = *parsed;
        return true;
    }

    JsonReader& m_in;
    DateForm m_dates;
};

// Reads a whole text as one value; absent when it is anything else or followed by more. `stoppedAt`, where it is
// asked for, tells how far reading came, in bytes.
template <typename Value>
[[nodiscard]] std::optional<Value> readDocument(std::string_view json, DateForm dates,
                                                std::size_t* stoppedAt = nullptr) {
    JsonReader in(json);
    std::optional<Value> value(std::in_place);
    if (!RecordReader(in, dates).read(*value) || !in.finished())
        value.reset();
    if (stoppedAt != nullptr)
        *stoppedAt = in.position();
    return value;
}

} // namespace vantor
