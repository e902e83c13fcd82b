// The address book of a program under test.
#pragma once

#include "app/PrefsController.h"
#include "app/Vendaro.h"

#include <QFile>

/// Makes these cards, in a file of the folder, the whole address book.
inline void haveAddressBook(Vendaro& app, const QString& folder, const QByteArray& cards)
{
    QFile file(folder + "/book.vcf");
    if (!file.open(QIODevice::WriteOnly) || file.write(cards) != cards.size())
        qFatal("no address book could be written");
    app.getPrefsController().form.addressBook.setTitles({file.fileName()});
}
