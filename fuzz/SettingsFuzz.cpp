// Settings of any contents can be asked for everything, and what was set comes back. A settings file of any contents reads, or its bytes
// are kept; a setting changed then comes back after writing.
#include "Fuzz.h"
#include "foundation/Money.h"
#include "foundation/SafeFile.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"
#include "inventory/TaxRate.h"
#include "orders/StatusColours.h"
#include "storage/FileSettingsStore.h"
#include "storage/FolderProperties.h"
#include "storage/RecoveryStore.h"
#include "support/MemorySettings.h"

#include <QDirIterator>

namespace {

/// What the program asks of settings whose values nobody looked at before.
void askEverything(PlistValue values)
{
    static const MoneyFormatter money("de_DE");
    MemorySettings store;
    for (const auto& [key, value] : values.dict())
        store.set(key, value);
    const std::string status = store.text(settings::statuses).value_or(std::string());
    if (const PlistValue* colours = store.value(settings::flagColours))
        statusColour(*colours, status);
    for (const char* key : {settings::taxRate, settings::currency, settings::stockWarn, "x"}) {
        store.flag(key);
        taxRateIn(store.text(key).value_or(std::string()), money);
    }
    pricesAreExclusive(store);
    store.setText(settings::currency, "$");
    expect(store.text(settings::currency) == "$", "a setting comes back");
    values.set(settings::currency, PlistValue(std::string("$")));
    const std::string written = plist::write(values);
    const Result<PlistValue> again = plist::read(written);
    expect(again && plist::write(again.value()) == written, "settings written read the same");
}

bool isKept(const QString& folder, std::string_view bytes)
{
    for (QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        if (readWholeFile(files.next().toStdString()).bytes == bytes)
            return true;
    }
    return false;
}

void keepInFiles(std::string_view bytes)
{
    const FixedClock clock;
    const QString recoveryFolder = fuzzFolder() + "/Recovery";
    QDir(recoveryFolder).removeRecursively();
    RecoveryStore recovery(recoveryFolder, clock);
    const QString path = fuzzFolder() + "/info.plist";
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
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    quieten();
    const std::string_view bytes = inputText(data, size);
    Result<PlistValue> values = plist::read(bytes);
    if (values && values.value().isDict())
        askEverything(std::move(values).value());
    if (goesTheLongWay(data, size))
        keepInFiles(bytes);
    return 0;
}
