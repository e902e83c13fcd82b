#include "ui/notepad/NotepadText.h"

#include "documents/rtf/RichText.h"
#include "documents/rtf/RtfWriter.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/Look.h"
#include "ui/kit/Theme.h"
#include "ui/notepad/ReadableColours.h"

#include <QMimeData>
#include <QPointer>
#include <QTextDocumentFragment>

namespace {

constexpr QMargins textMargins {24, 16, 12, 16};
/// Marking more would take longer than looking at them.
constexpr int mostMarkedPlaces = 1000;

/// What was copied, as it stands in the document.
class CopiedText : public QMimeData {
    Q_OBJECT
public:
    CopiedText(const QTextDocumentFragment& fragment, const QTextDocument* document) : m_fragment(fragment), m_document(document)
    {
        setText(fragment.toPlainText());
        setHtml(fragment.toHtml());
        const std::unique_ptr<QTextDocument> alone = makeSealedDocument();
        alone->setDefaultFont(document->defaultFont());
        QTextCursor(alone.get()).insertFragment(fragment);
        setData("text/rtf", QByteArray::fromStdString(writeRtf(takeApart(*alone).text)));
    }
    /// Pictures have their names from the document.
    bool isOf(const QTextDocument* document) const { return m_document == document; }
    const QTextDocumentFragment& fragment() const { return m_fragment; }

private:
    QTextDocumentFragment m_fragment;
    QPointer<const QTextDocument> m_document;
};

} // namespace

NotepadText::NotepadText(QWidget* parent) : QTextEdit(parent), m_colours(new ReadableColours(this))
{
    setObjectName("notepadText");
    setAccessibleName(tr("Notepad"));
    look::setKind(this, "page");
    // The caret shows where typing goes.
    FocusRing::exempt(this);
    setViewportMargins(textMargins);
    setTabChangesFocus(false);
}

void NotepadText::showDocument(QTextDocument& document)
{
    setDocument(&document);
    m_colours->setDocument(&document);
}

bool NotepadText::find(const QString& words, Direction direction)
{
    markPlaces(words);
    const auto flags = direction == Direction::previous ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    QTextCursor found = document()->find(words, textCursor(), flags);
    if (found.isNull()) {
        QTextCursor edge(document());
        if (direction == Direction::previous)
            edge.movePosition(QTextCursor::End);
        found = document()->find(words, edge, flags);
    }
    return select(found, words);
}

bool NotepadText::findTyped(const QString& words)
{
    QTextCursor here = textCursor();
    here.setPosition(here.selectionStart());
    setTextCursor(here);
    return find(words, Direction::next);
}

bool NotepadText::select(const QTextCursor& found, const QString& words)
{
    if (!found.isNull()) {
        setTextCursor(found);
        return true;
    }
    QTextCursor here = textCursor();
    here.clearSelection();
    setTextCursor(here);
    return words.isEmpty();
}

void NotepadText::markPlaces(const QString& words)
{
    QList<ExtraSelection> places;
    QTextCursor found = words.isEmpty() ? QTextCursor() : document()->find(words);
    while (!found.isNull() && places.size() < mostMarkedPlaces) {
        ExtraSelection place;
        place.cursor = found;
        place.format.setBackground(themeColour(Colour::accentTint));
        places += place;
        found = document()->find(words, found);
    }
    setExtraSelections(places);
}

QMimeData* NotepadText::createMimeDataFromSelection() const
{
    return new CopiedText(textCursor().selection(), document());
}

bool NotepadText::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasText() || source->hasImage() || source->hasUrls();
}

void NotepadText::insertFromMimeData(const QMimeData* source)
{
    const auto* own = qobject_cast<const CopiedText*>(source);
    if (own && own->isOf(document()))
        textCursor().insertFragment(own->fragment());
    else if (source->hasText() && !source->hasUrls())
        insertPlainText(source->text().remove(QChar::ObjectReplacementCharacter));
    else
        Q_EMIT pictureRefused();
    ensureCursorVisible();
}

#include "NotepadText.moc"
