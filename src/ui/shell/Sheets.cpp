#include "ui/shell/Sheets.h"

#include "foundation/Text.h"
#include "storage/DatabaseLock.h"
#include "ui/kit/Button.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Label.h"

#include <QDate>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

Label* wrapped(const QString& text)
{
    auto* label = new Label(text, LabelSize::body, LabelTone::secondary);
    label->setWordWrap(true);
    return label;
}

QHBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch(1);
    for (QPushButton* button : buttons)
        row->addWidget(button);
    return row;
}

} // namespace

LockSheet::LockSheet(const LockInfo& lock, QWidget* host) : Sheet(host)
{
    setTitle(tr("Database locked"));
    card()->setFixedWidth(460);
    column()->addWidget(new Label(tr("This database is locked"), LabelSize::group));
    column()->addSpacing(8);
    column()->addWidget(wrapped(tr("Somebody has it open, or Vendaro was not quit properly last time. Until it is unlocked you can look at "
                                   "everything but change nothing.")));
    column()->addSpacing(16);
    auto* facts = new FormGrid(FormGrid::Labels::left);
    facts->setLabelWidth(110);
    const auto fact = [&](const QString& name, const QString& value) { facts->addRow(name, new Label(value.isEmpty() ? tr("not known") : value)); };
    fact(tr("Locked by"), toQString(lock.user));
    fact(tr("Since"), toQString(lock.datetime));
    column()->addLayout(facts);
    column()->addSpacing(20);
    auto* unlock = new DangerButton(tr("Unlock…"));
    unlock->setObjectName("unlock");
    auto* cancelButton = new Button(tr("Cancel"));
    cancelButton->setObjectName("cancel");
    column()->addLayout(buttonRow({unlock, cancelButton}));
    setFirstFocus(cancelButton);
    setDefaultButton(cancelButton);
    connect(cancelButton, &QPushButton::clicked, this, &Sheet::cancel);
    connect(unlock, &QPushButton::clicked, this, [this] {
        accept();
        Q_EMIT unlockWanted();
    });
}

DateFormatSheet::DateFormatSheet(QWidget* host)
    : Sheet(host), m_dayFirst(new QRadioButton(tr("Day first: dd/mm/yy"))), m_monthFirst(new QRadioButton(tr("Month first: mm/dd/yy")))
{
    setTitle(tr("How do you write dates?"));
    card()->setFixedWidth(460);
    column()->addWidget(new Label(tr("How do you write dates?"), LabelSize::group));
    column()->addSpacing(8);
    column()->addWidget(wrapped(tr("Orders and payments are dated this way. Choose once; after this, make what you wanted to make.")));
    column()->addSpacing(16);
    column()->addWidget(m_dayFirst);
    column()->addSpacing(6);
    column()->addWidget(m_monthFirst);
    column()->addSpacing(20);
    m_dayFirst->setChecked(true);
    m_dayFirst->setObjectName("dayFirst");
    m_monthFirst->setObjectName("monthFirst");
    auto* ok = new PrimaryButton(tr("OK"));
    ok->setObjectName("ok");
    auto* cancelButton = new Button(tr("Cancel"));
    column()->addLayout(buttonRow({cancelButton, ok}));
    setFirstFocus(m_dayFirst);
    setDefaultButton(ok);
    connect(ok, &QPushButton::clicked, this, &Sheet::accept);
    connect(cancelButton, &QPushButton::clicked, this, &Sheet::cancel);
}

bool DateFormatSheet::monthFirst() const
{
    return m_monthFirst->isChecked();
}
