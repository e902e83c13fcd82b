#include "ui/PageText.h"

#include "documents/FrameMarks.h"

#include <algorithm>
#include <vector>

namespace {

bool endsParagraph(QChar sign)
{
    return sign == '\n' || sign == '\r' || sign == QChar::ParagraphSeparator || sign == frameStart || sign == frameEnd;
}

/// How many characters of the text stand for the one shown at this place.
qsizetype lengthAt(const QString& text, qsizetype place)
{
    const bool pair = text[place] == '\r' && place + 1 < text.size() && text[place + 1] == '\n';
    return pair ? 2 : 1;
}

/// The text as a document holds it: one paragraph separator for each break.
QString asInDocument(const QString& text)
{
    QString shown;
    shown.reserve(text.size());
    for (qsizetype place = 0; place < text.size(); place += lengthAt(text, place))
        shown += endsParagraph(text[place]) ? QChar(QChar::ParagraphSeparator) : text[place];
    return shown;
}

/// Where in the text the character stands that is shown as the count-th.
qsizetype placeOf(qsizetype count, const QString& text)
{
    qsizetype place = 0;
    for (; count > 0; --count)
        place += lengthAt(text, place);
    return place;
}

/// New breaks are line feeds.
QString asTyped(QString typed)
{
    return typed.replace(QChar::ParagraphSeparator, '\n').replace(QChar::LineSeparator, '\n');
}

} // namespace

void PageText::setStored(const QString& text)
{
    m_stored = m_storedAtFirst = text;
    m_shown = m_shownAtFirst = asInDocument(text);
}

void PageText::edit(const QString& shown)
{
    if (shown == m_shownAtFirst) {
        m_stored = m_storedAtFirst;
        m_shown = shown;
        return;
    }
    const qsizetype shorter = std::min(shown.size(), m_shown.size());
    const auto [before, unused] = std::mismatch(m_shown.cbegin(), m_shown.cbegin() + shorter, shown.cbegin());
    const qsizetype same = before - m_shown.cbegin();
    qsizetype sameAtEnd = 0;
    while (sameAtEnd < shorter - same && m_shown[m_shown.size() - 1 - sameAtEnd] == shown[shown.size() - 1 - sameAtEnd])
        ++sameAtEnd;
    const qsizetype from = placeOf(same, m_stored);
    const qsizetype to = placeOf(m_shown.size() - sameAtEnd, m_stored);
    QString joined = m_stored.first(from) + asTyped(shown.mid(same, shown.size() - same - sameAtEnd)) + m_stored.mid(to);
    m_stored = std::move(joined);
    m_shown = shown;
}
