// Where originals go before anything takes their place: damaged files, attachments of deleted orders, what could not be saved.
//
// It lies on the user's own disk whatever database is open, and only the user can look into it.
#pragma once

#include "foundation/Result.h"

#include <QString>

class Clock;

class RecoveryStore {
public:
    /// folder: "~/Library/Application Support/Vendaro/Recovery", "~" expanded.
    RecoveryStore(QString folder, const Clock& clock) : m_folder(std::move(folder)), m_clock(clock) { }

    /// Copies the file into the store; answers where it lies now.
    Result<QString> keepCopy(const QString& path);
    /// Moves the file or folder into the store.
    Result<void> moveIn(const QString& path);
    /// Keeps bytes that could not be written where they belong; answers where they lie.
    Result<QString> keepBytes(const QString& name, std::string_view bytes);

private:
    /// A new place for something of that name: the store's folder, then the time and the name.
    Result<QString> placeFor(const QString& name);

    QString m_folder;
    const Clock& m_clock;
};
