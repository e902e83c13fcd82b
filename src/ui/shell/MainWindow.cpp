#include "ui/shell/MainWindow.h"

#include "app/Vendaro.h"
#include "ui/FirstResponder.h"
#include "ui/HelpTopic.h"
#include "ui/WindowMemory.h"
#include "ui/contacts/ContactsPage.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Label.h"
#include "ui/kit/Literal.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/RecordTree.h"
#include "ui/kit/SideBar.h"
#include "ui/shell/ListPage.h"
#include "ui/shell/MainToolBar.h"
#include "ui/shell/MenuLetters.h"
#include "ui/shell/RecoveryWindow.h"
#include "ui/shell/Sheets.h"
#include "ui/shell/WelcomeView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTime>
#include <QVBoxLayout>

namespace {

/// Pages of the side bar, in its order.
constexpr std::array shownPages {Page::contacts, Page::orders, Page::items};

/// -1 for a page that is not there yet.
int placeOf(Page page)
{
    const auto found = std::find(shownPages.begin(), shownPages.end(), page);
    return found == shownPages.end() ? -1 : static_cast<int>(found - shownPages.begin());
}

ListPageTexts orderTexts(const PrefsForm& words)
{
    const QString orders = words.termOrders.text();
    return {"orders", orders, MainWindow::tr("Search %1 and contacts").arg(withinSentence(orders)), "view-list-text",
        MainWindow::tr("No %1 yet").arg(withinSentence(orders)),
        MainWindow::tr("Make your first one with New %1.").arg(words.termOrder.text())};
}

ListPageTexts itemTexts(const PrefsForm& words)
{
    const QString items = words.termItems.text();
    return {"items", items, MainWindow::tr("Search %1").arg(withinSentence(items)), "tag",
        MainWindow::tr("No %1 yet").arg(withinSentence(items)),
        MainWindow::tr("Make your first one with New %1.").arg(words.termItem.text())};
}

QString countLine(int shown, int all, const QString& one, const QString& many)
{
    if (all == 0)
        return MainWindow::tr("No %1").arg(many);
    const QString word = all == 1 ? one : many;
    return shown == all ? QString("%1 %2").arg(all).arg(word) : MainWindow::tr("%1 of %2 %3").arg(shown).arg(all).arg(word);
}

} // namespace

MainWindow::MainWindow(Vendaro& vendaro, Lists lists) : m_vendaro(vendaro)
{
    setObjectName("MainWindow");
    helpTopic::set(*this, "orders");
    resize(1400, 900);
    setMinimumSize(960, 560);
    makeCommands();
    makeMenus();
    makeToolBar();
    makePages();
    makeStatusBar();
    connectVendaro();
    WindowMemory::restore(*this, "MainWindow");
    m_sideBar->setPage(placeOf(Page::orders));
    if (lists == Lists::now) {
        makeLists();
        showPage(Page::orders);
    } else {
        showTerms();
        m_pages->setCurrentWidget(m_blank);
        m_counts->setText(tr("Opening the database…"));
    }
}

MainWindow::~MainWindow()
{
    // However the program ends, it comes by here.
    WindowMemory::remember(*this, "MainWindow");
    // It may be reading an earlier state, and what it reads with goes after this.
    delete m_recovery;
}

void MainWindow::makePages()
{
    // Everything is made where it belongs: what moves to another parent is styled once more, with all it holds.
    auto* central = new QWidget(this);
    setCentralWidget(central);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_readOnlyBar = new MessageBar(MessageBar::Kind::readOnly);
    m_readOnlyBar->setAction(tr("Unlock…"));
    m_readOnlyBar->setText({});
    m_damageBar = new MessageBar(MessageBar::Kind::warning);
    m_damageBar->setAction(tr("Recovery…"));
    m_damageBar->setText({});
    column->addWidget(m_readOnlyBar);
    column->addWidget(m_damageBar);

    auto* row = new QHBoxLayout;
    column->addLayout(row, 1);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    m_sideBar = new SideBar(tr("Pages"));
    m_sideBar->addPage("view-pim-contacts", tr("Contacts"));
    m_sideBar->addPage("view-list-text", tr("Orders"));
    m_sideBar->addPage("tag", tr("Items"));
    row->addWidget(m_sideBar);
    row->addWidget(new Hairline(Qt::Vertical));

    m_pages = new QStackedWidget(central);
    m_blank = new QWidget(m_pages);
    m_pages->addWidget(m_blank);
    row->addWidget(m_pages, 1);
    connect(m_sideBar, &SideBar::pageChosen, this, [this](int index) { showPage(shownPages[static_cast<std::size_t>(index)]); });
}

void MainWindow::makeLists()
{
    m_contactsPage = new ContactsPage(m_vendaro.getContactManager(), m_pages);
    const PrefsForm& words = m_vendaro.getPrefsController().form;
    m_ordersPage = new ListPage(m_vendaro.getOrderManager(), m_vendaro.getOrderManager().listForm, orderTexts(words), m_pages);
    m_itemsPage = new ListPage(m_vendaro.getItemManager(), m_vendaro.getItemManager().listForm, itemTexts(words), m_pages);
    m_contactsPage->setMaking(command("newContact"));
    m_ordersPage->setMaking(command("newOrder"));
    m_itemsPage->setMaking(command("newItem"));
    m_welcome = new WelcomeView;
    helpTopic::set(*m_contactsPage, "contacts");
    helpTopic::set(*m_ordersPage, "orders");
    helpTopic::set(*m_itemsPage, "items");
    helpTopic::set(*m_welcome, "welcome");
    // In the side bar's order, before what stands in for them.
    int place = 0;
    for (QWidget* page : std::initializer_list<QWidget*> {m_contactsPage, m_ordersPage, m_itemsPage, m_welcome})
        m_pages->insertWidget(place++, page);
    for (QAbstractItemView* view : lists()) {
        view->setContextMenuPolicy(Qt::ActionsContextMenu);
        view->addActions({command("edit"), command("delete")});
    }
    connectLists();
    showTerms();
}

std::array<QAbstractItemView*, 3> MainWindow::lists() const
{
    return {m_contactsPage->tree(), m_ordersPage->table(), m_itemsPage->table()};
}

void MainWindow::makeStatusBar()
{
    m_counts = new Label({}, LabelSize::small, LabelTone::secondary);
    m_saved = new Label({}, LabelSize::small, LabelTone::secondary);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_counts, 1);
    statusBar()->addPermanentWidget(m_saved);
}

void MainWindow::showPage(Page page)
{
    const int index = placeOf(page);
    if (index < 0)
        return;
    m_sideBar->setPage(index);
    m_vendaro.setFrontPage(page);
    m_pages->setCurrentIndex(page == Page::orders && m_vendaro.splashShown() ? m_pages->indexOf(m_welcome) : index);
    // Menus, bars and sheets of the window are about its page unless they say otherwise.
    helpTopic::set(*this, helpTopic::of(m_pages->currentWidget()));
    if (m_pages->currentWidget() == m_ordersPage)
        m_ordersPage->takeKeyboard();
    else if (m_pages->currentWidget() == m_itemsPage)
        m_itemsPage->takeKeyboard();
    else if (m_pages->currentWidget() == m_contactsPage)
        m_contactsPage->takeKeyboard();
    else
        m_welcome->focusFirst();
    showCounts();
}

void MainWindow::showRead()
{
    if (m_pages->currentWidget() == m_blank)
        showPage(page());
    showCounts();
}

Page MainWindow::page() const
{
    return shownPages[static_cast<std::size_t>(m_sideBar->page())];
}

void MainWindow::showSplash(bool)
{
    if (page() == Page::orders)
        showPage(Page::orders);
}

void MainWindow::connectVendaro()
{
    DatabaseSession& session = m_vendaro.session();
    connect(&session, &DatabaseSession::titleChanged, this, [this] { setWindowTitle(m_vendaro.session().windowTitle()); });
    connect(&session, &DatabaseSession::readOnlyChanged, this, &MainWindow::showReadOnly);
    connect(&session, &DatabaseSession::locked, this, &MainWindow::showLockSheet, Qt::QueuedConnection);
    connect(&session, &DatabaseSession::databaseRead, this, &MainWindow::showRead);
    connect(&session, &DatabaseSession::savedStateChanged, this, &MainWindow::showSaved);
    connect(
        &session, &DatabaseSession::damageFound, this, [this](const QStringList& sentences) { m_damageBar->setText(sentences.join(' ')); });
    connect(m_damageBar, &MessageBar::actionPressed, this, &MainWindow::showRecovery);
    connect(m_readOnlyBar, &MessageBar::actionPressed, this, [this] { m_vendaro.session().unlockDatabase(); });
    connect(&m_vendaro, &Vendaro::splashChanged, this, &MainWindow::showSplash);
    connect(&m_vendaro, &Vendaro::pageWanted, this, [this](Page page) {
        showPage(page);
        raise();
        activateWindow();
    });
    connect(&m_vendaro, &Vendaro::statusWanted, this, [this](const QString& line) { m_counts->setText(line); });
    connect(&m_vendaro, &Vendaro::quitWanted, this, &MainWindow::quitWanted);
    connect(&m_vendaro.updates(), &UpdateWindowController::automaticChanged, this, &MainWindow::showAutomaticUpdates);
    connect(&m_vendaro, &Vendaro::dateFormatWanted, this, &MainWindow::chooseDateFormat);
    connect(&m_vendaro.getPrefsController(), &PrefsController::wordsChanged, this, &MainWindow::showTerms);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { followFocus(now); });
}

void MainWindow::connectLists()
{
    for (const QAbstractItemView* view : lists()) {
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainWindow::showCounts);
        connect(view->model(), &QAbstractItemModel::modelReset, this, &MainWindow::showCounts);
    }
    connect(m_welcome, &WelcomeView::newOrder, this, [this] { m_vendaro.getOrderManager().create(); });
    connect(m_welcome, &WelcomeView::newContact, this, [this] { m_vendaro.getContactManager().create(); });
    connect(m_welcome, &WelcomeView::newItem, this, [this] { m_vendaro.getItemManager().create(); });
    connect(m_welcome, &WelcomeView::sampleBusiness, this, [this] { m_vendaro.openSampleBusiness(); });
}

void MainWindow::showRecovery()
{
    if (!m_recovery) {
        m_recovery = new RecoveryWindow(m_vendaro);
        addPrintKey(m_recovery, m_vendaro);
    }
    m_recovery->show();
    m_recovery->raise();
    m_recovery->activateWindow();
}

void MainWindow::followFocus(QWidget* now)
{
    // The buttons of the tool bar work on the list that had the keyboard before.
    if (!now || !m_ordersPage || now->window() != this || m_toolBar->isAncestorOf(now))
        return;
    // While a page has nothing to list, a button stands in for its list.
    const auto isList = [now](const QWidget* page) { return page->isAncestorOf(now) && !qobject_cast<QLineEdit*>(now); };
    if (isList(m_ordersPage) || isList(m_welcome))
        m_vendaro.setFocusedList(&m_vendaro.getOrderManager());
    else if (isList(m_contactsPage))
        m_vendaro.setFocusedList(&m_vendaro.getContactManager());
    else if (isList(m_itemsPage))
        m_vendaro.setFocusedList(&m_vendaro.getItemManager());
    else
        m_vendaro.setFocusedList(nullptr);
}

void MainWindow::showTerms()
{
    const PrefsForm& words = m_vendaro.getPrefsController().form;
    m_sideBar->setPageTitle(1, words.termOrders.text());
    m_sideBar->setPageTitle(2, words.termItems.text());
    if (m_ordersPage) {
        m_ordersPage->setTexts(orderTexts(words));
        m_itemsPage->setTexts(itemTexts(words));
        m_welcome->setWords(words.termOrder.text(), words.termItem.text());
    }
    command("newOrder")->setText(tr("New %1").arg(literal(words.termOrder.text())));
    command("newItem")->setText(tr("New %1").arg(literal(words.termItem.text())));
    command("showOrders")->setText(literal(words.termOrders.text()));
    command("showItems")->setText(literal(words.termItems.text()));
    // The words of the person have other letters.
    for (const QAction* menu : menuBar()->actions())
        menuLetters::give(*menu->menu());
}

void MainWindow::showReadOnly()
{
    const LockInfo& lock = m_vendaro.session().lockInfo();
    const QString user = toQString(lock.user);
    const QString by = user.isEmpty() ? QString() : tr(" It is open by %1 since %2.").arg(user, toQString(lock.datetime));
    m_readOnlyBar->setText(m_vendaro.session().isReadOnly() ? tr("This database is open for reading only.") + by : QString());
}

qvDataSource& MainWindow::shownList() const
{
    switch (page()) {
    case Page::contacts: return m_vendaro.getContactManager();
    case Page::items: return m_vendaro.getItemManager();
    default: return m_vendaro.getOrderManager();
    }
}

bool MainWindow::somethingSelected()
{
    const qvDataSource* list = m_vendaro.focusedList();
    const bool selected = list && !list->selectedRecords().empty();
    if (!selected)
        m_counts->setText(tr("Nothing is selected. Choose a row of the list first."));
    return selected;
}

void MainWindow::showCounts()
{
    const qvDataSource& list = shownList();
    QString one;
    QString many;
    const PrefsForm& words = m_vendaro.getPrefsController().form;
    switch (page()) {
    case Page::contacts:
        one = tr("contact");
        many = tr("contacts");
        break;
    case Page::items:
        one = withinSentence(words.termItem.text());
        many = withinSentence(words.termItems.text());
        break;
    default: one = withinSentence(words.termOrder.text()); many = withinSentence(words.termOrders.text());
    }
    QString line = countLine(list.numberOfRows(), list.getCount(), one, many);
    if (const std::size_t selected = list.selectedRecords().size(); selected > 0)
        line += tr(", %1 selected").arg(selected);
    m_counts->setText(line);
}

void MainWindow::showSaved()
{
    const QString reason = m_vendaro.unsavedReason();
    // What still waits is told of when it is written, too.
    if (reason.isEmpty() && m_vendaro.folder().isWriting())
        return;
    m_saved->setTone(reason.isEmpty() ? LabelTone::secondary : LabelTone::error);
    m_saved->setText(reason.isEmpty() ? tr("Saved %1").arg(QTime::currentTime().toString("HH:mm")) : tr("Not saved: %1").arg(reason));
}

void MainWindow::chooseDateFormat()
{
    auto* sheet = new DateFormatSheet(this);
    connect(sheet, &Sheet::finished, this, [this, sheet](int answer) {
        if (answer == Sheet::accepted)
            m_vendaro.chooseDateFormat(sheet->monthFirst() ? PrefsForm::monthFirst : PrefsForm::dayFirst);
        sheet->deleteLater();
    });
    sheet->open();
}

void MainWindow::showLockSheet()
{
    auto* sheet = new LockSheet(m_vendaro.session().lockInfo(), this);
    DatabaseSession& session = m_vendaro.session();
    connect(sheet, &LockSheet::unlockWanted, this, [this] { m_vendaro.session().unlockDatabase(); });
    // By other ways, too: it says nothing true any more.
    connect(&session, &DatabaseSession::unlocked, sheet, &Sheet::cancel);
    connect(&session, &DatabaseSession::aboutToSwitch, sheet, &Sheet::cancel);
    connect(sheet, &Sheet::finished, sheet, &QObject::deleteLater);
    sheet->open();
}

void MainWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::ActivationChange)
        m_vendaro.setMainWindowIsKey(isActiveWindow());
    QMainWindow::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    Q_EMIT quitWanted();
}
