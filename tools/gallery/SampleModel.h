// Small models of made-up records for the gallery.
#pragma once

#include "ui/kit/RowDelegate.h"

#include <QStandardItemModel>

namespace sample {

struct Column {
    QString heading;
    Qt::Alignment alignment = Qt::AlignLeft;
};

inline QStandardItemModel* makeModel(const QList<Column>& columns, const QList<QStringList>& rows, QObject* owner)
{
    auto* model = new QStandardItemModel(int(rows.size()), int(columns.size()), owner);
    for (int column = 0; column < columns.size(); ++column) {
        const int alignment = int(columns[column].alignment | Qt::AlignVCenter);
        model->setHeaderData(column, Qt::Horizontal, columns[column].heading);
        model->setHeaderData(column, Qt::Horizontal, alignment, Qt::TextAlignmentRole);
        for (int row = 0; row < rows.size(); ++row) {
            auto* item = new QStandardItem(rows[row].value(column));
            item->setData(alignment, Qt::TextAlignmentRole);
            model->setItem(row, column, item);
        }
    }
    return model;
}

} // namespace sample
