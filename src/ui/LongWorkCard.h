// Long work on the screen: a card over the window in front says how far it is, and has a button to stop it.
#pragma once

#include "desktop/LongWork.h"

class LongWorkCard : public LongWork {
public:
    /// patience: milliseconds that pass before the card is shown.
    explicit LongWorkCard(int patience = 700) : m_patience(patience) { }

    void run(const QString& title, const std::function<void(const GoesOn&)>& work) override;

private:
    int m_patience;
};
