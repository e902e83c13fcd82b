// A message in place: trouble under the thing it is about, a remark, or the state of the whole window with its way out.
#pragma once

#include <QFrame>

class Button;
class IconLabel;
class Label;
class QHBoxLayout;

class MessageBar : public QFrame {
    Q_OBJECT
public:
    enum class Kind { warning, information, readOnly };

    explicit MessageBar(Kind kind, const QString& text = {}, QWidget* parent = nullptr);

    QString text() const;
    /// One sentence with the value and the cure. An empty text hides the bar, any other shows it.
    void setText(const QString& text);
    /// A text button at the bar's right: the way out.
    Button* setAction(const QString& title);

Q_SIGNALS:
    void actionPressed();

private:
    QHBoxLayout* m_row;
    Label* m_text;
    Button* m_action = nullptr;
};
