#include "documents/rtf/RichPackage.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "documents/rtf/RtfBuilder.h"
#include "documents/rtf/RtfWriter.h"
#include "foundation/Folders.h"
#include "foundation/SafeFile.h"
#include "foundation/TemporaryFiles.h"

#include <QBuffer>
#include <QFileInfo>

#include <set>

namespace {

constexpr char textFileName[] = "TXT.rtf";

/// Rich text is one group from its first byte to its last; the reader takes what there is of anything else.
bool endsWithItsGroup(std::string_view bytes)
{
    constexpr std::string_view blanks("\r\n\t \0", 5);
    const std::size_t last = bytes.find_last_not_of(blanks);
    return last != std::string_view::npos && bytes[last] == '}';
}

/// Empty when the file is whole.
QString damageOf(const QString& path, const FileBytes& file)
{
    if (file.trouble != ReadTrouble::none)
        return QString::fromStdString(file.reason);
    const char* trouble = !file.bytes.view().starts_with("{\\rtf") ? "it is no rich text"
        : endsWithItsGroup(file.bytes)                             ? nullptr
                                                                   : "it ends too early";
    return trouble ? fillText(localText("%@ could not be read: %@"), {path, localText(trouble)}) : QString();
}

template <class Use>
void forEachPicture(RichText& text, const Use& use)
{
    forEachParagraph(text, [&use](RichParagraph& paragraph) {
        for (RichRun& run : paragraph.runs) {
            if (!run.picture.isEmpty())
                use(run);
        }
    });
}

/// The files the text names, in small letters: some disks take names in other letters for the same.
std::set<QString> picturesNamedIn(RichText& text)
{
    std::set<QString> names;
    forEachPicture(text, [&](const RichRun& run) { names.insert(pictureFileName(run.picture).toLower()); });
    return names;
}

Result<void> writePicture(const QString& path, const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG"))
        return Error {path.toStdString() + " could not be written: the picture cannot be stored as PNG"};
    return writeFileSafely(path.toStdString(), {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

/// Pictures whose file the package does not have, or not any more, get a file of their own, and the text names it.
Result<void> writeNewPictures(const QString& package, DocumentParts& parts)
{
    Result<void> outcome;
    forEachPicture(parts.text, [&](RichRun& run) {
        const auto picture = parts.pictures.find(run.picture);
        if (picture == parts.pictures.end() || QFileInfo::exists(package + '/' + pictureFileName(run.picture)))
            return;
        run.picture = nameFromContents(picture->second);
        const QString path = package + '/' + run.picture;
        if (outcome && !QFileInfo::exists(path))
            outcome = writePicture(path, picture->second);
    });
    return outcome;
}

/// What the text before showed and the text now does not. A file that cannot be removed stays, which does no harm.
void removeUnusedPictures(const QString& package, RichText& before, const std::set<QString>& stillUsed)
{
    forEachPicture(before, [&](const RichRun& run) {
        const QString name = pictureFileName(run.picture);
        if (folders::isSingleComponent(name) && !stillUsed.contains(name.toLower()) && name.compare(textFileName, Qt::CaseInsensitive) != 0)
            QFile::remove(package + '/' + name);
    });
}

Result<void> writeInto(const QString& package, DocumentParts parts)
{
    temporaries::removeAbandoned(package.toStdString());
    const std::string path = textFileIn(package).toStdString();
    RichText before = RtfBuilder().build(readWholeFile(path).bytes);
    if (Result<void> written = writeNewPictures(package, parts); !written)
        return written;
    if (Result<void> written = writeFileSafely(path, writeRtf(parts.text)); !written)
        return written;
    removeUnusedPictures(package, before, picturesNamedIn(parts.text));
    return {};
}

} // namespace

QString textFileIn(const QString& package)
{
    return package + '/' + textFileName;
}

RichPackage readRichPackage(const QString& package)
{
    const QString path = textFileIn(package);
    const FileBytes file = readWholeFile(path.toStdString());
    RtfBuilder builder;
    RichPackage result;
    result.text = builder.build(file.bytes);
    result.damage = damageOf(path, file);
    result.leavesOut = builder.leavesOut();
    return result;
}

Result<void> writeRichPackage(const QString& package, const QTextDocument& document)
{
    DocumentParts parts = takeApart(document);
    const QFileInfo place(package);
    if (place.isDir())
        return writeInto(package, std::move(parts));
    // A package that is not there yet gets its name when it is complete.
    const QString unfinished = place.path() + "/." + place.fileName() + ".unfinished";
    folders::remove(unfinished);
    Result<void> written = folders::make(unfinished);
    if (written)
        written = writeInto(unfinished, std::move(parts));
    if (written)
        written = folders::move(unfinished, package);
    if (!written)
        folders::remove(unfinished);
    return written;
}
