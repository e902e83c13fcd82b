// The program's own file calls as they pass through the tests, which can see them and let some fail.
#pragma once

#include <QString>
#include <QStringList>

/// Watches from its making to its end; one at a time.
class FileCalls {
public:
    FileCalls();
    ~FileCalls();
    FileCalls(const FileCalls&) = delete;
    FileCalls& operator=(const FileCalls&) = delete;

    /// What was flushed, by path.
    QStringList flushed;
    /// The path that fails to be flushed, if any.
    QString failing;
    /// Whether nothing can be flushed any more once that path has failed.
    bool failsFromThenOn = false;
    /// Whether files can have second names.
    bool hasHardLinks = true;
    /// Whether the rights of what is there already can be set.
    bool hasRights = true;
    /// The name of what cannot be removed, if any.
    QString staying;

    bool hasFailed = false;
};
