// The sheet that arranges a tool bar: what there is at the left, what is in the bar at the right. Nothing changes before Done.
#pragma once

#include "ui/kit/Sheet.h"
#include "ui/kit/ToolBar.h"

class ChoiceBox;
class ToolBarList;

/// Something a tool bar can hold.
struct ToolBarEntry {
    /// Commands stand in the bar once at most, spaces as often as wanted.
    enum class Kind { command, space };

    QString identifier;
    QString title;
    QString icon;
    Kind kind = Kind::command;
};

class ToolBarSheet : public Sheet {
    Q_OBJECT
public:
    /// known: everything the bar can hold, in the order it is offered. defaults: identifiers of the bar as it comes.
    ToolBarSheet(QList<ToolBarEntry> known, QStringList defaults, QWidget* host);

    void setArrangement(const QStringList& identifiers, ToolBar::Show show);
    /// What is in the bar, from left to right.
    QStringList identifiers() const;
    ToolBar::Show shownParts() const;

private:
    QLayout* makeLists();
    QLayout* makeMoves();
    QLayout* makeFooter();
    const ToolBarEntry* entry(const QString& identifier) const;
    bool holds(const QString& identifier) const;
    void connectLists();
    /// Whether another one of it has a place in the bar.
    bool mayAdd(const QString& identifier) const;
    void put(const QString& identifier, int row);
    void takeOut(int row);
    void move(int row, int toRow);
    void addChosen();
    void removeChosen();
    void moveChosen(int steps);
    void showWhatIsPossible();

    QList<ToolBarEntry> m_known;
    QStringList m_defaults;
    ToolBarList* m_available;
    ToolBarList* m_shown;
    ChoiceBox* m_parts = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
};
