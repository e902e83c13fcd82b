// The window of the order editor.
#pragma once

#include "ui/EditorWindow.h"

class BOMManager;
class Label;
class OrderManager;
class RecordHeader;
class RecordTable;
class SidePanel;
class UnderlineTabs;

class OrderEditor : public EditorWindow {
    Q_OBJECT
public:
    OrderEditor(OrderManager& orders, BOMManager& lines);

    UnderlineTabs* tabs() const { return m_tabs; }
    /// The words the user has for an order, for items and for the lines.
    void setWords(const QString& order, const QString& items, const QString& lines);
    /// How dates are written: stands beside the fields for them.
    void setDateCaption(const QString& caption);

protected:
    /// A new order's lines, payments and attachments go with it.
    bool hasSomethingToLose() const override;

private:
    QWidget* makeOrderTab();
    QWidget* makeContactTab(const QString& prefix);
    QWidget* makePaymentsTab();
    QWidget* makeRepeatTab();
    QWidget* makeSide();
    void addFigures(SidePanel& side);
    void addFlags(SidePanel& side);
    QWidget* makeFooter();
    void connectTabs();
    void showHeader();

    OrderManager& m_orders;
    BOMManager& m_lines;
    RecordHeader* m_header;
    UnderlineTabs* m_tabs;
    class GroupHeader* m_linesHeader = nullptr;
    class Button* m_pickButton = nullptr;
    Label* m_dateCaption = nullptr;
    Label* m_paidCaption = nullptr;
    RecordTable* m_lineTable = nullptr;
};
