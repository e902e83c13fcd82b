// A list as text, as it is shown: visible columns in their order, visible rows in theirs.
#pragma once

#include "foundation/Result.h"
#include "storage/qvDataSource.h"

#include <functional>
#include <string>
#include <string_view>

/// Takes a text in pieces, in their order.
using TakeText = std::function<void(std::string_view)>;

/// Headings as they are, cells in double quotes, double quotes in them turned into single ones; rows end with a carriage return.
void getDataAsCSV(const qvDataSource& source, const TakeText& take);
std::string getDataAsCSV(const qvDataSource& source);

/// Headings and cells separated by tabs, tabs in cells turned into blanks; rows end with a carriage return.
void getDataAsTDL(const qvDataSource& source, const TakeText& take);
std::string getDataAsTDL(const qvDataSource& source);

/// The log's line about an export that could not be written.
void logUnsuccessfulExport(const std::string& path, const std::string& reason);

/// What came of writing the file, in one sentence for the status line.
QString exportOutcome(const QString& path, const Result<void>& written);

/// What happens to a heading's or cell's text on its way into a table.
using CellText = std::string (*)(std::string);

/// The rows as an HTML table whose cells carry their column's identifier as class, every other row also "alt". Nothing is escaped:
/// style sheets and documents rely on the exact form. A table that this program itself reads as HTML passes its texts through cellText.
std::string getDataAsHTML(const qvDataSource& source, CellText cellText = nullptr);
