// The notepad: one rich-text document that lies in the default database, whichever database is open. What is typed is in the document at
// once; save() puts it on disk.
#pragma once

#include "foundation/FileStamp.h"
#include "foundation/Result.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class QTextDocument;
class RecoveryStore;
enum class KeptFor;

class Notepad : public QObject {
    Q_OBJECT
public:
    /// databaseFolder: that of the default database, "~" expanded. mayWrite: whether anything may be written into it now.
    Notepad(const QString& databaseFolder, RecoveryStore& recovery, std::function<bool()> mayWrite);
    ~Notepad() override;

    /// Reads the file; without one the notepad is empty. What was in the document before is dropped.
    void load();
    /// Looks again at whether it may be written, and reads the file once more when it is another than the one read and nothing that was
    /// typed would be lost.
    void catchUp();
    /// Never absent; load() makes a new one and tells documentReplaced().
    QTextDocument& document() { return *m_document; }
    /// Whether the document differs from what load() read and save() wrote.
    bool isChanged() const;
    /// Whether nothing can be written now, because the default database is open for reading only or by somebody else.
    bool isReadOnly() const { return !m_mayWrite(); }
    /// What is wrong with the file: sentences for the person, empty when it is whole.
    const QString& damage() const { return m_damage; }
    /// Why the last attempt to save failed; empty when it did not.
    const QString& unsavedReason() const { return m_unsavedReason; }

    /// Writes the document, its folder included. Nothing happens when nothing changed and the file is there. Before a file goes that did
    /// not read as a whole, or that somebody else wrote meanwhile, it is put into the recovery store; when that fails, nothing is written.
    /// False when the document is not on disk; unsavedReason() then says why.
    bool save();
    /// Puts a text that is not saved into the recovery store, for the time when it can be saved no more; answers a sentence that says where
    /// it lies, none when everything is saved.
    QStringList keepUnsaved();

    const QString& path() const { return m_path; }
    /// Brings the notepad's window to the front.
    void open() { Q_EMIT opened(); }

Q_SIGNALS:
    void opened();
    /// Another document takes the place of the present one, which goes when everybody was told.
    void documentReplaced();
    /// It was saved, or could not be.
    void savedStateChanged();
    /// Whether it may be written was looked at again.
    void readOnlyChecked();

private:
    FileStamp stamp() const;
    Result<void> write();
    Result<void> keepOriginal();
    Result<void> keep(KeptFor reason);

    QString m_path;
    RecoveryStore& m_recovery;
    std::function<bool()> m_mayWrite;
    std::unique_ptr<QTextDocument> m_document;
    QString m_damage;
    QString m_unsavedReason;
    /// Whether the file holds things that the document does not have.
    bool m_holdsMore = false;
    /// Of the text's file, as it was read or written last.
    FileStamp m_stamp;
};
