#include "ui/kit/ToolBar.h"

#include "ui/kit/Label.h"
#include "ui/kit/Look.h"

#include <QAction>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidgetAction>

namespace {

QToolButton* smallButton(QAction* command)
{
    auto* button = new QToolButton;
    look::setKind(button, "small");
    button->setDefaultAction(command);
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    button->setIconSize({16, 16});
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(command->text());
    return button;
}

Qt::ToolButtonStyle buttonStyle(ToolBar::Show show)
{
    switch (show) {
    case ToolBar::Show::iconAndText: break;
    case ToolBar::Show::iconOnly: return Qt::ToolButtonIconOnly;
    case ToolBar::Show::textOnly: return Qt::ToolButtonTextOnly;
    }
    return Qt::ToolButtonTextUnderIcon;
}

} // namespace

ToolBar::ToolBar(const QString& name, QWidget* parent) : QToolBar(name, parent)
{
    setAccessibleName(name);
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize({22, 22});
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
}

void ToolBar::addCommand(QAction* command)
{
    addAction(command);
    dressButton(command);
    connect(command, &QAction::changed, this, [this, command] { dressButton(command); });
}

void ToolBar::dressButton(QAction* command)
{
    QWidget* button = widgetForAction(command);
    if (!button)
        return;
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(command->iconText());
    const QString keys = command->shortcut().toString(QKeySequence::NativeText);
    button->setToolTip(keys.isEmpty() ? command->iconText() : QStringLiteral("%1 (%2)").arg(command->iconText(), keys));
}

void ToolBar::addPair(const QString& title, QAction* first, QAction* second)
{
    auto* pair = new QWidget;
    auto* column = new QVBoxLayout(pair);
    column->setContentsMargins(8, 2, 8, 5);
    column->setSpacing(2);
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(smallButton(first));
    row->addWidget(smallButton(second));
    column->addLayout(row);
    auto* words = new Label(title, LabelSize::small);
    words->setAlignment(Qt::AlignCenter);
    column->addWidget(words);
    addWidget(pair);
}

void ToolBar::addGap()
{
    auto* gap = new QWidget;
    gap->setFixedWidth(gapWidth);
    addWidget(gap);
}

void ToolBar::addFlexibleGap()
{
    auto* gap = new QWidget;
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(gap);
}

void ToolBar::removeAll()
{
    for (QAction* action : actions()) {
        removeAction(action);
        disconnect(action, &QAction::changed, this, nullptr);
        if (qobject_cast<QWidgetAction*>(action))
            delete action;
    }
}

void ToolBar::setShownParts(Show show)
{
    m_show = show;
    setToolButtonStyle(buttonStyle(show));
}
