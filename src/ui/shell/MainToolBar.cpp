#include "ui/shell/MainToolBar.h"

#include "ui/WindowMemory.h"

#include <QAction>
#include <QMenu>

namespace {

constexpr char spaceIdentifier[] = "space";
constexpr char flexibleSpaceIdentifier[] = "flexibleSpace";
constexpr char arrangementState[] = "toolbar";
constexpr char partsState[] = "toolbar parts";

ToolBar::Show rememberedParts()
{
    const int kept = WindowMemory::state(partsState).toInt();
    return kept >= 0 && kept <= static_cast<int>(ToolBar::Show::textOnly) ? static_cast<ToolBar::Show>(kept) : ToolBar::Show::iconAndText;
}

} // namespace

MainToolBar::MainToolBar(const QString& name, QHash<QString, QAction*> commands, QWidget* window)
    : ToolBar(name, window)
    , m_commands(std::move(commands))
{
    const QByteArray kept = WindowMemory::state(arrangementState);
    arrange(kept.isEmpty() ? defaultArrangement() : QString::fromUtf8(kept).split(','));
    setShownParts(rememberedParts());
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &MainToolBar::showMenu);
}

QStringList MainToolBar::defaultArrangement()
{
    return {"deleteItemIdentifier", spaceIdentifier, "contactItemIdentifier", "orderItemIdentifier", "itemItemIdentifier"};
}

QStringList MainToolBar::offered()
{
    return {"deleteItemIdentifier", "editItemIdentifier", "companyItemIdentifier", "contactItemIdentifier", "orderItemIdentifier",
        "itemItemIdentifier", spaceIdentifier, flexibleSpaceIdentifier};
}

void MainToolBar::arrange(const QStringList& identifiers)
{
    removeAll();
    m_arrangement.clear();
    for (const QString& identifier : identifiers) {
        if (QAction* command = m_commands.value(identifier))
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

QList<ToolBarEntry> MainToolBar::entries() const
{
    QList<ToolBarEntry> entries;
    for (const QString& identifier : offered()) {
        if (const QAction* command = m_commands.value(identifier))
            entries += {identifier, command->text(), command->data().toString(), ToolBarEntry::Kind::command};
    }
    entries += {spaceIdentifier, tr("Space"), "distribute-horizontal-equal", ToolBarEntry::Kind::space};
    entries += {flexibleSpaceIdentifier, tr("Flexible Space"), "distribute-horizontal-x", ToolBarEntry::Kind::space};
    return entries;
}

void MainToolBar::customise()
{
    auto* sheet = new ToolBarSheet(entries(), defaultArrangement(), this);
    sheet->setArrangement(m_arrangement, shownParts());
    connect(sheet, &Sheet::finished, this, [this, sheet](int answer) {
        if (answer == Sheet::accepted) {
            arrange(sheet->identifiers());
            setShownParts(sheet->shownParts());
            remember(m_arrangement);
        }
        sheet->deleteLater();
    });
    sheet->open();
}

void MainToolBar::remember(const QStringList& identifiers)
{
    // An empty bar is remembered as one space, since nothing stands for the default.
    WindowMemory::rememberState(arrangementState, (identifiers.isEmpty() ? QString(spaceIdentifier) : identifiers.join(',')).toUtf8());
    WindowMemory::rememberState(partsState, QByteArray::number(static_cast<int>(shownParts())));
}

void MainToolBar::showMenu(const QPoint& place)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Customise Tool Bar…"), this, &MainToolBar::customise);
    menu->popup(mapToGlobal(place));
}
