// The window of the item editor.
#pragma once

#include "ui/EditorWindow.h"

class ItemManager;

class ItemEditor : public EditorWindow {
    Q_OBJECT
public:
    explicit ItemEditor(ItemManager& items);

private:
    QWidget* makeItemTab();
    QWidget* makePartsTab();
    QWidget* makeMoreTab();
    QWidget* makeFooter();

    ItemManager& m_items;
};
