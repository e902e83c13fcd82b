#include "ui/kit/ProgressCard.h"

#include "ui/kit/Button.h"
#include "ui/kit/Label.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QProgressBar>

ProgressCard::ProgressCard(QWidget* host, const QString& title, Stopping stopping)
    : Sheet(host, Blocks::theProgram)
    , m_text(new Label({}, LabelSize::body, LabelTone::secondary))
    , m_bar(new QProgressBar)
{
    setObjectName(QStringLiteral("progress"));
    setTitle(title);
    card()->setFixedWidth(440);
    column()->addWidget(new Label(title, LabelSize::group));
    column()->addSpacing(6);
    m_text->setWordWrap(true);
    column()->addWidget(m_text);
    column()->addSpacing(14);
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(title);
    column()->addWidget(m_bar);
    setProgress(0, 0);
    if (stopping == Stopping::mustFinish)
        return;
    column()->addSpacing(18);
    m_cancel = new Button(tr("Cancel"));
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(m_cancel);
    column()->addLayout(row);
    connect(m_cancel, &QPushButton::clicked, this, &ProgressCard::askToStop);
    setFirstFocus(m_cancel);
}

void ProgressCard::setText(const QString& text)
{
    m_text->setText(text);
}

void ProgressCard::setProgress(int done, int total)
{
    m_bar->setRange(0, total);
    m_bar->setValue(done);
}

void ProgressCard::askToStop()
{
    if (m_cancelled || !m_cancel)
        return;
    m_cancelled = true;
    m_cancel->setEnabled(false);
    Q_EMIT cancelPressed();
}

void ProgressCard::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        askToStop();
    else
        Sheet::keyPressEvent(event);
}

void ProgressCard::closeEvent(QCloseEvent* event)
{
    if (isOpen()) {
        event->ignore();
        askToStop();
    }
}
