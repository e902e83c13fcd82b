// The tips shown at the start: which of them comes next, and whether any does.
//
// The very first start shows the first one; after the last comes the second, so the first is never seen again.
#pragma once

#include "desktop/Form.h"

class PrefsForm;
class SettingsStore;

class TipsForm : public Form {
public:
    TextField tip {*this, "tip"};
    FlagField dontShowTips {*this, "dontShowTips"};
    CommandField next {*this, "nextTip"};
    CommandField cancel {*this, "closeTips"};
};

class Tips {
public:
    /// The switch of the preferences follows the one of the tips, and the other way round. resources: the folder that has "tips/tips.txt",
    /// a tip a line.
    Tips(SettingsStore& store, PrefsForm& preferences, const QString& resources);

    TipsForm form;

    /// At the start: shows the next tip unless they are switched off.
    void begin();
    /// Shows the next tip and remembers which it was; nothing when there are none.
    void showNext();

private:
    void handleSwitch(bool dontShow);
    int nextIndex() const;

    SettingsStore& m_store;
    PrefsForm& m_preferences;
    QStringList m_tips;
};
