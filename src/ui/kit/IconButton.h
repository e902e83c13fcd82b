// A small button that shows only an icon. Its name is its tooltip and what assistive programs read.
#pragma once

#include <QToolButton>

class IconButton : public QToolButton {
    Q_OBJECT
public:
    IconButton(const QString& iconName, const QString& name, QWidget* parent = nullptr);
};
