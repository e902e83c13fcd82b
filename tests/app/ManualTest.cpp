// The manual: where its pages are, and what its index lists.
#include "app/Manual.h"

#include "support/Scenario.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

class ManualTest : public Scenario {
protected:
    ManualTest()
    {
        resources = m_folder.path();
        QDir().mkpath(resources + "/manual");
    }
    void writePage(const QString& name, const QByteArray& text) const
    {
        QFile file(resources + "/manual/" + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QString page(const char* name) const { return resources + "/manual/" + name; }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(ManualTest, findsThePageAndTheHeadingOfATopic)
{
    writePage("index.html", "<html/>");
    writePage("order.html", "<html/>");
    const Manual manual(opener, resources);

    EXPECT_EQ(manual.address("order").toLocalFile(), page("order.html"));
    EXPECT_EQ(manual.address("order#lines").toLocalFile(), page("order.html"));
    EXPECT_EQ(manual.address("order#lines").fragment(), QString("lines"));
    EXPECT_FALSE(manual.address("order").hasFragment());
}

TEST_F(ManualTest, showsTheIndexForATopicThatNoPageIsAbout)
{
    writePage("index.html", "<html/>");
    const Manual manual(opener, resources);

    for (const char* topic : {"", "teleporting", "teleporting#home", "../manual", "/etc/passwd"})
        EXPECT_EQ(manual.address(topic).toLocalFile(), page("index.html")) << topic;
}

TEST_F(ManualTest, knowsItsOwnPagesFromEverythingElse)
{
    const Manual manual(opener, resources);

    EXPECT_EQ(manual.topicAt(QUrl::fromLocalFile(page("order.html"))), QString("order"));
    EXPECT_EQ(manual.topicAt(manual.address("order#lines")), QString("index")) << "there is no such page here";
    EXPECT_EQ(manual.topicAt(QUrl::fromLocalFile(page("manual.css"))), QString());
    EXPECT_EQ(manual.topicAt(QUrl::fromLocalFile("/tmp/order.html")), QString());
    EXPECT_EQ(manual.topicAt(QUrl("https://example.org/order.html")), QString());
    EXPECT_EQ(manual.topicAt(QUrl()), QString());
}

TEST_F(ManualTest, listsChaptersAndPagesAsTheIndexDoes)
{
    writePage("index.html",
        "<!DOCTYPE html><html><body><h1>Help</h1><p><a href=\"x.html\">Before any chapter</a></p>"
        "<h2>Lists &amp; such</h2><ul><li><a href=\"orders.html\">Orders, <b>all</b></a></li><li><a href=\"items.html\">Items</a></li></ul>"
        "<h2>Empty</h2></body></html>");
    const std::vector<Manual::Chapter> contents = Manual(opener, resources).contents();

    ASSERT_EQ(contents.size(), 2u);
    EXPECT_EQ(contents[0].title, QString("Lists & such"));
    ASSERT_EQ(contents[0].pages.size(), 2u);
    EXPECT_EQ(contents[0].pages[0].topic, QString("orders"));
    EXPECT_EQ(contents[0].pages[0].title, QString("Orders, all"));
    EXPECT_EQ(contents[0].pages[1].topic, QString("items"));
    EXPECT_TRUE(contents[1].pages.empty());
    EXPECT_TRUE(log().isEmpty());
}

TEST_F(ManualTest, aMissingOrDamagedIndexIsLoggedAndListsWhatItCan)
{
    EXPECT_TRUE(Manual(opener, resources).contents().empty());
    EXPECT_EQ(log().filter("the manual's index " + page("index.html") + " cannot be read").size(), 1);

    writePage("index.html", "<html><h2>Lists</h2><a href=\"orders.html\">Orders</a><p></html>");
    const std::vector<Manual::Chapter> contents = Manual(opener, resources).contents();
    ASSERT_EQ(contents.size(), 1u);
    EXPECT_EQ(contents[0].pages.size(), 1u);
    EXPECT_EQ(log().filter("cannot be read").size(), 2);
}

TEST_F(ManualTest, opensPagesInTheBrowser)
{
    for (const char* name : {"index.html", "menu.html", "upgradetemplates.html"})
        writePage(name, "<html/>");
    Manual manual(opener, resources);
    manual.menu();
    manual.upgradetemplates();
    manual.open("teleporting");
    manual.openElsewhere(QUrl("https://example.org/"));

    ASSERT_EQ(opener.urls.size(), 4u);
    EXPECT_EQ(opener.urls[0].toLocalFile(), page("menu.html"));
    EXPECT_EQ(opener.urls[1].toLocalFile(), page("upgradetemplates.html"));
    EXPECT_EQ(opener.urls[2].toLocalFile(), page("index.html"));
    EXPECT_EQ(opener.urls[3], QUrl("https://example.org/"));
}

TEST_F(ManualTest, helpIsThePageAboutTheMenus)
{
    writePage("index.html", "<html/>");
    writePage("menu.html", "<html/>");
    start();
    app().help();
    ASSERT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(opener.urls[0].toLocalFile(), page("menu.html"));
}
