#include "ui/kit/UnderlineTabs.h"

#include "ui/kit/Theme.h"
#include "ui/kit/Type.h"

#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>

namespace {

constexpr int tabHeight = 34;
/// Room between the underlines of two neighbours, and between a word and the ends of its underline.
constexpr int tabGap = 22;
constexpr int underlineOverhang = 2;
constexpr int underlineHeight = 2;

QRect markedPart(const QRect& tab)
{
    return tab.adjusted(0, 0, -tabGap, 0);
}

} // namespace

UnderlineTabBar::UnderlineTabBar(QWidget* parent) : QTabBar(parent)
{
    setDrawBase(false);
    setExpanding(false);
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
}

QSize UnderlineTabBar::tabSizeHint(int index) const
{
    // As wide as the chosen tab needs, so that nothing moves when another one is chosen.
    const int words = QFontMetrics(type::strong()).horizontalAdvance(tabText(index));
    return {words + 2 * underlineOverhang + tabGap, tabHeight};
}

QSize UnderlineTabBar::minimumTabSizeHint(int index) const
{
    return tabSizeHint(index);
}

void UnderlineTabBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int index = 0; index < count(); ++index)
        paintTab(&painter, index);
}

void UnderlineTabBar::paintTab(QPainter* painter, int index) const
{
    const QRect place = markedPart(tabRect(index));
    const bool chosen = index == currentIndex();
    const bool hovered = place.contains(mapFromGlobal(QCursor::pos())) && underMouse();
    painter->setFont(chosen ? type::strong() : type::body());
    painter->setPen(themeColour(!isTabEnabled(index) ? Colour::placeholder : chosen || hovered ? Colour::text : Colour::secondaryText));
    painter->drawText(place.adjusted(underlineOverhang, 0, 0, -1), Qt::AlignLeft | Qt::AlignVCenter, tabText(index));
    if (!chosen)
        return;
    painter->fillRect(QRect(place.left(), height() - underlineHeight, place.width(), underlineHeight), themeColour(Colour::accent));
    if (!hasFocus())
        return;
    painter->setPen(QPen(themeColour(Colour::focusRing), 3));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(place).adjusted(1.5 - 4, 4, 4 - 1.5, -6), 6, 6);
}

UnderlineTabs::UnderlineTabs(QWidget* parent) : QTabWidget(parent)
{
    setTabBar(new UnderlineTabBar(this));
    setFocusPolicy(Qt::NoFocus);
    const auto addTurn = [this](int key, int steps) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(key)), this);
        shortcut->setContext(Qt::WindowShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, steps] { turn(steps); });
    };
    addTurn(Qt::Key_PageUp, -1);
    addTurn(Qt::Key_PageDown, 1);
}

void UnderlineTabs::keyPressEvent(QKeyEvent* event)
{
    // In a sheet shortcuts rest, and the keys arrive here.
    if (event->modifiers() == Qt::ControlModifier && (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown))
        turn(event->key() == Qt::Key_PageUp ? -1 : 1);
    else
        QTabWidget::keyPressEvent(event);
}

void UnderlineTabs::turn(int steps)
{
    for (int index = currentIndex() + steps; index >= 0 && index < count(); index += steps) {
        if (isTabEnabled(index) && isTabVisible(index)) {
            setCurrentIndex(index);
            return;
        }
    }
}
