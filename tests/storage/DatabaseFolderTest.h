// A database folder with three record files, of which two belong together.
#pragma once

#include "storage/DatabaseFolder.h"

#include "foundation/Log.h"
#include "storage/Article.h"
#include "storage/RecoveryStore.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

class DatabaseFolderTest : public testing::Test {
protected:
    DatabaseFolderTest()
    {
        setLogSink([this](std::string_view line) {
            const std::lock_guard guard(m_logMutex);
            m_log += toQString(line);
        });
        folder.registerFile(mugFile);
        folder.registerFile(orderFile);
        folder.registerFile(lineFile);
    }
    ~DatabaseFolderTest() override { setLogSink({}); }

    QString location() const { return user.home() + "/shop.vendb"; }
    QString recoveryFolder() const { return user.home() + "/Recovery"; }
    LoadReport load()
    {
        return folder.load(location(),
            [this](RecordFile& file, bool existed) { loaded += QString("%1 %2").arg(file.fileName()).arg(existed ? "there" : "missing"); });
    }
    void write(std::initializer_list<RecordFile*> files, DatabaseFolder::When when = DatabaseFolder::When::now)
    {
        folder.write(std::span<RecordFile* const>(files.begin(), files.size()), when);
    }
    QByteArray contents(const QString& name) const
    {
        QFile file(name.startsWith('/') ? name : location() + '/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void put(const QString& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(location()));
        QFile file(location() + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray document(const QByteArray& names)
    {
        QByteArray records;
        int id = 0;
        for (const QByteArray& name : names.split(' ')) {
            if (!name.isEmpty())
                records += "\t\t<dict>\n\t\t\t<key>id</key>\n\t\t\t<string>" + QByteArray::number(++id)
                    + "</string>\n\t\t\t<key>name</key>\n\t\t\t<string>" + name
                    + "</string>\n\t\t\t<key>note</key>\n\t\t\t<string></string>\n\t\t\t<key>owner</key>\n\t\t\t<string>0</string>\n"
                      "\t\t\t<key>sold</key>\n\t\t\t<string>NO</string>\n\t\t\t<key>stocked</key>\n\t\t\t<string>YES</string>\n\t\t</"
                      "dict>\n";
        }
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
               "<plist version=\"1.0\">\n<dict>\n\t<key>articles</key>\n"
            + (records.isEmpty() ? QByteArray("\t<array/>\n") : "\t<array>\n" + records + "\t</array>\n") + "</dict>\n</plist>\n";
    }
    QStringList log() const
    {
        const std::lock_guard guard(m_logMutex);
        return m_log;
    }
    /// Files left from an unfinished write.
    QStringList leftovers() const { return QDir(location()).entryList({".vendaro*"}, QDir::Files | QDir::Hidden); }
    /// Something that no file can replace.
    void block(const QString& name) const
    {
        QFile::remove(location() + '/' + name);
        ASSERT_TRUE(QDir().mkpath(location() + '/' + name + "/in the way"));
    }
    /// An order and a line are added and written, but the write is cut off when the orders are in place and the lines are not.
    void interruptWriting()
    {
        orders.articles.addNamed("order");
        lines.articles.addNamed("line");
        block("itemsordered.xml");
        write({&orderFile, &lineFile});
        unblock("itemsordered.xml");
        put("itemsordered.xml", document("old"));
    }
    void unblock(const QString& name) const { QDir(location() + '/' + name).removeRecursively(); }

    mutable std::mutex m_logMutex;
    QStringList m_log;
    QStringList loaded;
    FakeClock clock;
    FakeUser user;
    ArticleShop mugs;
    ArticleShop orders;
    ArticleShop lines;
    ArticleFile mugFile {mugs.articles, "mugs.xml", "mugs"};
    ArticleFile orderFile {orders.articles, "orders.xml", "orders"};
    ArticleFile lineFile {lines.articles, "itemsordered.xml", "materials"};
    RecoveryStore recovery {recoveryFolder(), clock};
    DatabaseFolder folder {recovery, clock, user};
};
