"""Deeds with the whole house: settings, filters, databases, locks."""
import copy

import orders
import people
import stock
from folder import Lock
from program import FOLDER_KEYS, LOCATION, ORDER_FILTER, OWN_KEYS
from records import FILES

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
