// The program's own texts, looked up by their English wording so that a table can translate them.
#pragma once

#include <QHash>
#include <QString>

/// The text in the language in force; the wording itself where the table has no entry.
QString localText(const char* wording);

/// Replaces the table of translations (wording -> text). Called once at start-up, before any text is asked for.
void setTextTable(QHash<QString, QString> table);
