// An earlier state of the open database beside what there is now: a list of what is gone or was changed since, from which records can
// be brought back. Nothing is ever taken away by it: what was added since stays, and the present state is kept as a generation first.
#pragma once

#include "foundation/Result.h"
#include "storage/Generations.h"
#include "storage/RecordFile.h"
#include "storage/TextRows.h"

#include <QStringList>

#include <functional>
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

    /// The states that can be looked at, the newest first.
    std::vector<Generation> generations() const;
    /// Reads the state and lists how it differs. Answers one sentence for each file of it that could not be read.
    QStringList look(const Generation& generation);
    /// Brings the selected records back, an order with its lines.
    Result<void> bringBackSelected();
    Result<void> bringBackAll();

private:
    struct Difference {
        RecordFile* file;
        ParsedFile* parsed;
        RecordDifference record;
    };

    void compare();
    void listDifferences();
    std::string titleOf(const Difference& difference) const;
    static std::string whatHappened(const RecordDifference& record);
    void addBelonging(std::set<std::size_t>& chosen) const;
    Result<void> bringBack(std::set<std::size_t> chosen);

    RestoringNeeds m_needs;
    /// In the order of the files.
    std::vector<std::pair<RecordFile*, std::unique_ptr<ParsedFile>>> m_earlier;
    /// One for each row.
    std::vector<Difference> m_differences;
};
