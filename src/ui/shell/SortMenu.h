// Sorts the list that is shown, from the menu bar: its columns and the direction, with marks at what it is sorted by now. Choosing the
// column again turns the direction, as clicking its heading does.
#pragma once

#include <QMenu>

class qvDataSource;

class SortMenu : public QMenu {
    Q_OBJECT
public:
    SortMenu(const QString& title, QWidget* parent);

    /// Shows the columns of that list, as they stand now.
    void showColumnsOf(qvDataSource& list);

private:
    void addColumns(qvDataSource& list);
    void addDirections(qvDataSource& list);
};
