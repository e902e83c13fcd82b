// The pictures of items: "N.tiff" for the item with id N, in the folder "ItemImages" of the database.
//
// What is taken away or replaced goes to the recovery store first. A picture is looked at before memory is taken for it.
#pragma once

#include "foundation/Result.h"

#include <QCache>
#include <QImage>
#include <QString>

#include <functional>

class QImageReader;
class QMimeData;
class RecoveryStore;

class ItemPictures {
public:
    using FolderSource = std::function<QString()>;

    /// databaseFolder answers the folder that was loaded.
    ItemPictures(FolderSource databaseFolder, RecoveryStore& recovery);

    /// The file of the item's picture as it is spelled on disk, whether it exists or not.
    QString path(int itemId) const;
    /// Null when there is none; an error when it cannot be shown. It is read once and kept as long as memory for pictures suffices.
    Result<QImage> getImage(int itemId);
    /// A null picture takes the file away. A picture that cannot be written goes to the recovery store, and the one that was there stays.
    Result<void> setImage(int itemId, const QImage& picture);

    // Pictures from elsewhere: an error says in one sentence why one cannot be taken.

    static Result<QImage> fromFile(const QString& path);
    /// name: what the sentence calls it.
    static Result<QImage> fromBytes(const QByteArray& bytes, const QString& name);
    /// What was dropped or is on the clipboard: the first file, or the picture itself.
    static Result<QImage> fromMimeData(const QMimeData& data);

private:
    static Result<QImage> read(QImageReader& reader, const QString& name);
    Result<void> takeAway(const QString& path);
    Result<void> keepBefore(const QString& path);

    FolderSource m_databaseFolder;
    RecoveryStore& m_recovery;
    /// By path and time; costs are kilobytes.
    QCache<QString, QImage> m_read;
};
