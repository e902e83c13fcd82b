// The main window on the running application, as the program starts it.
#pragma once

#include "UiTest.h"
#include "support/Business.h"
#include "ui/kit/Label.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/SideBar.h"
#include "ui/shell/MainWindow.h"

#include <QAbstractItemView>
#include <QAction>
#include <QStatusBar>

class MainOnScreen : public Business {
protected:
    /// As the program starts: settings, then the window, then the database.
    void launch()
    {
        desktop =
            std::make_unique<Vendaro>(VendaroDesktop {alerts, beeper, clock, user, panels, opener, printing, clipboard, resources, locale});
        desktop->start();
        window = std::make_unique<MainWindow>(*desktop);
        window->show();
        desktop->finishLaunching();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        uitest::settle();
    }
    void TearDown() override
    {
        SheetStack::instance().cancelAll();
        if (desktop)
            desktop->quit();
        window.reset();
        desktop.reset();
    }
    void chooseDates() const { writeSettings("<key>VendaroDateFormat</key><string>0</string>"); }
    /// Two orders, three contacts, one item, saved before the window is there.
    void haveRecords()
    {
        begin();
        order("Three stools");
        order("A bench", "Complete");
        for (const char* name : {"Ada Penrose", "Bert Hill", "Cleo Rivers"})
            contact(name);
        item("Oak stool");
        quit();
    }

    QString status() const { return window->statusBar()->findChildren<Label*>().first()->text(); }
    QAction* command(const char* name) const { return uitest::child<QAction>(*window, name); }
    /// The list of a page, by what it is called.
    QAbstractItemView* list(const QString& name) const
    {
        for (auto* view : window->findChildren<QAbstractItemView*>()) {
            if (view->accessibleName() == name && !qobject_cast<SideBar*>(view))
                return view;
        }
        ADD_FAILURE() << "no list " << name.toStdString();
        return nullptr;
    }
    QStringList barTexts() const
    {
        QStringList texts;
        for (const MessageBar* bar : window->findChildren<MessageBar*>()) {
            if (bar->isVisible())
                texts += bar->text();
        }
        return texts;
    }
    bool opened(Form& form) const { return form.isOpen(); }

    std::unique_ptr<Vendaro> desktop;
    std::unique_ptr<MainWindow> window;
};
