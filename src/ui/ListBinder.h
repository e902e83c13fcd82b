// Shows a collection in a table: model, columns, sorting by heading, and the selection, which follows both ways.
#pragma once

#include "storage/RecordListModel.h"

#include <QObject>

class RecordTable;

class ListBinder : public QObject {
    Q_OBJECT
public:
    ListBinder(qvDataSource& source, RecordTable* table);

    RecordListModel& model() { return m_model; }
    qvDataSource& source() { return m_source; }

private:
    void takeColumns();
    void takeWidths();
    void takeSelection();
    void giveSelection();
    void sortBy(int section);
    void showSort();

    qvDataSource& m_source;
    RecordTable* m_table;
    RecordListModel m_model;
    bool m_taking = false;
};
