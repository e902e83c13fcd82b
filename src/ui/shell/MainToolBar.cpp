#include "ui/shell/MainToolBar.h"

namespace {

QStringList mainDefaults()
{
    const char* space = ArrangedToolBar::spaceIdentifier;
    return {"printItemIdentifier", "deleteItemIdentifier", space, "contactItemIdentifier", "orderItemIdentifier", "itemItemIdentifier",
        "billItemIdentifier", "goalItemIdentifier", "todoItemIdentifier", space, "logTimeItemIdentifier", space, "checkoutItemIdentifier",
        ArrangedToolBar::flexibleSpaceIdentifier, "prefsItemIdentifier", "helpItemIdentifier"};
}

/// The goal is offered twice.
QStringList mainOffered()
{
    return {"printItemIdentifier", "deleteItemIdentifier", "editItemIdentifier", "companyItemIdentifier", "contactItemIdentifier",
        "orderItemIdentifier", "billItemIdentifier", "goalItemIdentifier", "todoItemIdentifier", "itemItemIdentifier", "goalItemIdentifier",
        "padItemIdentifier", "logTimeItemIdentifier", "htmlItemIdentifier", "csvItemIdentifier", "checkoutItemIdentifier",
        ArrangedToolBar::spaceIdentifier, ArrangedToolBar::flexibleSpaceIdentifier, "prefsItemIdentifier", "helpItemIdentifier"};
}

} // namespace

MainToolBar::MainToolBar(const QString& name, QHash<QString, QAction*> commands, QWidget* window)
    : ArrangedToolBar(name, {"toolbar", std::move(commands), mainDefaults(), mainOffered()}, window)
{
}
