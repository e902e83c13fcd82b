// The desktop as it really is: what controllers ask of it, answered with windows, the clipboard, other programs and the clock.
#pragma once

#include "desktop/Desktop.h"

#include <QPointer>
#include <QWidget>

class RealAlerts : public Alerts {
public:
    using Alerts::ask;
    int ask(const Alert& alert) override;
};

class RealFilePanels : public FilePanels {
public:
    std::optional<QString> openFile(const QString& title) override;
    std::optional<QString> saveFile(const SavePanel& panel) override;
};

class RealBeeper : public Beeper {
public:
    void beep() override;
};

class RealOpener : public Opener {
public:
    void openUrl(const QUrl& url) override;
    void revealFolder(const QString& path) override;
};

class RealPrinting : public Printing {
public:
    bool print(const QString& title, const std::function<bool(QPagedPaintDevice&)>& paint) override;
};

class RealClipboard : public Clipboard {
public:
    QString text() const override;
    void setText(const QString& text) override;
};

class RealClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class RealUser : public User {
public:
    QString loginName() const override;
    QString home() const override;
};
