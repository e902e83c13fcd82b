// Goes through the program window by window, takes a picture of each in light and dark, and saves an invoice as PDF. For the manual it
// takes smaller ones, of smaller windows, and only those its pages show.
#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>

class Program;
class QWidget;

class Tour {
public:
    Tour(Program& program, QString folder);

    /// The pictures the manual shows, by their names without ending, instead of all.
    void takeForManual(const QStringList& names);

    /// What did not come up or was not as it should be, one sentence each; empty when all went well.
    QStringList go();

private:
    void inBothShades(void (Tour::*part)());
    void lists();
    void orderEditor();
    /// Fields whose values do not read, in the editor and on the tender sheet.
    void showFaults();
    void itemEditor();
    void contactEditors();
    void takeOrdersOfContact(const char* editor);
    void document();
    /// Every page of the settings, with a value or two that does not read.
    void settings();
    void showSettingsFaults();
    void sheets();
    /// A newer version is there, and on its way.
    void update();
    /// Something to bring back: an order is deleted, a contact changed, a file did not read.
    void makeMishaps();
    void notepad();
    void recovery();
    /// A page of the manual in its window.
    void help();
    void checkInvoice();

    /// Saves the window as a numbered picture.
    void take(QWidget* window, const char* name);
    /// The same, with a sheet standing on the window.
    void takeSheet(QWidget* window, const char* name);
    /// The picture of what stands on the window while action runs; action waits for an answer, which is given as cancelled.
    void takeDuring(QWidget* window, const char* name, const std::function<void()>& action);
    /// Full size and numbered, or as the manual shows it.
    bool save(const QPixmap& picture, const QString& name) const;
    QSize windowSize() const;
    QWidget* windowNamed(const char* name) const;
    void fail(const QString& sentence) { m_failures += sentence; }

    Program& m_program;
    QString m_folder;
    QString m_shade;
    QStringList m_forManual;
    int m_number = 0;
    QStringList m_failures;
};
