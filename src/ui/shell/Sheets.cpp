#include "ui/shell/Sheets.h"

#include "foundation/Text.h"
#include "storage/DatabaseLock.h"
#include "ui/HelpTopic.h"
#include "ui/kit/Button.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/IconLabel.h"
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

QString sentenceOn(processMark::Life holder)
{
    switch (holder) {
    case processMark::Life::running: return LockSheet::tr("The program that holds the lock is running on this computer.");
    case processMark::Life::ended: return LockSheet::tr("The program that held the lock is no longer running: the lock was left behind.");
    case processMark::Life::unknown: break;
    }
    return LockSheet::tr("Whether the program that holds the lock is still running cannot be told from here.");
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
    helpTopic::set(*this, "sharing");
    card()->setFixedWidth(480);
    auto* words = new QVBoxLayout;
    words->setContentsMargins(0, 4, 0, 0);
    words->setSpacing(6);
    words->addWidget(new Label(tr("This database is locked"), LabelSize::group));
    words->addWidget(wrapped(tr("Somebody has it open, or Vendaro was not quit properly last time. Until it is unlocked you can look at "
                                "everything but change nothing.")));
    auto* facts = new FormGrid;
    const auto fact = [&](const QString& name, const QString& value) {
        facts->addRow(name, new Label(value.isEmpty() ? tr("not known") : value));
    };
    fact(tr("User"), toQString(lock.user));
    fact(tr("Since"), toQString(lock.datetime));
    if (lock.reason)
        fact(tr("Reason"), toQString(*lock.reason));
    words->addSpacing(10);
    words->addLayout(facts);
    words->addSpacing(10);
    auto* holder = wrapped(sentenceOn(lock.holder));
    holder->setObjectName("holder");
    words->addWidget(holder);
    auto* row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(new IconLabel("object-locked", IconRole::warning, 32), 0, Qt::AlignTop);
    row->addLayout(words, 1);
    column()->addLayout(row);
    column()->addSpacing(20);
    auto* unlock = new DangerButton(tr("Unlock…"));
    unlock->setObjectName("unlock");
    auto* cancelButton = new Button(tr("Cancel"));
    cancelButton->setObjectName("cancel");
    column()->addLayout(buttonRow({cancelButton, unlock}));
    setFirstFocus(cancelButton);
    setDefaultButton(cancelButton);
    connect(cancelButton, &QPushButton::clicked, this, &Sheet::cancel);
    connect(unlock, &QPushButton::clicked, this, [this] {
        accept();
        Q_EMIT unlockWanted();
    });
}

DateFormatSheet::DateFormatSheet(QWidget* host)
    : Sheet(host)
    , m_dayFirst(new QRadioButton(tr("Day first: dd/mm/yy")))
    , m_monthFirst(new QRadioButton(tr("Month first: mm/dd/yy")))
{
    setTitle(tr("How do you write dates?"));
    helpTopic::set(*this, "settings-general#dates");
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
