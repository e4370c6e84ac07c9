// QRSheet: the QR code of one set, to look at, copy or save.
#pragma once

#include "model/shoot.h"
#include "ui/services.h"
#include "ui/sheet.h"

namespace vantor::ui {

class QRSheet : public Sheet {
public:
    QRSheet(QWidget* over, SetData set, const Services& services);

private:
    void copy() const;

    SetData m_set;
    const Services& m_services;
};

} // namespace vantor::ui
