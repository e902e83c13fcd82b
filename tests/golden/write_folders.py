#!/usr/bin/env python3
"""Writes the golden database folders beside this script, with Python's own property-list writer.

Each folder holds what the program is given ("before") and, where that differs, what it must leave after starting and quitting
("after"). The contents of "after" are worked out here from the rules of the files, not taken from the program.
"""
import datetime
import pathlib
import plistlib

HERE = pathlib.Path(__file__).resolve().parent
AWKWARD = "Müller & Söhne <\"quoted\"> 'n' ]]> 日本 🎈\ttab\nnew line"

KEYS = {"contacts.xml": "contacts", "orders.xml": "orders", "items.xml": "products", "itemsordered.xml": "materials",
        "bills.xml": "bills", "actions.xml": "actions", "goals.xml": "goals"}


def contact(**fields):
    return {"company": "0", "kind": "Individual", "type": "Customer", **fields}


def order(**fields):
    return {"contact": "0", "contact2": "0", "bill": "0", "newcustomer": "0", "applydiscount": "NO", "discountispercentage": "YES",
            "includeBOM": "YES", "sent": "NO", "stockadded": "NO", "repeats": "NO", "paymentmethod": "web",
            "repeatfrequency": "month", "status": "Enquiry", "type": "Customer", **fields}


def item(**fields):
    return {"decreaseQty": "YES", "exportbrevand": "NO", "exportgoogle": "NO", "hidebuttoncode": "NO", "type": "Item",
            "websitefolder": "~/sites/mysite/", **fields}


def task(**fields):
    names = ("details", "enddate", "endtime", "rate", "startdate", "starttime", "totalcharge", "totaltime", "totaltimeunits", "title", "type")
    return {**{name: "" for name in names}, "complete": "NO", "alarm": "NO", "alarmacknowledged": "NO", "order": "0", "material": "0",
            **fields}


def standard():
    return {
        "contacts.xml": [contact(id="1", name=AWKWARD, ref="C1", add1="1 High Street", salutation="Ms Müller"),
                         contact(id="7", name="Grindrod Ltd", kind="Company", ref="C7", companyname="Grindrod Ltd", type="Supplier"),
                         contact(id="9", name="Ada Byron", kind="Company Contact", company="7", ref="own ref", jobtitle="Director")],
        "orders.xml": [order(id="3", contact="1", ordernum="INV3", title=AWKWARD, date="01/03/24", value="30.00", shipping="2.50", tax="6.00",
                             net="30.00", valuewithtax="32.50", balance="38.50", newcustomer="1", description="two\rlines",
                             paymentarray=[{"amount": "10.00", "datepaid": "02/03/24", "paymentmethod": "Cash"},
                                           {"amount": "5.00", "datepaid": "03/03/24", "paymentmethod": "Card"}]),
                       order(id="12", contact="7", contact2="9", type="Purchase Order", status="Ordered", date="today", bill="2",
                             ordernum="PO12", sent="YES", applydiscount="YES", discount="5", discountispercentage="NO")],
        "items.xml": [item(id="4", code="TEA/1", item="Tea & biscuits", price="3.50", qty="10", taxcode="S", warnlevel="2"),
                      item(id="5", code="SET", item="Gift set", price="9.00", type="Collective item",
                           constituents=[{"id": "4", "qty": "2"}])],
        "itemsordered.xml": [{"id": "8", "order": "3", "product": "4", "contact": "1", "item": "Tea & biscuits", "code": "TEA/1", "qty": "2",
                              "cost": "3.50", "total": "7.00", "taxcode": "S", "dateadded": "01/03/2024"},
                             {"id": "9", "order": "12", "product": "0", "contact": "7", "item": "Paper", "qty": "1", "cost": "23.00",
                              "total": "23.00", "unit": "box", "variation": "A4"}],
        "bills.xml": [{"id": "2", "amount": "38.50", "datepaid": "05/03/24", "name": "Paper", "net": "30.00", "vat": "6.00", "category": "Office"}],
        "actions.xml": [task(id="1", title="Ring Ada", startdate="04/03/24", details="about <paper>"), task(id="2", complete="YES", order="3")],
        "goals.xml": [{"id": "1", "name": "Grow", "details": "", "actions": ["2", "1"]}],
    }


def older_payments():
    """Orders from before payments were a list: a deposit and a balance become payments."""
    before = {"orders.xml": [
        order(id="1", paymentmethod="Card", deposit="20.00", depositpaid="01/02/20", balance="80.00", balancepaid="05/02/20"),
        order(id="2", deposit="15.00"),
        order(id="3", balance="40.00"),
        order(id="4", balance="40.00", balancepaid="06/02/20")]}
    after = {"orders.xml": [
        order(id="1", paymentmethod="Card", deposit="20.00", depositpaid="01/02/20", balance="80.00", balancepaid="05/02/20",
              paymentarray=[{"amount": "20.00", "datepaid": "01/02/20", "paymentmethod": "Card"},
                            {"amount": "80.00", "datepaid": "05/02/20", "paymentmethod": "Card"}]),
        order(id="2", deposit="15.00", paymentarray=[{"amount": "15.00", "datepaid": "", "paymentmethod": "web"}]),
        order(id="3", balance="40.00"),
        order(id="4", balance="40.00", balancepaid="06/02/20",
              paymentarray=[{"amount": "40.00", "datepaid": "06/02/20", "paymentmethod": "web"}])]}
    return before, after


def other_kinds():
    """Numbers, flags and dates where texts are expected, missing keys, and keys of somebody else's."""
    before = {
        "contacts.xml": [{"id": 5, "name": True, "add1": datetime.datetime(2020, 5, 5, 10, 39, 44), "phone": 1234, "company": "0"},
                         {"id": "6", "kind": "Company Contact", "company": "0", "ref": "R6"},
                         {"id": "8", "name": "Kept", "colour": "red", "nested": {"a": ["b", {"c": "d"}]}, "picture": b"\x00\x01"}],
        "orders.xml": [{"id": "2", "stockAdded": "YES", "status": "Paid"}],
    }
    after = {
        "contacts.xml": [contact(id="5", name="YES", add1="2020-05-05T10:39:44Z", phone="1234", ref="5"),
                         contact(id="6", ref="R6"),
                         contact(id="8", name="Kept", ref="8", colour="red", nested={"a": ["b", {"c": "d"}]}, picture=b"\x00\x01")],
        "orders.xml": [{**order(id="2", status="Paid", stockadded="YES", includeBOM="NO", discountispercentage="NO")}],
    }
    return before, after


def write(folder, files):
    folder.mkdir(parents=True, exist_ok=True)
    for name, records in files.items():
        (folder / name).write_bytes(plistlib.dumps({KEYS[name]: records}))


def main():
    write(HERE / "standard" / "before", standard())
    for name, make in (("older-payments", older_payments), ("other-kinds", other_kinds)):
        before, after = make()
        write(HERE / name / "before", before)
        write(HERE / name / "after", after)


if __name__ == "__main__":
    main()
