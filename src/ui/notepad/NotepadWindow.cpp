#include "ui/notepad/NotepadWindow.h"

#include "documents/Notepad.h"
#include "ui/HelpTopic.h"
#include "ui/WindowMemory.h"
#include "ui/kit/Label.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/SearchField.h"
#include "ui/notepad/FormatBar.h"
#include "ui/notepad/NotepadText.h"

#include <QAction>
#include <QCloseEvent>
#include <QShortcut>
#include <QStatusBar>
#include <QTextDocument>
#include <QVBoxLayout>

namespace {

constexpr char frameName[] = "NotepadWindow";
/// Milliseconds.
constexpr int saveInterval = 2'000;
constexpr int retryInterval = 20'000;

} // namespace

NotepadWindow::NotepadWindow(Notepad& notepad) : m_notepad(notepad), m_text(new NotepadText), m_bar(new FormatBar(m_text, this))
{
    setObjectName(frameName);
    setWindowTitle(tr("Notepad"));
    helpTopic::set(*this, "notepad");
    resize(760, 620);
    setMinimumSize(660, 320);
    addToolBar(m_bar);
    makePage();
    makeStatusBar();
    addKeys();
    WindowMemory::restore(*this, frameName);
    m_saving.setSingleShot(true);
    connect(&m_saving, &QTimer::timeout, this, &NotepadWindow::save);
    connect(&notepad, &Notepad::documentReplaced, this, &NotepadWindow::showDocument);
    connect(&notepad, &Notepad::savedStateChanged, this, [this] {
        m_savedAt = QTime::currentTime();
        showState();
    });
    connect(&notepad, &Notepad::readOnlyChecked, this, &NotepadWindow::showState);
    connect(m_text, &NotepadText::pictureRefused, this,
        [this] { m_note->setText(tr("Only words can be put into the notepad; pictures that it has already stay.")); });
    showDocument();
    m_text->setFocus();
}

NotepadWindow::~NotepadWindow()
{
    // The text says that it changed once more when its colours go.
    m_notepad.document().disconnect(this);
    if (isVisible())
        WindowMemory::remember(*this, frameName);
}

void NotepadWindow::makePage()
{
    auto* page = new QWidget;
    m_readOnlyBar = new MessageBar(MessageBar::Kind::readOnly);
    m_damageBar = new MessageBar(MessageBar::Kind::warning);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_readOnlyBar);
    column->addWidget(m_damageBar);
    column->addWidget(m_text, 1);
    setCentralWidget(page);
}

void NotepadWindow::makeStatusBar()
{
    m_note = new Label({}, LabelSize::small, LabelTone::secondary);
    m_saved = new Label({}, LabelSize::small, LabelTone::secondary);
    m_saved->setObjectName("saved");
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_note, 1);
    statusBar()->addPermanentWidget(m_saved);
}

void NotepadWindow::addKeys()
{
    const auto add = [this](const QList<QKeySequence>& keys, auto run) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, run);
        addAction(action);
    };
    add({QKeySequence(Qt::CTRL | Qt::Key_W)}, [this] { close(); });
    add({QKeySequence::Save}, [this] { save(); });
    add({QKeySequence::Find}, [this] {
        m_bar->searchField()->setFocus();
        m_bar->searchField()->selectAll();
    });
    add({QKeySequence(Qt::Key_F3), QKeySequence(Qt::CTRL | Qt::Key_G)}, [this] { m_bar->findNext(); });
    add({QKeySequence(Qt::SHIFT | Qt::Key_F3), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_G)}, [this] { m_bar->findPrevious(); });
}

void NotepadWindow::bringToFront()
{
    m_notepad.catchUp();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void NotepadWindow::showDocument()
{
    m_text->showDocument(m_notepad.document());
    connect(&m_notepad.document(), &QTextDocument::contentsChanged, this, &NotepadWindow::saveLater);
    showState();
}

void NotepadWindow::saveLater()
{
    m_note->setText({});
    if (m_notepad.isChanged() && !m_saving.isActive())
        m_saving.start(saveInterval);
    showState();
}

void NotepadWindow::save()
{
    m_saving.stop();
    if (m_notepad.isChanged() && !m_notepad.save())
        m_saving.start(retryInterval);
}

void NotepadWindow::showState()
{
    // What was typed before somebody locked the database can still be copied and changed; it is saved once the lock has gone.
    const bool readOnly = m_notepad.isReadOnly() && !m_notepad.isChanged();
    m_text->setReadOnly(readOnly);
    m_bar->setEditable(!readOnly);
    m_readOnlyBar->setText(readOnly ? tr("The notepad is in the default database, which is open for reading only.") : QString());
    m_damageBar->setText(m_notepad.damage());
    const QString reason = m_notepad.unsavedReason();
    m_saved->setTone(reason.isEmpty() ? LabelTone::secondary : LabelTone::error);
    if (!reason.isEmpty())
        m_saved->setText(tr("Not saved: %1").arg(reason));
    else if (m_notepad.isChanged())
        m_saved->setText(tr("Not saved yet"));
    else
        m_saved->setText(m_savedAt.isValid() && !readOnly ? tr("Saved %1").arg(m_savedAt.toString("HH:mm")) : QString());
}

void NotepadWindow::closeEvent(QCloseEvent* event)
{
    save();
    WindowMemory::remember(*this, frameName);
    event->accept();
}

void NotepadWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape)
        QMainWindow::keyPressEvent(event);
    else if (m_bar->searchField()->hasFocus())
        m_text->setFocus();
    else
        close();
}

void NotepadWindow::changeEvent(QEvent* event)
{
    // Somebody may have opened or left the default database meanwhile.
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        m_notepad.catchUp();
    QMainWindow::changeEvent(event);
}
