#include "app/KeptList.h"

#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Dates.h"

#include <QFileInfo>

namespace {

/// What the person reads about it.
const char* wordsFor(KeptFor reason)
{
    switch (reason) {
    case KeptFor::unreadable: return "Could not be read";
    case KeptFor::foreign: return "Written by somebody else while it was open here";
    case KeptFor::unsaved: return "Could not be saved";
    case KeptFor::displaced: return "Saved while its folder was away";
    case KeptFor::attachments: return "Attachments of a deleted order";
    case KeptFor::pictures: return "Picture of an item, taken away or replaced";
    case KeptFor::upgraded: return "As it was before templates and reports were upgraded";
    case KeptFor::unknown: break;
    }
    return "Kept";
}

std::vector<TextRows::Column> keptColumns()
{
    return {{localText("When"), 180}, {localText("Name"), 180}, {localText("Why it is here"), 280}, {localText("Where it came from"), 320}};
}

} // namespace

KeptList::KeptList(KeptListNeeds needs) : TextRows(needs.sorting, needs.beeper, keptColumns()), m_needs(needs)
{
    refresh();
}

void KeptList::refresh()
{
    m_things = m_needs.recovery.things();
    std::vector<std::vector<std::string>> rows;
    for (const KeptThing& thing : m_things)
        rows.push_back({dates::write(thing.since, "%Y-%m-%d %H:%M"), thing.name.toStdString(),
            localText(wordsFor(thing.reason)).toStdString(), thing.origin.toStdString()});
    setRows(rows);
}

const KeptThing* KeptList::selectedThing() const
{
    const std::vector<std::size_t> places = selectedPlaces();
    return places.empty() ? nullptr : &m_things[places.front()];
}

void KeptList::show()
{
    if (const KeptThing* thing = selectedThing())
        m_needs.opener.revealFolder(QFileInfo(thing->path).isDir() ? thing->path : QFileInfo(thing->path).path());
}

void KeptList::saveCopy()
{
    const KeptThing* thing = selectedThing();
    if (!thing)
        return;
    const QString title = localText("Save a copy");
    const std::optional<QString> target = m_needs.panels.saveFile({title, {}, {}, thing->name, {}, {}});
    if (!target)
        return;
    if (const Result<void> copied = RecoveryStore::copyOut(*thing, *target); !copied)
        m_needs.alerts.ask({title, QString::fromStdString(copied.error().message), {localText("OK")}});
}
