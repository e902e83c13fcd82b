// The data files of items for the website tool: one property list an item, in the folder "data" of the item's website folder.
#pragma once

#include "foundation/plist/PlistValue.h"

#include <QString>
#include <QStringList>

class Item;
class User;

class WebExport {
public:
    explicit WebExport(const User& user) : m_user(user) { }

    /// The ways an item's quantity can be shown on its pages, as the editor offers them.
    static QStringList quantityMethods();
    /// What the item's file holds.
    static PlistValue contents(const Item& item);
    /// Where its file lies; "~" in the item's folder is the user's home.
    QString path(const Item& item) const;
    /// Writes the file, also of an item that is not marked for it; the log tells how it went. No folder is made.
    void write(const Item& item) const;
    /// The folder with "~" expanded and without slashes at its end.
    QString folder(const QString& websiteFolder) const;

private:
    const User& m_user;
};
