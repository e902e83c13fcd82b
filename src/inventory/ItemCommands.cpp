// What can be done in the item editor besides typing: stock that came in, the picture, the website, where the item is used, and what is
// missing to make some.
#include "inventory/ItemManager.h"

#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "foundation/Money.h"
#include "inventory/ItemPictures.h"
#include "storage/PresentItem.h"
#include "storage/WriteGate.h"

#include <QDir>
#include <QFileInfo>

// Stock by hand

void ItemManager::addStockToItem()
{
    if (!m_currentItem || !form.isOpen()) {
        beeper().beep();
        return;
    }
    addStockForm.setTitle(localText("Add Stock"));
    addStockForm.quantity.setText({});
    addStockForm.open();
    addStockForm.focus(addStockForm.quantity);
}

void ItemManager::addStockDialogOK()
{
    addStockForm.close();
    const MoneyFormatter& money = m_needs.rules.money;
    const float came = money.value(addStockForm.quantity.text().toStdString());
    if (came <= 0 || !m_currentItem || !form.isOpen()) {
        beeper().beep();
        return;
    }
    const auto shown = static_cast<float>(stockQuantity(money, form.qty.text().toStdString()).value_or(0));
    form.qty.setText(QString::fromStdString(numbers::general(static_cast<double>(shown + came))));
    m_changedByCommand = true;
}

void ItemManager::removeAllQtyManagement()
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    int updated = 0;
    for (dataObject* record : records()) {
        auto& item = static_cast<Item&>(*record);
        if (!item.getDecreaseQty())
            continue;
        item.setDecreaseQty(false);
        ++updated;
    }
    // An item that is open would be saved with the switch as it was.
    if (form.isOpen() && !m_created)
        form.decreaseQty.setOn(false);
    if (updated > 0)
        m_needs.gate.writeDatabase(*this);
    m_needs.alerts.ask(makeAlert(updated == 1 ? alerts::oneItemUpdated : alerts::itemsUpdated, {}, {QString::number(updated)}));
}

// The picture

void ItemManager::showPicture(const Item& item)
{
    m_pictureChanged = false;
    // A new item may have the id of one that was deleted, whose picture is none of its own.
    const bool mayHaveOne = m_needs.rules.pictures && &item != m_created.get();
    const Result<QImage> picture = mayHaveOne ? m_needs.rules.pictures->getImage(item.getID()) : QImage();
    form.picture.setPicture(picture ? picture.value() : QImage());
    form.picture.setFault(picture ? QString() : QString::fromStdString(picture.error().message));
    form.removePicture.setEnabled(!picture || !picture.value().isNull());
}

void ItemManager::takePicture(const Result<QImage>& picture)
{
    if (!picture) {
        form.picture.setFault(QString::fromStdString(picture.error().message));
        return;
    }
    form.picture.setFault({});
    form.picture.setPicture(picture.value());
    form.removePicture.setEnabled(!picture.value().isNull());
    m_pictureChanged = true;
    m_changedByCommand = true;
}

void ItemManager::choosePicture()
{
    if (const std::optional<QString> path = m_needs.panels.openFile(localText("Choose Picture")))
        takePicture(ItemPictures::fromFile(*path));
}

void ItemManager::pictureOffered(const QMimeData& data)
{
    takePicture(ItemPictures::fromMimeData(data));
}

void ItemManager::removePicture()
{
    takePicture(QImage());
}

void ItemManager::savePicture(Item& item, bool isNew)
{
    if (!isNew && !m_pictureChanged)
        return;
    const Result<void> saved = item.setImage(form.picture.picture());
    if (saved)
        return;
    logLine(saved.error().message);
    m_needs.showStatus(QString::fromStdString(saved.error().message));
}

// The website

void ItemManager::exportItemAsBrevandObject(const Item& item) const
{
    if (item.getExportbrevand())
        m_webExport.write(item);
}

void ItemManager::exportAsBrevandObjects(const GoesOn& goesOn)
{
    std::vector<const Item*> marked;
    for (const dataObject* record : records()) {
        const auto* item = static_cast<const Item*>(record);
        if (item->getExportbrevand())
            marked.push_back(item);
    }
    const int total = static_cast<int>(marked.size());
    for (int done = 0; done < total; ++done) {
        if (goesOn && !goesOn(done, total)) {
            m_needs.showStatus(
                fillText(localText("Export stopped: %@ of %@ items were exported."), {QString::number(done), QString::number(total)}));
            return;
        }
        exportItemAsBrevandObject(*marked[static_cast<std::size_t>(done)]);
    }
    if (goesOn)
        goesOn(total, total);
    m_needs.alerts.ask(alerts::itemsExported);
}

void ItemManager::selectWebsiteLocation()
{
    SavePanel panel;
    panel.title = localText("Choose a Brevand website folder");
    panel.prompt = localText("Choose");
    panel.nameLabel = localText("Folder name");
    const QString now = m_webExport.folder(form.websitefolder.text());
    panel.folder = QDir::isAbsolutePath(now) ? QFileInfo(now).path() : QString();
    panel.what = SavePanel::What::shownFolder;
    const std::optional<QString> folder = m_needs.panels.saveFile(panel);
    if (!folder)
        return;
    form.websitefolder.setText(*folder);
    m_changedByCommand = true;
}

// Where the item is used, and what is missing

void ItemManager::showUsers()
{
    const bool isNew = m_currentItem == m_created.get();
    usedIn.show(isNew ? std::vector<Item*>() : whereUsed(*m_currentItem), *m_currentItem);
}

void ItemManager::openUsedIn()
{
    Item* user = presentItem(*this, usedIn.selectedId());
    if (!user)
        return;
    cancel();
    editThisItem(*user);
}

void ItemManager::showParts()
{
    m_partsNeeded.emplace(*m_currentItem, [this](int id) { return presentItem(*this, id); });
    form.canBeMade.setText(QString::fromStdString(figureText(m_partsNeeded->canBeMade())));
    const PartNeed* limit = m_partsNeeded->limiting();
    const auto figure = [](double number) { return QString::fromStdString(figureText(number)); };
    form.limitedBy.setText(limit ? fillText(localText("%@: %@ for one, %@ in stock"),
                               {toQString(limit->part->getItem()), figure(limit->forOne), figure(limit->inStock)})
                                 : QString());
    showShortages();
}

void ItemManager::showShortages()
{
    const float count = m_needs.rules.money.value(form.numberToMake.text().toStdString());
    shortages.show(m_partsNeeded ? m_partsNeeded->missingFor(static_cast<double>(count)) : std::vector<PartShortage>());
}
