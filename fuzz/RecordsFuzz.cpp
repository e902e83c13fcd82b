// A record file gives the same records by the short way and by the long one, and the same again after it was written.
#include "Fuzz.h"
#include "contacts/Contact.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"
#include "inventory/Item.h"
#include "inventory/Material.h"
#include "orders/Bill.h"
#include "orders/Order.h"
#include "storage/RecordFileOf.h"
#include "tasks/Action.h"
#include "tasks/Goal.h"

namespace {

/// A record file that only keeps what it reads.
template <class R>
class PlainFile : public RecordFileOf<R> {
public:
    PlainFile() : RecordFileOf<R>("records.xml", "records", "records") { }
    StoredRecords<R> records;

protected:
    bool adopt(StoredRecord<R>&& record, const TextStorePointer& store) override
    {
        m_store = store;
        records.push_back(std::move(record));
        return true;
    }
    void bringBack(StoredRecord<R>&& record, const TextStorePointer& store) override { adopt(std::move(record), store); }
    void collect(StoredRecords<R>& all) const override { all = records; }

private:
    TextStorePointer m_store;
};

void appendEscaped(std::string& xml, std::string_view text)
{
    for (const char character : text) {
        switch (character) {
        case '&': xml += "&amp;"; break;
        case '<': xml += "&lt;"; break;
        case '>': xml += "&gt;"; break;
        case '\r': xml += "&#13;"; break;
        default: xml += character;
        }
    }
}

/// The value without any blank between elements, so that no key stands where the short way looks for it.
void appendClosely(std::string& xml, const PlistValue& value)
{
    if (value.isDict()) {
        xml += "<dict>";
        for (const auto& [key, entry] : value.dict()) {
            xml += "<key>";
            appendEscaped(xml, key);
            xml += "</key>";
            appendClosely(xml, entry);
        }
        xml += "</dict>";
    } else if (value.isArray()) {
        xml += "<array>";
        for (const PlistValue& entry : value.array())
            appendClosely(xml, entry);
        xml += "</array>";
    } else {
        // A single value looks the same in the writer's own layout, once the document around it is gone.
        const std::string document = plist::write(value);
        const std::size_t start = document.find('<', document.find("<plist") + 1);
        xml += document.substr(start, document.rfind("</plist>") - start);
    }
}

/// What the bytes came to; nothing when they were refused.
template <class R>
std::unique_ptr<PlainFile<R>> readRecords(std::string_view bytes)
{
    auto file = std::make_unique<PlainFile<R>>();
    file->forget();
    Result<std::unique_ptr<ParsedFile>> parsed = file->parse(bytes);
    if (!parsed) {
        expect(!parsed.error().message.empty(), "a refusal says why");
        return nullptr;
    }
    parsed.value()->adopt();
    return file;
}

template <class R>
std::string written(const PlainFile<R>& file)
{
    std::string bytes;
    PlistWriter writer([&](std::string_view part) { bytes += part; });
    file.snapshot()->write(writer);
    return bytes;
}

template <class R>
void expectSame(const PlainFile<R>* file, const PlainFile<R>& other)
{
    expect(file != nullptr, "it reads in every layout");
    expect(file->records.size() == other.records.size(), "every layout gives as many records");
    for (std::size_t n = 0; n < file->records.size(); ++n) {
        expect(file->records[n].id == other.records[n].id, "every layout gives the same ids");
        expect(*file->records[n].values == *other.records[n].values, "every layout gives the same values");
    }
    expect(written(*file) == written(other), "every layout is written the same");
}

template <class R>
void compareWays(std::string_view bytes)
{
    const auto asItCame = readRecords<R>(bytes);
    const Result<PlistValue> tree = plist::read(bytes);
    if (!asItCame)
        return;
    expect(static_cast<bool>(tree), "what gives records is a property list");
    std::string close = "<plist version=\"1.0\">";
    appendClosely(close, tree.value());
    expectSame(readRecords<R>(close + "</plist>").get(), *asItCame);
    expectSame(readRecords<R>(plist::write(tree.value())).get(), *asItCame);
    // Keys that are written under one name and read under another change once, then never again.
    const auto once = readRecords<R>(written(*asItCame));
    expect(once != nullptr, "what was written reads");
    const auto twice = readRecords<R>(written(*once));
    expect(
        twice != nullptr && written(*twice) == written(*readRecords<R>(written(*twice))), "what was written and read is written the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const std::string_view bytes = inputText(data + 1, size - 1);
    switch (data[0] % 7) {
    case 0: compareWays<Contact>(bytes); break;
    case 1: compareWays<Order>(bytes); break;
    case 2: compareWays<Item>(bytes); break;
    case 3: compareWays<Material>(bytes); break;
    case 4: compareWays<Bill>(bytes); break;
    case 5: compareWays<Action>(bytes); break;
    default: compareWays<Goal>(bytes); break;
    }
    return 0;
}
