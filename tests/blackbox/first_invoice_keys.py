"""The first invoice of a new business again, without touching the mouse."""

from person import name_of, run, text_of

import first_invoice


def make_contact(person):
    person.keyboard_is_on("push button", "New Contact")
    person.key("Return")
    person.keyboard_is_on("radio button", "Day first: dd/mm/yy")
    person.key("Return")
    person.wait_for(lambda: not person.seen("dialog"), "The end of the question for the date format")
    person.key("ctrl+shift+c")
    person.window("New Contact")
    person.keyboard_is_on("text", "Name")
    for field, text in first_invoice.CONTACT.items():
        person.tab_to("text", field)
        person.type(text)
        person.field_becomes(field, text)
    person.tab_to("push button", "Save")
    person.key("space")
    person.window_is_gone("New Contact")


def make_item(person):
    person.key("ctrl+shift+i")
    person.window("Item")
    person.keyboard_is_on("text", "Name")
    for field, text in first_invoice.ITEM.items():
        person.tab_to("text", field)
        person.key("ctrl+a")
        person.type(text)
        person.field_becomes(field, text)
    person.key("ctrl+s")
    person.window_is_gone("Item")


def choose_from_picker(person, words, cell):
    sheet = person.wait_for(lambda: next(iter(person.seen("dialog")), None), "The picker")
    person.keyboard_is_on("text", "Search")
    person.type(words)
    person.sees(cell, within=sheet)
    person.key("Down", "Return")
    person.wait_for(lambda: not person.seen("dialog"), "The end of the picker")


def set_quantity(person, quantity):
    """Goes along the line with the arrows and types into the cell of its quantity."""
    person.tab_to("table", "Items ordered")
    person.key("Home", *["Right"] * first_invoice.LINE_COLUMNS.index("Qty"))
    person.type(quantity)
    person.key("Return")


def make_order(person):
    person.key("ctrl+n")
    window = person.window("Order")
    person.keyboard_is_on("text", "Title")
    person.type(first_invoice.ORDER_TITLE)
    person.tab_to("push button", "Select From Items…")
    person.key("space")
    choose_from_picker(person, "oak", first_invoice.ITEM["Name"])
    person.field_becomes("Subtotal", "12.50", window)
    set_quantity(person, "3")
    person.field_becomes("Subtotal", "37.50", window)
    person.tab_to("text", "Shipping")
    person.type("5.00")
    person.sees("£42.50", within=window)

    person.tab_to("text", "Title")
    person.key("ctrl+Tab")
    person.tab_to("push button", "Select Contact…")
    person.key("space")
    choose_from_picker(person, "penrose", first_invoice.CONTACT["Name"])
    person.sees(first_invoice.CONTACT["Postcode"], within=window)
    return window


def take_payment(person, window):
    person.key("ctrl+Tab", "ctrl+Tab")
    person.tab_to("push button", "Add payment…")
    person.key("space")
    sheet = person.find("dialog", "Tender")
    person.keyboard_is_on("text", "Amount tendered")
    person.type("20.00")
    person.sees("Balance Remaining", "22.50", within=sheet)
    person.key("Return")
    person.sees("£22.50", "20.00 paid", within=window)


def make_document(person, window):
    person.tab_to("combo box", "Stationery")
    person.key("Home")
    while name_of(person.choice("Stationery", window)) != "Invoice":
        before = name_of(person.choice("Stationery", window))
        person.key("Down")
        person.wait_for(lambda: name_of(person.choice("Stationery", window)) != before, f'What comes after "{before}"')
    person.tab_to("push button", "Print")
    person.key("space")
    document = person.window("Invoice")
    person.keyboard_is_on("text", "Document")
    assert first_invoice.CONTACT["Name"] in text_of(person.find("text", "Document", document))
    person.key("ctrl+s")
    person.find("dialog", "PDF Saved")
    person.keyboard_is_on("push button", "OK")
    person.key("Return")
    person.wait_for(lambda: not person.seen("dialog"), "The end of the alert")
    person.key("ctrl+w")
    person.window_is_gone("Invoice")


def quit_by_menu(person):
    person.key("alt+f")
    person.find("menu item", "Quit")
    person.key("Up", "Return")
    person.has_ended()


def find_everything(person):
    person.keyboard_is_on("table", "Orders")
    person.sees(first_invoice.ORDER_TITLE, first_invoice.CONTACT["Name"], "1 order")
    person.key("ctrl+1")
    person.sees(first_invoice.CONTACT["Name"], first_invoice.CONTACT["E-mail"])
    person.key("ctrl+3")
    person.sees(first_invoice.ITEM["Name"], "12.50")
    person.key("ctrl+2", "ctrl+f")
    person.keyboard_is_on("text", "Search orders and contacts")
    person.type("penrose")
    person.sees(first_invoice.ORDER_TITLE)
    person.key("Down")
    person.tab_to("table", "Orders")
    person.key("Return")
    window = person.window("Order")
    person.field_becomes("Title", first_invoice.ORDER_TITLE, window)
    person.sees(first_invoice.ITEM["Name"], "£22.50", "20.00 paid", within=window)
    person.key("Escape")
    person.window_is_gone("Order")


def story(person):
    person.start()
    make_contact(person)
    make_item(person)
    window = make_order(person)
    take_payment(person, window)
    make_document(person, window)
    person.keyboard_is_on("push button", "Print")
    person.key("ctrl+s")
    person.window_is_gone("Order")
    quit_by_menu(person)
    first_invoice.check_files(person)

    person.start()
    find_everything(person)
    quit_by_menu(person)


if __name__ == "__main__":
    run(story)
