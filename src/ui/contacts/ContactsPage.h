// The page of contacts: companies with their people below them, and people by themselves.
#pragma once

#include <QSet>
#include <QWidget>

class ContactManager;
class ContactOutlineModel;
class EmptyList;
class PageHeader;
class QAction;
class RecordTree;

class ContactsPage : public QWidget {
    Q_OBJECT
public:
    explicit ContactsPage(ContactManager& contacts, QWidget* parent = nullptr);

    RecordTree* tree() const { return m_tree; }
    /// The command that makes a contact, offered while there is none.
    void setMaking(QAction* command);
    void search();
    /// Puts the keyboard on the list, or on the way out of its emptiness.
    void takeKeyboard();

private:
    void takeSelection();
    void giveSelection();
    void restoreExpanded();
    void showEmptiness();
    void showSort();

    ContactManager& m_contacts;
    PageHeader* m_header;
    RecordTree* m_tree;
    EmptyList* m_empty;
    ContactOutlineModel* m_model;
    QSet<int> m_expanded;
    bool m_taking = false;
    bool m_giving = false;
};
