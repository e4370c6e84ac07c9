// How a record's members become JSON members, said once for both directions.
//
// A record type takes part through a function visitMembers(visit, record) in its namespace, which names each
// member with visit.required(key, member) or visit.optional(key, member); the record is const when it is written.
// The order of these calls is the order in the file.
//
// Reading: members may come in any order, unknown ones are ignored whatever they hold, of equal ones the last holds. A required
// member that is missing, null or of another type fails the whole text; an optional one that is missing or
// null keeps the value that the record is made with.
#pragma once

#include "base/json.h"
#include "base/timestamp.h"
#include "base/uuid.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vantor {

enum class DateForm {
    // A number: seconds since 2001-01-01T00:00:00Z.
    SecondsSinceReference,
    // A text: ISO 8601 in UTC.
    Iso8601,
};

// A list of records or of values, but not a text.
template <typename T>
concept JsonList = requires(T list) {
    list.emplace_back();
}
&&!std::same_as<T, std::string>;

// For visitMembers(): T is Record or const Record.
template <typename T, typename Record>
concept MaybeConst = std::same_as<std::remove_const_t<T>, Record>;

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

    template <typename Record>
    void write(const Record& record) {
        m_out.startObject();
        visitMembers(*this, record);
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
    template <JsonList List>
    void write(const List& list) {
        m_out.startArray();
        for (const auto& element : list)
            write(element);
        m_out.endArray();
    }

    template <typename Value>
    void required(std::string_view key, const Value& value) {
        m_out.key(key);
        write(value);
    }
    template <typename Value>
    void optional(std::string_view key, const Value& value) {
        required(key, value);
    }
    template <typename Value>
    void optional(std::string_view key, const std::optional<Value>& value) {
        if (value)
            required(key, *value);
    }

private:
    JsonWriter& m_out;
    DateForm m_dates;
};

class RecordReader {
public:
    RecordReader(JsonReader& in, DateForm dates) : m_in(in), m_dates(dates) {}

    // False, and the reader failed, when what comes next is not such a value.
    template <typename Record>
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
    bool read(Uuid& value) { return readParsed(value, Uuid::parse); }
    bool read(Timestamp& value) {
        if (m_dates == DateForm::Iso8601)
            return readParsed(value, Timestamp::parseIso8601);
        return m_in.readNumber(value.secondsSinceReference);
    }
    template <JsonList List>
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
            MemberReader member{*this, key, seen};
            visitMembers(member, record);
            if (!member.found)
                m_in.skip();
        });
        RequiredMembers members;
        visitMembers(members, record);
        return (seen & members.mask) == members.mask ? !m_in.failed() : m_in.fail();
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

    // Reads the one member that has this key.
    struct MemberReader {
        RecordReader& reader;
        std::string_view key;
        std::uint32_t& seen;
        bool found = false;
        std::uint32_t bit = 1;

        template <typename Value>
        void required(std::string_view name, Value& value) {
            if (!found && name == key) {
                found = true;
                seen |= bit;
                reader.read(value);
            }
            bit <<= 1U;
        }
        template <typename Value>
        void optional(std::string_view name, Value& value) {
            if (!found && name == key) {
                found = true;
                if (reader.m_in.takeNull())
                    value = Value();
                else
                    reader.read(value);
            }
        }
        template <typename Value>
        void optional(std::string_view name, std::optional<Value>& value) {
            if (!found && name == key) {
                found = true;
                value.reset();
                if (!reader.m_in.takeNull())
                    reader.read(value.emplace());
            }
        }
    };

    struct RequiredMembers {
        std::uint32_t mask = 0;

        template <typename Value>
        void required(std::string_view, Value&) {
            mask = (mask << 1U) | 1U;
        }
        template <typename Value>
        void optional(std::string_view, Value&) {}
    };

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
