// A page of text as it is stored, behind the field that shows it. The field tells of line breaks of one kind only; what the person
// does not touch keeps the ones it had, letter for letter.
#pragma once

#include <QString>

class PageText {
public:
    /// The text to show and to keep.
    void setStored(const QString& text);
    const QString& stored() const { return m_stored; }
    /// Takes over what the field holds now, as QTextDocument::toRawText() gives it: where it is the same as before, the stored text stays.
    void edit(const QString& shown);

private:
    QString m_stored;
    QString m_shown;
    /// What was set last: undoing every edit in the field brings exactly this back.
    QString m_storedAtFirst;
    QString m_shownAtFirst;
};
