// The place below an order's lines where the next one is typed or scanned: a bar code, a code or a name, also with a number before it
// ("3x M-1" or "3*M-1").
#pragma once

#include <QString>

#include <functional>
#include <vector>

class Beeper;
class Item;
class ItemFinder;
class OrderForm;

struct LineEntryNeeds {
    OrderForm& form;
    ItemFinder& finder;
    Beeper& beeper;
    /// Puts so many of the item on the order; answers whether the line was made.
    std::function<bool(Item&, int count)> add;
    /// The same for a line that is from no item.
    std::function<bool(const QString& description)> addFree;
};

class LineEntry {
public:
    explicit LineEntry(LineEntryNeeds needs);

    /// For another order: nothing is typed yet.
    void clear();
    /// The next or the previous of the items offered is chosen; from none the first or the last.
    void step(int by);
    /// Esc: first the list goes, then what was typed. Answers whether there was anything to leave.
    bool leave();
    /// The list shows only while the field has the keyboard.
    void setTyping(bool typing);

private:
    void search();
    void enter();
    void enterFree();
    void offer(std::vector<Item*> items, int count);
    void add(Item& item, int count);
    void done();
    void refuse(const QString& why);
    bool isEmpty() const;

    LineEntryNeeds m_needs;
    /// What the list offers, row by row.
    std::vector<Item*> m_offered;
    int m_offeredCount = 1;
};
