// Where originals go before anything takes their place: damaged files, attachments of deleted orders, what could not be saved.
//
// It lies on the user's own disk whatever database is open, and only the user can look into it. Each thing stands there under the time
// it came and its own name; what is known about it stands in a small list under the same name in the hidden folder ".about".
// What comes up while the program ends is noted in it, and told at the next start.
#pragma once

#include "foundation/Result.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

class Clock;

/// Why something is kept.
enum class KeptFor {
    unreadable /* its file did not read */,
    foreign /* somebody else wrote it while it was open here */,
    unsaved /* it could not be written where it belongs */,
    displaced /* it was written while another folder stood in the place of its own */,
    attachments /* of an order that was deleted */,
    pictures /* of an item, taken away or replaced */,
    upgraded /* a template or report, as it was before the upgrade */,
    unknown
};

/// Something in the store.
struct KeptThing {
    QString path;
    /// As it was called where it came from.
    QString name;
    /// Where it came from; empty when that is not known.
    QString origin;
    KeptFor reason = KeptFor::unknown;
    /// Local time.
    QDateTime since;
};

class RecoveryStore {
public:
    /// folder: "~/Library/Application Support/Vendaro/Recovery", "~" expanded.
    RecoveryStore(QString folder, const Clock& clock) : m_folder(std::move(folder)), m_clock(clock) { }

    const QString& folder() const { return m_folder; }

    /// Copies the file, or the folder with everything in it, into the store; answers where it lies now. The same bytes of the same file are
    /// not copied again within a month.
    Result<QString> keepCopy(const QString& path, KeptFor reason);
    /// Moves the file or folder into the store.
    Result<void> moveIn(const QString& path, KeptFor reason);
    /// Keeps bytes that could not be written to the path; answers where they lie.
    Result<QString> keepBytes(const QString& path, std::string_view bytes, KeptFor reason);

    /// What was kept, the newest first. Earlier states of databases are not among them.
    std::vector<KeptThing> things() const;
    /// Copies the thing to where the user wants it; nothing that is there already is touched.
    static Result<void> copyOut(const KeptThing& thing, const QString& target);
    /// Removes a copy that a newer one took the place of.
    void giveUp(const QString& place);
    /// Puts what is older than 90 days into the desktop's trash; answers how many things went there. However old it looks, what the
    /// sentences for the person name stays. What a program that died left half written is removed.
    int cleanUp(const QStringList& sentences = {});

    /// Sentences for the person that came up when nobody could be told any more; the next start takes them.
    void leaveNote(const QStringList& sentences);
    /// The sentences that were left, oldest first; they are told once.
    QStringList takeNote();

private:
    QString notePath() const;
    /// Puts something at that place; answers false when the place is taken.
    using Placing = std::function<Result<bool>(const QString& place)>;
    /// Finds a place for something of that name, the store's folder, then the time and the name, and puts it there. A place counts as
    /// free only when the putting itself says so: nothing that was kept is ever replaced.
    Result<QString> place(const QString& name, const Placing& put);
    Result<QString> keepFolder(const QString& path, KeptFor reason);
    void describe(const QString& place, const QString& origin, KeptFor reason) const;
    std::optional<QString> keptLately(const QString& path, KeptFor reason) const;
    void removeLeftovers() const;
    QString aboutPath(const QString& place) const;
    KeptThing thingAt(const QString& place) const;

    QString m_folder;
    const Clock& m_clock;
};
