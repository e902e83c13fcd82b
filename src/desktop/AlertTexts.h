// The wording of every alert, each declared once.
#pragma once

#include "desktop/Alerts.h"

namespace alerts {

// Storage
inline const AlertText readOnlyMode {"Read-only mode", "Database is in read-only mode.", {"OK"}};
inline const AlertText offlineDatabase {"Offline Database", "This database is a copy made by %@ on %@ for offline read-only use", {"OK"}};
inline const AlertText databaseNotLocked {"Unlock database", "The database is not locked.", {"OK"}};
inline const AlertText unlockDatabase {"Unlock database",
    "The database is locked. This may be because Vendaro didn't quit properly last time or it may be because another user is "
    "using the database. If the latter is true and you continue to unlock, then one or other of you may lose data. Are you sure "
    "no-one else is using the database and would you like to unlock it?",
    {"No", "Yes"}, 1};
inline const AlertText switchDatabase {
    "Switch Vendaro database", "Do you really want to switch database? \r\rIf so, this will happen immediately.", {"OK", "Cancel"}};
inline const AlertText switchToDefaultDatabase {"Switch Vendaro database",
    "Do you really want to switch back to the default database? \r\rIf so, the change will be immediate.", {"OK", "Cancel"}};
inline const AlertText locationChosen {"Create / switch Vendaro database", "The change will be immediate.", {"OK"}};
inline const AlertText upgradeTemplates {"Upgrade templates and reports",
    "It looks as if you're running this version for the first time. It contains an improved method of recording payments. Vendaro "
    "will now show payments in the new way, but existing data is maintained. Templates and reports should work as far as possible "
    "but will benefit from an upgrade to the new payments method. Would you like Vendaro to attempt to upgrade, or would you like "
    "more information and the option to do it yourself manually?",
    {"Yes, attempt upgrade", "More information"}};

// Record picker
inline const AlertText noneInDatabase {"None in database",
    "There are no %@s in the datbase. First create some by going to File > New.... or the appropriate toolbar button", {"OK"}};
inline const AlertText noneInAddressBook {"None in database", "There are no %@s in the address book.", {"OK"}};

// Orders
inline const AlertText deleteOrder {
    "Delete Order", "Are you sure you want to delete the selected item(s) from the database?", {"OK", "Cancel"}, 0};
inline const AlertText deletePayment {"Delete payment", "are you sure you want to delete the selected payment?", {"OK", "Cancel"}, 0};

// Items and order lines
inline const AlertText deleteItems {"Delete Item", "Do you want to delete the selected item from the database?", {"OK", "Cancel"}, 0};
inline const AlertText selfReferential {"Self referential", "Unable to add %@. An item cannot contain an item containing itself", {"OK"}};
inline const AlertText alreadyContains {"Already contains", "Unable to add %@. %@ already contains it. Simply edit the quantity.", {"OK"}};
inline const AlertText itemInUse {"Delete Item", "Unable to delete %@ because it is used in collective item(s): %@", {"OK"}};
inline const AlertText removeLine {"Delete Item",
    "Do you want to remove the selected %@ from this %@? (It will be deleted from this list but the original %@ will remain in "
    "your inventory)",
    {"OK", "Cancel"}, 0};
inline const AlertText collectiveOutOfStock {"Out of Stock",
    "You don't have enough of one or more items that make up the collective item %@. Do you still wish to add one to this order?",
    {"Add anyway", "Cancel"}};
inline const AlertText outOfStock {
    "Out of Stock", "You don't have enough %@. Do you still wish to add %@ to this order?", {"Add anyway", "Cancel"}};
// The figure is all that these two say.
inline const AlertText oneItemUpdated {"", "%@ Item updated", {"OK"}};
inline const AlertText itemsUpdated {"", "%@ Items updated", {"OK"}};
inline const AlertText itemsExported {"Export", "Finished exporting items.", {"OK"}};
inline const AlertText lowStock {"Low Stock", "This leaves %@ of %@ in stock.", {"OK"}};

// Contacts
inline const AlertText deleteContact {"Delete contact", "Do you want to delete the selected item from the database?", {"OK", "Cancel"}, 0};
inline const AlertText savingCompanyContact {"Saving Company Contact",
    "The contact has no company selected, therefore it will be saved without a link to a company. To link it to a company, open it "
    "up once more and click the 'Link to Company' button",
    {"OK"}};
inline const AlertText contactsImported {"Contacts imported", "%@ contacts imported", {"OK"}};
inline const AlertText oneContactUpdated {"Agent finished", "%@ Contact updated", {"OK"}};
inline const AlertText contactsUpdated {"Agent finished", "%@ Contacts updated", {"OK"}};

// Updates
inline const AlertText noUpdate {"Update check", "No update available", {"OK"}};

// Documents
inline const AlertText pdfSaved {"PDF Saved", "%@ saved and attached to the order", {"OK"}};

} // namespace alerts
