#include "ui/RowCopy.h"

#include "storage/RowText.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>

void copyRows(const QAbstractItemView& list)
{
    if (!list.selectionModel())
        return;
    const QString text = rowText(list.selectionModel()->selectedRows());
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}
