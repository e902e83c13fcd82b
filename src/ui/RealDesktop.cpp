#include "ui/RealDesktop.h"

#include "foundation/Log.h"
#include "ui/kit/AlertCard.h"
#include "ui/kit/SheetStack.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>

#include <pwd.h>
#include <unistd.h>

namespace {

bool mayReplace(const QString& path)
{
    if (!QFile::exists(path))
        return true;
    AlertCard::Options options;
    options.destructive = 1;
    const QString title = QCoreApplication::translate("RealFilePanels", "Replace File");
    const QString text = QCoreApplication::translate("RealFilePanels", "\"%1\" is there already. What it holds will be lost.");
    return AlertCard::ask(SheetStack::frontWindow(), title, text.arg(QFileInfo(path).fileName()),
               {QCoreApplication::translate("RealFilePanels", "Cancel"), QCoreApplication::translate("RealFilePanels", "Replace")}, options)
        == options.destructive;
}

} // namespace

int RealAlerts::ask(const Alert& alert)
{
    AlertCard::Options options;
    options.destructive = alert.destructive;
    // What only tells something is no warning.
    options.icon = alert.buttons.size() > 1 ? AlertCard::Icon::warning : AlertCard::Icon::information;
    return AlertCard::ask(SheetStack::frontWindow(), alert.title, alert.text, alert.buttons, options);
}

std::optional<QString> RealFilePanels::openFile(const QString& title)
{
    const QString path = QFileDialog::getOpenFileName(SheetStack::frontWindow(), title, QDir::homePath());
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

std::optional<QString> RealFilePanels::saveFile(const SavePanel& panel)
{
    const QString ending = panel.fileType.isEmpty() ? QString() : '.' + panel.fileType;
    QFileDialog dialog(SheetStack::frontWindow(), panel.title, panel.folder.isEmpty() ? QDir::homePath() : panel.folder,
        ending.isEmpty() ? QString() : '*' + ending);
    const bool choosesFolder = panel.what != SavePanel::What::newFile;
    dialog.setOption(QFileDialog::ShowDirsOnly, panel.what == SavePanel::What::shownFolder);
    dialog.setAcceptMode(choosesFolder ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    if (choosesFolder)
        dialog.setFileMode(QFileDialog::Directory);
    else
        dialog.setDefaultSuffix(panel.fileType);
    dialog.selectFile(panel.name);
    if (!panel.prompt.isEmpty())
        dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    if (!panel.nameLabel.isEmpty())
        dialog.setLabelText(QFileDialog::FileName, panel.nameLabel);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QString path = dialog.selectedFiles().constFirst();
    if (panel.what == SavePanel::What::shownFolder && path != dialog.directory().path())
        return std::nullopt;
    if (choosesFolder || path.endsWith(ending))
        return path;
    // A name with an ending of its own gets ours behind it, and the dialog has asked about another file.
    return mayReplace(path + ending) ? std::optional(path + ending) : std::nullopt;
}

void RealBeeper::beep()
{
    QApplication::beep();
}

void RealOpener::openUrl(const QUrl& url)
{
    if (QDesktopServices::openUrl(url))
        return;
    logLine("nothing opens " + url.toDisplayString().toStdString());
    QApplication::beep();
}

void RealOpener::revealFolder(const QString& path)
{
    openUrl(QUrl::fromLocalFile(path));
}

bool RealPrinting::print(const QString& title, const std::function<bool(QPagedPaintDevice&)>& paint)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    QPrintDialog dialog(&printer, SheetStack::frontWindow());
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange);
    if (dialog.exec() != QDialog::Accepted)
        return true;
    if (dialog.printRange() == QAbstractPrintDialog::AllPages)
        printer.setPageRanges({});
    return paint(printer);
}

QString RealClipboard::text() const
{
    return QApplication::clipboard()->text();
}

void RealClipboard::setText(const QString& text)
{
    QApplication::clipboard()->setText(text);
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
