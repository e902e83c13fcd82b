"""The first invoice of a new business, made with the mouse: contact, item, order, payment, document, and all of it again after a restart."""

from person import run, text_of

import first_invoice


def make_contact(person, bar):
    person.press("New Contact", bar)
    person.click(person.find("radio button", "Day first: dd/mm/yy"))
    person.press("OK")
    person.press("New Contact", bar)
    window = person.window("New Contact")
    for field, text in first_invoice.CONTACT.items():
        person.fill(field, text, window)
    person.press("Save", window)
    person.window_is_gone("New Contact")


def make_item(person, bar):
    person.press("New Item", bar)
    window = person.window("Item")
    for field, text in first_invoice.ITEM.items():
        person.fill(field, text, window)
    person.press("Save", window)
    person.window_is_gone("Item")


def choose_from_picker(person, cell):
    sheet = person.wait_for(lambda: next(iter(person.seen("dialog")), None), "The picker")
    person.click(person.find("table cell", cell, sheet))
    person.press("Choose", sheet)
    person.wait_for(lambda: not person.seen("dialog"), "The end of the picker")


def set_quantity(person, window, quantity):
    """Types into the cell of the line's quantity."""
    cells = person.seen("table cell", within=person.find("table", "Items ordered", window))
    person.click(cells[first_invoice.LINE_COLUMNS.index("Qty")], times=2)
    person.type(quantity)
    person.key("Return")


def make_order(person, bar):
    person.press("New Order", bar)
    window = person.window("Order")
    person.fill("Title", first_invoice.ORDER_TITLE, window)
    person.press("Select From Items…", window)
    choose_from_picker(person, first_invoice.ITEM["Name"])
    person.field_becomes("Subtotal", "12.50", window)
    set_quantity(person, window, "3")
    person.field_becomes("Subtotal", "37.50", window)
    person.fill("Shipping", "5.00", window)
    person.sees("£42.50", within=window)

    person.click(person.find("page tab", "Contact", window))
    person.press("Select Contact…", window)
    choose_from_picker(person, first_invoice.CONTACT["Name"])
    person.sees(first_invoice.CONTACT["Postcode"], within=window)
    return window


def take_payment(person, window):
    person.click(person.find("page tab", "Payments", window))
    person.press("Add payment…", window)
    sheet = person.find("dialog", "Tender")
    assert not first_invoice.is_usable(person.find("push button", "OK", sheet)), "A payment of nothing could be taken."
    person.sees("42.50", within=sheet)
    person.fill("Amount tendered", "20.00", sheet)
    person.sees("Balance Remaining", "22.50", within=sheet)
    person.press("OK", sheet)
    person.sees("£22.50", "20.00 paid", within=window)
    person.sees("20.00", within=person.find("table", "Payments", window))


def make_document(person, window):
    person.click(person.choice("Stationery", window))
    person.click(person.find("list item", "Invoice"))
    person.choice_becomes("Stationery", "Invoice", window)
    person.press("Print", window)
    document = person.window("Invoice")
    paper = person.find("text", "Document", document)
    for words in (first_invoice.CONTACT["Name"], first_invoice.ITEM["Name"], "42.50"):
        assert words in text_of(paper), f'The document does not hold "{words}": {text_of(paper)}'
    person.press("Save PDF", document)
    alert = person.find("dialog", "PDF Saved")
    person.sees("Invoice saved and attached to the order", within=alert)
    person.press("OK", alert)
    person.click(document)
    person.key("ctrl+w")
    person.window_is_gone("Invoice")


def quit_by_menu(person):
    person.click(person.find("menu item", "File"))
    person.click(person.find("menu item", "Quit"))
    person.has_ended()


def find_everything(person):
    pages = person.find("list", "Pages")
    person.sees(first_invoice.ORDER_TITLE, first_invoice.CONTACT["Name"], "1 order")
    person.click(person.find("list item", "Contacts", pages))
    person.sees(first_invoice.CONTACT["Name"], first_invoice.CONTACT["E-mail"])
    person.click(person.find("list item", "Items", pages))
    person.sees(first_invoice.ITEM["Name"], "12.50")
    person.click(person.find("list item", "Orders", pages))
    person.click(person.find("table cell", first_invoice.ORDER_TITLE), times=2)
    window = person.window("Order")
    person.field_becomes("Title", first_invoice.ORDER_TITLE, window)
    person.field_becomes("Subtotal", "37.50", window)
    person.field_becomes("Shipping", "5.00", window)
    person.sees(first_invoice.ITEM["Name"], within=person.find("table", "Items ordered", window))
    person.sees("£22.50", "20.00 paid", first_invoice.CONTACT["Name"], within=window)
    person.click(person.find("page tab", "Repeat and attachments", window))
    person.sees("There is 1 attachment", within=window)
    person.press("Cancel", window)
    person.window_is_gone("Order")


def story(person):
    person.start()
    bar = person.find("tool bar", "Tool bar")
    make_contact(person, bar)
    make_item(person, bar)
    window = make_order(person, bar)
    take_payment(person, window)
    make_document(person, window)
    person.press("Save", window)
    person.window_is_gone("Order")
    quit_by_menu(person)
    first_invoice.check_files(person)

    person.start()
    find_everything(person)
    quit_by_menu(person)


if __name__ == "__main__":
    run(story)
