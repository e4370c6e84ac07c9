#include "edit/activation_log.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace vantor {
namespace {

bool isBefore(const SetActivation& a, const SetActivation& b) {
    return std::tie(a.activatedAt.secondsSinceReference, a.setId) <
           std::tie(b.activatedAt.secondsSinceReference, b.setId);
}

} // namespace

std::vector<SetActivation> mergedLog(std::vector<SetActivation> log, std::vector<SetActivation> other) {
    auto known = log;
    std::ranges::sort(known, isBefore);
    std::ranges::sort(other, isBefore);
    const auto before = log.size();
    std::ranges::set_difference(other, known, std::back_inserter(log), isBefore);
    if (log.size() > before)
        std::ranges::stable_sort(
            log, {}, [](const SetActivation& entry) { return entry.activatedAt.secondsSinceReference; });
    return log;
}

} // namespace vantor
