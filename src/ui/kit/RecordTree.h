// A list of two levels: companies and their people, goals and their tasks. Rows and their lines go from edge to edge.
#pragma once

#include "ui/kit/RowDelegate.h"

#include <QTreeView>

class TableHeader;

class RecordTree : public QTreeView {
    Q_OBJECT
public:
    explicit RecordTree(QWidget* parent = nullptr);

    TableHeader* tableHeader() const { return m_header; }
    RowDelegate* rowDelegate() const { return m_delegate; }
    void setSorted(int column, Qt::SortOrder order);

    /// Width of one level, in pixels.
    static constexpr int levelWidth = 22;

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    TableHeader* m_header;
    RowDelegate* m_delegate;
};
