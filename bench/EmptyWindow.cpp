// The yardstick of the first paint: a program that shows nothing but an empty main window with a table in it.
#include "FirstPaint.h"

#include <QApplication>
#include <QMainWindow>
#include <QTableWidget>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    FirstPaint paint(FirstPaint::Then::exit);
    QMainWindow window;
    window.resize(1400, 900);
    window.setCentralWidget(new QTableWidget(0, 5));
    window.show();
    return QApplication::exec();
}
