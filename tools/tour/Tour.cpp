#include "Tour.h"

#include "UpdateServer.h"
#include "documents/CustomInvoiceController.h"
#include "foundation/SafeFile.h"
#include "storage/Settings.h"
#include "ui/Program.h"
#include "ui/contacts/ContactEditor.h"
#include "ui/inventory/ItemEditor.h"
#include "ui/kit/RecordTree.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/SheetStack.h"
#include "ui/kit/Theme.h"
#include "ui/kit/UnderlineTabs.h"
#include "ui/kit/SideBar.h"
#include "ui/orders/OrderEditor.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/Sheets.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QProcess>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>

namespace {

constexpr QSize fullWindow {1400, 900};
/// In the manual a picture is as wide as a line of text, and its words are still read.
constexpr QSize manualWindow {1080, 720};
constexpr QSize manualEditor {1080, 700};
constexpr double manualScale = 0.7;

void settle(int milliseconds = 120)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

/// An order that has something of everything to show: lines, a payment, a contact with an address. None when no sale has.
Order* fullestOrder(Vendaro& vendaro)
{
    Order* best = nullptr;
    for (int number = 0; number < vendaro.getOrderManager().getCount(); ++number) {
        Order* order = &vendaro.getOrderManager().at(number);
        if (!order->getContact() || order->getPaymentArray().empty() || order->isPurchaseOrder())
            continue;
        if (!best || order->getPaymentArray().size() > best->getPaymentArray().size())
            best = order;
        if (best->getPaymentArray().size() > 1 && best->getBalanceRemaining() != "0.00")
            return best;
    }
    return best;
}

/// Opens the first company that has people and chooses one of them.
void showPeople(RecordTree& tree)
{
    for (int row = 0; row < tree.model()->rowCount(); ++row) {
        const QModelIndex company = tree.model()->index(row, 0);
        if (!tree.model()->hasChildren(company))
            continue;
        tree.expand(company);
        tree.setCurrentIndex(tree.model()->index(0, 0, company));
        return;
    }
}

/// With the colours that most of it has, which makes a small file.
QImage inFewColours(const QImage& picture)
{
    const QImage plain = picture.convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> counts;
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x)
            ++counts[plain.pixel(x, y)];
    }
    QList<QRgb> colours = counts.keys();
    std::sort(colours.begin(), colours.end(),
        [&counts](QRgb one, QRgb other) { return std::pair(-counts[one], one) < std::pair(-counts[other], other); });
    colours.resize(std::min<qsizetype>(colours.size(), 256));
    return plain.convertToFormat(QImage::Format_Indexed8, colours, Qt::ThresholdDither);
}

QString textOfPdf(const QString& path)
{
    QProcess reader;
    reader.start("pdftotext", {"-layout", path, "-"});
    if (!reader.waitForFinished())
        return {};
    return QString::fromUtf8(reader.readAllStandardOutput());
}

} // namespace

Tour::Tour(Program& program, QString folder) : m_program(program), m_folder(std::move(folder)) { }

QStringList Tour::go()
{
    // The words of the person come once, so the welcome view is seen before the sample business is there.
    inBothShades(&Tour::sheets);
    m_program.vendaro().openSampleBusiness();
    settle();
    if (m_program.vendaro().getOrderManager().numberOfRows() == 0)
        fail("The sample business has no orders.");
    else if (!fullestOrder(m_program.vendaro()))
        fail("The sample business has no sale with a contact and a payment.");
    else {
        inBothShades(&Tour::lists);
        inBothShades(&Tour::orderEditor);
        inBothShades(&Tour::itemEditor);
        inBothShades(&Tour::contactEditors);
        inBothShades(&Tour::document);
        inBothShades(&Tour::settings);
        inBothShades(&Tour::notepad);
        inBothShades(&Tour::update);
        if (m_forManual.isEmpty())
            checkInvoice();
        makeMishaps();
        inBothShades(&Tour::recovery);
        inBothShades(&Tour::help);
    }
    for (const QString& name : m_forManual) {
        if (!QFile::exists(m_folder + '/' + name + ".png"))
            fail(QString("The manual shows \"%1\", which the tour does not come by.").arg(name));
    }
    return m_failures;
}

void Tour::takeForManual(const QStringList& names)
{
    m_forManual = names;
}

void Tour::inBothShades(void (Tour::*part)())
{
    const int number = m_number;
    for (const Theme::Mode mode : {Theme::Mode::light, Theme::Mode::dark}) {
        m_number = number;
        Theme::apply(*qApp, mode);
        m_shade = Theme::nameOf(mode);
        (this->*part)();
    }
}

void Tour::take(QWidget* window, const char* name)
{
    ++m_number;
    if (!window || !window->isVisible()) {
        fail(QString("The window \"%1\" did not come up.").arg(name));
        return;
    }
    settle();
    if (!save(window->grab(), QString::fromLatin1(name)))
        fail(QString("The picture \"%1\" could not be written.").arg(name));
}

bool Tour::save(const QPixmap& picture, const QString& name) const
{
    if (m_forManual.isEmpty())
        return picture.save(QString("%1/%2-%3-%4.png").arg(m_folder).arg(m_number, 2, 10, QChar('0')).arg(name, m_shade));
    if (!m_forManual.contains(name))
        return true;
    const QString ending = m_shade == "dark" ? "-dark.png" : ".png";
    return inFewColours(picture.toImage().scaled(picture.size() * manualScale, Qt::KeepAspectRatio, Qt::SmoothTransformation))
        .save(m_folder + '/' + name + ending, "PNG", 0);
}

QSize Tour::windowSize() const
{
    return m_forManual.isEmpty() ? fullWindow : manualWindow;
}

void Tour::takeSheet(QWidget* window, const char* name)
{
    const Sheet* sheet = SheetStack::instance().top();
    if (!sheet || sheet->hostWindow() != window)
        fail(QString("The sheet \"%1\" does not stand on its window.").arg(name));
    take(window, name);
}

void Tour::takeDuring(QWidget* window, const char* name, const std::function<void()>& action)
{
    QTimer::singleShot(150, qApp, [this, window, name] {
        if (Sheet* sheet = SheetStack::instance().top())
            take(sheet->hostWindow() ? window : sheet, name);
        else
            fail(QString("Nothing asked at \"%1\".").arg(name));
        SheetStack::instance().cancelAll();
    });
    action();
    settle(400);
}

QWidget* Tour::windowNamed(const char* name) const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(),
        [name](const QWidget* window) { return window->isVisible() && window->objectName() == QLatin1String(name); });
    return found == windows.end() ? nullptr : *found;
}

void Tour::sheets()
{
    MainWindow& window = m_program.windows().main();
    window.resize(windowSize());
    window.showPage(Page::orders);
    m_program.vendaro().tips().showNext();
    take(windowNamed("TipsWindow"), "tip");
    m_program.vendaro().tips().form.close();
    window.activateWindow();
    take(&window, "welcome");
    window.showPage(Page::items);
    take(&window, "no-items");
    window.showPage(Page::orders);
    takeDuring(&window, "alert", [this] { m_program.vendaro().session().unlockDatabase(); });
    {
        DateFormatSheet dates(&window);
        dates.open();
        take(&window, "date-format");
        dates.cancel();
    }
    LockInfo lock;
    lock.user = "ada";
    lock.datetime = "2024-03-01 10:15:30 +0000";
    LockSheet locked(lock, &window);
    locked.open();
    take(&window, "locked");
    locked.cancel();
}

void Tour::lists()
{
    MainWindow& window = m_program.windows().main();
    Vendaro& vendaro = m_program.vendaro();
    window.activateWindow();
    window.showPage(Page::orders);
    vendaro.getOrderManager().setSelectedRows({2});
    take(&window, "orders");
    window.showPage(Page::contacts);
    showPeople(*window.findChild<RecordTree*>());
    take(&window, "contacts");
    window.showPage(Page::items);
    vendaro.getItemManager().setSelectedRows({1});
    take(&window, "items");
    window.findChild<QAction*>("customiseToolBar")->trigger();
    takeSheet(&window, "tool-bar");
    SheetStack::instance().cancelAll();
}

void Tour::orderEditor()
{
    OrderManager& orders = m_program.vendaro().getOrderManager();
    OrderEditor& editor = m_program.windows().order();
    orders.editThisOrder(*fullestOrder(m_program.vendaro()));
    settle();
    if (!m_forManual.isEmpty())
        editor.resize(manualEditor);
    static constexpr const char* names[] {"order", "order-contact", "order-second-contact", "order-payments", "order-repeat"};
    for (int tab = 0; tab < 5; ++tab) {
        editor.tabs()->setCurrentIndex(tab);
        take(&editor, names[tab]);
    }
    editor.tabs()->setCurrentIndex(OrderForm::paymentsTab);
    orders.form.tender.trigger();
    takeSheet(&editor, "tender");
    SheetStack::instance().cancelAll();
    editor.tabs()->setCurrentIndex(OrderForm::orderTab);
    orders.form.pickMaterial.trigger();
    takeSheet(&editor, "picker");
    SheetStack::instance().cancelAll();
    orders.form.cancel.trigger();
    m_program.vendaro().chooseDateFormat(PrefsForm::dayFirst);
    orders.create();
    take(&editor, "new-order");
    showFaults();
    orders.form.cancel.trigger();
    settle();
}

void Tour::showFaults()
{
    OrderManager& orders = m_program.vendaro().getOrderManager();
    orders.form.date.edit("next week");
    orders.form.applyDiscount.edit(true);
    for (TextField* amount : {&orders.form.discount, &orders.form.shipping, &orders.form.taxAmount})
        amount->edit("a little");
    take(&m_program.windows().order(), "order-faults");
    orders.form.tender.trigger();
    orders.tender.form.amountTendered.edit("all of it");
    orders.tender.form.datePaid.edit("tomorrow");
    takeSheet(&m_program.windows().order(), "tender-faults");
    SheetStack::instance().cancelAll();
}

void Tour::itemEditor()
{
    ItemManager& items = m_program.vendaro().getItemManager();
    ItemEditor& editor = m_program.windows().item();
    for (int row = 0; row < items.numberOfRows(); ++row) {
        if (!items.getnthVisibleItem(row)->isCollectiveItem())
            continue;
        items.setSelectedRows({row});
        break;
    }
    items.edit();
    settle();
    static constexpr const char* names[] {"item", "item-details", "item-website", "item-used-in", "item-made-of"};
    auto* tabs = editor.findChild<UnderlineTabs*>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        take(&editor, names[tab]);
    }
    items.form.cancel.trigger();
    items.setSelectedRows({0});
    items.edit();
    settle();
    tabs->setCurrentIndex(0);
    items.form.price.edit("dear");
    items.form.warnlevel.edit("2 or 3");
    take(&editor, "item-faults");
    items.form.cancel.trigger();
    settle();
}

void Tour::contactEditors()
{
    Vendaro& vendaro = m_program.vendaro();
    static constexpr std::pair<const char*, const char*> kinds[] {
        {"Individual", "individual"}, {"Company", "company"}, {"Company Contact", "company-contact"}};
    for (const auto& [kind, name] : kinds) {
        ContactManager& contacts = vendaro.getContactManager();
        for (int number = 0; number < contacts.getCount(); ++number) {
            if (contacts.at(number).getKind() != kind)
                continue;
            contacts.editThisContact(contacts.at(number));
            break;
        }
        settle();
        take(QApplication::activeWindow(), name);
        takeOrdersOfContact(name);
        if (QWidget* open = QApplication::activeWindow(); open && open != &m_program.windows().main())
            open->close();
        settle();
    }
}

void Tour::takeOrdersOfContact(const char* editor)
{
    QWidget* window = QApplication::activeWindow();
    auto* tabs = window ? window->findChild<UnderlineTabs*>() : nullptr;
    if (!tabs || QLatin1String(editor) != QLatin1String("individual"))
        return;
    tabs->setCurrentIndex(1);
    settle();
    take(window, "contact-orders");
    tabs->setCurrentIndex(0);
}

void Tour::document()
{
    Vendaro& vendaro = m_program.vendaro();
    OrderManager& orders = vendaro.getOrderManager();
    orders.editThisOrder(*fullestOrder(vendaro));
    orders.form.stationery.setTitle("Invoice with tax");
    orders.form.printInvoice.trigger();
    settle();
    QWidget* window = windowNamed("InvoiceWindow");
    take(window, "invoice");
    if (window)
        window->close();
    orders.form.cancel.trigger();
    settle();
}

void Tour::update()
{
    const UpdateServer server;
    Vendaro& vendaro = m_program.vendaro();
    vendaro.settingsStore().setText(settings::updateEndpoint, server.address("/updates.plist").toStdString());
    vendaro.updates().checkForUpdates();
    settle(1'000);
    take(windowNamed("UpdateWindow"), "update");
    vendaro.updates().form.getUpdate.trigger();
    settle(1'000);
    take(windowNamed("UpdateWindow"), "update-download");
    vendaro.updates().form.close();
    vendaro.settingsStore().remove(settings::updateEndpoint);
    settle();
}

void Tour::settings()
{
    PrefsController& preferences = m_program.vendaro().getPrefsController();
    preferences.openWindow();
    SettingsWindow& window = m_program.windows().settings();
    static constexpr const char* names[] {"settings", "settings-tax", "settings-words", "settings-lists", "settings-colours",
        "settings-columns", "settings-time", "settings-documents", "settings-addressbook", "settings-databases", "settings-look"};
    preferences.form.colourStatus.edit(1);
    for (int page = 0; page < window.pages()->count(); ++page) {
        window.pages()->setCurrentRow(page);
        take(&window, names[page]);
    }
    preferences.newDatabaseMenuItem();
    preferences.newDatabase.displayName.edit("Side business");
    takeSheet(&window, "new-database");
    preferences.newDatabase.displayName.edit("Side/business");
    takeSheet(&window, "new-database-fault");
    SheetStack::instance().cancelAll();
    showSettingsFaults();
    preferences.form.leave.trigger();
    settle();
}

/// What does not read, put right again afterwards.
void Tour::showSettingsFaults()
{
    PrefsController& preferences = m_program.vendaro().getPrefsController();
    SettingsWindow& window = m_program.windows().settings();
    const QString warnLevel = preferences.form.stockWarn.text();
    const QString shipping = preferences.form.taxShipping.text();
    const std::string rate = preferences.getTaxRates()[1].rate;
    preferences.form.stockWarn.edit("a few");
    preferences.form.taxShipping.edit("Q");
    preferences.setTaxRateValue("rate", 1, "5%");
    window.pages()->setCurrentRow(0);
    take(&window, "settings-fault");
    window.pages()->setCurrentRow(1);
    take(&window, "settings-tax-fault");
    window.resize(window.minimumSize());
    take(&window, "settings-small");
    window.resize(880, 680);
    preferences.form.stockWarn.edit(warnLevel);
    preferences.form.taxShipping.edit(shipping);
    preferences.setTaxRateValue("rate", 1, rate);
}

void Tour::makeMishaps()
{
    Vendaro& vendaro = m_program.vendaro();
    const QString damaged = vendaro.supportFolder() + "/bills.xml";
    if (!writeFileSafely(damaged.toStdString(), "<plist>") || !vendaro.recovery().keepCopy(damaged, KeptFor::unreadable)
        || !vendaro.folder().keepGeneration())
        fail("Nothing could be put into the recovery store.");
    vendaro.getOrderManager().deleteItem(*fullestOrder(vendaro));
    vendaro.getContactManager().getnthItem(0)->setPhone("020 7946 0018");
}

void Tour::notepad()
{
    Notepad& notepad = m_program.vendaro().notepad();
    notepad.open();
    settle();
    QWidget* window = windowNamed("NotepadWindow");
    auto* text = window ? window->findChild<QTextEdit*>() : nullptr;
    if (!text)
        return fail("The notepad did not come up.");
    text->setHtml(
        "<p style='font-size:18pt; font-weight:600'>This week</p><p>Ring <b>Ada Penrose</b> about the oak shelves, "
        "<i>before noon</i>.</p><p><span style='color:#b3261e'>Order wax: two tins left.</span> "
        "<span style='color:#1f56c4'>Timber comes on Thursday.</span></p><p><span style='color:#000000'>Black from elsewhere</span> and "
        "<span style='background:#ffe680'>marked words</span>.</p><p align='right'>Workshop closed 24 to 27 December</p>");
    take(window, "notepad");
    if (auto* find = window->findChild<QLineEdit*>("find")) {
        find->setFocus();
        find->setText("or");
        Q_EMIT find->textEdited("or");
        take(window, "notepad-find");
        find->setText("nowhere");
        Q_EMIT find->textEdited("nowhere");
        take(window, "notepad-not-found");
        find->clear();
    }
    window->close();
}

void Tour::recovery()
{
    m_program.windows().main().findChild<QAction*>("recovery")->trigger();
    QWidget* window = windowNamed("RecoveryWindow");
    if (!window) {
        fail("The recovery window did not come up.");
        return;
    }
    auto* tabs = window->findChild<UnderlineTabs*>();
    tabs->setCurrentIndex(0);
    take(window, "kept-files");
    tabs->setCurrentIndex(1);
    take(window, "earlier-states");
    window->close();
    settle();
}

void Tour::help()
{
    for (const auto& [topic, name] : {std::pair("index", "help-contents"), std::pair("order", "help")}) {
        m_program.windows().showHelp(QString::fromLatin1(topic));
        QWidget* window = windowNamed("HelpWindow");
        take(window, name);
        if (window)
            window->close();
    }
}

void Tour::checkInvoice()
{
    Vendaro& vendaro = m_program.vendaro();
    Order& order = *fullestOrder(vendaro);
    CustomInvoiceController* document = nullptr;
    const auto connection =
        QObject::connect(&vendaro, &Vendaro::documentOpened, qApp, [&document](CustomInvoiceController* opened) { document = opened; });
    vendaro.getOrderManager().editThisOrder(order);
    vendaro.getOrderManager().form.printInvoice.trigger();
    QObject::disconnect(connection);
    if (!document) {
        fail("No invoice was made.");
        return;
    }
    const QString written = document->emailPDF();
    const QString kept = m_folder + "/invoice.pdf";
    QFile::remove(kept);
    if (!QFile::copy(written, kept))
        fail("The invoice could not be saved as PDF.");
    const QString text = textOfPdf(kept);
    const std::vector<std::string> expected {
        std::string(order.getOrderNum()), std::string(order.getContact()->getName()), order.getTotalDue(), order.getBalanceRemaining()};
    for (const std::string& words : expected) {
        if (!text.contains(QString::fromStdString(words)))
            fail(QString("The invoice does not show \"%1\".").arg(QString::fromStdString(words)));
    }
    if (text.contains('<'))
        fail("The invoice shows a tag that was not filled.");
    vendaro.getOrderManager().form.cancel.trigger();
}
