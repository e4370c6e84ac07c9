// rapidcheck generators: texts of every sort, random bytes, damaged documents, and whole records. What they are made of is
// compiled once, as it takes the compiler longer than the tests that use it.
#pragma once

#include "model/product_fields.h"
#include "model/shoot_fields.h"

#include <rapidcheck.h>

#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace vantor::testing {

std::string utf8(char32_t c);

// One character or a few that belong together: plain letters, what the formats give a meaning to, and all
// else.
rc::Gen<std::string> character();

rc::Gen<std::string> text();

// A short list, of elements as large as ever.
template <typename List, typename Element>
rc::Gen<List> fewOf(rc::Gen<Element> element) {
    return rc::gen::scale(0.08, rc::gen::container<List>(rc::gen::scale(12.5, std::move(element))));
}

// A text that formats built of lines and separators keep as it is: without line breaks, quotes and white
// space at its ends, without what would join its ends to their neighbours, and without `barred`.
rc::Gen<std::string> plainText(std::string_view barred);

rc::Gen<std::string> bytes();

// The document with a few places struck out, doubled, overwritten or cut off.
rc::Gen<std::string> damaged(std::string document);

rc::Gen<Uuid> uuid();

// Any moment a number can tell.
rc::Gen<Timestamp> moment();

// A whole second of the years 0 to 9999.
rc::Gen<Timestamp> wholeSecond();

// What the fields of a record are made of.
struct FieldValues {
    rc::Gen<std::string> texts = text();
    rc::Gen<Timestamp> moments = moment();
};

// A record, field by field, or a list of them.
template <typename Value>
rc::Gen<Value> generated(const FieldValues& of = {});

// A set of plain texts with a number and named items, whose texts are without `barred`.
rc::Gen<SetData> plainSet(std::string_view barred);

} // namespace vantor::testing

namespace vantor {

// For the report of a property that does not hold.
void showValue(const SetList& sets, std::ostream& out);

template <HasFields Record>
void showValue(const Record& record, std::ostream& out);

} // namespace vantor
