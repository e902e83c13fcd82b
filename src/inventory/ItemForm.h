// The item editor's state.
#pragma once

#include "desktop/PictureField.h"

/// Asks how much came into stock.
class AddStockForm : public Form {
public:
    TextField quantity {*this, "quantity"};
    CommandField cancel {*this, "cancel"};
    CommandField ok {*this, "ok"};
};

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
    CommandField addStock {*this, "addStock"};
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
    TextField status {*this, "status"};
    PictureField picture {*this, "picture"};
    CommandField choosePicture {*this, "choosePicture"};
    CommandField removePicture {*this, "removePicture"};

    // Website
    FlagField exportbrevand {*this, "exportbrevand"};
    TextField websitefolder {*this, "websitefolder"};
    CommandField selectWebsiteLocation {*this, "selectWebsiteLocation"};
    ChoiceField quantityMethod {*this, "quantitymethod"};
    TextField buttoncode {*this, "buttoncode"};
    FlagField hidebuttoncode {*this, "hidebuttoncode"};
    FlagField exportgoogle {*this, "exportgoogle"};

    FlagField collective {*this, "collective"};
    CommandField pickConstituent {*this, "pickConstituent"};
    CommandField removeConstituent {*this, "removeConstituent"};
    /// How many the parts make through all levels, and the part that sets the limit.
    TextField canBeMade {*this, "canBeMade"};
    TextField limitedBy {*this, "limitedBy"};
    /// For so many the list of what is missing is worked out.
    TextField numberToMake {*this, "numberToMake"};

    CommandField createSimilar {*this, "createSimilar"};
    CommandField cancel {*this, "cancel"};
    CommandField save {*this, "save"};
};
