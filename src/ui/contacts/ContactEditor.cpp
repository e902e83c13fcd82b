#include "ui/contacts/ContactEditor.h"

#include "contacts/ContactForm.h"
#include "orders/ContactOrders.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/ListBinder.h"
#include "ui/kit/Button.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Panels.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/TableHeader.h"
#include "ui/kit/UnderlineTabs.h"

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

ContactWindow::ContactWindow(IndividualForm& form, ContactOrders& orders)
    : EditorWindow(form, form.cancel, contactFrame)
    , m_contactForm(form)
    , m_orders(orders)
{
    build(Kind::individual);
}

ContactWindow::ContactWindow(CompanyForm& form, ContactOrders& orders)
    : EditorWindow(form, form.cancel, contactFrame)
    , m_contactForm(form)
    , m_orders(orders)
{
    build(Kind::company);
}

ContactWindow::ContactWindow(CompanyContactForm& form, ContactOrders& orders)
    : EditorWindow(form, form.cancel, contactFrame)
    , m_contactForm(form)
    , m_orders(orders)
{
    build(Kind::companyContact);
}

bool ContactWindow::hasSomethingToLose() const
{
    return EditorWindow::hasSomethingToLose() || m_contactForm.changedByCommand;
}

void ContactWindow::build(Kind kind)
{
    helpTopic::set(*this, "contact");
    resize(880, 700);
    setMinimumSize(780, 640);
    m_tabs = new UnderlineTabs;
    m_tabs->addTab(makeFields(kind), tr("Contact"));
    m_ordersTab = m_tabs->addTab(makeOrders(), tr("Orders"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader(kind));
    column->addWidget(m_tabs, 1);
    column->addWidget(makeFooter(kind));
    bindForm();
    setFirstField("name");
    // Whoever opens a contact wants to see the contact.
    connect(&m_contactForm, &Form::closed, m_tabs, [this] { m_tabs->setCurrentIndex(0); });
}

void ContactWindow::setWords(const QString& orders)
{
    m_tabs->setTabText(m_ordersTab, orders);
}

QWidget* ContactWindow::makeHeader(Kind kind)
{
    auto* header = new RecordHeader;
    header->addButton(fieldNamed<Button>("capitalise", tr("Capitalise")));
    header->addButton(fieldNamed<Button>("copyContact", tr("Copy Address")));
    header->addButton(fieldNamed<Button>("pasteContact", tr("Paste Address")));
    const QString kindWord = kind == Kind::company ? tr("Company") : kind == Kind::individual ? tr("Person") : tr("Person of a company");
    const auto showHeader = [header, this, kindWord] {
        const QString name = m_contactForm.name.text();
        header->setTitle(name.isEmpty() ? m_contactForm.title() : name);
        header->setSubtitle(kindWord + " · " + m_contactForm.ref.text());
    };
    m_contactForm.follow({&m_contactForm.name, &m_contactForm.ref}, this, showHeader);
    connect(&m_contactForm, &Form::opened, this, showHeader);
    return header;
}

QWidget* ContactWindow::makeOrders()
{
    auto* tab = new QWidget;
    helpTopic::set(*tab, "contact#orders");
    auto* column = new QVBoxLayout(tab);
    column->setContentsMargins(24, 20, 24, 20);
    auto* table = new RecordTable(RecordTable::Place::card);
    table->setObjectName("contactOrders");
    table->setAccessibleName(tr("Orders of the contact"));
    table->setEmptyText(tr("No orders of this contact"));
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->tableHeader()->setStretchLastSection(true);
    new ListBinder(m_orders, table, "contactOrders");
    // They stand as the list of orders is sorted.
    table->tableHeader()->setSectionsClickable(false);
    connect(table, &QAbstractItemView::activated, this, [this] { m_orders.edit(); });
    column->addWidget(new CardFrame(table), 1);
    return tab;
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
    auto* pick = fieldNamed<Button>("pickFromAddressBook", tr("From Address Book…"));
    grid.addRow({}, {pick, fieldNamed<Button>("updateContactFromABMenuItem", tr("Update"))});
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
    auto* mail = fieldNamed<Button>("sendEmail", tr("Write"));
    mail->setGlyph("mail-message");
    grid.addRow(tr("E-mail"), {fieldNamed<QLineEdit>("email"), mail});
    if (kind == Kind::company) {
        auto* website = fieldNamed<QLineEdit>("website");
        website->setPlaceholderText("https://");
        auto* open = fieldNamed<Button>("openWebsite", tr("Open"));
        open->setGlyph("globe");
        grid.addRow(tr("Website"), {website, open});
    }
    grid.addGap(16);
    auto* comments = fieldNamed<QPlainTextEdit>("comments");
    comments->setFixedHeight(120);
    comments->setTabChangesFocus(true);
    grid.addRow(tr("Notes"), comments);
    if (kind == Kind::company) {
        auto* people = fieldNamed<QPlainTextEdit>("people");
        people->setReadOnly(true);
        people->setPlaceholderText(tr("Nobody is linked to it yet"));
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
