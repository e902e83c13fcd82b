// An icon that is only looked at. Its words stand beside it, so assistive programs pass over it.
#pragma once

#include "ui/kit/Icons.h"

#include <QWidget>

class IconLabel : public QWidget {
    Q_OBJECT
public:
    IconLabel(const QString& iconName, IconRole role, int size, QWidget* parent = nullptr);
    void setIcon(const QString& iconName, IconRole role);
    const QString& iconName() const { return m_name; }
    /// Puts the icon on a tinted tile of this many pixels a side.
    void setTile(int side);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
    IconRole m_role;
    int m_size;
    int m_tile = 0;
};
