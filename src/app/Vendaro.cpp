#include "app/Vendaro.h"

#include "app/Places.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "documents/ListPages.h"
#include "documents/TemplateUpgrade.h"
#include "documents/TextPages.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/plist/PlistReader.h"

#include <QFileInfo>

#include <algorithm>

namespace {

constexpr char settingsPath[] = "~/Library/Preferences/Vendaro.plist";

QString below(const User& user, const char* path)
{
    return folders::expandHome(path, user.home());
}

} // namespace

Vendaro::Vendaro(VendaroDesktop desktop)
    : m_desktop(std::move(desktop))
    , m_recovery(below(m_desktop.user, places::support) + "/Recovery", m_desktop.clock)
    , m_settings(below(m_desktop.user, settingsPath), m_recovery)
    , m_properties(m_recovery)
    , m_money(money::localeFor(m_desktop.locale))
    , m_folder(m_recovery, m_desktop.clock, m_desktop.user)
    , m_orderRules {m_settings, m_money}
    , m_pictures([this] { return m_session.originalDbLocation(); }, m_recovery)
    , m_itemRules {m_settings, m_money, &m_pictures}
    , m_lineRules {m_money, *this, m_items}
    , m_notepad(below(m_desktop.user, places::defaultDatabase), m_recovery,
          [this] { return m_session.mayWriteInto(below(m_desktop.user, places::defaultDatabase)); })
    , m_preferences({m_settings, m_properties, m_desktop.alerts, m_desktop.panels, m_desktop.user, *this, m_desktop.beeper, m_money,
          m_orders, m_lines, [this] { m_session.switchDatabase(); },
          [this](const QString& folder) { return m_session.mayWriteInto(folder); }, m_notepad})
    , m_session({m_folder, m_preferences, m_settings, m_desktop.alerts, m_desktop.panels, m_desktop.user})
    , m_picker(*this, m_desktop.beeper, m_desktop.alerts)
    , m_vcards([this] { return m_preferences.addressBookPaths(); })
    , m_addressBook({m_desktop.addressBook, &m_vcards})
    , m_contacts(contactNeeds())
    , m_items({*this, m_preferences, m_itemRules, m_session, m_desktop.alerts, m_desktop.beeper, m_contacts, m_picker, *this,
          m_desktop.user, m_desktop.panels, [this](const QString& line) { showStatus(line); }})
    , m_lines(
          {*this, m_settings, m_preferences, m_lineRules, m_session, m_desktop.alerts, m_desktop.beeper, m_desktop.clock, m_items, *this})
    , m_payments(*this, m_desktop.beeper, m_settings)
    , m_bills(*this, m_desktop.beeper, m_settings)
    , m_attachments([this] { return m_session.originalDbLocation(); },
          [this](const QString& path) { return m_recovery.moveIn(path, KeptFor::attachments); })
    , m_orders(
          {*this, m_settings, m_preferences, m_orderRules, m_session, m_desktop.alerts, m_desktop.beeper, m_desktop.clock, m_desktop.panels,
              m_desktop.opener, m_contacts, m_items, m_lines, m_payments, m_bills, *this, *this, *this, m_attachments, m_picker})
    , m_ordersOfIndividual(*this, m_desktop.beeper, m_orders)
    , m_ordersOfCompany(*this, m_desktop.beeper, m_orders)
    , m_ordersOfCompanyContact(*this, m_desktop.beeper, m_orders)
    , m_tasks(*this, m_desktop.beeper)
    , m_goals(*this, m_desktop.beeper)
    , m_contactFile(m_contacts)
    , m_orderFile(m_orders, m_payments, m_orderRules)
    , m_itemFile(m_items)
    , m_lineFile(m_lines)
    , m_billFile(m_bills)
    , m_taskFile(m_tasks)
    , m_goalFile(m_goals, m_tasks)
    , m_stationery(below(m_desktop.user, places::support), m_desktop.resources)
    , m_tips(m_settings, m_preferences.form, m_desktop.resources)
    , m_updates(updateNeeds())
    , m_manual(m_desktop.opener, m_desktop.resources)
{
    m_pageSetup.paper = usualPaper(QString::fromStdString(m_desktop.locale));
    registerFiles();
    followContacts();
    m_properties.onTrouble = [this](const QString& sentence) {
        m_session.tellDamage({sentence});
        if (!m_properties.unsavedReason().isEmpty())
            Q_EMIT m_session.savedStateChanged();
    };
    connect(&m_session, &DatabaseSession::fileLoaded, this, &Vendaro::afterLoading);
    connect(&m_session, &DatabaseSession::openedForWriting, &m_preferences, &PrefsController::completeDatabaseProperties);
    connect(&m_session, &DatabaseSession::openedForWriting, this, &Vendaro::askAboutUpgrading);
    connect(&m_session, &DatabaseSession::databaseRead, this, &Vendaro::afterReading);
    connect(&m_session, &DatabaseSession::aboutToSwitch, this, &Vendaro::closeEverything);
    connect(&m_notepad, &Notepad::savedStateChanged, &m_session, &DatabaseSession::savedStateChanged);
    connect(&m_session, &DatabaseSession::aboutToSwitch, this, [this] {
        // The database it lies in may be somebody else's later.
        if (m_notepad.isChanged())
            m_notepad.save();
    });
    connect(&m_session, &DatabaseSession::readOnlyChanged, &m_notepad, &Notepad::catchUp);
    connect(&m_session, &DatabaseSession::databaseRead, &m_notepad, &Notepad::catchUp);
    connect(&m_preferences, &PrefsController::listsChanged, this, &Vendaro::populateLists);
    connect(&m_preferences, &PrefsController::wordsChanged, this, &Vendaro::showWords);
    connect(&m_preferences, &PrefsController::databaseRenamed, &m_session, &DatabaseSession::titleChanged);
    connect(&m_preferences, &PrefsController::statusColourChanged, this, [this] { m_orders.reloadData(); });
    connect(&m_preferences, &PrefsController::completeStatusChanged, this, [this] { m_orders.filter(); });
}

Vendaro::~Vendaro()
{
    // What is still being written is read from the record files, which go before the folder does.
    m_folder.drain();
}

ContactManagerNeeds Vendaro::contactNeeds()
{
    const ContactCommandNeeds commands {
        m_desktop.clipboard, m_desktop.opener, m_desktop.beeper, [this] { return readAddressBook(); }, m_picker, *this};
    return {*this, m_preferences, m_session, m_desktop.alerts, m_desktop.beeper, *this, *this, m_desktop.panels, commands,
        [this](const QString& line) { showStatus(line); }};
}

std::optional<std::vector<Person>> Vendaro::readAddressBook()
{
    AddressBookPeople book;
    UnseenWork unseen;
    LongWork& work = m_desktop.longWork ? *m_desktop.longWork : unseen;
    work.run(localText("Reading the Address Book"), [&](const GoesOn& goesOn) { book = m_addressBook.people(goesOn); });
    if (book.wasStopped)
        return std::nullopt;
    if (!book.troubles.isEmpty())
        m_session.tellDamage(book.troubles);
    return std::move(book.people);
}

void Vendaro::followContacts()
{
    const auto follow = [this](const Form& editor, auto currentItem) {
        connect(&editor, &Form::opened, this, [this, &editor, currentItem] { showOrdersIn(editor, currentItem()); });
        connect(&editor, &Form::closed, this, [this, &editor] { showOrdersIn(editor, nullptr); });
    };
    follow(m_contacts.form, [this] { return m_contacts.currentItem(); });
    follow(m_contacts.companyEditor.form, [this] { return m_contacts.companyEditor.currentItem(); });
    follow(m_contacts.companyContactEditor.form, [this] { return m_contacts.companyContactEditor.currentItem(); });
}

ContactOrders& Vendaro::ordersIn(const Form& contactEditor)
{
    if (&contactEditor == &m_contacts.companyEditor.form)
        return m_ordersOfCompany;
    return &contactEditor == &m_contacts.companyContactEditor.form ? m_ordersOfCompanyContact : m_ordersOfIndividual;
}

/// A contact that is not saved yet has no orders; its id may still stand in those of one that was deleted.
void Vendaro::showOrdersIn(const Form& editor, const Contact* contact)
{
    if (contact && contact->isListed())
        ordersIn(editor).showOrdersOf(contact->getID());
    else
        ordersIn(editor).showNone();
}

void Vendaro::registerFiles()
{
    m_session.registerFile(m_contactFile, m_contacts);
    m_session.registerFile(m_orderFile, m_orders);
    m_session.registerFile(m_itemFile, m_items);
    m_session.registerFile(m_lineFile, m_lines, {&m_orders});
    m_session.registerFile(m_billFile, m_bills);
    m_session.registerFile(m_taskFile, m_tasks);
    m_session.registerFile(m_goalFile, m_goals);
    m_session.registerCollection(m_payments);
    m_session.filterAfterSwitch(m_bills);
    m_session.filterAfterSwitch(m_payments);
}

// Start and end

void Vendaro::start()
{
    m_preferences.readDefaults();
    m_orders.installStationary();
}

void Vendaro::finishLaunching()
{
    logLine("application loaded");
    // The settings were read before anybody could hear of them.
    m_session.tellAgain();
    m_session.readDatabase();
    m_session.tellDamage(m_settings.takeDamage());
    const QStringList note = m_recovery.takeNote();
    m_recovery.cleanUp(note);
    m_session.tellDamage(note);
    if (!m_notepad.damage().isEmpty())
        m_session.tellDamage({m_notepad.damage()});
    logLine("Finished reading database");
    m_tips.begin();
    m_updates.begin();
}

void Vendaro::quit()
{
    m_updates.stop();
    closeEverything();
    writeForGood();
}

void Vendaro::writeForGood()
{
    m_preferences.OKButton();
    QStringList sentences = m_session.writeEverything();
    m_folder.drain();
    sentences += m_properties.keepUnsaved() + m_notepad.keepUnsaved();
    if (const Result<void> flushed = m_settings.flush(); !flushed)
        sentences += m_settings.keepUnsaved();
    // There is no window any more that could show them.
    m_recovery.leaveNote(m_settings.takeDamage() + sentences);
}

bool Vendaro::keepSettings()
{
    const bool wereUnsaved = !m_settings.unsavedReason().isEmpty();
    const bool kept = m_settings.flush().ok();
    if (wereUnsaved || !kept)
        Q_EMIT m_session.savedStateChanged();
    return kept;
}

void Vendaro::retry()
{
    m_session.retry();
    if (m_properties.unsavedReason().isEmpty())
        return;
    m_properties.retry([this](const QString& folder) { return m_session.mayWriteInto(folder); });
    Q_EMIT m_session.savedStateChanged();
}

QString Vendaro::saveEverything()
{
    m_session.saveEverything();
    // What was typed in the last seconds is not saved yet.
    if (m_notepad.isChanged())
        m_notepad.save();
    keepSettings();
    return unsavedReason();
}

UpdateNeeds Vendaro::updateNeeds()
{
    return {m_settings, m_preferences.form, m_desktop.alerts, m_desktop.opener, m_desktop.user, m_desktop.version,
        [this](const QString& line) { showStatus(line); },
        // A document that is open may have been written in.
        [this] { return isEditing() || findChild<CustomInvoiceController*>(QString(), Qt::FindDirectChildrenOnly) != nullptr; },
        [this] { return saveEverything(); }, [this] { Q_EMIT quitWanted(); }};
}

QString Vendaro::unsavedReason() const
{
    for (const QString& reason :
        {m_folder.unsavedReason(), m_properties.unsavedReason(), m_settings.unsavedReason(), m_notepad.unsavedReason()}) {
        if (!reason.isEmpty())
            return reason;
    }
    return {};
}

void Vendaro::afterLoading(RecordFile* file)
{
    // Orders name their contacts, so they are linked as soon as both are there, and again when one of them came back.
    if (file == &m_orderFile || file == &m_contactFile)
        m_orders.linkContacts();
    if (file == &m_itemFile)
        populateLists();
}

void Vendaro::afterReading()
{
    m_splash = m_orders.numberOfRows() == 0;
    Q_EMIT splashChanged(m_splash);
}

void Vendaro::askAboutUpgrading()
{
    if (m_settings.flag(settings::askAboutUpgrading) || !m_orderFile.metOlderPayments())
        return;
    const int answer = m_desktop.alerts.ask(alerts::upgradeTemplates);
    // Whoever dismissed the question has not answered it yet.
    if (answer == Alerts::cancelled)
        return;
    if (answer == 0)
        TemplateUpgrade(supportFolder(), m_desktop.resources, m_recovery).run();
    else
        m_manual.upgradetemplates();
    m_settings.set(settings::askAboutUpgrading, PlistValue::makeBoolean(true));
}

std::vector<Form*> Vendaro::editors()
{
    return {&m_orders.form, &m_orders.tender.form, &m_contacts.form, &m_contacts.companyEditor.form, &m_contacts.companyContactEditor.form,
        &m_items.form};
}

bool Vendaro::isEditing()
{
    const std::vector<Form*> forms = editors();
    return std::any_of(forms.begin(), forms.end(), [](const Form* form) { return form->isOpen(); });
}

std::unique_ptr<Restoring> Vendaro::makeRestoring()
{
    return std::make_unique<Restoring>(RestoringNeeds {*this, m_desktop.beeper, m_session, m_folder, [this] { return isEditing(); }});
}

std::unique_ptr<KeptList> Vendaro::makeKeptList()
{
    return std::make_unique<KeptList>(
        KeptListNeeds {*this, m_desktop.beeper, m_recovery, m_desktop.alerts, m_desktop.panels, m_desktop.opener});
}

void Vendaro::closeEverything()
{
    for (Form* form : editors())
        form->close();
    m_picker.form.close();
    qDeleteAll(findChildren<CustomInvoiceController*>(Qt::FindDirectChildrenOnly));
}

void Vendaro::populateLists()
{
    m_orders.populateLists(m_preferences.getStatusList());
    m_contacts.populateLists(m_preferences.getContactTypeList());
    QStringList codes;
    for (const TaxRate& rate : m_preferences.getTaxRates())
        codes += QString::fromStdString(rate.code);
    m_items.populateLists(codes);
}

/// In the titles of the editors that are open.
void Vendaro::showWords()
{
    m_orders.showTitle();
    m_items.showTitle();
}

QString Vendaro::supportFolder() const
{
    return below(m_desktop.user, places::support);
}

// Look-ups

std::string Vendaro::getContactNameforId(int id) const
{
    const Contact* contact = getContactbyId(id);
    return contact ? std::string(contact->getName()) : std::string();
}

std::string Vendaro::getContactIdForName(std::string_view name) const
{
    const Contact* contact = m_contacts.getContactbyName(name);
    return contact ? std::to_string(contact->getID()) : std::string();
}

int Vendaro::getContactIdForOrder(int orderId) const
{
    const Order* order = m_orders.getItemById(orderId);
    if (!order)
        logFormat("can't find contact for order %i", orderId);
    return order ? order->getContactId() : 0;
}

// Documents

QStringList Vendaro::installStationary()
{
    if (const Result<void> installed = m_stationery.install(); !installed)
        logLine(installed.error().message);
    return m_stationery.names();
}

void Vendaro::showStationeryFolder()
{
    // Put back, should somebody have taken it away.
    installStationary();
    m_desktop.opener.revealFolder(supportFolder() + "/stationary");
}

CustomInvoiceNeeds Vendaro::documentNeeds()
{
    return {m_stationery, m_settings, m_pageSetup, m_desktop.alerts, m_desktop.clock, m_desktop.panels, m_desktop.printing,
        supportFolder() + "/temp"};
}

/// The document belongs to its order, also when another one is in the editor by the time it is saved. It goes by the record, not by
/// its number: a deleted order's may be given out again.
bool Vendaro::attachPdf(const QString& path, const Order& order)
{
    if (!m_session.readOnlyCheck())
        return false;
    const Result<void> attached =
        m_orders.holds(order) ? m_orders.fileDropped(path, order) : Error {"The order of this document was deleted."};
    if (attached)
        return true;
    const QString where = fillText(localText("The PDF is %@."), {path});
    m_desktop.alerts.ask({localText("Save PDF"), QString::fromStdString(attached.error().message) + ' ' + where, {localText("OK")}});
    return false;
}

void Vendaro::openDocument(const QString& templateName, Order& order)
{
    auto* document = new CustomInvoiceController(documentNeeds(), this);
    document->setWhichStationary(templateName);
    document->setbomDataSource(&m_lines);
    document->setOrderManager([this, &order](const QString& path) { return attachPdf(path, order); });
    document->setTableTag("<itemsordered>");
    document->setStandInContact(&m_noContact);
    document->setOrder(&order);
    Q_EMIT documentOpened(document);
}

// Commands

qvDataSource* Vendaro::focusedList() const
{
    return m_mainWindowIsKey ? m_focused : nullptr;
}

void Vendaro::deleteMenuItem()
{
    if (qvDataSource* list = focusedList())
        list->deleteKey();
}

void Vendaro::editMenuItem()
{
    if (qvDataSource* list = focusedList())
        list->edit();
}

void Vendaro::undoMenuItem()
{
    if (qvDataSource* list = focusedList())
        list->undo();
    else
        m_desktop.beeper.beep();
}

// Exports and printing

qvDataSource* Vendaro::determineFrontDataSource()
{
    if (!m_mainWindowIsKey)
        return nullptr;
    switch (m_frontPage) {
    case Page::contacts: return &m_contacts;
    case Page::orders: return &m_orders;
    case Page::items: return &m_items;
    case Page::tasks: return &m_tasks;
    default: return nullptr;
    }
}

QString Vendaro::frontListName() const
{
    switch (m_frontPage) {
    case Page::contacts: return localText("Contacts");
    case Page::items: return m_preferences.form.termItems.text();
    case Page::tasks: return localText("Tasks");
    default: return m_preferences.form.termOrders.text();
    }
}

void Vendaro::exportFrontList(ExportForm form)
{
    const qvDataSource* list = determineFrontDataSource();
    if (!list) {
        logLine("qvds is nil");
        return;
    }
    // A user's word may hold what no file name does.
    const QString name = frontListName().replace('/', '-');
    const QString outcome = ListExport(m_desktop.panels).run(*list, form, name);
    if (!outcome.isEmpty())
        showStatus(outcome);
}

void Vendaro::exportCSVMenuItem()
{
    exportFrontList(ExportForm::commaSeparated);
}

void Vendaro::exportTDLMenuItem()
{
    exportFrontList(ExportForm::tabDelimited);
}

void Vendaro::exportHTMLMenuItem()
{
    exportFrontList(ExportForm::html);
}

FrontView Vendaro::determineFrontView()
{
    if (m_mainWindowIsKey)
        return {frontListName(), determineFrontDataSource(), nullptr};
    return m_firstResponder ? m_firstResponder() : FrontView();
}

void Vendaro::printMenuItem()
{
    const FrontView view = determineFrontView();
    if (view.list) {
        print(view.title,
            [&](QPagedPaintDevice& device) { return ListPages(*view.list, view.title, PageSetup().onPaperOf(device)).paint(device); });
    } else if (view.text) {
        print(view.title,
            [&](QPagedPaintDevice& device) { return TextPages(*view.text, view.title, PageSetup().onPaperOf(device)).paint(device); });
    }
}

void Vendaro::print(const QString& title, const std::function<bool(QPagedPaintDevice&)>& paint)
{
    if (!m_desktop.printing.print(title, paint))
        logFormat("%s could not be printed", title.toStdString().c_str());
}

void Vendaro::chooseDateFormat(PrefsForm::DateFormatChoice choice)
{
    m_preferences.chooseDateFormat(choice);
}

QString Vendaro::sampleFolder() const
{
    return supportFolder() + "/Sample.vendb";
}

void Vendaro::about()
{
    m_desktop.alerts.ask({fillText(localText("Vendaro %@"), {m_desktop.version}),
        fillText(localText("The open database lies in %@."), {m_folder.location()}), {localText("OK")}});
}

void Vendaro::openSampleBusiness()
{
    if (!QFileInfo::exists(sampleFolder())) {
        const Result<void> made = folders::make(supportFolder());
        const Result<void> copied = made ? copySample() : made;
        if (!copied) {
            logLine(copied.error().message);
            m_desktop.alerts.ask({localText("Sample business"), QString::fromStdString(copied.error().message), {localText("OK")}});
            return;
        }
    }
    takeOverSampleSettings();
    m_preferences.setDbLocation(sampleFolder());
    m_session.switchDatabase();
}

/// Under another name until it is complete: what is there is never copied again.
Result<void> Vendaro::copySample()
{
    const QString unfinished = sampleFolder() + ".unfinished";
    folders::remove(unfinished);
    if (Result<void> copied = folders::copyTree(m_desktop.resources + "/sample/Sample.vendb", unfinished); !copied)
        return copied;
    return folders::move(unfinished, sampleFolder());
}

void Vendaro::takeOverSampleSettings()
{
    const FileBytes file = readWholeFile((m_desktop.resources + "/sample/Settings.plist").toStdString());
    const Result<PlistValue> sample = plist::read(file.bytes);
    if (!sample)
        return;
    m_preferences.takeOverUnsaved(sample.value());
}
