// The files attached to orders: one folder an order, in the "Attachments" folder of the database.
#pragma once

#include "foundation/Result.h"

#include <QString>
#include <QStringList>

#include <functional>

class Attachments {
public:
    using FolderSource = std::function<QString()>;
    /// Moves a folder to where deleted things are kept; answers whether that worked.
    using Keeper = std::function<Result<void>(const QString& folder)>;

    /// databaseFolder answers the folder that was loaded.
    Attachments(FolderSource databaseFolder, Keeper keeper);

    /// Copies the file into the order's folder under its own name. Only regular files; nothing there is ever overwritten.
    Result<void> file(int orderId, const QString& path) const;
    int countAttachments(int orderId) const;
    /// The order's folder as it is spelled on disk, whether it exists or not.
    QString folder(int orderId) const;
    /// Takes the order's folder away; its contents are kept in the recovery store.
    Result<void> deleteAttachments(int orderId) const;

    /// "There are no attachments", "There is 1 attachment", …
    static QString statusText(int count);

private:
    FolderSource m_databaseFolder;
    Keeper m_keeper;
};
