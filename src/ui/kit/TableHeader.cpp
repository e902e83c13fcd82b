#include "ui/kit/TableHeader.h"

#include "ui/kit/RowDelegate.h"
#include "ui/kit/Theme.h"
#include "ui/kit/Type.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr int markWidth = 8;
constexpr int markGap = 7;
constexpr int overrun = 8;

} // namespace

TableHeader::TableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent), m_firstInset(RowDelegate::inset)
{
    setFont(type::tableHeading());
    setSectionsClickable(true);
    setHighlightSections(false);
    setMinimumSectionSize(rowHeight);
    setFixedHeight(rowHeight);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TableHeader::setFirstInset(int distance)
{
    m_firstInset = distance;
    update();
}

QSize TableHeader::sizeHint() const
{
    return {QHeaderView::sizeHint().width(), rowHeight};
}

bool TableHeader::isSorted(int section) const
{
    return isSortIndicatorShown() && sortIndicatorSection() == section;
}

bool TableHeader::isFirst(int section) const
{
    for (int place = 0; place < visualIndex(section); ++place) {
        if (!isSectionHidden(logicalIndex(place)))
            return false;
    }
    return true;
}

Qt::Alignment TableHeader::alignmentOf(int section) const
{
    const QVariant alignment = model() ? model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole) : QVariant();
    return alignment.isValid() ? Qt::Alignment(alignment.toInt()) : defaultAlignment();
}

QString TableHeader::headingOf(int section) const
{
    return model() ? model()->headerData(section, Qt::Horizontal).toString() : QString();
}

QRect TableHeader::sectionRect(int section) const
{
    return {sectionViewportPosition(section), 0, sectionSize(section), height()};
}

QRect TableHeader::headingRect(int section) const
{
    return sectionRect(section).adjusted(isFirst(section) ? m_firstInset : RowDelegate::inset, 0, -RowDelegate::inset, 0);
}

QRect TableHeader::sortMarkRect(int section) const
{
    if (!isSorted(section))
        return {};
    const QRect place = headingRect(section);
    const int words = QFontMetrics(font()).horizontalAdvance(headingOf(section));
    const int left =
        alignmentOf(section) & Qt::AlignRight ? place.right() - words - markGap - markWidth - 1 : place.left() + words + markGap;
    return {left, place.center().y() - 2, markWidth, markWidth / 2 + 2};
}

QRect TableHeader::wordsRect(int section) const
{
    const bool right = alignmentOf(section) & Qt::AlignRight;
    return headingRect(section).adjusted(right ? -overrun : 0, 0, right ? 0 : overrun, 0);
}

bool TableHeader::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QHeaderView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int section = logicalIndexAt(help->pos());
    const QString heading = section < 0 ? QString() : headingOf(section);
    const bool isCut = !heading.isEmpty() && QFontMetrics(font()).horizontalAdvance(heading) > wordsRect(section).width();
    QToolTip::showText(help->globalPos(), isCut ? heading.toHtmlEscaped() : QString(), viewport());
    return true;
}

void TableHeader::paintEvent(QPaintEvent* event)
{
    QHeaderView::paintEvent(event);
    // The line goes on where the columns end.
    QPainter painter(viewport());
    painter.fillRect(QRect(0, height() - 1, viewport()->width(), 1), themeColour(Colour::hairline));
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    if (!rect.isValid())
        return;
    painter->save();
    painter->setFont(font());
    const bool lit = isSorted(section) || section == logicalIndexAt(viewport()->mapFromGlobal(QCursor::pos()));
    painter->setPen(themeColour(isSorted(section) || (lit && underMouse()) ? Colour::text : Colour::secondaryText));
    const QRect place = wordsRect(section);
    const QString words = QFontMetrics(font()).elidedText(headingOf(section), Qt::ElideRight, place.width());
    painter->drawText(place, int(alignmentOf(section)) | Qt::TextSingleLine, words);
    if (const QRectF mark = sortMarkRect(section); !mark.isEmpty()) {
        const qreal middle = mark.top() + 3;
        const qreal dip = sortIndicatorOrder() == Qt::DescendingOrder ? 2 : -2;
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(themeColour(Colour::secondaryText), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPolyline(QPolygonF({{mark.left(), middle - dip}, {mark.center().x(), middle + dip}, {mark.right(), middle - dip}}));
    }
    painter->restore();
}

QSize TableHeader::sectionSizeFromContents(int section) const
{
    const int words = QFontMetrics(font()).horizontalAdvance(headingOf(section));
    const int before = isFirst(section) ? m_firstInset : RowDelegate::inset;
    const int mark = isSorted(section) ? markGap + markWidth : 0;
    return {before + words + mark + RowDelegate::inset + 1, rowHeight};
}
