#include "edit/change.h"

#include "base/shown_text.h"
#include "base/text.h"

#include <algorithm>
#include <utility>

namespace vantor {
namespace {

void applyInShoots(Library& library, Change& change) {
    for (auto& [shoot, sets] : change.inShoots)
        sets = apply(library.shoots[shoot].sets, std::move(sets));
}

} // namespace

bool Change::touchesShoots() const {
    return !shoots.isEmpty() ||
           std::ranges::any_of(inShoots, [](const auto& each) { return !each.sets.isEmpty(); });
}

bool Change::touchesCatalog() const {
    return !products.isEmpty() || !clients.isEmpty() || !brands.isEmpty();
}

std::string inName(std::string_view text) {
    constexpr std::size_t kMostBytes = 60;
    if (text.size() <= kMostBytes)
        return shownText(text);
    return shownText(std::string(firstCharacters(text, kMostBytes)) + "…");
}

Change changeNamed(std::string name) {
    Change change;
    change.name = std::move(name);
    return change;
}

Change apply(Library& library, Change change) {
    const bool takesBack = change.isInverse;
    if (!takesBack)
        applyInShoots(library, change);
    change.shoots = apply(library.shoots, std::move(change.shoots));
    if (takesBack)
        applyInShoots(library, change);
    change.products = apply(library.catalog.products, std::move(change.products));
    change.clients = apply(library.catalog.clients, std::move(change.clients));
    change.brands = apply(library.catalog.brands, std::move(change.brands));
    if (change.logged)
        library.shoots[change.logged->shoot].activationLog.push_back(change.logged->activation);
    change.logged.reset();
    change.isInverse = !takesBack;
    return change;
}

} // namespace vantor
