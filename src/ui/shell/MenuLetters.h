// The letters that choose the commands of a menu while it is open.
#pragma once

#include <QString>

class QMenu;

namespace menuLetters {

/// The text with "&" before the letter that chooses it: the first free one that begins a word, else the first free one of all. taken: upper
/// case; the letter is added to it. A text whose letters are all taken stays as it is.
QString mark(const QString& text, QString& taken);

/// Gives every command of the menu, and of the menus in it, that has no letter yet one of its own.
void give(QMenu& menu);

} // namespace menuLetters
