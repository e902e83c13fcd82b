#include "ui/settings/NewDatabaseSheet.h"

#include "app/PrefsForm.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/kit/Button.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Label.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/SheetStack.h"
#include "ui/settings/SettingsPage.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

class NewDatabaseSheet : public Sheet {
public:
    // What is typed is about the database that is open now.
    NewDatabaseSheet(NewDatabaseForm& form, QWidget* host) : Sheet(host, Blocks::theProgram), m_form(form)
    {
        setTitle(form.title());
        helpTopic::set(*this, "settings-databases#new");
        card()->setFixedWidth(480);
        column()->addWidget(new Label(form.title(), LabelSize::group));
        column()->addSpacing(12);
        auto* fields = new FormGrid(FormGrid::Labels::left);
        fields->setLabelWidth(110);
        auto* name = settingsField<QLineEdit>(form.displayName);
        fields->addRow(tr("Name"), name);
        fields->addRow(tr("File name"), settingsField<QLineEdit>(form.fileName));
        auto* folder = new Label({}, LabelSize::small, LabelTone::secondary);
        folder->setWordWrap(true);
        fields->addRow({}, folder);
        column()->addLayout(fields);
        column()->addSpacing(20);
        addButtons();
        setFirstFocus(name);
        auto* binder = new FormBinder(form, this);
        binder->bindCaption(form.fileName.name(), folder);
        connect(&form, &Form::closed, this, [this] {
            if (isOpen())
                accept();
        });
        connect(this, &Sheet::finished, this, [this](int answer) {
            if (answer == cancelled && m_form.isOpen())
                m_form.cancel.trigger();
            deleteLater();
        });
    }

private:
    void addButtons()
    {
        auto* buttons = new QHBoxLayout;
        buttons->setSpacing(8);
        buttons->addStretch(1);
        auto* cancelButton = settingsField<Button>(m_form.cancel, tr("Cancel"));
        auto* create = settingsField<PrimaryButton>(m_form.confirm, tr("OK"));
        buttons->addWidget(cancelButton);
        buttons->addWidget(create);
        column()->addLayout(buttons);
        setDefaultButton(create);
    }

    NewDatabaseForm& m_form;
};

} // namespace

NewDatabasePresenter::NewDatabasePresenter(NewDatabaseForm& form, QObject* parent) : QObject(parent), m_form(form)
{
    connect(&form, &Form::opened, this, &NewDatabasePresenter::present);
}

void NewDatabasePresenter::present()
{
    auto* sheet = new NewDatabaseSheet(m_form, SheetStack::frontWindow());
    sheet->open();
}
