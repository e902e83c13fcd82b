#include "Scenes.h"

#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/IconButton.h"
#include "ui/kit/Icons.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/PickList.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/SegmentedChoice.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QSpinBox>

namespace {

/// One kind of control in a row: normal, pressed or with a fault where that can be, disabled.
class StateGrid {
public:
    explicit StateGrid(QGridLayout* grid) : m_grid(grid) { }

    template <typename Make, typename Trouble>
    void add(const char* name, Make make, Trouble trouble)
    {
        m_grid->addWidget(new Label(QString::fromLatin1(name), LabelSize::small, LabelTone::secondary), m_row, 0);
        QWidget* normal = make();
        QWidget* troubled = make();
        QWidget* disabled = make();
        trouble(troubled);
        disabled->setEnabled(false);
        int column = 1;
        for (QWidget* widget : {normal, troubled, disabled})
            m_grid->addWidget(widget, m_row, column++, Qt::AlignLeft | Qt::AlignVCenter);
        ++m_row;
    }

private:
    QGridLayout* m_grid;
    int m_row = 0;
};

void press(QWidget* widget)
{
    static_cast<QAbstractButton*>(widget)->setDown(true);
}

void spoil(QWidget* widget)
{
    look::setFault(widget, look::Fault::wrong);
}

void leave(QWidget*) { }

void check(QWidget* widget)
{
    static_cast<QAbstractButton*>(widget)->setChecked(true);
}

void addButtons(StateGrid& states)
{
    for (const Button::Kind kind : {Button::Kind::normal, Button::Kind::primary, Button::Kind::text, Button::Kind::danger})
        states.add(
            "Button", [kind] { return new Button(QStringLiteral("Save order"), kind); }, press);
    states.add(
        "With icon",
        [] {
            auto* button = new Button(QStringLiteral("Print"));
            button->setGlyph(QStringLiteral("document-print"));
            return button;
        },
        press);
    states.add(
        "Primary with icon",
        [] {
            auto* button = new PrimaryButton(QStringLiteral("Print"));
            button->setGlyph(QStringLiteral("document-print"));
            return button;
        },
        press);
    states.add(
        "Tall",
        [] {
            auto* button = new Button(QStringLiteral("Full amount"));
            button->setSize(Button::Size::tall);
            return button;
        },
        press);
    states.add(
        "Icon", [] { return new IconButton(QStringLiteral("list-add"), QStringLiteral("Add")); }, press);
    states.add(
        "Segments",
        [] {
            return new SegmentedChoice({QStringLiteral("%"), QStringLiteral("£")});
        },
        [](QWidget* widget) { static_cast<SegmentedChoice*>(widget)->setIndex(1); });
    states.add(
        "Check box", [] { return new QCheckBox(QStringLiteral("Invoice sent")); }, check);
    states.add(
        "Checked",
        [] {
            auto* box = new QCheckBox(QStringLiteral("Invoice sent"));
            box->setChecked(true);
            return box;
        },
        [](QWidget* widget) { static_cast<QCheckBox*>(widget)->setCheckState(Qt::PartiallyChecked); });
    states.add(
        "Radio",
        [] {
            auto* button = new QRadioButton(QStringLiteral("Against an order"));
            button->setAutoExclusive(false);
            return button;
        },
        check);
}

void addFields(StateGrid& states)
{
    states.add(
        "Text", [] { return new QLineEdit(QStringLiteral("LS21 1HB")); }, spoil);
    states.add(
        "Placeholder",
        [] {
            auto* field = new QLineEdit;
            field->setPlaceholderText(QStringLiteral("https://"));
            return field;
        },
        spoil);
    states.add(
        "Read-only",
        [] {
            auto* field = new QLineEdit(QStringLiteral("INV1238"));
            field->setReadOnly(true);
            return field;
        },
        spoil);
    states.add(
        "Number",
        [] {
            auto* field = new NumberField;
            field->setText(QStringLiteral("1,234.50"));
            return field;
        },
        spoil);
    states.add(
        "Figure", [] { return new Figure(QStringLiteral("1,234.50")); }, leave);
    states.add(
        "Big number",
        [] {
            auto* field = new NumberField;
            field->setText(QStringLiteral("50.00"));
            field->setSize(NumberField::Size::big);
            return field;
        },
        spoil);
    states.add(
        "Search",
        [] {
            auto* field = new SearchField(QStringLiteral("Search items"));
            field->setFixedWidth(180);
            return field;
        },
        [](QWidget* widget) { static_cast<QLineEdit*>(widget)->setText(QStringLiteral("oak")); });
    states.add(
        "List",
        [] {
            return new ChoiceBox({QStringLiteral("Customer"), QStringLiteral("Supplier")});
        },
        leave);
    states.add(
        "Editable list",
        [] {
            auto* box = new ChoiceBox({QStringLiteral("Customer")});
            box->setEditable(true);
            return box;
        },
        leave);
    states.add(
        "Spin", [] { return new QSpinBox; }, spoil);
    states.add(
        "Date", [] { return new QDateEdit; }, leave);
    states.add(
        "Page",
        [] {
            auto* page = new QPlainTextEdit(QStringLiteral("Two lines\nof text"));
            page->setFixedSize(180, 58);
            return page;
        },
        spoil);
    states.add(
        "Progress",
        [] {
            auto* bar = new QProgressBar;
            bar->setTextVisible(false);
            bar->setFixedWidth(160);
            bar->setValue(40);
            return bar;
        },
        leave);
}

QWidget* makeIconWall()
{
    auto* wall = new PickList(QStringLiteral("Icons"));
    for (const QString& name : Icons::names())
        wall->addEntry(name, name, name.startsWith(QLatin1String("distribute")) ? PickList::Weight::quiet : PickList::Weight::normal);
    wall->setCurrentRow(2);
    return wall;
}

QWidget* makeTypeColumn()
{
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->addWidget(new Label(QStringLiteral("Body 0123456789")));
    column->addWidget(new Label(QStringLiteral("Strong 0123456789"), LabelSize::strong));
    column->addWidget(new Label(QStringLiteral("Small 0123456789"), LabelSize::small, LabelTone::secondary));
    column->addWidget(new Label(QStringLiteral("Group heading"), LabelSize::group));
    column->addWidget(new Label(QStringLiteral("Record heading"), LabelSize::heading));
    column->addWidget(new Label(QStringLiteral("£217.24"), LabelSize::balance));
    column->addWidget(new Label(QStringLiteral("45.00"), LabelSize::tender));
    column->addWidget(new Label(QStringLiteral("5.00"), LabelSize::change, LabelTone::moneyBack));
    column->addWidget(new Label(QStringLiteral("£45.00"), LabelSize::total));
    column->addWidget(new Label(QStringLiteral("harriet@bloom.example"), LabelSize::body, LabelTone::accent));
    column->addWidget(new Label(QStringLiteral("12.5%"), LabelSize::body, LabelTone::error));
    column->addWidget(new MessageBar(MessageBar::Kind::warning, QStringLiteral("The rate “12.5%” is not a number.")));
    column->addWidget(new MessageBar(MessageBar::Kind::information, QStringLiteral("Enough parts for 2.5 kits.")));
    column->addStretch();
    return box;
}

std::unique_ptr<QWidget> makeStates()
{
    auto window = std::make_unique<QWidget>();
    look::setKind(window.get(), "window");
    window->setAttribute(Qt::WA_StyledBackground);
    window->resize(1400, 900);
    auto* row = new QHBoxLayout(window.get());
    row->setContentsMargins(16, 12, 16, 12);
    row->setSpacing(14);
    for (const auto fill : {addButtons, addFields}) {
        auto* grid = new QGridLayout;
        grid->setVerticalSpacing(10);
        grid->setHorizontalSpacing(8);
        StateGrid states(grid);
        fill(states);
        auto* column = new QVBoxLayout;
        column->addLayout(grid);
        column->addStretch();
        row->addLayout(column);
    }
    auto* last = new QVBoxLayout;
    last->addWidget(makeTypeColumn());
    last->addWidget(makeIconWall(), 1);
    row->addLayout(last, 1);
    return window;
}

} // namespace

std::vector<Scene> stateScenes()
{
    return {{QStringLiteral("states"), makeStates, [](QWidget* window) { window->findChild<QCheckBox*>()->setFocus(); }},
        {QStringLiteral("states-field"), makeStates, [](QWidget* window) { window->findChild<NumberField*>()->setFocus(); }},
        {QStringLiteral("states-list"), makeStates, [](QWidget* window) { window->findChild<PickList*>()->setFocus(); }}};
}
