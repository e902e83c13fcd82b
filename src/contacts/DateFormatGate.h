// Whether the user has ever said how dates are written, and asking for it.
#pragma once

class DateFormatGate {
public:
    virtual ~DateFormatGate() = default;
    virtual bool isChosen() const = 0;
    /// Lets the user choose; what was about to be made has to be asked for again.
    virtual void initialiseDateFormat() = 0;
};
