#include "ui/contacts/ContactEditor.h"

#include "contacts/ContactForm.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Panels.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

constexpr char contactFrame[] = "ContactWindows";

template <class Widget, class... Arguments>
Widget* fieldNamed(const char* name, Arguments&&... arguments)
{
    auto* widget = new Widget(std::forward<Arguments>(arguments)...);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

ContactWindow::ContactWindow(IndividualForm& form) : EditorWindow(form, form.cancel, contactFrame)
{
    build(form, Kind::individual);
}

ContactWindow::ContactWindow(CompanyForm& form) : EditorWindow(form, form.cancel, contactFrame)
{
    build(form, Kind::company);
}

ContactWindow::ContactWindow(CompanyContactForm& form) : EditorWindow(form, form.cancel, contactFrame)
{
    build(form, Kind::companyContact);
}

void ContactWindow::build(ContactForm& contactForm, Kind kind)
{
    helpTopic::set(*this, "contact");
    resize(820, 640);
    setMinimumSize(720, 560);
    auto* header = new RecordHeader;
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(new Hairline);
    column->addWidget(makeFields(kind), 1);
    column->addWidget(makeFooter(kind));
    bindForm();
    setFirstField("name");
    const QString kindWord = kind == Kind::company ? tr("Company") : kind == Kind::individual ? tr("Person") : tr("Person of a company");
    const auto showHeader = [header, &contactForm, kindWord] {
        const QString name = contactForm.name.text();
        header->setTitle(name.isEmpty() ? contactForm.title() : name);
        header->setSubtitle(kindWord + " · " + contactForm.ref.text());
    };
    contactForm.follow({&contactForm.name, &contactForm.ref}, this, showHeader);
    connect(&contactForm, &Form::opened, this, showHeader);
}

QWidget* ContactWindow::makeFields(Kind kind)
{
    auto* fields = new QWidget;
    auto* columns = new QHBoxLayout(fields);
    columns->setContentsMargins(24, 20, 24, 20);
    columns->setSpacing(32);
    auto* left = new FormGrid;
    addName(*left, kind);
    left->addGap(16);
    addAddress(*left);
    auto* right = new FormGrid;
    addReach(*right, kind);
    auto* leftColumn = new QVBoxLayout;
    leftColumn->addLayout(left);
    leftColumn->addStretch(1);
    auto* rightColumn = new QVBoxLayout;
    rightColumn->addLayout(right);
    rightColumn->addStretch(1);
    columns->addLayout(leftColumn, 1);
    columns->addLayout(rightColumn, 1);
    return fields;
}

void ContactWindow::addName(FormGrid& grid, Kind kind)
{
    if (kind != Kind::company)
        grid.addRow(tr("Title"), fieldNamed<QLineEdit>("title"), 84);
    grid.addRow(tr("Name"), fieldNamed<QLineEdit>("name"));
    grid.addRow(tr("Salutation"), fieldNamed<QLineEdit>("salutation"));
    if (kind == Kind::companyContact) {
        grid.addRow(tr("Job title"), fieldNamed<QLineEdit>("jobTitle"));
        grid.addRow(tr("Company"), fieldNamed<ChoiceBox>("company"));
    } else {
        grid.addRow(tr("Type"), fieldNamed<ChoiceBox>("type"), 160);
    }
    grid.addRow(tr("Reference"), fieldNamed<QLineEdit>("ref"), 160);
}

void ContactWindow::addAddress(FormGrid& grid)
{
    grid.addRow(tr("Address"), fieldNamed<QLineEdit>("add1"));
    auto* second = fieldNamed<QLineEdit>("add2");
    grid.addRow({}, second);
    second->setAccessibleName(tr("Address line 2"));
    second->setPlaceholderText(tr("Line 2"));
    auto* third = fieldNamed<QLineEdit>("add3");
    grid.addRow({}, third);
    third->setAccessibleName(tr("Address line 3"));
    third->setPlaceholderText(tr("Line 3"));
    grid.addRow(tr("County"), fieldNamed<QLineEdit>("county"));
    grid.addRow(tr("Postcode"), fieldNamed<QLineEdit>("postcode"), 110);
    grid.addRow(tr("Country"), fieldNamed<QLineEdit>("country"));
}

void ContactWindow::addReach(FormGrid& grid, Kind kind)
{
    grid.addRow(tr("Phone"), fieldNamed<QLineEdit>("phone"));
    if (kind == Kind::companyContact)
        grid.addRow(tr("Extension"), fieldNamed<QLineEdit>("extension"), 110);
    grid.addRow(tr("Mobile"), fieldNamed<QLineEdit>("mobile"));
    grid.addRow(tr("Fax"), fieldNamed<QLineEdit>("fax"));
    grid.addRow(tr("E-mail"), fieldNamed<QLineEdit>("email"));
    if (kind == Kind::company) {
        auto* website = fieldNamed<QLineEdit>("website");
        website->setPlaceholderText("https://");
        grid.addRow(tr("Website"), website);
    }
    grid.addGap(16);
    auto* comments = fieldNamed<QPlainTextEdit>("comments");
    comments->setFixedHeight(120);
    comments->setTabChangesFocus(true);
    grid.addRow(tr("Notes"), comments);
    if (kind == Kind::company) {
        auto* people = fieldNamed<QPlainTextEdit>("people");
        people->setReadOnly(true);
        people->setFixedHeight(90);
        people->setTabChangesFocus(true);
        grid.addRow(tr("People"), people);
    }
}

QWidget* ContactWindow::makeFooter(Kind kind)
{
    auto* footer = new FooterBar;
    if (kind == Kind::individual) {
        footer->addLeft(fieldNamed<TextButton>("makeCompany", tr("Make Company")));
        footer->addLeft(fieldNamed<TextButton>("linkToCompany", tr("Link to Company")));
    }
    footer->addRight(fieldNamed<Button>("cancel", tr("Cancel")));
    footer->addRight(fieldNamed<PrimaryButton>("save", tr("Save")));
    return footer;
}
