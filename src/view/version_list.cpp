#include "view/version_list.h"

#include "base/local_time.h"
#include "base/shown_text.h"
#include "base/text.h"
#include "base/text_lookup.h"

#include <array>
#include <string_view>
#include <utility>

namespace vantor {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

std::string monthInWords(std::chrono::month month) {
    static constexpr std::array kMonths{toLookUp("januari"), toLookUp("februari"), toLookUp("maart"),
                                        toLookUp("april"),   toLookUp("mei"),      toLookUp("juni"),
                                        toLookUp("juli"),    toLookUp("augustus"), toLookUp("september"),
                                        toLookUp("oktober"), toLookUp("november"), toLookUp("december")};
    return lookUp(kMonths[static_cast<unsigned>(month) - 1]);
}

std::string dateInWords(year_month_day day, year_month_day today) {
    const auto number = std::to_string(static_cast<unsigned>(day.day()));
    const auto month = monthInWords(day.month());
    return day.year() == today.year()
               ? lookUp("%1 %2", {number, month})
               : lookUp("%1 %2 %3", {number, month, std::to_string(static_cast<int>(day.year()))});
}

std::string dayInWords(year_month_day day, year_month_day today, Beginning beginning) {
    const bool isSmall = beginning == Beginning::Small;
    if (day == today)
        return isSmall ? lookUp("vandaag") : lookUp("Vandaag");
    if (sys_days(day) + days(1) == sys_days(today))
        return isSmall ? lookUp("gisteren") : lookUp("Gisteren");
    return dateInWords(day, today);
}

std::string twoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string shootsInWords(std::size_t count) {
    return count == 1 ? lookUp("1 shoot") : lookUp("%1 shoots", {std::to_string(count)});
}

std::string setsInWords(std::size_t count) {
    return count == 1 ? lookUp("1 set") : lookUp("%1 sets", {std::to_string(count)});
}

std::string whatInWords(const Version& version) {
    using Kind = Version::Kind;
    if (version.kind == Kind::SetAside)
        return version.isReadable ? lookUp("opzij gezet") : lookUp("niet te lezen, opzij gezet");
    if (!version.isReadable)
        return lookUp("niet te lezen");
    if (version.kind == Kind::DailyCopy)
        return lookUp("kopie van die dag");
    return version.before.empty() ? lookUp("eerste wijziging van de dag")
                                  : lookUp("voor: %1", {shownText(version.before)});
}

} // namespace

std::string whenInWords(const Version& version, Timestamp now, Beginning beginning) {
    const auto today = localTime(now).day;
    if (version.kind == Version::Kind::DailyCopy)
        return dayInWords(utcTime(version.at).day, today, beginning);
    const auto at = localTime(version.at);
    return dayInWords(at.day, today, beginning) + ' ' + twoDigits(at.hour) + ':' + twoDigits(at.minute);
}

std::string countsInWords(const Version::Counts& counts) {
    return shootsInWords(counts.shoots) + ", " + setsInWords(counts.sets);
}

VersionLine lineOf(const Version& version, Timestamp now) {
    return {whenInWords(version, now, Beginning::Capital), whatInWords(version),
            version.counts ? countsInWords(*version.counts) : "—"};
}

VersionShootLine lineOf(const Shoot& shoot, Timestamp now) {
    std::vector<std::string> about{setsInWords(shoot.sets.size()),
                                   dateInWords(localTime(shoot.date).day, localTime(now).day)};
    if (!trimmed(shoot.client).empty())
        about.push_back(shownText(shoot.client));
    return {shownText(shoot.name), joined(about, " · ")};
}

void VersionList::show(std::vector<Version> versions) {
    m_versions = std::move(versions);
    m_chosen.reset();
    m_keys.clear();
    for (const auto& version : m_versions) {
        const auto& path = !version.point.empty()    ? version.point
                           : !version.shoots.empty() ? version.shoots
                                                     : version.catalog;
        m_keys.push_back(path.string());
    }
}

const std::string& VersionList::keyAt(std::size_t place) const {
    static const std::string kNone;
    return place < m_keys.size() ? m_keys[place] : kNone;
}

void VersionList::choose(std::optional<std::size_t> place) {
    m_chosen = place && *place < m_versions.size() ? place : std::nullopt;
}

const Version* VersionList::chosen() const {
    return m_chosen ? &m_versions[*m_chosen] : nullptr;
}

bool VersionList::isRead() const {
    return m_chosen && m_readKey == m_keys[*m_chosen];
}

std::optional<Version> VersionList::beginReading() {
    if (!m_chosen || m_reading || isRead())
        return std::nullopt;
    m_reading = m_keys[*m_chosen];
    return m_versions[*m_chosen];
}

void VersionList::finishReading(std::optional<LibraryVersion> content) {
    m_readKey = std::exchange(m_reading, std::nullopt).value_or(std::string());
    m_content = std::move(content);
}

const LibraryVersion* VersionList::content() const {
    return isRead() && m_content ? &*m_content : nullptr;
}

const std::vector<Shoot>& VersionList::shoots() const {
    static const std::vector<Shoot> kNone;
    const auto* const held = content();
    return held != nullptr && held->shoots ? *held->shoots : kNone;
}

std::string VersionList::reasonForNoShoots() const {
    if (!isRead())
        return {};
    if (!m_content)
        return lookUp("Deze versie is niet te lezen.");
    return m_content->shoots ? lookUp("Geen shoots in deze versie.")
                             : lookUp("Alleen de productcatalogus, zonder shoots.");
}

} // namespace vantor
