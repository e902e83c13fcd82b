#include "ui/orders/LineEntryStrip.h"

#include "orders/LineEntry.h"
#include "orders/OrderForm.h"
#include "ui/kit/Button.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/Label.h"
#include "ui/kit/PickList.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace {

constexpr int listWidth = 460;
/// The list's frame and the room inside it, above and below its rows.
constexpr int listFrame = 12;

Button* stripButton(const char* name, const QString& title, const QString& hint)
{
    auto* button = new Button(title);
    button->setObjectName(QString::fromLatin1(name));
    button->setSize(Button::Size::narrow);
    button->setToolTip(hint);
    return button;
}

bool isReturn(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

Qt::KeyboardModifiers modifiersOf(const QKeyEvent& key)
{
    return key.modifiers() & ~Qt::KeypadModifier;
}

} // namespace

LineEntryStrip::LineEntryStrip(OrderForm& form, LineEntry& entry, CardFrame* card, QWidget* page)
    : QObject(card)
    , m_form(form)
    , m_entry(entry)
    , m_field(card->addLineField(tr("Add a line: type or scan a code or a name, then Return")))
{
    m_field->setObjectName("lineEntry");
    m_field->setAccessibleName(tr("New line"));
    m_field->installEventFilter(this);
    addNote(card);
    addButtons(card);
    addList(page);
    card->installEventFilter(this);
    form.follow({&form.lineMatches}, this, [this] { place(); });
}

void LineEntryStrip::addNote(CardFrame* card)
{
    auto* note = new ElidedLabel({}, LabelSize::small, LabelTone::error);
    card->addBesideLineField(note);
    m_form.follow({&m_form.lineEntry}, note, [note, this] {
        note->setText(m_form.lineEntry.fault());
        note->setVisible(!m_form.lineEntry.fault().isEmpty());
    });
}

void LineEntryStrip::addButtons(CardFrame* card)
{
    card->addBesideLineField(
        stripButton("addLine", tr("Add"), tr("The item of that code or name, or the one chosen in the list (Return)")));
    card->addBesideLineField(stripButton("addFreeLine", tr("Add as Text"), tr("A line that is from no item (Ctrl+Return)")));
}

void LineEntryStrip::addList(QWidget* page)
{
    m_list = new PickList(tr("Items that match"), page);
    m_list->setObjectName("lineMatches");
    // The keyboard stays in the field.
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The row under the pointer is chosen first.
    connect(
        m_list, &QListWidget::itemClicked, this, [this] { m_form.addLine.trigger(); }, Qt::QueuedConnection);
}

void LineEntryStrip::place()
{
    const QPoint corner = m_field->mapTo(m_list->parentWidget(), QPoint());
    const int rows = static_cast<int>(m_form.lineMatches.titles().size());
    const int height = std::clamp(rows * PickList::rowHeight + listFrame, 0, std::max(0, corner.y() - listFrame));
    const int width = std::min(listWidth, m_list->parentWidget()->width() - corner.x());
    m_list->setGeometry(corner.x(), corner.y() - height - listFrame / 2, width, height);
    m_list->raise();
}

bool LineEntryStrip::isOurs(const QKeyEvent& key) const
{
    const bool typed = !m_form.lineEntry.text().isEmpty();
    if (isReturn(key))
        return modifiersOf(key) == Qt::NoModifier || (modifiersOf(key) == Qt::ControlModifier && typed);
    if (modifiersOf(key) != Qt::NoModifier)
        return false;
    if (key.key() == Qt::Key_Escape)
        return typed || m_form.lineMatches.isVisible();
    return (key.key() == Qt::Key_Up || key.key() == Qt::Key_Down) && !m_form.lineMatches.titles().isEmpty();
}

bool LineEntryStrip::press(const QKeyEvent& key)
{
    if (!isOurs(key))
        return false;
    if (isReturn(key)) {
        if (!key.isAutoRepeat())
            (modifiersOf(key) == Qt::ControlModifier ? m_form.addFreeLine : m_form.addLine).trigger();
    } else if (key.key() == Qt::Key_Escape) {
        m_entry.leave();
    } else {
        m_entry.step(key.key() == Qt::Key_Down ? 1 : -1);
    }
    return true;
}

bool LineEntryStrip::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_field) {
        if (event->type() == QEvent::Resize)
            QMetaObject::invokeMethod(this, &LineEntryStrip::place, Qt::QueuedConnection);
        return false;
    }
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // The window's own Esc and Ctrl+Return wait until there is nothing left here.
        if (!isOurs(*static_cast<QKeyEvent*>(event)))
            return false;
        event->accept();
        return true;
    case QEvent::KeyPress: return press(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn: m_entry.setTyping(true); return false;
    case QEvent::FocusOut: m_entry.setTyping(false); return false;
    default: return false;
    }
}
