#include "inventory/ItemPictures.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/Folders.h"
#include "foundation/SafeFile.h"
#include "storage/RecoveryStore.h"

#include <QBuffer>
#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QMimeData>
#include <QUrl>

#include <algorithm>
#include <array>

namespace {

/// At four bytes a point that is as much as the reader of pictures takes for one.
constexpr qint64 mostPoints = 32'000'000;
constexpr qint64 largestFile = qint64 {512} << 20;
constexpr int keptKilobytes = 256 << 10;

/// The kinds that are taken, as they are called by the reader of pictures and on the clipboard. None of them names other files.
struct PictureKind {
    const char* format;
    const char* mimeType;
};
constexpr std::array pictureKinds {PictureKind {"png", "image/png"}, PictureKind {"tiff", "image/tiff"}, PictureKind {"jpeg", "image/jpeg"},
    PictureKind {"gif", "image/gif"}, PictureKind {"bmp", "image/bmp"}, PictureKind {"webp", "image/webp"}};

Error pictureError(const char* sentence, const QStringList& values)
{
    return {fillText(localText(sentence), values).toStdString()};
}

bool isTakenKind(const QByteArray& format)
{
    return std::any_of(pictureKinds.begin(), pictureKinds.end(), [&](const PictureKind& kind) { return format == kind.format; });
}

Error noPicture(const QString& name)
{
    return pictureError("%@ is no picture that can be used: PNG, JPEG, TIFF, GIF, BMP and WebP can.", {name});
}

Error tooLarge(const QString& name, QSize size)
{
    return pictureError("%@ is too large: %@ by %@ points. 32 million points in all can be used.",
        {name, QString::number(size.width()), QString::number(size.height())});
}

bool hasTooManyPoints(QSize size)
{
    return static_cast<qint64>(size.width()) * size.height() > mostPoints;
}

Result<QByteArray> asTiff(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "tiff");
    // Without loss.
    writer.setCompression(1);
    if (!writer.write(picture))
        return Error {"The picture could not be written as TIFF: " + writer.errorString().toStdString()};
    return bytes;
}

} // namespace

ItemPictures::ItemPictures(FolderSource databaseFolder, RecoveryStore& recovery)
    : m_databaseFolder(std::move(databaseFolder))
    , m_recovery(recovery)
    , m_read(keptKilobytes)
{
}

QString ItemPictures::path(int itemId) const
{
    const QString all = folders::resolveIgnoringCase(m_databaseFolder(), "ItemImages");
    return folders::resolveIgnoringCase(all, QString::number(itemId) + ".tiff");
}

Result<QImage> ItemPictures::getImage(int itemId)
{
    const QString file = path(itemId);
    const QFileInfo info(file);
    if (!info.exists())
        return QImage();
    const QString version = file + '\n' + QString::number(info.lastModified().toMSecsSinceEpoch());
    if (const QImage* kept = m_read.object(version))
        return *kept;
    Result<QImage> picture = fromFile(file);
    if (picture)
        m_read.insert(version, new QImage(picture.value()), std::max<qsizetype>(1, picture.value().sizeInBytes() / 1024));
    return picture;
}

Result<void> ItemPictures::setImage(int itemId, const QImage& picture)
{
    const QString file = path(itemId);
    m_read.clear();
    if (picture.isNull())
        return takeAway(file);
    const Result<QByteArray> bytes = asTiff(picture);
    if (!bytes)
        return bytes.error();
    const std::string_view contents(bytes.value().constData(), static_cast<std::size_t>(bytes.value().size()));
    Result<void> written = folders::make(QFileInfo(file).path());
    if (written)
        written = keepBefore(file);
    if (written)
        written = writeFileSafely(file.toStdString(), contents);
    if (written)
        return {};
    const Result<QString> kept = m_recovery.keepBytes(file, contents, KeptFor::unsaved);
    const std::string where = kept ? " It is kept at " + kept.value().toStdString() + "." : std::string();
    return Error {"The picture could not be saved: " + written.error().message + where};
}

Result<void> ItemPictures::takeAway(const QString& path)
{
    return folders::mayBeThere(path) || QFileInfo(path).isSymLink() ? m_recovery.moveIn(path, KeptFor::pictures) : Result<void>();
}

Result<void> ItemPictures::keepBefore(const QString& path)
{
    if (!folders::mayBeThere(path))
        return {};
    if (!folders::mayBeFile(path))
        return Error {path.toStdString() + " is no ordinary file"};
    const Result<QString> kept = m_recovery.keepCopy(path, KeptFor::pictures);
    return kept ? Result<void>() : kept.error();
}

// From elsewhere

Result<QImage> ItemPictures::read(QImageReader& reader, const QString& name)
{
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!isTakenKind(reader.format()) || !size.isValid())
        return noPicture(name);
    if (hasTooManyPoints(size))
        return tooLarge(name, size);
    const QImage picture = reader.read();
    if (picture.isNull())
        return pictureError("%@ could not be read: %@.", {name, reader.errorString()});
    return picture;
}

Result<QImage> ItemPictures::fromFile(const QString& path)
{
    const QFileInfo file(path);
    // Anything else but an ordinary file may never end.
    if (!file.isFile() || file.size() > largestFile)
        return noPicture(path);
    QImageReader reader(path);
    return read(reader, path);
}

Result<QImage> ItemPictures::fromBytes(const QByteArray& bytes, const QString& name)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return read(reader, name);
}

Result<QImage> ItemPictures::fromMimeData(const QMimeData& data)
{
    const QString name = localText("What was dropped or pasted");
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            return fromFile(url.toLocalFile());
    }
    for (const PictureKind& kind : pictureKinds) {
        if (data.hasFormat(kind.mimeType))
            return fromBytes(data.data(kind.mimeType), name);
    }
    const QImage picture = data.hasImage() ? qvariant_cast<QImage>(data.imageData()) : QImage();
    if (picture.isNull())
        return noPicture(name);
    return hasTooManyPoints(picture.size()) ? Result<QImage>(tooLarge(name, picture.size())) : picture;
}
