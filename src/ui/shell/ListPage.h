// A page of the main window: heading, search, filter, and a flat list of records.
#pragma once

#include <QWidget>

class EmptyList;
class ListBinder;
class ListForm;
class PageHeader;
class QAction;
class RecordTable;
class qvDataSource;

struct ListPageTexts {
    /// What the list is remembered under.
    QString name;
    QString title;
    QString searchPlaceholder;
    QString emptyIcon;
    QString emptyTitle;
    QString emptyHint;
};

class ListPage : public QWidget {
    Q_OBJECT
public:
    ListPage(qvDataSource& source, ListForm& form, const ListPageTexts& texts, QWidget* parent = nullptr);

    /// In the user's words; name and icon stay as they are.
    void setTexts(const ListPageTexts& texts);
    RecordTable* table() const { return m_table; }
    qvDataSource& source() const { return m_source; }
    /// The command that makes a record, offered while there is none.
    void setMaking(QAction* command);
    /// Puts the keyboard into the search field.
    void search();
    /// Puts the keyboard on the list, or on the way out of its emptiness.
    void takeKeyboard();

private:
    void showEmptiness();

    qvDataSource& m_source;
    PageHeader* m_header;
    RecordTable* m_table;
    EmptyList* m_empty;
    ListBinder* m_binder;
};
