// The texts of a list's cells, each cut to its cell and its glyphs found. Finding them costs more than all else that painting a cell
// takes, and most of what is painted was painted before.
#pragma once

#include <QCache>
#include <QFont>
#include <QTextLayout>

#include <utility>

class CellTexts {
public:
    /// The text as one line of at most that width. Good until the next one is asked for.
    const QTextLayout& shown(const QString& text, int width, const QFont& font);

private:
    /// About what a large screen shows.
    static constexpr int mostTexts = 1000;

    QFont m_font;
    /// By text and width.
    QCache<std::pair<QString, int>, QTextLayout> m_texts {mostTexts};
};
