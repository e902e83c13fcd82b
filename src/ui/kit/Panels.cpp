#include "ui/kit/Panels.h"

#include "ui/kit/Hairline.h"
#include "ui/kit/Look.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>

SidePanel::SidePanel(Width width, QWidget* parent) : QWidget(parent), m_column(new QVBoxLayout)
{
    look::setKind(this, "surface");
    setAttribute(Qt::WA_StyledBackground);
    setFixedWidth(int(width) + 1);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(new Hairline(Qt::Vertical));
    // A window too low for all of it scrolls the panel rather than pressing its controls together.
    auto* content = new QWidget;
    look::setKind(content, "plain");
    content->setLayout(m_column);
    auto* scrolled = new QScrollArea;
    scrolled->setWidgetResizable(true);
    scrolled->setFocusPolicy(Qt::NoFocus);
    scrolled->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrolled->setWidget(content);
    content->setAutoFillBackground(false);
    row->addWidget(scrolled);
    const int side = width == Width::checkout ? 28 : 20;
    m_column->setContentsMargins(side, width == Width::checkout ? 18 : 20, side, width == Width::checkout ? 20 : 16);
    m_column->setSpacing(0);
}

void SidePanel::addLine()
{
    m_column->addSpacing(16);
    m_column->addWidget(new Hairline);
    m_column->addSpacing(16);
}

FooterBar::FooterBar(Place place, QWidget* parent)
    : QFrame(parent)
    , m_row(new QHBoxLayout(this))
    , m_note(new Label({}, LabelSize::small, LabelTone::secondary))
{
    look::setKind(this, place == Place::sheet ? "sheetFooter" : "footer");
    m_row->setContentsMargins(24, 12, 24, 12);
    m_row->setSpacing(8);
    m_row->addWidget(m_note);
    m_row->addStretch(1);
}

void FooterBar::setSideMargins(int left, int right)
{
    m_row->setContentsMargins(left, 12, right, 12);
}

void FooterBar::addLeft(QWidget* widget)
{
    m_row->insertWidget(m_row->indexOf(m_note), widget);
}

void FooterBar::addRight(QWidget* widget)
{
    m_row->addWidget(widget);
}

void FooterBar::setNote(const QString& note)
{
    if (note == m_note->text())
        return;
    m_note->setText(note);
    if (note.isEmpty() || !QAccessible::isActive())
        return;
    QAccessibleEvent told(m_note, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

RecordHeader::RecordHeader(const QString& title, const QString& subtitle, QWidget* parent)
    : QWidget(parent)
    , m_title(new ElidedLabel(title, LabelSize::heading))
    , m_subtitle(new ElidedLabel(subtitle, LabelSize::body, LabelTone::secondary))
    , m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(24, 18, 24, 10);
    m_row->setSpacing(8);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(m_title);
    words->addWidget(m_subtitle);
    m_row->addLayout(words, 1);
}

void RecordHeader::setTitle(const QString& title)
{
    m_title->setText(title);
}

void RecordHeader::setSubtitle(const QString& subtitle)
{
    m_subtitle->setText(subtitle);
}

void RecordHeader::addButton(QWidget* button)
{
    m_row->addWidget(button);
}

GroupHeader::GroupHeader(const QString& title, QWidget* parent)
    : QWidget(parent)
    , m_title(new Label(title, LabelSize::group))
    , m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(8);
    m_row->addWidget(m_title);
    m_row->addStretch(1);
}

void GroupHeader::setTitle(const QString& title)
{
    m_title->setText(title);
}

void GroupHeader::addButton(QWidget* button)
{
    m_row->addWidget(button);
}
