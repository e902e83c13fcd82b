#include "ui/EditorWindow.h"

#include "desktop/Form.h"
#include "ui/FormBinder.h"
#include "ui/WindowMemory.h"
#include "ui/kit/Button.h"
#include "ui/kit/Panels.h"

#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>

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
    : m_form(form)
    , m_cancel(cancel)
    , m_frameName(frameName)
{
    // The same factory given twice counts once.
    QAccessible::installFactory(makeEditorInterface);
    setObjectName(frameName);
    connect(&form, &Form::opened, this, &EditorWindow::present);
    connect(&form, &Form::closed, this, [this] {
        WindowMemory::remember(*this, m_frameName);
        m_edited = false;
        warn({});
        hide();
    });
    connect(&form, &Form::titleChanged, this, [this] { setWindowTitle(m_form.title()); });
    form.mayTakeAnother = [this] { return mayOpenAnother(); };
}

EditorWindow::~EditorWindow()
{
    m_form.mayTakeAnother = {};
}

FormBinder& EditorWindow::bindForm()
{
    if (!m_binder) {
        m_binder = new FormBinder(m_form, this);
        connect(m_binder, &FormBinder::edited, this, [this](const FormField* field) { noteEdit(*field); });
        giveSaveKeys();
    }
    setWindowTitle(m_form.title());
    return *m_binder;
}

void EditorWindow::giveSaveKeys()
{
    auto* save = findChild<Button*>("save");
    if (!save)
        return;
    save->setKeys(QKeySequence::Save);
    const auto* alsoSaves = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(alsoSaves, &QShortcut::activated, save, &QAbstractButton::click);
}

void EditorWindow::present()
{
    if (!isVisible()) {
        WindowMemory::restore(*this, m_frameName);
        if (const FormField* first = m_form.field(m_firstField))
            m_form.focus(*first);
    }
    show();
    raise();
    activateWindow();
}

void EditorWindow::catchUp()
{
    if (m_form.isOpen() && !isVisible())
        present();
}

void EditorWindow::noteEdit(const FormField& field)
{
    if (m_passing.contains(field.name()))
        return;
    m_edited = m_form.isOpen();
    warn({});
}

void EditorWindow::warn(const QString& warning)
{
    m_warned = !warning.isEmpty();
    if (auto* footer = findChild<FooterBar*>())
        footer->setNote(warning);
}

bool EditorWindow::mayLeave(const QString& warning)
{
    if (!hasSomethingToLose() || m_warned)
        return true;
    warn(warning);
    return false;
}

bool EditorWindow::mayOpenAnother()
{
    if (!mayLeave(tr("Not saved yet: opening another drops the changes"))) {
        present();
        return false;
    }
    m_edited = false;
    warn({});
    return true;
}

void EditorWindow::leave(const QString& warning)
{
    if (mayLeave(warning))
        m_cancel.trigger();
}

void EditorWindow::closeEvent(QCloseEvent* event)
{
    // The form decides; it hides the window when it closes.
    event->ignore();
    leave(tr("Not saved yet: closing again drops the changes"));
}

void EditorWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        leave(tr("Esc again closes without saving"));
    else if (event->keyCombination() == QKeyCombination(Qt::CTRL, Qt::Key_W))
        leave(tr("Ctrl+W again closes without saving"));
    else
        QWidget::keyPressEvent(event);
}
