// The page of contacts: companies with their people below them, and people by themselves.
#pragma once

#include <QSet>
#include <QWidget>

class ContactManager;
class ContactOutlineModel;
class EmptyState;
class PageHeader;
class RecordTree;

class ContactsPage : public QWidget {
    Q_OBJECT
public:
    explicit ContactsPage(ContactManager& contacts, QWidget* parent = nullptr);

    RecordTree* tree() const { return m_tree; }
    void search();

private:
    void takeSelection();
    void giveSelection();
    void restoreExpanded();
    void showEmptiness();

    ContactManager& m_contacts;
    PageHeader* m_header;
    RecordTree* m_tree;
    EmptyState* m_empty;
    ContactOutlineModel* m_model;
    QSet<int> m_expanded;
    bool m_taking = false;
};
