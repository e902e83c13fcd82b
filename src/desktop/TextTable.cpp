#include "desktop/TextTable.h"

namespace {

QHash<QString, QString>& textTable()
{
    static QHash<QString, QString> table;
    return table;
}

} // namespace

QString localText(const char* wording)
{
    const QString key = QString::fromUtf8(wording);
    return textTable().value(key, key);
}

void setTextTable(QHash<QString, QString> table)
{
    textTable() = std::move(table);
}
