#include "ui/ArrangedToolBar.h"

#include "ui/WindowMemory.h"

#include <QAction>
#include <QMenu>

namespace {

bool isGap(const QString& identifier)
{
    return identifier == ArrangedToolBar::spaceIdentifier || identifier == ArrangedToolBar::flexibleSpaceIdentifier;
}

/// A gap right behind another one: the more room of both stays.
void addGapBehindGap(QStringList& arrangement, const QString& gap)
{
    if (gap == ArrangedToolBar::flexibleSpaceIdentifier)
        arrangement.last() = gap;
}

} // namespace

ArrangedToolBar::ArrangedToolBar(const QString& name, ToolBarContents contents, QWidget* window)
    : ToolBar(name, window)
    , m_contents(std::move(contents))
{
    const QByteArray kept = WindowMemory::state(m_contents.keptAs);
    arrange(kept.isEmpty() ? defaultArrangement() : QString::fromUtf8(kept).split(','));
    setShownParts(rememberedParts());
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &ArrangedToolBar::showMenu);
}

QString ArrangedToolBar::partsKeptAs() const
{
    return m_contents.keptAs + " parts";
}

ToolBar::Show ArrangedToolBar::rememberedParts() const
{
    const int kept = WindowMemory::state(partsKeptAs()).toInt();
    return kept >= 0 && kept <= static_cast<int>(Show::textOnly) ? static_cast<Show>(kept) : Show::iconAndText;
}

QStringList ArrangedToolBar::defaultArrangement() const
{
    QStringList arrangement;
    for (const QString& identifier : m_contents.defaults) {
        if (!isGap(identifier) && !m_contents.commands.contains(identifier))
            continue;
        if (isGap(identifier) && !arrangement.isEmpty() && isGap(arrangement.last()))
            addGapBehindGap(arrangement, identifier);
        else
            arrangement += identifier;
    }
    return arrangement;
}

void ArrangedToolBar::arrange(const QStringList& identifiers)
{
    removeAll();
    m_arrangement.clear();
    for (const QString& identifier : identifiers) {
        if (!isGap(identifier) && m_arrangement.contains(identifier))
            continue;
        if (QAction* command = m_contents.commands.value(identifier))
            addCommand(command);
        else if (identifier == spaceIdentifier)
            addGap();
        else if (identifier == flexibleSpaceIdentifier)
            addFlexibleGap();
        else
            continue;
        m_arrangement += identifier;
    }
}

QList<ToolBarEntry> ArrangedToolBar::entries() const
{
    QList<ToolBarEntry> entries;
    for (const QString& identifier : m_contents.offered) {
        if (const QAction* command = m_contents.commands.value(identifier))
            entries += {identifier, command->iconText(), command->data().toString(), ToolBarEntry::Kind::command};
        else if (identifier == spaceIdentifier)
            entries += {identifier, tr("Space"), "distribute-horizontal-equal", ToolBarEntry::Kind::space};
        else if (identifier == flexibleSpaceIdentifier)
            entries += {identifier, tr("Flexible Space"), "distribute-horizontal-x", ToolBarEntry::Kind::space};
    }
    return entries;
}

void ArrangedToolBar::customise()
{
    auto* sheet = new ToolBarSheet(entries(), defaultArrangement(), this);
    sheet->setArrangement(m_arrangement, shownParts());
    connect(sheet, &Sheet::finished, this, [this, sheet](int answer) {
        if (answer == Sheet::accepted) {
            arrange(sheet->identifiers());
            setShownParts(sheet->shownParts());
            remember();
        }
        sheet->deleteLater();
    });
    sheet->open();
}

void ArrangedToolBar::remember()
{
    // An empty bar is remembered as one space, since nothing stands for the default.
    const QString kept = m_arrangement.isEmpty() ? QString(spaceIdentifier) : m_arrangement.join(',');
    WindowMemory::rememberState(m_contents.keptAs, kept.toUtf8());
    WindowMemory::rememberState(partsKeptAs(), QByteArray::number(static_cast<int>(shownParts())));
}

void ArrangedToolBar::showMenu(const QPoint& place)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Customise Tool Bar…"), this, &ArrangedToolBar::customise);
    menu->popup(mapToGlobal(place));
}
