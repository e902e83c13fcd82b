// Shows a collection in a table: model, columns, sorting by heading, and the selection, which follows both ways.
#pragma once

#include "storage/RecordListModel.h"

#include <QObject>

class ColumnMemory;
class RecordTable;

class ListBinder : public QObject {
    Q_OBJECT
public:
    /// name: what the widths of the columns are remembered under; empty when they are not.
    ListBinder(qvDataSource& source, RecordTable* table, const QString& name = {});

    RecordListModel& model() { return m_model; }
    qvDataSource& source() { return m_source; }

protected:
    /// The key for copying copies the selected rows.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeColumns();
    void takeSelection();
    void giveSelection();
    void sortBy(int section);
    void showSort();

    qvDataSource& m_source;
    RecordTable* m_table;
    ColumnMemory* m_widths;
    RecordListModel m_model;
    bool m_taking = false;
    bool m_giving = false;
};
