#include "SampleModel.h"
#include "Scenes.h"

#include "ui/kit/AlertCard.h"
#include "ui/kit/Button.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/IconButton.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/Panels.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/SegmentedChoice.h"
#include "ui/kit/SideBar.h"
#include "ui/kit/TableHeader.h"
#include "ui/kit/UnderlineTabs.h"

#include <QCheckBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QPlainTextEdit>

namespace {

QVBoxLayout* bareColumn(QWidget* owner)
{
    auto* column = new QVBoxLayout(owner);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

QLineEdit* textField(const char* text)
{
    auto* field = new QLineEdit(QString::fromUtf8(text));
    field->setCursorPosition(0);
    return field;
}

NumberField* numberField(const char* text)
{
    auto* field = new NumberField;
    field->setText(QString::fromUtf8(text));
    return field;
}

RecordTable* makeLines(QWidget* owner)
{
    auto* table = new RecordTable(RecordTable::Place::card, owner);
    const QList<sample::Column> columns {{QStringLiteral("Code")}, {QStringLiteral("Item")}, {QStringLiteral("Variation")},
        {QStringLiteral("Brand")}, {QStringLiteral("Qty"), Qt::AlignRight}, {QStringLiteral("Unit")},
        {QStringLiteral("Price"), Qt::AlignRight}, {QStringLiteral("Total"), Qt::AlignRight}, {QStringLiteral("Tax code")}};
    const QList<QStringList> rows {
        {QStringLiteral("OAK-12"), QStringLiteral("Oak shelf, 120 cm"), QStringLiteral("Natural oil"), QStringLiteral("Fenwood"),
            QStringLiteral("2"), {}, QStringLiteral("84.00"), QStringLiteral("168.00"), QStringLiteral("S")},
        {QStringLiteral("BRK-03"), QStringLiteral("Shelf bracket, cast iron"), QStringLiteral("Black"), QStringLiteral("Harrow & Co"),
            QStringLiteral("6"), {}, QStringLiteral("7.25"), QStringLiteral("43.50"), QStringLiteral("S")},
        {QStringLiteral("FIN-07"), QStringLiteral("Hard wax oil"), QStringLiteral("Clear"), QStringLiteral("Lindqvist"),
            QStringLiteral("1"), QStringLiteral("tin"), QStringLiteral("18.50"), QStringLiteral("18.50"), QStringLiteral("S")}};
    table->setModel(sample::makeModel(columns, rows, table));
    table->setUnit(RowDelegate::Unit::cells);
    const int widths[] = {82, 200, 104, 112, 52, 60, 76, 84, 72};
    for (int column = 0; column < 9; ++column)
        table->setColumnWidth(column, widths[column]);
    table->tableHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    table->setCurrentIndex(table->model()->index(0, 4));
    return table;
}

QWidget* makeOrderPage()
{
    auto* page = new QWidget;
    auto* column = bareColumn(page);
    column->setContentsMargins(24, 20, 24, 20);
    auto* form = new FormGrid;
    form->addRow(QStringLiteral("Title"), textField("Oak shelving for the reading room"));
    auto* description = new QPlainTextEdit(
        QStringLiteral("Measure on site before cutting. Left bay is 4 mm narrower.\nDeliver before noon, side entrance."));
    description->setFixedHeight(58);
    description->setTabChangesFocus(true);
    form->addRow(QStringLiteral("Description"), description);
    column->addLayout(form);
    column->addSpacing(18);
    auto* heading = new GroupHeader(QStringLiteral("Items ordered"));
    for (const char* title : {"Select From Items…", "Add time…", "Remove"})
        heading->addButton(new Button(QString::fromUtf8(title)));
    column->addWidget(heading);
    column->addSpacing(8);
    auto* card = new CardFrame(makeLines(page));
    card->addLineField(QStringLiteral("Add a line: type a code or a name, then Enter"));
    column->addWidget(card, 1);
    return page;
}

QWidget* makeRepeatPage()
{
    auto* page = new QWidget;
    auto* column = bareColumn(page);
    column->setContentsMargins(24, 20, 24, 20);
    column->addWidget(new Label(QStringLiteral("Attachments"), LabelSize::group));
    column->addSpacing(10);
    column->addWidget(new DropArea(QStringLiteral("mail-attachment"), QStringLiteral("There is 1 attachment"),
        QStringLiteral("Drop a file here to add it to this order")));
    column->addStretch();
    return page;
}

SidePanel* makeMoneyPanel()
{
    auto* panel = new SidePanel;
    auto* form = new FormGrid(FormGrid::Labels::left);
    form->setLabelWidth(86);
    form->addRow(QStringLiteral("Number"), textField("INV1238"));
    form->addRow(QStringLiteral("Date"), textField("21/11/26"));
    form->addRow(QStringLiteral("Type"), new ChoiceBox({QStringLiteral("Customer"), QStringLiteral("Purchase Order")}));
    form->addRow(QStringLiteral("Status"), new ChoiceBox({QStringLiteral("Ordered"), QStringLiteral("Enquiry")}));
    form->addRow(QStringLiteral("Payment"), new ChoiceBox({QStringLiteral("Bank transfer")}));
    panel->column()->addLayout(form);
    panel->addLine();
    auto* money = new FormGrid(FormGrid::Labels::left);
    money->setLabelWidth(86);
    money->setVerticalSpacing(6);
    money->addRow(QStringLiteral("Subtotal"), new Figure(QStringLiteral("337.50")));
    auto* discount = new QCheckBox(QStringLiteral("Discount"));
    discount->setChecked(true);
    auto* unit = new SegmentedChoice({QStringLiteral("%"), QStringLiteral("£")});
    unit->setFixedWidth(82);
    unit->setName(QStringLiteral("Discount in"));
    money->addLabelledBy(discount, {unit, numberField("10")});
    auto* fromItems = new Button(QStringLiteral("From items"));
    fromItems->setSize(Button::Size::narrow);
    fromItems->setFixedWidth(82);
    money->addRow(QStringLiteral("Shipping"), {fromItems, numberField("12.00")});
    money->addRow(QStringLiteral("Net"), new Figure(QStringLiteral("337.50")));
    money->addRow(QStringLiteral("VAT"), new Figure(QStringLiteral("67.74")));
    auto* calculate = new Button(QStringLiteral("Calculate tax"));
    calculate->setGlyph(QStringLiteral("view-refresh"));
    money->addRow({}, calculate);
    panel->column()->addLayout(money);
    panel->addLine();
    auto* balance = new QHBoxLayout;
    auto* words = new QVBoxLayout;
    words->setSpacing(1);
    words->addWidget(new Label(QStringLiteral("Balance remaining"), LabelSize::strong));
    words->addWidget(new Label(QStringLiteral("200.00 paid"), LabelSize::small, LabelTone::secondary));
    balance->addLayout(words);
    balance->addStretch();
    auto* amount = new Label(QStringLiteral("£217.24"), LabelSize::balance);
    amount->setContentsMargins(0, 0, 11, 0);
    balance->addWidget(amount);
    panel->column()->addLayout(balance);
    panel->column()->addStretch();
    auto* shown = new QCheckBox(QStringLiteral("Show items on documents"));
    shown->setChecked(true);
    panel->column()->addWidget(shown);
    panel->column()->addSpacing(4);
    panel->column()->addWidget(new QCheckBox(QStringLiteral("Invoice sent")));
    return panel;
}

FooterBar* makeOrderFooter()
{
    auto* footer = new FooterBar;
    footer->setSideMargins(24, 20);
    auto* document = new ChoiceBox({QStringLiteral("Invoice"), QStringLiteral("Estimate")});
    document->setFixedWidth(160);
    document->setAccessibleName(QStringLiteral("Document"));
    auto* print = new Button(QStringLiteral("Print"));
    print->setGlyph(QStringLiteral("document-print"));
    auto* mail = new Button(QStringLiteral("Mail"));
    mail->setGlyph(QStringLiteral("mail-message"));
    footer->addLeft(document);
    footer->addLeft(print);
    footer->addLeft(mail);
    footer->addRight(new Button(QStringLiteral("Cancel")));
    footer->addRight(new PrimaryButton(QStringLiteral("Save")));
    return footer;
}

std::unique_ptr<QWidget> makeOrderEditor()
{
    auto window = std::make_unique<QDialog>();
    window->resize(1200, 800);
    auto* column = bareColumn(window.get());
    auto* body = new QHBoxLayout;
    body->setSpacing(0);
    column->addLayout(body, 1);
    auto* left = new QVBoxLayout;
    left->setSpacing(0);
    left->addWidget(new RecordHeader(QStringLiteral("INV1238"), QStringLiteral("Harriet Bloom")));
    auto* tabs = new UnderlineTabs;
    tabs->addTab(makeOrderPage(), QStringLiteral("Order"));
    for (const char* title : {"Contact", "Second contact", "Payments"})
        tabs->addTab(new QWidget, QString::fromLatin1(title));
    tabs->addTab(makeRepeatPage(), QStringLiteral("Repeat and attachments"));
    left->addWidget(tabs, 1);
    body->addLayout(left, 1);
    body->addWidget(makeMoneyPanel());
    column->addWidget(makeOrderFooter());
    return window;
}

void showStockAlert(QWidget* window)
{
    auto* alert = new AlertCard(window, QStringLiteral("Out of Stock"),
        QStringLiteral("You don't have enough Oak shelf, 120 cm. Do you still wish to add 1 to this order?"),
        {QStringLiteral("Add anyway"), QStringLiteral("Cancel")}, AlertCard::Options());
    alert->open();
}

void showPicker(QWidget* window)
{
    auto* sheet = new Sheet(window);
    sheet->setTitle(QStringLiteral("Select Contact"));
    sheet->card()->setFixedSize(640, 520);
    sheet->column()->setContentsMargins(0, 0, 0, 0);
    auto* top = new QVBoxLayout;
    top->setContentsMargins(24, 20, 24, 14);
    top->setSpacing(12);
    top->addWidget(new Label(QStringLiteral("Select Contact"), LabelSize::group));
    auto* search = new SearchField(QStringLiteral("Search"));
    search->setText(QStringLiteral("mar"));
    top->addWidget(search);
    sheet->column()->addLayout(top);
    sheet->column()->addWidget(new Hairline);
    auto* table = new RecordTable(RecordTable::Place::sheet);
    table->setModel(sample::makeModel({{QStringLiteral("Name")}, {QStringLiteral("Address")}},
        {{QStringLiteral("Elsie Marchbank"), QStringLiteral("The Old Forge ... BD23 5NE")},
            {QStringLiteral("Marlow Print Works"), QStringLiteral("6 Dock Street ... LS10 1NB")}},
        table));
    table->setColumnWidth(0, 220);
    table->tableHeader()->setStretchLastSection(true);
    table->setSorted(0, Qt::AscendingOrder);
    table->selectRow(0);
    search->steer(table);
    sheet->column()->addWidget(table, 1);
    auto* footer = new FooterBar(FooterBar::Place::sheet);
    footer->setNote(QStringLiteral("7 of 86 contacts"));
    footer->addRight(new Button(QStringLiteral("Cancel")));
    auto* select = new PrimaryButton(QStringLiteral("Select"));
    footer->addRight(select);
    sheet->column()->addWidget(footer);
    sheet->setDefaultButton(select);
    sheet->setFirstFocus(search);
    sheet->open();
}

void showTender(QWidget* window)
{
    auto* sheet = new Sheet(window);
    sheet->setTitle(QStringLiteral("Tender"));
    sheet->card()->setFixedWidth(420);
    QVBoxLayout* column = sheet->column();
    column->setContentsMargins(24, 20, 24, 20);
    column->addWidget(new Label(QStringLiteral("Tender"), LabelSize::group));
    column->addSpacing(14);
    auto* form = new FormGrid(FormGrid::Labels::left);
    form->setVerticalSpacing(12);
    form->setLabelWidth(132);
    form->addRow(QStringLiteral("Payment method"), new ChoiceBox({QStringLiteral("Cash"), QStringLiteral("Card")}));
    auto* due = new Label(QStringLiteral("45.00"), LabelSize::tender);
    due->setAlignment(Qt::AlignRight);
    due->setContentsMargins(0, 0, 15, 0);
    form->addRow(QStringLiteral("Amount due"), due);
    auto* tendered = numberField("50.00");
    tendered->setSize(NumberField::Size::big);
    form->addRow(QStringLiteral("Amount tendered"), tendered);
    auto* change = new Label(QStringLiteral("5.00"), LabelSize::change, LabelTone::moneyBack);
    change->setAlignment(Qt::AlignRight);
    change->setContentsMargins(0, 0, 15, 0);
    form->addRow(QStringLiteral("Change Due"), change);
    column->addLayout(form);
    column->addSpacing(20);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    auto* cancel = new Button(QStringLiteral("Cancel"));
    cancel->setSize(Button::Size::tall);
    cancel->setMinimumWidth(104);
    auto* done = new PrimaryButton(QStringLiteral("OK"));
    done->setSize(Button::Size::tall);
    done->setMinimumWidth(132);
    buttons->addWidget(cancel);
    buttons->addWidget(done);
    column->addLayout(buttons);
    sheet->setDefaultButton(done);
    sheet->setFirstFocus(tendered);
    sheet->open();
}

std::unique_ptr<QWidget> makeSettings()
{
    auto window = std::make_unique<QDialog>();
    window->resize(820, 600);
    auto* column = bareColumn(window.get());
    auto* body = new QHBoxLayout;
    body->setSpacing(0);
    column->addLayout(body, 1);
    auto* pages = new SideBar(QStringLiteral("Settings"));
    for (const auto& [icon, title] : QList<QPair<const char*, const char*>> {{"configure", "General"}, {"taxes-finances", "Tax"},
             {"format-text-bold", "Words"}, {"fill-color", "Lists and colours"}, {"object-columns", "Columns"}, {"chronometer", "Time"},
             {"document-print", "Documents"}, {"folder-database", "Databases"}})
        pages->addPage(QString::fromLatin1(icon), QString::fromLatin1(title));
    pages->setPage(1);
    body->addWidget(pages);
    body->addWidget(new Hairline(Qt::Vertical));
    auto* page = new QWidget;
    auto* content = bareColumn(page);
    content->setContentsMargins(24, 20, 24, 20);
    body->addWidget(page, 1);
    content->addWidget(new Label(QStringLiteral("Tax"), LabelSize::heading));
    content->addSpacing(14);
    auto* form = new FormGrid;
    auto* handle = new QCheckBox(QStringLiteral("Handle tax on orders and bills"));
    handle->setChecked(true);
    form->addRow({}, handle);
    form->addRow(QStringLiteral("Name on documents"), textField("VAT"), 220);
    auto* code = textField("S");
    code->setFixedWidth(64);
    form->addRow(QStringLiteral("Code for shipping"),
        {code, new Label(QStringLiteral("code of the table below"), LabelSize::small, LabelTone::secondary)});
    content->addLayout(form);
    content->addSpacing(20);
    auto* heading = new GroupHeader(QStringLiteral("Tax rates"));
    heading->addButton(new IconButton(QStringLiteral("list-add"), QStringLiteral("Add a rate")));
    heading->addButton(new IconButton(QStringLiteral("list-remove"), QStringLiteral("Delete the selected rate")));
    content->addWidget(heading);
    content->addSpacing(6);
    auto* table = new RecordTable(RecordTable::Place::card);
    auto* model = sample::makeModel({{QStringLiteral("Code")}, {QStringLiteral("Description")}, {QStringLiteral("Rate %"), Qt::AlignRight}},
        {{QStringLiteral("S"), QStringLiteral("standard"), QStringLiteral("20")},
            {QStringLiteral("R"), QStringLiteral("reduced"), QStringLiteral("12.5%")}},
        table);
    model->item(1, 2)->setData(true, RowRoles().fault);
    table->setModel(model);
    table->setUnit(RowDelegate::Unit::cells);
    table->setColumnWidth(2, 110);
    table->tableHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    table->setVisibleRows(2);
    table->setCurrentIndex(model->index(1, 2));
    content->addWidget(new CardFrame(table));
    content->addSpacing(10);
    content->addWidget(new MessageBar(
        MessageBar::Kind::warning, QStringLiteral("Code R: “12.5%” is not a number, so the rate counts as 0. Leave out the % sign.")));
    content->addSpacing(10);
    content->addWidget(new MessageBar(MessageBar::Kind::information,
        QStringLiteral("5 of Oak shelf, 120 cm are in stock and each kit needs 2, so there are enough parts for 2.5 kits.")));
    content->addStretch();
    auto* footer = new FooterBar;
    footer->addLeft(new TextButton(QStringLiteral("Create Similar")));
    footer->addRight(new Button(QStringLiteral("Cancel")));
    footer->addRight(new PrimaryButton(QStringLiteral("OK")));
    column->addWidget(footer);
    return window;
}

void focusLines(QWidget* window)
{
    window->findChild<RecordTable*>()->setFocus();
}

void editCell(QWidget* window)
{
    auto* table = window->findChild<RecordTable*>();
    table->setFocus();
    table->edit(table->currentIndex());
}

} // namespace

std::vector<Scene> editorScenes()
{
    return {
        {QStringLiteral("editor"), makeOrderEditor, focusLines},
        {QStringLiteral("editing"), makeOrderEditor, editCell},
        {QStringLiteral("attachments"), makeOrderEditor,
            [](QWidget* window) {
                window->findChild<UnderlineTabs*>()->setCurrentIndex(4);
                window->findChild<UnderlineTabBar*>()->setFocus();
            }},
        {QStringLiteral("alert"), makeOrderEditor, showStockAlert},
        {QStringLiteral("picker"), makeOrderEditor, showPicker},
        {QStringLiteral("tender"), makeOrderEditor, showTender},
        {QStringLiteral("settings"), makeSettings, focusLines},
    };
}
