// Colours to choose one from, as a block of small squares. One of them may be chosen; arrow keys go from square to square.
#pragma once

#include <QColor>
#include <QWidget>

class QButtonGroup;

class ColourPalette : public QWidget {
    Q_OBJECT
public:
    /// Offers the colours that can be told from each other as the tint of a row.
    explicit ColourPalette(const QString& name, QWidget* parent = nullptr);

    /// Marks the square of that colour, or none, without telling chosen().
    void setColour(const QColor& colour);
    /// The marked colour; invalid when none is.
    QColor colour() const;

    static constexpr int squareSize = 30;

Q_SIGNALS:
    /// The person chose.
    void chosen(const QColor& colour);

private:
    QButtonGroup* m_squares;
};
