// What stands in the place of a list without rows: that nothing was made yet, or that nothing was found, and the button that helps.
#pragma once

#include "ui/kit/EmptyState.h"

class ListForm;
class QAction;

class EmptyList : public EmptyState {
    Q_OBJECT
public:
    /// title and hint are shown while the list has no record at all. form: the search and the filter above the list.
    EmptyList(const QString& icon, const QString& title, const QString& hint, ListForm& form, QWidget* parent = nullptr);

    /// What it says while the list has no record at all.
    void setWords(const QString& title, const QString& hint);
    /// The command that makes the first record; it stays the window's.
    void setMaking(QAction* command);
    /// How many rows there are to see, of how many records; seen only while there are no rows.
    void tell(int rows, int records);
    /// Puts the keyboard on the button that helps.
    void takeKeyboard();

Q_SIGNALS:
    /// Search and filter were taken away.
    void everythingShown();

private:
    void showEverything();
    void showWords();

    ListForm& m_form;
    QString m_title;
    QString m_hint;
    bool m_nothingThere = false;
    Button* m_make;
    Button* m_showAll;
    QAction* m_making = nullptr;
};
