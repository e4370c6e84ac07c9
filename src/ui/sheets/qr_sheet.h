// QRSheet: the QR code of one set, to look at, copy or save.
#pragma once

#include "model/shoot.h"
#include "ui/frame/services.h"
#include "ui/sheets/sheet.h"

namespace vantor::ui {

class CopiedNote;

class QRSheet : public Sheet {
public:
    QRSheet(QWidget* over, SetData set, const Services& services);

private:
    void copy();

    SetData m_set;
    const Services& m_services;
    CopiedNote* m_copied;
};

} // namespace vantor::ui
