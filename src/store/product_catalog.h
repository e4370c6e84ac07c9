// ProductCatalog: the products, the client names and the brand names of a document, and all that can be done with them.
//
// - A view: everything is kept, announced and saved by the document. Each operation is one change, which can be undone,
//   and saves all three lists.
// - Names are sorted by Dutch collation, ignoring case; products by name, equal names in their previous order.
//   Loaded lists stand as they were read until the first sort.
// - Nothing reports errors: blank names are ignored, and when reading or writing the file fails, what is in
//   memory holds.
// - Belongs to the user-interface thread.
#pragma once

#include "formats/catalog_csv.h"
#include "store/document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

class ProductCatalog {
public:
    // The document outlives it.
    explicit ProductCatalog(Document& document) : m_document(document) {}

    // Tells what is about to change, in the whole document; the new state can be read once the announcing operation has
    // returned.
    [[nodiscard]] Signal<Aspect>& willChange() { return m_document.willChange(); }

    [[nodiscard]] const std::vector<Product>& products() const { return library().catalog.products; }
    [[nodiscard]] const std::vector<std::string>& clients() const { return library().catalog.clients; }
    [[nodiscard]] const std::vector<std::string>& brands() const { return library().catalog.brands; }

    [[nodiscard]] std::vector<std::string> allClientNames() const;
    // Also the brands that only products name; each spelling once.
    [[nodiscard]] std::vector<std::string> allBrandNames() const;

    // The trimmed name, unless it is empty or the list holds it in any case.
    void addClient(std::string_view name);
    void addBrand(std::string_view name);
    // Every entry of exactly that name; products and shoots keep theirs.
    void deleteClient(std::string_view name);
    void deleteBrand(std::string_view name);

    // With the trimmed name, unless that is empty; the brand is taken as it stands. Duplicates are allowed.
    void addProduct(std::string_view name, std::vector<std::string> colors, std::string brand);
    // Name and brand are trimmed, and may be empty then.
    void updateProduct(Uuid id, std::string_view name, std::vector<std::string> colors,
                       std::string_view brand);
    void deleteProduct(Uuid id);

    // Adds every product of the text whose name the catalogue, or an earlier line, does not hold in any case;
    // lines without a brand column get `defaultBrand`. Sorts and saves once. The result counts what was added.
    int importCSV(std::string_view text, std::string_view defaultBrand);
    // The same for what was read from such a text.
    int addImported(ProductsOfCSV read);
    [[nodiscard]] std::string exportCSV() const;

    // Replaces the lists by those of the file; one that is missing or unreadable changes nothing.
    void load() { m_document.loadCatalog(); }
    void save() { m_document.saveCatalog(); }

private:
    [[nodiscard]] const Library& library() const { return m_document.library(); }
    void perform(std::optional<Change> change, Aspect aspect);

    Document& m_document;
};

// The names once each, compared to the letter, sorted by Dutch collation, ignoring case.
[[nodiscard]] std::vector<std::string> uniqueSortedNames(std::vector<std::string> names);

} // namespace vantor
