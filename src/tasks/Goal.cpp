#include "tasks/Goal.h"

void Goal::removeActionAtIndex(int index)
{
    if (index >= 0 && index < static_cast<int>(m_actions.size()))
        m_actions.erase(m_actions.begin() + index);
}

std::vector<int> Goal::getActionsAsID() const
{
    std::vector<int> ids;
    for (const Action* task : m_actions)
        ids.push_back(task->getID());
    return ids;
}

bool Goal::isComplete() const
{
    const auto complete = [](const Action* task) { return task->isComplete(); };
    return !m_actions.empty() && std::all_of(m_actions.begin(), m_actions.end(), complete);
}
