#include "ui/frame/start_report.h"

#include "ui/frame/beside_window.h"
#include "view/start_notices.h"

#include <utility>

namespace vantor::ui {

void tellHowItLoaded(QObject* owner, const Services& services) {
    if (services.stores == nullptr)
        return;
    using Found = std::optional<GoodVersion>;
    const auto search = [owner, &files = services.files,
                         folder = services.stores->path()](Store store, std::function<void(Found)> onFound) {
        readBesideWindow<Found>(
            owner, [&files, folder, store] { return newestGoodVersion(files, folder, store); },
            [onFound = std::move(onFound)](Found& found) { onFound(std::move(found)); });
    };
    vantor::tellHowItLoaded(services.document, *services.stores, services.notices, services.urls, search);
}

} // namespace vantor::ui
