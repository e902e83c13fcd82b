"""Deeds with the whole house: settings, filters, databases, locks, and bringing back what was."""
import copy

import orders
import people
import stock
from folder import Lock
from program import FOLDER_KEYS, LOCATION, ORDER_FILTER, OWN_KEYS
from records import FILES, GOALS, KIND_OF, KINDS, LINES, ORDERS, PAIR

UNLOCK = 'Unlock database'


def press_ok(program):
    """The settings window is confirmed."""
    for key in OWN_KEYS:
        program.store[key] = program.form[key]
    folder = program.actual_folder()
    for key in FOLDER_KEYS:
        program.store[key] = program.form[key]
        if program.may_write_into(folder):
            folder.info[key] = program.form[key]
    program.store[LOCATION] = program.form[LOCATION]


def flush(program):
    program.saved.clear()
    program.saved.update(program.store)


def settings(program, asked):
    for key, value in asked['edits']:
        # A chooser's place is what is stored.
        program.form[key] = str(value)
    press_ok(program)
    flush(program)


def set_filter(program, asked):
    name = asked['list']
    for key, value in asked['edits']:
        if program.filters[name][key] == value:
            continue
        program.filters[name][key] = value
        if (name, key) == ('orders', 'filter'):
            program.store[ORDER_FILTER] = value
        program.filter(name)


def end_with_folder(program):
    program.write_everything()
    if not program.read_only and program.folder.lock is program.lock:
        program.folder.lock = None
    program.lock = None


def switch(program, asked):
    program.form[LOCATION] = program.store[LOCATION] = asked['location']
    change_folder(program)
    flush(program)


def change_folder(program):
    """The open folder is written and left."""
    end_with_folder(program)
    program.read_folder_settings()
    program.read_database()


def new_database(program, asked):
    program.form[LOCATION] = asked['location']
    program.find_folder(asked['location']).info['dbName'] = asked['name']
    switch(program, asked)


def copy_database(program, asked):
    source, target = program.folder, program.find_folder(asked['path'])
    target.files = dict(source.files)
    target.attachments = copy.deepcopy(source.attachments)
    target.info = dict(source.info)
    target.lock = Lock(program.user, 'offline browsing')


def unlock(program, _asked):
    if program.folder.lock is None:
        program.ask(UNLOCK, 'The database is not locked.')
        return
    program.alerts.append([UNLOCK, None])
    program.folder.lock = None
    if program.known != program.folder.writes:
        program.load(program.folder.files)
    program.read_only = False


def retry(program, _asked):
    """What could not be written is written when it can be."""
    program.retried = set(program.unsaved)
    if program.retried:
        program.write_files(sorted(program.retried, key=FILES.index))


def quit_program(program, _asked):
    press_ok(program)
    end_with_folder(program)
    flush(program)


# Bringing back

def differences(program, state):
    """What an earlier state has that is gone or otherwise now: the kind, the record as its file has it, and what happened to it."""
    found = []
    for kind in KINDS:
        for entry in state.get(kind.file) or []:
            record = kind.record(entry)
            program.complete(kind, record)
            now = program.lists[kind.name].find(record['id'])
            changed = [] if now is None else changed_keys(kind, record, now)
            if now is None or changed:
                found.append((kind, kind.record(entry), 'Deleted' if now is None else 'Changed: ' + ', '.join(changed)))
    return found


def changed_keys(kind, earlier, now):
    keys = [*kind.texts, *kind.integers, *kind.flags, kind.nested]
    different = [key for key in keys if key and key != 'stockadded' and earlier.get(key, '') != now.get(key, '')]
    return sorted(different)


def restore(program, asked, state):
    """Brings back all differences or the chosen ones, an order with its lines."""
    found = differences(program, state)
    chosen = set(range(len(found))) if asked['all'] else {row for row in asked['rows'] if row < len(found)}
    if not chosen or not program.may_change():
        return found
    program.write_everything()
    numbers = {found[row][1]['id'] for row in chosen if found[row][0] is ORDERS}
    chosen |= {row for row, (kind, record, _) in enumerate(found) if kind is LINES and record['order'] in numbers}
    touched = []
    for row in sorted(chosen):
        kind, record, _ = found[row]
        bring_back(program, kind, record)
        for file in PAIR if kind is ORDERS else (kind.file,):
            if file not in touched:
                touched.append(file)
    program.link_contacts()
    for file in touched:
        program.take_over(KIND_OF[file].name)
    program.write_files(touched)
    return found


def bring_back(program, kind, record):
    collection = program.lists[kind.name]
    now = collection.find(record['id'])
    if now is None:
        program.adopt(kind, record)
        return
    program.complete(kind, record)
    if kind is GOALS:
        program.drop_unknown_tasks(record)
    payments = now.get('paymentarray', [])
    program.payments = [pair for pair in program.payments if not any(pair[1] is payment for payment in payments)]
    now.clear()
    now.update(record)
    if kind is ORDERS:
        program.payments += [(now, payment) for payment in now['paymentarray']]
        now.links = [program.contacts.find(now[key]) for key in ('contact', 'contact2')]


DELETIONS = {'contacts': people.delete_contacts, 'items': stock.delete_items, 'orders': orders.delete_orders}


def delete(program, asked):
    DELETIONS[asked['list']](program, asked)


def undo(program, asked):
    program.lists[asked['list']].undo()


def start(program, asked):
    program.start(asked.get('unreadable', ()))


def nothing(_program, _asked):
    """What changes nothing in the model."""


DEEDS = {'start': start, 'die': nothing, 'saveKept': nothing, 'settings': settings, 'filter': set_filter, 'switch': switch,
         'newDatabase': new_database, 'copy': copy_database, 'unlock': unlock, 'retry': retry, 'quit': quit_program, 'delete': delete,
         'undo': undo} | people.DEEDS | stock.DEEDS | orders.DEEDS
