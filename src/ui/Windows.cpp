#include "ui/Windows.h"

#include "app/Vendaro.h"
#include "ui/PickerSheet.h"
#include "ui/contacts/ContactEditor.h"
#include "ui/documents/DocumentWindow.h"
#include "ui/inventory/ItemEditor.h"
#include "ui/orders/OrderEditor.h"
#include "ui/orders/TenderSheet.h"
#include "ui/shell/MainWindow.h"

Windows::Windows(Vendaro& vendaro)
    : m_vendaro(vendaro)
    , m_main(std::make_unique<MainWindow>(vendaro))
    , m_order(std::make_unique<OrderEditor>(vendaro.getOrderManager(), vendaro.getBOMManager()))
    // The sheet belongs to the window it stands on.
    , m_tender(new TenderSheet(vendaro.getOrderManager().tender.form, m_order.get()))
    , m_item(std::make_unique<ItemEditor>(vendaro.getItemManager()))
    , m_individual(std::make_unique<ContactWindow>(vendaro.getContactManager().form))
    , m_company(std::make_unique<ContactWindow>(vendaro.getContactManager().companyEditor.form))
    , m_companyContact(std::make_unique<ContactWindow>(vendaro.getContactManager().companyContactEditor.form))
    , m_picker(std::make_unique<PickerPresenter>(vendaro.getPicker()))
{
    connect(&vendaro, &Vendaro::documentOpened, this, [](CustomInvoiceController* document) {
        auto* window = new DocumentWindow(document);
        window->show();
        window->activateWindow();
    });
    connect(&vendaro.getPrefsController(), &PrefsController::wordsChanged, this, &Windows::showWords);
    showWords();
}

Windows::~Windows() = default;

void Windows::showWords()
{
    const PrefsForm& words = m_vendaro.getPrefsController().form;
    m_order->setWords(words.termItems.text(), words.termBOM.text());
}
