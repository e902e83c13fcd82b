#include "documents/StationeryFolder.h"

#include "desktop/AlertTexts.h"
#include "desktop/TextTable.h"
#include "documents/rtf/RichPackage.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "foundation/SafeFile.h"
#include "foundation/Text.h"
#include "foundation/plist/PlistReader.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace {

constexpr const char* builtInStationery[] {"Invoice.rtfd", "Invoice.css", "Invoice with tax.rtfd", "Reminder.rtfd", "Purchase order.rtfd",
    "Purchase order.css", "Estimate.rtfd", "Estimate.css", "Delivery note.rtfd", "Delivery note.css",
    "Outstanding Balance for Open Customer.rtfd"};

/// A template of its own from before there was a folder of them.
constexpr char formerTemplate[] = "customInvoice.rtfd";

constexpr char plainStyle[] =
    "<style> table{border:none;border-collapse:collapse; font-family:arial;text-align:left} th{font-family:arial; "
    "background:#eee; padding:2px 0.5em; text-align:left;min-width:50px;} td{font-family:arial;padding:2px 0.5em;  "
    "text-align:left} td.alt{background:#f0f0ff; padding:2px 0.5em}</style>";

constexpr qint64 mostBackgroundPixels = 40'000'000;
constexpr qint64 mostBackgroundBytes = 32LL << 20;
/// Points; how much of it a sheet has room for is known when it is printed.
constexpr float widestMargin = 10'000;

bool isOn(const PlistValue* value)
{
    return value && (value->isTrue() || value->asText() == "YES" || numbers::leadingInt(value->asText()) != 0);
}

/// One thing that is wrong with a template, and what the document does without it.
QString damageOf(const QString& trouble, const char* consequence)
{
    const QString sentence = trouble + ". " + localText(consequence);
    logLine(sentence.toStdString());
    return sentence;
}

/// Why the file is of no use: it could not be read, or what was read is not what it should be.
QString troubleOf(const QString& path, const FileBytes& file, const QString& otherwise)
{
    return file.trouble == ReadTrouble::none ? fillText(localText("%@ could not be read: %@"), {path, otherwise})
                                             : QString::fromStdString(file.reason);
}

RichText readDocument(const QString& path, QStringList& damage)
{
    RichPackage package = readRichPackage(path);
    if (!package.damage.isEmpty())
        damage += damageOf(package.damage, "The document shows as much of it as there is.");
    return std::move(package.text);
}

std::optional<StationeryOptions> readOptions(const QString& path, QStringList& damage)
{
    const FileBytes file = readWholeFile(path.toStdString());
    if (file.trouble == ReadTrouble::missing)
        return {};
    const Result<PlistValue> list = plist::read(file.bytes);
    if (!list || !list.value().isDict()) {
        const QString otherwise = list ? localText("its root is no dictionary") : QString::fromStdString(list.error().message);
        damage += damageOf(troubleOf(path, file, otherwise), "The document goes without its options.");
        return {};
    }
    StationeryOptions options;
    options.centreContent = isOn(list.value().find("centreContent"));
    options.scaleTemplateImage = isOn(list.value().find("scaleTemplateImage"));
    if (const PlistValue* margin = list.value().find("templatePageMargin"))
        options.templatePageMargin = std::clamp(numbers::leadingFloat(margin->asText()), 0.0F, widestMargin);
    return options;
}

QImage readPicture(const QString& path)
{
    // Anything else but an ordinary file may never end.
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > mostBackgroundBytes)
        return {};
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!size.isValid() || static_cast<qint64>(size.width()) * size.height() > mostBackgroundPixels)
        return {};
    return reader.read();
}

QImage readBackground(const QString& path, QStringList& damage)
{
    const QImage picture = readPicture(path);
    if (picture.isNull() && (QFileInfo::exists(path) || QFileInfo(path).isSymLink()))
        damage += damageOf(troubleOf(path, {}, localText("it is no picture, or too large")), "The document goes without its background.");
    return picture;
}

QString readStyle(const QString& path, QStringList& damage)
{
    const FileBytes file = readWholeFile(path.toStdString());
    const std::string_view bytes = file.bytes;
    const bool isAscii = std::none_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) != 0; });
    if (file.trouble == ReadTrouble::none && isAscii)
        return toQString(bytes);
    if (file.trouble != ReadTrouble::missing)
        damage += damageOf(troubleOf(path, file, localText("it holds letters that are not ASCII")), "The table has the plain style.");
    return QString::fromLatin1(plainStyle);
}

} // namespace

StationeryFolder::StationeryFolder(QString support, QString resources)
    : m_support(std::move(support))
    , m_resources(std::move(resources)) { }

QString StationeryFolder::path(const QString& name, const char* extension) const
{
    return m_support + "/stationary/" + name + QLatin1String(extension);
}

Result<void> StationeryFolder::install() const
{
    Result<void> outcome = folders::make(m_support + "/stationary");
    for (const char* fileName : builtInStationery) {
        const Result<void> installed = installOne(QLatin1String(fileName));
        if (outcome && !installed)
            outcome = installed;
    }
    return outcome;
}

Result<void> StationeryFolder::installOne(const QString& fileName) const
{
    const QString target = path(fileName, "");
    if (QFileInfo::exists(target))
        return {};
    QString source = m_resources + "/stationary/" + fileName;
    const QString former = m_support + '/' + formerTemplate;
    if (fileName == QLatin1String("Invoice.rtfd") && QFileInfo::exists(former))
        source = former;
    if (QFileInfo(source).isDir()) {
        // Under another name until it is complete: what is there is never copied again.
        const QString unfinished = path('.' + fileName, ".unfinished");
        folders::remove(unfinished);
        if (Result<void> copied = folders::copyTree(source, unfinished); !copied)
            return copied;
        return folders::move(unfinished, target);
    }
    const FileBytes file = readWholeFile(source.toStdString());
    if (file.trouble != ReadTrouble::none)
        return Error {file.reason};
    return writeFileSafely(target.toStdString(), file.bytes);
}

QStringList StationeryFolder::names() const
{
    QStringList names;
    const QDir folder(m_support + "/stationary");
    for (const QString& entry : folder.entryList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase)) {
        const QString name = QFileInfo(entry).completeBaseName();
        if (!entry.startsWith('.') && !names.contains(name))
            names += name;
    }
    return names;
}

bool StationeryFolder::hasDocument(const QString& name) const
{
    return folders::isSingleComponent(name) && QFileInfo::exists(path(name, ".rtfd"));
}

StationeryTemplate StationeryFolder::read(const QString& name) const
{
    StationeryTemplate result;
    result.style = QString::fromLatin1(plainStyle);
    if (!folders::isSingleComponent(name)) {
        logFormat("no template can be called %s", name.toStdString().c_str());
        return result;
    }
    result.pictures = path(name, ".rtfd");
    result.document = readDocument(result.pictures, result.damage);
    result.options = readOptions(path(name, ".plist"), result.damage);
    result.background = readBackground(path(name, ".tiff"), result.damage);
    result.style = readStyle(path(name, ".css"), result.damage);
    return result;
}
