#include "ui/settings/Pages.h"

#include "app/Vendaro.h"
#include "ui/kit/Button.h"
#include "ui/kit/Panels.h"
#include "ui/kit/PickList.h"
#include "ui/settings/SettingsPage.h"

#include <QVBoxLayout>

SettingsPage* settingsPages::makeDocuments(Vendaro& vendaro)
{
    auto* page = new SettingsPage(SettingsPage::tr("Documents"));
    page->addNote(
        SettingsPage::tr("Documents are made from these templates. Change them with a word processor, or put your own beside them."));
    GroupHeader* header = page->addGroup(SettingsPage::tr("Templates"));
    auto* open = new Button(SettingsPage::tr("Open Folder"));
    open->setObjectName("openStationery");
    header->addButton(open);
    auto* list = new PickList(SettingsPage::tr("Templates"));
    list->setObjectName("templates");
    list->setMinimumHeight(160);
    page->column()->addWidget(list, 1);
    QObject::connect(open, &QPushButton::clicked, page, [&vendaro] { vendaro.showStationeryFolder(); });
    // Files come and go while the program runs.
    QObject::connect(page, &SettingsPage::shown, list, [list, &vendaro] {
        list->clear();
        for (const QString& name : vendaro.stationeryNames())
            list->addEntry("document-print", name);
        list->setCurrentRow(0);
    });
    return page;
}
