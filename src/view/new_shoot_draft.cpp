#include "view/new_shoot_draft.h"

#include <set>
#include <utility>

namespace vantor {
namespace {

void addClients(std::set<std::string>& names, const std::vector<Shoot>& shoots) {
    for (const auto& shoot : shoots) {
        if (!shoot.client.empty())
            names.insert(shoot.client);
    }
}

} // namespace

void NewShootDraft::create(ShootManager& manager, Timestamp now) const {
    manager.addShoot(Shoot::make(name, location, client, now));
}

std::vector<std::string> clientsOf(const std::vector<Shoot>& shoots) {
    std::set<std::string> names;
    addClients(names, shoots);
    return {names.begin(), names.end()};
}

std::vector<std::string> knownClients(const ProductCatalog& catalog, const std::vector<Shoot>& shoots) {
    std::set<std::string> names(catalog.clients().begin(), catalog.clients().end());
    addClients(names, shoots);
    return {names.begin(), names.end()};
}

std::vector<std::string> allClients(const ProductCatalog& catalog, const std::vector<std::string>& others) {
    auto names = catalog.allClientNames();
    names.insert(names.end(), others.begin(), others.end());
    return uniqueSortedNames(std::move(names));
}

} // namespace vantor
