// The windows of the three contact editors. They share one place on the screen.
#pragma once

#include "ui/EditorWindow.h"

class CompanyContactForm;
class CompanyForm;
class ContactForm;
class ContactOrders;
class FormGrid;
class IndividualForm;
class UnderlineTabs;

class ContactWindow : public EditorWindow {
    Q_OBJECT
public:
    // orders: those of the contact in the editor.
    ContactWindow(IndividualForm& form, ContactOrders& orders);
    ContactWindow(CompanyForm& form, ContactOrders& orders);
    ContactWindow(CompanyContactForm& form, ContactOrders& orders);

    /// The word the user has for orders.
    void setWords(const QString& orders);

protected:
    /// What the commands of the editor changed is not typed.
    bool hasSomethingToLose() const override;

private:
    enum class Kind { individual, company, companyContact };
    void build(Kind kind);
    QWidget* makeHeader(Kind kind);
    QWidget* makeFields(Kind kind);
    QWidget* makeOrders();
    QWidget* makeFooter(Kind kind);
    void addName(FormGrid& grid, Kind kind);
    void addAddress(FormGrid& grid);
    void addReach(FormGrid& grid, Kind kind);

    ContactForm& m_contactForm;
    ContactOrders& m_orders;
    UnderlineTabs* m_tabs = nullptr;
    int m_ordersTab = -1;
};
