// Folders written by another program: read, and written again at quit, they hold what the rules of the files say, to the byte.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class GoldenFolders : public Scenario, public testing::WithParamInterface<const char*> {
protected:
    static QString golden() { return QString(TEST_DATA_DIR "/golden/") + GetParam(); }
};

TEST_P(GoldenFolders, leaveWhatTheRulesSayAfterStartingAndQuitting)
{
    const QStringList files = QDir(golden() + "/before").entryList({"*.xml"});
    ASSERT_FALSE(files.isEmpty());
    for (const QString& name : files)
        writeFile(name, bytesOf(golden() + "/before/" + name));
    // Whether templates are to be upgraded is another question.
    writeSettings("<key>askAboutUpgrading</key><true/>");

    start();
    quit();

    for (const QString& name : files) {
        const QString after = golden() + "/after/" + name;
        const QByteArray expected = bytesOf(QFile::exists(after) ? after : golden() + "/before/" + name);
        EXPECT_EQ(readFile(name).toStdString(), expected.toStdString()) << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(WrittenElsewhere, GoldenFolders, testing::Values("standard", "older-payments", "other-kinds"),
    [](const auto& chosen) { return QString(chosen.param).replace('-', '_').toStdString(); });

using StockMark = Scenario;

TEST_F(StockMark, isWrittenUnderOneKeyReadUnderAnotherAndSoOffAfterAReload)
{
    writeFile("orders.xml", bytesOf(TEST_DATA_DIR "/golden/other-kinds/before/orders.xml"));
    start();
    EXPECT_TRUE(app().getOrderManager().getItemById(2)->getStockAdded());

    restart();

    EXPECT_FALSE(app().getOrderManager().getItemById(2)->getStockAdded());
}
