// What stands on a printed page beside its contents: the title above, the page's number below. Units are points from the paper's upper left
// corner.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace pageMarks {

inline constexpr qreal titleHeight = 30;
inline constexpr qreal footHeight = 24;

/// The program's own font. Sizes are points, and a point is one unit of the painter.
QFont font(int size, QFont::Weight weight = QFont::Normal);
/// body: what lies within the margins.
void paintTitle(QPainter& painter, const QRectF& body, const QString& title);
/// "Page 2 of 3" at the right, and the text at the left. Pages count from 0.
void paintFoot(QPainter& painter, const QRectF& body, const QString& text, int page, int pages);

} // namespace pageMarks
