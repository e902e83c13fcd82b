#include "ui/kit/Sheet.h"

#include "ui/kit/Look.h"
#include "ui/kit/SheetStack.h"
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int sheetMargin = 24;
constexpr int cardRadius = 12;

/// A soft shadow from rounded rectangles laid over each other: a wide faint one below the card and a narrow one around it.
void paintShadow(QPainter* painter, const QRectF& card, Shade shade)
{
    const auto lay = [&](int reach, int step, int drop, int strength) {
        painter->setBrush(QColor(0, 0, 0, strength));
        for (int out = reach; out > 0; out -= step)
            painter->drawRoundedRect(card.adjusted(-out, drop - out, out, drop + out), cardRadius + out, cardRadius + out);
    };
    const bool dark = shade == Shade::dark;
    painter->setPen(Qt::NoPen);
    lay(30, 2, 14, dark ? 6 : 2);
    lay(4, 1, 2, dark ? 12 : 6);
}

} // namespace

Sheet::Sheet(QWidget* host, Blocks blocks)
    : QWidget(host ? host->window() : nullptr)
    , m_host(host ? host->window() : nullptr)
    , m_blocks(blocks)
    , m_card(new QFrame(this))
    , m_column(new QVBoxLayout(m_card))
{
    m_card->setObjectName(QStringLiteral("card"));
    m_column->setContentsMargins(sheetMargin, sheetMargin, sheetMargin, 20);
    m_column->setSpacing(0);
    look::setKind(m_card, "sheet");
    hide();
}

Sheet::~Sheet()
{
    SheetStack::instance().remove(this);
}

void Sheet::setTitle(const QString& title)
{
    setAccessibleName(title);
    setWindowTitle(title);
}

void Sheet::chooseStand()
{
    m_card->ensurePolished();
    const QSize needed = m_card->sizeHint().expandedTo(m_card->minimumSize()).boundedTo(m_card->maximumSize());
    const bool fits = m_host && m_host->isVisible() && !m_host->isMinimized() && needed.width() <= m_host->width() - 2 * sheetMargin
        && needed.height() <= m_host->height() - 2 * sheetMargin;
    if (fits || (m_host && m_host->isVisible() && m_host->isMinimized()))
        return;
    setParent(m_host, Qt::Dialog);
    setWindowModality(m_blocks == Blocks::theProgram || !m_host ? Qt::ApplicationModal : Qt::WindowModal);
    look::setKind(m_card, "windowCard");
    m_host = nullptr;
}

void Sheet::open()
{
    if (m_open)
        return;
    m_open = true;
    chooseStand();
    m_focusBefore = QApplication::focusWidget();
    if (m_host)
        m_host->installEventFilter(this);
    SheetStack::instance().add(this);
    place();
    show();
    raise();
    place();
    takeFocus();
}

int Sheet::exec()
{
    QEventLoop loop;
    int answer = cancelled;
    connect(this, &Sheet::finished, &loop, [&](int given) {
        answer = given;
        loop.quit();
    });
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    connect(qApp, &QCoreApplication::aboutToQuit, &loop, &QEventLoop::quit);
    open();
    loop.exec();
    return answer;
}

void Sheet::finish(int answer)
{
    if (!m_open)
        return;
    m_open = false;
    SheetStack::instance().remove(this);
    if (m_host)
        m_host->removeEventFilter(this);
    hide();
    if (m_focusBefore && m_focusBefore->isVisible())
        m_focusBefore->setFocus(Qt::PopupFocusReason);
    Q_EMIT finished(answer);
}

void Sheet::place()
{
    QSize size = m_card->sizeHint().expandedTo(m_card->minimumSize()).boundedTo(m_card->maximumSize());
    if (m_card->hasHeightForWidth())
        size.setHeight(qBound(m_card->minimumHeight(), m_card->heightForWidth(size.width()), m_card->maximumHeight()));
    if (!m_host) {
        setFixedSize(size);
        m_card->setGeometry(rect());
        return;
    }
    setGeometry(m_host->rect());
    size = size.boundedTo(m_host->size());
    // Above the middle, and never far from the top.
    const int room = height() - size.height();
    const int top = qMin(room * 2 / 5, height() / 5);
    const QRect stand(QPoint((width() - size.width()) / 2, top), size);
    // The card's shadow goes beyond it, and must not stay where the card was.
    if (stand != m_card->geometry())
        update();
    m_card->setGeometry(stand);
}

void Sheet::takeFocus()
{
    QWidget* first = m_firstFocus ? m_firstFocus.data() : neighbour(this, true);
    if (!m_host)
        activateWindow();
    if (first)
        first->setFocus(Qt::TabFocusReason);
    else
        setFocus(Qt::OtherFocusReason);
}

bool Sheet::takesKeyboard(const QWidget* widget) const
{
    const bool tabbed = (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
    return tabbed && m_card->isAncestorOf(widget) && widget->isVisibleTo(this) && widget->isEnabled() && !widget->focusProxy();
}

QWidget* Sheet::neighbour(QWidget* from, bool next) const
{
    QWidget* widget = from;
    do {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        if (takesKeyboard(widget))
            return widget;
    } while (widget != from);
    return nullptr;
}

bool Sheet::focusNextPrevChild(bool next)
{
    QWidget* focus = QApplication::focusWidget();
    QWidget* target = neighbour(focus && isAncestorOf(focus) ? focus : this, next);
    if (target)
        target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool Sheet::event(QEvent* event)
{
    // No shortcut of the window behind may run: every key is a plain key here.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::LayoutRequest && m_open)
        place();
    return QWidget::event(event);
}

bool Sheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_host && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

void Sheet::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    // A key still held down from before must not answer.
    if (event->isAutoRepeat())
        return;
    if (event->key() == Qt::Key_Escape)
        cancel();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        pressDefault();
}

void Sheet::pressDefault()
{
    auto* focused = qobject_cast<QPushButton*>(QApplication::focusWidget());
    QPushButton* button = focused && m_card->isAncestorOf(focused) ? focused : m_default.data();
    if (button)
        button->click();
}

void Sheet::closeEvent(QCloseEvent* event)
{
    if (m_open) {
        event->ignore();
        cancel();
    }
}

void Sheet::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!m_host) {
        painter.fillRect(rect(), themeColour(Colour::surface));
        return;
    }
    painter.fillRect(rect(), themeColour(Colour::scrim));
    painter.setRenderHint(QPainter::Antialiasing);
    paintShadow(&painter, m_card->geometry(), Theme::current().shade());
}
