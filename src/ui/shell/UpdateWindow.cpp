#include "ui/shell/UpdateWindow.h"

#include "app/UpdateWindowController.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/HideWhileEmpty.h"
#include "ui/WindowMemory.h"
#include "ui/kit/Button.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"
#include "ui/kit/Panels.h"

#include <QAction>
#include <QCloseEvent>
#include <QProgressBar>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

constexpr char frameName[] = "UpdateWindow";
/// The bar counts in steps, since a large download has more bytes than it can count.
constexpr int barSteps = 1'000;

Label* boundLabel(const FormField& field, LabelSize size, LabelTone tone)
{
    auto* label = new Label({}, size, tone);
    label->setObjectName(field.name());
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

UpdateWindow::UpdateWindow(UpdateWindowController& updates) : m_updates(updates), m_notes(new QTextBrowser), m_bar(new QProgressBar)
{
    UpdateForm& form = updates.form;
    setObjectName(frameName);
    setWindowTitle(form.title());
    helpTopic::set(*this, "updates");
    resize(560, 480);
    setMinimumSize(420, 320);

    m_notes->setObjectName("notes");
    look::setKind(m_notes, "notes");
    m_notes->setAccessibleName(tr("What is new"));
    m_notes->setOpenLinks(false);
    connect(m_notes, &QTextBrowser::anchorClicked, &updates, &UpdateWindowController::openLink);
    m_bar->setObjectName("bar");
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(tr("Download"));
    auto* released = boundLabel(form.releaseDate, LabelSize::small, LabelTone::secondary);
    auto* progress = boundLabel(form.progress, LabelSize::body, LabelTone::secondary);
    auto* trouble = boundLabel(form.trouble, LabelSize::body, LabelTone::error);

    auto* content = new QVBoxLayout;
    content->setContentsMargins(24, 24, 24, 16);
    content->setSpacing(8);
    content->addWidget(new Label(tr("There is an update"), LabelSize::group));
    content->addWidget(boundLabel(form.versions, LabelSize::body, LabelTone::normal));
    content->addWidget(released);
    content->addSpacing(4);
    content->addWidget(m_notes, 1);
    content->addSpacing(4);
    content->addWidget(m_bar);
    content->addWidget(progress);
    content->addWidget(trouble);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(content, 1);
    column->addWidget(makeFoot());
    new FormBinder(form, this);
    hideWhileEmpty(form, form.releaseDate, released);
    hideWhileEmpty(form, form.progress, progress);
    hideWhileEmpty(form, form.trouble, trouble);
    WindowMemory::restore(*this, frameName);

    connect(&form, &Form::closed, this, &QWidget::hide);
    connect(&updates, &UpdateWindowController::notesChanged, this, &UpdateWindow::showNotes);
    connect(&updates, &UpdateWindowController::progressed, this, &UpdateWindow::showProgress);
    connect(&updates, &UpdateWindowController::loadingChanged, this, &UpdateWindow::showLoading);
    showNotes();
    showLoading();
    m_notes->setFocus();
}

UpdateWindow::~UpdateWindow()
{
    WindowMemory::remember(*this, frameName);
    // The notes are the controller's, and may go before their view.
    m_notes->setDocument(nullptr);
}

QWidget* UpdateWindow::makeFoot()
{
    auto* later = new Button;
    later->setObjectName(m_updates.form.cancel.name());
    auto* get = new PrimaryButton;
    get->setObjectName(m_updates.form.getUpdate.name());
    auto* foot = new FooterBar;
    foot->addLeft(new Label(tr("Vendaro saves, opens the update and quits."), LabelSize::small, LabelTone::secondary));
    foot->addRight(later);
    foot->addRight(get);

    auto* closeWindow = new QAction(tr("Close"), this);
    closeWindow->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)});
    connect(closeWindow, &QAction::triggered, this, &QWidget::close);
    addAction(closeWindow);
    return foot;
}

void UpdateWindow::showNotes()
{
    if (m_updates.notes()) {
        m_updates.notes()->setDefaultFont(m_notes->font());
        m_notes->setDocument(m_updates.notes());
        return;
    }
    m_notes->setDocument(nullptr);
    m_notes->setPlainText(tr("What is new in this version could not be read."));
}

void UpdateWindow::showProgress(qint64 received, qint64 total)
{
    m_bar->setRange(0, total > 0 ? barSteps : 0);
    m_bar->setValue(total > 0 ? static_cast<int>(barSteps * received / total) : 0);
}

void UpdateWindow::showLoading()
{
    m_bar->setVisible(m_updates.isLoading());
    showProgress(0, 0);
}

void UpdateWindow::showOver(const QWidget& window)
{
    if (!isVisible())
        move(window.frameGeometry().center() - rect().center());
    show();
    raise();
    activateWindow();
}

void UpdateWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    m_updates.form.close();
}
