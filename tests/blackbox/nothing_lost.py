"""What a person sees when something goes wrong: a deleted order comes back, a damaged file is told and kept, a full disk is shown."""

import os
import subprocess

from person import run

KEPT_TITLE = "Six stools"
# With its number, as it goes by among the records of an earlier state.
KEPT_RECORD = "1 Six stools"
OTHER_TITLE = "A bench"
OTHER_RECORD = "2 A bench"
ORDERS = "orders.xml"


def titles(person):
    return sorted(order["title"] for order in person.records(ORDERS)["orders"])


def quit_program(person):
    person.key("ctrl+q")
    person.has_ended()


def make_order(person, title):
    person.press("New Order", person.find("tool bar", "Tool bar"))
    window = person.window("Order")
    person.fill("Title", title, window)
    person.press("Save", window)
    person.window_is_gone("Order")
    person.sees(title)


def make_two_orders(person):
    person.start()
    person.press("New Order", person.find("tool bar", "Tool bar"))
    person.click(person.find("radio button", "Day first: dd/mm/yy"))
    person.press("OK")
    for title in (KEPT_TITLE, OTHER_TITLE):
        make_order(person, title)
    quit_program(person)
    assert titles(person) == [OTHER_TITLE, KEPT_TITLE], titles(person)


def delete_order(person, title):
    """The first write of this day keeps the state before."""
    person.start()
    person.click(person.find("table cell", title))
    person.key("Delete")
    alert = person.wait_for(lambda: next(iter(person.seen("dialog")), None), "The question before deleting")
    person.press("OK", alert)
    person.wait_for(lambda: title not in person.words(), f'The end of "{title}"')
    quit_program(person)
    assert titles(person) == [OTHER_TITLE], titles(person)


def open_recovery(person):
    person.click(person.find("menu item", "File"))
    person.click(person.find("menu item", "Recovery…"))
    return person.window("Recovery")


def bring_back(person, record, title):
    person.start()
    window = open_recovery(person)
    person.click(person.find("page tab", "Earlier States", window))
    person.click(person.find("table cell", record, person.find("table", "What is different", window)))
    person.picture("earlier-states")
    person.press("Bring Back", window)
    person.wait_for(lambda: any(word.startswith("One record is back.") for word in person.words(window)), "What came back")
    person.key("Escape")
    person.window_is_gone("Recovery")
    person.sees(title)
    person.picture("order-is-back")
    quit_program(person)
    assert titles(person) == [OTHER_TITLE, KEPT_TITLE], titles(person)


def open_damaged(person):
    """The orders' file ends in the middle: that is told, its original is kept and found."""
    path = person.database / ORDERS
    damaged = path.read_bytes()[:700]
    path.write_bytes(damaged)
    person.start()
    told = person.wait_for(lambda: next((word for word in person.words() if word.startswith("orders.xml could not be read")), None),
                           "What is damaged")
    place = told.split("Its original is kept as ")[1].rstrip(".")
    with open(place, "rb") as kept:
        assert kept.read() == damaged
    person.picture("damaged-file")
    person.press("Recovery…")
    window = person.window("Recovery")
    person.sees("orders.xml", within=person.find("table", "What was kept", window))
    person.picture("kept-files")
    bring_all_back(person, window)
    quit_program(person)
    assert titles(person) == [OTHER_TITLE, KEPT_TITLE], titles(person)


def bring_all_back(person, window):
    """Each of the two states has one of the orders: the day's first write came before the second one was made, and the other state was
    kept before the deleted one was brought back."""
    person.click(person.find("page tab", "Earlier States", window))
    for place, record in ((0, OTHER_RECORD), (-1, KEPT_RECORD)):
        states = person.seen("list item", within=person.find("list", "Earlier states", window))
        person.click(states[place])
        person.find("table cell", record, person.find("table", "What is different", window))
        person.press("Bring All Back", window)
        person.wait_for(lambda: any("back." in word for word in person.words(window)), "What came back")
        person.wait_for(lambda row=record: row not in person.words(window), "The end of the difference")
    person.key("Escape")
    person.window_is_gone("Recovery")


def can_mount():
    return subprocess.run(["unshare", "-rm", "true"], check=False, capture_output=True).returncode == 0


def fill_disk(person):
    """The database lies on a small disk of its own, in the program's name space; from outside it is reached through the process."""
    database = person.database
    inside = f"/proc/{person.process.pid}/root{database}"
    filler = os.path.join(inside, "filler")
    with open(filler, "wb") as file:
        space = os.statvfs(inside)
        file.write(b"x" * (space.f_bavail * space.f_frsize))
    return filler


def meet_full_disk(person):
    database = person.database
    person.start("unshare", "-rm", "sh", "-c",
                 f'cp -a "{database}" "{person.home}/there" && mount -t tmpfs -o size=1M tmpfs "{database}"'
                 f' && cp -a "{person.home}/there/." "{database}/" && exec "$0"')
    filler = fill_disk(person)
    make_order(person, "Not for a full disk")
    person.wait_for(lambda: any(word.startswith("Not saved: ") for word in person.words()), 'The sign "Not saved"')
    person.picture("full-disk")
    os.remove(filler)
    # What could not be written goes with the next write.
    make_order(person, "Another")
    person.wait_for(lambda: any(word.startswith("Saved ") for word in person.words()), 'The sign "Saved"')
    with open(filler.replace("filler", ORDERS), "rb") as file:
        assert b"Not for a full disk" in file.read()
    quit_program(person)


def story(person):
    make_two_orders(person)
    delete_order(person, KEPT_TITLE)
    bring_back(person, KEPT_RECORD, KEPT_TITLE)
    open_damaged(person)
    if can_mount():
        meet_full_disk(person)
    else:
        print("left out: this machine lets nobody make a name space of their own, so no disk could be filled")


if __name__ == "__main__":
    run(story)
