#include "ui/kit/Hairline.h"

#include "ui/kit/Look.h"

Hairline::Hairline(Qt::Orientation orientation, QWidget* parent) : QFrame(parent)
{
    look::setKind(this, orientation == Qt::Horizontal ? "hline" : "vline");
    if (orientation == Qt::Horizontal)
        setFixedHeight(1);
    else
        setFixedWidth(1);
}
