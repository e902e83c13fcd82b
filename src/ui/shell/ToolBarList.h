// One of the two lists of the sheet that arranges a tool bar. Its entries can be dragged, within it and to the other list, and moved by keys.
#pragma once

#include "ui/kit/PickList.h"

#include <functional>
#include <optional>

class ToolBarList : public PickList {
    Q_OBJECT
public:
    ToolBarList(const QString& objectName, const QString& title);

    QListWidgetItem* addEntry(const QString& identifier, const QString& icon, const QString& title, Weight weight);
    QString identifierAt(int row) const;
    /// Of the current entry; empty when there is none.
    QString chosen() const { return identifierAt(currentRow()); }

    /// An entry on its way.
    struct Dragged {
        /// The list it comes from.
        QString list;
        int row;
        QString identifier;
    };
    /// Whether the entry may be dropped here.
    std::function<bool(const Dragged& dragged)> mayTake;
    /// Whether what is dropped gets a place between the entries, which is shown then.
    enum class Dropping { anywhere, betweenEntries };
    void setDropping(Dropping dropping) { m_dropping = dropping; }

Q_SIGNALS:
    /// Before the row; behind the last entry when the row is their number.
    void entryDropped(const ToolBarList::Dragged& dragged, int beforeRow);
    /// Insert, or the space bar.
    void addKeyPressed();
    /// Delete, or Backspace.
    void removeKeyPressed();
    /// Alt with the arrows up and down.
    void moveKeyPressed(int steps);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override;
    QStringList mimeTypes() const override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<Dragged> takeable(const QMimeData* carried) const;
    int rowBefore(const QPoint& place) const;
    void showGap(int beforeRow);
    bool pressKey(const QKeyEvent& event);

    static constexpr int noGap = -1;
    Dropping m_dropping = Dropping::anywhere;
    int m_gap = noGap;
};
