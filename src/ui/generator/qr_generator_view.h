// QRGeneratorView: the free-form QR generator, a window of its own that works without the stores.
//
// The picture is made when the button is pressed; the text under it and the saved file always follow the fields.
// What was typed goes with the window.
#pragma once

#include "output/qr_generator.h"
#include "platform/bitmap.h"
#include "ui/frame/services.h"
#include "view/qr_generator_draft.h"

#include <QWidget>
#include <optional>

class QLineEdit;
class QStackedWidget;

namespace vantor::ui {

class CodePlate;
class CodeText;
class CopiedNote;
class ItemEditor;

class QRGeneratorView : public QWidget {
public:
    explicit QRGeneratorView(const Services& services);

    [[nodiscard]] SetData buildSetData() const;
    void saveQR() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeForm();
    QWidget* makeEmptyPane();
    QWidget* makeCodePane();
    void generate();
    void copy();
    void render();

    const Services& m_services;
    QRGeneratorDraft m_draft;
    std::optional<Bitmap> m_qrImage;
    QLineEdit* m_setNumber = nullptr;
    QLineEdit* m_brand = nullptr;
    QLineEdit* m_model = nullptr;
    QLineEdit* m_location = nullptr;
    ItemEditor* m_items = nullptr;
    QStackedWidget* m_right = nullptr;
    CodePlate* m_plate = nullptr;
    CodeText* m_text = nullptr;
    CopiedNote* m_copied = nullptr;
};

} // namespace vantor::ui
