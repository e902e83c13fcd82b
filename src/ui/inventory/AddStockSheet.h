// Asks how much came into stock, over the item editor.
#pragma once

#include "ui/kit/Sheet.h"

class AddStockForm;

class AddStockSheet : public Sheet {
    Q_OBJECT
public:
    AddStockSheet(AddStockForm& form, QWidget* host);
};
