"""Reads what lies in a home of the program with Python's own reader of property lists, and compares it with what may lie there.

A unit is what changes as one: a record file, one of the settings, any other file; an order file and its lines file are one unit together.
"""
import os
import plistlib
import re

RECORD_FILES = {'contacts.xml', 'orders.xml', 'items.xml', 'itemsordered.xml', 'bills.xml', 'actions.xml', 'goals.xml'}
PAIR = ('orders.xml', 'itemsordered.xml')
PAIR_NAME = 'orders.xml+itemsordered.xml'
RECOVERY = 'Library/Application Support/Vendaro/Recovery'
GENERATIONS = RECOVERY + '/Generations'
NOTE = RECOVERY + '/.to tell.txt'
TEMPORARY = 'Library/Application Support/Vendaro/temp'

_parsed = {}


class Damaged(Exception):
    pass


def parse(data, path):
    """The property list in the bytes; a file stands for itself in the error."""
    if data not in _parsed:
        try:
            _parsed[data] = plistlib.loads(data, fmt=plistlib.FMT_XML)
        except Exception as error:
            raise Damaged(f'{path} does not parse: {error}') from error
    return _parsed[data]


def is_leftover(name):
    """What a run that was broken off may leave until the folder is written again."""
    return (name.startswith('.vendaro-') or name.startswith('qt_temp.') or '.unfinished' in name)


def is_lock(name):
    return name == 'lock.xml' or re.fullmatch(r'unlock[0-9-]*\.xml(\.damaged)?', name) is not None


def files_below(home):
    """Path within the home to bytes, of every ordinary file."""
    found = {}
    for folder, _, names in os.walk(home):
        for name in names:
            path = os.path.join(folder, name)
            with open(path, 'rb') as file:
                found[os.path.relpath(path, home)] = file.read()
    return found


def is_kept(path):
    return path.startswith((RECOVERY, TEMPORARY))


def units(files, problems):
    """Unit to its contents. What does not parse is told in problems."""
    found = {}
    for path, data in files.items():
        parts = path.split('/')
        if is_kept(path) or any(is_leftover(part) for part in parts) or is_lock(parts[-1]):
            continue
        if parts[-1] in RECORD_FILES or parts[-1].endswith('.plist'):
            try:
                found[path] = parse(data, path)
            except Damaged as error:
                problems.append(str(error))
                found[path] = data
        elif path.endswith('.pdf') and data.startswith(b'%PDF') and data.rstrip().endswith(b'%%EOF'):
            # It says when it was made.
            found[path] = 'a whole PDF'
        else:
            found[path] = data
    for path in [path for path, contents in found.items() if path.endswith('.plist') and isinstance(contents, dict)]:
        found.update({f'{path}/#{key}': value for key, value in found.pop(path).items()})
    for folder in {os.path.dirname(path) for path in found if os.path.basename(path) in PAIR}:
        found[f'{folder}/{PAIR_NAME}'] = tuple(found.pop(f'{folder}/{name}', None) for name in PAIR)
    return found


def kept_contents(files):
    """The bytes of everything in the recovery store but the states that are kept each day, whatever happens."""
    return {data for path, data in files.items() if path.startswith(RECOVERY) and not path.startswith(GENERATIONS)}


def shape(files):
    """The same for two homes that differ only in the process numbers of temporary files."""
    def plain(text):
        return re.sub(rb'\.\d+\.(\d+)\.tmp', rb'.N.\1.tmp', text)
    return hash(frozenset((plain(path.encode()), plain(data) if '.vendaro-' in path else data) for path, data in files.items()))


def records_of(contents):
    """The records in a record file's contents."""
    if not isinstance(contents, dict):
        return []
    return [record for value in contents.values() if isinstance(value, list) for record in value if isinstance(record, dict)]


def ids_of(contents):
    return {record.get('id') for record in records_of(contents)}


def ids_of_both(one, other):
    """The ids of the records that stand in both alike."""
    before = records_of(one)
    return {record.get('id') for record in records_of(other) if record in before}


def pair_of(unit, contents):
    """The pieces of a unit, each with its file's path."""
    if unit.endswith(PAIR_NAME):
        folder = unit[:-len(PAIR_NAME)]
        return list(zip([folder + name for name in PAIR], contents or (None, None)))
    return [(unit, contents)]


def difference(wanted, found, where=''):
    """The first place in which two contents differ, in words."""
    if isinstance(wanted, dict) and isinstance(found, dict):
        for key in sorted(set(wanted) | set(found)):
            if wanted.get(key) != found.get(key):
                return difference(wanted.get(key), found.get(key), f'{where}/{key}')
    if isinstance(wanted, (list, tuple)) and isinstance(found, (list, tuple)):
        if len(wanted) != len(found):
            return f'{where}: {len(found)} instead of {len(wanted)}'
        for n, (one, other) in enumerate(zip(wanted, found)):
            if one != other:
                return difference(one, other, f'{where}[{n}]')
    return f'{where}: {str(found)[:60]!r} instead of {str(wanted)[:60]!r}'
