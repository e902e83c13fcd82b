#include "ui/kit/CardFrame.h"

#include "ui/kit/IconLabel.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

namespace {

/// Room below the last row, where the corners are round.
constexpr int cornerRoom = 4;

QStringList localFiles(const QMimeData* data)
{
    QStringList paths;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

} // namespace

CardFrame::CardFrame(QWidget* content, QWidget* parent) : QFrame(parent), m_column(new QVBoxLayout(this))
{
    look::setKind(this, "card");
    m_column->setContentsMargins(1, 1, 1, cornerRoom);
    m_column->setSpacing(0);
    m_column->addWidget(content, 1);
    // A table of fixed height must not float in a card that grows.
    if (content->minimumHeight() == content->maximumHeight())
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QLineEdit* CardFrame::addLineField(const QString& placeholder)
{
    m_column->setContentsMargins(1, 1, 1, 1);
    auto* strip = new QFrame(this);
    look::setKind(strip, "addLine");
    m_lineRow = new QHBoxLayout(strip);
    m_lineRow->setContentsMargins(10, 4, 8, 4);
    m_lineRow->setSpacing(8);
    m_lineRow->addWidget(new IconLabel(QStringLiteral("list-add"), IconRole::placeholder, 16, strip));
    auto* field = new QLineEdit(strip);
    look::setKind(field, "quiet");
    field->setPlaceholderText(placeholder);
    field->setAccessibleName(placeholder);
    m_lineRow->addWidget(field, 1);
    m_column->addWidget(strip);
    connect(field, &QLineEdit::returnPressed, this, [this, field] { Q_EMIT lineTyped(field->text()); });
    return field;
}

void CardFrame::addBesideLineField(QWidget* widget)
{
    m_lineRow->addWidget(widget);
}

DropArea::DropArea(const QString& iconName, const QString& title, const QString& hint, QWidget* parent)
    : QFrame(parent)
    , m_title(new Label(title, LabelSize::strong))
{
    look::setKind(this, "drop");
    setAcceptDrops(true);
    setFixedHeight(132);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(6);
    column->addStretch();
    column->addWidget(new IconLabel(iconName, IconRole::secondary, 22), 0, Qt::AlignHCenter);
    column->addWidget(m_title, 0, Qt::AlignHCenter);
    column->addWidget(new Label(hint, LabelSize::small, LabelTone::secondary), 0, Qt::AlignHCenter);
    column->addStretch();
}

void DropArea::setTitle(const QString& title)
{
    m_title->setText(title);
}

void DropArea::dragEnterEvent(QDragEnterEvent* event)
{
    if (localFiles(event->mimeData()).isEmpty())
        return;
    event->acceptProposedAction();
    look::set(this, "inviting", "true");
}

void DropArea::dragLeaveEvent(QDragLeaveEvent*)
{
    look::set(this, "inviting", "false");
}

void DropArea::dropEvent(QDropEvent* event)
{
    look::set(this, "inviting", "false");
    event->acceptProposedAction();
    Q_EMIT filesDropped(localFiles(event->mimeData()));
}
