#include "storage/TableExport.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "storage/FetchAhead.h"

#include <QFileInfo>

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
        for (std::size_t at = table.find(broken, start); at != std::string::npos; at = table.find(broken, at))
            table[at] = mended;
        table += quote;
    }
};

constexpr Separated commaSeparated {',', "\"", '"', '\''};
constexpr Separated tabDelimited {'\t', "", '\t', ' '};

/// Large lists go out in pieces, so that their text always uses the same memory.
constexpr std::size_t pieceSize = 1 << 16;

void separatedTable(const qvDataSource& source, const Separated& form, const TakeText& take)
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
        if (table.size() >= pieceSize) {
            take(table);
            table.clear();
        }
    }
    take(table);
}

template <class Write>
std::string asOneText(Write write)
{
    std::string text;
    write([&](std::string_view piece) { text += piece; });
    return text;
}

} // namespace

void getDataAsCSV(const qvDataSource& source, const TakeText& take)
{
    logLine("writing csv");
    separatedTable(source, commaSeparated, take);
}

std::string getDataAsCSV(const qvDataSource& source)
{
    return asOneText([&](const TakeText& take) { getDataAsCSV(source, take); });
}

void getDataAsTDL(const qvDataSource& source, const TakeText& take)
{
    separatedTable(source, tabDelimited, take);
}

std::string getDataAsTDL(const qvDataSource& source)
{
    return asOneText([&](const TakeText& take) { getDataAsTDL(source, take); });
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

QString exportOutcome(const QString& path, const Result<void>& written)
{
    if (!written)
        return fillText(localText("Not exported: %@"), {QString::fromStdString(written.error().message)});
    return fillText(localText("Exported to %@"), {QFileInfo(path).fileName()});
}
