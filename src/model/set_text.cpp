// The texts of a set: its card's text in both directions, and the two lines that name it on screen.

#include "base/text.h"
#include "base/text_lookup.h"
#include "model/headline.h"
#include "model/shoot.h"

namespace vantor {
namespace {

void addLine(std::string& text, std::string_view tag, std::string_view value) {
    if (!text.empty())
        text += '\n';
    text += tag;
    text += ':';
    text += onOneLine(value);
}

void addField(std::string& text, std::string_view tag, std::string_view value) {
    if (!value.empty())
        addLine(text, tag, value);
}

void readLine(SetData& set, std::string_view line) {
    const auto parts = splitOnce(line, ':');
    if (!parts.second)
        return;
    const auto key = upperCased(*parts.first);
    const auto value = *parts.second;
    if (key == "SET") {
        set.setNumber = value;
    } else if (key == "BRAND") {
        set.brand = value;
    } else if (key == "MODEL") {
        set.model = value;
    } else if (key == "LOCATION") {
        set.location = value;
    } else if (key == "EMAIL") {
        set.email = value;
    } else if (key == "ITEM") {
        // Unlike in a table's cell, a blank name in front of a second slash stands.
        const auto item = splitOnce(value, '/');
        if (item.first)
            set.items.push_back(
                SetItem::make(std::string(*item.first), std::string(item.second.value_or(""))));
    }
}

} // namespace

std::optional<SetData> SetData::parse(std::string_view text, Timestamp now) {
    auto set = SetData::make(now);
    Lines lines(text);
    while (const auto line = lines.next())
        readLine(set, trimmed(*line));
    if (set.setNumber.empty() && set.brand.empty())
        return std::nullopt;
    return set;
}

std::string SetData::toQRText() const {
    std::string text;
    addField(text, "SET", setNumber);
    addField(text, "BRAND", brand);
    for (const auto& item : items)
        addLine(text, "ITEM", slashed(item));
    addField(text, "MODEL", model);
    addField(text, "LOCATION", location);
    addField(text, "EMAIL", email);
    return text;
}

std::string SetData::headline() const {
    return joined(headlinePieces(*this), "");
}

std::vector<std::string> headlinePieces(const SetData& set) {
    std::vector<std::string> pieces;
    if (!set.setNumber.empty()) {
        static constexpr std::string_view kPlace = "%1";
        const auto text = lookUp("Set %1");
        const auto at = text.find(kPlace);
        pieces.push_back(text.substr(0, at));
        if (at != std::string::npos) {
            pieces.push_back(set.setNumber);
            pieces.push_back(text.substr(at + kPlace.size()));
        }
    }
    if (!set.setNumber.empty() && !set.brand.empty())
        pieces.emplace_back(" — ");
    pieces.push_back(set.brand);
    return pieces;
}

std::string SetData::description() const {
    std::string line;
    for (const auto& item : items) {
        if (&item != &items.front())
            line += ", ";
        line += item.name;
        if (!item.color.empty())
            line += " " + item.color;
    }
    return line;
}

} // namespace vantor
