// What the orders page shows while there is no order: where to begin.
#pragma once

#include <QWidget>

class ActionCard;

class WelcomeView : public QWidget {
    Q_OBJECT
public:
    explicit WelcomeView(QWidget* parent = nullptr);
    void focusFirst();
    /// What the person calls an order and an item.
    void setWords(const QString& order, const QString& item);

Q_SIGNALS:
    void newOrder();
    void newContact();
    void newItem();
    void sampleBusiness();

private:
    ActionCard* m_first;
    ActionCard* m_newItem;
    ActionCard* m_newOrder;
};
