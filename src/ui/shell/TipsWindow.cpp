#include "ui/shell/TipsWindow.h"

#include "app/Tips.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/kit/Button.h"
#include "ui/kit/Label.h"
#include "ui/kit/Panels.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QVBoxLayout>

TipsWindow::TipsWindow(TipsForm& form) : m_form(form)
{
    setObjectName("TipsWindow");
    helpTopic::set(*this, "tips");
    setWindowTitle(tr("Tip of the Day"));
    setFixedSize(480, 250);

    auto* tip = new Label;
    tip->setObjectName("tip");
    tip->setWordWrap(true);
    tip->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    tip->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* text = new QVBoxLayout;
    text->setContentsMargins(24, 24, 24, 16);
    text->setSpacing(8);
    text->addWidget(new Label(tr("Did you know?"), LabelSize::group));
    text->addWidget(tip, 1);

    auto* dontShow = new QCheckBox(tr("&Don't show tips at the start"));
    dontShow->setObjectName("dontShowTips");
    auto* next = new Button(tr("&Next Tip"));
    next->setObjectName("nextTip");
    auto* close = new PrimaryButton(tr("Close"));
    close->setObjectName("closeTips");
    auto* foot = new FooterBar;
    foot->addLeft(dontShow);
    foot->addRight(next);
    foot->addRight(close);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(text, 1);
    column->addWidget(foot);
    new FormBinder(form, this);
    close->setFocus();

    auto* closeWindow = new QAction(tr("Close"), this);
    closeWindow->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)});
    connect(closeWindow, &QAction::triggered, this, &QWidget::close);
    addAction(closeWindow);
    connect(&form, &Form::closed, this, &QWidget::hide);
}

void TipsWindow::showOver(const QWidget& window)
{
    if (!isVisible())
        move(window.frameGeometry().center() - rect().center());
    show();
    raise();
    activateWindow();
}

void TipsWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    m_form.close();
}
