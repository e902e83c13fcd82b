// Words that somebody typed, on a button, a tab or in a menu: there "&" marks a key unless it stands twice.
#pragma once

#include <QString>

inline QString literal(QString words)
{
    return words.replace(QLatin1Char('&'), QLatin1String("&&"));
}
