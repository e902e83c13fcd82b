// The panel that takes a payment, over the order it is for.
#pragma once

#include "ui/kit/Sheet.h"

class Label;
class TenderForm;

class TenderSheet : public Sheet {
    Q_OBJECT
public:
    TenderSheet(TenderForm& form, QWidget* host);

    /// How dates are written: stands beside the field for one.
    void setDateCaption(const QString& caption);

private:
    TenderForm& m_form;
    Label* m_dateCaption;
};
