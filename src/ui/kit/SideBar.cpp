#include "ui/kit/SideBar.h"

#include "ui/kit/Icons.h"
#include "ui/kit/Look.h"
#include "ui/kit/Theme.h"
#include "ui/kit/Type.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

namespace {

constexpr int pageIconSize = 22;
constexpr int pageTextLeft = 39;
constexpr int pageIconLeft = 11;

class PageDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {SideBar::barWidth - 16, SideBar::rowHeight}; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem page(option);
        initStyleOption(&page, index);
        const bool selected = page.state & QStyle::State_Selected;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintGround(painter, page, selected);
        const QRect row = page.rect;
        const QRect iconPlace(row.left() + pageIconLeft, row.top() + (row.height() - pageIconSize) / 2, pageIconSize, pageIconSize);
        page.icon.paint(painter, iconPlace, Qt::AlignCenter, selected ? QIcon::Selected : QIcon::Normal);
        painter->setPen(themeColour(selected ? Colour::accentText : Colour::text));
        painter->setFont(selected ? type::strong() : type::body());
        const QRect words = row.adjusted(pageTextLeft, 0, -8, 0);
        painter->drawText(words, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            painter->fontMetrics().elidedText(page.text, Qt::ElideRight, words.width()));
        painter->restore();
    }

private:
    static void paintGround(QPainter* painter, const QStyleOptionViewItem& page, bool selected)
    {
        const QRectF ground = QRectF(page.rect).adjusted(0, 1, 0, -1);
        painter->setPen(Qt::NoPen);
        if (selected)
            painter->setBrush(themeColour(Colour::accentTint));
        else if (page.state & QStyle::State_MouseOver)
            painter->setBrush(themeColour(Colour::hoverVeil));
        else
            painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(ground, 6, 6);
        if (!selected || !(page.state & QStyle::State_HasFocus))
            return;
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(themeColour(Colour::focusRing), 3));
        painter->drawRoundedRect(ground.adjusted(1.5, 1.5, -1.5, -1.5), 5, 5);
    }
};

} // namespace

SideBar::SideBar(const QString& name, QWidget* parent) : QListWidget(parent)
{
    setObjectName(QStringLiteral("pages"));
    setAccessibleName(name);
    look::setKind(this, "pages");
    setFixedWidth(barWidth);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setItemDelegate(new PageDelegate(this));
    connect(this, &QListWidget::currentRowChanged, this, [this](int page) {
        if (page >= 0)
            Q_EMIT pageChosen(page);
    });
}

int SideBar::addPage(const QString& iconName, const QString& title)
{
    const QSignalBlocker quiet(this);
    addItem(new QListWidgetItem(Icons::get(iconName), title));
    if (count() == 1)
        setCurrentRow(0);
    return count() - 1;
}

void SideBar::setPage(int page)
{
    const QSignalBlocker quiet(this);
    setCurrentRow(page);
    viewport()->update();
}

void SideBar::setPageTitle(int page, const QString& title)
{
    if (QListWidgetItem* entry = item(page))
        entry->setText(title);
}

void SideBar::focusInEvent(QFocusEvent* event)
{
    QListWidget::focusInEvent(event);
    viewport()->update();
}

void SideBar::focusOutEvent(QFocusEvent* event)
{
    QListWidget::focusOutEvent(event);
    viewport()->update();
}
