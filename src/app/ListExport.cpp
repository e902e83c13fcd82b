#include "app/ListExport.h"

#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "storage/TableExport.h"

#include <QStringEncoder>

namespace {

QString fileTypeOf(ExportForm form)
{
    switch (form) {
    case ExportForm::commaSeparated: return "csv";
    case ExportForm::tabDelimited: return "txt";
    case ExportForm::html: break;
    }
    return "html";
}

/// A page with the table, in UTF-16 with a byte-order mark. That the body stands in the head is how these files always were.
std::string htmlFile(const qvDataSource& source)
{
    const std::string page = "<html><head><title>Data Export from Vendaro</title><body>" + getDataAsHTML(source) + "</body></head></html>";
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    const QByteArray bytes = encoder.encode(QString::fromStdString(page));
    return bytes.toStdString();
}

void writeContents(const qvDataSource& source, ExportForm form, const TakeText& take)
{
    switch (form) {
    case ExportForm::commaSeparated: return getDataAsCSV(source, take);
    case ExportForm::tabDelimited: return getDataAsTDL(source, take);
    case ExportForm::html: break;
    }
    take(htmlFile(source));
}

Result<void> writeFile(const std::string& path, const qvDataSource& source, ExportForm form)
{
    SafeFile file(path);
    writeContents(source, form, [&](std::string_view bytes) { file.append(bytes); });
    return file.commit();
}

void logFailure(ExportForm form, const std::string& path, const std::string& reason)
{
    if (form == ExportForm::html)
        logFormat("Unsuccessful exporting data to %s\n", path.c_str());
    else
        logUnsuccessfulExport(path, reason);
}

} // namespace

QString ListExport::run(const qvDataSource& source, ExportForm form, const QString& name)
{
    const std::optional<QString> path = m_panels.saveFile({localText("Export"), fileTypeOf(form), {}, name, {}, {}});
    if (!path)
        return {};
    const Result<void> written = writeFile(path->toStdString(), source, form);
    if (!written)
        logFailure(form, path->toStdString(), written.error().message);
    return exportOutcome(*path, written);
}
