// The main window's commands: each made once, shown in the menus and on the tool bar.
#include "app/Vendaro.h"
#include "ui/contacts/ContactsPage.h"
#include "ui/HelpTopic.h"
#include "ui/LookChoice.h"
#include "ui/RowCopy.h"
#include "ui/kit/Icons.h"
#include "ui/kit/ProgressCard.h"
#include "ui/kit/Theme.h"
#include "ui/shell/ListPage.h"
#include "ui/shell/MainToolBar.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/SortMenu.h"

#include <QAbstractItemView>
#include <QActionGroup>
#include <QApplication>
#include <QMenuBar>

namespace {

/// Has the field or list with the keyboard do what its slot of that name does; false when it has none.
bool passToKeyboard(const char* slot)
{
    QWidget* widget = QApplication::focusWidget();
    const QByteArray signature = QByteArray(slot) + "()";
    return widget && widget->metaObject()->indexOfSlot(signature) >= 0 && QMetaObject::invokeMethod(widget, slot);
}

/// Of the list with the keyboard.
void copySelectedRows()
{
    if (const auto* list = qobject_cast<QAbstractItemView*>(QApplication::focusWidget()))
        copyRows(*list);
}

} // namespace

void MainWindow::exportToWebsite()
{
    ProgressCard card(this, tr("Export"));
    const auto goesOn = [&card](int done, int total) {
        if (done < total && !card.isOpen())
            card.open();
        card.setProgress(done, total);
        card.setText(tr("%1 of %2 items").arg(done).arg(total));
        QCoreApplication::processEvents();
        const bool stopped = card.wasCancelled();
        if (card.isOpen() && (stopped || done == total))
            card.accept();
        return !stopped;
    };
    m_vendaro.getItemManager().exportAsBrevandObjects(goesOn);
}

QAction* MainWindow::addCommand(
    const char* name, const QString& text, const QString& icon, const QKeySequence& keys, std::function<void()> run)
{
    auto* action = new QAction(text, this);
    if (!icon.isEmpty())
        action->setIcon(Icons::get(icon));
    // Lists that show commands paint the icon themselves.
    action->setData(icon);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, std::move(run));
    m_commands.insert(action->objectName(), action);
    return action;
}

QAction* MainWindow::command(const char* name) const
{
    return m_commands.value(QString::fromLatin1(name));
}

void MainWindow::makeCommands()
{
    makeRecordCommands();
    makeTypingCommands();
    makeViewCommands();
    makeExportCommands();
    makeDatabaseCommands();
    makeHelpCommands();
}

void MainWindow::makeRecordCommands()
{
    addCommand(
        "newContact", tr("New Contact"), "list-add-user", QKeySequence("Ctrl+Shift+C"), [this] { m_vendaro.getContactManager().create(); });
    addCommand("newCompany", tr("New Company"), "user-group-new", {}, [this] { m_vendaro.getContactManager().companyEditor.create(); });
    addCommand("newOrder", tr("New Order"), "document-new", QKeySequence::New, [this] { m_vendaro.getOrderManager().create(); });
    addCommand("newPurchaseOrder", tr("New Purchase Order"), {}, {}, [this] { m_vendaro.getOrderManager().createPurchaseOrder(); });
    addCommand("newItem", tr("New Item"), "archive-insert", QKeySequence("Ctrl+Shift+I"), [this] { m_vendaro.getItemManager().create(); });
    addCommand("delete", tr("Delete"), "edit-delete", QKeySequence::Delete, [this] {
        if (somethingSelected())
            m_vendaro.deleteMenuItem();
    });
    addCommand("edit", tr("Edit"), "document-edit", QKeySequence("Ctrl+E"), [this] {
        if (somethingSelected())
            m_vendaro.editMenuItem();
    });
    addCommand(
        "removeAllQtyManagement", tr("&Stop Managing Stock"), {}, {}, [this] { m_vendaro.getItemManager().removeAllQtyManagement(); });
}

void MainWindow::makeTypingCommands()
{
    addCommand("undo", tr("&Undo"), {}, QKeySequence::Undo, [this] {
        // A field being typed in undoes its typing; otherwise the list brings back what was deleted.
        if (!passToKeyboard("undo"))
            m_vendaro.undoMenuItem();
    });
    addCommand("redo", tr("&Redo"), {}, QKeySequence::Redo, [] { passToKeyboard("redo"); });
    addCommand("cut", tr("Cu&t"), {}, QKeySequence::Cut, [] { passToKeyboard("cut"); });
    addCommand("copyText", tr("&Copy"), {}, QKeySequence::Copy, [] {
        if (!passToKeyboard("copy"))
            copySelectedRows();
    });
    addCommand("paste", tr("&Paste"), {}, QKeySequence::Paste, [] { passToKeyboard("paste"); });
    addCommand("selectAll", tr("Select &All"), {}, QKeySequence::SelectAll, [] { passToKeyboard("selectAll"); });
}

void MainWindow::makeViewCommands()
{
    addCommand("find", tr("&Find"), {}, QKeySequence::Find, [this] {
        if (page() == Page::contacts)
            m_contactsPage->search();
        else
            (page() == Page::items ? m_itemsPage : m_ordersPage)->search();
    });
    addCommand("showContacts", tr("&Contacts"), {}, QKeySequence("Ctrl+1"), [this] { showPage(Page::contacts); });
    addCommand("showOrders", tr("&Orders"), {}, QKeySequence("Ctrl+2"), [this] { showPage(Page::orders); });
    addCommand("showItems", tr("&Items"), {}, QKeySequence("Ctrl+3"), [this] { showPage(Page::items); });
    addCommand("notepad", tr("&Notepad"), "view-pim-notes", QKeySequence("Ctrl+Shift+N"), [this] { m_vendaro.notepad().open(); });
    command("notepad")->setIconText(tr("Notepad"));
    addCommand("customiseToolBar", tr("Customise &Tool Bar…"), {}, {}, [this] { m_toolBar->customise(); });
}

void MainWindow::makeExportCommands()
{
    addCommand("print", tr("&Print…"), "document-print", QKeySequence::Print, [this] { m_vendaro.printMenuItem(); });
    addCommand("exportCSV", tr("To Spreadsheet"), "insert-table", QKeySequence("Ctrl+Shift+E"), [this] { m_vendaro.exportCSVMenuItem(); });
    addCommand("exportTDL", tr("To Tab-Delimited Text"), {}, {}, [this] { m_vendaro.exportTDLMenuItem(); });
    addCommand("exportHTML", tr("To HTML"), "document-export", {}, [this] { m_vendaro.exportHTMLMenuItem(); });
    addCommand("exportWebsite", tr("To &Website"), {}, {}, [this] { exportToWebsite(); });
    addCommand("emailList", tr("E-mail &List…"), "mail-message", {}, [this] { m_vendaro.getContactManager().generateEmailList(); });
    addCommand("importAddressBook", tr("&Import From Address Book"), "document-import", {},
        [this] { m_vendaro.getContactManager().importAllContactsFromAB(); });
    addCommand(
        "moveAdd3ToCounty", tr("Move Address Line &3 to County"), {}, {}, [this] { m_vendaro.getContactManager().moveAdd3ToCounty(); });
}

void MainWindow::makeDatabaseCommands()
{
    addCommand("sample", tr("Open &Sample Business"), {}, {}, [this] { m_vendaro.openSampleBusiness(); });
    addCommand(
        "preferences", tr("Preference&s…"), "configure", QKeySequence("Ctrl+,"), [this] { m_vendaro.getPrefsController().openWindow(); });
    // As it stands on the tool bar.
    command("preferences")->setIconText(tr("Preferences"));
    addCommand("newDatabase", tr("New Da&tabase…"), {}, {}, [this] { m_vendaro.getPrefsController().newDatabaseMenuItem(); });
    addCommand("copy", tr("Make &Offline Copy…"), {}, {}, [this] { m_vendaro.session().copyDatabase(); });
    addCommand("unlock", tr("&Unlock Database…"), {}, {}, [this] { m_vendaro.session().unlockDatabase(); });
    addCommand("recovery", tr("&Recovery…"), {}, {}, [this] { showRecovery(); });
    addCommand("quit", tr("&Quit"), {}, QKeySequence::Quit, [this] { Q_EMIT quitWanted(); });
}

void MainWindow::makeHelpCommands()
{
    addCommand("showHelp", tr("&Vendaro Help"), {}, QKeySequence::HelpContents, [this] { Q_EMIT helpWanted(helpTopic::inFront()); });
    addCommand("help", tr("&Menus and Keys in Browser"), "help-contents", {}, [this] { m_vendaro.help(); });
    // As it stands on the tool bar.
    command("help")->setIconText(tr("Help"));
    addCommand("tips", tr("&Tip of the Day"), {}, {}, [this] { m_vendaro.tips().showNext(); });
    addCommand("checkForUpdates", tr("Check for &Updates…"), {}, {}, [this] { m_vendaro.updates().checkForUpdates(); });
    addCommand("automaticUpdates", tr("Check for Updates &Automatically"), {}, {}, [this] { m_vendaro.updates().turnOnAutomaticCheck(); });
    addCommand("about", tr("A&bout Vendaro"), {}, {}, [this] { m_vendaro.about(); });
}

void MainWindow::makeMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    for (const char* name : {"newContact", "newCompany", "newOrder", "newPurchaseOrder", "newItem"})
        file->addAction(command(name));
    file->addSeparator();
    for (const char* name : {"newDatabase", "sample", "copy", "unlock", "recovery"})
        file->addAction(command(name));
    file->addSeparator();
    QMenu* exports = file->addMenu(tr("&Export"));
    for (const char* name : {"exportCSV", "exportTDL", "exportHTML", "exportWebsite", "emailList"})
        exports->addAction(command(name));
    file->addAction(command("importAddressBook"));
    file->addAction(command("print"));
    file->addSeparator();
    file->addAction(command("quit"));
    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    for (const char* name :
        {"undo", "redo", "", "cut", "copyText", "paste", "selectAll", "", "edit", "delete", "", "find", "", "preferences"}) {
        if (*name)
            edit->addAction(command(name));
        else
            edit->addSeparator();
    }
    QMenu* view = menuBar()->addMenu(tr("&View"));
    for (const char* name : {"showContacts", "showOrders", "showItems"})
        view->addAction(command(name));
    view->addAction(command("notepad"));
    view->addSeparator();
    auto* sortMenu = new SortMenu(tr("Sort &By"), view);
    view->addMenu(sortMenu);
    connect(view, &QMenu::aboutToShow, this, [this, sortMenu] { sortMenu->showColumnsOf(shownList()); });
    view->addSeparator();
    view->addAction(command("customiseToolBar"));
    addLookMenu(*view);
    QMenu* agents = menuBar()->addMenu(tr("&Agents"));
    for (const char* name : {"moveAdd3ToCounty", "removeAllQtyManagement"})
        agents->addAction(command(name));
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    for (const char* name : {"showHelp", "help", "tips"})
        help->addAction(command(name));
    help->addSeparator();
    for (const char* name : {"checkForUpdates", "automaticUpdates"})
        help->addAction(command(name));
    help->addSeparator();
    help->addAction(command("about"));
    showAutomaticUpdates();
}

/// What turns the automatic check on is gone while it is on.
void MainWindow::showAutomaticUpdates()
{
    command("automaticUpdates")->setVisible(!m_vendaro.updates().isAutomatic());
}

void MainWindow::addLookMenu(QMenu& menu)
{
    QMenu* look = menu.addMenu(tr("&Look"));
    auto* group = new QActionGroup(look);
    for (const LookChoice& choice : lookChoices()) {
        QAction* action = look->addAction(choice.title);
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [mode = choice.mode] { chooseLook(mode); });
        // It may have been chosen in the settings since.
        connect(look, &QMenu::aboutToShow, action, [action, mode = choice.mode] { action->setChecked(Theme::current().mode() == mode); });
    }
}

void MainWindow::makeToolBar()
{
    command("print")->setIconText(tr("Print"));
    const QHash<QString, QAction*> commands {{"printItemIdentifier", command("print")}, {"deleteItemIdentifier", command("delete")},
        {"editItemIdentifier", command("edit")}, {"contactItemIdentifier", command("newContact")},
        {"companyItemIdentifier", command("newCompany")}, {"orderItemIdentifier", command("newOrder")},
        {"itemItemIdentifier", command("newItem")}, {"padItemIdentifier", command("notepad")},
        {"htmlItemIdentifier", command("exportHTML")}, {"csvItemIdentifier", command("exportCSV")},
        {"prefsItemIdentifier", command("preferences")}, {"helpItemIdentifier", command("help")}};
    m_toolBar = new MainToolBar(tr("Tool bar"), commands, this);
    m_toolBar->setObjectName("vendaroToolBar");
    addToolBar(m_toolBar);
}
