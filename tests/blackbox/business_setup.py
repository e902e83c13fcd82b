"""A business is set up: its words, money, tax and statuses, a second database and back, notes, and what the program says of itself."""

import plistlib

from hands import Keys, Mouse
from person import text_of
from first_invoice import expect

CURRENCY = {"Currency symbol": "$", "Currency code": "USD"}
WORDS = {"An order": "Job", "Orders": "Jobs"}
STATUS = "On hold"
ORANGE = {"redComponent": 232, "greenComponent": 131, "blueComponent": 58}
RATE = {"code": "R", "description": "reduced", "rate": "9.5"}
SECOND = "Summer market"
NOTE = ["Call ", "Harbour Kitchens", " about the loft"]
NO_ADDRESS = "There is no address to ask. It is set in the preferences, on the page Look."
SWITCH = "Switch Vendaro database"
MAIN = "Vendaro"
MAIN_WITH_SECOND = f"Vendaro - {SECOND}"


def choose_words_and_money(hand, window):
    hand.settings_page("General", window)
    hand.fill_in(CURRENCY, window)
    hand.settings_page("Words", window)
    hand.fill_in(WORDS, window)
    # The main window speaks in them at once.
    main = hand.person.window(MAIN)
    hand.person.sees("Jobs", "New Job", within=main)


def add_tax_rate(hand, window):
    person = hand.person
    hand.settings_page("Tax", window)
    hand.tick("Handle tax on orders and bills", window)
    hand.press("Add a rate", window)
    person.sees("Edit me", within=window)
    # The code is being typed already; Tab goes on to the next cell.
    person.type(RATE["code"])
    person.key("Tab")
    person.type(RATE["description"])
    person.key("Tab")
    person.type(RATE["rate"])
    person.key("Return")
    person.sees(*RATE.values(), within=window)


def add_status(hand, window):
    person = hand.person
    hand.settings_page("Lists", window)
    hand.go_to_end("Statuses", window)
    person.key("Return")
    person.type(STATUS)
    hand.settings_page("Status Colours", window)
    hand.choose("Status", STATUS, window)
    hand.choose_colour("Orange", window)
    for part, value in zip(("Red", "Green", "Blue"), ORANGE.values()):
        person.field_becomes(part, str(value), window)


def change_settings(hand):
    hand.command("Preferences")
    window = hand.person.window("Preferences")
    choose_words_and_money(hand, window)
    add_tax_rate(hand, window)
    add_status(hand, window)
    hand.press("OK", window)
    hand.person.window_is_gone("Preferences")


def visit_second_database(hand):
    person = hand.person
    hand.command("Preferences")
    window = person.window("Preferences")
    hand.settings_page("Databases", window)
    hand.press("New…", window)
    sheet = person.find("dialog", "New database")
    person.keyboard_is_on("text", "Name")
    person.type(SECOND)
    person.sees(f'It is kept as "{SECOND}.vendb".', within=sheet)
    person.key("Return")
    person.window(MAIN_WITH_SECOND)
    hand.choose_entry("vendarodatabase", "Databases", window)
    question = person.find("dialog", SWITCH)
    hand.press("OK", question)
    person.window(MAIN)
    hand.press("OK", window)
    person.window_is_gone("Preferences")


def write_note(hand):
    person = hand.person
    hand.from_menu("&View", "&Notepad")
    window = person.window("Notepad")
    person.keyboard_is_on("text", "Notepad")
    for number, words in enumerate(NOTE):
        if number > 0:
            # Bold on, and off again.
            person.key("ctrl+b")
        person.type(words)
    person.sees("".join(NOTE), within=window)
    person.key("ctrl+w")
    person.window_is_gone("Notepad")


def ask_the_program(hand):
    """A tip, whether there is a newer version, and the manual at the page about what is in front."""
    person = hand.person
    hand.from_menu("&Help", "&Tip of the Day")
    tip = person.window("Tip of the Day")
    before = person.words(tip)
    hand.press("Next Tip", tip)
    person.wait_for(lambda: person.words(tip) != before, "Another tip")
    hand.press("Close", tip)
    person.window_is_gone("Tip of the Day")
    hand.from_menu("&Help", "Check for &Updates…")
    hand.answers("Update check", NO_ADDRESS, "OK")
    person.key("F1")
    # There is no order yet.
    title = "The first steps – Vendaro Help"
    person.window(title)
    person.key("Escape")
    person.window_is_gone(title)


def settings(person):
    return plistlib.loads((person.home / "Library/Preferences/Vendaro.plist").read_bytes())


def properties(database):
    return plistlib.loads((database / "info.plist").read_bytes())


def check_files(person):
    """Settings, what travels with the databases, and the note with its bold words."""
    kept = settings(person)
    expect(kept, {"VendaroCurrency": "$", "VendaroCurrencyCode": "USD", "VendaroTermOrder": "Job", "VendaroTermOrders": "Jobs",
                  "VendaroHandlesTax": "YES", "VendaroDbLocation": "~/Library/Application Support/Vendaro/vendarodatabase.vendb"})
    assert kept["VendaroStatuses"].split("\n")[-2:] == ["Complete", STATUS], kept["VendaroStatuses"]
    assert kept["VendaroTaxRates"][-1] == RATE, kept["VendaroTaxRates"]
    colours = {entry["Status"]: entry for entry in kept["VendaroFlagColours"]}
    assert list(colours) == [STATUS], colours
    for part, value in ORANGE.items():
        assert abs(float(colours[STATUS][part]) - value / 255) < 0.001, colours
    second = person.database.parent / f"{SECOND}.vendb"
    expect(properties(second), {"dbName": SECOND, "VendaroCurrency": "$"})
    expect(properties(person.database), {"VendaroCurrency": "$", "VendaroCurrencyCode": "USD"})
    for database in (person.database, second):
        assert not (database / "lock.xml").exists(), f"The lock of {database} is still there."
    note = (person.database / "notepad.rtfd/TXT.rtf").read_text()
    before, bold, after = (note.find(words.strip()) for words in NOTE)
    assert 0 < before < bold < after, note
    assert "\\b" in note[before:bold] and "\\b0" in note[bold:after], note


def find_everything(hand):
    """After a new start it is all there."""
    person = hand.person
    person.sees("Jobs", "New Job")
    hand.from_menu("&View", "&Notepad")
    person.window("Notepad")
    person.wait_for(lambda: text_of(person.find("text", "Notepad")) == "".join(NOTE), "The note")
    person.key("ctrl+w")
    person.window_is_gone("Notepad")
    hand.command("Preferences")
    window = person.window("Preferences")
    hand.settings_page("Status Colours", window)
    hand.choose("Status", STATUS, window)
    person.field_becomes("Red", str(ORANGE["redComponent"]), window)
    hand.settings_page("General", window)
    for field, text in CURRENCY.items():
        person.field_becomes(field, text, window)
    hand.press("OK", window)
    person.window_is_gone("Preferences")


def quit_program(hand):
    hand.from_menu("&File", "&Quit")
    hand.person.has_ended()


def story(hand):
    hand.person.start()
    change_settings(hand)
    visit_second_database(hand)
    write_note(hand)
    ask_the_program(hand)
    quit_program(hand)
    check_files(hand.person)

    hand.person.start()
    find_everything(hand)
    quit_program(hand)
    check_files(hand.person)


def with_mouse(person):
    story(Mouse(person))


def with_keys(person):
    story(Keys(person))
