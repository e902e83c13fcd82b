"""More is sold than there is: a customer from a letterhead, a collective item of two plain ones, and an order that takes their stock."""

from hands import Keys, Mouse
from person import text_of
from first_invoice import LINE_COLUMNS, expect, only_record

# As a word processor puts it on the clipboard.
LETTERHEAD = ("Harbour Kitchens\r\n4 Fish Quay \r\nThe Old Net Loft\r\nNewlyn\r\nCornwall\r\nTR18 5HW\r\nUnited Kingdom\r\n\r\n")
FROM_LETTERHEAD = {"Name": "Harbour Kitchens", "Address": "4 Fish Quay", "Address line 2": "The Old Net Loft", "Address line 3": "Newlyn",
                   "County": "Cornwall", "Postcode": "TR18 5HW", "Country": "United Kingdom"}
E_MAIL = "orders@harbour.example"
BOARD = {"Name": "Beech board", "Code": "BB", "Price": "18.00", "Cost price": "7.50", "In stock": "2"}
HOOK = {"Name": "Brass hook", "Code": "BH", "Price": "2.40", "In stock": "10", "Warn at": "1"}
RACK = {"Name": "Coat rack", "Code": "RACK", "Price": "45.00"}
HOOKS_FOR_A_RACK = "4"
TITLE = "Racks for the loft"
QUANTITY = LINE_COLUMNS.index("Qty")

NO_RACK = ("Out of Stock", "You don't have enough of one or more items that make up the collective item Coat rack. "
                           "Do you still wish to add one to this order?")
NO_BOARD = ("Out of Stock", "You don't have enough Beech board. Do you still wish to add 1 to this order?")
NO_HOOKS = ("Out of Stock", "You don't have enough Brass hook. Do you still wish to add 4 to this order?")
LAST_BOARD = ("Low Stock", "This leaves 0 of Beech board in stock.")
NEGATIVE_BOARDS = ("Low Stock", "This leaves -1 of Beech board in stock.")


def make_customer(hand):
    person = hand.person
    hand.command("New Contact")
    sheet = person.wait_for(lambda: next(iter(person.seen("dialog")), None), "The question for the date format")
    hand.press("OK", sheet)
    person.wait_for(lambda: not person.seen("dialog"), "The end of the question for the date format")
    hand.command("New Contact")
    window = person.window("New Contact")
    person.keyboard_is_on("text", "Name")
    person.copy(LETTERHEAD)
    hand.press("Paste Address", window)
    for field, text in FROM_LETTERHEAD.items():
        person.field_becomes(field, text, window)
    hand.fill("E-mail", E_MAIL, window)
    hand.save(window)
    person.window_is_gone("New Contact")


def make_plain_item(hand, fields):
    hand.command("New Item")
    window = hand.person.window("Item")
    hand.fill_in(fields, window)
    hand.save(window)
    hand.person.window_is_gone("Item")


def make_rack(hand):
    person = hand.person
    hand.command("New Item")
    window = person.window("Item")
    hand.fill_in(RACK, window)
    hand.tick("Collective: made of other items", window)
    person.sees("Collective Item · RACK", within=window)
    hand.turn_to("Made of", window)
    for part in (BOARD, HOOK):
        hand.press("Add item…", window)
        hand.pick(part["Name"].split()[0].lower(), part["Name"])
        person.sees(part["Name"], within=person.find("table", "Made of", window))
    hand.set_cell("Made of", 1, 2, 3, HOOKS_FOR_A_RACK, window)
    hand.turn_to("Item", window)
    # Two boards make two racks, ten hooks two and a half.
    person.sees("Beech board: 1 for one, 2 in stock", within=window)
    hand.save(window)
    person.window_is_gone("Collective Item")


def add_rack(hand, window):
    """By its code, into the line below the table."""
    hand.fill("New line", "rack", window)
    hand.person.key("Return")


def quantities(person, window):
    cells = person.seen("table cell", within=person.find("table", "Items ordered", window))
    return [text_of(cell) for cell in cells[QUANTITY :: len(LINE_COLUMNS)]]


def quantities_become(person, expected, window):
    person.wait_for(lambda: quantities(person, window) == expected, f"The quantities {expected}")


def set_quantity(hand, row, text, window):
    hand.set_cell("Items ordered", row, QUANTITY, len(LINE_COLUMNS), text, window)


def sell(hand):
    person = hand.person
    hand.command("New Order")
    window = person.window("Order")
    hand.fill("Title", TITLE, window)
    add_rack(hand, window)
    quantities_become(person, ["1"], window)
    hand.asks_nothing()
    set_quantity(hand, 0, "2", window)
    hand.answers(*LAST_BOARD, "OK")
    quantities_become(person, ["2"], window)
    # Nothing is taken from the stock, and the line comes all the same.
    add_rack(hand, window)
    hand.answers(*NO_RACK, "Cancel")
    quantities_become(person, ["2", "1"], window)
    set_quantity(hand, 1, "5", window)
    hand.answers(*NO_RACK, "Cancel")
    hand.asks_nothing()
    assert quantities(person, window) == ["2", "1"], "The quantity that was refused is there."
    set_quantity(hand, 1, "2", window)
    hand.answers(*NO_RACK, "Add anyway")
    hand.answers(*NO_BOARD, "Add anyway")
    hand.answers(*NEGATIVE_BOARDS, "OK")
    hand.answers(*NO_HOOKS, "Cancel")
    quantities_become(person, ["2", "2"], window)
    person.sees("£180.00", within=window)
    hand.turn_to("Contact", window)
    hand.press("Select Contact…", window)
    hand.pick("harbour", FROM_LETTERHEAD["Name"])
    person.sees(FROM_LETTERHEAD["Postcode"], E_MAIL, within=window)
    hand.save(window)
    person.window_is_gone("Order")


def check_files(person):
    """The address in its fields, the stock as the answers left it, and both lines on the order."""
    contact = only_record(person, "contacts.xml", "contacts")
    expect(contact, {"name": "Harbour Kitchens", "add1": "4 Fish Quay", "add2": "The Old Net Loft", "add3": "Newlyn", "county": "Cornwall",
                     "postcode": "TR18 5HW", "country": "United Kingdom", "email": E_MAIL, "kind": "Individual", "type": "Customer", "ref": "C1"})
    items = {item["code"]: item for item in person.records("items.xml")["products"]}
    assert sorted(items) == ["BB", "BH", "RACK"], items
    # Two boards: one, one more, and one that is not there. Ten hooks: twice four; the last four were refused.
    expect(items["BB"], {"item": "Beech board", "price": "18.00", "bought": "7.50", "qty": "-1", "decreaseQty": "YES"})
    expect(items["BH"], {"item": "Brass hook", "price": "2.40", "qty": "2", "warnlevel": "1"})
    expect(items["RACK"], {"item": "Coat rack", "price": "45.00", "type": "Collective item"})
    parts = [(part["code"], str(part["qty"]), int(part["id"])) for part in items["RACK"]["constituents"]]
    assert parts == [("BB", "1", int(items["BB"]["id"])), ("BH", "4", int(items["BH"]["id"]))], parts
    order = only_record(person, "orders.xml", "orders")
    expect(order, {"title": TITLE, "value": "180.00", "balance": "180.00", "contact": contact["id"], "type": "Customer"})
    lines = person.records("itemsordered.xml")["materials"]
    assert len(lines) == 2, lines
    for line in lines:
        expect(line, {"item": "Coat rack", "code": "RACK", "qty": "2", "cost": "45.00", "total": "90.00", "order": order["id"],
                      "product": items["RACK"]["id"], "contact": contact["id"]})
    assert not (person.database / "lock.xml").exists(), "The lock is still there."


def story(hand):
    person = hand.person
    person.start()
    make_customer(hand)
    make_plain_item(hand, BOARD)
    make_plain_item(hand, HOOK)
    make_rack(hand)
    sell(hand)
    hand.show_list("Orders")
    person.sees(TITLE, FROM_LETTERHEAD["Name"], "1 order")
    hand.from_menu("&File", "&Quit")
    person.has_ended()
    check_files(person)


def with_mouse(person):
    story(Mouse(person))


def with_keys(person):
    story(Keys(person))
