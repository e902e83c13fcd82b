#include "foundation/Log.h"
#include "ui/Ending.h"
#include "ui/Program.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/Theme.h"
#include "ui/WindowMemory.h"

#include <QApplication>
#include <QDir>

int main(int argc, char** argv)
{
    Ending::ignoreClosedPipes();
    Theme::prepare();
    QApplication application(argc, argv);
    QApplication::setApplicationName("Vendaro");
    QApplication::setApplicationVersion(VENDARO_VERSION);
    QApplication::setQuitOnLastWindowClosed(false);
    setLogSink(fileLogSink((QDir::homePath() + "/Library/Logs/Vendaro.log").toStdString()));
    Theme::apply(application, Theme::modeNamed(QString::fromUtf8(WindowMemory::state("look"))));
    FocusRing::install(application);
    Ending ending;
    Program program;
    ending.onScreenLost = [&program] { program.endWithoutScreen(); };
    return program.run();
}
