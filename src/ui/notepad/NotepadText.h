// The text of the notepad as it is edited. Within the notepad text is copied and moved with its look; from elsewhere only words come in,
// and pictures are refused, since only those that are there already have a file of their own.
#pragma once

#include <QTextEdit>

class ReadableColours;

class NotepadText : public QTextEdit {
    Q_OBJECT
public:
    explicit NotepadText(QWidget* parent = nullptr);

    /// The document stays the caller's.
    void showDocument(QTextDocument& document);
    enum class Direction { next, previous };
    /// Selects the next place with these words, from the present one on if that is one, beyond the end at the start again; marks all places.
    /// False when there is none; then nothing is selected.
    bool find(const QString& words, Direction direction);
    /// The same while the words are being typed: stays where it is as long as they fit.
    bool findTyped(const QString& words);

Q_SIGNALS:
    /// A picture or file was to be put in.
    void pictureRefused();

protected:
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    bool select(const QTextCursor& found, const QString& words);
    void markPlaces(const QString& words);

    ReadableColours* m_colours;
};
