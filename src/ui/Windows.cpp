#include "ui/Windows.h"

#include "app/Vendaro.h"
#include "ui/FirstResponder.h"
#include "ui/HelpKey.h"
#include "ui/PickerSheet.h"
#include "ui/contacts/ContactEditor.h"
#include "ui/documents/DocumentWindow.h"
#include "ui/inventory/ItemEditor.h"
#include "ui/notepad/NotepadWindow.h"
#include "ui/orders/OrderEditor.h"
#include "ui/orders/TenderSheet.h"
#include "ui/settings/NewDatabaseSheet.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/shell/HelpWindow.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/TipsWindow.h"
#include "ui/shell/UpdateWindow.h"

#include <QApplication>

Windows::Windows(Vendaro& vendaro)
    : m_vendaro(vendaro)
    , m_main(std::make_unique<MainWindow>(vendaro, MainWindow::Lists::later))
    , m_picker(std::make_unique<PickerPresenter>(vendaro.getPicker()))
    , m_helpKey(std::make_unique<HelpKey>([this](const QString& topic) { showHelp(topic); }))
    , m_newDatabase(std::make_unique<NewDatabasePresenter>(vendaro.getPrefsController().newDatabase))
{
    whenFirstOpened(vendaro.getOrderManager().form, [this] { order().catchUp(); });
    whenFirstOpened(vendaro.getItemManager().form, [this] { item().catchUp(); });
    whenFirstOpened(vendaro.getPrefsController().form, [this] { settings().catchUp(); });
    ContactManager& contacts = vendaro.getContactManager();
    makeWhenFirstOpened(m_individual, contacts.form);
    makeWhenFirstOpened(m_company, contacts.companyEditor.form);
    makeWhenFirstOpened(m_companyContact, contacts.companyContactEditor.form);
    connect(&vendaro, &Vendaro::documentOpened, this, [](CustomInvoiceController* document) {
        auto* window = new DocumentWindow(document);
        window->show();
        window->activateWindow();
    });
    vendaro.setFirstResponder(firstResponder);
    connect(&vendaro.getPrefsController(), &PrefsController::dateFormatChanged, this, &Windows::showWords);
    connect(m_main.get(), &MainWindow::helpWanted, this, &Windows::showHelp);
    connect(&vendaro.tips().form, &Form::opened, this, &Windows::showTips);
    connect(&vendaro.notepad(), &Notepad::opened, this, &Windows::showNotepad);
    connect(&vendaro.updates().form, &Form::opened, this, &Windows::showUpdate);
    connect(&vendaro.getPrefsController(), &PrefsController::wordsChanged, this, &Windows::showWords);
}

Windows::~Windows() = default;

template <class Make>
void Windows::whenFirstOpened(const Form& form, Make make)
{
    connect(&form, &Form::opened, this, make, Qt::SingleShotConnection);
}

template <class ContactForm>
void Windows::makeWhenFirstOpened(std::unique_ptr<ContactWindow>& window, ContactForm& form)
{
    whenFirstOpened(form, [this, &window, &form] {
        window = std::make_unique<ContactWindow>(form, m_vendaro.ordersIn(form));
        addPrintKey(window.get(), m_vendaro);
        showWords();
        window->catchUp();
    });
}

OrderEditor& Windows::order()
{
    if (m_order)
        return *m_order;
    m_order = std::make_unique<OrderEditor>(m_vendaro.getOrderManager(), m_vendaro.getBOMManager());
    addPrintKey(m_order.get(), m_vendaro);
    // The sheet belongs to the window it stands on.
    m_tender = new TenderSheet(m_vendaro.getOrderManager().tender.form, m_order.get());
    showWords();
    return *m_order;
}

ItemEditor& Windows::item()
{
    if (m_item)
        return *m_item;
    m_item = std::make_unique<ItemEditor>(m_vendaro.getItemManager());
    addPrintKey(m_item.get(), m_vendaro);
    return *m_item;
}

void Windows::showTips()
{
    if (!m_tips)
        m_tips = std::make_unique<TipsWindow>(m_vendaro.tips().form);
    m_tips->showOver(*m_main);
}

void Windows::showNotepad()
{
    if (!m_notepad) {
        m_notepad = std::make_unique<NotepadWindow>(m_vendaro.notepad());
        addPrintKey(m_notepad.get(), m_vendaro);
    }
    m_notepad->bringToFront();
}

void Windows::showUpdate()
{
    if (!m_update) {
        m_update = std::make_unique<UpdateWindow>(m_vendaro.updates());
        addPrintKey(m_update.get(), m_vendaro);
    }
    m_update->showOver(*m_main);
}

void Windows::showHelp(const QString& topic)
{
    if (QApplication::activeModalWidget()) {
        m_vendaro.manual().open(topic);
        return;
    }
    if (!m_help)
        m_help = std::make_unique<HelpWindow>(m_vendaro.manual(), m_vendaro.printing());
    m_help->showTopic(topic);
}

SettingsWindow& Windows::settings()
{
    if (m_settings)
        return *m_settings;
    m_settings = std::make_unique<SettingsWindow>(m_vendaro);
    addPrintKey(m_settings.get(), m_vendaro);
    return *m_settings;
}

void Windows::showWords()
{
    const PrefsForm& words = m_vendaro.getPrefsController().form;
    for (ContactWindow* window : {m_individual.get(), m_company.get(), m_companyContact.get()}) {
        if (window)
            window->setWords(words.termOrders.text());
    }
    if (!m_order)
        return;
    m_order->setWords(words.termOrder.text(), words.termItems.text(), words.termBOM.text());
    m_order->setDateCaption(words.dateFormat.caption());
    m_tender->setDateCaption(words.dateFormat.caption());
}
