// Puts values where a document has tags, and a table where it has the table's tag.
#pragma once

#include <QString>

#include <optional>

class QTextDocument;
class qvDataSource;

class Substitution {
public:
    explicit Substitution(QTextDocument& document) : m_document(document) { }

    /// Every occurrence of find becomes with, in the format of the text it replaces; a missing value counts as empty. An empty
    /// value also takes along the line or the blank that some tags would leave behind.
    void replaceAllOccurencesOf(const std::optional<QString>& find, const std::optional<QString>& with);

    /// The first occurrence of the tag becomes the rows of the list, dressed by the style element. Heads repeat on every page.
    void insertTable(const QString& tag, const qvDataSource& rows, const QString& style);

private:
    void removeWithFollowing(const QString& tag, QChar following);
    std::optional<int> startOfRemoval(int start, int end, QChar following) const;
    void replaceEvery(const QString& tag, const QString& value);

    QTextDocument& m_document;
};

/// A cell's text as it may stand in a table that is read as HTML: formatting of words stays, everything else shows as written.
std::string defusedCellText(std::string text);
