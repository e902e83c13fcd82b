// The record picker on the screen.
#include "ui/PickerSheet.h"

#include "UiTest.h"
#include "storage/qvPicker.h"
#include "support/Business.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"

#include <QLabel>

#include <algorithm>

using namespace uitest;

namespace {

class Picker : public Business {
protected:
    void SetUp() override
    {
        begin();
        for (const char* name : {"Anna Hill", "Bert Hill", "Cleo Rivers"})
            contact(name);
        window.resize(1000, 800);
        show(window);
        presenter = std::make_unique<PickerPresenter>(app().getPicker());
    }

    void open()
    {
        app().getPicker().beginfor([this](dataObject& record) { picked += toQString(static_cast<Contact&>(record).getName()); }, contacts(),
            {"name", "type"}, {150, 350}, {"Name", "Type"}, "Contact");
        settle();
    }
    Sheet* sheet() const { return SheetStack::instance().top(); }
    RecordTable* table() const { return sheet()->findChild<RecordTable*>(); }
    QStringList names() const
    {
        QStringList names;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            names += table()->model()->index(row, 0).data().toString();
        return names;
    }

    QWidget window;
    std::unique_ptr<PickerPresenter> presenter;
    QStringList picked;
};

} // namespace

TEST_F(Picker, standsOnTheWindowThatAskedWithTheKeyboardInItsSearch)
{
    open();
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheet()->hostWindow(), &window);
    EXPECT_EQ(sheet()->accessibleName(), app().getPicker().form.title());
    EXPECT_TRUE(child<SearchField>(*sheet(), "search")->hasFocus());
    EXPECT_EQ(names(), QStringList({"Cleo Rivers", "Bert Hill", "Anna Hill"}));
    EXPECT_EQ(table()->model()->headerData(0, Qt::Horizontal).toString(), QString("Name"));
}

TEST_F(Picker, narrowsDownWhileTypingAndTakesTheChosenOneWithReturn)
{
    open();
    QTest::keyClicks(keyboard(), "hill");
    EXPECT_EQ(names(), QStringList({"Bert Hill", "Anna Hill"}));
    QTest::keyClick(keyboard(), Qt::Key_Down);
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_EQ(picked, QStringList({"Anna Hill"}));
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_TRUE(window.isActiveWindow());
}

TEST_F(Picker, theFirstThatIsFoundIsReadyToBeChosen)
{
    open();
    EXPECT_EQ(app().getPicker().selectedRow(), 0);
    EXPECT_TRUE(table()->selectionModel()->isRowSelected(0));
    QTest::keyClicks(keyboard(), "hill");
    EXPECT_EQ(app().getPicker().selectedRow(), 0);
    EXPECT_TRUE(table()->selectionModel()->isRowSelected(0));
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_EQ(picked, QStringList({"Bert Hill"}));
}

TEST_F(Picker, saysHowManyThereAre)
{
    open();
    const auto says = [&](const QString& words) {
        const QList<QLabel*> labels = sheet()->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->text() == words; });
    };
    EXPECT_TRUE(says("3 of 3"));
    QTest::keyClicks(keyboard(), "hill");
    EXPECT_TRUE(says("2 of 3"));
}

TEST_F(Picker, whatIsNotFoundCannotBeChosen)
{
    open();
    QTest::keyClicks(keyboard(), "nobody");
    EXPECT_FALSE(child<QAbstractButton>(*sheet(), "choose")->isEnabled());
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_NE(sheet(), nullptr);
    QTest::keyClick(keyboard(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(keyboard(), Qt::Key_Delete);
    EXPECT_TRUE(child<QAbstractButton>(*sheet(), "choose")->isEnabled());
}

TEST_F(Picker, noOtherRecordCanBeOpenedWhileItAsks)
{
    open();
    EXPECT_EQ(sheet()->blocks(), Sheet::Blocks::theProgram);
}

TEST_F(Picker, aDoubleClickChooses)
{
    open();
    const QPoint place = table()->visualRect(table()->model()->index(2, 0)).center();
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(picked, QStringList({"Anna Hill"}));
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(Picker, theButtonChooses)
{
    open();
    app().getPicker().setSelectedRows({1});
    press(*child<QAbstractButton>(*sheet(), "choose"));
    EXPECT_EQ(picked, QStringList({"Bert Hill"}));
}

TEST_F(Picker, escapeAndTheCancelButtonChooseNothing)
{
    open();
    app().getPicker().setSelectedRows({0});
    press(*child<QAbstractButton>(*sheet(), "cancel"));
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(app().getPicker().form.isOpen());
    open();
    ASSERT_NE(sheet(), nullptr);
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(picked, QStringList());
}

TEST_F(Picker, comesUpAgainWithAllRecordsAndAnEmptySearch)
{
    open();
    QTest::keyClicks(keyboard(), "rivers");
    press(*child<QAbstractButton>(*sheet(), "cancel"));
    settle();
    open();
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(child<SearchField>(*sheet(), "search")->text(), QString());
}

TEST_F(Picker, onAWindowTooSmallForItItIsAWindowOfItsOwn)
{
    window.resize(300, 200);
    open();
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheet()->hostWindow(), nullptr);
    EXPECT_TRUE(sheet()->isWindow());
    press(*child<QAbstractButton>(*sheet(), "cancel"));
}
