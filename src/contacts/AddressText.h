// Addresses as text: capitals put right, and an address that was copied somewhere taken apart.
#pragma once

#include <QString>
#include <QStringList>

/// The first letter of every word large, all others small. A word begins after a blank; one that begins with a digit keeps it small.
QString capitalised(const QString& text);

/// The lines of a pasted text: at line feeds, or at carriage returns where that gives less than two. Blanks at the ends of lines and empty
/// lines at the end of the text are dropped, control characters everywhere.
QStringList pastedLines(const QString& text);

/// A text of more letters is no address.
inline constexpr qsizetype longestPastedAddress = 10'000;
