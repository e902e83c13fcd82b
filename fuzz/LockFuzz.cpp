// A lock file of any contents is still a lock: it can be told about, forced open, and its contents are kept.
#include "Fuzz.h"
#include "foundation/SafeFile.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/DatabaseLock.h"

#include <algorithm>
#include <array>

namespace {

/// What stands in the lock stands in the copy too, under the words of the one who forced it open.
void expectKept(const LockInfo& lock, const std::string& copy)
{
    const Result<PlistValue> kept = plist::read(copy);
    expect(kept && kept.value().isDict(), "what is kept reads");
    constexpr std::array<std::string_view, 3> added {"unlockDatetime", "unlockReason", "unlockUser"};
    for (const std::string_view key : added)
        expect(kept.value().find(key) && kept.value().find(key)->hasText(), "it says who forced the lock open");
    for (const auto& [key, value] : lock.contents.dict()) {
        const PlistValue* found = kept.value().find(key);
        const bool isReplaced = std::find(added.begin(), added.end(), key) != added.end();
        expect(found && (isReplaced || plist::write(*found) == plist::write(value)), "the rest is as it was");
    }
}

void forceOpen(std::string_view bytes)
{
    const FixedClock clock;
    const FixedUser user;
    DatabaseLock lock(clock, user);
    lock.setFolder(fuzzFolder());
    writeInput(lock.path(), bytes);
    expect(lock.exists(), "a lock of any contents is one");
    expect(!lock.isOurs(), "it is not ours");
    const Result<bool> acquired = lock.acquire();
    expect(acquired && !acquired.value(), "a foreign lock is not taken over");
    const LockInfo info = lock.read();
    const Result<bool> opened = lock.forceOpen(info);
    expect(opened && opened.value(), "it can be forced open");
    expect(!lock.exists(), "then it is gone");
    const QStringList kept = QDir(fuzzFolder()).entryList({"unlock*.xml"}, QDir::Files);
    expect(kept.size() == 1, "its contents are kept");
    const std::string path = (fuzzFolder() + '/' + kept.front()).toStdString();
    expectKept(info, std::string(readWholeFile(path).bytes));
    QFile::remove(QString::fromStdString(path));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    quieten();
    const FixedClock clock;
    const FixedUser user;
    const LockInfo lock = LockInfo::in(inputText(data, size));
    expectKept(lock, DatabaseLock(clock, user).unlockText(lock));
    if (goesTheLongWay(data, size))
        forceOpen(inputText(data, size));
    return 0;
}
