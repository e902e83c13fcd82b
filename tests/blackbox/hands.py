"""The two ways to use the program, with the mouse and with keys alone: the same story is told with either."""

import time

import pyatspi

from person import name_of

# The keys of commands that stand on the tool bar.
KEYS_OF = {"New Contact": "ctrl+shift+c", "New Item": "ctrl+shift+i", "New Order": "ctrl+n", "Preferences": "ctrl+comma"}
PAGE_KEYS = {"Contacts": "ctrl+1", "Orders": "ctrl+2", "Items": "ctrl+3"}


def is_chosen(node):
    return node.getState().contains(pyatspi.STATE_SELECTED)


def is_ticked(node):
    return node.getState().contains(pyatspi.STATE_CHECKED)


class _Hand:
    """What both have in common. window: where the control stands."""

    def __init__(self, person):
        self.person = person

    def fill_in(self, fields, window):
        """Replaces what each of these fields holds."""
        for name, text in fields.items():
            self.fill(name, text, window)

    def answers(self, title, text, button):
        """Waits for that question and gives that answer."""
        alert = self.person.find("dialog", title)
        self.person.sees(text, within=alert)
        self._answer(button, alert)
        self.person.wait_for(lambda: all(text not in self.person.words(each) for each in self.person.seen("dialog", title)),
                             f'The end of "{text}"')

    def asks_nothing(self):
        """Long enough for a question to come up."""
        time.sleep(0.5)
        assert not self.person.seen("dialog"), self.person.words(self.person.seen("dialog")[0])


class Mouse(_Hand):
    """Only text comes from the keyboard."""

    def command(self, name):
        self.person.press(name, self.person.find("tool bar", "Tool bar"))

    def from_menu(self, menu, entry):
        self.person.click(self.person.find("menu item", menu.replace("&", "")))
        self.person.click(self.person.find("menu item", entry.replace("&", "")))

    def show_list(self, title):
        self.person.click(self.person.find("list item", title, self.person.find("list", "Pages")))

    def turn_to(self, tab, window):
        self.person.click(self.person.find("page tab", tab, window))

    def settings_page(self, title, window):
        self.person.click(self.person.find("list item", title, self.person.find("list", "Pages", window)))

    def press(self, button, window):
        self.person.press(button, window)

    def save(self, window):
        self.person.press("Save", window)

    def tick(self, title, window, role="check box"):
        self.person.click(self.person.find(role, title, window))
        self.person.wait_for(lambda: is_ticked(self.person.find(role, title, window)), f'The tick at "{title}"')

    def fill(self, name, text, window):
        self.person.fill(name, text, window)

    def go_to_end(self, name, window):
        self.person.click(self.person.find("text", name, window))
        self.person.key("ctrl+End")

    def choose(self, label, title, window):
        self.person.click(self.person.choice(label, window))
        self.person.click(self.person.find("list item", title))
        self.person.choice_becomes(label, title, window)

    def choose_colour(self, name, window):
        self.tick(name, window)

    def choose_entry(self, title, names, window):
        self.person.click(self.person.find("list item", title, self.person.find("list", names, window)))

    def pick(self, words, cell):
        """From the sheet with a search field and a list."""
        sheet = self.person.wait_for(lambda: next(iter(self.person.seen("dialog")), None), "The picker")
        self.person.click(self.person.find("table cell", cell, sheet))
        self.person.press("Choose", sheet)
        self.person.wait_for(lambda: not self.person.seen("dialog"), "The end of the picker")

    def set_cell(self, table, row, column, columns, text, window):
        cells = self.person.seen("table cell", within=self.person.find("table", table, window))
        self.person.click(cells[row * columns + column], times=2)
        self.person.type(text)
        self.person.key("Return")

    def _answer(self, button, alert):
        self.person.press(button, alert)


class Keys(_Hand):
    """The mouse stays where it is."""

    def command(self, name):
        self.person.key(KEYS_OF[name])

    def from_menu(self, menu, entry):
        """The letter after "&" opens the menu, and chooses its entry."""
        self.person.key("alt+" + menu[menu.index("&") + 1].lower())
        self.person.find("menu item", entry.replace("&", ""))
        self.person.key(entry[entry.index("&") + 1].lower())

    def show_list(self, title):
        self.person.key(PAGE_KEYS[title])

    def turn_to(self, tab, window):
        tabs = self.person.seen("page tab list", within=window)[0]
        self._turn(lambda: name_of(tabs) == tab, f'the tab "{tab}"')

    def settings_page(self, title, window):
        pages = self.person.find("list", "Pages", window)
        self._turn(lambda: is_chosen(self.person.find("list item", title, pages)), f'the page "{title}"')

    def _turn(self, is_there, what):
        """First back to the beginning, then through them all."""
        for key in ["ctrl+Prior"] * 12 + ["ctrl+Next"] * 12:
            if is_there():
                return
            self.person.key(key)
            time.sleep(0.1)
        raise AssertionError(f"The keys never came to {what}.")

    def press(self, button, window):
        self.person.tab_to("push button", button)
        self.person.key("space")

    def save(self, window):
        self.person.key("ctrl+s")

    def tick(self, title, window, role="check box"):
        self.person.tab_to(role, title)
        self.person.key("space")
        self.person.wait_for(lambda: is_ticked(self.person.find(role, title, window)), f'The tick at "{title}"')

    def fill(self, name, text, window):
        self.person.tab_to("text", name)
        self.person.key("ctrl+a")
        self.person.type(text)
        self.person.field_becomes(name, text, window)

    def go_to_end(self, name, window):
        self.person.tab_to("text", name)
        self.person.key("ctrl+End")

    def choose(self, label, title, window):
        self.person.tab_to("combo box", label)
        self.person.key("Home")
        while name_of(self.person.choice(label, window)) != title:
            before = name_of(self.person.choice(label, window))
            self.person.key("Down")
            self.person.wait_for(lambda: name_of(self.person.choice(label, window)) != before, f'What comes after "{before}"')

    def choose_colour(self, name, window):
        """Tab goes to the chosen colour, the arrows choose another."""
        squares = self.person.seen("check box", within=window)
        self.person.tab_to("check box", next(name_of(square) for square in squares if is_ticked(square)))
        for key in ["Up"] + ["Left"] * 9:
            if is_ticked(self.person.find("check box", name, window)):
                return
            self.person.key(key)
            time.sleep(0.1)
        raise AssertionError(f'The arrows never came to "{name}".')

    def choose_entry(self, title, names, window):
        self.person.tab_to("list", names)
        self.person.key("Home")
        entries = self.person.find("list", names, window)
        for _ in range(len(self.person.seen("list item", within=entries))):
            if is_chosen(self.person.find("list item", title, entries)):
                return
            self.person.key("Down")
            time.sleep(0.2)
        raise AssertionError(f'Down never came to "{title}".')

    def pick(self, words, cell):
        sheet = self.person.wait_for(lambda: next(iter(self.person.seen("dialog")), None), "The picker")
        self.person.keyboard_is_on("text", "Search")
        self.person.type(words)
        self.person.sees(cell, within=sheet)
        self.person.key("Down", "Return")
        self.person.wait_for(lambda: not self.person.seen("dialog"), "The end of the picker")

    def set_cell(self, table, row, column, columns, text, window):
        self.person.tab_to("table", table)
        self.person.key("ctrl+Home", *["Down"] * row, *["Right"] * column)
        self.person.type(text)
        self.person.key("Return")

    def _answer(self, button, alert):
        self.person.wait_for(lambda: self.person.place_of_keyboard()[0] == "push button", "The keyboard on the question")
        self.press(button, alert)
