// Shows every control of the kit in its states, light and dark, for a person to look at.
//
//   vendaro_gallery [--dark] [scene ...]       opens the windows of the scenes, all unless some are named
//   vendaro_gallery --save PREFIX [scene ...]  writes PREFIX-scene-light.png and -dark.png and ends
#include "Scenes.h"

#include "ui/kit/SheetStack.h"
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QElapsedTimer>

#include <cstdio>

namespace {

std::vector<Scene> chosenScenes(const QStringList& names)
{
    std::vector<Scene> chosen;
    for (const std::vector<Scene>& group : {listScenes(), editorScenes(), stateScenes()}) {
        for (const Scene& scene : group) {
            if (names.isEmpty() || names.contains(scene.name))
                chosen.push_back(scene);
        }
    }
    return chosen;
}

void settle()
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 80)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

std::unique_ptr<QWidget> show(const Scene& scene)
{
    std::unique_ptr<QWidget> window = scene.make();
    window->show();
    window->activateWindow();
    settle();
    scene.afterShow(window.get());
    settle();
    return window;
}

bool savePictures(const QString& prefix, const std::vector<Scene>& scenes)
{
    bool allWritten = true;
    for (const auto mode : {Theme::Mode::light, Theme::Mode::dark}) {
        Theme::apply(*qApp, mode);
        for (const Scene& scene : scenes) {
            const std::unique_ptr<QWidget> window = show(scene);
            const QString file = QStringLiteral("%1-%2-%3.png").arg(prefix, scene.name, Theme::nameOf(mode));
            if (!window->grab().save(file)) {
                std::fprintf(stderr, "%s cannot be written\n", qPrintable(file));
                allWritten = false;
            }
            SheetStack::instance().cancelAll();
        }
    }
    return allWritten;
}

} // namespace

int main(int argc, char** argv)
{
    Theme::prepare();
    QApplication application(argc, argv);
    QStringList names = QApplication::arguments().mid(1);
    const bool dark = names.removeAll(QStringLiteral("--dark")) > 0;
    Theme::apply(application, dark ? Theme::Mode::dark : Theme::Mode::light);
    if (const qsizetype save = names.indexOf(QStringLiteral("--save")); save >= 0) {
        const QString prefix = names.value(save + 1, QStringLiteral("kit"));
        return savePictures(prefix, chosenScenes(names.mid(save + 2))) ? 0 : 1;
    }
    std::vector<std::unique_ptr<QWidget>> windows;
    for (const Scene& scene : chosenScenes(names))
        windows.push_back(show(scene));
    return QApplication::exec();
}
