#include "desktop/Form.h"

#include <gtest/gtest.h>

namespace {

class CupForm : public Form {
public:
    TextField name {*this, "name"};
    FlagField full {*this, "full"};
    ChoiceField size {*this, "size"};
    CommandField drink {*this, "drink"};
};

} // namespace

class FormTest : public testing::Test {
protected:
    FormTest()
    {
        QObject::connect(&form, &Form::fieldChanged, [this](FormField* field) { changed += field->name(); });
        form.name.onEdited = [this] { edited += "name"; };
        form.full.onEdited = [this] { edited += "full"; };
        form.size.onEdited = [this] { edited += "size"; };
    }

    CupForm form;
    QStringList changed;
    QStringList edited;
};

TEST_F(FormTest, fieldsAreFoundByTheirNames)
{
    EXPECT_EQ(form.field("size"), &form.size);
    EXPECT_EQ(form.field("Size"), nullptr);
    EXPECT_EQ(form.field(""), nullptr);
    EXPECT_EQ(form.fields().size(), 4u);
}

TEST_F(FormTest, aValueSetByTheControllerIsShownButWasNotEdited)
{
    form.name.setText("mug");
    form.full.setOn(true);
    form.size.setTitles({"small", "large"});
    form.size.setIndex(1);

    EXPECT_EQ(changed, (QStringList {"name", "full", "size", "size"}));
    EXPECT_EQ(edited, QStringList());
}

TEST_F(FormTest, aTitleThatIsNotOfferedJoinsTheOthersUnlessItIsEmpty)
{
    form.size.setTitles({"small", "large"});
    form.size.setOrAddTitle("large");
    EXPECT_EQ(form.size.index(), 1);
    form.size.setOrAddTitle("huge");
    EXPECT_EQ(form.size.titles(), (QStringList {"small", "large", "huge"}));
    EXPECT_EQ(form.size.title(), "huge");
    form.size.setOrAddTitle("");
    EXPECT_EQ(form.size.titles().size(), 3);
    EXPECT_EQ(form.size.index(), -1);
}

TEST_F(FormTest, anEditIsShownAndTold)
{
    form.size.setTitles({"small", "large"});
    changed.clear();

    form.name.edit("mug");
    form.full.edit(true);
    form.size.edit(1);

    EXPECT_EQ(form.name.text(), "mug");
    EXPECT_TRUE(form.full.isOn());
    EXPECT_EQ(form.size.title(), "large");
    EXPECT_EQ(changed, (QStringList {"name", "full", "size"}));
    EXPECT_EQ(edited, (QStringList {"name", "full", "size"}));
}

TEST_F(FormTest, whatIsTheSameAlreadyIsNoChange)
{
    form.name.setText("");
    form.name.edit("");
    form.full.setOn(false);
    form.full.edit(false);
    form.size.setIndex(-1);
    form.setTitle("");
    form.name.setEnabled(true);
    form.name.setVisible(true);
    form.name.setReadOnly(false);
    form.name.setCaption("");

    EXPECT_EQ(changed, QStringList());
    EXPECT_EQ(edited, QStringList());
}

TEST_F(FormTest, aDisabledFieldTakesNoEdits)
{
    form.size.setTitles({"small", "large"});
    for (FormField* field : form.fields())
        field->setEnabled(false);
    bool drunk = false;
    form.drink.run = [&] { drunk = true; };

    form.name.edit("mug");
    form.full.edit(true);
    form.size.edit(0);
    form.drink.trigger();

    EXPECT_EQ(form.name.text(), "");
    EXPECT_FALSE(form.full.isOn());
    EXPECT_EQ(form.size.index(), -1);
    EXPECT_FALSE(drunk);
    EXPECT_EQ(edited, QStringList());
}

TEST_F(FormTest, aFieldForReadingIsSetButNotEdited)
{
    form.name.setReadOnly(true);

    form.name.edit("mug");
    EXPECT_EQ(form.name.text(), "");
    form.name.setText("cup");
    EXPECT_EQ(form.name.text(), "cup");
}

TEST_F(FormTest, aChoiceBeyondItsTitlesIsNone)
{
    form.size.setTitles({"small", "large"});
    form.size.setIndex(1);

    form.size.setIndex(2);
    EXPECT_EQ(form.size.index(), -1);
    EXPECT_EQ(form.size.title(), "");
    form.size.setTitle("large");
    EXPECT_EQ(form.size.index(), 1);
    form.size.setTitle("huge");
    EXPECT_EQ(form.size.index(), -1);
    form.size.edit(-1);
    form.size.edit(2);
    EXPECT_EQ(edited, QStringList());
}

TEST_F(FormTest, theChosenTitleStaysChosenWhereverItMoves)
{
    form.size.setTitles({"small", "large"});
    form.size.setIndex(1);

    form.size.setTitles({"tiny", "small", "large"});
    EXPECT_EQ(form.size.index(), 2);
    form.size.addTitle("huge");
    EXPECT_EQ(form.size.title(), "large");
    form.size.setTitles({"small"});
    EXPECT_EQ(form.size.index(), -1);
}

TEST_F(FormTest, noneStaysChosenWhenAnEmptyTitleComes)
{
    form.size.setTitles({"", "small"});
    EXPECT_EQ(form.size.index(), -1);
    form.size.setTitles({"small", ""});
    EXPECT_EQ(form.size.index(), -1);
}

TEST_F(FormTest, aButtonRunsWhatItIsGiven)
{
    form.drink.trigger();
    int cups = 0;
    form.drink.run = [&] { ++cups; };
    form.drink.trigger();

    EXPECT_EQ(cups, 1);
}

TEST_F(FormTest, openingTellsEveryTimeAndClosingOnce)
{
    int opened = 0;
    int closed = 0;
    QObject::connect(&form, &Form::opened, [&] { ++opened; });
    QObject::connect(&form, &Form::closed, [&] { ++closed; });

    form.close();
    form.open();
    form.open();
    EXPECT_TRUE(form.isOpen());
    form.close();
    form.close();

    EXPECT_FALSE(form.isOpen());
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(closed, 1);
}

TEST_F(FormTest, titlesCaptionsAndTheKeyboardAreTold)
{
    int titles = 0;
    QStringList focused;
    QObject::connect(&form, &Form::titleChanged, [&] { ++titles; });
    QObject::connect(&form, &Form::focusWanted, [&](const QString& name) { focused += name; });

    form.setTitle("Cup");
    form.size.setCaption("ml");
    form.full.setVisible(false);
    form.focus(form.name);

    EXPECT_EQ(form.title(), "Cup");
    EXPECT_EQ(titles, 1);
    EXPECT_EQ(changed, (QStringList {"size", "full"}));
    EXPECT_FALSE(form.full.isVisible());
    EXPECT_EQ(focused, QStringList {"name"});
}
