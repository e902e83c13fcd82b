// The windows of the three contact editors. They share one place on the screen.
#pragma once

#include "ui/EditorWindow.h"

class CompanyContactForm;
class CompanyForm;
class ContactForm;
class FormGrid;
class IndividualForm;

class ContactWindow : public EditorWindow {
    Q_OBJECT
public:
    explicit ContactWindow(IndividualForm& form);
    explicit ContactWindow(CompanyForm& form);
    explicit ContactWindow(CompanyContactForm& form);

private:
    enum class Kind { individual, company, companyContact };
    void build(ContactForm& form, Kind kind);
    QWidget* makeFields(Kind kind);
    QWidget* makeFooter(Kind kind);
    void addName(FormGrid& grid, Kind kind);
    void addAddress(FormGrid& grid);
    void addReach(FormGrid& grid, Kind kind);
};
