#include "ui/kit/Label.h"

#include "ui/kit/Look.h"
#include "ui/kit/Type.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

namespace {

QFont fontOfSize(LabelSize size)
{
    switch (size) {
    case LabelSize::body: break;
    case LabelSize::strong: return type::strong();
    case LabelSize::small: return type::small();
    case LabelSize::tableHeading: return type::tableHeading();
    case LabelSize::group: return type::group();
    case LabelSize::large: return type::large();
    case LabelSize::figures: return type::figures();
    case LabelSize::heading: return type::heading();
    case LabelSize::welcome: return type::welcome();
    case LabelSize::balance: return type::balance();
    case LabelSize::tender: return type::tender();
    case LabelSize::change: return type::change();
    case LabelSize::total: return type::total();
    }
    return type::body();
}

const char* nameOfTone(LabelTone tone)
{
    switch (tone) {
    case LabelTone::normal: break;
    case LabelTone::secondary: return "secondary";
    case LabelTone::accent: return "accent";
    case LabelTone::error: return "error";
    case LabelTone::warning: return "warning";
    case LabelTone::moneyBack: return "moneyBack";
    }
    return "normal";
}

} // namespace

Label::Label(const QString& text, LabelSize size, LabelTone tone, QWidget* parent) : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setSize(size);
    setTone(tone);
}

void Label::setSize(LabelSize size)
{
    setFont(fontOfSize(size));
}

void Label::setTone(LabelTone tone)
{
    look::set(this, "tone", nameOfTone(tone));
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(QStringLiteral("…")), Label::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect place = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, place.width());
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(place, int(alignment()) | Qt::TextSingleLine, shown);
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        const bool isCut = fontMetrics().horizontalAdvance(text()) > contentsRect().width();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), isCut ? text().toHtmlEscaped() : QString(), this);
        return true;
    }
    return Label::event(event);
}
