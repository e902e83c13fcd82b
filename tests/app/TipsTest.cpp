// The tips of the start: the order they come in, and the two switches.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class TipsTest : public Scenario {
protected:
    TipsTest() : m_own(resources)
    {
        resources = m_resources.path();
        putTips("First\nSecond\nThird\nFourth\nFifth\n");
    }
    void putTips(const QByteArray& lines) const
    {
        ASSERT_TRUE(QDir().mkpath(m_resources.path() + "/tips"));
        QFile file(m_resources.path() + "/tips/tips.txt");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines);
    }
    TipsForm& form() { return app().tips().form; }
    std::string shown() { return form().isOpen() ? form().tip.text().toStdString() : "(none)"; }
    std::string stored(const char* key) { return app().settingsStore().text(key).value_or("(none)"); }

    const QString m_own;
    QTemporaryDir m_resources;
};

TEST_F(TipsTest, theVeryFirstStartShowsTheFirstAndLaterOnesTheNext)
{
    start();
    EXPECT_EQ(shown(), "First");
    EXPECT_EQ(stored("tipNumber"), "0");
    restart();
    EXPECT_EQ(shown(), "Second");
    EXPECT_EQ(stored("tipNumber"), "1");
}

TEST_F(TipsTest, afterTheLastComesTheSecond)
{
    writeSettings("<key>tipNumber</key><integer>4</integer>");
    start();
    EXPECT_EQ(shown(), "Second");
    EXPECT_EQ(stored("tipNumber"), "1");
}

TEST_F(TipsTest, theLastIsShown)
{
    writeSettings("<key>tipNumber</key><integer>3</integer>");
    start();
    EXPECT_EQ(shown(), "Fifth");
}

TEST_F(TipsTest, aNumberBeyondAllTipsIsTheSecond)
{
    for (const char* number : {"2147483647", "-7", "99"}) {
        writeSettings(QByteArray("<key>tipNumber</key><integer>") + number + "</integer>");
        start();
        EXPECT_EQ(shown(), "Second") << number;
        crash();
    }
}

TEST_F(TipsTest, whoeverSwitchedThemOffSeesNone)
{
    writeSettings("<key>dontShowTip</key><true/><key>tipNumber</key><integer>2</integer>");
    start();
    EXPECT_EQ(shown(), "(none)");
    EXPECT_EQ(stored("tipNumber"), "2");
    EXPECT_TRUE(form().dontShowTips.isOn());
    EXPECT_TRUE(app().getPrefsController().form.prefDontShowTips.isOn());
}

TEST_F(TipsTest, theSwitchesFollowEachOtherAndAreKept)
{
    start();
    FlagField& preference = app().getPrefsController().form.prefDontShowTips;
    EXPECT_FALSE(preference.isOn());
    form().dontShowTips.edit(true);
    EXPECT_TRUE(preference.isOn());
    restart();
    EXPECT_EQ(shown(), "(none)");

    app().getPrefsController().form.prefDontShowTips.edit(false);
    EXPECT_FALSE(form().dontShowTips.isOn());
    restart();
    EXPECT_EQ(shown(), "Second");
}

TEST_F(TipsTest, moreAreShownOnDemandAlsoWhenTheyAreSwitchedOff)
{
    writeSettings("<key>dontShowTip</key><true/>");
    start();
    app().tips().showNext();
    EXPECT_EQ(shown(), "First");
    form().next.trigger();
    EXPECT_EQ(shown(), "Second");
    EXPECT_EQ(stored("tipNumber"), "1");
    form().cancel.trigger();
    EXPECT_EQ(shown(), "(none)");
}

TEST_F(TipsTest, aTipIsShownOnceTheDatabaseIsRead)
{
    startWatched([this](Vendaro& vendaro) {
        QObject::connect(&vendaro.tips().form, &Form::opened, [this] { EXPECT_TRUE(logged("Finished reading database")); });
    });
    EXPECT_EQ(shown(), "First");
}

TEST_F(TipsTest, withoutTipsThereIsNothingToShow)
{
    putTips("");
    start();
    EXPECT_EQ(shown(), "(none)");
    EXPECT_EQ(stored("tipNumber"), "(none)");
}

TEST_F(TipsTest, theProgramsOwnTipsAreThere)
{
    resources = m_own;
    start();
    EXPECT_GT(shown().size(), 20u);
}
