// Questions and messages to the person at the screen.
#pragma once

#include <QString>
#include <QStringList>

#include <initializer_list>
#include <string_view>

/// The wording of one alert, declared once in desktop/AlertTexts.h. "%@" in title or text stands for a value, filled in order.
struct AlertText {
    const char* title;
    const char* text;
    /// In the order the rules give them; the first is the one Return presses, unless it can lose data.
    std::initializer_list<const char*> buttons;
    /// Index of the button that can lose data, or none.
    int destructive = noButton;

    static constexpr int noButton = -1;
};

/// One alert ready to be shown. Everything in it is plain text.
struct Alert {
    QString title;
    QString text;
    QStringList buttons;
    int destructive = AlertText::noButton;
};

/// Fills every "%@" of the pattern with the next value, in one pass: values are never looked into.
QString fillText(const QString& pattern, const QStringList& values);

/// The alert with its wording looked up in the program's text table and its values filled in, title first, then text.
Alert makeAlert(const AlertText& wording, const QStringList& titleValues = {}, const QStringList& textValues = {});

class Alerts {
public:
    virtual ~Alerts() = default;

    /// What ask() answers when the alert was dismissed without pressing a button.
    static constexpr int cancelled = -1;

    /// Shows the alert and waits. Answers the index of the pressed button, or cancelled.
    virtual int ask(const Alert& alert) = 0;

    /// Shows an alert that has no values to fill in.
    int ask(const AlertText& wording) { return ask(makeAlert(wording)); }
};
