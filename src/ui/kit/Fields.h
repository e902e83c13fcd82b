// The fields of a form beyond the plain line of text.
#pragma once

#include <QComboBox>
#include <QLineEdit>

/// A number to type: right-aligned, so that digits line up below each other.
class NumberField : public QLineEdit {
    Q_OBJECT
public:
    /// figures is one size up, for the checkout; big is 48 px high, for the amount tendered.
    enum class Size { normal, figures, big };

    explicit NumberField(QWidget* parent = nullptr);
    void setSize(Size size);
};

/// A computed figure: no box until the pointer or the keyboard is on it, but on the same right edge as the
/// fields. Can be copied, not typed into.
class Figure : public QLineEdit {
    Q_OBJECT
public:
    explicit Figure(const QString& text = {}, QWidget* parent = nullptr);
    /// Shows the text from its start, whatever was selected.
    void setFigure(const QString& text);
};

/// A pop-up list of titles. Turning the wheel over it scrolls the window, never the choice, unless it has the keyboard.
class ChoiceBox : public QComboBox {
    Q_OBJECT
public:
    explicit ChoiceBox(QWidget* parent = nullptr);
    explicit ChoiceBox(const QStringList& titles, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
