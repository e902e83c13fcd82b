// What the window tests share: the whole application on a temporary home with its windows, and ways to use them as a person does.
#pragma once

#include "kit/KitTest.h"
#include "support/Scenario.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/SheetStack.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QWidget>

namespace uitest {

using kittest::keyboard;
using kittest::show;

/// The child of that name; a missing one fails the test and ends it at the first use.
template <class Widget>
Widget* child(const QWidget& window, const char* name)
{
    auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << "no \"" << name << "\"";
    return found;
}

/// The child of that name that is not on a hidden tab.
template <class Widget>
Widget* seenChild(const QWidget& window, const char* name)
{
    for (Widget* candidate : window.findChildren<Widget*>(QString::fromLatin1(name))) {
        if (candidate->isVisible())
            return candidate;
    }
    ADD_FAILURE() << "no \"" << name << "\" is seen";
    return nullptr;
}

/// Replaces what the field holds, key by key.
inline void type(QLineEdit& field, const QString& text)
{
    field.setFocus();
    field.selectAll();
    if (text.isEmpty())
        QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

inline void press(QAbstractButton& button)
{
    QTest::mouseClick(&button, Qt::LeftButton);
}

/// Lets queued calls and timers run.
inline void settle()
{
    QTest::qWait(20);
}

} // namespace uitest
