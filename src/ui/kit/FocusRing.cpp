#include "ui/kit/FocusRing.h"

#include "ui/kit/Theme.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextEdit>

namespace {

constexpr const char* ownerProperty = "focusRingOwner";
constexpr const char* exemptProperty = "focusRingExempt";
constexpr int indicatorSize = 16;
/// From here on a control has the corners of a big button.
constexpr int bigControl = 40;
constexpr int cardControl = 60;

QWidget* ringTarget(QWidget* focus)
{
    if (auto* owner = focus->property(ownerProperty).value<QWidget*>())
        return owner;
    // The line inside an editable list or a spin box is only a part of it.
    QWidget* parent = focus->parentWidget();
    if (qobject_cast<QComboBox*>(parent) || qobject_cast<QAbstractSpinBox*>(parent))
        return parent;
    return focus;
}

bool hasIndicator(const QWidget* widget)
{
    return qobject_cast<const QCheckBox*>(widget) || qobject_cast<const QRadioButton*>(widget);
}

} // namespace

/// Keeps the one ring where the focus is. The ring is a child of the window it shows in, so it is made anew when that window went away.
class FocusFollower : public QObject {
    Q_OBJECT
public:
    explicit FocusFollower(QApplication& application) : QObject(&application)
    {
        connect(&application, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow(now); });
    }

private:
    void follow(QWidget* focus)
    {
        if (!focus || !FocusRing::isWantedFor(focus)) {
            if (m_ring)
                m_ring->follow(nullptr);
            return;
        }
        if (!m_ring)
            m_ring = new FocusRing(focus->window());
        m_ring->follow(focus);
    }

    QPointer<FocusRing> m_ring;
};

void FocusRing::install(QApplication& application)
{
    if (!application.findChild<FocusFollower*>())
        new FocusFollower(application);
}

void FocusRing::surround(QWidget* part, QWidget* owner)
{
    part->setProperty(ownerProperty, QVariant::fromValue(owner));
}

void FocusRing::exempt(QWidget* widget)
{
    widget->setProperty(exemptProperty, true);
}

bool FocusRing::isWantedFor(const QWidget* widget)
{
    if (widget->property(exemptProperty).toBool())
        return false;
    return widget->property(ownerProperty).isValid() || qobject_cast<const QLineEdit*>(widget)
        || qobject_cast<const QPlainTextEdit*>(widget) || qobject_cast<const QTextEdit*>(widget)
        || qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QComboBox*>(widget)
        || qobject_cast<const QAbstractSpinBox*>(widget);
}

FocusRing::FocusRing(QWidget* window) : QWidget(window)
{
    setObjectName(QStringLiteral("focusRing"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void FocusRing::follow(QWidget* focus)
{
    unwatch();
    m_target = focus ? ringTarget(focus) : nullptr;
    if (!m_target) {
        hide();
        return;
    }
    if (parentWidget() != m_target->window())
        setParent(m_target->window());
    watch(m_target);
    place();
}

void FocusRing::watch(QWidget* target)
{
    for (QWidget* widget = target; widget && widget != parentWidget(); widget = widget->parentWidget()) {
        widget->installEventFilter(this);
        m_watched << widget;
        if (widget->isWindow())
            break;
    }
}

void FocusRing::unwatch()
{
    for (const QPointer<QWidget>& widget : m_watched) {
        if (widget)
            widget->removeEventFilter(this);
    }
    m_watched.clear();
}

bool FocusRing::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::EnabledChange:
    case QEvent::ZOrderChange: place(); break;
    default: break;
    }
    return false;
}

QRect FocusRing::controlRect() const
{
    const QPoint corner = m_target->mapTo(parentWidget(), QPoint(0, 0));
    if (hasIndicator(m_target))
        return {corner + QPoint(0, (m_target->height() - indicatorSize) / 2), QSize(indicatorSize, indicatorSize)};
    return {corner, m_target->size()};
}

int FocusRing::controlRadius() const
{
    if (qobject_cast<QRadioButton*>(m_target))
        return indicatorSize / 2;
    if (hasIndicator(m_target))
        return 4;
    if (!qobject_cast<QAbstractButton*>(m_target) && !qobject_cast<QLineEdit*>(m_target))
        return 6;
    return m_target->height() >= cardControl ? 10 : m_target->height() >= bigControl ? 8 : 6;
}

/// What the scroll areas around the control leave of it, in the ring's own coordinates.
QRegion FocusRing::visiblePart() const
{
    QRect part = geometry();
    for (QWidget* widget = m_target->parentWidget(); widget && widget != parentWidget(); widget = widget->parentWidget()) {
        const auto* area = qobject_cast<QAbstractScrollArea*>(widget->parentWidget());
        if (area && area->viewport() == widget)
            part &= QRect(widget->mapTo(parentWidget(), QPoint(0, 0)), widget->size());
    }
    return part.translated(-pos());
}

void FocusRing::place()
{
    if (!m_target || !m_target->isVisibleTo(parentWidget()) || !m_target->isEnabled()) {
        hide();
        return;
    }
    setGeometry(controlRect().adjusted(-width, -width, width, width));
    const QRegion part = visiblePart();
    if (part.isEmpty()) {
        hide();
        return;
    }
    setMask(part);
    show();
    raise();
}

void FocusRing::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(themeColour(Colour::focusRing), width));
    const qreal half = width / 2.0;
    const qreal radius = controlRadius() + half;
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius, radius);
}

#include "FocusRing.moc"
