// The tasks and the goals, and their files "actions.xml" and "goals.xml". Tasks are read before goals, which name them by id.
#pragma once

#include "storage/CollectionFile.h"
#include "tasks/Goal.h"

/// The tasks.
class ActionManager : public Collection<Action> {
public:
    using Collection::Collection;
};

/// The goals.
class GoalManager : public Collection<Goal> {
public:
    using Collection::Collection;
};

class ActionFile : public CollectionFile<Action> {
public:
    explicit ActionFile(ActionManager& tasks) : CollectionFile(tasks, recordFiles::tasks, "actions", "actions") { }

    const char* recordName() const override { return "Task"; }
    /// By goals.
    bool isNamedOnlyWhileThere() const override { return true; }

protected:
    std::unique_ptr<Action> make() const override { return std::make_unique<Action>(); }
    std::span<const std::string_view> titleKeys() const override { return keys; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }
    void visitLinks(StoredRecord<Action>& stored, TextStore&, const UseLink& use) const override;

private:
    static constexpr std::array<std::string_view, 1> keys {"title"};
    static constexpr std::array<std::string_view, 4> telling {"title", "details", "startdate", "order"};
};

class GoalFile : public CollectionFile<Goal> {
public:
    GoalFile(GoalManager& goals, ActionManager& tasks)
        : CollectionFile(goals, "goals.xml", "goals", "goals")
        , m_goals(goals)
        , m_tasks(tasks)
    {
    }

    const char* recordName() const override { return "Goal"; }
    /// Of what stands among the goals only goals count.
    std::optional<std::uint64_t> changes() const override { return std::nullopt; }
    void forget() override;
    std::string leftOut() const override;

protected:
    std::span<const NestedKey<Goal>> nestedKeys() const override;
    std::unique_ptr<Goal> make() const override { return std::make_unique<Goal>(); }
    /// Ids that name no task are skipped; what is no id at all is told.
    void added(Goal& goal, const StoredRecord<Goal>& stored) override;
    void replaced(Goal& goal, const StoredRecord<Goal>& stored) override;
    Goal::Nested nestedOf(const Goal& goal) const override { return {goal.getActionsAsID()}; }
    std::span<const std::string_view> titleKeys() const override { return keys; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }
    void visitLinks(StoredRecord<Goal>& stored, TextStore&, const UseLink& use) const override;
    void leaveOutMissing(StoredRecord<Goal>& stored, const IdChanges& changes) const override;

private:
    static constexpr std::array<std::string_view, 1> keys {"name"};
    static constexpr std::array<std::string_view, 2> telling {"name", "details"};
    /// Undoing a deletion in the outline can put a task among the goals: it stays in its own file.
    void collect(StoredRecords<Goal>& records) const override;

    GoalManager& m_goals;
    ActionManager& m_tasks;
    std::string m_leftOut;
};
