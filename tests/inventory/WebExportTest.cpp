// Items on their way to a website: what the files hold, where they lie, and what makes them be written.
#include "inventory/WebExport.h"

#include "support/Business.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

class WebExportTest : public Business {
protected:
    QString site() const { return home() + "/sites/mysite"; }
    void makeSite() const { ASSERT_TRUE(QDir().mkpath(site() + "/data")); }
    QByteArray exported(const QString& name) const
    {
        QFile file(site() + "/data/" + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool isExported(const QString& name) const { return QFileInfo::exists(site() + "/data/" + name); }
    /// Marked for the website in the folder every new item has.
    Item& marked(const char* name, const char* code, const char* qty = "10")
    {
        Item& made = item(name, qty);
        made.setCode(code);
        made.setExportbrevand(true);
        return made;
    }
    /// Marked for a website that is there, ten in stock, and one of them on a new order.
    Item& soldMug()
    {
        begin();
        makeSite();
        Item& mug = marked("Mug", "M", "10");
        orders().create();
        orders().addItemToCurrentOrder(mug);
        return mug;
    }
    static std::string value(const Item& item, const char* key)
    {
        const PlistValue contents = WebExport::contents(item);
        const PlistValue* found = contents.find(key);
        return found ? found->asText() : "absent";
    }
};

} // namespace

// What the file holds

TEST_F(WebExportTest, theFileIsAPropertyListOfTheItemsTexts)
{
    begin();
    makeSite();
    Item& mug = marked("Mug <large> & blue", "M-1", "3");
    mug.setBrand("Acme");
    mug.setCondition("New");
    mug.setDescription("For \"tea\"\nand more");
    mug.setEan("501");
    mug.setShipping("1.00");
    mug.setTaxcode("S");
    mug.setVariation("blue");
    mug.setButtoncode("<form>buy</form>");
    mug.setQuantityMethod("Out of stock / in stock");

    items().exportItemAsBrevandObject(mug);

    EXPECT_EQ(exported("VendItemM-1"),
        document("<dict>\n"
                 "\t<key>brand</key>\n\t<string>Acme</string>\n"
                 "\t<key>buttoncode</key>\n\t<string>&lt;form&gt;buy&lt;/form&gt;</string>\n"
                 "\t<key>code</key>\n\t<string>M-1</string>\n"
                 "\t<key>condition</key>\n\t<string>New</string>\n"
                 "\t<key>description</key>\n\t<string>For \"tea\"\nand more</string>\n"
                 "\t<key>ean</key>\n\t<string>501</string>\n"
                 "\t<key>item</key>\n\t<string>Mug &lt;large&gt; &amp; blue</string>\n"
                 "\t<key>price</key>\n\t<string>5.00</string>\n"
                 "\t<key>qty</key>\n\t<string>3</string>\n"
                 "\t<key>qtymsg</key>\n\t<string>&lt;% bvd:instock %&gt;</string>\n"
                 "\t<key>shipping</key>\n\t<string>1.00</string>\n"
                 "\t<key>taxcode</key>\n\t<string>S</string>\n"
                 "\t<key>template</key>\n\t<string>catitem</string>\n"
                 "\t<key>variation</key>\n\t<string>blue</string>\n"
                 "</dict>"))
        << exported("VendItemM-1").toStdString();
    EXPECT_TRUE(logged("Successful saving data to " + site() + "/data/VendItemM-1\n")) << log().join('|').toStdString();
}

TEST_F(WebExportTest, emptyTextsStandThereToo)
{
    begin();
    Item& bare = item("", "");
    for (const char* key : {"brand", "condition", "description", "ean", "item", "qty", "shipping", "taxcode", "variation"})
        EXPECT_EQ(value(bare, key), "") << key;
    EXPECT_EQ(value(bare, "template"), "catitem");
    EXPECT_EQ(value(bare, "qtymsg"), "absent");
}

TEST_F(WebExportTest, eachMethodSaysOfTheQuantityWhatItIsFor)
{
    begin();
    Item& mug = item("Mug");
    struct Case {
        const char* method;
        const char* none;
        const char* three;
    };
    const Case cases[] = {
        {"Just when out of stock", "<% bvd:OOS %>", "absent"},
        {"Out of stock / in stock", "<% bvd:OOS %>", "<% bvd:instock %>"},
        {"To order from supplier", "<% bvd:toorder %>", "absent"},
        {"Show quantity", "<span class = \"instock\">Quantity:0</span> ", "<span class = \"OOS\">Quantity:3</span> "},
        {"show quantity", "absent", "absent"},
        {"", "absent", "absent"},
    };
    for (const Case& each : cases) {
        mug.setQuantityMethod(each.method);
        mug.setQty("0");
        EXPECT_EQ(value(mug, "qtymsg"), each.none) << each.method;
        mug.setQty("3");
        EXPECT_EQ(value(mug, "qtymsg"), each.three) << each.method;
    }
    EXPECT_EQ(WebExport::quantityMethods(),
        QStringList({"Just when out of stock", "Out of stock / in stock", "To order from supplier", "Show quantity"}));
}

TEST_F(WebExportTest, theWholeNumberOfTheQuantityDecides)
{
    begin();
    Item& mug = item("Mug");
    mug.setQuantityMethod("Show quantity");
    const std::pair<const char*, const char*> cases[] = {{"0.5", "instock"}, {"-2", "instock"}, {"", "instock"}, {"many", "instock"},
        {"1", "OOS"}, {"1.9", "OOS"}, {"12 boxes", "OOS"}, {"2e+06", "OOS"}};
    for (const auto& [qty, styleClass] : cases) {
        mug.setQty(qty);
        EXPECT_EQ(value(mug, "qtymsg"), std::string("<span class = \"") + styleClass + "\">Quantity:" + qty + "</span> ");
    }
}

TEST_F(WebExportTest, aQuantityTextIsNeverTakenForAPattern)
{
    begin();
    Item& mug = item("Mug", "%@ 5");
    mug.setQuantityMethod("Show quantity");
    EXPECT_EQ(value(mug, "qtymsg"), "<span class = \"instock\">Quantity:%@ 5</span> ");
}

TEST_F(WebExportTest, theButtonIsHiddenOnlyWhereItIsToBeAndNothingIsInStock)
{
    begin();
    Item& mug = item("Mug", "0");
    mug.setButtoncode("<b>");
    EXPECT_EQ(value(mug, "buttoncode"), "absent");
    mug.setQty("1");
    EXPECT_EQ(value(mug, "buttoncode"), "<b>");
    mug.setHidebuttoncode(false);
    mug.setQty("0");
    EXPECT_EQ(value(mug, "buttoncode"), "<b>");
}

// Where it lies

TEST_F(WebExportTest, anItemThatIsNotMarkedIsNeverWritten)
{
    begin();
    makeSite();
    Item& mug = marked("Mug", "M");
    mug.setExportbrevand(false);
    items().exportItemAsBrevandObject(mug);
    alerts.answer("OK");
    items().exportAsBrevandObjects();
    EXPECT_FALSE(isExported("VendItemM"));
}

TEST_F(WebExportTest, withoutTheFolderDataNothingIsMadeAndTheLogSaysSo)
{
    begin();
    Item& mug = marked("Mug", "M");
    items().exportItemAsBrevandObject(mug);
    EXPECT_FALSE(QFileInfo::exists(home() + "/sites"));
    ASSERT_TRUE(QDir().mkpath(site()));
    items().exportItemAsBrevandObject(mug);
    EXPECT_FALSE(QFileInfo::exists(site() + "/data"));
    EXPECT_EQ(log().count("Unsuccessful exporting data to " + site() + "/data/VendItemM\n"), 2) << log().join('|').toStdString();
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(WebExportTest, anEmptyCodeGivesTheBareName)
{
    begin();
    makeSite();
    items().exportItemAsBrevandObject(marked("Mug", ""));
    EXPECT_TRUE(isExported("VendItem"));
}

TEST_F(WebExportTest, aCodeThatLeadsElsewhereIsNotFollowed)
{
    begin();
    makeSite();
    ASSERT_TRUE(QDir().mkpath(site() + "/data/VendItemA"));
    items().exportItemAsBrevandObject(marked("Mug", "A/B"));
    EXPECT_FALSE(isExported("VendItemA/B"));
    items().exportItemAsBrevandObject(marked("Mug", "A/../../x"));
    EXPECT_FALSE(QFileInfo::exists(site() + "/x"));
    EXPECT_TRUE(logged("Unsuccessful exporting data to " + site() + "/data/VendItemA/B\n"));
}

TEST_F(WebExportTest, aFolderThatIsNotNamedFromTheRootIsNowhere)
{
    begin();
    for (const char* folder : {"", "sites/mysite", "~bob/site"}) {
        Item& mug = marked("Mug", "M");
        mug.setWebsitefolder(folder);
        items().exportItemAsBrevandObject(mug);
    }
    EXPECT_EQ(log().filter("Unsuccessful exporting data to ").size(), 3) << log().join('|').toStdString();
}

TEST_F(WebExportTest, theFolderMayBeAnywhereAndEndInASlashOrNot)
{
    begin();
    ASSERT_TRUE(QDir().mkpath(home() + "/shop/data"));
    for (const QString& folder : {home() + "/shop", home() + "/shop/", QString("~/shop//")}) {
        Item& mug = marked("Mug", "M");
        mug.setWebsitefolder(folder.toStdString());
        items().exportItemAsBrevandObject(mug);
        EXPECT_TRUE(QFile::remove(home() + "/shop/data/VendItemM")) << folder.toStdString();
    }
}

TEST_F(WebExportTest, anEarlierFileIsReplacedWhole)
{
    begin();
    makeSite();
    Item& mug = marked("Mug", "M");
    mug.setDescription(std::string(5000, 'x'));
    items().exportItemAsBrevandObject(mug);
    mug.setDescription("short");
    items().exportItemAsBrevandObject(mug);
    EXPECT_FALSE(exported("VendItemM").contains("xx"));
    EXPECT_TRUE(exported("VendItemM").endsWith("</plist>\n"));
    EXPECT_EQ(QDir(site() + "/data").entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList("VendItemM"));
}

// All at once

TEST_F(WebExportTest, theCommandWritesEveryMarkedItemInOrderAndTells)
{
    begin();
    makeSite();
    marked("Mug", "1");
    item("Plain").setCode("2");
    marked("Jug", "3");
    alerts.answer("OK");

    items().exportAsBrevandObjects();

    EXPECT_TRUE(isExported("VendItem1"));
    EXPECT_FALSE(isExported("VendItem2"));
    EXPECT_TRUE(isExported("VendItem3"));
    EXPECT_EQ(log().filter("Successful saving data"),
        QStringList(
            {"Successful saving data to " + site() + "/data/VendItem1\n", "Successful saving data to " + site() + "/data/VendItem3\n"}));
    EXPECT_EQ(lastAlert().title, "Export");
    EXPECT_EQ(lastAlert().text, "Finished exporting items.");
    EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
}

TEST_F(WebExportTest, withNothingToExportItIsFinishedToo)
{
    begin();
    alerts.answer("OK");
    items().exportAsBrevandObjects();
    EXPECT_EQ(lastAlert().text, "Finished exporting items.");
}

TEST_F(WebExportTest, stoppedItGoesNoFurtherAndDoesNotSayItFinished)
{
    begin();
    makeSite();
    marked("Mug", "1");
    marked("Jug", "2");
    marked("Pot", "3");
    QString status;
    QObject::connect(&app(), &Vendaro::statusWanted, [&](const QString& line) { status = line; });
    std::vector<std::pair<int, int>> told;

    items().exportAsBrevandObjects([&](int done, int total) {
        told.emplace_back(done, total);
        return done < 2;
    });

    EXPECT_EQ(told, (std::vector<std::pair<int, int>> {{0, 3}, {1, 3}, {2, 3}}));
    EXPECT_TRUE(isExported("VendItem2"));
    EXPECT_FALSE(isExported("VendItem3"));
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(status, "Export stopped: 2 of 3 items were exported.");
}

TEST_F(WebExportTest, theEndIsToldAsWell)
{
    begin();
    makeSite();
    marked("Mug", "1");
    std::vector<int> told;
    alerts.answer("OK");
    items().exportAsBrevandObjects([&](int done, int) {
        told.push_back(done);
        return true;
    });
    EXPECT_EQ(told, (std::vector<int> {0, 1}));
}

// By itself

TEST_F(WebExportTest, savingTheEditorExportsTheItem)
{
    begin();
    makeSite();
    items().create();
    items().form.code.edit("M");
    items().form.exportbrevand.edit(true);
    items().form.save.trigger();
    EXPECT_TRUE(isExported("VendItemM"));
}

TEST_F(WebExportTest, anItemThatBecomesALineIsExportedWithItsNewStock)
{
    soldMug();
    EXPECT_TRUE(exported("VendItemM").contains("<key>qty</key>\n\t<string>9</string>")) << exported("VendItemM").toStdString();
}

TEST_F(WebExportTest, aLineWhoseStockQuestionWasAnsweredWithNoIsExportedAllTheSame)
{
    begin();
    makeSite();
    Item& mug = marked("Mug", "M", "0");
    orders().create();
    alerts.answer("Cancel");
    orders().addItemToCurrentOrder(mug);
    EXPECT_TRUE(isExported("VendItemM"));
}

TEST_F(WebExportTest, anEditedQuantityThatMovesStockExportsTheItem)
{
    Item& mug = soldMug();
    ASSERT_TRUE(QFile::remove(site() + "/data/VendItemM"));
    EXPECT_TRUE(lines().setObjectValue("cost", 0, "2"));
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "1"));
    EXPECT_FALSE(isExported("VendItemM"));
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "3"));
    EXPECT_TRUE(exported("VendItemM").contains("<key>qty</key>\n\t<string>7</string>"));
    ASSERT_TRUE(QFile::remove(site() + "/data/VendItemM"));
    mug.setDecreaseQty(false);
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "4"));
    EXPECT_FALSE(isExported("VendItemM"));
}

TEST_F(WebExportTest, aRefusedQuantityExportsNothing)
{
    soldMug();
    ASSERT_TRUE(QFile::remove(site() + "/data/VendItemM"));
    alerts.answer("Cancel");
    EXPECT_FALSE(lines().setObjectValue("qty", 0, "50"));
    EXPECT_FALSE(isExported("VendItemM"));
}

// The folder

TEST_F(WebExportTest, theFolderIsChosenStartingAboveTheOneThatIsSet)
{
    begin();
    items().create();
    panels.choose("/srv/shop");
    items().form.selectWebsiteLocation.trigger();
    ASSERT_EQ(panels.savePanels.size(), 1u);
    const SavePanel& panel = panels.savePanels.front();
    EXPECT_EQ(panel.title, "Choose a Brevand website folder");
    EXPECT_EQ(panel.prompt, "Choose");
    EXPECT_EQ(panel.nameLabel, "Folder name");
    EXPECT_EQ(panel.folder, home() + "/sites");
    EXPECT_EQ(panel.what, SavePanel::What::shownFolder);
    EXPECT_EQ(items().form.websitefolder.text(), "/srv/shop");
    EXPECT_TRUE(items().wasChangedByCommand());
}

TEST_F(WebExportTest, withoutAFolderFromTheRootThePanelOpensWhereItWill)
{
    begin();
    items().create();
    for (const char* folder : {"", "site", "~bob/site"}) {
        items().form.websitefolder.edit(folder);
        panels.cancel();
        items().form.selectWebsiteLocation.trigger();
        EXPECT_EQ(panels.savePanels.back().folder, "") << folder;
    }
}

TEST_F(WebExportTest, withoutAChoiceTheFolderStays)
{
    begin();
    items().create();
    panels.cancel();
    items().form.selectWebsiteLocation.trigger();
    EXPECT_EQ(items().form.websitefolder.text(), "~/sites/mysite/");
    EXPECT_FALSE(items().wasChangedByCommand());
}
