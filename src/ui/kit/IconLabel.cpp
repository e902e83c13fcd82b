#include "ui/kit/IconLabel.h"

#include "ui/kit/Theme.h"

#include <QPainter>

IconLabel::IconLabel(const QString& iconName, IconRole role, int size, QWidget* parent)
    : QWidget(parent)
    , m_name(iconName)
    , m_role(role)
    , m_size(size)
{
    setFixedSize(sizeHint());
}

void IconLabel::setIcon(const QString& iconName, IconRole role)
{
    m_name = iconName;
    m_role = role;
    update();
}

void IconLabel::setTile(int side)
{
    m_tile = side;
    setFixedSize(sizeHint());
}

QSize IconLabel::sizeHint() const
{
    const int side = qMax(m_tile, m_size);
    return {side, side};
}

void IconLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_tile > 0) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(themeColour(Colour::accentTint));
        painter.drawRoundedRect(rect(), 14, 14);
    }
    const QIcon::Mode mode = isEnabled() ? QIcon::Normal : QIcon::Disabled;
    const QColor colour = themeColour(Icons::colourOfRole(m_role, mode));
    painter.drawPixmap((width() - m_size) / 2, (height() - m_size) / 2, Icons::pixmap(m_name, colour, m_size, devicePixelRatioF()));
}
