#include "storage/TableExport.h"

namespace {

std::string cellClass(const std::string& identifier, int row)
{
    return row % 2 == 0 ? "class = " + identifier : "class = \"" + identifier + " alt\"";
}

} // namespace

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
