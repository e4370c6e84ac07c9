#include "edit/catalog_edits.h"

#include "base/text.h"
#include "base/text_lookup.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace vantor {
namespace {

std::string_view nameOf(const std::string& name) {
    return name;
}
std::string_view nameOf(const Product& product) {
    return product.name;
}

template <typename T>
std::vector<Wanted<T>> allOf(const std::vector<T>& list) {
    std::vector<Wanted<T>> all;
    all.reserve(list.size() + 1);
    for (std::size_t i = 0; i < list.size(); ++i)
        all.emplace_back(i);
    return all;
}

// Sorts what is wanted by its names, stably; the collation key of each is made once.
template <typename T>
ListPatch<T> sortedPatch(const std::vector<T>& before, std::vector<Wanted<T>> wanted) {
    std::vector<std::pair<std::string, std::size_t>> order;
    order.reserve(wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto* const place = std::get_if<std::size_t>(&wanted[i]);
        order.emplace_back(collationKey(nameOf(place != nullptr ? before[*place] : std::get<T>(wanted[i]))),
                           i);
    }
    std::ranges::sort(order);
    std::vector<Wanted<T>> sorted;
    sorted.reserve(wanted.size());
    for (const auto& [key, place] : order)
        sorted.push_back(std::move(wanted[place]));
    return patchTo(before, std::move(sorted));
}

// Absent when the name is blank, or held in any case.
std::optional<ListPatch<std::string>> nameAdded(const std::vector<std::string>& names,
                                                std::string_view wanted) {
    const auto isHeld = [&](const auto& held) { return equalsIgnoringCase(held, wanted); };
    if (wanted.empty() || std::ranges::any_of(names, isHeld))
        return std::nullopt;
    auto all = allOf(names);
    all.emplace_back(std::string(wanted));
    return sortedPatch(names, std::move(all));
}

ListPatch<std::string> nameRemoved(const std::vector<std::string>& names, std::string_view name) {
    return removal(names, [&](const std::string& each) { return each == name; });
}

Change productsChange(std::string name, ListPatch<Product> products) {
    auto change = changeNamed(std::move(name));
    change.products = std::move(products);
    return change;
}

} // namespace

std::optional<Change> addClient(const Library& library, std::string_view name) {
    auto patch = nameAdded(library.catalog.clients, trimmed(name));
    if (!patch)
        return std::nullopt;
    auto change = changeNamed(lookUp("Klant %1 toegevoegd", {inName(trimmed(name))}));
    change.clients = *std::move(patch);
    return change;
}

std::optional<Change> addBrand(const Library& library, std::string_view name) {
    auto patch = nameAdded(library.catalog.brands, trimmed(name));
    if (!patch)
        return std::nullopt;
    auto change = changeNamed(lookUp("Merk %1 toegevoegd", {inName(trimmed(name))}));
    change.brands = *std::move(patch);
    return change;
}

Change deleteClient(const Library& library, std::string_view name) {
    auto change = changeNamed(lookUp("Klant %1 verwijderd", {inName(name)}));
    change.clients = nameRemoved(library.catalog.clients, name);
    change.isTold = true;
    return change;
}

Change deleteBrand(const Library& library, std::string_view name) {
    auto change = changeNamed(lookUp("Merk %1 verwijderd", {inName(name)}));
    change.brands = nameRemoved(library.catalog.brands, name);
    change.isTold = true;
    return change;
}

std::optional<Change> addProduct(const Library& library, std::string_view name,
                                 std::vector<std::string> colors, std::string brand) {
    const auto wanted = trimmed(name);
    if (wanted.empty())
        return std::nullopt;
    const auto& products = library.catalog.products;
    auto all = allOf(products);
    all.emplace_back(Product::make(std::string(wanted), std::move(colors), std::move(brand)));
    return productsChange(lookUp("%1 toegevoegd", {inName(wanted)}), sortedPatch(products, std::move(all)));
}

std::optional<Change> updateProduct(const Library& library, const Uuid& id, std::string_view name,
                                    std::vector<std::string> colors, std::string_view brand) {
    const auto& products = library.catalog.products;
    const auto found = std::ranges::find(products, id, &Product::id);
    if (found == products.end())
        return std::nullopt;
    Product updated{id, std::string(trimmed(name)), std::move(colors), std::string(trimmed(brand))};
    auto all = allOf(products);
    if (*found != updated)
        all[static_cast<std::size_t>(found - products.begin())] = std::move(updated);
    return productsChange(lookUp("%1 gewijzigd", {inName(found->name)}),
                          sortedPatch(products, std::move(all)));
}

Change deleteProduct(const Library& library, const Uuid& id) {
    const auto& products = library.catalog.products;
    auto patch = removal(products, [&](const Product& product) { return product.id == id; });
    auto name = patch.isEmpty() ? std::string()
                                : lookUp("%1 verwijderd", {inName(products[patch.take.front()].name)});
    auto change = productsChange(std::move(name), std::move(patch));
    change.isTold = true;
    return change;
}

ProductImport importProducts(const Library& library, std::vector<Product> products,
                             const std::vector<std::size_t>& lines, ImportReport leftOut) {
    const auto& before = library.catalog.products;
    std::unordered_set<std::string> held;
    held.reserve(before.size() + products.size());
    for (const auto& product : before)
        held.insert(caseFolded(product.name));
    auto all = allOf(before);
    for (std::size_t i = 0; i < products.size(); ++i) {
        if (held.insert(caseFolded(products[i].name)).second)
            all.emplace_back(std::move(products[i]));
        else if (i < lines.size())
            leftOut.push_back({lines[i], LeftOutLine::Why::IsThereAlready});
    }
    std::ranges::sort(leftOut, {}, &LeftOutLine::line);
    const auto count = all.size() - before.size();
    auto change = productsChange(lookUp("%1 producten geïmporteerd", {std::to_string(count)}),
                                 sortedPatch(before, std::move(all)));
    change.leftOut = std::move(leftOut);
    change.isTold = true;
    change.needsRestorePoint = true;
    return {std::move(change), static_cast<int>(count)};
}

} // namespace vantor
