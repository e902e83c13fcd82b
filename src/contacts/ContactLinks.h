// What opens in other programs from a contact: a letter to its e-mail addresses, and its page.
#pragma once

#include <QUrl>

/// A letter to whoever stands in the text.
QUrl mailLink(const QString& addresses);

/// The page at the address as people type it; empty when it is none of the web.
QUrl webLink(const QString& typed);
