#include "ui/kit/SearchField.h"

#include "ui/kit/Icons.h"
#include "ui/kit/RowDelegate.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>

SearchField::SearchField(const QString& placeholder, QWidget* parent) : QLineEdit(parent)
{
    setPlaceholderText(placeholder);
    setAccessibleName(placeholder);
    addAction(Icons::get(QStringLiteral("search"), IconRole::placeholder), QLineEdit::LeadingPosition)->setText(tr("Search"));
    m_clear = addAction(Icons::get(QStringLiteral("field-clear"), IconRole::normal), QLineEdit::TrailingPosition);
    m_clear->setText(tr("Clear"));
    m_clear->setVisible(false);
    connect(m_clear, &QAction::triggered, this, &SearchField::empty);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { m_clear->setVisible(!text.isEmpty()); });
}

void SearchField::steer(QAbstractItemView* view)
{
    m_view = view;
    if (auto* delegate = qobject_cast<RowDelegate*>(view->itemDelegate()))
        delegate->setSteeredBy(this);
}

bool SearchField::event(QEvent* event)
{
    // A window that closes with Esc waits until there is nothing left to empty.
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && !text().isEmpty()) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void SearchField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        if (text().isEmpty()) {
            Q_EMIT abandoned();
            event->ignore();
        } else {
            empty();
        }
        return;
    }
    if (!steered(event))
        QLineEdit::keyPressEvent(event);
}

void SearchField::empty()
{
    clear();
    // Emptying it counts as typing.
    Q_EMIT textEdited({});
}

bool SearchField::steered(QKeyEvent* event)
{
    if (!m_view)
        return false;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: QCoreApplication::sendEvent(m_view, event); return true;
    default: return false;
    }
}
