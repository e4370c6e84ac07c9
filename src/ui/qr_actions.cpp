#include "ui/qr_actions.h"

#include "output/qr_generator.h"
#include "ui/save_file.h"
#include "view/proposed_names.h"

namespace vantor::ui {

void saveQRAsPng(const QWidget* asking, const SetData& set, const Services& services) {
    const auto picture = QRGenerator(services.encoder).generate(set.toQRText(), kSavedCodeSize);
    saveFile(asking, services, pngName(set), pngType(),
             picture ? services.pngs.encode(*picture) : std::nullopt);
}

} // namespace vantor::ui
