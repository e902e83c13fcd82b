// A list as text, as it is shown: visible columns in their order, visible rows in theirs.
#pragma once

#include "storage/qvDataSource.h"

#include <string>

/// The rows as an HTML table whose cells carry their column's identifier as class, every other row also "alt". Nothing is escaped:
/// style sheets and documents rely on the exact form.
std::string getDataAsHTML(const qvDataSource& source);
