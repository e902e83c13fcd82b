// The properties by which the style sheet tells apart the kinds of one control.
#pragma once

class QWidget;

namespace look {

/// Sets one of the style sheet's properties and repaints the widget by the rules that now apply.
void set(QWidget* widget, const char* property, const char* value);
/// Which kind of its control the widget is: "primary", "card", ...
void setKind(QWidget* widget, const char* kind);
enum class Fault { none, wrong };
/// Marks a field whose value cannot be used, or takes the mark away.
void setFault(QWidget* field, Fault fault);
/// Applies the style sheet anew, after a property changed.
void refresh(QWidget* widget);

} // namespace look
