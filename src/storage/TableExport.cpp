#include "storage/TableExport.h"

#include "foundation/Log.h"
#include "storage/FetchAhead.h"

#include <algorithm>
#include <string_view>

namespace {

std::string cellClass(const std::string& identifier, int row)
{
    return row % 2 == 0 ? "class = " + identifier : "class = \"" + identifier + " alt\"";
}

/// How rows of cells become text.
struct Separated {
    char separator;
    std::string_view quote;
    /// What would break the form is turned into something like it.
    char broken;
    char mended;

    void addCell(std::string& table, std::string_view text) const
    {
        table += quote;
        const std::size_t start = table.size();
        if (isCleanUtf8(text))
            table += text;
        else
            table += cleanUtf8(text);
        std::replace(table.begin() + static_cast<std::ptrdiff_t>(start), table.end(), broken, mended);
        table += quote;
    }
};

constexpr Separated commaSeparated {',', "\"", '"', '\''};
constexpr Separated tabDelimited {'\t', "", '\t', ' '};

std::string separatedTable(const qvDataSource& source, const Separated& form)
{
    const std::vector<const ListColumn*> columns = source.list.visibleColumns();
    std::string table;
    const auto addRow = [&](auto addCell) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (i > 0)
                table += form.separator;
            addCell(*columns[i]);
        }
        table += '\r';
    };
    addRow([&](const ListColumn& column) { table += column.heading.toStdString(); });
    for (int row = 0; row < source.numberOfRows(); ++row) {
        fetchFollowing([&](int more) { return source.getnthVisibleItem(row + more); });
        addRow([&](const ListColumn& column) { form.addCell(table, source.objectValue(column.identifier, row)); });
    }
    return table;
}

} // namespace

std::string getDataAsCSV(const qvDataSource& source)
{
    logLine("writing csv");
    return separatedTable(source, commaSeparated);
}

std::string getDataAsTDL(const qvDataSource& source)
{
    return separatedTable(source, tabDelimited);
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

void logUnsuccessfulExport(const std::string& path, const std::string& reason)
{
    logFormat("Unsuccessful exporting data to %s \nerror:%s", path.c_str(), reason.c_str());
}
