// Push buttons. A window has one filled button at most; what can lose data is red text; what is merely at hand is
// text in the accent colour.
#pragma once

#include <QPushButton>

class Button : public QPushButton {
    Q_OBJECT
public:
    enum class Kind { normal, primary, text, danger };
    /// Tall buttons stand at the checkout; narrow ones belong to a figure beside them.
    enum class Size { normal, tall, narrow };

    explicit Button(const QString& text = {}, QWidget* parent = nullptr);
    Button(const QString& text, Kind kind, QWidget* parent = nullptr);

    Kind kind() const { return m_kind; }
    void setKind(Kind kind);
    void setSize(Size size);
    /// An icon of the program left of the text, in the button's colour.
    void setGlyph(const QString& name);
    /// Keys that press the button from anywhere in its window; the tooltip tells them.
    void setKeys(const QKeySequence& keys);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void takeGlyph();

    Kind m_kind = Kind::normal;
    QString m_glyph;
};

class PrimaryButton : public Button {
    Q_OBJECT
public:
    explicit PrimaryButton(const QString& text = {}, QWidget* parent = nullptr);
};

class TextButton : public Button {
    Q_OBJECT
public:
    explicit TextButton(const QString& text = {}, QWidget* parent = nullptr);
};

class DangerButton : public Button {
    Q_OBJECT
public:
    explicit DangerButton(const QString& text = {}, QWidget* parent = nullptr);
};
