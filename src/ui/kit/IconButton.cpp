#include "ui/kit/IconButton.h"

#include "ui/kit/Icons.h"

IconButton::IconButton(const QString& iconName, const QString& name, QWidget* parent) : QToolButton(parent)
{
    setIcon(Icons::get(iconName));
    setIconSize({16, 16});
    setToolTip(name);
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
}
