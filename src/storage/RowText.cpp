#include "storage/RowText.h"

#include <QMimeData>
#include <QRegularExpression>
#include <QStringList>

#include <map>
#include <vector>

namespace {

/// Places from the top level down: they order rows as a person reads them.
std::vector<int> pathOf(QModelIndex index)
{
    std::vector<int> path;
    for (; index.isValid(); index = index.parent())
        path.insert(path.begin(), index.row());
    return path;
}

QString cellText(const QModelIndex& cell)
{
    static const QRegularExpression breaks("[\\t\\n\\r\\x{2028}\\x{2029}]");
    return cell.data().toString().replace(breaks, " ");
}

} // namespace

QString rowText(const QModelIndexList& indexes)
{
    std::map<std::vector<int>, QModelIndex> rows;
    for (const QModelIndex& index : indexes)
        rows.emplace(pathOf(index), index);
    QStringList lines;
    for (const auto& [path, row] : rows) {
        QStringList cells;
        for (int column = 0; column < row.model()->columnCount(row.parent()); ++column)
            cells += cellText(row.siblingAtColumn(column));
        lines += cells.join('\t');
    }
    return lines.join('\n');
}

std::unique_ptr<QMimeData> rowData(const QModelIndexList& indexes)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(rowText(indexes));
    return data;
}
