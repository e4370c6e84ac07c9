#include "formats/set_csv.h"

#include "base/text.h"
#include "base/text_lookup.h"
#include "formats/csv_row.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using Cells = std::vector<std::string>;

// As many as spreadsheets have. A line of nothing but semicolons would take many times its size as cells.
constexpr std::size_t kMostColumns = 16384;

bool containsAny(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

// Which cell of a line holds what.
struct Columns {
    using Index = std::optional<std::size_t>;

    Index setNumber;
    Index brand;
    Index items;
    Index model;
    Index location;
    Index email;
    // Columns behind the items column that hold one garment each.
    std::vector<std::size_t> furtherItems;

    explicit Columns(const Cells& header) {
        const auto find = [&](std::initializer_list<std::string_view> words) -> Index {
            const auto found = std::find_if(header.begin(), header.end(),
                                            [&](const auto& cell) { return containsAny(cell, words); });
            if (found == header.end())
                return std::nullopt;
            return static_cast<std::size_t>(found - header.begin());
        };
        setNumber = find({"set"});
        brand = find({"merk", "brand", "naam", "name", "product"});
        items = find({"item"});
        model = find({"model"});
        location = find({"locatie", "location"});
        email = find({"email", "e-mail"});
        for (std::size_t i = items ? *items + 1 : header.size(); i < header.size(); ++i) {
            if (containsAny(header[i], {"item"}))
                furtherItems.push_back(i);
        }
    }
};

std::string_view cellAt(const Cells& cells, Columns::Index column) {
    return column && *column < cells.size() ? std::string_view(cells[*column]) : std::string_view();
}

SetData setOfLine(const Cells& cells, const Columns& columns, Timestamp now) {
    auto set = SetData::make(now);
    set.setNumber = cellAt(cells, columns.setNumber);
    set.brand = cellAt(cells, columns.brand);
    set.model = cellAt(cells, columns.model);
    set.location = cellAt(cells, columns.location);
    set.email = cellAt(cells, columns.email);
    const auto addItem = [&](std::string_view text) {
        if (auto item = parseSlashedItem(text))
            set.items.push_back(*std::move(item));
    };
    for (const auto& piece : splitAtCommas(cellAt(cells, columns.items)))
        addItem(piece);
    for (const auto column : columns.furtherItems)
        addItem(cellAt(cells, column));
    return set;
}

std::string itemsCell(const std::vector<SetItem>& items) {
    std::vector<std::string> texts(items.size());
    std::transform(items.begin(), items.end(), texts.begin(), slashed);
    return joined(texts, ", ");
}

} // namespace

bool readSetCSV(std::string_view text, Timestamp now, const std::function<void(SetData)>& onSet) {
    Lines lines(withoutByteOrderMark(text));
    const auto headerLine = nextFilledLine(lines);
    if (!headerLine)
        return false;
    auto header = parseCSVRow(*headerLine, kMostColumns);
    for (auto& cell : header)
        cell = trimmed(lowerCased(cell));
    const Columns columns(header);

    std::size_t position = 0;
    while (const auto line = nextFilledLine(lines)) {
        ++position;
        auto set = setOfLine(parseCSVRow(*line, header.size()), columns, now);
        if (set.setNumber.empty())
            set.setNumber = std::to_string(position);
        if (!set.brand.empty() || !set.items.empty())
            onSet(std::move(set));
    }
    return position > 0;
}

SetsOfCSV readSetCSV(std::string_view text, Timestamp now) {
    SetsOfCSV read;
    read.hasLines = readSetCSV(text, now, [&](SetData set) { read.sets.push_back(std::move(set)); });
    return read;
}

std::string writeSetCSV(const Shoot& shoot) {
    std::string text = lookUp("Set;Merk;Items;Model;Locatie;Email;Getagd");
    for (const auto& set : shoot.sets) {
        const std::array<std::string, 7> cells{
            set.setNumber,
            set.brand,
            itemsCell(set.items),
            set.model,
            set.location,
            set.email,
            std::to_string(set.taggedCount),
        };
        text += '\n';
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (i > 0)
                text += ';';
            text += quotedCell(cells[i]);
        }
    }
    return text;
}

} // namespace vantor
