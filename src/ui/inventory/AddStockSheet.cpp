#include "ui/inventory/AddStockSheet.h"

#include "inventory/ItemForm.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Label.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

AddStockSheet::AddStockSheet(AddStockForm& form, QWidget* host) : Sheet(host)
{
    setTitle(tr("Add Stock"));
    helpTopic::set(*this, "item#stock");
    card()->setFixedWidth(360);
    column()->addWidget(new Label(tr("Add Stock"), LabelSize::group));
    column()->addSpacing(12);
    auto* fields = new FormGrid(FormGrid::Labels::left);
    auto* quantity = new NumberField;
    quantity->setObjectName(form.quantity.name());
    fields->addRow(tr("How many came in"), quantity, 130);
    column()->addLayout(fields);
    column()->addSpacing(20);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch(1);
    auto* cancelButton = new Button(tr("Cancel"));
    cancelButton->setObjectName(form.cancel.name());
    auto* okButton = new PrimaryButton(tr("OK"));
    okButton->setObjectName(form.ok.name());
    buttons->addWidget(cancelButton);
    buttons->addWidget(okButton);
    column()->addLayout(buttons);
    setDefaultButton(okButton);
    setFirstFocus(quantity);

    new FormBinder(form, this);
    connect(&form, &Form::opened, this, &Sheet::open);
    connect(&form, &Form::closed, this, [this] {
        if (isOpen())
            accept();
    });
    connect(this, &Sheet::finished, this, [&form](int answer) {
        if (answer == cancelled)
            form.close();
    });
}
