// JsonReader and JsonWriter: JSON text in and out (RFC 8259), piece by piece and without a tree in between.
//
// The reader walks the text once, as its caller asks for what should come next. What comes instead, and
// anything that is not JSON in valid UTF-8, is a failure; after one every call fails, so that a caller need
// look only once, at the end. What is skipped need only be well-formed: numbers of any size, half characters in
// escapes, and values nested as deep as the text is long, at one bit a level.
//
// The writer is given values in the order in which they are to stand; it checks nothing but needs no more
// memory than its text. Numbers are written so that they read back to the same bits, whatever the locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vantor {

class JsonReader {
public:
    // Reads `text`, which has to outlive the reader; a byte-order mark in front of it is passed over.
    explicit JsonReader(std::string_view text);
    ~JsonReader();
    JsonReader(const JsonReader&) = delete;
    JsonReader& operator=(const JsonReader&) = delete;

    // Calls `onMember(key)` for each member in order; it reads or skips exactly the member's value. The key is
    // valid until then.
    template <typename OnMember>
    bool readObject(OnMember&& onMember) {
        if (!enter('{'))
            return false;
        for (bool first = true; nextMember(first); first = false)
            onMember(std::string_view(m_key));
        return !failed();
    }

    // Calls `onElement()` for each element in order; it reads or skips exactly that element.
    template <typename OnElement>
    bool readArray(OnElement&& onElement) {
        if (!enter('['))
            return false;
        for (bool first = true; nextElement(first); first = false)
            onElement();
        return !failed();
    }

    bool readText(std::string& out);
    // Valid until the next call.
    bool readText(std::string_view& out);
    bool readNumber(double& out);
    // Takes numbers with a fraction or an exponent as well, as long as their value is a whole one that fits.
    bool readInteger(std::int64_t& out);
    // Takes a null if one comes next; anything else is left standing and no failure.
    bool takeNull();
    // Passes over one value, and gives it as it is written; empty when it is not well-formed.
    std::string_view skip();

    // Marks the text as unreadable, for what is JSON but not what it should be.
    bool fail();
    [[nodiscard]] bool failed() const { return m_failed; }
    // True when nothing failed and nothing but white space is left.
    [[nodiscard]] bool finished();
    // How many bytes have been read, a byte-order mark included; after a failure, about where it was.
    [[nodiscard]] std::size_t position() const;

private:
    struct Source;

    bool enter(char bracket);
    bool nextMember(bool first);
    bool nextElement(bool first);

    std::unique_ptr<Source> m_source;
    std::size_t m_markLength;
    std::string m_key;
    bool m_failed = false;
};

class JsonWriter {
public:
    enum class Layout { Compact, Indented };

    explicit JsonWriter(Layout layout);
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void startObject();
    void key(std::string_view name);
    void endObject();
    void startArray();
    void endArray();
    void text(std::string_view value);
    void integer(std::int64_t value);
    // A number that JSON cannot hold (infinite or not a number) is written as 0.
    void number(double value);

    // What has been written so far; valid until the next value or the writer's end.
    [[nodiscard]] std::string_view written() const;

private:
    struct Target;

    std::unique_ptr<Target> m_target;
};

} // namespace vantor
