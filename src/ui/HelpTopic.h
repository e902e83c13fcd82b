// Which page of the manual is about a widget. A window, or a part of one that has a page of its own, names its topic once; what stands
// in it answers the nearest name outwards.
#pragma once

#include <QString>

class QWidget;

namespace helpTopic {

/// topic: of the manual, perhaps with a heading ("orders#lines").
void set(QWidget& widget, const QString& topic);
/// The topic for somebody who works in the widget; empty when nothing around it names one.
QString of(const QWidget* widget);
/// What the person works in now: what has the keyboard, or else the window in front.
QString inFront();

} // namespace helpTopic
