// The order editor's state: what its controls hold, offer and allow. OrderManager decides, the window shows.
#pragma once

#include "desktop/Form.h"

class OrderForm : public Form {
public:
    /// The tabs of the editor; contacts are connected by the one that is showing.
    enum Tab { orderTab, contactTab, secondContactTab, paymentsTab, repeatTab };

    // Beside the tabs
    TextField orderNum {*this, "orderNum"};
    TextField date {*this, "date"};
    ChoiceField type {*this, "type"};
    ChoiceField status {*this, "status"};
    ChoiceField paymentMethod {*this, "paymentMethod"};
    TextField subtotal {*this, "subtotal"};
    FlagField applyDiscount {*this, "applyDiscount"};
    /// Percent first, then flat.
    ChoiceField discountChoice {*this, "discountChoice"};
    TextField discount {*this, "discount"};
    TextField shipping {*this, "shipping"};
    CommandField shippingFromItems {*this, "shippingFromItems"};
    TextField net {*this, "net"};
    TextField taxAmount {*this, "taxAmount"};
    CommandField calculateTax {*this, "calculateTax"};
    /// Says that the tax does not count the last change yet; empty when it does.
    TextField taxNote {*this, "taxNote"};
    TextField balanceRemaining {*this, "balanceRemaining"};
    /// "200.00 paid", empty without payments.
    TextField paidNote {*this, "paidNote"};
    FlagField includeBOM {*this, "includeBOM"};
    FlagField sent {*this, "sent"};
    /// Only for purchase orders: when the supplier was paid, and booking the goods into stock.
    TextField balancePaid {*this, "balancePaid"};
    CommandField addStock {*this, "addStock"};

    ChoiceField tab {*this, "tab"};

    // Order
    TextField orderTitle {*this, "title"};
    TextField description {*this, "description"};
    CommandField pickMaterial {*this, "pickMaterial"};
    CommandField newItem {*this, "newItem"};
    CommandField removeMaterial {*this, "removeMaterial"};
    /// Below the lines: what is typed or scanned for the next one, the items it may stand for, and the two ways to add it.
    TextField lineEntry {*this, "lineEntry"};
    ChoiceField lineMatches {*this, "lineMatches"};
    CommandField addLine {*this, "addLine"};
    CommandField addFreeLine {*this, "addFreeLine"};

    // Contacts
    TextField contactName {*this, "contactName"};
    TextField contactNote {*this, "contactNote"};
    TextField contactDetails {*this, "contactDetails"};
    TextField contact2Name {*this, "contact2Name"};
    TextField contact2Note {*this, "contact2Note"};
    TextField contact2Details {*this, "contact2Details"};
    CommandField pickContact {*this, "pickContact"};
    CommandField newContact {*this, "newContact"};
    CommandField editContact {*this, "editContact"};

    // Payments
    CommandField tender {*this, "tender"};
    CommandField tenderFullAmount {*this, "tenderFullAmount"};
    CommandField tenderRemove {*this, "tenderRemove"};

    // Repeat and attachments
    FlagField repeats {*this, "repeats"};
    ChoiceField repeatFrequency {*this, "repeatFrequency"};
    TextField repeatInformation {*this, "repeatInformation"};
    TextField attachments {*this, "attachments"};
    /// What went wrong with the last file; empty when nothing did.
    TextField attachmentTrouble {*this, "attachmentTrouble"};
    CommandField attach {*this, "attach"};
    CommandField viewAttachments {*this, "viewAttachments"};

    // Footer
    ChoiceField stationery {*this, "stationery"};
    CommandField printInvoice {*this, "printInvoice"};
    CommandField sendEmail {*this, "sendEmail"};
    CommandField cancel {*this, "cancel"};
    CommandField save {*this, "save"};
};

/// The panel that takes a payment.
class TenderForm : public Form {
public:
    ChoiceField paymentMethod {*this, "tenderPaymentMethod"};
    TextField datePaid {*this, "datePaid"};
    TextField amountDue {*this, "amountDue"};
    TextField amountTendered {*this, "amountTendered"};
    /// Its caption reads "Balance Remaining" or "Change Due".
    TextField remainingBalance {*this, "remainingBalance"};
    CommandField cancel {*this, "cancel"};
    CommandField ok {*this, "ok"};
};
