#include "formats/csv_row.h"

#include <algorithm>

namespace vantor {

std::optional<std::string_view> nextFilledLine(Lines& lines) {
    while (const auto line = lines.next()) {
        if (!trimmed(*line).empty())
            return line;
    }
    return std::nullopt;
}

std::vector<std::string> parseCSVRow(std::string_view line, std::size_t mostCells) {
    static constexpr auto kNone = std::string_view::npos;
    std::vector<std::string> cells;
    std::string cell;
    const auto endCell = [&] {
        cells.emplace_back(trimmed(cell));
        cell.clear();
    };
    bool inQuotes = false;
    std::size_t from = 0;
    auto quote = findCharacter(line, '"');
    auto semicolon = findCharacter(line, ';');
    while (quote != kNone || semicolon != kNone) {
        const auto at = std::min(quote, semicolon);
        cell.append(line, from, at - from);
        from = at + 1;
        if (at == quote) {
            inQuotes = !inQuotes;
            quote = findCharacter(line, '"', from);
        } else {
            if (inQuotes) {
                cell += ';';
            } else {
                endCell();
                if (cells.size() == mostCells)
                    return cells;
            }
            semicolon = findCharacter(line, ';', from);
        }
    }
    cell.append(line, from);
    endCell();
    return cells;
}

std::string quotedCell(std::string_view cell) {
    static constexpr auto kNone = std::string_view::npos;
    auto quote = findCharacter(cell, '"');
    if (quote == kNone && findCharacter(cell, ';') == kNone && cell.find('\n') == kNone)
        return std::string(cell);
    std::string out = "\"";
    std::size_t from = 0;
    for (; quote != kNone; quote = findCharacter(cell, '"', from)) {
        out.append(cell, from, quote - from);
        out += "\"\"";
        from = quote + 1;
    }
    out.append(cell, from);
    return out + '"';
}

std::vector<std::string> splitAtCommas(std::string_view text) {
    std::vector<std::string> pieces;
    for (std::size_t from = 0; from <= text.size();) {
        const auto end = std::min(findCharacter(text, ',', from), text.size());
        if (const auto piece = trimmed(text.substr(from, end - from)); !piece.empty())
            pieces.emplace_back(piece);
        from = end + 1;
    }
    return pieces;
}

} // namespace vantor
