// What has the keyboard in the window in front, as it goes on paper, and the key that puts it there.
#pragma once

class QWidget;
class Vendaro;
struct FrontView;

/// The list or the text with the keyboard; a cell being edited counts as its list. Nothing when something else has it.
FrontView firstResponder();

/// Gives a window the key that prints.
void addPrintKey(QWidget* window, Vendaro& vendaro);
