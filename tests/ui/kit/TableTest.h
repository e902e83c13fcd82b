// A small model of five orders for the tests of tables.
#pragma once

#include "ui/kit/RowDelegate.h"

#include <QStandardItemModel>

namespace kittest {

/// Columns Date, Title and Amount; the second row is finished, the third has a status colour, a fault stands in the fourth one's amount.
inline void fillOrders(QStandardItemModel& model)
{
    const RowRoles roles;
    model.setHorizontalHeaderLabels({QStringLiteral("Date"), QStringLiteral("Title"), QStringLiteral("Amount")});
    model.setHeaderData(2, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
    for (int row = 0; row < 5; ++row) {
        auto* amount = new QStandardItem(QStringLiteral("%1.00").arg(row));
        amount->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        model.appendRow({new QStandardItem(QStringLiteral("21/11/26")), new QStandardItem(QStringLiteral("Oak shelf")), amount});
    }
    model.item(1, 0)->setData(true, roles.finished);
    model.item(2, 0)->setData(QColor(0xd99a00), roles.statusColour);
    model.item(3, 2)->setData(true, roles.fault);
}

} // namespace kittest
