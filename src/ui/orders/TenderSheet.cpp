#include "ui/orders/TenderSheet.h"

#include "orders/OrderForm.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Label.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

constexpr int dateWidth = 120;

Label* amountLabel(const char* name, LabelSize size)
{
    auto* label = new Label({}, size);
    label->setObjectName(QString::fromLatin1(name));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setContentsMargins(0, 0, 15, 0);
    return label;
}

} // namespace

TenderSheet::TenderSheet(TenderForm& form, QWidget* host) : Sheet(host), m_form(form)
{
    setTitle(form.title());
    helpTopic::set(*this, "payments#tender");
    card()->setFixedWidth(420);
    auto* choices = new FormGrid(FormGrid::Labels::left);
    choices->setLabelWidth(130);
    auto* method = new ChoiceBox;
    method->setObjectName("tenderPaymentMethod");
    choices->addRow(tr("Payment method"), method);
    auto* date = new QLineEdit;
    date->setObjectName("datePaid");
    date->setFixedWidth(dateWidth);
    m_dateCaption = new Label({}, LabelSize::small, LabelTone::secondary);
    m_dateCaption->setObjectName("dateCaption");
    choices->addRow(tr("Date paid"), {date, m_dateCaption});
    column()->addWidget(new Label(form.title(), LabelSize::group));
    column()->addSpacing(12);
    column()->addLayout(choices);
    column()->addSpacing(16);
    column()->addWidget(new Hairline);
    column()->addSpacing(12);

    auto* amounts = new FormGrid(FormGrid::Labels::left);
    amounts->setLabelWidth(130);
    amounts->addRow(tr("Amount due"), amountLabel("amountDue", LabelSize::tender));
    auto* tendered = new NumberField;
    tendered->setObjectName("amountTendered");
    tendered->setSize(NumberField::Size::big);
    amounts->addRow(tr("Amount tendered"), tendered);
    Label* remaining = amounts->addRow(tr("Balance Remaining"), amountLabel("remainingBalance", LabelSize::change));
    column()->addLayout(amounts);
    column()->addSpacing(20);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch(1);
    auto* cancelButton = new Button(tr("Cancel"));
    cancelButton->setObjectName("cancel");
    auto* okButton = new PrimaryButton(tr("OK"));
    okButton->setObjectName("ok");
    buttons->addWidget(cancelButton);
    buttons->addWidget(okButton);
    column()->addLayout(buttons);
    setDefaultButton(okButton);
    setFirstFocus(tendered);

    auto* binder = new FormBinder(form, this);
    binder->bindCaption("remainingBalance", remaining);
    connect(&form, &Form::opened, this, &Sheet::open);
    connect(&form, &Form::closed, this, [this] {
        if (isOpen())
            accept();
    });
    connect(this, &Sheet::finished, this, [this](int answer) {
        if (answer == cancelled)
            m_form.close();
    });
}

void TenderSheet::setDateCaption(const QString& caption)
{
    m_dateCaption->setText(caption);
}
