#include "view/start_notices.h"

#include "base/text_lookup.h"
#include "view/version_list.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

namespace vantor {
namespace {

using Loaded = StoreFile::Loaded;

const Uuid& keyOf(const Shoot& shoot) {
    return shoot.id;
}
const Uuid& keyOf(const Product& product) {
    return product.id;
}
const std::string& keyOf(const std::string& name) {
    return name;
}

// What was made since the start stays, in front.
template <typename T>
void keepNew(std::vector<T>& then, const std::vector<T>& now) {
    std::vector<T> all;
    for (const auto& element : now) {
        if (std::ranges::none_of(then, [&](const T& other) { return keyOf(other) == keyOf(element); }))
            all.push_back(element);
    }
    std::ranges::move(then, std::back_inserter(all));
    then = std::move(all);
}

Change putBack(const Library& library, const GoodVersion& good, Timestamp now) {
    auto content = good.content;
    if (content.shoots)
        keepNew(*content.shoots, library.shoots);
    if (content.catalog) {
        keepNew(content.catalog->products, library.catalog.products);
        keepNew(content.catalog->clients, library.catalog.clients);
        keepNew(content.catalog->brands, library.catalog.brands);
    }
    return restoreAll(library, std::move(content), whenInWords(good.version, now, Beginning::Small));
}

std::string catalogInWords(const CatalogData& catalog) {
    return lookUp("producten: %1, klanten: %2",
                  {std::to_string(catalog.products.size()), std::to_string(catalog.clients.size())});
}

std::string textOf(Store store, const std::optional<GoodVersion>& good, Timestamp now) {
    const auto what = store == Store::Shoots ? lookUp("Shoots niet te lezen, bestand bewaard.")
                                             : lookUp("Catalogus niet te lezen, bestand bewaard.");
    if (!good)
        return what + ' ' + lookUp("Er is geen eerdere versie.");
    const auto counts = good->content.shoots ? countsInWords(countsOf(*good->content.shoots))
                                             : catalogInWords(*good->content.catalog);
    return what + ' ' +
           lookUp("Goede versie: %1, %2.", {whenInWords(good->version, now, Beginning::Small), counts});
}

void tellUnreadable(Document& document, StoreFolder& folder, Notices& notices, UrlOpener& urls, Store store,
                    std::optional<GoodVersion> found) {
    const std::string topic = store == Store::Shoots ? "unreadableShoots" : "unreadableCatalog";
    Notice notice{Notice::Kind::Error, textOf(store, found, document.now()), {}, topic};
    if (found) {
        // An action is copied about; what it puts back is not.
        const auto good = std::make_shared<const GoodVersion>(*std::move(found));
        notice.actions.push_back({lookUp("Terugzetten"), [&document, &notices, topic, good] {
                                      notices.withdraw(topic);
                                      document.perform(putBack(document.library(), *good, document.now()));
                                  }});
    }
    notice.actions.push_back({lookUp("Leeg beginnen"), [&notices, topic] { notices.withdraw(topic); }});
    notice.actions.push_back({lookUp("Map openen"), [&folder, &urls] { urls.openPage(folder.path()); }});
    notices.show(std::move(notice));
}

void tellChanged(bool shoots, bool catalog, Notices& notices) {
    if (!shoots && !catalog)
        return;
    const auto text = !catalog  ? lookUp("shoots.json is buiten Vantor Prep om veranderd")
                      : !shoots ? lookUp("catalog.json is buiten Vantor Prep om veranderd")
                                : lookUp("shoots.json en catalog.json zijn buiten Vantor Prep om veranderd");
    notices.show({Notice::Kind::Warning, text, {}, "changedFiles"});
}

} // namespace

std::optional<GoodVersion> newestGoodVersion(const FileStore& files, const std::filesystem::path& folder,
                                             Store store) {
    for (const auto& version : versionsIn(files, folder)) {
        auto content = version.isReadable ? contentOf(files, version) : std::nullopt;
        if (!content)
            continue;
        // The other store is as it should be.
        if (store == Store::Shoots)
            content->catalog.reset();
        else
            content->shoots.reset();
        const bool holdsShoots = content->shoots && !content->shoots->empty();
        const bool holdsCatalog = content->catalog && content->catalog != CatalogData();
        if (holdsShoots || holdsCatalog)
            return GoodVersion{version, *std::move(content)};
    }
    return std::nullopt;
}

void tellHowItLoaded(Document& document, StoreFolder& folder, Notices& notices, UrlOpener& urls,
                     const VersionSearch& search) {
    const auto shoots = folder.shoots().loaded();
    const auto catalog = folder.catalog().loaded();
    tellChanged(shoots == Loaded::ReadChanged, catalog == Loaded::ReadChanged, notices);
    for (const auto& [store, loaded] :
         {std::pair(Store::Catalog, catalog), std::pair(Store::Shoots, shoots)}) {
        if (loaded == Loaded::Unreadable)
            search(store,
                   [&document, &folder, &notices, &urls, store = store](std::optional<GoodVersion> found) {
                       tellUnreadable(document, folder, notices, urls, store, std::move(found));
                   });
    }
}

} // namespace vantor
