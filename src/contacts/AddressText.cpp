#include "contacts/AddressText.h"

namespace {

QStringList withoutTrailingBlanks(QStringList lines)
{
    for (QString& line : lines) {
        while (!line.isEmpty() && line.back().isSpace())
            line.chop(1);
    }
    while (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

QString capitalised(const QString& text)
{
    const QString small = text.toLower();
    QString result;
    result.reserve(small.size());
    bool begins = true;
    for (qsizetype at = 0; at < small.size();) {
        const bool isPair = small[at].isHighSurrogate() && at + 1 < small.size() && small[at + 1].isLowSurrogate();
        const QString letter = small.mid(at, isPair ? 2 : 1);
        at += letter.size();
        const char32_t code = letter.toUcs4().constFirst();
        if (QChar::isSpace(code)) {
            begins = true;
        } else if (begins && QChar::isLetterOrNumber(code)) {
            result += letter.toUpper();
            begins = false;
            continue;
        }
        result += letter;
    }
    return result;
}

QStringList pastedLines(const QString& text)
{
    QString broken = text;
    broken.replace("\r\n", "\n").replace(QChar(QChar::LineSeparator), '\n').replace(QChar(QChar::ParagraphSeparator), '\n');
    broken.removeIf([](QChar letter) { return letter.category() == QChar::Other_Control && !letter.isSpace(); });
    const QStringList lines = withoutTrailingBlanks(broken.split('\n'));
    return lines.size() >= 2 ? lines : withoutTrailingBlanks(broken.split('\r'));
}
