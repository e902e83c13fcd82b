// An earlier state of the open database beside what there is now: a list of what is gone or was changed since, from which records can
// be brought back. Nothing is ever taken away by it: what was added since stays, and the present state is kept as a generation first.
#pragma once

#include "foundation/Result.h"
#include "storage/Generations.h"
#include "storage/ReadFile.h"
#include "storage/RecordFile.h"
#include "storage/TextRows.h"

#include <QObject>
#include <QStringList>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <set>
#include <vector>

class DatabaseFolder;
class DatabaseSession;

struct RestoringNeeds {
    const SortSettings& sorting;
    Beeper& beeper;
    DatabaseSession& session;
    DatabaseFolder& folder;
    /// Whether an editor holds on to a record.
    std::function<bool()> isEditing;
};

class Restoring : public TextRows {
public:
    explicit Restoring(RestoringNeeds needs);
    ~Restoring() override;

    /// The states that can be looked at, the newest first.
    std::vector<Generation> generations() const;
    /// Begins to read the state, on a thread of its own. The list is empty until all of it was read; what was being read before is given
    /// up.
    void startLooking(const Generation& generation);
    /// Gives up what is being read: the list stays empty.
    void cancelLooking();
    bool isLooking() const { return m_reading != nullptr; }
    /// How much of the state was read and compared, in percent.
    std::function<void(int percent)> onProgress;
    /// The list shows how the state differs. One sentence for each file of it that could not be read.
    std::function<void(const QStringList& troubles)> onLooked;
    /// Brings the selected records back, an order with its lines.
    Result<void> bringBackSelected();
    Result<void> bringBackAll();

private:
    struct Difference {
        RecordFile* file;
        ParsedFile* parsed;
        RecordDifference record;
    };

    /// A reading that goes on; its thread asks now and then whether anybody still waits for it.
    struct Reading {
        std::atomic<bool> isGivenUp = false;
    };
    /// A file of the state, read.
    struct Part {
        RecordFile* file;
        ReadFile read;
        /// Of the state, with this one.
        int percent = 0;
    };

    void read(const std::shared_ptr<Reading>& reading, const QString& folder, const std::vector<RecordFile*>& files);
    void takeOver(Part& part);
    void finishLooking();
    void compareFile(RecordFile& file, ParsedFile& parsed);
    void compare();
    void findNewIds();
    void listDifferences();
    std::string titleOf(const Difference& difference) const;
    static std::string whatHappened(const RecordDifference& record);
    std::set<std::size_t> placesAfterComparing(const std::set<std::size_t>& chosen);
    bool addLines(std::set<std::size_t>& chosen) const;
    bool addNamed(std::set<std::size_t>& chosen) const;
    Result<void> bringBack(std::set<std::size_t> chosen);

    RestoringNeeds m_needs;
    /// None while nothing is being read.
    std::shared_ptr<Reading> m_reading;
    QStringList m_troubles;
    /// In the order of the files.
    std::vector<std::pair<RecordFile*, std::unique_ptr<ParsedFile>>> m_earlier;
    IdChanges m_newIds;
    /// One for each row.
    std::vector<Difference> m_differences;
    /// Where what was read arrives.
    QObject m_home;
    /// Those given up among them; they end before anything else of this goes.
    std::vector<std::future<void>> m_readers;
};
