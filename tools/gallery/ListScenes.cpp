#include "SampleModel.h"
#include "Scenes.h"

#include "ui/kit/AlertCard.h"
#include "ui/kit/Button.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/IconLabel.h"
#include "ui/kit/Icons.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/PageHeader.h"
#include "ui/kit/ProgressCard.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/RecordTree.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/SideBar.h"
#include "ui/kit/TableHeader.h"
#include "ui/kit/ToolBar.h"

#include <QAction>
#include <QDate>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

namespace {

void fillToolBar(QMainWindow* window)
{
    auto* bar = new ToolBar(QStringLiteral("Main"));
    const auto command = [&](const char* icon, const char* title) {
        bar->addCommand(new QAction(Icons::get(QString::fromLatin1(icon)), QString::fromLatin1(title), bar));
    };
    command("document-print", "Print");
    command("edit-delete", "Delete");
    bar->addGap();
    command("list-add-user", "New Contact");
    command("document-new", "New Order");
    command("archive-insert", "New Item");
    command("view-financial-list", "New Invoice");
    command("flag", "New goal");
    command("view-task-add", "New Task");
    bar->addGap();
    auto* start = new QAction(Icons::get(QStringLiteral("media-playback-start")), QStringLiteral("Log time: start"), bar);
    auto* stop = new QAction(Icons::get(QStringLiteral("media-playback-stop")), QStringLiteral("Log time: stop"), bar);
    stop->setEnabled(false);
    bar->addPair(QStringLiteral("Log time"), start, stop);
    bar->addGap();
    command("wallet-open", "Checkout");
    bar->addFlexibleGap();
    command("configure", "Preferences");
    command("help-contents", "Help");
    window->addToolBar(bar);
}

struct PageWindow {
    std::unique_ptr<QMainWindow> window;
    QVBoxLayout* page;
};

PageWindow makePageWindow(int page, const QString& status)
{
    PageWindow made {std::make_unique<QMainWindow>(), new QVBoxLayout};
    QMainWindow* window = made.window.get();
    window->resize(1400, 900);
    for (const char* menu : {"&File", "&Edit", "&View", "&Window", "&Help"})
        window->menuBar()->addMenu(QString::fromLatin1(menu));
    fillToolBar(window);
    auto* sides = new SideBar(QStringLiteral("Pages"));
    sides->addPage(QStringLiteral("view-pim-contacts"), QStringLiteral("Contacts"));
    sides->addPage(QStringLiteral("view-list-text"), QStringLiteral("Orders"));
    sides->addPage(QStringLiteral("tag"), QStringLiteral("Items"));
    sides->addPage(QStringLiteral("view-pim-tasks"), QStringLiteral("Tasks"));
    sides->addPage(QStringLiteral("view-bank"), QStringLiteral("Accounts"));
    sides->addPage(QStringLiteral("office-chart-line"), QStringLiteral("Reports"));
    sides->setPage(page);
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(sides);
    row->addWidget(new Hairline(Qt::Vertical));
    auto* surface = new QWidget;
    look::setKind(surface, "surface");
    surface->setLayout(made.page);
    made.page->setContentsMargins(0, 0, 0, 0);
    made.page->setSpacing(0);
    row->addWidget(surface, 1);
    window->setCentralWidget(content);
    window->statusBar()->setSizeGripEnabled(false);
    window->statusBar()->addWidget(new QLabel(status));
    window->statusBar()->addPermanentWidget(new QLabel(QStringLiteral("Saved 14:32")));
    return made;
}

struct Status {
    const char* name;
    QColor colour;
};

QStandardItemModel* makeOrders(QObject* owner)
{
    static const Status statuses[] = {{"Enquiry", {}}, {"Quoted", QColor(0x8e6bd1)}, {"Ordered", QColor(0xd99a00)},
        {"Invoiced", QColor(0x2b8fd6)}, {"Paid", QColor(0x2e9e6b)}, {"Flagged", QColor(0xd5483c)}, {"Complete", {}}};
    static const int order[] = {0, 2, 1, 2, 3, 4, 2, 5, 6, 3, 6, 4, 6, 6, 1, 6, 6, 4, 6, 6, 5, 6};
    const QStringList titles {QStringLiteral("Kitchen table, ash, 220 cm"), QStringLiteral("Replacement hinges"),
        QStringLiteral("Annual service of three mixers"), QStringLiteral("Window boxes, painted grey"),
        QStringLiteral("Gift set, twelve boxes")};
    const QStringList names {QStringLiteral("Mercy Okafor"), QStringLiteral("Dr Ines Valdés"), QStringLiteral("Priya Raman"),
        QStringLiteral("Orchard Press"), QStringLiteral("Harriet Bloom"), QStringLiteral("Kestrel Joinery Ltd")};
    QList<QStringList> rows;
    QDate date(2026, 11, 21);
    for (int row = 0; row < 148; ++row) {
        date = date.addDays(-(row % 3));
        rows << QStringList {date.toString(QStringLiteral("dd/MM/yy")), QStringLiteral("INV%1").arg(1238 - row), titles[row % 5],
            names[row % 6], QString::fromLatin1(statuses[order[row % 22]].name)};
    }
    QStandardItemModel* model = sample::makeModel({{QStringLiteral("Date")}, {QStringLiteral("Number")}, {QStringLiteral("Title")},
                                                      {QStringLiteral("Contact")}, {QStringLiteral("Status")}},
        rows, owner);
    const RowRoles roles;
    for (int row = 0; row < model->rowCount(); ++row) {
        model->item(row, 0)->setData(statuses[order[row % 22]].colour, roles.statusColour);
        model->item(row, 0)->setData(order[row % 22] == 6, roles.finished);
    }
    return model;
}

RecordTable* addOrders(PageWindow& made)
{
    auto* header = new PageHeader(QStringLiteral("Orders"), QStringLiteral("Search orders and contacts"));
    header->filter()->addItems({QStringLiteral("All"), QStringLiteral("Incomplete"), QStringLiteral("Purchase orders")});
    made.page->addWidget(header);
    auto* table = new RecordTable;
    table->setModel(makeOrders(table));
    const int widths[] = {106, 120, 400, 280, 150};
    for (int column = 0; column < 5; ++column)
        table->setColumnWidth(column, widths[column]);
    table->tableHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    table->setSorted(0, Qt::DescendingOrder);
    table->selectRow(5);
    made.page->addWidget(table, 1);
    return table;
}

std::unique_ptr<QWidget> makeOrdersWindow()
{
    PageWindow made = makePageWindow(1, QStringLiteral("148 orders, 1 selected"));
    addOrders(made);
    return std::move(made.window);
}

void focusTable(QWidget* window)
{
    window->findChild<RecordTable*>()->setFocus();
}

QStandardItem* contactRow(QStandardItem* parent, const QStringList& texts, const char* icon)
{
    const RowRoles roles;
    QList<QStandardItem*> row;
    for (const QString& text : texts) {
        row << new QStandardItem(text);
        row.constLast()->setData(row.size() > 1, roles.secondary);
    }
    row[0]->setData(QString::fromLatin1(icon), roles.icon);
    parent->appendRow(row);
    return row[0];
}

std::unique_ptr<QWidget> makeContactsWindow()
{
    PageWindow made = makePageWindow(0, QStringLiteral("86 contacts, 1 selected"));
    auto* header = new PageHeader(QStringLiteral("Contacts"), QStringLiteral("Search contacts"));
    header->filter()->addItems({QStringLiteral("All"), QStringLiteral("Customer")});
    made.page->addWidget(header);
    auto* tree = new RecordTree;
    auto* model = new QStandardItemModel(tree);
    model->setHorizontalHeaderLabels(
        {QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("Address"), QStringLiteral("Phone"), QStringLiteral("E-mail")});
    QStandardItem* root = model->invisibleRootItem();
    contactRow(contactRow(root,
                   {QStringLiteral("Blue Door Café"), QStringLiteral("Customer"), QStringLiteral("14 Harbour Parade, Whitby YO21 4BX"),
                       QStringLiteral("01947 555 018"), QStringLiteral("hello@bluedoor.example")},
                   "group"),
        {QStringLiteral("Someone")}, "user");
    contactRow(root,
        {QStringLiteral("Dr Ines Valdés"), QStringLiteral("Customer"), QStringLiteral("Park Surgery, Leeds LS8 1RX"),
            QStringLiteral("0113 555 0999"), QStringLiteral("ines@valdes.example")},
        "user");
    QStandardItem* kestrel = contactRow(root,
        {QStringLiteral("Kestrel Joinery Ltd"), QStringLiteral("Supplier"), QStringLiteral("Unit 4, Tannery Yard, Keighley BD21 3LA"),
            QStringLiteral("01535 555 640"), QStringLiteral("sales@kestrel.example")},
        "group");
    contactRow(kestrel,
        {QStringLiteral("Adeyemi Kolade"), QStringLiteral("Supplier"), {}, QStringLiteral("01535 555 641"),
            QStringLiteral("ade@kestrel.example")},
        "user");
    contactRow(kestrel,
        {QStringLiteral("Ruth Castellan"), QStringLiteral("Supplier"), {}, QStringLiteral("01535 555 644"),
            QStringLiteral("accounts@kestrel.example")},
        "user");
    contactRow(root,
        {QStringLiteral("Mercy Okafor"), QStringLiteral("Customer"), QStringLiteral("22 Beech Grove, Harrogate HG1 4PL"),
            QStringLiteral("01423 555 733"), QStringLiteral("mercy@okafor.example")},
        "user");
    tree->setModel(model);
    tree->setSorted(0, Qt::AscendingOrder);
    const int widths[] = {300, 170, 340, 140, 230};
    for (int column = 0; column < 5; ++column)
        tree->setColumnWidth(column, widths[column]);
    tree->header()->setSectionResizeMode(2, QHeaderView::Stretch);
    tree->expand(kestrel->index());
    tree->setCurrentIndex(kestrel->child(1)->index());
    made.page->addWidget(tree, 1);
    return std::move(made.window);
}

std::unique_ptr<QWidget> makeWelcomeWindow()
{
    PageWindow made = makePageWindow(1, QStringLiteral("No orders"));
    auto* welcome = new QWidget;
    welcome->setFixedWidth(640);
    auto* column = new QVBoxLayout(welcome);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* tile = new IconLabel(QStringLiteral("view-list-text"), IconRole::accent, 32);
    tile->setTile(60);
    column->addWidget(tile);
    column->addSpacing(18);
    column->addWidget(new Label(QStringLiteral("Welcome to Vendaro"), LabelSize::welcome));
    column->addSpacing(6);
    column->addWidget(new Label(QStringLiteral("Orders, stock, contacts and accounts of your business, kept in one folder on this "
                                               "computer.\nStart with a first order, bring what you have, or look around first."),
        LabelSize::body, LabelTone::secondary));
    column->addSpacing(24);
    column->addWidget(new ActionCard(QStringLiteral("document-new"), QStringLiteral("New Order"),
        QStringLiteral("Choose a contact, add items, print the invoice."), ActionCard::Rank::first));
    column->addSpacing(10);
    column->addWidget(new ActionCard(
        QStringLiteral("list-add-user"), QStringLiteral("New Contact"), QStringLiteral("A customer, a supplier or a company.")));
    column->addSpacing(10);
    column->addWidget(new ActionCard(
        QStringLiteral("document-import"), QStringLiteral("Import…"), QStringLiteral("Orders, contacts and payments from a CSV file.")));
    column->addSpacing(10);
    column->addWidget(new ActionCard(QStringLiteral("folder-open"), QStringLiteral("Open Sample Business"),
        QStringLiteral("A copy to try things out on. Your own data stay as they are.")));
    made.page->addStretch(2);
    made.page->addWidget(welcome, 0, Qt::AlignHCenter);
    made.page->addStretch(3);
    return std::move(made.window);
}

std::unique_ptr<QWidget> makeEmptyWindow()
{
    PageWindow made = makePageWindow(2, QStringLiteral("No items"));
    made.page->addWidget(new PageHeader(QStringLiteral("Items"), QStringLiteral("Search items")));
    auto* empty = new EmptyState(QStringLiteral("tag"), QStringLiteral("No items yet"),
        QStringLiteral("What you sell goes here. Make an item, or bring a list from a file."));
    empty->addButton(new Button(QStringLiteral("Import…")));
    empty->addButton(new PrimaryButton(QStringLiteral("New Item")));
    made.page->addWidget(empty, 1);
    return std::move(made.window);
}

std::unique_ptr<QWidget> makeLockedWindow()
{
    PageWindow made = makePageWindow(1, QStringLiteral("148 orders, 1 selected"));
    auto* bar = new MessageBar(
        MessageBar::Kind::readOnly, QStringLiteral("Read-only mode. Nothing can be changed while another user holds this database."));
    bar->setAction(QStringLiteral("Unlock Database…"));
    made.page->addWidget(bar);
    addOrders(made);
    return std::move(made.window);
}

void showLockAlert(QWidget* window)
{
    AlertCard::Options options;
    options.icon = AlertCard::Icon::locked;
    options.destructive = 0;
    options.facts = {{QStringLiteral("User"), QStringLiteral("ruth")},
        {QStringLiteral("Since"), QStringLiteral("2026-11-20 17:42:08 +0000")}, {QStringLiteral("Reason"), QStringLiteral("database open")},
        {QStringLiteral("Folder"), QStringLiteral("/srv/shared/workshop.vendb")}};
    auto* alert = new AlertCard(window, QStringLiteral("This database is locked"),
        QStringLiteral("It was not closed by its last user, or someone is working on it now. You can look at it; to change anything it "
                       "must be unlocked."),
        {QStringLiteral("Unlock…"), QStringLiteral("Cancel")}, options);
    alert->open();
}

void showProgress(QWidget* window)
{
    auto* card = new ProgressCard(window, QStringLiteral("Exporting orders"));
    card->setText(QStringLiteral("62 of 148 orders written"));
    card->setProgress(62, 148);
    card->open();
}

} // namespace

std::vector<Scene> listScenes()
{
    return {
        {QStringLiteral("orders"), makeOrdersWindow, focusTable},
        {QStringLiteral("contacts"), makeContactsWindow, [](QWidget* window) { window->findChild<RecordTree*>()->setFocus(); }},
        {QStringLiteral("welcome"), makeWelcomeWindow, [](QWidget* window) { window->findChild<ActionCard*>()->setFocus(); }},
        {QStringLiteral("empty"), makeEmptyWindow, [](QWidget* window) { window->findChild<PrimaryButton*>()->setFocus(); }},
        {QStringLiteral("locked"), makeLockedWindow, showLockAlert},
        {QStringLiteral("progress"), makeOrdersWindow, showProgress},
        {QStringLiteral("searching"), makeOrdersWindow,
            [](QWidget* window) {
                auto* search = window->findChild<SearchField*>();
                search->setText(QStringLiteral("oak"));
                search->setFocus();
            }},
    };
}
