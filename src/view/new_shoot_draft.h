// NewShootDraft: a shoot while it is made. Texts are taken as they stand.
#pragma once

#include "base/timestamp.h"
#include "store/product_catalog.h"
#include "store/shoot_manager.h"

#include <string>
#include <vector>

namespace vantor {

struct NewShootDraft {
    std::string name;
    std::string location;
    // Empty for no client.
    std::string client;

    [[nodiscard]] bool canCreate() const { return !name.empty(); }

    // Adds the shoot at the front and makes it the active one.
    void create(ShootManager& manager, Timestamp now) const;
};

// The clients that shoots name, each once, in plain text order.
[[nodiscard]] std::vector<std::string> clientsOf(const std::vector<Shoot>& shoots);

// Those and the catalogue's, each once, in plain text order: upper case stands before lower case.
[[nodiscard]] std::vector<std::string> knownClients(const ProductCatalog& catalog,
                                                    const std::vector<Shoot>& shoots);

// The catalogue's clients and `others`, each spelling once, by name ignoring case.
[[nodiscard]] std::vector<std::string> allClients(const ProductCatalog& catalog,
                                                  const std::vector<std::string>& others);

} // namespace vantor
