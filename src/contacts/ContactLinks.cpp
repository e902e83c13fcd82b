#include "contacts/ContactLinks.h"

QUrl mailLink(const QString& addresses)
{
    return QUrl("mailto:" + QString::fromLatin1(QUrl::toPercentEncoding(addresses, "@,+")));
}

QUrl webLink(const QString& typed)
{
    const QString address = typed.trimmed();
    if (address.isEmpty())
        return {};
    QUrl link(address.contains("://") ? address : "https://" + address, QUrl::TolerantMode);
    const bool isOfTheWeb = link.scheme() == "http" || link.scheme() == "https";
    return link.isValid() && isOfTheWeb && !link.host().isEmpty() ? link : QUrl();
}
