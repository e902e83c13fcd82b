// Words that somebody typed, among the program's own.
#pragma once

#include <QString>

/// On a button or in a menu: there "&" marks a key unless it stands twice.
inline QString literal(QString words)
{
    return words.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// In the middle of a sentence: small, unless the word is capitalised for more than its beginning.
inline QString withinSentence(const QString& word)
{
    const QString small = word.toLower();
    return word.mid(1) == small.mid(1) ? small : word;
}
