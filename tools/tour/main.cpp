// vendaro_tour FOLDER: pictures of every window and the PDF of an invoice, written into FOLDER. Uses a home of its own, so nothing of
// the person's is touched. Ends with 1 when something did not come up.
#include "Tour.h"

#include "ui/Program.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>

namespace {

/// Pictures of an earlier tour, which may have had other windows.
void removeOldPictures(const QString& folder)
{
    QDir pictures(folder);
    for (const QString& name : pictures.entryList({"[0-9][0-9]-*-light.png", "[0-9][0-9]-*-dark.png"}, QDir::Files))
        pictures.remove(name);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("LC_ALL", "en_GB.UTF-8");
    Theme::prepare();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Theme::apply(application, Theme::Mode::light);
    FocusRing::install(application);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "%s cannot be made\n", argv[1]);
        return 1;
    }
    removeOldPictures(folder);
    Program program;
    program.start();
    const QStringList failures = Tour(program, folder).go();
    program.end();
    for (const QString& sentence : failures)
        std::fprintf(stderr, "%s\n", qPrintable(sentence));
    return failures.isEmpty() ? 0 : 1;
}
