#include "ui/inventory/ItemEditor.h"

#include "inventory/ItemManager.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/ListBinder.h"
#include "ui/inventory/AddStockSheet.h"
#include "ui/kit/Button.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Panels.h"
#include "ui/kit/PictureWell.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/TableHeader.h"
#include "ui/kit/UnderlineTabs.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

/// As wide as the longest label of a collective item, so that nothing moves when an item becomes one.
constexpr int stockLabelWidth = 82;

template <class Widget, class... Arguments>
Widget* itemField(const char* name, Arguments&&... arguments)
{
    auto* widget = new Widget(std::forward<Arguments>(arguments)...);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

/// A table inside a card, under that name.
RecordTable* cardTable(const char* name, const QString& title, const QString& emptyText)
{
    auto* table = new RecordTable(RecordTable::Place::card);
    table->setObjectName(QString::fromLatin1(name));
    table->setAccessibleName(title);
    table->tableHeader()->setStretchLastSection(true);
    table->setEmptyText(emptyText);
    return table;
}

QWidget* tabPage(const char* topic)
{
    auto* tab = new QWidget;
    helpTopic::set(*tab, topic);
    auto* column = new QVBoxLayout(tab);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(8);
    return tab;
}

/// Two columns of fields side by side, both from the top.
QWidget* twoColumns(FormGrid* left, FormGrid* right)
{
    auto* page = new QWidget;
    auto* columns = new QHBoxLayout(page);
    columns->setContentsMargins(24, 20, 24, 20);
    columns->setSpacing(32);
    for (FormGrid* grid : {left, right}) {
        auto* column = new QVBoxLayout;
        column->addLayout(grid);
        column->addStretch(1);
        columns->addLayout(column, 1);
    }
    return page;
}

} // namespace

ItemEditor::ItemEditor(ItemManager& items) : EditorWindow(items.form, items.form.cancel, "ItemWindow"), m_items(items)
{
    helpTopic::set(*this, "item");
    resize(920, 640);
    setMinimumSize(780, 560);
    auto* header = new RecordHeader;
    auto* tabs = new UnderlineTabs;
    tabs->addTab(makeItemTab(), tr("Item"));
    tabs->addTab(makeMoreTab(), tr("Details"));
    tabs->addTab(makeWebsiteTab(), tr("Website"));
    tabs->addTab(makeUsedInTab(), tr("Used in"));
    QWidget* parts = makePartsTab();
    tabs->addTab(parts, tr("Made of"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(tabs, 1);
    column->addWidget(makeFooter());
    FormBinder& binder = bindForm();
    setFirstField("item");
    setPassing(m_items.form.numberToMake.name());
    new AddStockSheet(m_items.addStockForm, this);
    for (const char* name : {"warnlevel", "optimumqty", "canBeMade", "limitedBy"})
        binder.bindVisibility(name, findChild<QWidget*>(QString::fromLatin1(name) + "Label"));

    ItemForm& shown = m_items.form;
    const auto show = [&shown, header, tabs, parts] {
        header->setTitle(shown.item.text().isEmpty() ? shown.title() : shown.item.text());
        header->setSubtitle(shown.title() + " · " + shown.code.text());
        tabs->setTabVisible(tabs->indexOf(parts), shown.collective.isOn());
    };
    shown.follow({&shown.item, &shown.code, &shown.collective}, this, show);
    connect(&shown, &Form::titleChanged, this, show);
    connect(&shown, &Form::opened, this, [tabs, show] {
        tabs->setCurrentIndex(0);
        show();
    });
}

bool ItemEditor::hasSomethingToLose() const
{
    return EditorWindow::hasSomethingToLose() || m_items.wasChangedByCommand();
}

QWidget* ItemEditor::makeItemTab()
{
    auto* left = new FormGrid;
    left->addRow(tr("Name"), itemField<QLineEdit>("item"));
    left->addRow(tr("Code"), itemField<QLineEdit>("code"), 160);
    left->addRow(tr("Variation"), itemField<QLineEdit>("variation"));
    left->addRow(tr("Brand"), itemField<QLineEdit>("brand"));
    left->addRow(tr("Categories"), itemField<QLineEdit>("category"));
    auto* description = itemField<QPlainTextEdit>("description");
    description->setFixedHeight(110);
    description->setTabChangesFocus(true);
    left->addRow(tr("Description"), description);
    left->addGap(8);
    left->addRow({}, itemField<QCheckBox>("collective", tr("Collective: made of other items")));

    auto* right = new FormGrid;
    right->setLabelWidth(stockLabelWidth);
    right->addRow(tr("Price"), itemField<NumberField>("price"), 130);
    right->addRow(tr("Cost price"), itemField<NumberField>("bought"), 130);
    right->addRow(tr("Tax code"), itemField<ChoiceBox>("taxcode"), 130);
    right->addRow(tr("Shipping"), itemField<NumberField>("shipping"), 130);
    right->addGap(16);
    auto* qty = itemField<NumberField>("qty");
    qty->setFixedWidth(130);
    right->addRow(tr("In stock"), {qty, itemField<Button>("addStock", tr("Add Stock…"))});
    right->addRow(tr("Can be made"), itemField<Figure>("canBeMade"), 130)->setObjectName("canBeMadeLabel");
    auto* limitedBy = itemField<Figure>("limitedBy");
    limitedBy->setAlignment(Qt::AlignLeft);
    right->addRow(tr("Limited by"), limitedBy)->setObjectName("limitedByLabel");
    right->addRow(tr("Warn at"), itemField<NumberField>("warnlevel"), 130)->setObjectName("warnlevelLabel");
    right->addRow(tr("Order up to"), itemField<NumberField>("optimumqty"), 130)->setObjectName("optimumqtyLabel");
    right->addRow({}, itemField<QCheckBox>("decreaseQty", tr("Sales take from stock")));
    return twoColumns(left, right);
}

QWidget* ItemEditor::makeMoreTab()
{
    auto* left = new FormGrid;
    auto* supplier = itemField<QLineEdit>("supplier");
    left->addRow(tr("Supplier"), {supplier, itemField<Button>("pickSupplier", tr("Select…"))});
    left->addRow(tr("Part number"), itemField<QLineEdit>("part"));
    left->addRow(tr("Bar code"), itemField<QLineEdit>("ean"));
    left->addRow(tr("Condition"), itemField<ChoiceBox>("condition"), 160);
    left->addRow(tr("Status"), itemField<QLineEdit>("status"));
    auto* right = new FormGrid;
    right->addRow(tr("Web page"), itemField<QLineEdit>("link"));
    right->addRow(tr("Picture's address"), itemField<QLineEdit>("imagelink"));
    auto* well = itemField<PictureWell>("picture", tr("Drop or paste a picture here"));
    right->addRow(tr("Picture"), well)->setAlignment(Qt::AlignRight | Qt::AlignTop);
    auto* paste = itemField<Button>("pastePicture", tr("Paste"));
    connect(paste, &QPushButton::clicked, well, &PictureWell::paste);
    connect(well, &PictureWell::removalWanted, this, [this] { m_items.form.removePicture.trigger(); });
    right->addRow({}, {itemField<Button>("choosePicture", tr("Choose…")), paste, itemField<Button>("removePicture", tr("Remove"))});
    return twoColumns(left, right);
}

QWidget* ItemEditor::makeWebsiteTab()
{
    auto* left = new FormGrid;
    left->addRow({}, itemField<QCheckBox>("exportbrevand", tr("Export to the website")));
    left->addRow(tr("Website folder"), {itemField<QLineEdit>("websitefolder"), itemField<Button>("selectWebsiteLocation", tr("Select…"))});
    left->addRow(tr("Quantity"), itemField<ChoiceBox>("quantitymethod"));
    left->addRow({}, itemField<QCheckBox>("exportgoogle", tr("Include in the product feed")));
    auto* right = new FormGrid;
    auto* code = itemField<QPlainTextEdit>("buttoncode");
    code->setFixedHeight(110);
    code->setTabChangesFocus(true);
    right->addRow(tr("Button code"), code);
    right->addRow({}, itemField<QCheckBox>("hidebuttoncode", tr("No button while out of stock")));
    QWidget* tab = twoColumns(left, right);
    helpTopic::set(*tab, "item#website");
    return tab;
}

QWidget* ItemEditor::makeUsedInTab()
{
    QWidget* tab = tabPage("item#used");
    tab->layout()->addWidget(new GroupHeader(tr("Used in")));
    RecordTable* table = cardTable("usedIn", tr("Used in"), tr("No collective item is made of this one"));
    new ListBinder(m_items.usedIn, table);
    connect(table, &QAbstractItemView::activated, this, [this] {
        if (mayLeave(tr("Not saved yet: opening the other again drops the changes")))
            m_items.openUsedIn();
    });
    tab->layout()->addWidget(new CardFrame(table));
    return tab;
}

QWidget* ItemEditor::makePartsTab()
{
    QWidget* tab = tabPage("item#collective");
    auto* column = static_cast<QVBoxLayout*>(tab->layout());
    auto* header = new GroupHeader(tr("Made of"));
    header->addButton(itemField<Button>("pickConstituent", tr("Add item…")));
    header->addButton(itemField<Button>("removeConstituent", tr("Remove")));
    column->addWidget(header);
    RecordTable* table = cardTable("parts", tr("Made of"), tr("Made of nothing yet"));
    table->setUnit(RowDelegate::Unit::cells);
    new ListBinder(m_items.constituentTable, table);
    connect(table, &RecordTable::removalWanted, this, [this] { m_items.form.removeConstituent.trigger(); });
    column->addWidget(new CardFrame(table), 3);
    column->addSpacing(8);
    auto* missing = new GroupHeader(tr("Missing to make"));
    auto* count = itemField<NumberField>("numberToMake");
    count->setFixedWidth(90);
    count->setAccessibleName(tr("How many to make"));
    auto* countLabel = new Label(tr("How many"), LabelSize::body, LabelTone::secondary);
    countLabel->setBuddy(count);
    missing->addButton(countLabel);
    missing->addButton(count);
    column->addWidget(missing);
    RecordTable* shortages = cardTable("shortages", tr("Missing to make"), tr("Nothing is missing"));
    new ListBinder(m_items.shortages, shortages);
    column->addWidget(new CardFrame(shortages), 2);
    return tab;
}

QWidget* ItemEditor::makeFooter()
{
    auto* footer = new FooterBar;
    auto* similar = itemField<Button>("createSimilar", tr("Create Similar"));
    similar->setToolTip(tr("Saves this one and goes on with a copy under a new code"));
    footer->addLeft(similar);
    footer->addRight(itemField<Button>("cancel", tr("Cancel")));
    footer->addRight(itemField<PrimaryButton>("save", tr("Save")));
    return footer;
}
