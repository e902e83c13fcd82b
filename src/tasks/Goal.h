// A goal: a named target and the tasks that lead to it. It is complete when every one of its tasks is.
#pragma once

#include "storage/Record.h"
#include "tasks/Action.h"

#include <array>
#include <span>
#include <vector>

struct GoalValues {
    Text name;
    Text details;

    bool operator==(const GoalValues&) const = default;
};

inline constexpr std::array goalFields {
    field<&GoalValues::name>("name").searched().always(),
    field<&GoalValues::details>("details").searched().always(),
};
static_assert(namesAreUnique(goalFields));

class Goal : public Record<Goal, GoalValues> {
public:
    struct Nested {
        /// The ids of the goal's tasks.
        std::vector<int> actions;
    };
    static constexpr bool idIsSettable = false;
    static constexpr auto& fieldRows() { return goalFields; }
    static std::span<const DerivedField<Goal>> derivedFields() { return {}; }

    std::string_view getName() const { return values().name; }
    std::string_view getDetails() const { return values().details; }
    void setName(std::string_view name) { set(&GoalValues::name, name); }
    void setDetails(std::string_view details) { set(&GoalValues::details, details); }

    /// The tasks belong to the tasks collection.
    const std::vector<Action*>& getActions() const { return m_actions; }
    void addAction(Action& task) { m_actions.push_back(&task); }
    void removeAction(const Action& task) { std::erase(m_actions, &task); }
    void removeActionAtIndex(int index);
    std::vector<int> getActionsAsID() const;
    bool isComplete() const override;

private:
    std::vector<Action*> m_actions;
};
