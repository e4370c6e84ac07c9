// Stores that have a document of their own, for what needs only one of them.
#pragma once

#include "store/product_catalog.h"
#include "store/shoot_manager.h"

#include <utility>

#include "edit/restore_edits.h"

namespace vantor::testing {

class OwnDocument {
public:
    Document document;

protected:
    OwnDocument(StoreFile* shoots, StoreFile* catalog, Clock clock)
        : document(shoots, catalog, std::move(clock)) {}
};

class LoneShoots : public OwnDocument, public ShootManager {
public:
    explicit LoneShoots(StoreFile* file = nullptr, Clock clock = Timestamp::now)
        : OwnDocument(file, nullptr, std::move(clock)),
          ShootManager(document) {}

    // At the front, without making it the active one.
    void insertShoot(Shoot shoot) {
        Change change;
        change.shoots = insertion(0, std::move(shoot));
        document.perform(std::move(change));
    }
};

class LoneCatalog : public OwnDocument, public ProductCatalog {
public:
    explicit LoneCatalog(StoreFile* file = nullptr)
        : OwnDocument(nullptr, file, Timestamp::now),
          ProductCatalog(document) {}

    // The lists as they are to stand.
    void set(CatalogData catalog) {
        document.perform(restoreAll(document.library(), {std::nullopt, std::move(catalog)}, {}));
    }
    void setProducts(std::vector<Product> products) { set({std::move(products), clients(), brands()}); }
    void setClients(std::vector<std::string> clients) { set({products(), std::move(clients), brands()}); }
    void setBrands(std::vector<std::string> brands) { set({products(), clients(), std::move(brands)}); }
};

} // namespace vantor::testing
