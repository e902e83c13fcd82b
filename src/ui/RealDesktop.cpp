#include "ui/RealDesktop.h"

#include "ui/kit/AlertCard.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>

#include <pwd.h>
#include <unistd.h>

int RealAlerts::ask(const Alert& alert)
{
    return AlertCard::ask(QApplication::activeWindow(), alert.title, alert.text, alert.buttons);
}

std::optional<QString> RealFilePanels::openFile(const QString& title)
{
    const QString path = QFileDialog::getOpenFileName(QApplication::activeWindow(), title, QDir::homePath());
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

std::optional<QString> RealFilePanels::saveFile(const SavePanel& panel)
{
    const QString start = (panel.folder.isEmpty() ? QDir::homePath() : panel.folder) + '/' + panel.name;
    const QString pattern = panel.fileType.isEmpty() ? QString() : "*." + panel.fileType;
    QString path = QFileDialog::getSaveFileName(QApplication::activeWindow(), panel.title, start, pattern);
    if (path.isEmpty())
        return std::nullopt;
    if (!panel.fileType.isEmpty() && !path.endsWith('.' + panel.fileType))
        path += '.' + panel.fileType;
    return path;
}

void RealBeeper::beep()
{
    QApplication::beep();
}

void RealOpener::openUrl(const QUrl& url)
{
    QDesktopServices::openUrl(url);
}

void RealOpener::revealFolder(const QString& path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool RealPrinting::print(const QString& title, const std::function<bool(QPagedPaintDevice&)>& paint)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange);
    if (dialog.exec() != QDialog::Accepted)
        return true;
    if (dialog.printRange() == QAbstractPrintDialog::AllPages)
        printer.setPageRanges({});
    return paint(printer);
}

QString RealUser::loginName() const
{
    const passwd* entry = getpwuid(getuid());
    return entry ? QString::fromLocal8Bit(entry->pw_name) : qEnvironmentVariable("USER");
}

QString RealUser::home() const
{
    return QDir::homePath();
}
