// Paints the cells of every list and table: selection, status, hairlines, text and icons, and the frame around the cell being worked on.
#pragma once

#include "ui/kit/CellTexts.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

/// The roles under which a model answers what the delegate asks beyond text and alignment. A model that has none of it ignores them.
struct RowRoles {
    /// QColor of the row's status, asked of its first column; invalid for none.
    int statusColour = Qt::UserRole + 101;
    /// bool, asked of the first column: the row is finished and stands in secondary text.
    int finished = Qt::UserRole + 102;
    /// bool, asked of the cell: its text is of secondary importance.
    int secondary = Qt::UserRole + 103;
    /// bool, asked of the cell: its value cannot be used.
    int fault = Qt::UserRole + 104;
    /// Name of the icon before the text, asked of the cell.
    int icon = Qt::UserRole + 105;
};

class RowDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    /// rows: a row is chosen as a whole. cells: a cell is, and can be edited; its row is tinted.
    enum class Unit { rows, cells };
    /// Trees paint the ground of a row themselves, since it reaches beyond the cells.
    enum class Ground { cell, view };
    /// onFirstColumn: the first column names the record, and the others stand in secondary text.
    enum class Weight { even, onFirstColumn };

    explicit RowDelegate(QAbstractItemView* view);

    void setRoles(const RowRoles& roles) { m_roles = roles; }
    const RowRoles& roles() const { return m_roles; }
    void setUnit(Unit unit) { m_unit = unit; }
    Unit unit() const { return m_unit; }
    void setGround(Ground ground) { m_ground = ground; }
    void setWeight(Weight weight) { m_weight = weight; }
    /// Height of a row and distance of the first column's text from the edge, in pixels.
    void setRowHeight(int height) { m_rowHeight = height; }
    int rowHeight() const { return m_rowHeight; }
    void setFirstInset(int distance) { m_firstInset = distance; }
    int firstInset() const { return m_firstInset; }
    /// A field that steers the list: while it has the keyboard the selection is shown as if the list had.
    void setSteeredBy(QWidget* field);

    /// Distance of a cell's text from the cell's sides.
    static constexpr int inset = 10;
    static constexpr int statusBarWidth = 4;
    static constexpr int iconSize = 16;
    static constexpr int iconAdvance = 24;

    /// Whether selected rows are shown in full accent now.
    bool isActive() const;
    /// The ground of a whole or partial row: selection or status tint or hover, and the line below.
    void paintGround(QPainter* painter, const QRect& rect, const QModelIndex& index, bool selected) const;
    /// Where the text of the cell stands.
    QRect textRect(const QRect& cell, const QModelIndex& index) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// The whole text of a cell that is too narrow for it.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option, const QModelIndex& index) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isFirstColumn(const QModelIndex& index) const;
    bool isHovered(const QModelIndex& index) const;
    QColor statusOf(const QModelIndex& index) const;
    QColor textColour(const QModelIndex& index, bool filled) const;
    void paintText(QPainter* painter, const QStyleOptionViewItem& cell, const QModelIndex& index, bool filled) const;
    void paintIcon(QPainter* painter, const QRect& cell, const QModelIndex& index, bool filled) const;
    void paintCurrentFrame(QPainter* painter, const QRect& rect, const QModelIndex& index, bool selected) const;
    void hover(const QModelIndex& index);
    void updateRow(const QModelIndex& index);

    QAbstractItemView* m_view;
    QPointer<QWidget> m_steering;
    RowRoles m_roles;
    Unit m_unit = Unit::rows;
    Ground m_ground = Ground::cell;
    Weight m_weight = Weight::even;
    int m_rowHeight = 30;
    int m_firstInset = inset;
    QPersistentModelIndex m_hovered;
    mutable CellTexts m_texts;
};
