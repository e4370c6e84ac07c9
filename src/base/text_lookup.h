// The text lookup: every text a user can see passes through it, with its Dutch wording as the key.
//
// - Without a lookup installed the text stands as written.
// - What is looked up elsewhere than where it is written is marked there, so that scripts/texts finds every key.
// - Installed once, before the first window or output is made, by the program that wants another language;
//   not to be changed while other threads run.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vantor {

using TextLookup = std::function<std::string(std::string_view dutch)>;

// An empty lookup takes the installed one away.
void setTextLookup(TextLookup lookup);

[[nodiscard]] std::string lookUp(std::string_view dutch);

// The same with values in the places of "%1" to "%9". Values are not looked up, and "%1" in them is only text.
[[nodiscard]] std::string lookUp(std::string_view dutch, std::initializer_list<std::string_view> values);

// Marks a text that is looked up later.
[[nodiscard]] constexpr std::string_view toLookUp(std::string_view dutch) {
    return dutch;
}

} // namespace vantor
