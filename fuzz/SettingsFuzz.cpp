// A settings file of any contents reads, or its bytes are kept; a setting changed then comes back after writing.
#include "Fuzz.h"
#include "foundation/SafeFile.h"
#include "storage/FileSettingsStore.h"
#include "storage/FolderProperties.h"
#include "storage/RecoveryStore.h"

#include <QDirIterator>

namespace {

bool isKept(const QString& folder, std::string_view bytes)
{
    for (QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        if (readWholeFile(files.next().toStdString()).bytes == bytes)
            return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    quieten();
    const FixedClock clock;
    const QString recoveryFolder = fuzzFolder() + "/Recovery";
    QDir(recoveryFolder).removeRecursively();
    RecoveryStore recovery(recoveryFolder, clock);
    const QString path = fuzzFolder() + "/info.plist";
    const std::string_view bytes = inputText(data, size);
    writeInput(path, bytes);
    {
        FileSettingsStore store(path, recovery);
        for (const char* key : {settings::currency, settings::statuses, settings::taxRates, "x"}) {
            store.text(key);
            store.flag(key);
        }
        store.setText(settings::currency, "$");
        expect(static_cast<bool>(store.flush()), "the settings can be written");
        expect(store.takeDamage().isEmpty() || isKept(recoveryFolder, bytes), "what did not read is kept");
    }
    FileSettingsStore again(path, recovery);
    expect(again.takeDamage().isEmpty(), "what was written reads");
    expect(again.text(settings::currency) == "$", "a setting comes back");

    writeInput(path, bytes);
    FolderProperties properties(recovery);
    properties.objectForKey(fuzzFolder(), "dbName");
    properties.setObjectForKey(fuzzFolder(), "Shop", "dbName");
    expect(properties.objectForKey(fuzzFolder(), "dbName") == "Shop", "a property comes back");
    return 0;
}
