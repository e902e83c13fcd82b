// A collection as an item model: thin, every answer comes from the collection.
#pragma once

#include "storage/qvDataSource.h"

#include <QAbstractTableModel>

class RecordListModel : public QAbstractTableModel, private ListObserver {
    Q_OBJECT
public:
    enum Role {
        /// QColor of the row's status; invalid for none.
        StatusColourRole = Qt::UserRole + 1,
        /// Whether the record is done with.
        FinishedRole,
        RecordIdRole,
        /// The column's field name.
        IdentifierRole,
        /// Whether the cell's value cannot be used; its tool tip and description say why.
        FaultRole,
    };

    explicit RecordListModel(qvDataSource& source, QObject* parent = nullptr);
    ~RecordListModel() override;

    qvDataSource& source() const { return m_source; }
    /// The column shown at that place.
    const ListColumn& column(int section) const { return *m_columns[static_cast<std::size_t>(section)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Rows that are dragged out become text.
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

Q_SIGNALS:
    /// The collection's selection changed or was kept through a reset; views take it over.
    void selectionWanted();
    void columnsReset();

private:
    void listReset() override;
    void rowChanged(int row) override;
    void cellsChanged() override;
    void selectionChanged() override;
    void columnsChanged() override;
    QVariant statusColour(int row) const;

    qvDataSource& m_source;
    std::vector<const ListColumn*> m_columns;
    int m_rows = 0;
    bool m_editing = false;
};
