// The window of the item editor.
#pragma once

#include "ui/EditorWindow.h"

class ItemManager;

class ItemEditor : public EditorWindow {
    Q_OBJECT
public:
    explicit ItemEditor(ItemManager& items);

protected:
    /// What came by a command counts like what was typed.
    bool hasSomethingToLose() const override;

private:
    QWidget* makeItemTab();
    QWidget* makeMoreTab();
    QWidget* makeWebsiteTab();
    QWidget* makeUsedInTab();
    QWidget* makePartsTab();
    QWidget* makeFooter();

    ItemManager& m_items;
};
