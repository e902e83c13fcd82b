// What stands above a list: the search field and the filter's pop-up.
#pragma once

#include "desktop/Form.h"

class ListForm : public Form {
public:
    TextField search {*this, "search"};
    ChoiceField filter {*this, "filter"};
};
