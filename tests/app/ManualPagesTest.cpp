// The pages of the manual as they are shipped: every link, heading and picture is there, and every page is found.
#include "app/Manual.h"

#include "documents/TemplateUpgrade.h"
#include "storage/RecoveryStore.h"
#include "support/Scenario.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSet>
#include <QXmlStreamReader>

namespace {

/// As wide as a line of text may be.
constexpr int widestPicture = 760;
constexpr int largestPicture = 150'000;

struct ManualPage {
    QString title;
    QStringList headings;
    QStringList ids;
    QStringList links;
    QStringList styles;
    /// In the light, and as often in the dark.
    QStringList pictures;
    QStringList darkPictures;
    QStringList wordsForPictures;
    QString error;
};

void takeElement(ManualPage& page, QXmlStreamReader& reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const auto value = [&attributes](const char* name) { return attributes.value(QLatin1String(name)).toString(); };
    const auto is = [&reader](const char* name) { return reader.name() == QLatin1String(name); };
    if (attributes.hasAttribute("id"))
        page.ids += value("id");
    if (is("a"))
        page.links += value("href");
    else if (is("link"))
        page.styles += value("href");
    else if (is("source"))
        page.darkPictures += value("srcset");
    else if (is("img")) {
        page.pictures += value("src");
        page.wordsForPictures += value("alt");
    } else if (is("title"))
        page.title = reader.readElementText();
    else if (is("h1"))
        page.headings += reader.readElementText();
}

ManualPage readPage(const QString& path)
{
    ManualPage page;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        page.error = file.errorString();
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            takeElement(page, reader);
    }
    if (reader.hasError())
        page.error = QString("line %1: %2").arg(reader.lineNumber()).arg(reader.errorString());
    return page;
}

class ManualPagesTest : public Scenario {
protected:
    ManualPagesTest() : manual(opener, resources)
    {
        for (const QString& name : QDir(manual.folder()).entryList({"*.html"}, QDir::Files))
            pages.insert(name, readPage(manual.folder() + '/' + name));
    }
    /// What the page says under that name, for messages.
    static std::string on(const QString& page, const QString& what) { return (page + ": " + what).toStdString(); }

    Manual manual;
    QMap<QString, ManualPage> pages;
};

} // namespace

TEST_F(ManualPagesTest, areWellFormedAndHaveATitleAndTheStyleSheet)
{
    ASSERT_GT(pages.size(), 30);
    for (auto page = pages.cbegin(); page != pages.cend(); ++page) {
        EXPECT_EQ(page->error, QString()) << page.key().toStdString();
        EXPECT_EQ(page->headings, QStringList {page->title}) << page.key().toStdString();
        EXPECT_EQ(page->styles, QStringList {"manual.css"}) << page.key().toStdString();
        QStringList ids = page->ids;
        EXPECT_EQ(ids.removeDuplicates(), 0) << page.key().toStdString();
    }
    EXPECT_TRUE(QFile::exists(manual.folder() + "/manual.css"));
}

TEST_F(ManualPagesTest, everyLinkLeadsToAPageAndHeadingThatAreThere)
{
    int followed = 0;
    for (auto page = pages.cbegin(); page != pages.cend(); ++page) {
        for (const QString& link : page->links) {
            const QString target = link.section('#', 0, 0).isEmpty() ? page.key() : link.section('#', 0, 0);
            ASSERT_TRUE(pages.contains(target)) << on(page.key(), link);
            const QString heading = link.section('#', 1);
            EXPECT_TRUE(heading.isEmpty() || pages[target].ids.contains(heading)) << on(page.key(), link);
            ++followed;
        }
    }
    EXPECT_GT(followed, 100);
}

TEST_F(ManualPagesTest, everyPictureIsThereInLightAndDarkSmallAndWithWords)
{
    int seen = 0;
    for (auto page = pages.cbegin(); page != pages.cend(); ++page) {
        ASSERT_EQ(page->pictures.size(), page->darkPictures.size()) << page.key().toStdString();
        for (qsizetype i = 0; i < page->pictures.size(); ++i, ++seen) {
            const QString path = manual.folder() + '/' + page->pictures[i];
            const QString darkPath = manual.folder() + '/' + page->darkPictures[i];
            const QImage picture(path);
            const QImage dark(darkPath);
            EXPECT_FALSE(picture.isNull()) << on(page.key(), page->pictures[i]);
            EXPECT_LE(picture.width(), widestPicture) << on(page.key(), page->pictures[i]);
            EXPECT_EQ(picture.size(), dark.size()) << on(page.key(), page->darkPictures[i]);
            EXPECT_EQ(page->darkPictures[i], QString(page->pictures[i]).replace(".png", "-dark.png"));
            EXPECT_LT(QFile(path).size(), largestPicture) << on(page.key(), page->pictures[i]);
            EXPECT_LT(QFile(darkPath).size(), largestPicture) << on(page.key(), page->darkPictures[i]);
            EXPECT_GT(page->wordsForPictures[i].size(), 10) << on(page.key(), page->pictures[i]);
        }
    }
    EXPECT_GT(seen, 20);
}

TEST_F(ManualPagesTest, noPictureLiesThereForNothing)
{
    QSet<QString> shown;
    for (const ManualPage& page : pages) {
        for (const QString& picture : page.pictures + page.darkPictures)
            shown.insert(picture);
    }
    for (const QString& name : QDir(manual.folder() + "/pictures").entryList(QDir::Files))
        EXPECT_TRUE(shown.contains("pictures/" + name)) << name.toStdString();
}

TEST_F(ManualPagesTest, theIndexListsEveryPageOnceUnderItsTitle)
{
    QStringList listed {"index.html"};
    for (const Manual::Chapter& chapter : manual.contents()) {
        EXPECT_FALSE(chapter.pages.empty()) << chapter.title.toStdString();
        for (const Manual::Page& page : chapter.pages) {
            listed += page.topic + ".html";
            EXPECT_EQ(page.title, pages.value(listed.last()).title);
        }
    }
    listed.sort();
    EXPECT_EQ(listed, pages.keys());
}

TEST_F(ManualPagesTest, thePageAboutUpgradingSaysWhatTheUpgradeDoes)
{
    QFile page(manual.address("upgradetemplates").toLocalFile());
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    QStringList cells;
    QXmlStreamReader reader(&page);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String("td"))
            cells += reader.readElementText(QXmlStreamReader::IncludeChildElements);
    }
    ASSERT_EQ(cells.size(), 14);
    QString before;
    QString after;
    for (qsizetype i = 0; i < cells.size(); i += 2) {
        before += "\\par " + cells[i];
        after += "\\par " + (cells[i + 1] == "nothing" ? QString() : cells[i + 1]);
    }
    const QString path = supportFolder() + "/stationary/Mine.rtfd/TXT.rtf";
    ASSERT_TRUE(QDir().mkpath(supportFolder() + "/stationary/Mine.rtfd"));
    QFile written(path);
    ASSERT_TRUE(written.open(QIODevice::WriteOnly));
    written.write("{\\rtf1 " + before.toLatin1() + "}");
    written.close();
    RecoveryStore recovery(supportFolder() + "/Recovery", clock);
    TemplateUpgrade(supportFolder(), resources, recovery).run();

    QFile upgraded(path);
    ASSERT_TRUE(upgraded.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromLatin1(upgraded.readAll()), "{\\rtf1 " + after + "}");
}
