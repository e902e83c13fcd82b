#include "ui/orders/ContactSummary.h"

#include "orders/OrderForm.h"
#include "ui/kit/Button.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Label.h"

#include <QHBoxLayout>
#include <QHash>
#include <QVBoxLayout>

namespace {

QString wordForContactField(const QString& field)
{
    static const QHash<QString, QString> words {{"add1", ContactSummary::tr("Address")}, {"county", ContactSummary::tr("County")},
        {"postcode", ContactSummary::tr("Postcode")}, {"country", ContactSummary::tr("Country")}, {"phone", ContactSummary::tr("Phone")},
        {"mobile", ContactSummary::tr("Mobile")}, {"email", ContactSummary::tr("E-mail")}, {"ref", ContactSummary::tr("Reference")}};
    return words.value(field);
}

} // namespace

ContactSummary::ContactSummary(OrderForm& form, const QString& prefix, QWidget* parent)
    : QWidget(parent)
    , m_form(form)
    , m_name(prefix == "contact" ? form.contactName : form.contact2Name)
    , m_details(prefix == "contact" ? form.contactDetails : form.contact2Details)
    , m_title(new ElidedLabel({}, LabelSize::heading))
    , m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(2);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(m_title, 1);
    const auto button = [&](const char* name, const QString& text) {
        auto* made = new Button(text);
        made->setObjectName(name);
        row->addWidget(made);
    };
    button("newContact", tr("New Contact"));
    button("editContact", tr("Edit…"));
    button("pickContact", tr("Select Contact…"));
    m_column->addLayout(row);
    auto* note = new Label({}, LabelSize::body, LabelTone::secondary);
    note->setObjectName(prefix + "Note");
    m_column->addWidget(note);
    m_column->addSpacing(12);
    m_column->addWidget(new Hairline);
    m_column->addSpacing(12);
    form.follow({&m_name, &m_details}, this, [this] { showDetails(); });
    connect(&form, &Form::opened, this, &ContactSummary::showDetails);
}

void ContactSummary::showDetails()
{
    const bool none = m_name.text().isEmpty();
    m_title->setText(none ? tr("No contact") : m_name.text());
    m_title->setTone(none ? LabelTone::secondary : LabelTone::normal);
    delete m_grid;
    m_grid = new QWidget(this);
    auto* grid = new FormGrid;
    m_grid->setLayout(grid);
    grid->setContentsMargins(0, 0, 0, 0);
    if (none)
        grid->addWide(
            new Label(tr("Choose one with Select Contact…, or make one with New Contact."), LabelSize::body, LabelTone::secondary));
    for (const QString& line : m_details.text().split('\n', Qt::SkipEmptyParts)) {
        const QString field = line.section('\t', 0, 0);
        auto* value = new Label(line.section('\t', 1));
        value->setWordWrap(true);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        grid->addRow(wordForContactField(field), value);
    }
    m_column->addWidget(m_grid);
}
