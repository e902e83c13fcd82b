// The list of what lies in the recovery store, and what can be done with it.
#pragma once

#include "storage/RecoveryStore.h"
#include "storage/TextRows.h"

class Alerts;
class FilePanels;
class Opener;

struct KeptListNeeds {
    const SortSettings& sorting;
    Beeper& beeper;
    RecoveryStore& recovery;
    Alerts& alerts;
    FilePanels& panels;
    Opener& opener;
};

class KeptList : public TextRows {
public:
    explicit KeptList(KeptListNeeds needs);

    /// Looks at the store again.
    void refresh();
    /// Shows the selected thing in the desktop's file browser.
    void show();
    /// Copies the selected thing to where the person wants it.
    void saveCopy();

private:
    const KeptThing* selectedThing() const;

    KeptListNeeds m_needs;
    std::vector<KeptThing> m_things;
};
