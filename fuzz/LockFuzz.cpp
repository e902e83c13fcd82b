// A lock file of any contents is still a lock: it can be told about, forced open, and its contents are kept.
#include "Fuzz.h"
#include "foundation/SafeFile.h"
#include "foundation/plist/PlistReader.h"
#include "storage/DatabaseLock.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    quieten();
    const FixedClock clock;
    const FixedUser user;
    DatabaseLock lock(clock, user);
    lock.setFolder(fuzzFolder());
    writeInput(lock.path(), inputText(data, size));
    expect(lock.exists(), "a lock of any contents is one");
    expect(!lock.isOurs(), "it is not ours");
    const Result<bool> acquired = lock.acquire();
    expect(acquired && !acquired.value(), "a foreign lock is not taken over");
    const LockInfo info = lock.read();
    expect(static_cast<bool>(lock.forceOpen()), "it can be forced open");
    expect(!lock.exists(), "then it is gone");
    const QStringList kept = QDir(fuzzFolder()).entryList({"unlock*.xml"}, QDir::Files);
    expect(kept.size() == 1, "its contents are kept");
    const std::string path = (fuzzFolder() + '/' + kept.front()).toStdString();
    const Result<PlistValue> contents = plist::read(readWholeFile(path).bytes);
    expect(contents && contents.value().isDict(), "what is kept reads");
    for (const auto& [key, value] : info.contents.dict())
        expect(contents.value().find(key) != nullptr, "nothing of it is missing");
    QFile::remove(QString::fromStdString(path));
    return 0;
}
