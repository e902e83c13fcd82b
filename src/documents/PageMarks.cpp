#include "documents/PageMarks.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"

#include <QPainter>

QFont pageMarks::font(int size, QFont::Weight weight)
{
    QFont font;
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

void pageMarks::paintTitle(QPainter& painter, const QRectF& body, const QString& title)
{
    painter.setFont(font(16, QFont::DemiBold));
    painter.drawText(QRectF(body.left(), body.top(), body.width(), titleHeight), Qt::AlignLeft | Qt::AlignTop, title);
}

void pageMarks::paintFoot(QPainter& painter, const QRectF& body, const QString& text, int page, int pages)
{
    painter.setFont(font(9));
    const QRectF foot(body.left(), body.bottom() - footHeight, body.width(), footHeight);
    const QString number = fillText(localText("Page %@ of %@"), {QString::number(page + 1), QString::number(pages)});
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignBottom, text);
    painter.drawText(foot, Qt::AlignRight | Qt::AlignBottom, number);
}
