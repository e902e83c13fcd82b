#include "ui/settings/Pages.h"

#include "app/Vendaro.h"
#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/kit/Panels.h"
#include "ui/kit/PickList.h"
#include "ui/settings/SettingsPage.h"

#include <QVBoxLayout>

namespace {

constexpr int databaseListHeight = 150;

/// Gives a name that was typed in place to the settings.
void takeNames(PickList* list, PrefsController& preferences)
{
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QObject::connect(list, &QListWidget::itemChanged, list, [list, &preferences](const QListWidgetItem* entry) {
        const QString name = entry->text();
        if (list->row(entry) != preferences.form.databases.index() || name == preferences.form.databases.title())
            return;
        // The list is made anew, and it is still in the middle of this.
        QMetaObject::invokeMethod(
            list, [&preferences, name] { preferences.renameDatabase(name); }, Qt::QueuedConnection);
    });
}

void beginRenaming(PickList* list)
{
    if (QListWidgetItem* entry = list->currentItem()) {
        const QSignalBlocker quiet(list);
        entry->setFlags(entry->flags() | Qt::ItemIsEditable);
        list->setFocus();
        list->editItem(entry);
    }
}

PickList* makeDatabaseList(PrefsController& preferences)
{
    auto* list = settingsField<PickList>(preferences.form.databases, SettingsPage::tr("Databases"));
    list->setMinimumHeight(databaseListHeight);
    takeNames(list, preferences);
    return list;
}

/// Where the database lies that the settings name, and whether it is the open one.
void addPlace(SettingsPage* page, Vendaro& vendaro)
{
    FormGrid* fields = page->addForm();
    fields->setLabelWidth(0);
    const PrefsController& preferences = vendaro.getPrefsController();
    auto* place = new Figure;
    place->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    place->setObjectName("databasePlace");
    fields->addRow(SettingsPage::tr("Folder"), place);
    auto* later = new Label({}, LabelSize::small, LabelTone::warning);
    later->setObjectName("databaseLater");
    later->setWordWrap(true);
    page->column()->addWidget(later);
    const auto show = [&preferences, place, later] {
        place->setFigure(QString::fromStdString(preferences.getDbLocation()));
        const bool isOpen = preferences.isFormsLocationOpen();
        later->setText(isOpen ? QString() : SettingsPage::tr("It is opened when Vendaro starts the next time."));
        later->setVisible(!isOpen);
    };
    vendaro.getPrefsController().form.follow({&preferences.form.dbLocation}, place, show);
    QObject::connect(&vendaro.session(), &DatabaseSession::databaseRead, place, show);
}

} // namespace

SettingsPage* settingsPages::makeDatabases(Vendaro& vendaro)
{
    PrefsController& preferences = vendaro.getPrefsController();
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Databases"));
    page->addNote(SettingsPage::tr("The selected database is the open one. Select another to switch to it."));
    page->column()->addSpacing(4);
    PickList* list = makeDatabaseList(preferences);
    auto* rename = new Button(SettingsPage::tr("Rename"));
    rename->setObjectName("rename");
    rename->setKeys(QKeySequence(Qt::Key_F2));
    auto* copy = new Button(SettingsPage::tr("Make Offline Copy…"));
    copy->setObjectName("offlineCopy");
    page->addListWithButtons(list, {settingsField<Button>(form.newDatabase, SettingsPage::tr("New…")), rename, copy});

    auto* trouble = new Label({}, LabelSize::small, LabelTone::error);
    trouble->setObjectName("databaseTrouble");
    page->column()->addWidget(trouble);
    preferences.form.follow({&form.databases}, trouble, [trouble, &form] {
        trouble->setText(form.databases.fault());
        trouble->setVisible(!form.databases.fault().isEmpty());
    });

    page->addGroup(SettingsPage::tr("Another place"));
    addPlace(page, vendaro);
    auto* places = new QHBoxLayout;
    places->setSpacing(8);
    places->addWidget(settingsField<Button>(form.selectDbLocation, SettingsPage::tr("Choose…")));
    places->addWidget(settingsField<Button>(form.createDbLocation, SettingsPage::tr("Create…")));
    places->addWidget(settingsField<Button>(form.setDbLocationToDefault, SettingsPage::tr("Back to Default…")));
    places->addStretch(1);
    page->column()->addLayout(places);

    QObject::connect(rename, &QPushButton::clicked, list, [list] { beginRenaming(list); });
    QObject::connect(copy, &QPushButton::clicked, page, [&vendaro] { vendaro.session().copyDatabase(); });
    preferences.form.follow({&form.databases}, rename, [rename, &form] { rename->setEnabled(form.databases.index() >= 0); });
    // A switch may have made a database, and the open one is selected.
    const auto showOpen = [&preferences] {
        preferences.form.databases.setIndex(-1);
        preferences.listDatabases();
    };
    QObject::connect(&vendaro.session(), &DatabaseSession::databaseRead, page, showOpen, Qt::QueuedConnection);
    return page;
}
