// What is told of the stores' files as they were found at the start.
//
// - Of each that cannot be read: that it is kept, and which version can be put back, with the ways on. Nothing is
//   touched before the user chooses one of them or changes something.
// - Of those that something else has changed since they were written: that.
#pragma once

#include "platform/url_opener.h"
#include "store/document.h"
#include "store/store_folder.h"
#include "store/versions.h"
#include "view/notices.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace vantor {

enum class Store { Shoots, Catalog };

// A version with what it holds of one store.
struct GoodVersion {
    Version version;
    LibraryVersion content;
};

// The newest of which that store can be read and is not empty. Reads files only, and may run beside the window.
[[nodiscard]] std::optional<GoodVersion> newestGoodVersion(const FileStore& files,
                                                           const std::filesystem::path& folder, Store store);

// Looks for it there, and hands it over on the user-interface thread.
using VersionSearch = std::function<void(Store, std::function<void(std::optional<GoodVersion>)>)>;

// To be called once, after the document was loaded. What is borrowed outlives the notices.
void tellHowItLoaded(Document& document, StoreFolder& folder, Notices& notices, UrlOpener& urls,
                     const VersionSearch& search);

} // namespace vantor
