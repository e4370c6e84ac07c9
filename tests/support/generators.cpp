#include "tests/support/generators.h"

#include "base/text.h"
#include "tests/support/table.h"

#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace vantor::testing {

std::string utf8(char32_t c) {
    const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (c < 0x80)
        return {byte(c)};
    if (c < 0x800)
        return {byte(0xC0 | c >> 6), byte(0x80 | (c & 0x3F))};
    if (c < 0x10000)
        return {byte(0xE0 | c >> 12), byte(0x80 | (c >> 6 & 0x3F)), byte(0x80 | (c & 0x3F))};
    return {byte(0xF0 | c >> 18), byte(0x80 | (c >> 12 & 0x3F)), byte(0x80 | (c >> 6 & 0x3F)),
            byte(0x80 | (c & 0x3F))};
}

rc::Gen<std::string> character() {
    static const auto kTelling = [] {
        using namespace std::string_view_literals;
        auto all = tableOf<std::string>("\r\n", ";\u0301", "\u0600;", "\"\u0301", ":\u200D", "/\u0301",
                                        ",\u0301", "e\u0301", "ij", "naam", "Set",
                                        "\U0001F469\u200D\U0001F3A8", "\U0001F1F3\U0001F1F1");
        for (const char32_t c :
             U";:/,\"\n\r\t\v\f\u0085\u2028\u2029 \u00A0\u3000\u0301\u200D\u0600\u0903\uFE0F\uFEFF\u200B"
             U"é\\{}[]\u001F\u007Fİß\U0001F469\uFFFD\uFFFF\u1F88\0"sv)
            all.push_back(utf8(c));
        return all;
    }();
    const auto scalar = rc::gen::map(rc::gen::inRange<std::uint32_t>(0, 0x110000 - 0x800),
                                     [](std::uint32_t n) { return utf8(n < 0xD800 ? n : n + 0x800); });
    const auto letter =
        rc::gen::map(rc::gen::inRange<char>(' ', '~'), [](char c) { return std::string(1, c); });
    return rc::gen::weightedOneOf<std::string>({{5, letter}, {3, rc::gen::elementOf(kTelling)}, {1, scalar}});
}

rc::Gen<std::string> text() {
    return rc::gen::map(rc::gen::scale(0.3, rc::gen::container<std::vector<std::string>>(character())),
                        [](const std::vector<std::string>& pieces) { return joined(pieces, ""); });
}

rc::Gen<std::string> plainText(std::string_view barred) {
    return rc::gen::map(text(), [barred = std::string(barred)](std::string made) {
        made = onOneLine(made);
        for (const char c : barred + '"') {
            for (auto at = findCharacter(made, c); at != std::string::npos; at = findCharacter(made, c))
                made.erase(at, 1);
        }
        made = trimmed(made);
        const auto fenced = ";" + made + ";";
        const bool joins = findCharacter(fenced, ';') != 0 ||
                           findCharacter(fenced, ';', fenced.size() - 1) == std::string_view::npos;
        return joins ? std::string("a") : made;
    });
}

rc::Gen<std::string> bytes() {
    return rc::gen::container<std::string>(rc::gen::arbitrary<char>());
}

rc::Gen<std::string> damaged(std::string document) {
    using Damage = std::tuple<int, std::size_t, std::size_t, std::string>;
    const auto piece =
        rc::gen::oneOf(character(), bytes(),
                       rc::gen::element<std::string>("null", "\"", "[", "{", "}", "]", ",", ":", "-1e999",
                                                     "\\ud800", "true", "\xFF"));
    const auto damage = rc::gen::tuple(rc::gen::inRange(0, 4), rc::gen::arbitrary<std::size_t>(),
                                       rc::gen::inRange<std::size_t>(1, 12), piece);
    return rc::gen::map(rc::gen::nonEmpty(rc::gen::container<std::vector<Damage>>(damage)),
                        [document = std::move(document)](const std::vector<Damage>& all) {
                            auto out = document;
                            for (const auto& [kind, place, length, by] : all) {
                                const auto at = out.empty() ? 0 : place % out.size();
                                if (kind == 0)
                                    out.erase(at, length);
                                else if (kind == 1)
                                    out.insert(at, out.substr(at, length));
                                else if (kind == 2)
                                    out.replace(at, length, by);
                                else
                                    out.resize(at);
                            }
                            return out;
                        });
}

rc::Gen<Uuid> uuid() {
    return rc::gen::map(rc::gen::container<std::vector<unsigned>>(16, rc::gen::inRange(0U, 256U)),
                        [](const std::vector<unsigned>& values) {
                            static constexpr std::string_view kDigits = "0123456789ABCDEF";
                            std::string out;
                            for (const auto value : values) {
                                if (out.size() == 8 || out.size() == 13 || out.size() == 18 ||
                                    out.size() == 23)
                                    out += '-';
                                out += kDigits[value / 16];
                                out += kDigits[value % 16];
                            }
                            return *Uuid::parse(out);
                        });
}

rc::Gen<Timestamp> moment() {
    return rc::gen::map(rc::gen::arbitrary<double>(),
                        [](double seconds) { return Timestamp{std::isfinite(seconds) ? seconds : 0}; });
}

rc::Gen<Timestamp> wholeSecond() {
    return rc::gen::map(rc::gen::inRange<std::int64_t>(-63'145'526'400, 252'423'993'600),
                        [](std::int64_t seconds) { return Timestamp{static_cast<double>(seconds)}; });
}

// Of the values of fields, too.
template <typename Value>
rc::Gen<Value> generated(const FieldValues& of) {
    if constexpr (std::same_as<Value, std::string>) {
        return of.texts;
    } else if constexpr (std::same_as<Value, Timestamp>) {
        return of.moments;
    } else if constexpr (std::same_as<Value, Uuid>) {
        return uuid();
    } else if constexpr (std::integral<Value>) {
        return rc::gen::arbitrary<Value>();
    } else if constexpr (ValueList<Value>) {
        return fewOf<Value>(generated<typename Value::value_type>(of));
    } else if constexpr (HasFields<Value>) {
        return rc::gen::exec([of] {
            Value record;
            forEachField<Value>([&](const auto& field) {
                auto& member = record.*field.member;
                member = *generated<std::remove_reference_t<decltype(member)>>(of);
            });
            return record;
        });
    } else {
        using Present = typename Value::value_type;
        return rc::gen::map(rc::gen::maybe(generated<Present>(of)),
                            [](const rc::Maybe<Present>& value) { return value ? Value(*value) : Value(); });
    }
}

rc::Gen<SetData> plainSet(std::string_view barred) {
    return rc::gen::apply(
        [](SetData set, std::vector<SetItem> items) {
            for (auto& item : items) {
                if (item.name.empty())
                    item.name = "tee";
            }
            if (set.setNumber.empty())
                set.setNumber = "1";
            set.items = std::move(items);
            return set;
        },
        generated<SetData>({.texts = plainText("")}),
        generated<std::vector<SetItem>>({.texts = plainText(barred)}));
}

template rc::Gen<SetItem> generated(const FieldValues&);
template rc::Gen<std::vector<SetItem>> generated(const FieldValues&);
template rc::Gen<SetData> generated(const FieldValues&);
template rc::Gen<SetActivation> generated(const FieldValues&);
template rc::Gen<Shoot> generated(const FieldValues&);
template rc::Gen<std::vector<Shoot>> generated(const FieldValues&);
template rc::Gen<Product> generated(const FieldValues&);
template rc::Gen<CatalogData> generated(const FieldValues&);

} // namespace vantor::testing

namespace vantor {

void showValue(const SetList& sets, std::ostream& out) {
    rc::show(std::vector<SetData>(sets.begin(), sets.end()), out);
}

template <HasFields Record>
void showValue(const Record& record, std::ostream& out) {
    forEachField<Record>([&](const auto& field) { rc::show(record.*field.member, out << field.key << ' '); });
}

template void showValue(const SetItem&, std::ostream&);
template void showValue(const SetData&, std::ostream&);
template void showValue(const SetActivation&, std::ostream&);
template void showValue(const Shoot&, std::ostream&);
template void showValue(const Product&, std::ostream&);
template void showValue(const CatalogData&, std::ostream&);

} // namespace vantor
