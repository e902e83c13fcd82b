// Places of windows and other odds and ends that are kept between runs.
#include "ui/WindowMemory.h"

#include "UiTest.h"

#include <QDir>
#include <QFile>
#include <QScreen>

#include <sys/stat.h>
#include <tuple>

using namespace uitest;

TEST(WindowMemory, aWindowNobodyRememberedKeepsItsOwnSize)
{
    QWidget window;
    window.resize(321, 234);
    WindowMemory::restore(window, "never seen");
    EXPECT_EQ(window.size(), QSize(321, 234));
}

TEST(WindowMemory, aWindowTooLargeForTheScreenComesUpWithinIt)
{
    QWidget window;
    const QSize room = window.screen()->availableSize();
    window.resize(room + QSize(300, 200));
    WindowMemory::restore(window, "too large");
    // 16 and 48 points are left for the frame.
    EXPECT_EQ(window.size(), room - QSize(16, 48));
}

TEST(WindowMemory, sizeAndPlaceComeBack)
{
    QWidget first;
    first.setGeometry(40, 50, 320, 240);
    first.show();
    WindowMemory::remember(first, "notes");
    QWidget second;
    WindowMemory::restore(second, "notes");
    EXPECT_EQ(second.geometry(), QRect(40, 50, 320, 240));
}

TEST(WindowMemory, theLastPlaceCounts)
{
    QWidget window;
    window.resize(300, 200);
    WindowMemory::remember(window, "twice");
    window.resize(350, 250);
    WindowMemory::remember(window, "twice");
    QWidget next;
    WindowMemory::restore(next, "twice");
    EXPECT_EQ(next.size(), QSize(350, 250));
}

TEST(WindowMemory, aWindowThatStandsWhereItStoodWritesNothing)
{
    const auto file = [] {
        struct stat status { };
        EXPECT_EQ(stat(QFile::encodeName(QDir::homePath() + "/Library/Preferences/Vendaro.windows.ini"), &status), 0);
        return std::tuple(status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    };
    QWidget window;
    window.resize(300, 200);
    WindowMemory::remember(window, "still");
    const auto written = file();
    WindowMemory::remember(window, "still");
    EXPECT_EQ(file(), written);
    window.resize(310, 200);
    WindowMemory::remember(window, "still");
    EXPECT_NE(file(), written);
}

TEST(WindowMemory, aWindowThatStoodOnAScreenThatIsGoneComesBackWhereItCanBeSeen)
{
    QWidget window;
    window.setGeometry(9000, 9000, 320, 240);
    WindowMemory::remember(window, "far away");
    QWidget next;
    WindowMemory::restore(next, "far away");
    next.show();
    EXPECT_TRUE(next.screen()->geometry().intersects(next.geometry()));
}

TEST(WindowMemory, keepsWhateverElseIsGivenToIt)
{
    EXPECT_EQ(WindowMemory::state("look of the test"), QByteArray());
    const QByteArray bytes("a;b=\0\n\"c\"", 10);
    WindowMemory::rememberState("look of the test", bytes);
    EXPECT_EQ(WindowMemory::state("look of the test"), bytes);
}
