// Runs a function whenever what is selected in a list may have changed: a row was chosen, or the selected one went.
#pragma once

#include "storage/qvDataSource.h"

#include <functional>

class SelectionWatch : private ListObserver {
public:
    /// The list outlives the watch.
    SelectionWatch(qvDataSource& source, std::function<void()> changed) : m_source(source), m_changed(std::move(changed))
    {
        m_source.addObserver(*this);
    }
    ~SelectionWatch() override { m_source.removeObserver(*this); }
    SelectionWatch(const SelectionWatch&) = delete;
    SelectionWatch& operator=(const SelectionWatch&) = delete;

private:
    void listReset() override { m_changed(); }
    void rowChanged(int) override { }
    void selectionChanged() override { m_changed(); }

    qvDataSource& m_source;
    std::function<void()> m_changed;
};
