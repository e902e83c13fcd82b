// Window tests run under a full application, dressed as the program is. They bring their own platform, so no screen is needed, and
// their own home, so that nothing of the person's is touched.
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;
    // A test that runs a second program chooses the home of that one.
    const QByteArray chosen = qgetenv("VENDARO_TEST_HOME");
    qputenv("HOME", chosen.isEmpty() ? home.path().toUtf8() : chosen);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Theme::prepare();
    QApplication application(argc, argv);
    Theme::apply(application, Theme::Mode::light);
    return RUN_ALL_TESTS();
}
