// Every field of every kind takes any text by name; what the record then holds comes back the same from its file.
#include "Fuzz.h"
#include "app/Vendaro.h"
#include "foundation/plist/PlistWriter.h"

namespace {

struct QuietDesktop : Alerts, Beeper, FilePanels, Opener, Printing, Clipboard {
    using Alerts::ask;
    int ask(const Alert&) override { return cancelled; }
    void beep() override { }
    std::optional<QString> openFile(const QString&) override { return {}; }
    std::optional<QString> saveFile(const SavePanel&) override { return {}; }
    void openUrl(const QUrl&) override { }
    void revealFolder(const QString&) override { }
    void setText(const QString&) override { }
    QString text() const override { return {}; }
    bool print(const QString&, const std::function<bool(QPagedPaintDevice&)>&) override { return false; }
};

/// A program that was started and never shown.
struct Program {
    Program() { app.start(); }
    QuietDesktop desktop;
    FixedClock clock;
    FixedUser user;
    Vendaro app {{desktop, desktop, clock, user, desktop, desktop, desktop, desktop, fuzzFolder() + "/none", "en_GB"}};
};

/// One record of the kind, written and read as the only one of its file.
template <class R>
class OneRecordFile : public RecordFileOf<R> {
public:
    explicit OneRecordFile(R& record) : RecordFileOf<R>("records.xml", "records", "records"), m_record(record) { }
    /// How many records were read so far.
    int adopted() const { return m_adopted; }

protected:
    bool adopt(StoredRecord<R>&& stored, const TextStorePointer& store) override
    {
        m_record.setID(stored.id);
        m_record.setValues(std::move(stored.values), store);
        m_record.setUnknownKeys(stored.unknownKeys);
        ++m_adopted;
        return true;
    }
    void bringBack(StoredRecord<R>&& stored, const TextStorePointer& store) override { adopt(std::move(stored), store); }
    void collect(StoredRecords<R>& records) const override
    {
        records.push_back({m_record.getID(), {}, m_record.sharedValues(), {}, m_record.unknownKeys()});
    }

private:
    R& m_record;
    int m_adopted = 0;
};

template <class R>
std::string written(OneRecordFile<R>& file)
{
    std::string bytes;
    PlistWriter writer([&](std::string_view part) { bytes += part; });
    file.snapshot()->write(writer);
    return bytes;
}

template <class R>
void setEveryField(R& record, std::string_view input)
{
    record.setValues({}, std::make_shared<TextStore>());
    std::size_t field = 0;
    // The input's lines go round the fields.
    while (!input.empty()) {
        const auto& row = R::fieldRows()[field++ % R::fieldRows().size()];
        const std::size_t end = std::min(input.find('\n'), input.size());
        for (const std::string_view name : row.setNames.names) {
            if (!name.empty())
                expect(record.setFieldByName(name, input.substr(0, end)), "a name that can be set is set");
        }
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    record.setFieldByName("id", input);
    for (const auto& row : R::fieldRows()) {
        for (const std::string_view name : row.readNames.names)
            record.getFieldByName(name);
        record.getDateByName(std::string(row.key) + "asdate");
    }
    for (const auto& derived : R::derivedFields())
        derived.value(record);
    record.contains("x");
    record.getNumericCode();
    record.getNumericOrdernum();

    OneRecordFile<R> file(record);
    file.forget();
    const std::string before = written(file);
    Result<std::unique_ptr<ParsedFile>> parsed = file.parse(before);
    expect(static_cast<bool>(parsed), "what was written reads");
    parsed.value()->adopt();
    expect(file.adopted() == 1, "there is still one record");
    const std::string after = written(file);
    if (after == before)
        return;
    file.parse(after).value()->adopt();
    expect(written(file) == after, "a record comes back from its file");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    quieten();
    static Program program;
    static Contact contact;
    static Order& order = program.app.getOrderManager().createAndAddDataObject();
    static Item item(program.app.getItemManager().rules());
    static Material line(program.app.getBOMManager().rules());
    static Payment payment(program.app.settingsStore());
    static Bill bill(program.app.settingsStore());
    static Action task;
    static Goal goal;
    // The first byte says which kind, the others are the input.
    if (size == 0)
        return 0;
    const std::string_view input = inputText(data + 1, size - 1);
    switch (data[0] % 8) {
    case 0: setEveryField(contact, input); break;
    case 1: setEveryField(order, input); break;
    case 2: setEveryField(item, input); break;
    case 3: setEveryField(line, input); break;
    case 4: setEveryField(bill, input); break;
    case 5: setEveryField(task, input); break;
    case 6: setEveryField(goal, input); break;
    default:
        for (const char* name : {"amount", "datepaid", "paymentmethod"})
            payment.setFieldByName(name, input);
    }
    return 0;
}
