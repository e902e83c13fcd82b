// The item editor's state.
#pragma once

#include "desktop/Form.h"

class ItemForm : public Form {
public:
    TextField item {*this, "item"};
    TextField code {*this, "code"};
    TextField variation {*this, "variation"};
    TextField brand {*this, "brand"};
    TextField category {*this, "category"};
    TextField description {*this, "description"};
    TextField price {*this, "price"};
    TextField bought {*this, "bought"};
    ChoiceField taxcode {*this, "taxcode"};
    TextField shipping {*this, "shipping"};
    /// Read-only for a collective item, whose stock is that of its parts.
    TextField qty {*this, "qty"};
    TextField warnlevel {*this, "warnlevel"};
    TextField optimumQty {*this, "optimumqty"};
    /// The name of the supplier; saving looks the contact up by it.
    TextField supplier {*this, "supplier"};
    CommandField pickSupplier {*this, "pickSupplier"};
    FlagField decreaseQty {*this, "decreaseQty"};
    ChoiceField condition {*this, "condition"};
    TextField ean {*this, "ean"};
    TextField part {*this, "part"};
    TextField link {*this, "link"};
    TextField imageLink {*this, "imagelink"};

    FlagField collective {*this, "collective"};
    CommandField pickConstituent {*this, "pickConstituent"};
    CommandField removeConstituent {*this, "removeConstituent"};

    CommandField cancel {*this, "cancel"};
    CommandField save {*this, "save"};
};
