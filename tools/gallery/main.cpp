#include "ui/kit/Theme.h"
#include <QApplication>
int main(int argc, char** argv)
{
    Theme::prepare();
    QApplication application(argc, argv);
    Theme::apply(application, Theme::Mode::light);
    return 0;
}
