#include "ui/EditorWindow.h"

#include "desktop/Form.h"
#include "ui/FormBinder.h"
#include "ui/WindowMemory.h"

#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QKeyEvent>

namespace {

/// Screen readers take a plain widget for a filler; this one is a window.
QAccessibleInterface* makeEditorInterface(const QString& className, QObject* object)
{
    if (className != QLatin1String(EditorWindow::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window);
}

} // namespace

EditorWindow::EditorWindow(Form& form, CommandField& cancel, const QString& frameName)
    : m_form(form), m_cancel(cancel), m_frameName(frameName)
{
    // The same factory given twice counts once.
    QAccessible::installFactory(makeEditorInterface);
    setObjectName(frameName);
    connect(&form, &Form::opened, this, &EditorWindow::present);
    connect(&form, &Form::closed, this, [this] {
        WindowMemory::remember(*this, m_frameName);
        hide();
    });
    connect(&form, &Form::titleChanged, this, [this] { setWindowTitle(m_form.title()); });
}

FormBinder& EditorWindow::bindForm()
{
    if (!m_binder)
        m_binder = new FormBinder(m_form, this);
    setWindowTitle(m_form.title());
    return *m_binder;
}

void EditorWindow::present()
{
    if (!isVisible())
        WindowMemory::restore(*this, m_frameName);
    show();
    raise();
    activateWindow();
}

void EditorWindow::closeEvent(QCloseEvent* event)
{
    // The form decides; it hides the window when it closes.
    event->ignore();
    m_cancel.trigger();
}

void EditorWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        m_cancel.trigger();
    else
        QWidget::keyPressEvent(event);
}
