"""What the first invoice of a new business consists of, and what must lie on disk once it is saved."""

import pyatspi

from person import texts_of_pdf

CONTACT = {
    "Name": "Ada Penrose",
    "Address": "12 Mill Lane",
    "Postcode": "TR18 4AB",
    "E-mail": "ada@penrose.example",
}
ITEM = {"Name": "Oak stool", "Price": "12.50", "In stock": "10"}
ORDER_TITLE = "Three stools"
# The columns of the lines of an order, as they stand on the screen.
LINE_COLUMNS = ["Code", "Item", "Variation", "Brand", "Qty", "Unit", "Price", "Total"]


def is_usable(node):
    return node.getState().contains(pyatspi.STATE_ENABLED)


def only_record(person, file, key):
    records = person.records(file)[key]
    assert len(records) == 1, f"{file} holds {len(records)} records: {records}"
    return records[0]


def expect(record, values):
    for key, value in values.items():
        assert record.get(key) == value, f'"{key}" is {record.get(key)!r} and not {value!r} in {record}'


def check_files(person):
    """The database holds the contact, the item, the order with its line and payment, and the document as PDF."""
    contact = only_record(person, "contacts.xml", "contacts")
    expect(contact, {"name": CONTACT["Name"], "add1": CONTACT["Address"], "postcode": CONTACT["Postcode"],
                     "email": CONTACT["E-mail"], "kind": "Individual", "type": "Customer"})
    item = only_record(person, "items.xml", "products")
    expect(item, {"item": ITEM["Name"], "price": ITEM["Price"]})
    order = only_record(person, "orders.xml", "orders")
    expect(order, {"title": ORDER_TITLE, "value": "37.50", "shipping": "5.00", "balance": "42.50", "contact": contact["id"], "type": "Customer"})
    line = only_record(person, "itemsordered.xml", "materials")
    expect(line, {"item": ITEM["Name"], "qty": "3", "cost": ITEM["Price"], "total": "37.50", "order": order["id"],
                  "product": item["id"], "contact": contact["id"]})
    payments = order["paymentarray"]
    assert len(payments) == 1, payments
    expect(payments[0], {"amount": "20.00", "paymentmethod": "web", "datepaid": order["date"]})
    check_document(person, order)
    assert not (person.database / "lock.xml").exists(), "The lock is still there."


def check_document(person, order):
    documents = list((person.database / "Attachments" / f"order{order['id']}").iterdir())
    assert len(documents) == 1 and documents[0].suffix == ".pdf", documents
    text = texts_of_pdf(documents[0])
    for words in (CONTACT["Name"], ITEM["Name"], "42.50", "22.50"):
        assert words in text, f'"{words}" is missing in the document: {text}'
