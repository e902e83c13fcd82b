// Window tests run under a full application, dressed as the program is. They bring their own platform, so no screen is needed.
#include "ui/kit/Theme.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Theme::prepare();
    QApplication application(argc, argv);
    Theme::apply(application, Theme::Mode::light);
    return RUN_ALL_TESTS();
}
