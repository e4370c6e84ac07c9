// What can be done to the catalogue, as changes of a library: the rules of each act, without storing or telling anybody.
//
// Products are sorted by name, names by Dutch collation, ignoring case; equal ones keep their order. Lists that were
// read unsorted are sorted by the first change that sorts. Absent means that the act does nothing at all.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "edit/change.h"

namespace vantor {

// The trimmed name, unless it is empty or the list holds it in any case.
[[nodiscard]] std::optional<Change> addClient(const Library& library, std::string_view name);
[[nodiscard]] std::optional<Change> addBrand(const Library& library, std::string_view name);

// Every entry of exactly that name; products and shoots keep theirs.
[[nodiscard]] Change deleteClient(const Library& library, std::string_view name);
[[nodiscard]] Change deleteBrand(const Library& library, std::string_view name);

// With the trimmed name, unless that is empty; the brand is taken as it stands.
[[nodiscard]] std::optional<Change> addProduct(const Library& library, std::string_view name,
                                               std::vector<std::string> colors, std::string brand);
// Name and brand are trimmed, and may be empty then. Absent when there is no such product.
[[nodiscard]] std::optional<Change> updateProduct(const Library& library, const Uuid& id,
                                                  std::string_view name, std::vector<std::string> colors,
                                                  std::string_view brand);
[[nodiscard]] Change deleteProduct(const Library& library, const Uuid& id);

// Adds those whose name the catalogue, or an earlier one of them, does not hold in any case. `lines`, where it is not empty, is
// where each of them stands in its list, and `leftOut` what else that list held.
struct ProductImport {
    Change change;
    // How many were added.
    int count;
};
[[nodiscard]] ProductImport importProducts(const Library& library, std::vector<Product> products,
                                           const std::vector<std::size_t>& lines = {},
                                           ImportReport leftOut = {});

} // namespace vantor
