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

constexpr auto kHeader = toLookUp("Set;Merk;Items;Model;Locatie;Email;Getagd");
constexpr std::size_t kColumns = 7;

// As many as spreadsheets have. A line of nothing but semicolons would take many times its size as cells.
constexpr std::size_t kMostColumns = 16384;

bool containsAny(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

// The titles in a header line, made comparable.
Cells titlesOf(std::string_view line) {
    auto titles = parseCSVRow(line, kMostColumns);
    for (auto& title : titles)
        title = trimmed(lowerCased(title));
    return titles;
}

// Which cell of a line holds what: by the words in its title, and where the text lookup writes titles without these words,
// by the title that it writes. What is the written title of one column is never another one.
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
        auto written = titlesOf(lookUp(kHeader));
        written.resize(kColumns);
        const auto isAnother = [&](const std::string& title, std::size_t column) {
            return title != written[column] && std::ranges::find(written, title) != written.end();
        };
        const auto find = [&](std::size_t column, std::initializer_list<std::string_view> words) -> Index {
            auto found = std::ranges::find_if(header, [&](const auto& title) {
                return containsAny(title, words) && !isAnother(title, column);
            });
            if (found == header.end() && !written[column].empty())
                found = std::ranges::find(header, written[column]);
            if (found == header.end())
                return std::nullopt;
            return static_cast<std::size_t>(found - header.begin());
        };
        setNumber = find(0, {"set"});
        brand = find(1, {"merk", "brand", "naam", "name", "product"});
        items = find(2, {"item"});
        model = find(3, {"model"});
        location = find(4, {"locatie", "location"});
        email = find(5, {"email", "e-mail"});
        for (std::size_t i = items ? *items + 1 : header.size(); i < header.size(); ++i) {
            if (containsAny(header[i], {"item"}) && !isAnother(header[i], 2))
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

bool readSetCSV(std::string_view text, Timestamp now, const std::function<void(SetData)>& onSet,
                const std::function<void(LeftOutLine)>& onLeftOut) {
    Lines lines(withoutByteOrderMark(text));
    const auto headerLine = nextFilledLine(lines);
    if (!headerLine)
        return false;
    const auto header = titlesOf(*headerLine);
    const Columns columns(header);

    std::size_t position = 0;
    while (const auto line = nextFilledLine(lines)) {
        ++position;
        auto set = setOfLine(parseCSVRow(*line, header.size()), columns, now);
        if (set.setNumber.empty())
            set.setNumber = std::to_string(position);
        if (!set.brand.empty() || !set.items.empty())
            onSet(std::move(set));
        else if (onLeftOut)
            onLeftOut({lines.number(), LeftOutLine::Why::SaysTooLittle});
    }
    return position > 0;
}

SetsOfCSV readSetCSV(std::string_view text, Timestamp now) {
    SetsOfCSV read;
    read.hasLines = readSetCSV(
        text, now, [&](SetData set) { read.sets.push_back(std::move(set)); },
        [&](LeftOutLine line) { read.leftOut.push_back(line); });
    return read;
}

std::string writeSetCSV(const Shoot& shoot) {
    std::string text = lookUp(kHeader);
    for (const auto& set : shoot.sets) {
        const std::array<std::string, kColumns> cells{
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
