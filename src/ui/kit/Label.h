// Words on a window: always plain text, in one of the few sizes and tones of the program.
#pragma once

#include <QLabel>

enum class LabelSize { body, strong, small, tableHeading, group, large, figures, heading, welcome, balance, tender, change, total };
enum class LabelTone { normal, secondary, accent, error, warning, moneyBack };

class Label : public QLabel {
    Q_OBJECT
public:
    explicit Label(
        const QString& text = {}, LabelSize size = LabelSize::body, LabelTone tone = LabelTone::normal, QWidget* parent = nullptr);

    void setSize(LabelSize size);
    void setTone(LabelTone tone);
};

/// A label for a heading that is elided at its end instead of widening its window; the whole text is its tooltip then.
class ElidedLabel : public Label {
    Q_OBJECT
public:
    using Label::Label;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};
