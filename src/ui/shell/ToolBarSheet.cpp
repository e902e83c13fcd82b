#include "ui/shell/ToolBarSheet.h"

#include "ui/HelpTopic.h"
#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/shell/ToolBarList.h"

#include <QHBoxLayout>

#include <algorithm>

namespace {

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

void addTo(ToolBarList& list, const ToolBarEntry& entry)
{
    list.addEntry(entry.identifier, entry.icon, entry.title, weightOf(entry));
}

/// The tooltip tells the key that does the same in the lists.
void tellKey(QPushButton& button, const QKeySequence& key)
{
    button.setToolTip(QString("%1 (%2)").arg(button.text(), key.toString(QKeySequence::NativeText)));
}

} // namespace

ToolBarSheet::ToolBarSheet(QList<ToolBarEntry> known, QStringList defaults, QWidget* host)
    : Sheet(host)
    , m_known(std::move(known))
    , m_defaults(std::move(defaults))
    , m_available(new ToolBarList("available", tr("Available")))
    , m_shown(new ToolBarList("shown", tr("In the tool bar")))
{
    setTitle(tr("Customise Tool Bar"));
    helpTopic::set(*this, "toolbar");
    column()->addWidget(new Label(tr("Customise Tool Bar"), LabelSize::group));
    column()->addSpacing(6);
    column()->addWidget(
        new Label(tr("Drag entries into the tool bar, out of it and to their places, or use the buttons. It changes with Done."),
            LabelSize::body, LabelTone::secondary));
    column()->addSpacing(16);
    column()->addLayout(makeLists());
    column()->addSpacing(16);
    column()->addLayout(makeFooter());
    for (const ToolBarEntry& each : m_known)
        addTo(*m_available, each);
    m_available->setCurrentRow(0);
    setFirstFocus(m_available);
    connectLists();
    showWhatIsPossible();
}

void ToolBarSheet::connectLists()
{
    connect(m_available, &QListWidget::currentRowChanged, this, &ToolBarSheet::showWhatIsPossible);
    connect(m_shown, &QListWidget::currentRowChanged, this, &ToolBarSheet::showWhatIsPossible);
    connect(m_available, &QListWidget::itemDoubleClicked, this, &ToolBarSheet::addChosen);
    connect(m_available, &ToolBarList::addKeyPressed, this, &ToolBarSheet::addChosen);
    connect(m_shown, &ToolBarList::removeKeyPressed, this, &ToolBarSheet::removeChosen);
    connect(m_shown, &ToolBarList::moveKeyPressed, this, &ToolBarSheet::moveChosen);
    m_shown->setDropping(ToolBarList::Dropping::betweenEntries);
    m_shown->mayTake = [this](const ToolBarList::Dragged& dragged) {
        const bool isMove = dragged.list == m_shown->objectName();
        return isMove ? m_shown->identifierAt(dragged.row) == dragged.identifier : mayAdd(dragged.identifier);
    };
    // Back to where it came from is out of the bar.
    m_available->mayTake = [this](const ToolBarList::Dragged& dragged) {
        return dragged.list == m_shown->objectName() && m_shown->identifierAt(dragged.row) == dragged.identifier;
    };
    connect(m_available, &ToolBarList::entryDropped, this, [this](const ToolBarList::Dragged& dragged) { takeOut(dragged.row); });
    connect(m_shown, &ToolBarList::entryDropped, this, [this](const ToolBarList::Dragged& dragged, int beforeRow) {
        if (dragged.list == m_shown->objectName())
            move(dragged.row, beforeRow > dragged.row ? beforeRow - 1 : beforeRow);
        else
            put(dragged.identifier, beforeRow);
    });
}

QLayout* ToolBarSheet::makeLists()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    const auto addList = [row](ToolBarList* list) {
        auto* column = new QVBoxLayout;
        column->setSpacing(6);
        auto* heading = new Label(list->accessibleName(), LabelSize::tableHeading, LabelTone::secondary);
        heading->setBuddy(list);
        column->addWidget(heading);
        list->setFixedSize(listWidth, listHeight);
        column->addWidget(list);
        row->addLayout(column);
    };
    addList(m_available);
    row->addLayout(makeMoves());
    addList(m_shown);
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
    tellKey(*m_add, QKeySequence(Qt::Key_Insert));
    tellKey(*m_remove, QKeySequence(Qt::Key_Delete));
    tellKey(*m_up, QKeySequence(Qt::ALT | Qt::Key_Up));
    tellKey(*m_down, QKeySequence(Qt::ALT | Qt::Key_Down));
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
    m_shown->setCurrentRow(-1);
    m_parts->setCurrentIndex(static_cast<int>(show));
    showWhatIsPossible();
}

QStringList ToolBarSheet::identifiers() const
{
    QStringList identifiers;
    for (int row = 0; row < m_shown->count(); ++row)
        identifiers += m_shown->identifierAt(row);
    return identifiers;
}

ToolBar::Show ToolBarSheet::shownParts() const
{
    return static_cast<ToolBar::Show>(m_parts->currentIndex());
}

bool ToolBarSheet::mayAdd(const QString& identifier) const
{
    const ToolBarEntry* known = entry(identifier);
    return known && (known->kind == ToolBarEntry::Kind::space || !holds(identifier));
}

void ToolBarSheet::put(const QString& identifier, int row)
{
    const ToolBarEntry* known = entry(identifier);
    if (!known)
        return;
    addTo(*m_shown, *known);
    m_shown->insertItem(row, m_shown->takeItem(m_shown->count() - 1));
    m_shown->setCurrentRow(row);
    showWhatIsPossible();
}

void ToolBarSheet::takeOut(int row)
{
    delete m_shown->takeItem(row);
    showWhatIsPossible();
}

void ToolBarSheet::move(int row, int toRow)
{
    m_shown->insertItem(toRow, m_shown->takeItem(row));
    m_shown->setCurrentRow(toRow);
    showWhatIsPossible();
}

void ToolBarSheet::addChosen()
{
    if (!m_add->isEnabled())
        return;
    // Behind the entry that is chosen there, else at the end.
    const int row = m_shown->currentRow() < 0 ? m_shown->count() : m_shown->currentRow() + 1;
    put(m_available->chosen(), row);
}

void ToolBarSheet::removeChosen()
{
    takeOut(m_shown->currentRow());
}

void ToolBarSheet::moveChosen(int steps)
{
    const int row = m_shown->currentRow();
    const int toRow = row + steps;
    if (row >= 0 && toRow >= 0 && toRow < m_shown->count())
        move(row, toRow);
}

void ToolBarSheet::showWhatIsPossible()
{
    m_add->setEnabled(mayAdd(m_available->chosen()));
    const int row = m_shown->currentRow();
    m_remove->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_shown->count());
}
