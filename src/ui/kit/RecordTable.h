// A list of records: fixed row heights, own header, own painting. Sorting and searching are the model's business; this view only shows.
#pragma once

#include "ui/kit/RowDelegate.h"

#include <QTableView>

class TableHeader;

class RecordTable : public QTableView {
    Q_OBJECT
public:
    /// page: edge to edge under a page heading. card: inside a CardFrame of an editor or sheet. sheet: edge to edge in a sheet.
    enum class Place { page, card, sheet };

    explicit RecordTable(Place place = Place::page, QWidget* parent = nullptr);

    TableHeader* tableHeader() const { return m_header; }
    RowDelegate* rowDelegate() const { return m_delegate; }
    /// In pixels; 30 unless told.
    void setRowHeight(int height);
    /// Fixes the height to the header and this many rows.
    void setVisibleRows(int count);
    /// Rows are chosen as a whole unless told; cells makes cells current and editable by typing, Return, F2 and double click.
    void setUnit(RowDelegate::Unit unit);
    /// Shows the sort mark; clicking headings is reported by the header's sectionClicked.
    void setSorted(int column, Qt::SortOrder order);
    void clearSorted();
    /// One quiet line where the first row would be, while there is none.
    void setEmptyText(const QString& text);

Q_SIGNALS:
    /// Delete or Backspace on a list whose cells are edited; rows are removed by the window's own commands.
    void removalWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    /// Where Tab in a cell being edited goes on to: the next cell that can be edited, none after the last.
    QModelIndex nextEditable(int step) const;
    void updateRowOf(const QModelIndex& index);
    void paintEmptyText();

    TableHeader* m_header;
    RowDelegate* m_delegate;
    QString m_emptyText;
};
