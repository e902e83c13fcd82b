#include "tasks/TaskFiles.h"

#include "foundation/Numbers.h"
#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"

namespace {

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
    for (const PlistValue& id : value.array()) {
        if (id.hasText())
            stored.nested.actions.push_back(numbers::leadingInt(id.asText()));
    }
    return true;
}

constexpr std::array goalNestedKeys {
    NestedKey<Goal> {"actions", [](const StoredRecord<Goal>&) { return true; }, writeTaskIds, readTaskIds},
};

} // namespace

std::span<const NestedKey<Goal>> GoalFile::nestedKeys() const
{
    return goalNestedKeys;
}

void GoalFile::added(Goal& goal, const StoredRecord<Goal>& stored)
{
    for (const int id : stored.nested.actions) {
        if (Action* task = m_tasks.getItemById(id))
            goal.addAction(*task);
    }
}
