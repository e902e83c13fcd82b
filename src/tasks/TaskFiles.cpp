#include "tasks/TaskFiles.h"

#include "foundation/Numbers.h"
#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/PresentItem.h"

namespace {

/// Stands for what is no id at all.
constexpr int noTask = 0;

void writeTaskIds(const StoredRecord<Goal>& stored, PlistWriter& writer)
{
    writer.openArray();
    for (const int id : stored.nested.actions)
        writer.text(std::to_string(id));
    writer.closeArray();
}

bool readTaskIds(StoredRecord<Goal>& stored, const PlistValue& value, TextStore&)
{
    if (!value.isArray())
        return false;
    for (const PlistValue& id : value.array())
        stored.nested.actions.push_back(id.hasText() ? numbers::leadingInt(id.asText()) : noTask);
    return true;
}

constexpr char tasksOfGoal[] = "actions";

/// An empty list is written too, but not in the place of something else that stood there.
bool hasTaskList(const StoredRecord<Goal>& stored)
{
    return !stored.nested.actions.empty() || !stored.unknownKeys || !stored.unknownKeys->find(tasksOfGoal);
}

constexpr std::array goalNestedKeys {
    NestedKey<Goal> {tasksOfGoal, hasTaskList, writeTaskIds, readTaskIds},
};

} // namespace

void ActionFile::visitLinks(StoredRecord<Action>& stored, TextStore&, const UseLink& use) const
{
    use(recordFiles::orders, stored.values.change().order);
    use(recordFiles::lines, stored.values.change().material);
}

void GoalFile::visitLinks(StoredRecord<Goal>& stored, TextStore&, const UseLink& use) const
{
    for (int& task : stored.nested.actions)
        use(recordFiles::tasks, task);
}

void GoalFile::leaveOutMissing(StoredRecord<Goal>& stored, const IdChanges& changes) const
{
    std::erase_if(stored.nested.actions, [&](int id) { return !presentItem(m_tasks, id) && !changes.isBack(recordFiles::tasks, id); });
}

std::span<const NestedKey<Goal>> GoalFile::nestedKeys() const
{
    return goalNestedKeys;
}

void GoalFile::collect(StoredRecords<Goal>& records) const
{
    for (const dataObject* record : m_goals.records()) {
        if (const auto* goal = dynamic_cast<const Goal*>(record))
            records.push_back({goal->getID(), {}, goal->sharedValues(), nestedOf(*goal), goal->unknownKeys()});
    }
}

void GoalFile::replaced(Goal& goal, const StoredRecord<Goal>& stored)
{
    while (!goal.getActions().empty())
        goal.removeActionAtIndex(0);
    added(goal, stored);
}

void GoalFile::added(Goal& goal, const StoredRecord<Goal>& stored)
{
    for (const int id : stored.nested.actions) {
        if (Action* task = presentItem(m_tasks, id))
            goal.addAction(*task);
        else if (id == noTask && m_leftOut.empty())
            m_leftOut = "an entry among the tasks of \"" + std::string(goal.getName()) + "\" is no number of a task";
    }
}

std::string GoalFile::leftOut() const
{
    return m_leftOut.empty() ? CollectionFile::leftOut() : m_leftOut;
}

void GoalFile::forget()
{
    CollectionFile::forget();
    m_leftOut.clear();
}
