// What a controller may ask of the desktop, one small interface a subject. The window layer and the tests each bring their own.
#pragma once

#include "desktop/Alerts.h"

#include <QDateTime>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

class QPagedPaintDevice;

/// What a save panel asks for.
struct SavePanel {
    QString title;
    /// The extension the file gets, without the dot; empty for any.
    QString fileType;
    /// Folder to open in and name to start from; may be empty.
    QString folder;
    QString name;
    QString prompt;
    QString nameLabel;
    /// existingFolder: a folder that is there already, instead of a file's new name. shownFolder: the same, but only the folder whose inside
    /// the panel shows; one that is merely selected in it answers nothing.
    enum class What { newFile, existingFolder, shownFolder } what = What::newFile;
};

class FilePanels {
public:
    virtual ~FilePanels() = default;
    /// The chosen existing file, or nothing when cancelled.
    virtual std::optional<QString> openFile(const QString& title) = 0;
    /// The chosen path, or nothing when cancelled.
    virtual std::optional<QString> saveFile(const SavePanel& panel) = 0;
};

class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual QString text() const = 0;
    virtual void setText(const QString& text) = 0;
};

class Beeper {
public:
    virtual ~Beeper() = default;
    virtual void beep() = 0;
};

/// Hands things to other programs.
class Opener {
public:
    virtual ~Opener() = default;
    virtual void openUrl(const QUrl& url) = 0;
    /// Shows the folder in the desktop's file browser.
    virtual void revealFolder(const QString& path) = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time.
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
};

/// Who is working, and where their files lie.
class User {
public:
    virtual ~User() = default;
    virtual QString loginName() const = 0;
    /// The home folder, which "~" stands for; no slash at the end.
    virtual QString home() const = 0;
};

/// Puts pages on paper.
class Printing {
public:
    virtual ~Printing() = default;
    /// Shows the print dialog over the active window and, unless it is cancelled, lets paint put its pages on the printer. False
    /// when painting failed.
    virtual bool print(const QString& title, const std::function<bool(QPagedPaintDevice&)>& paint) = 0;
};

/// Work that has to wait for a moment, and work that comes again; both run on the main thread.
class Scheduler {
public:
    virtual ~Scheduler() = default;
    virtual void after(int milliseconds, std::function<void()> work) = 0;
};
