// The main window: menus, tool bar, pages, welcome view and status bar.
#pragma once

#include <QMainWindow>
#include <QPointer>

#include <array>

class ContactsPage;
class Label;
class ListPage;
class MainToolBar;
class MessageBar;
class QAbstractItemView;
class RecoveryWindow;
class QStackedWidget;
class SideBar;
class Vendaro;
class WelcomeView;
class qvDataSource;
enum class Page;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// When the pages get their lists; a window without them is painted sooner. Until they are there it is blank and says that the
    /// database is being opened, since there is nothing to say yet about what it lists.
    enum class Lists { now, later };
    explicit MainWindow(Vendaro& vendaro, Lists lists = Lists::now);
    ~MainWindow() override;

    void showPage(Page page);
    Page page() const;
    /// The lists that were left for later. The page stays blank until a database is read.
    void makeLists();

Q_SIGNALS:
    /// The person wants to leave.
    void quitWanted();
    /// A page of the manual; the topic of what has the keyboard.
    void helpWanted(const QString& topic);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void makeCommands();
    void makeRecordCommands();
    void makeTypingCommands();
    void makeViewCommands();
    void makeExportCommands();
    void makeDatabaseCommands();
    void makeHelpCommands();
    void makeMenus();
    void makeToolBar();
    void makePages();
    void makeStatusBar();
    QAction* addCommand(const char* name, const QString& text, const QString& icon, const QKeySequence& keys, std::function<void()> run);
    QAction* command(const char* name) const;
    void addLookMenu(QMenu& menu);
    void showAutomaticUpdates();
    /// The lists of the pages, in the side bar's order.
    std::array<QAbstractItemView*, 3> lists() const;
    /// The list of the page, also while the welcome view stands in for it.
    qvDataSource& shownList() const;
    /// Whether the list with the keyboard has selected rows; if not, the status line says what is missing.
    bool somethingSelected();
    void connectVendaro();
    void connectLists();
    void followFocus(QWidget* now);
    void showTerms();
    void showReadOnly();
    void showRead();
    void showCounts();
    void showSaved();
    void showSplash(bool shown);
    void chooseDateFormat();
    void showLockSheet();
    void showRecovery();
    /// Items go to their website, with a card that says how far it is and can stop it.
    void exportToWebsite();

    Vendaro& m_vendaro;
    SideBar* m_sideBar = nullptr;
    QStackedWidget* m_pages = nullptr;
    QWidget* m_blank = nullptr;
    ContactsPage* m_contactsPage = nullptr;
    ListPage* m_ordersPage = nullptr;
    ListPage* m_itemsPage = nullptr;
    WelcomeView* m_welcome = nullptr;
    MainToolBar* m_toolBar = nullptr;
    MessageBar* m_readOnlyBar = nullptr;
    MessageBar* m_damageBar = nullptr;
    Label* m_counts = nullptr;
    Label* m_saved = nullptr;
    QPointer<RecoveryWindow> m_recovery;
    QHash<QString, QAction*> m_commands;
};
