#include "contacts/EmailExporter.h"

#include "contacts/Contact.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "storage/TableExport.h"

#include <array>

namespace {

constexpr std::array<std::string_view, 4> emailColumns {"email", "firstname", "surname", "title"};

std::string quoted(const std::string& value)
{
    QString text = QString::fromStdString(value);
    text.replace("\r\n", "\n");
    constexpr char16_t nextLine = 0x85;
    for (const QChar separating :
        {QChar(','), QChar('\n'), QChar('\r'), QChar(nextLine), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        text.replace(separating, ' ');
    text.replace('"', '\'');
    return '"' + text.toStdString() + '"';
}

template <class ValueOf>
void appendRow(std::string& list, ValueOf valueOf)
{
    for (const std::string_view column : emailColumns) {
        if (column != emailColumns.front())
            list += ',';
        list += quoted(valueOf(column));
    }
    list += '\n';
}

std::string emailList(const std::vector<const Contact*>& contacts)
{
    std::string list;
    appendRow(list, [](std::string_view column) { return std::string(column); });
    for (const Contact* contact : contacts)
        appendRow(list, [contact](std::string_view column) { return contact->getFieldByName(column); });
    return list;
}

} // namespace

QString EmailExporter::exportCSV() const
{
    logLine("writing csv");
    const std::optional<QString> path = m_panels.saveFile({localText("E-mail list"), "csv", {}, localText("E-mail list"), {}, {}});
    if (!path)
        return {};
    const Result<void> written = writeFileSafely(path->toStdString(), emailList(m_contacts));
    if (!written)
        logUnsuccessfulExport(path->toStdString(), written.error().message);
    return exportOutcome(*path, written);
}
