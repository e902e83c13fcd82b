#include "ui/orders/OrderEditor.h"

#include "inventory/BOMManager.h"
#include "orders/OrderManager.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/HideWhileEmpty.h"
#include "ui/ListBinder.h"
#include "ui/kit/Button.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Literal.h"
#include "ui/kit/Look.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/Panels.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SegmentedChoice.h"
#include "ui/kit/TableHeader.h"
#include "ui/kit/UnderlineTabs.h"
#include "ui/orders/ContactSummary.h"
#include "ui/orders/LineEntryStrip.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

template <class Widget, class... Arguments>
Widget* named(const char* name, Arguments&&... arguments)
{
    auto* widget = new Widget(std::forward<Arguments>(arguments)...);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QVBoxLayout* tabColumn(QWidget* tab)
{
    auto* column = new QVBoxLayout(tab);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(8);
    return column;
}

/// A figure that is usually worked out but may be typed: without a box until it is wanted.
NumberField* openFigure(const char* name)
{
    auto* field = named<NumberField>(name);
    look::setKind(field, "figure");
    return field;
}

/// Where the fields beside the tabs begin.
constexpr int sideLabelWidth = 86;
constexpr int sideMargin = 20;
constexpr int dateWidth = 110;

} // namespace

OrderEditor::OrderEditor(OrderManager& orders, BOMManager& lines)
    : EditorWindow(orders.form, orders.form.cancel, "OrderWindow")
    , m_orders(orders)
    , m_lines(lines)
    , m_header(new RecordHeader)
    , m_tabs(new UnderlineTabs)
{
    helpTopic::set(*this, "order");
    resize(1200, 800);
    setMinimumSize(980, 640);
    m_tabs->addTab(makeOrderTab(), tr("Order"));
    m_tabs->addTab(makeContactTab("contact"), tr("Contact"));
    m_tabs->addTab(makeContactTab("contact2"), tr("Second contact"));
    m_tabs->addTab(makePaymentsTab(), tr("Payments"));
    m_tabs->addTab(makeRepeatTab(), tr("Repeat and attachments"));

    auto* left = new QVBoxLayout;
    left->setContentsMargins(0, 0, 0, 0);
    left->setSpacing(0);
    left->addWidget(m_header);
    left->addWidget(m_tabs, 1);
    auto* upper = new QHBoxLayout;
    upper->setContentsMargins(0, 0, 0, 0);
    upper->setSpacing(0);
    upper->addLayout(left, 1);
    upper->addWidget(makeSide());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(upper, 1);
    column->addWidget(makeFooter());

    FormBinder& binder = bindForm();
    setFirstField("title");
    for (const char* name : {"stationery", "lineEntry", "lineMatches"})
        setPassing(name);
    for (const char* name : {"taxAmount", "sent"})
        binder.bindCaption(name, findChild<QWidget*>(QString::fromLatin1(name) + "Label"));
    for (const char* name : {"balancePaidLabel", "balancePaidCaption"})
        binder.bindVisibility("balancePaid", findChild<QWidget*>(QString::fromLatin1(name)));
    hideWhileEmpty(form(), m_orders.form.taxNote, findChild<QWidget*>("taxNote"));
    connectTabs();
}

QWidget* OrderEditor::makeOrderTab()
{
    auto* tab = new QWidget;
    QVBoxLayout* column = tabColumn(tab);
    auto* grid = new FormGrid;
    grid->addRow(tr("Title"), named<QLineEdit>("title"));
    auto* description = named<QPlainTextEdit>("description");
    description->setFixedHeight(58);
    description->setTabChangesFocus(true);
    grid->addRow(tr("Description"), description);
    column->addLayout(grid);
    column->addSpacing(8);

    m_linesHeader = new GroupHeader(tr("Items ordered"));
    m_pickButton = named<Button>("pickMaterial", tr("Select From Items…"));
    m_linesHeader->addButton(m_pickButton);
    m_linesHeader->addButton(named<Button>("newItem", tr("New Item")));
    m_linesHeader->addButton(named<Button>("removeMaterial", tr("Remove")));
    column->addWidget(m_linesHeader);

    m_lineTable = new RecordTable(RecordTable::Place::card);
    m_lineTable->setUnit(RowDelegate::Unit::cells);
    m_lineTable->setAccessibleName(tr("Items ordered"));
    m_lineTable->tableHeader()->setStretchLastSection(true);
    new ListBinder(m_lines, m_lineTable, "lines");
    connect(m_lineTable, &RecordTable::removalWanted, this, [this] { m_orders.form.removeMaterial.trigger(); });
    auto* card = new CardFrame(m_lineTable);
    column->addWidget(card, 1);
    new LineEntryStrip(m_orders.form, m_orders.lineEntry, card, tab);
    return tab;
}

QWidget* OrderEditor::makeContactTab(const QString& prefix)
{
    auto* tab = new QWidget;
    helpTopic::set(*tab, "order#contact");
    QVBoxLayout* column = tabColumn(tab);
    column->addWidget(new ContactSummary(m_orders.form, prefix));
    column->addStretch(1);
    return tab;
}

QWidget* OrderEditor::makePaymentsTab()
{
    auto* tab = new QWidget;
    helpTopic::set(*tab, "payments");
    QVBoxLayout* column = tabColumn(tab);
    auto* header = new GroupHeader(tr("Payments"));
    header->addButton(named<Button>("tenderFullAmount", tr("Full amount")));
    header->addButton(named<Button>("tender", tr("Add payment…")));
    header->addButton(named<Button>("tenderRemove", tr("Remove")));
    column->addWidget(header);
    auto* table = new RecordTable(RecordTable::Place::card);
    table->setUnit(RowDelegate::Unit::cells);
    table->setAccessibleName(tr("Payments"));
    table->setEmptyText(tr("Nothing paid yet"));
    table->tableHeader()->setStretchLastSection(true);
    new ListBinder(m_orders.paymentTable, table, "payments");
    connect(table, &RecordTable::removalWanted, this, [this] { m_orders.form.tenderRemove.trigger(); });
    column->addWidget(new CardFrame(table), 1);
    return tab;
}

QWidget* OrderEditor::makeRepeatTab()
{
    auto* tab = new QWidget;
    helpTopic::set(*tab, "attachments");
    QVBoxLayout* column = tabColumn(tab);
    column->addWidget(new GroupHeader(tr("Recurrence")));
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(named<QCheckBox>("repeats", tr("Repeat this order every")));
    auto* frequency = named<ChoiceBox>("repeatFrequency");
    frequency->setFixedWidth(130);
    frequency->setAccessibleName(tr("Repeat every"));
    row->addWidget(frequency);
    row->addStretch(1);
    column->addLayout(row);
    auto* information = named<Label>("repeatInformation", QString(), LabelSize::body, LabelTone::secondary);
    information->setContentsMargins(24, 0, 0, 0);
    column->addWidget(information);
    column->addSpacing(16);
    column->addWidget(new Hairline);
    column->addSpacing(16);

    column->addWidget(new GroupHeader(tr("Attachments")));
    auto* drop = new DropArea("mail-attachment", {}, tr("Drop a file here to add it"));
    drop->setFixedHeight(132);
    connect(drop, &DropArea::filesDropped, this, [this](const QStringList& paths) {
        for (const QString& path : paths)
            m_orders.fileDropped(path);
    });
    const TextField& attachments = m_orders.form.attachments;
    form().follow({&attachments}, drop, [drop, &attachments] { drop->setTitle(attachments.text()); });
    column->addWidget(drop);
    auto* trouble = new MessageBar(MessageBar::Kind::warning);
    const TextField& sentence = m_orders.form.attachmentTrouble;
    form().follow({&sentence}, trouble, [trouble, &sentence] { trouble->setText(sentence.text()); });
    column->addWidget(trouble);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(named<Button>("attach", tr("Attach…")));
    buttons->addWidget(named<Button>("viewAttachments", tr("View")));
    buttons->addStretch(1);
    column->addLayout(buttons);
    column->addStretch(1);
    return tab;
}

QWidget* OrderEditor::makeSide()
{
    auto* side = new SidePanel;
    auto* grid = new FormGrid(FormGrid::Labels::left);
    grid->setLabelWidth(sideLabelWidth);
    grid->addRow(tr("Number"), named<QLineEdit>("orderNum"));
    auto* date = named<QLineEdit>("date");
    date->setFixedWidth(dateWidth);
    m_dateCaption = named<Label>("dateCaption", QString(), LabelSize::small, LabelTone::secondary);
    grid->addRow(tr("Date"), {date, m_dateCaption});
    grid->addRow(tr("Type"), named<ChoiceBox>("type"));
    grid->addRow(tr("Status"), named<ChoiceBox>("status"));
    grid->addRow(tr("Payment"), named<ChoiceBox>("paymentMethod"));
    side->column()->addLayout(grid);
    side->addLine();
    addFigures(*side);
    side->addLine();

    auto* balance = new QHBoxLayout;
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(new Label(tr("Balance remaining"), LabelSize::strong));
    words->addWidget(named<Label>("paidNote", QString(), LabelSize::small, LabelTone::secondary));
    balance->addLayout(words);
    balance->addStretch(1);
    auto* amount = new Label({}, LabelSize::balance);
    amount->setContentsMargins(0, 0, 11, 0);
    const TextField& remaining = m_orders.form.balanceRemaining;
    form().follow({&remaining}, amount, [amount, &remaining] { amount->setText(remaining.caption() + remaining.text()); });
    balance->addWidget(amount);
    side->column()->addLayout(balance);
    side->column()->addStretch(1);
    addFlags(*side);
    return side;
}

void OrderEditor::addFigures(SidePanel& side)
{
    auto* grid = new FormGrid(FormGrid::Labels::left);
    grid->setLabelWidth(sideLabelWidth);
    grid->addRow(tr("Subtotal"), named<Figure>("subtotal"));
    auto* discount = named<NumberField>("discount");
    discount->setAccessibleName(tr("Discount"));
    auto* choice = named<SegmentedChoice>("discountChoice", QStringList {"%", "£"});
    choice->setName(tr("Discount in"));
    choice->setFixedWidth(82);
    grid->addLabelledBy(named<QCheckBox>("applyDiscount", tr("Discount")), {choice, discount});
    auto* fromItems = named<Button>("shippingFromItems", tr("From items"));
    fromItems->setSize(Button::Size::narrow);
    fromItems->setFixedWidth(82);
    auto* shipping = named<NumberField>("shipping");
    shipping->setAccessibleName(tr("Shipping"));
    grid->addRow(tr("Shipping"), {fromItems, shipping});
    grid->addRow(tr("Net"), openFigure("net"));
    Label* taxLabel = grid->addRow(tr("Tax"), openFigure("taxAmount"));
    taxLabel->setObjectName("taxAmountLabel");
    // Of full strength, unlike the others, and weak where no tax is handled.
    taxLabel->setTone(LabelTone::normal);
    auto* calculate = named<Button>("calculateTax", tr("Calculate tax"));
    calculate->setGlyph("view-refresh");
    grid->addRow({}, calculate);
    side.column()->addLayout(grid);
    auto* note = named<Label>("taxNote", QString(), LabelSize::small, LabelTone::secondary);
    note->setWordWrap(true);
    side.column()->addWidget(note);
}

void OrderEditor::addFlags(SidePanel& side)
{
    auto* grid = new FormGrid(FormGrid::Labels::left);
    grid->setLabelWidth(sideLabelWidth);
    auto* paidOn = named<QLineEdit>("balancePaid");
    paidOn->setFixedWidth(dateWidth);
    m_paidCaption = named<Label>("balancePaidCaption", QString(), LabelSize::small, LabelTone::secondary);
    Label* paid = grid->addRow(tr("Paid on"), {paidOn, m_paidCaption});
    paid->setObjectName("balancePaidLabel");
    side.column()->addLayout(grid);
    side.column()->addWidget(named<Button>("addStock", tr("Add to stock")));
    side.column()->addSpacing(8);
    side.column()->addWidget(named<QCheckBox>("includeBOM", tr("Show items on documents")));
    side.column()->addSpacing(6);
    side.column()->addWidget(named<QCheckBox>("sent", tr("Invoice sent")));
}

QWidget* OrderEditor::makeFooter()
{
    auto* footer = new FooterBar;
    footer->setSideMargins(24, sideMargin);
    auto* stationery = named<ChoiceBox>("stationery");
    stationery->setFixedWidth(160);
    stationery->setAccessibleName(tr("Stationery"));
    auto* print = named<Button>("printInvoice", tr("Print"));
    print->setGlyph("document-print");
    // The key for printing puts on paper what has the keyboard.
    print->setKeys(QKeySequence("Ctrl+Shift+P"));
    auto* mail = named<Button>("sendEmail", tr("Mail"));
    mail->setGlyph("mail-message");
    footer->addLeft(stationery);
    footer->addLeft(print);
    footer->addLeft(mail);
    footer->addRight(named<Button>("cancel", tr("Cancel")));
    footer->addRight(named<PrimaryButton>("save", tr("Save")));
    return footer;
}

bool OrderEditor::hasSomethingToLose() const
{
    const bool filled = m_lines.numberOfRows() > 0 || m_orders.paymentTable.numberOfRows() > 0 || m_orders.getNumberOfAttachments() > 0;
    return EditorWindow::hasSomethingToLose() || (m_orders.isCreating() && filled);
}

void OrderEditor::connectTabs()
{
    ChoiceField& tab = m_orders.form.tab;
    form().follow({&tab}, this, [this, &tab] { m_tabs->setCurrentIndex(tab.index()); });
    connect(m_tabs, &QTabWidget::currentChanged, this, [&tab](int index) { tab.edit(index); });
    form().follow({&m_orders.form.orderNum, &m_orders.form.contactName}, this, [this] { showHeader(); });
}

void OrderEditor::showHeader()
{
    m_header->setTitle(m_orders.form.orderNum.text());
    const QString contact = m_orders.form.contactName.text();
    m_header->setSubtitle(contact.isEmpty() ? tr("No contact yet") : contact);
}

void OrderEditor::setWords(const QString& order, const QString& items, const QString& lines)
{
    m_tabs->setTabText(OrderForm::orderTab, literal(order));
    findChild<QCheckBox*>("repeats")->setText(literal(tr("Repeat this %1 every").arg(withinSentence(order))));
    m_linesHeader->setTitle(lines);
    m_lineTable->setAccessibleName(lines);
    const QString pick = tr("Select From %1…").arg(items);
    m_pickButton->setText(literal(pick));
    m_lineTable->setEmptyText(tr("Nothing on this %1 yet. %2 adds the first line, or type it below.").arg(withinSentence(order), pick));
}

void OrderEditor::setDateCaption(const QString& caption)
{
    m_dateCaption->setText(caption);
    m_paidCaption->setText(caption);
}
