#include "store/restore_point_file.h"

#include "base/json.h"

#include <algorithm>
#include <tuple>

namespace vantor {
namespace {

constexpr std::size_t kTimeLength = std::string_view("20260314T093000Z").size();

} // namespace

std::string writePoint(const PointHead& head, std::string_view shoots, std::string_view catalog) {
    JsonWriter out(JsonWriter::Layout::Compact);
    out.startObject();
    out.key("at");
    out.text(head.at.iso8601());
    out.key("before");
    out.text(head.before);
    out.key("shoots");
    out.integer(head.shoots);
    out.key("sets");
    out.integer(head.sets);
    out.key("checksum");
    out.text(head.checksum);
    out.endObject();
    std::string file(out.written());
    file.reserve(file.size() + shoots.size() + catalog.size() + 3);
    file.append("\n").append(shoots).append("\n").append(catalog).append("\n");
    return file;
}

std::optional<PointHead> readPointHead(std::string_view beginning) {
    const auto end = beginning.find('\n');
    if (end == std::string_view::npos)
        return std::nullopt;
    PointHead head;
    std::string at;
    JsonReader in(beginning.substr(0, end));
    in.readObject([&](std::string_view key) {
        if (key == "at")
            in.readText(at);
        else if (key == "before")
            in.readText(head.before);
        else if (key == "shoots")
            in.readInteger(head.shoots);
        else if (key == "sets")
            in.readInteger(head.sets);
        else if (key == "checksum")
            in.readText(head.checksum);
        else
            in.skip();
    });
    const auto moment = Timestamp::parseIso8601(at);
    if (!in.finished() || !moment)
        return std::nullopt;
    head.at = *moment;
    return head;
}

std::optional<PointLines> linesOfPoint(std::string_view bytes) {
    const auto first = bytes.find('\n');
    const auto second = first == std::string_view::npos ? first : bytes.find('\n', first + 1);
    if (second == std::string_view::npos || !bytes.ends_with('\n') || second + 1 == bytes.size())
        return std::nullopt;
    return PointLines{bytes.substr(first + 1, second - first - 1),
                      bytes.substr(second + 1, bytes.size() - second - 2)};
}

std::string dayOfCopy(std::string_view name) {
    constexpr std::string_view kForm = "2026-03-14.json";
    const auto dash = name.find('-');
    const auto store = name.substr(0, dash);
    if ((store != "shoots" && store != "catalog") || name.size() != dash + 1 + kForm.size())
        return {};
    const auto day = std::string(name.substr(dash + 1, kForm.find('.')));
    return Timestamp::parseIso8601(day + "T00:00:00Z") ? day : std::string();
}

std::string compactTime(Timestamp at) {
    auto time = at.iso8601();
    std::erase_if(time, [](char c) { return c == '-' || c == ':'; });
    return time;
}

std::optional<Timestamp> timeOfName(std::string_view name) {
    // As "2026-03-14T09:30:00Z".
    if (name.size() < kTimeLength)
        return std::nullopt;
    std::string time(name.substr(0, kTimeLength));
    for (const std::size_t place : {4U, 7U})
        time.insert(place, 1, '-');
    for (const std::size_t place : {13U, 16U})
        time.insert(place, 1, ':');
    return Timestamp::parseIso8601(time);
}

bool isNewerPoint(std::string_view a, std::string_view b) {
    // The moment, then the number, which has none or more digits.
    const auto order = [](std::string_view name) {
        return std::tuple(name.substr(0, kTimeLength), name.size(), name);
    };
    return order(a) > order(b);
}

} // namespace vantor
