#include "ui/kit/MessageBar.h"

#include "ui/kit/Button.h"
#include "ui/kit/IconLabel.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"

#include <QAccessible>
#include <QHBoxLayout>

namespace {

struct MessageFace {
    const char* look;
    const char* icon;
    IconRole role;
};

MessageFace faceOf(MessageBar::Kind kind)
{
    switch (kind) {
    case MessageBar::Kind::warning: break;
    case MessageBar::Kind::information: return {"information", "data-information", IconRole::accent};
    case MessageBar::Kind::readOnly: return {"banner", "object-locked", IconRole::warningText};
    }
    return {"warning", "data-warning", IconRole::warningText};
}

} // namespace

MessageBar::MessageBar(Kind kind, const QString& text, QWidget* parent) : QFrame(parent), m_row(new QHBoxLayout(this)), m_text(new Label)
{
    const MessageFace face = faceOf(kind);
    const bool banner = kind == Kind::readOnly;
    look::setKind(this, face.look);
    m_row->setContentsMargins(banner ? 20 : 12, banner ? 4 : 8, banner ? 12 : 8, banner ? 4 : 8);
    m_row->setSpacing(10);
    auto* icon = new IconLabel(QString::fromLatin1(face.icon), face.role, 16);
    m_row->addWidget(icon, 0, banner ? Qt::AlignVCenter : Qt::AlignTop);
    m_text->setWordWrap(true);
    m_row->addWidget(m_text, 1);
    if (banner)
        setMinimumHeight(39);
    m_text->setText(text);
    setAccessibleName(text);
    setHidden(text.isEmpty());
}

QString MessageBar::text() const
{
    return m_text->text();
}

void MessageBar::setText(const QString& text)
{
    m_text->setText(text);
    setAccessibleName(text);
    setVisible(!text.isEmpty());
    if (text.isEmpty() || !QAccessible::isActive())
        return;
    QAccessibleEvent told(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

Button* MessageBar::setAction(const QString& title)
{
    if (!m_action) {
        m_action = new TextButton(title);
        m_row->addWidget(m_action, 0, Qt::AlignVCenter);
        connect(m_action, &QPushButton::clicked, this, &MessageBar::actionPressed);
    }
    m_action->setText(title);
    return m_action;
}
