// The application without its windows: makes every collection and controller, connects them, starts up, shuts down, and routes the
// main window's commands.
#pragma once

#include "app/DatabaseSession.h"
#include "app/KeptList.h"
#include "app/ListExport.h"
#include "app/Manual.h"
#include "app/PrefsController.h"
#include "app/Restoring.h"
#include "app/Tips.h"
#include "app/UpdateWindowController.h"
#include "contacts/ContactManager.h"
#include "contacts/DateFormatGate.h"
#include "contacts/JoinedBook.h"
#include "contacts/OrderLinks.h"
#include "contacts/VcardBook.h"
#include "documents/CustomInvoiceController.h"
#include "documents/Notepad.h"
#include "foundation/Money.h"
#include "inventory/BOMManager.h"
#include "inventory/ItemManager.h"
#include "inventory/ItemPictures.h"
#include "orders/BillManager.h"
#include "orders/ContactOrders.h"
#include "orders/OrderFile.h"
#include "orders/OrderManager.h"
#include "orders/PaymentManager.h"
#include "storage/FileSettingsStore.h"
#include "storage/FolderProperties.h"
#include "storage/RecoveryStore.h"
#include "storage/qvPicker.h"
#include "tasks/TaskFiles.h"

#include <QObject>

#include <functional>
#include <memory>

class QTextDocument;

/// The desktop as the application needs it, and where its own files lie.
struct VendaroDesktop {
    Alerts& alerts;
    Beeper& beeper;
    const Clock& clock;
    const User& user;
    FilePanels& panels;
    Opener& opener;
    Printing& printing;
    Clipboard& clipboard;
    /// The folder with templates and the sample business.
    QString resources;
    /// For money; empty means as the environment says.
    std::string locale;
    /// Of the program.
    QString version = QStringLiteral(VENDARO_VERSION);
    /// The one that the desktop's programs share; none when it has none.
    const AddressBook* addressBook = nullptr;
    /// Where nobody looks on, none is needed.
    LongWork* longWork = nullptr;
};

/// The pages of the main window, in their order.
enum class Page { contacts, orders, items, tasks, accounts, reports };

/// What printing puts on paper: a list as it is shown, or a text. Nothing when neither is there.
struct FrontView {
    QString title;
    const qvDataSource* list = nullptr;
    std::shared_ptr<const QTextDocument> text;
};

class Vendaro : public QObject,
                private SortSettings,
                private DateFormatGate,
                private OrderLinks,
                private OrderLookup,
                private LineTarget,
                private Shell,
                private Stationery {
    Q_OBJECT
public:
    explicit Vendaro(VendaroDesktop desktop);
    ~Vendaro() override;

    /// Before the main window is shown: settings, stationery.
    void start();
    /// Once the program has launched: reads the database.
    void finishLaunching();
    /// Commits the settings, writes everything, removes the lock. Nothing may be used afterwards but the destructor.
    void quit();
    /// What quitting does once everything is closed.
    void writeForGood();
    /// Writes the settings when they changed; answers whether all of them are on disk.
    bool keepSettings();
    /// Tries again what could not be written, records and what belongs to the database beside them.
    void retry();
    /// Writes records, settings and the notepad; answers why something is not saved, empty when all is.
    QString saveEverything();
    /// Empty when all is saved, else why something is not, be it records, settings or the notepad.
    QString unsavedReason() const;

    ContactManager& getContactManager() { return m_contacts; }
    OrderManager& getOrderManager() { return m_orders; }
    ItemManager& getItemManager() { return m_items; }
    BOMManager& getBOMManager() { return m_lines; }
    PaymentManager& getPaymentManager() { return m_payments; }
    /// The orders of the contact in that editor, which is one of the three for contacts.
    ContactOrders& ordersIn(const Form& contactEditor);
    BillManager& getBillManager() { return m_bills; }
    ActionManager& getActionManager() { return m_tasks; }
    GoalManager& getGoalManager() { return m_goals; }
    Tips& tips() { return m_tips; }
    UpdateWindowController& updates() { return m_updates; }
    Manual& manual() { return m_manual; }
    Printing& printing() { return m_desktop.printing; }
    PrefsController& getPrefsController() { return m_preferences; }
    qvPicker& getPicker() { return m_picker; }
    DatabaseSession& session() { return m_session; }
    DatabaseFolder& folder() { return m_folder; }
    RecoveryStore& recovery() { return m_recovery; }
    Notepad& notepad() { return m_notepad; }
    /// Whether an editor is open: it holds on to its record and may hold what was typed and is not saved.
    bool isEditing();
    /// A list over the earlier states of the open database.
    std::unique_ptr<Restoring> makeRestoring();
    /// A list over the recovery store.
    std::unique_ptr<KeptList> makeKeptList();
    FileSettingsStore& settingsStore() { return m_settings; }

    // Look-ups across collections
    Contact* getContactbyId(int id) const { return m_contacts.getContactbyId(id); }
    Item* getProductbyId(int id) const { return m_items.getItemById(id); }
    std::string getContactNameforId(int id) const;
    std::string getContactIdForName(std::string_view name) const;
    int getContactIdForOrder(int orderId) const;

    // Commands
    /// The list that had the keyboard in the main window last; none when no list had.
    void setFocusedList(qvDataSource* list) { m_focused = list; }
    /// The same; none while another window has the keyboard.
    qvDataSource* focusedList() const;
    void deleteMenuItem();
    void editMenuItem();
    void undoMenuItem();
    /// What the main window shows, and whether it is the window with the keyboard: it tells both.
    void setFrontPage(Page page) { m_frontPage = page; }
    void setMainWindowIsKey(bool isKey) { m_mainWindowIsKey = isKey; }
    /// The list that the main window shows; none while another window has the keyboard.
    qvDataSource* determineFrontDataSource();
    // Write the list in front into a file the person chooses
    void exportCSVMenuItem();
    void exportTDLMenuItem();
    void exportHTMLMenuItem();
    /// What has the keyboard in another window than the main one is asked for through this.
    void setFirstResponder(std::function<FrontView()> firstResponder) { m_firstResponder = std::move(firstResponder); }
    /// The list that the main window shows, or what has the keyboard in the window that has it instead.
    FrontView determineFrontView();
    /// Puts the front view on paper.
    void printMenuItem();
    /// Says which version this is and which database is open.
    void about();
    /// The manual's page about menus and keys, in the browser.
    void help() { m_manual.menu(); }
    /// A copy of the sample business in the user's own folder, opened.
    void openSampleBusiness();
    void chooseDateFormat(PrefsForm::DateFormatChoice choice);

    /// The names of the user's templates.
    QStringList stationeryNames() const { return m_stationery.names(); }
    /// Their folder in the desktop's file browser.
    void showStationeryFolder();

    /// The welcome view shows while there is no order.
    bool splashShown() const { return m_splash; }
    /// Where stationery, temporary PDFs and databases lie.
    QString supportFolder() const;

Q_SIGNALS:
    void splashChanged(bool shown);
    void pageWanted(Page page);
    void statusWanted(const QString& line);
    void dateFormatWanted();
    /// The program is to end.
    void quitWanted();
    /// A document was made and is to be shown. Whoever shows it deletes it with its window; a switch or quitting deletes it before.
    void documentOpened(CustomInvoiceController* document);

private:
    // What the collections ask for
    std::string codeSort() const override;
    bool isChosen() const override;
    void initialiseDateFormat() override;
    void connectContactToOrderId(Contact& contact, int orderId) override;
    std::string orderNumber(int orderId) const override;
    std::string orderDate(int orderId) const override;
    std::string orderType(int orderId) const override;
    const Contact* contactOfOrder(int orderId) const override;
    int contactIdOfOrder(int orderId) const override;
    bool currentItemIsPurchaseOrder() const override;
    void linesChanged() override;
    void addItemToCurrentOrder(Item& item) override;
    void hideSplash() override;
    void bringOrdersToFront() override;
    void showStatus(const QString& line) override;
    void editContactForOrder(Contact& contact, Order& order) override;
    void createContactForOrder(Order& order) override;
    QStringList installStationary() override;
    void openDocument(const QString& templateName, Order& order) override;

    ContactManagerNeeds contactNeeds();
    std::optional<std::vector<Person>> readAddressBook();
    void followContacts();
    void showOrdersIn(const Form& editor, const Contact* contact);
    void registerFiles();
    void afterLoading(RecordFile* file);
    void afterReading();
    void askAboutUpgrading();
    std::vector<Form*> editors();
    void closeEverything();
    void populateLists();
    Result<void> copySample();
    void showWords();
    void exportFrontList(ExportForm form);
    void print(const QString& title, const std::function<bool(QPagedPaintDevice&)>& paint);
    QString frontListName() const;
    void takeOverSampleSettings();
    QString sampleFolder() const;
    CustomInvoiceNeeds documentNeeds();
    UpdateNeeds updateNeeds();
    bool attachPdf(const QString& path, const Order& order);

    VendaroDesktop m_desktop;
    RecoveryStore m_recovery;
    FileSettingsStore m_settings;
    FolderProperties m_properties;
    MoneyFormatter m_money;
    DatabaseFolder m_folder;
    OrderRules m_orderRules;
    ItemPictures m_pictures;
    ItemRules m_itemRules;
    LineRules m_lineRules;
    Notepad m_notepad;
    PrefsController m_preferences;
    DatabaseSession m_session;
    qvPicker m_picker;
    VcardBook m_vcards;
    /// The desktop's people, then those of the files.
    JoinedBook m_addressBook;
    ContactManager m_contacts;
    ItemManager m_items;
    BOMManager m_lines;
    PaymentManager m_payments;
    BillManager m_bills;
    Attachments m_attachments;
    OrderManager m_orders;
    ContactOrders m_ordersOfIndividual;
    ContactOrders m_ordersOfCompany;
    ContactOrders m_ordersOfCompanyContact;
    ActionManager m_tasks;
    GoalManager m_goals;
    ContactFile m_contactFile;
    OrderFile m_orderFile;
    ItemFile m_itemFile;
    MaterialFile m_lineFile;
    BillFile m_billFile;
    ActionFile m_taskFile;
    GoalFile m_goalFile;
    StationeryFolder m_stationery;
    PageSetup m_pageSetup;
    Tips m_tips;
    UpdateWindowController m_updates;
    Manual m_manual;
    const Contact m_noContact;
    qvDataSource* m_focused = nullptr;
    std::function<FrontView()> m_firstResponder;
    Page m_frontPage = Page::orders;
    bool m_mainWindowIsKey = false;
    bool m_splash = false;
};
