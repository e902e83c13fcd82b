// A rich-text package: a folder with the text and the pictures that stand in it.
#pragma once

#include "documents/rtf/RichText.h"
#include "foundation/Result.h"

#include <QString>

struct RichPackage {
    RichText text;
    /// Why it is not whole: a sentence without its full stop, naming the file. Empty when it is. The text has what could be read.
    QString damage;
    /// Whether it holds things that the text does not have (see RtfBuilder::leavesOut).
    bool leavesOut = false;
};

/// The file with the text in the package.
QString textFileIn(const QString& package);

RichPackage readRichPackage(const QString& package);

/// Puts the document in place of what the package held. At any moment the package is whole, the old one or the new one: new pictures
/// come first, the text then changes at one moment, pictures that nothing shows any more go last. Files that neither text names stay.
/// The folder that the package lies in must be there.
Result<void> writeRichPackage(const QString& package, const QTextDocument& document);
