// The settings window on the running application, for the tests that use its pages with mouse and keys.
#pragma once

#include "UiTest.h"
#include "support/Business.h"
#include "ui/WindowMemory.h"
#include "ui/Windows.h"
#include "ui/kit/Label.h"
#include "ui/kit/PickList.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SideBar.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/shell/MainWindow.h"

#include <QAction>
#include <QDir>

enum SettingsPageNumber { general, tax, words, lists, colours, columns, timePage, documents, addressBookPage, databases, lookPage };

class SettingsOnScreen : public Business {
protected:
    void SetUp() override { WindowMemory::rememberState("settings page", {}); }
    void TearDown() override
    {
        SheetStack::instance().cancelAll();
        windows.reset();
        quit();
    }
    void launch(const QByteArray& settings = {})
    {
        begin(settings);
        windows = std::make_unique<Windows>(app());
        windows->main().makeLists();
        uitest::show(windows->main());
    }
    void open(SettingsPageNumber page = general)
    {
        uitest::child<QAction>(windows->main(), "preferences")->trigger();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        uitest::settle();
        window().pages()->setCurrentRow(page);
        uitest::settle();
    }
    SettingsWindow& window() { return windows->settings(); }
    PrefsController& preferences() { return app().getPrefsController(); }
    PrefsForm& form() { return preferences().form; }
    std::string setting(const char* key) { return app().settingsStore().text(key).value_or("(none)"); }
    QLineEdit* field(const char* name) { return uitest::child<QLineEdit>(window(), name); }
    QAbstractButton* button(const char* name) { return uitest::child<QAbstractButton>(window(), name); }
    RecordTable* rates() { return uitest::child<RecordTable>(window(), "taxRates"); }
    PickList* databaseList() { return uitest::child<PickList>(window(), "databases"); }
    QString caption(const char* name) { return uitest::child<Label>(window(), name)->text(); }
    /// The sentence that stands below a field.
    bool isTold(const QString& sentence)
    {
        for (const Label* label : window().findChildren<Label*>()) {
            if (label->isVisible() && label->text() == sentence)
                return true;
        }
        return false;
    }
    void makeDatabase(const QString& name) const { ASSERT_TRUE(QDir().mkpath(supportFolder() + '/' + name + ".vendb")); }

    std::unique_ptr<Windows> windows;
};
