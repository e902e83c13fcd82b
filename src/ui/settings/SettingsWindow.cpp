#include "ui/settings/SettingsWindow.h"

#include "app/Vendaro.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/WindowMemory.h"
#include "ui/kit/Button.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Panels.h"
#include "ui/kit/SideBar.h"
#include "ui/settings/Pages.h"
#include "ui/settings/SettingsPage.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QStackedWidget>

namespace {

constexpr char pageState[] = "settings page";

bool isReturn(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

SettingsWindow::SettingsWindow(Vendaro& vendaro)
    : EditorWindow(vendaro.getPrefsController().form, vendaro.getPrefsController().form.leave, "SettingsWindow")
    , m_preferences(vendaro.getPrefsController())
    , m_pages(new SideBar(tr("Pages")))
    , m_stack(new QStackedWidget)
{
    resize(880, 680);
    setMinimumSize(720, 400);
    // The list of pages has the keyboard more often than what stands on them.
    connect(m_stack, &QStackedWidget::currentChanged, this, [this] { helpTopic::set(*this, helpTopic::of(m_stack->currentWidget())); });
    // In the order in which Tab goes.
    addPages(vendaro);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(m_pages);
    row->addWidget(new Hairline(Qt::Vertical));
    row->addWidget(m_stack, 1);
    column->addLayout(row, 1);
    column->addWidget(makeFooter());
    connect(m_pages, &SideBar::pageChosen, m_stack, &QStackedWidget::setCurrentIndex);
    for (const auto& [key, steps] : {std::pair(Qt::Key_PageDown, 1), std::pair(Qt::Key_PageUp, -1)}) {
        const auto* turns = new QShortcut(QKeySequence(Qt::CTRL | key), this);
        connect(turns, &QShortcut::activated, this, [this, by = steps] { turnPage(by); });
    }

    FormBinder& binder = bindForm();
    const PrefsForm& form = m_preferences.form;
    for (const FormField* captioned : std::initializer_list<const FormField*> {&form.dateFormat, &form.pricesTaxInclusive})
        binder.bindCaption(captioned->name(), findChild<QWidget*>(settingsCaptionName(*captioned)));
    connect(
        &m_preferences.form, &Form::closed, this, [this] { WindowMemory::rememberState(pageState, QByteArray::number(m_pages->page())); });
    beginWhereItEnded();
}

void SettingsWindow::addPages(Vendaro& vendaro)
{
    addPage("configure", "settings-general", settingsPages::makeGeneral(m_preferences));
    addPage("taxes-finances", "settings-tax", settingsPages::makeTax(m_preferences));
    addPage("format-text-bold", "settings-words", settingsPages::makeWords(m_preferences));
    addPage("view-list-text", "settings-lists", settingsPages::makeLists(m_preferences));
    addPage("fill-color", "settings-colours", settingsPages::makeColours(m_preferences));
    addPage("object-columns", "settings-columns", settingsPages::makeColumns(m_preferences));
    addPage("chronometer", "settings-time", settingsPages::makeTime(m_preferences));
    addPage("document-print", "settings-documents", settingsPages::makeDocuments(vendaro));
    addPage("view-pim-contacts", "settings-addressbook", settingsPages::makeAddressBook(m_preferences));
    addPage("folder-database", "settings-databases", settingsPages::makeDatabases(vendaro));
    addPage("view-preview", "settings-look", settingsPages::makeLook(m_preferences));
}

void SettingsWindow::addPage(const char* icon, const char* topic, SettingsPage* page)
{
    helpTopic::set(*page, topic);
    m_pages->addPage(QString::fromLatin1(icon), page->title());
    m_stack->addWidget(page);
}

QWidget* SettingsWindow::makeFooter()
{
    auto* footer = new FooterBar;
    auto* ok = new PrimaryButton(tr("OK"));
    ok->setObjectName(m_preferences.form.ok.name());
    // Return is a new line where lists are typed.
    const auto* commits = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(commits, &QShortcut::activated, ok, &QAbstractButton::click);
    footer->addRight(ok);
    return footer;
}

void SettingsWindow::turnPage(int steps)
{
    const int page = m_pages->page() + steps;
    if (page < 0 || page >= m_stack->count())
        return;
    m_pages->setPage(page);
    m_stack->setCurrentIndex(page);
    m_pages->setFocus(Qt::ShortcutFocusReason);
}

void SettingsWindow::beginWhereItEnded()
{
    const int page = WindowMemory::state(pageState).toInt();
    if (page > 0 && page < m_stack->count()) {
        m_pages->setPage(page);
        m_stack->setCurrentIndex(page);
    }
    m_pages->setFocus();
}

void SettingsWindow::keyPressEvent(QKeyEvent* event)
{
    if (isReturn(*event) && !event->isAutoRepeat())
        findChild<Button*>(m_preferences.form.ok.name())->click();
    else
        EditorWindow::keyPressEvent(event);
}
