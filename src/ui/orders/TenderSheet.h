// The panel that takes a payment, over the order it is for.
#pragma once

#include "ui/kit/Sheet.h"

class TenderForm;

class TenderSheet : public Sheet {
    Q_OBJECT
public:
    TenderSheet(TenderForm& form, QWidget* host);

private:
    TenderForm& m_form;
};
