// The sheets of the main window: who holds the lock, and how dates are written.
#pragma once

#include "ui/kit/Sheet.h"

class QRadioButton;
struct LockInfo;

class LockSheet : public Sheet {
    Q_OBJECT
public:
    LockSheet(const LockInfo& lock, QWidget* host);

Q_SIGNALS:
    void unlockWanted();
};

class DateFormatSheet : public Sheet {
    Q_OBJECT
public:
    explicit DateFormatSheet(QWidget* host);
    bool monthFirst() const;

private:
    QRadioButton* m_dayFirst;
    QRadioButton* m_monthFirst;
};
