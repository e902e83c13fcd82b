#include "ui/kit/PictureWell.h"

#include "ui/kit/FocusRing.h"
#include "ui/kit/Look.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int largestPreview = 1600;

bool mayHoldPicture(const QMimeData& data)
{
    const QStringList formats = data.formats();
    return data.hasUrls() || data.hasImage()
        || std::any_of(formats.begin(), formats.end(), [](const QString& format) { return format.startsWith("image/"); });
}

/// As large as fits, and never thinner than a point.
QImage scaledInto(const QImage& picture, QSize room)
{
    const QSize fitting = picture.size().scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1});
    return picture.scaled(fitting, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

PictureWell::PictureWell(const QString& hint, QWidget* parent) : QFrame(parent), m_hint(hint)
{
    look::setKind(this, "drop");
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(height);
    FocusRing::surround(this, this);
    setAccessibleDescription(hint);
}

void PictureWell::setPicture(const QImage& picture)
{
    setAccessibleDescription(picture.isNull() ? m_hint : tr("%1 by %2 points").arg(picture.width()).arg(picture.height()));
    if (picture.cacheKey() == m_picture.cacheKey())
        return;
    m_picture = picture;
    m_preview = picture.width() > largestPreview || picture.height() > largestPreview
        ? scaledInto(picture, {largestPreview, largestPreview})
        : picture;
    scale();
}

void PictureWell::scale()
{
    const QSize room = (size() - QSize(2 * inset, 2 * inset)) * devicePixelRatioF();
    const bool fits = m_preview.width() <= room.width() && m_preview.height() <= room.height();
    m_scaled = fits ? m_preview : scaledInto(m_preview, room);
    m_scaled.setDevicePixelRatio(devicePixelRatioF());
    update();
}

void PictureWell::paste()
{
    if (const QMimeData* held = QApplication::clipboard()->mimeData())
        Q_EMIT offered(*held);
}

void PictureWell::dragEnterEvent(QDragEnterEvent* event)
{
    if (!mayHoldPicture(*event->mimeData()))
        return;
    event->acceptProposedAction();
    look::set(this, "inviting", "true");
}

void PictureWell::dragLeaveEvent(QDragLeaveEvent*)
{
    look::set(this, "inviting", "false");
}

void PictureWell::dropEvent(QDropEvent* event)
{
    look::set(this, "inviting", "false");
    event->acceptProposedAction();
    Q_EMIT offered(*event->mimeData());
}

void PictureWell::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Paste))
        paste();
    else if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        Q_EMIT removalWanted();
    else
        QFrame::keyPressEvent(event);
}

void PictureWell::mousePressEvent(QMouseEvent*)
{
    setFocus(Qt::MouseFocusReason);
}

void PictureWell::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    scale();
}

void PictureWell::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    if (m_scaled.isNull()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(rect().adjusted(inset, inset, -inset, -inset), Qt::AlignCenter | Qt::TextWordWrap, m_hint);
        return;
    }
    QRectF place(QPointF(), QSizeF(m_scaled.size()) / devicePixelRatioF());
    place.moveCenter(QRectF(rect()).center());
    painter.drawImage(place.topLeft(), m_scaled);
}
