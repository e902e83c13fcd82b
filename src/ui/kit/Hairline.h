// A line one pixel wide between two parts of a window.
#pragma once

#include <QFrame>

class Hairline : public QFrame {
    Q_OBJECT
public:
    explicit Hairline(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);
};
