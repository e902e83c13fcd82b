"""A person at the screen: finds controls as a screen reader does, by role and name, and uses the real mouse and keyboard.

Needs a screen with a window manager and the accessibility bus: tools/own-screen --accessible.
"""

import os
import plistlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import traceback
from pathlib import Path

import pyatspi

# Parts of lists and tab bars call themselves focused while the whole does not have the keyboard.
PARTS = {"list item", "table cell", "tree item", "table column header", "page tab"}

# How long anything may take to come up, in seconds. Far more than it needs, so that a busy machine fails nobody.
PATIENCE = 20


class NotSeen(AssertionError):
    """Something that should be on the screen is not."""


def _quietly(question, otherwise):
    """The tree changes while it is read: whatever went away meanwhile counts as not there."""
    try:
        return question()
    except Exception:  # the bindings raise GLib.GError, LookupError and RuntimeError alike
        return otherwise


def _shows(node):
    def ask():
        states = node.getState()
        return states.contains(pyatspi.STATE_SHOWING) and states.contains(pyatspi.STATE_VISIBLE)

    return _quietly(ask, False)


def _children(node):
    count = _quietly(lambda: node.childCount, 0)
    for number in range(count):
        child = _quietly(lambda: node.getChildAtIndex(number), None)
        if child is not None:
            yield child


def name_of(node):
    return _quietly(lambda: node.name, "") or ""


def role_of(node):
    return _quietly(node.getRoleName, "") or ""


def text_of(node):
    """What a field holds, or else the words on the control."""

    def ask():
        text = node.queryText()
        return text.getText(0, text.characterCount)

    return _quietly(ask, name_of(node))


def _label_of(node):
    def ask():
        for relation in node.getRelationSet():
            if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY:
                return relation.getTarget(0).name
        return ""

    return _quietly(ask, "")


def called(node):
    """What a person calls the control: a pop-up list says what is chosen in it, so it goes by its label."""
    if role_of(node) != "combo box":
        return name_of(node)
    return _label_of(node) or _quietly(lambda: node.description, "")


def _descendants(node):
    for child in _children(node):
        if not _shows(child):
            continue
        yield child
        yield from _descendants(child)


def _place_of(node):
    extents = _quietly(lambda: node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS), None)
    return extents and (extents.x, extents.y, extents.width, extents.height)


class Person:
    """Runs the program on a home of its own and uses it."""

    def __init__(self, program):
        self.program = str(Path(program).resolve())
        self.home = Path(tempfile.mkdtemp(prefix="vendaro-home-"))
        self.process = None
        # Where failures leave their pictures, and stories what is worth looking at.
        self.pictures = None

    # The program

    def start(self, *before):
        """Starts the program and waits for its window; with words before it, through that command."""
        environment = {key: value for key, value in os.environ.items() if not key.startswith("XDG_") or key == "XDG_RUNTIME_DIR"}
        environment |= {"HOME": str(self.home), "LC_ALL": "C.UTF-8", "TZ": "UTC", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        environment.pop("QT_QPA_PLATFORM", None)
        self.process = subprocess.Popen([*before, self.program], env=environment)
        self.window("Vendaro")
        self.window("Tip of the Day")
        self.key("Escape")
        self.window_is_gone("Tip of the Day")

    def has_ended(self):
        """Waits for the program to end by itself; it must have ended well."""
        status = self.process.wait(PATIENCE)
        self.process = None
        assert status == 0, f"The program ended with {status}."

    def leave(self):
        """Ends what still runs and takes the home away."""
        if self.process:
            self.process.kill()
            self.process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    @property
    def database(self):
        return self.home / "Library/Application Support/Vendaro/vendarodatabase.vendb"

    def records(self, name):
        """The records of a file of the database."""
        with open(self.database / name, "rb") as file:
            return plistlib.load(file)

    # Seeing

    def _application(self):
        for application in _children(pyatspi.Registry.getDesktop(0)):
            if _quietly(application.get_process_id, 0) == self.process.pid:
                return application
        return None

    def wait_for(self, question, what):
        """Asks until the answer is something, and answers that."""
        end = time.monotonic() + PATIENCE
        while True:
            answer = question()
            if answer:
                return answer
            if self.process and self.process.poll() is not None:
                raise NotSeen(f"The program ended with {self.process.returncode} while waiting for {what}.")
            if time.monotonic() > end:
                raise NotSeen(f"{what} did not come up.")
            time.sleep(0.1)

    def everything(self, within=None):
        root = within if within is not None else self._application()
        return [] if root is None else list(_descendants(root))

    def seen(self, role, name=None, within=None):
        """The controls of that role and name that show now."""
        return [node for node in self.everything(within) if role_of(node) == role and (name is None or name_of(node) == name)]

    def find(self, role, name, within=None):
        """The one control of that role and name, once it shows."""
        found = self.wait_for(lambda: self.seen(role, name, within), f'The {role} "{name}"')
        assert len(found) == 1, f'There are {len(found)} of the {role} "{name}".'
        return found[0]

    def window(self, title):
        """The window, once the window manager has put it where it stays."""
        window = self.wait_for(lambda: self._window_now(title), f'The window "{title}"')
        places = []

        def rests():
            places.append(_place_of(window))
            return len(places) > 3 and len(set(places[-3:])) == 1

        self.wait_for(rests, f'The place of the window "{title}"')
        return window

    def _window_now(self, title):
        application = self._application()
        windows = [] if application is None else list(_children(application))
        return next((window for window in windows if _shows(window) and name_of(window) == title), None)

    def window_is_gone(self, title):
        """A program that does not answer for a moment shows no windows either: it has to be there."""
        self.wait_for(lambda: self._application() is not None and self._window_now(title) is None, f'The end of the window "{title}"')

    def words(self, within=None):
        """Every word that shows, in labels, cells and fields."""
        nodes = self.everything(within)
        return [text_of(node) for node in nodes] + [name_of(node) for node in nodes]

    def sees(self, *words, within=None):
        """Each of these texts is on the screen, as the whole of a label, cell or field."""
        for text in words:
            self.wait_for(lambda: text in self.words(within), f'The text "{text}"')

    def choice(self, label, within=None):
        """The pop-up list beside that label; its own name is what is chosen in it."""

        def ask():
            return next((box for box in self.seen("combo box", within=within) if called(box) == label), None)

        return self.wait_for(ask, f'The pop-up list "{label}"')

    def choice_becomes(self, label, title, within=None):
        self.wait_for(lambda: name_of(self.choice(label, within)) == title, f'"{title}" in the pop-up list "{label}"')

    def field_becomes(self, name, text, within=None):
        self.wait_for(lambda: text_of(self.find("text", name, within)) == text, f'"{text}" in the field "{name}"')

    def focused(self):
        """The control that has the keyboard."""
        for node in self.everything():
            if _quietly(lambda: node.getState().contains(pyatspi.STATE_FOCUSED), False) and role_of(node) not in PARTS:
                return node
        return None

    # Using

    @staticmethod
    def _tool(*arguments):
        subprocess.run(["xdotool", *map(str, arguments)], check=True)

    def click(self, node, times=1):
        extents = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        assert extents.width > 0 and extents.height > 0, f'The {role_of(node)} "{name_of(node)}" has no place on the screen.'
        self._tool("mousemove", "--sync", extents.x + extents.width // 2, extents.y + extents.height // 2)
        self._tool("click", "--repeat", times, "--delay", 80, 1)

    def press(self, name, within=None):
        self.click(self.find("push button", name, within))

    def key(self, *combinations):
        for combination in combinations:
            self._tool("key", "--clearmodifiers", combination)
            time.sleep(0.05)

    def type(self, text):
        self._tool("type", "--delay", 15, "--", text)

    def fill(self, name, text, within=None):
        """Clicks into the field and replaces what it holds."""
        self.click(self.find("text", name, within))
        self.key("ctrl+a")
        self.type(text)
        self.field_becomes(name, text, within)

    @staticmethod
    def copy(text):
        """Another program puts the text on the clipboard."""
        subprocess.run(["xclip", "-selection", "clipboard"], input=text.encode(), check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

    def place_of_keyboard(self):
        """Role and name of what has the keyboard; a pop-up list goes by its label."""
        node = self.focused()
        if node is None:
            return "nothing", ""
        return role_of(node), called(node)

    def tab_to(self, role, name):
        """Goes on with Tab until that control has the keyboard; fails when Tab comes round without it."""
        passed = []
        for _ in range(60):
            place = self.place_of_keyboard()
            if place == (role, name):
                return
            passed.append(place)
            self.key("Tab")
            time.sleep(0.05)
        raise NotSeen(f'Tab never came to the {role} "{name}", only to {list(dict.fromkeys(passed))}.')

    def keyboard_is_on(self, role, name):
        try:
            self.wait_for(lambda: self.place_of_keyboard() == (role, name), "The keyboard")
        except NotSeen:
            found = self.place_of_keyboard()
            raise NotSeen(f'The keyboard is on the {found[0]} "{found[1]}" and not on the {role} "{name}".') from None

    # Telling

    def picture(self, name):
        self.pictures.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-window", "root", str(self.pictures / f"{name}.png")], check=False)

    def tree(self):
        """What shows, for the report of a failure."""

        def lines(node, depth):
            yield f'{"  " * depth}{role_of(node)} "{name_of(node)}" {text_of(node)!r}'
            for child in _children(node):
                if _shows(child):
                    yield from lines(child, depth + 1)

        application = self._application()
        return "" if application is None else "\n".join(lines(application, 0))


def texts_of_pdf(path):
    return subprocess.run(["pdftotext", "-layout", str(path), "-"], check=True, capture_output=True, text=True).stdout


def run(story):
    """Tells the story with the program named on the command line; a failure leaves a picture and the tree behind.

    usage: STORY PROGRAM [FOLDER FOR PICTURES]
    """
    person = Person(sys.argv[1])
    person.pictures = pictures = Path(sys.argv[2] if len(sys.argv) > 2 else ".")
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("stopped"))
    try:
        story(person)
    except BaseException:
        traceback.print_exc()
        name = Path(sys.argv[0]).stem
        person.picture(f"{name}-failed")
        if person.process:
            (pictures / f"{name}-failed.txt").write_text(person.tree())
        print(f"Picture and tree lie in {pictures.resolve()}.", file=sys.stderr)
        sys.exit(1)
    finally:
        person.leave()
