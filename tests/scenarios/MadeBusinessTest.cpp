// The sample business as tools/make-business writes it: what stands in its files is what the program itself would have written.
#include "support/Business.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

QByteArray bytesIn(const QString& folder, const QString& name)
{
    QFile file(folder + '/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class MadeBusiness : public Business {
protected:
    /// Makes it as the user's own database, with its settings.
    void make(const QString& folder) const
    {
        const QString settings = folder + "/Settings.plist";
        ASSERT_EQ(QProcess::execute(MAKE_BUSINESS, {folder, settings}), 0);
        writeSettings("<key>askAboutUpgrading</key><true/>" + innerDict(bytesIn(folder, "Settings.plist")));
        ASSERT_TRUE(QFile::remove(settings));
    }
    static QByteArray innerDict(const QByteArray& document)
    {
        const qsizetype from = document.indexOf("<dict>") + 6;
        return document.mid(from, document.lastIndexOf("</dict>") - from);
    }
};

} // namespace

TEST_F(MadeBusiness, isTheSameEveryTime)
{
    QTemporaryDir one;
    QTemporaryDir other;
    make(one.path());
    make(other.path());
    const QStringList names = QDir(one.path()).entryList(QDir::Files);
    EXPECT_EQ(names, QDir(other.path()).entryList(QDir::Files));
    EXPECT_GE(names.size(), 7);
    for (const QString& name : names)
        EXPECT_TRUE(bytesIn(one.path(), name) == bytesIn(other.path(), name)) << name.toStdString();
}

TEST_F(MadeBusiness, opensWithoutDamageAndHoldsWhatItPromises)
{
    make(databaseFolder());
    start();
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(orders().getCount(), 400);
    EXPECT_GE(contacts().getCount(), 200);
    EXPECT_GE(items().getCount(), 80);
    EXPECT_EQ(lines().getCount(), 1200);
}

TEST_F(MadeBusiness, staysTheSameWhenItIsOpenedAndWrittenAgain)
{
    make(databaseFolder());
    const QStringList names = QDir(databaseFolder()).entryList({"*.xml"});
    std::map<QString, QByteArray> before;
    for (const QString& name : names)
        before[name] = bytesIn(databaseFolder(), name);
    start();
    quit();
    for (const auto& [name, bytes] : before)
        EXPECT_TRUE(bytesIn(databaseFolder(), name) == bytes) << name.toStdString();
}

TEST_F(MadeBusiness, setsAreInStockAsOftenAsTheirPartsAllow)
{
    make(databaseFolder());
    start();
    int sets = 0;
    for (int i = 0; i < items().getCount(); ++i) {
        const Item& item = items().at(i);
        if (!item.isCollectiveItem())
            continue;
        ++sets;
        char figure[32];
        std::snprintf(figure, sizeof figure, "%g", static_cast<double>(items().getQtyForCollectiveItem(item)));
        EXPECT_EQ(item.getQty(), figure) << item.getItem();
    }
    EXPECT_GT(sets, 5);
}
