// The manual that is shipped with the program: pages for browsers in one folder. A page is known by its topic, the name of its file
// without ".html"; a heading on it by "topic#heading". The index lists every page under its chapter.
#pragma once

#include <QString>
#include <QUrl>

#include <vector>

class Opener;

class Manual {
public:
    struct Page {
        QString topic;
        QString title;
    };
    struct Chapter {
        QString title;
        std::vector<Page> pages;
    };

    static constexpr char indexTopic[] = "index";

    /// resources: the folder that holds the manual's.
    Manual(Opener& opener, const QString& resources);

    const QString& folder() const { return m_folder; }
    /// Where the page of the topic lies; the index when there is no such page.
    QUrl address(const QString& topic) const;
    /// The topic of a page of the manual, without its heading; empty for any other address.
    QString topicAt(const QUrl& address) const;
    /// What the index lists, in its order; nothing when it cannot be read, and then the log says so.
    std::vector<Chapter> contents() const;

    /// Shows the page in the browser.
    void open(const QString& topic);
    /// The browser for a page that is shown already, or for an address outside of the manual.
    void openElsewhere(const QUrl& address);
    /// The page about menus and keys.
    void menu() { open("menu"); }
    /// The page about older templates and reports.
    void upgradetemplates() { open("upgradetemplates"); }

private:
    Opener& m_opener;
    QString m_folder;
};
