// The program without its windows on one of the generated businesses, and that business's files as bytes.
#pragma once

#include "app/Vendaro.h"
#include "desktop/Desktop.h"

#include <memory>
#include <string>
#include <vector>

/// A desktop that answers nothing.
class QuietDesktop : public Alerts,
                     public Beeper,
                     public FilePanels,
                     public Opener,
                     public Printing,
                     public Clipboard,
                     public Clock,
                     public User {
public:
    explicit QuietDesktop(QString home) : m_home(std::move(home)) { }
    using Alerts::ask;
    int ask(const Alert&) override { return cancelled; }
    void beep() override { }
    std::optional<QString> openFile(const QString&) override { return {}; }
    std::optional<QString> saveFile(const SavePanel&) override { return {}; }
    void openUrl(const QUrl&) override { }
    void revealFolder(const QString&) override { }
    bool print(const QString&, const std::function<bool(QPagedPaintDevice&)>&) override { return false; }
    QString text() const override { return {}; }
    void setText(const QString&) override { }
    QDateTime now() const override { return QDateTime(QDate(2024, 3, 1), QTime(10, 15, 30), Qt::UTC); }
    QString loginName() const override { return "ada"; }
    QString home() const override { return m_home; }

private:
    QString m_home;
};

class Business {
public:
    /// scale: one that was generated, 1, 10, 250 or 2500. The database is not opened yet.
    explicit Business(int scale);
    ~Business();

    void open() { m_app->finishLaunching(); }
    Vendaro& app() { return *m_app; }
    OrderManager& orders() { return m_app->getOrderManager(); }
    /// The record file of that name.
    RecordFile& file(std::string_view name);

    static QString folder(int scale);
    /// The bytes of the seven record files.
    static std::vector<std::string> bytes(int scale);

private:
    int m_scale;
    QuietDesktop m_desktop;
    std::unique_ptr<Vendaro> m_app;
};
