#include "ui/shell/ToolBarSheet.h"

#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/kit/PickList.h"

#include <QHBoxLayout>

#include <algorithm>

namespace {

constexpr int identifierRole = Qt::UserRole;
constexpr int listWidth = 286;
constexpr int listHeight = 380;
constexpr int moveWidth = 112;

template <class Made = Button>
Made* sheetButton(const char* name, const QString& text)
{
    auto* button = new Made(text);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

PickList::Weight weightOf(const ToolBarEntry& entry)
{
    return entry.kind == ToolBarEntry::Kind::space ? PickList::Weight::quiet : PickList::Weight::normal;
}

void addTo(PickList& list, const ToolBarEntry& entry)
{
    list.addEntry(entry.icon, entry.title, weightOf(entry))->setData(identifierRole, entry.identifier);
}

QString chosenIn(const PickList& list)
{
    const QListWidgetItem* item = list.currentItem();
    return item ? item->data(identifierRole).toString() : QString();
}

} // namespace

ToolBarSheet::ToolBarSheet(QList<ToolBarEntry> known, QStringList defaults, QWidget* host)
    : Sheet(host)
    , m_known(std::move(known))
    , m_defaults(std::move(defaults))
    , m_available(new PickList(tr("Available")))
    , m_shown(new PickList(tr("In the tool bar")))
{
    setTitle(tr("Customise Tool Bar"));
    column()->addWidget(new Label(tr("Customise Tool Bar"), LabelSize::group));
    column()->addSpacing(6);
    column()->addWidget(
        new Label(tr("Add and remove with the buttons; drag to change the order. The tool bar changes when you choose Done."),
            LabelSize::body, LabelTone::secondary));
    column()->addSpacing(16);
    column()->addLayout(makeLists());
    column()->addSpacing(16);
    column()->addLayout(makeFooter());
    for (const ToolBarEntry& each : m_known)
        addTo(*m_available, each);
    m_available->setCurrentRow(0);
    setFirstFocus(m_available);
    connect(m_available, &QListWidget::currentRowChanged, this, &ToolBarSheet::showWhatIsPossible);
    connect(m_shown, &QListWidget::currentRowChanged, this, &ToolBarSheet::showWhatIsPossible);
    connect(m_available, &QListWidget::itemDoubleClicked, this, &ToolBarSheet::addChosen);
    showWhatIsPossible();
}

QLayout* ToolBarSheet::makeLists()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    const auto addList = [row](PickList* list, const char* name) {
        auto* column = new QVBoxLayout;
        column->setSpacing(6);
        auto* heading = new Label(list->accessibleName(), LabelSize::tableHeading, LabelTone::secondary);
        heading->setBuddy(list);
        column->addWidget(heading);
        list->setObjectName(QString::fromLatin1(name));
        list->setFixedSize(listWidth, listHeight);
        column->addWidget(list);
        row->addLayout(column);
    };
    addList(m_available, "available");
    row->addLayout(makeMoves());
    addList(m_shown, "shown");
    m_shown->setDragDropMode(QAbstractItemView::InternalMove);
    return row;
}

QLayout* ToolBarSheet::makeMoves()
{
    m_add = sheetButton("add", tr("Add"));
    m_remove = sheetButton("remove", tr("Remove"));
    m_up = sheetButton("up", tr("Move Up"));
    m_down = sheetButton("down", tr("Move Down"));
    connect(m_add, &QPushButton::clicked, this, &ToolBarSheet::addChosen);
    connect(m_remove, &QPushButton::clicked, this, &ToolBarSheet::removeChosen);
    connect(m_up, &QPushButton::clicked, this, [this] { moveChosen(-1); });
    connect(m_down, &QPushButton::clicked, this, [this] { moveChosen(1); });
    auto* column = new QVBoxLayout;
    column->setSpacing(8);
    column->addStretch(1);
    for (QPushButton* button : {m_add, m_remove, m_up, m_down}) {
        if (button == m_up)
            column->addSpacing(16);
        button->setFixedWidth(moveWidth);
        column->addWidget(button);
    }
    column->addStretch(1);
    return column;
}

QLayout* ToolBarSheet::makeFooter()
{
    m_parts = new ChoiceBox({tr("Icon and text"), tr("Icon only"), tr("Text only")});
    m_parts->setObjectName("parts");
    m_parts->setAccessibleName(tr("Show"));
    m_parts->setFixedWidth(146);
    auto* parts = new Label(tr("Show"), LabelSize::body, LabelTone::secondary);
    parts->setBuddy(m_parts);
    auto* restore = sheetButton<TextButton>("restore", tr("Restore Default"));
    connect(restore, &QPushButton::clicked, this, [this] { setArrangement(m_defaults, ToolBar::Show::iconAndText); });
    auto* cancelButton = sheetButton("cancel", tr("Cancel"));
    connect(cancelButton, &QPushButton::clicked, this, &Sheet::cancel);
    auto* done = sheetButton<PrimaryButton>("done", tr("Done"));
    connect(done, &QPushButton::clicked, this, &Sheet::accept);
    setDefaultButton(done);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(parts);
    row->addWidget(m_parts);
    row->addWidget(restore);
    row->addStretch(1);
    row->addWidget(cancelButton);
    row->addWidget(done);
    return row;
}

const ToolBarEntry* ToolBarSheet::entry(const QString& identifier) const
{
    const auto found =
        std::find_if(m_known.cbegin(), m_known.cend(), [&](const ToolBarEntry& each) { return each.identifier == identifier; });
    return found == m_known.cend() ? nullptr : &*found;
}

bool ToolBarSheet::holds(const QString& identifier) const
{
    return identifiers().contains(identifier);
}

void ToolBarSheet::setArrangement(const QStringList& identifiers, ToolBar::Show show)
{
    m_shown->clear();
    for (const QString& identifier : identifiers)
        put(identifier, m_shown->count());
    m_parts->setCurrentIndex(static_cast<int>(show));
    showWhatIsPossible();
}

QStringList ToolBarSheet::identifiers() const
{
    QStringList identifiers;
    for (int row = 0; row < m_shown->count(); ++row)
        identifiers += m_shown->item(row)->data(identifierRole).toString();
    return identifiers;
}

ToolBar::Show ToolBarSheet::shownParts() const
{
    return static_cast<ToolBar::Show>(m_parts->currentIndex());
}

void ToolBarSheet::put(const QString& identifier, int row)
{
    const ToolBarEntry* known = entry(identifier);
    if (!known)
        return;
    addTo(*m_shown, *known);
    m_shown->insertItem(row, m_shown->takeItem(m_shown->count() - 1));
}

void ToolBarSheet::addChosen()
{
    if (!m_add->isEnabled())
        return;
    // Behind the entry that is chosen there, else at the end.
    const int row = m_shown->currentRow() < 0 ? m_shown->count() : m_shown->currentRow() + 1;
    put(chosenIn(*m_available), row);
    m_shown->setCurrentRow(row);
    showWhatIsPossible();
}

void ToolBarSheet::removeChosen()
{
    delete m_shown->takeItem(m_shown->currentRow());
    showWhatIsPossible();
}

void ToolBarSheet::moveChosen(int steps)
{
    const int row = m_shown->currentRow();
    m_shown->insertItem(row + steps, m_shown->takeItem(row));
    m_shown->setCurrentRow(row + steps);
}

void ToolBarSheet::showWhatIsPossible()
{
    const ToolBarEntry* chosen = entry(chosenIn(*m_available));
    m_add->setEnabled(chosen && (chosen->kind == ToolBarEntry::Kind::space || !holds(chosen->identifier)));
    const int row = m_shown->currentRow();
    m_remove->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_shown->count());
}
