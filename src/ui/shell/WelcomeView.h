// What the orders page shows while there is no order: where to begin.
#pragma once

#include <QWidget>

class ActionCard;

class WelcomeView : public QWidget {
    Q_OBJECT
public:
    explicit WelcomeView(QWidget* parent = nullptr);
    void focusFirst();

Q_SIGNALS:
    void newOrder();
    void newContact();
    void newItem();
    void sampleBusiness();

private:
    ActionCard* m_first;
};
