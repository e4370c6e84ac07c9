#include "ui/qr_actions.h"

#include "output/qr_generator.h"
#include "view/proposed_names.h"

namespace vantor::ui {

void saveQRAsPng(const SetData& set, const Services& services) {
    const auto path = services.dialogs.askWhereToSave(pngName(set), pngType());
    if (!path)
        return;
    const auto picture = QRGenerator(services.encoder).generate(set.toQRText(), kSavedCodeSize);
    if (!picture)
        return;
    if (const auto bytes = services.pngs.encode(*picture))
        services.files.replace(*path, *bytes);
}

} // namespace vantor::ui
