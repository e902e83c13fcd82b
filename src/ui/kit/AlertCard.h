// A question or message that stops the program until it is answered.
#pragma once

#include "ui/kit/Sheet.h"

class AlertCard : public Sheet {
    Q_OBJECT
public:
    enum class Icon { warning, information, locked };
    struct Options {
        Icon icon = Icon::warning;
        /// Index of the button that can lose data, or none. It is red text and never pressed by Return: another one has the keyboard.
        int destructive = none;
        /// Facts under the text, as label and value.
        QList<QPair<QString, QString>> facts;
        static constexpr int none = -1;
    };

    /// Everything is shown as plain text. The first button stands rightmost and is the one Return presses, the second left of it, a third
    /// at the left edge. Without buttons there is "OK".
    AlertCard(QWidget* host, const QString& title, const QString& text, const QStringList& buttons, const Options& options);

    /// Shows the alert over the window of the parent, or as a window of its own when there is none, and waits. Answers the index of the
    /// pressed button, or -1 for Esc and closing.
    static int ask(QWidget* parent, const QString& title, const QString& text, const QStringList& buttons, const Options& options);
    static int ask(QWidget* parent, const QString& title, const QString& text, const QStringList& buttons);

    /// In the order given.
    const QList<QPushButton*>& buttons() const { return m_buttons; }
    QString title() const { return m_title; }
    QString text() const { return m_text; }

    static constexpr int cardWidth = 440;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addWords(const Options& options);
    QWidget* makeText();
    void addButtons(const QStringList& titles, const Options& options);
    void arrangeButtons();

    QString m_title;
    QString m_text;
    QList<QPushButton*> m_buttons;
};
