// The letters that choose the commands of an open menu.
#include "ui/shell/MenuLetters.h"

#include "UiTest.h"

#include <QMenu>

TEST(MenuLetters, theFirstWordThatIsFreeGivesIt)
{
    QString taken = "N";
    EXPECT_EQ(menuLetters::mark("New Job", taken), QString("New &Job"));
    EXPECT_EQ(taken, QString("NJ"));
}

TEST(MenuLetters, withoutAFreeBeginningAnyLetterWill)
{
    QString taken = "NJ";
    EXPECT_EQ(menuLetters::mark("New Job", taken), QString("N&ew Job"));
}

TEST(MenuLetters, aTextWithoutAFreeLetterStays)
{
    QString taken = "ÉN";
    EXPECT_EQ(menuLetters::mark("né", taken), QString("né"));
    EXPECT_EQ(taken, QString("ÉN"));
    EXPECT_EQ(menuLetters::mark("", taken), QString());
}

TEST(MenuLetters, anAmpersandThatIsPartOfAWordIsNoLetter)
{
    QString taken;
    EXPECT_EQ(menuLetters::mark("&& Sons", taken), QString("&& &Sons"));
}

TEST(MenuLetters, everyCommandHasOneThatNoOtherHas)
{
    QMenu menu;
    menu.addAction("New Contact");
    menu.addAction("&New Order");
    menu.addSeparator();
    menu.addAction("New Company");
    QMenu* more = menu.addMenu("Export");
    more->addAction("New Export");
    menuLetters::give(menu);
    QStringList texts;
    for (const QAction* command : menu.actions())
        texts += command->text();
    // All beginnings of "New Company" are taken, and then the "E" of "Export".
    EXPECT_EQ(texts, (QStringList {"New &Contact", "&New Order", "", "N&ew Company", "E&xport"}));
    EXPECT_EQ(more->actions()[0]->text(), QString("&New Export")) << "a menu of its own";
    menuLetters::give(menu);
    EXPECT_EQ(menu.actions()[0]->text(), QString("New &Contact")) << "given once";
}
