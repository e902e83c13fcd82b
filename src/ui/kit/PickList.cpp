#include "ui/kit/PickList.h"

#include "ui/kit/Icons.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QStyledItemDelegate>

namespace {

constexpr int entryIconSize = 16;
constexpr int entryIconLeft = 10;
constexpr int emptyTextTop = 7;
constexpr int entryTextAfterIcon = 31;
constexpr int iconNameRole = Qt::UserRole + 201;
constexpr int quietRole = Qt::UserRole + 202;

class EntryDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {100, PickList::rowHeight}; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool selected = option.state & QStyle::State_Selected;
        const bool filled = selected && option.widget && option.widget->hasFocus();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintGround(painter, option, selected, filled);
        const bool quiet = index.data(quietRole).toBool();
        const bool disabled = !(option.state & QStyle::State_Enabled);
        const QString icon = index.data(iconNameRole).toString();
        if (!icon.isEmpty()) {
            const QColor colour = themeColour(filled ? Colour::onAccent : quiet || disabled ? Colour::placeholder : Colour::icon);
            painter->drawPixmap(option.rect.left() + entryIconLeft, option.rect.top() + (option.rect.height() - entryIconSize) / 2,
                Icons::pixmap(icon, colour, entryIconSize, painter->device()->devicePixelRatioF()));
        }
        painter->setPen(themeColour(filled ? Colour::onAccent
                : disabled                 ? Colour::placeholder
                : quiet                    ? Colour::secondaryText
                                           : Colour::text));
        const QRect words = option.rect.adjusted(icon.isEmpty() ? entryIconLeft : entryTextAfterIcon, 0, -8, 0);
        painter->drawText(words, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideRight, words.width()));
        painter->restore();
    }

private:
    static void paintGround(QPainter* painter, const QStyleOptionViewItem& option, bool selected, bool filled)
    {
        if (!selected && !(option.state & QStyle::State_MouseOver))
            return;
        painter->setPen(Qt::NoPen);
        painter->setBrush(themeColour(filled ? Colour::accent : selected ? Colour::accentTint : Colour::hoverVeil));
        painter->drawRoundedRect(option.rect, 5, 5);
    }
};

} // namespace

PickList::PickList(const QString& name, QWidget* parent) : QListWidget(parent)
{
    setAccessibleName(name);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setItemDelegate(new EntryDelegate(this));
}

QListWidgetItem* PickList::addEntry(const QString& iconName, const QString& title, Weight weight)
{
    auto* entry = new QListWidgetItem(title, this);
    entry->setData(iconNameRole, iconName);
    entry->setData(quietRole, weight == Weight::quiet);
    return entry;
}

void PickList::setEmptyText(const QString& text)
{
    m_emptyText = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void PickList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() > 0 || m_emptyText.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(themeColour(Colour::secondaryText));
    const QRect room = viewport()->rect().adjusted(entryIconLeft, emptyTextTop, -entryIconLeft, 0);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_emptyText);
}

void PickList::focusInEvent(QFocusEvent* event)
{
    QListWidget::focusInEvent(event);
    viewport()->update();
}

void PickList::focusOutEvent(QFocusEvent* event)
{
    QListWidget::focusOutEvent(event);
    viewport()->update();
}
