// The picture in the item editor: taken, refused, saved with the item, or left alone.
#include "support/Business.h"

#include <QDir>
#include <QMimeData>

namespace {

class PictureOfAnItemTest : public Business {
protected:
    ItemForm& form() { return items().form; }
    static QImage picture(QSize size, QColor colour = Qt::red)
    {
        QImage made(size, QImage::Format_RGB32);
        made.fill(colour);
        return made;
    }
    void drop(const QImage& image)
    {
        QMimeData data;
        data.setImageData(image);
        form().picture.offer(data);
    }
    bool hasPicture(int id) const { return hasFile("ItemImages/" + QString::number(id) + ".tiff"); }
    QStringList recovered(const char* name) const
    {
        return QDir(supportFolder() + "/Recovery").entryList({QString("* ") + name}, QDir::Files, QDir::Name);
    }
};

} // namespace

TEST_F(PictureOfAnItemTest, aDroppedPictureIsSavedWithTheItemAndShownWhenItOpensAgain)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    EXPECT_FALSE(form().removePicture.isEnabled());
    drop(picture({5, 6}));
    EXPECT_TRUE(form().removePicture.isEnabled());
    EXPECT_FALSE(hasPicture(1));
    form().save.trigger();
    EXPECT_TRUE(hasPicture(1));
    EXPECT_TRUE(form().picture.picture().isNull()) << "no memory is held while the editor is closed";
    items().editThisItem(item("Plate"));
    EXPECT_TRUE(form().picture.picture().isNull());
    items().editThisItem(mug);
    EXPECT_EQ(form().picture.picture().size(), QSize(5, 6));
    EXPECT_FALSE(items().wasChangedByCommand());
}

TEST_F(PictureOfAnItemTest, aCancelledPictureIsNeitherTakenNorRemoved)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    drop(picture({5, 6}));
    form().cancel.trigger();
    EXPECT_FALSE(hasPicture(1));
    ASSERT_TRUE(mug.setImage(picture({5, 6})));
    items().editThisItem(mug);
    form().removePicture.trigger();
    EXPECT_TRUE(form().picture.picture().isNull());
    EXPECT_TRUE(items().wasChangedByCommand());
    form().cancel.trigger();
    EXPECT_TRUE(hasPicture(1));
}

TEST_F(PictureOfAnItemTest, aRemovedPictureGoesToTheRecoveryStore)
{
    begin();
    Item& mug = item("Mug");
    ASSERT_TRUE(mug.setImage(picture({5, 6})));
    items().editThisItem(mug);
    form().removePicture.trigger();
    form().save.trigger();
    EXPECT_FALSE(hasPicture(1));
    EXPECT_TRUE(mug.getImage().isNull());
    EXPECT_EQ(recovered("1.tiff").size(), 1);
}

TEST_F(PictureOfAnItemTest, savingSomethingElseLeavesThePictureAlone)
{
    begin();
    Item& mug = item("Mug");
    QDir().mkpath(databaseFolder() + "/ItemImages");
    writeFile("ItemImages/1.tiff", "of a kind we do not know");
    items().editThisItem(mug);
    EXPECT_TRUE(form().picture.fault().contains("is no picture that can be used")) << form().picture.fault().toStdString();
    form().price.edit("7");
    form().save.trigger();
    EXPECT_EQ(readFile("ItemImages/1.tiff"), "of a kind we do not know");
}

TEST_F(PictureOfAnItemTest, aPictureIsChosenAsAFile)
{
    begin();
    const QString path = home() + "/mug.png";
    ASSERT_TRUE(picture({7, 3}).save(path));
    items().create();
    panels.choose(path);
    form().choosePicture.trigger();
    EXPECT_EQ(panels.openTitles, QStringList("Choose Picture"));
    EXPECT_EQ(form().picture.picture().size(), QSize(7, 3));
    panels.cancel();
    form().choosePicture.trigger();
    EXPECT_EQ(form().picture.picture().size(), QSize(7, 3));
}

TEST_F(PictureOfAnItemTest, whatIsNoPictureSaysSoAndTheOneThereStays)
{
    begin();
    items().create();
    drop(picture({5, 6}));
    QMimeData text;
    text.setText("oak");
    form().picture.offer(text);
    EXPECT_TRUE(form().picture.fault().contains("is no picture that can be used")) << form().picture.fault().toStdString();
    EXPECT_EQ(form().picture.picture().size(), QSize(5, 6));
    drop(picture({4, 4}));
    EXPECT_EQ(form().picture.fault(), "");
    EXPECT_EQ(form().picture.picture().size(), QSize(4, 4));
}

TEST_F(PictureOfAnItemTest, aPictureThatCannotBeWrittenIsKeptAndTheStatusLineSaysWhere)
{
    begin();
    Item& mug = item("Mug");
    app().session().writeDatabase(items());
    writeFile("ItemImages", "in the way");
    QString status;
    QObject::connect(&app(), &Vendaro::statusWanted, [&](const QString& line) { status = line; });
    items().editThisItem(mug);
    drop(picture({5, 6}));
    form().save.trigger();
    EXPECT_FALSE(form().isOpen());
    EXPECT_EQ(recovered("1.tiff").size(), 1);
    EXPECT_TRUE(status.contains("It is kept at " + supportFolder() + "/Recovery/")) << status.toStdString();
    EXPECT_TRUE(logged(status));
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(PictureOfAnItemTest, thePictureOfADeletedItemDoesNotBecomeThatOfTheNextWithItsId)
{
    begin();
    Item& mug = item("Mug");
    ASSERT_TRUE(mug.setImage(picture({5, 6})));
    deleteItem(mug);
    EXPECT_TRUE(hasPicture(1)) << "undo may bring the item back";
    items().create();
    EXPECT_TRUE(form().picture.picture().isNull());
    form().save.trigger();
    ASSERT_EQ(items().at(0).getID(), 1);
    EXPECT_TRUE(items().at(0).getImage().isNull());
    EXPECT_FALSE(hasPicture(1));
    EXPECT_EQ(recovered("1.tiff").size(), 1);
}

TEST_F(PictureOfAnItemTest, aReadersPictureIsNotWritten)
{
    beginReadOnly();
    items().editThisItem(item("Mug"));
    drop(picture({5, 6}));
    alerts.answer("OK");
    form().save.trigger();
    EXPECT_FALSE(hasFile("ItemImages"));
    EXPECT_FALSE(form().isOpen());
}

TEST_F(PictureOfAnItemTest, aSimilarItemBringsThePictureAlong)
{
    begin();
    items().create();
    drop(picture({5, 6}));
    form().createSimilar.trigger();
    form().save.trigger();
    EXPECT_TRUE(hasPicture(1));
    EXPECT_TRUE(hasPicture(2));
    EXPECT_EQ(items().at(1).getImage().size(), QSize(5, 6));
}
