#include "ui/kit/ColourPalette.h"

#include "ui/kit/Theme.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QGridLayout>
#include <QPainter>

namespace {

constexpr int squaresInRow = 9;
constexpr int squareRadius = 6;

struct OfferedColour {
    const char* name;
    QRgb rgb;
};

constexpr OfferedColour offeredColours[] {
    {QT_TRANSLATE_NOOP("ColourPalette", "Red"), 0xd64545},
    {QT_TRANSLATE_NOOP("ColourPalette", "Orange"), 0xe8833a},
    {QT_TRANSLATE_NOOP("ColourPalette", "Amber"), 0xe0a100},
    {QT_TRANSLATE_NOOP("ColourPalette", "Yellow"), 0xe2cf2b},
    {QT_TRANSLATE_NOOP("ColourPalette", "Lime"), 0x8ab82e},
    {QT_TRANSLATE_NOOP("ColourPalette", "Green"), 0x2f9e5f},
    {QT_TRANSLATE_NOOP("ColourPalette", "Teal"), 0x1f9d94},
    {QT_TRANSLATE_NOOP("ColourPalette", "Cyan"), 0x22a5c9},
    {QT_TRANSLATE_NOOP("ColourPalette", "Blue"), 0x2f7fd6},
    {QT_TRANSLATE_NOOP("ColourPalette", "Indigo"), 0x4b5fd1},
    {QT_TRANSLATE_NOOP("ColourPalette", "Violet"), 0x8257d1},
    {QT_TRANSLATE_NOOP("ColourPalette", "Magenta"), 0xc04bb5},
    {QT_TRANSLATE_NOOP("ColourPalette", "Pink"), 0xe0608f},
    {QT_TRANSLATE_NOOP("ColourPalette", "Brown"), 0x9a6a43},
    {QT_TRANSLATE_NOOP("ColourPalette", "Slate"), 0x4d5562},
    {QT_TRANSLATE_NOOP("ColourPalette", "Grey"), 0x8a919c},
    {QT_TRANSLATE_NOOP("ColourPalette", "Black"), 0x000000},
    {QT_TRANSLATE_NOOP("ColourPalette", "White"), 0xffffff},
};

class ColourSquare : public QAbstractButton {
public:
    ColourSquare(const QString& name, const QColor& colour) : m_colour(colour)
    {
        setCheckable(true);
        setAccessibleName(name);
        setToolTip(name);
        setFixedSize(ColourPalette::squareSize, ColourPalette::squareSize);
        setFocusPolicy(Qt::StrongFocus);
    }
    const QColor& colour() const { return m_colour; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setOpacity(isEnabled() ? 1 : 0.4);
        painter.setPen(themeColour(underMouse() ? Colour::controlBorderHover : Colour::controlBorder));
        painter.setBrush(m_colour);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), squareRadius, squareRadius);
        if (isChecked())
            paintMark(&painter);
    }

private:
    /// A dot that is seen on light and dark colours alike.
    void paintMark(QPainter* painter) const
    {
        const bool light = qGray(m_colour.rgb()) > 150;
        painter->setPen(Qt::NoPen);
        painter->setBrush(light ? Qt::black : Qt::white);
        painter->drawEllipse(QRectF(rect()).center(), 4.5, 4.5);
    }

    QColor m_colour;
};

} // namespace

ColourPalette::ColourPalette(const QString& name, QWidget* parent) : QWidget(parent), m_squares(new QButtonGroup(this))
{
    setAccessibleName(name);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    int place = 0;
    for (const OfferedColour& offered : offeredColours) {
        auto* square = new ColourSquare(tr(offered.name), QColor::fromRgb(offered.rgb));
        m_squares->addButton(square, place);
        grid->addWidget(square, place / squaresInRow, place % squaresInRow);
        ++place;
    }
    grid->setColumnStretch(squaresInRow, 1);
    connect(m_squares, &QButtonGroup::idClicked, this, [this](int id) { Q_EMIT chosen(QColor::fromRgb(offeredColours[id].rgb)); });
}

void ColourPalette::setColour(const QColor& colour)
{
    // An exclusive group always keeps one of its buttons checked.
    m_squares->setExclusive(false);
    for (QAbstractButton* square : m_squares->buttons()) {
        square->setChecked(static_cast<ColourSquare*>(square)->colour().rgb() == colour.rgb());
        square->setFocusPolicy(Qt::ClickFocus);
    }
    m_squares->setExclusive(true);
    // Tab goes to the chosen one, and the arrows go on from there.
    const int chosen = std::max(0, m_squares->checkedId());
    m_squares->button(chosen)->setFocusPolicy(Qt::StrongFocus);
}

QColor ColourPalette::colour() const
{
    const int id = m_squares->checkedId();
    return id < 0 ? QColor() : QColor::fromRgb(offeredColours[id].rgb);
}
