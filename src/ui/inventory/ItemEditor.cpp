#include "ui/inventory/ItemEditor.h"

#include "inventory/ItemManager.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/ListBinder.h"
#include "ui/kit/Button.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Panels.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/TableHeader.h"
#include "ui/kit/UnderlineTabs.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

template <class Widget, class... Arguments>
Widget* itemField(const char* name, Arguments&&... arguments)
{
    auto* widget = new Widget(std::forward<Arguments>(arguments)...);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
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
    for (const char* name : {"warnlevel", "optimumqty"})
        binder.bindVisibility(name, findChild<QWidget*>(QString::fromLatin1(name) + "Label"));

    ItemForm& shown = m_items.form;
    const auto show = [&shown, header, tabs, parts] {
        header->setTitle(shown.item.text().isEmpty() ? shown.title() : shown.item.text());
        header->setSubtitle(shown.title() + " · " + shown.code.text());
        tabs->setTabVisible(tabs->indexOf(parts), shown.collective.isOn());
    };
    shown.follow({&shown.item, &shown.code, &shown.collective}, this, show);
    connect(&shown, &Form::opened, this, [tabs, show] {
        tabs->setCurrentIndex(0);
        show();
    });
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
    right->addRow(tr("Price"), itemField<NumberField>("price"), 130);
    right->addRow(tr("Cost price"), itemField<NumberField>("bought"), 130);
    right->addRow(tr("Tax code"), itemField<ChoiceBox>("taxcode"), 130);
    right->addRow(tr("Shipping"), itemField<NumberField>("shipping"), 130);
    right->addGap(16);
    right->addRow(tr("In stock"), itemField<NumberField>("qty"), 130);
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
    auto* right = new FormGrid;
    right->addRow(tr("Web page"), itemField<QLineEdit>("link"));
    right->addRow(tr("Picture's address"), itemField<QLineEdit>("imagelink"));
    return twoColumns(left, right);
}

QWidget* ItemEditor::makePartsTab()
{
    auto* tab = new QWidget;
    helpTopic::set(*tab, "item#collective");
    auto* column = new QVBoxLayout(tab);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(8);
    auto* header = new GroupHeader(tr("Made of"));
    header->addButton(itemField<Button>("pickConstituent", tr("Add item…")));
    header->addButton(itemField<Button>("removeConstituent", tr("Remove")));
    column->addWidget(header);
    auto* table = new RecordTable(RecordTable::Place::card);
    table->setUnit(RowDelegate::Unit::cells);
    table->setAccessibleName(tr("Made of"));
    table->tableHeader()->setStretchLastSection(true);
    table->setEmptyText(tr("Made of nothing yet"));
    new ListBinder(m_items.constituentTable, table);
    connect(table, &RecordTable::removalWanted, this, [this] { m_items.form.removeConstituent.trigger(); });
    connect(table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        [this](const QModelIndex& current) { m_items.constituentTable.selectConstituent(current.row()); });
    column->addWidget(new CardFrame(table), 1);
    return tab;
}

QWidget* ItemEditor::makeFooter()
{
    auto* footer = new FooterBar;
    footer->addRight(itemField<Button>("cancel", tr("Cancel")));
    footer->addRight(itemField<PrimaryButton>("save", tr("Save")));
    return footer;
}
