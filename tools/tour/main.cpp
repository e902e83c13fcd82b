// vendaro_tour --manual FOLDER: the pictures that the manual in the folder shows, written into its folder "pictures".
// vendaro_tour FOLDER: pictures of every window and the PDF of an invoice, written into FOLDER. Uses a home of its own, so nothing of
// the person's is touched. Ends with 1 when something did not come up.
#include "Tour.h"

#include "ui/Program.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

namespace {

/// Pictures of an earlier tour, which may have had other windows.
void removeOldPictures(const QString& folder, const QStringList& patterns)
{
    QDir pictures(folder);
    for (const QString& name : pictures.entryList(patterns, QDir::Files))
        pictures.remove(name);
}

/// The names of the pictures that the pages of the manual show in the light.
QStringList picturesShownBy(const QString& manual)
{
    static const QRegularExpression shown("src=\"pictures/([a-z-]+)\\.png\"");
    QStringList names;
    const QDir pages(manual);
    for (const QString& page : pages.entryList({"*.html"}, QDir::Files)) {
        QFile file(pages.filePath(page));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (auto found = shown.globalMatch(text); found.hasNext();)
            names += found.next().captured(1);
    }
    names.removeDuplicates();
    return names;
}

/// A home of its own, which goes with this: of a name that may be seen in the manual, or of any.
class TourHome {
public:
    explicit TourHome(bool forManual)
    {
        if (forManual && QDir().mkdir(nameForManual))
            m_path = nameForManual;
        else if (!forManual)
            m_path = m_temporary.path();
    }
    ~TourHome()
    {
        if (m_path == QLatin1String(nameForManual))
            QDir(m_path).removeRecursively();
    }
    TourHome(const TourHome&) = delete;
    TourHome& operator=(const TourHome&) = delete;
    /// Empty when there is none.
    const QString& path() const { return m_path; }

    static constexpr char nameForManual[] = "/tmp/ada";

private:
    const QTemporaryDir m_temporary;
    QString m_path;
};

} // namespace

int main(int argc, char** argv)
{
    const bool forManual = argc == 3 && QLatin1String(argv[1]) == QLatin1String("--manual");
    if (argc != 2 && !forManual) {
        std::fprintf(stderr, "usage: %s [--manual] FOLDER\n", argv[0]);
        return 2;
    }
    const TourHome home(forManual);
    if (home.path().isEmpty()) {
        std::fprintf(stderr, "%s is there already: remove it first\n", TourHome::nameForManual);
        return 1;
    }
    qputenv("HOME", home.path().toUtf8());
    qputenv("LC_ALL", "en_GB.UTF-8");
    Theme::prepare();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Theme::apply(application, Theme::Mode::light);
    FocusRing::install(application);
    const QString given = QString::fromLocal8Bit(argv[argc - 1]);
    const QString folder = forManual ? given + "/pictures" : given;
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "%s cannot be made\n", qPrintable(folder));
        return 1;
    }
    const QStringList shown = forManual ? picturesShownBy(given) : QStringList();
    if (forManual && shown.isEmpty()) {
        std::fprintf(stderr, "%s holds no pages with pictures\n", qPrintable(given));
        return 1;
    }
    removeOldPictures(folder, forManual ? QStringList {"*.png"} : QStringList {"[0-9][0-9]-*-light.png", "[0-9][0-9]-*-dark.png"});
    Program program;
    program.start();
    Tour tour(program, folder);
    tour.takeForManual(shown);
    const QStringList failures = tour.go();
    program.end();
    for (const QString& sentence : failures)
        std::fprintf(stderr, "%s\n", qPrintable(sentence));
    return failures.isEmpty() ? 0 : 1;
}
