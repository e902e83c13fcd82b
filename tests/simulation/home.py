"""A person's home on disk, read with Python's own means: record files, settings, the recovery store."""
import os
import plistlib
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'faults'))
import home_reader  # noqa: E402  pylint: disable=wrong-import-position
from records import FILES, KIND_OF  # noqa: E402  pylint: disable=wrong-import-position

SUPPORT = 'Library/Application Support/Vendaro'
SETTINGS = 'Library/Preferences/Vendaro.plist'
DEFAULT = f'~/{SUPPORT}/vendarodatabase.vendb'
INTENT = '.vendaro-commit'
#: What a file holds that nobody can read: no entries, and not the same as an empty list.
BROKEN = ()
#: How many files' contents are remembered.
MOST_KNOWN = 500


class Wrong(Exception):
    """Something is not as it must be."""


def read_bytes(path):
    try:
        with open(path, 'rb') as file:
            return file.read()
    except FileNotFoundError:
        return None


_entries = {}


def entries_of(data, file):
    """The entries of a record file's bytes; none for a file that is not there."""
    if data is None:
        return None
    if data not in _entries:
        if len(_entries) > MOST_KNOWN:
            _entries.clear()
        _entries[data] = parsed_entries(data, file)
    return _entries[data]


def parsed_entries(data, file):
    try:
        root = plistlib.loads(data, fmt=plistlib.FMT_XML)
    except Exception as error:
        raise Wrong(f'{file} does not parse: {error}') from error
    if list(root) != [KIND_OF[file].root]:
        raise Wrong(f'{file} holds {list(root)}')
    return root[KIND_OF[file].root]


class FolderReader:
    """Reads a database folder's record files again only when they changed."""

    def __init__(self, path):
        self.path = path
        self.stamps = {}
        self.data = {}
        self.entries = {}
        #: Contents that were damaged on purpose.
        self.damaged = set()

    def look(self):
        """Which files changed since the last look."""
        changed = []
        for file in FILES:
            path = os.path.join(self.path, file)
            try:
                status = os.stat(path)
                stamp = (status.st_ino, status.st_mtime_ns, status.st_ctime_ns, status.st_size)
            except FileNotFoundError:
                stamp = None
            if file not in self.stamps or self.stamps[file] != stamp:
                self.stamps[file] = stamp
                self.data[file] = read_bytes(path)
                self.entries.pop(file, None)
                changed.append(file)
        return changed

    def read(self, file):
        if file not in self.entries:
            self.entries[file] = BROKEN if self.data[file] in self.damaged else entries_of(self.data[file], file)
        return self.entries[file]

    def state(self):
        self.look()
        return {file: self.read(file) for file in FILES}

    def is_interrupted(self):
        return os.path.exists(os.path.join(self.path, INTENT))

    def has_lock(self):
        return os.path.lexists(os.path.join(self.path, 'lock.xml'))

    def attachments(self):
        """Order to its files, name to bytes."""
        found = {}
        top = os.path.join(self.path, 'Attachments')
        for folder in os.listdir(top) if os.path.isdir(top) else ():
            files = {name: read_bytes(os.path.join(top, folder, name)) for name in os.listdir(os.path.join(top, folder))
                     if not name.startswith('.vendaro-')}
            if files:
                found[int(folder.removeprefix('order'))] = files
        return found

    def info(self):
        data = read_bytes(os.path.join(self.path, 'info.plist'))
        return plistlib.loads(data) if data else {}

    def leftovers(self):
        names = os.listdir(self.path) if os.path.isdir(self.path) else []
        return [name for name in names if home_reader.is_leftover(name)]


class RecoveryReader:
    """What lies in a recovery store. What is there once goes only into the trash, and only when it is old."""

    def __init__(self, home):
        self.home = home
        self.folder = os.path.join(home, SUPPORT, 'Recovery')
        self.trash = os.path.join(home, '.local/share/Trash')
        self.things = {}

    def look(self):
        """Answers the names of what is new."""
        names = sorted(os.listdir(self.folder)) if os.path.isdir(self.folder) else []
        names = [name for name in names if name != 'Generations' and not name.startswith('.')]
        new = [name for name in names if name not in self.things]
        for name in new:
            self.things[name] = self.contents(os.path.join(self.folder, name))
        for name in [name for name in self.things if name not in names]:
            self.must_be_in_trash(name)
        return new

    @staticmethod
    def contents(path):
        if os.path.isdir(path):
            return {name: read_bytes(os.path.join(path, name)) for name in sorted(os.listdir(path))}
        return read_bytes(path)

    def must_be_in_trash(self, name):
        files = os.path.join(self.trash, 'files')
        kept = os.listdir(files) if os.path.isdir(files) else []
        if not any(self.contents(os.path.join(files, other)) == self.things[name] for other in kept):
            raise Wrong(f'{name} is gone from the recovery store')
        del self.things[name]

    def holds(self, data):
        return any(thing == data for thing in self.things.values())

    def find(self, file, entries):
        """The bytes that are kept of the file with those entries; none when there are none."""
        return next((thing for name, thing in self.things.items() if name.endswith(' ' + file) and is_list(thing, file, entries)), None)

    def generations(self, path):
        """The names of the states of the database in that folder, the newest first, with their folders."""
        top = os.path.join(self.folder, 'Generations')
        base = os.path.basename(path).rsplit('.', 1)[0]
        found = []
        for place in os.listdir(top) if os.path.isdir(top) else ():
            if place.rsplit('-', 1)[0] == base:
                found += [(name, os.path.join(top, place, name)) for name in os.listdir(os.path.join(top, place)) if name[0] != '.']
        return sorted(found, reverse=True)


def is_list(data, file, entries):
    try:
        return isinstance(data, bytes) and entries_of(data, file) == entries
    except Wrong:
        return False


def state_of(folder):
    """The entries of the record files that lie in a folder."""
    data = {file: read_bytes(os.path.join(folder, file)) for file in FILES}
    return {file: entries_or_broken(content, file) for file, content in data.items() if content is not None}


def entries_or_broken(data, file):
    try:
        return entries_of(data, file)
    except Wrong:
        return BROKEN


def saved_settings(home, keys):
    data = read_bytes(os.path.join(home, SETTINGS))
    values = plistlib.loads(data) if data else {}
    return {key: values[key] for key in keys if key in values}
