// The strip under an order's lines where the next one is typed or scanned, and the list of items that opens above it while typing.
#pragma once

#include <QObject>

class CardFrame;
class LineEntry;
class OrderForm;
class PickList;
class QKeyEvent;
class QLineEdit;
class QWidget;

class LineEntryStrip : public QObject {
    Q_OBJECT
public:
    /// The list opens inside the page, over the card.
    LineEntryStrip(OrderForm& form, LineEntry& entry, CardFrame* card, QWidget* page);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addNote(CardFrame* card);
    void addButtons(CardFrame* card);
    void addList(QWidget* page);
    void place();
    bool isOurs(const QKeyEvent& key) const;
    bool press(const QKeyEvent& key);

    OrderForm& m_form;
    LineEntry& m_entry;
    QLineEdit* m_field;
    PickList* m_list = nullptr;
};
