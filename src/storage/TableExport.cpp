#include "storage/TableExport.h"

#include "foundation/Log.h"

#include <algorithm>

namespace {

std::string cellClass(const std::string& identifier, int row)
{
    return row % 2 == 0 ? "class = " + identifier : "class = \"" + identifier + " alt\"";
}

using CellForm = std::string (*)(std::string);

std::string quotedCell(std::string text)
{
    std::replace(text.begin(), text.end(), '"', '\'');
    return '"' + text + '"';
}

std::string tabFreeCell(std::string text)
{
    std::replace(text.begin(), text.end(), '\t', ' ');
    return text;
}

std::string separatedTable(const qvDataSource& source, char separator, CellForm cell)
{
    const std::vector<const ListColumn*> columns = source.list.visibleColumns();
    std::string table;
    const auto addRow = [&](auto textOf) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (i > 0)
                table += separator;
            table += textOf(*columns[i]);
        }
        table += '\r';
    };
    addRow([](const ListColumn& column) { return column.heading.toStdString(); });
    for (int row = 0; row < source.numberOfRows(); ++row)
        addRow([&](const ListColumn& column) { return cell(cleanUtf8(source.objectValue(column.identifier, row))); });
    return table;
}

} // namespace

std::string getDataAsCSV(const qvDataSource& source)
{
    logLine("writing csv");
    return separatedTable(source, ',', quotedCell);
}

std::string getDataAsTDL(const qvDataSource& source)
{
    return separatedTable(source, '\t', tabFreeCell);
}

std::string getDataAsHTML(const qvDataSource& source, CellText cellText)
{
    const auto shown = [cellText](std::string text) { return cellText ? cellText(std::move(text)) : text; };
    const std::vector<const ListColumn*> columns = source.list.visibleColumns();
    std::string html = "<table width=100%><tr>";
    for (const ListColumn* column : columns)
        html += "<th class = " + column->identifier + ">" + shown(column->heading.toStdString()) + "</th>";
    html += "</tr>";
    for (int row = 0; row < source.numberOfRows(); ++row) {
        html += "<tr>";
        for (const ListColumn* column : columns)
            html += "<td " + cellClass(column->identifier, row) + ">" + shown(source.objectValue(column->identifier, row)) + "</td>";
        html += "</tr>";
    }
    return html + "</table><br />";
}
