#!/usr/bin/env python3
"""Every byte of a small database flipped, replaced or the end of the file from there on cut off, and every value in it replaced by one of
another shape; then the program opens it, adds a record to every list, saves and quits.

  damage_driver.py --shop PROGRAM --library LIBRARY [--seconds N] [--seed S] [--workers N] [--case "goals.xml flip 252"]

Afterwards the damaged file lies in the recovery store byte for byte, or every record that stands in it stands in the folder: texts letter
for letter, numbers and flags as a reader of the format takes them.
"""
import multiprocessing
import os
import plistlib
import random
import re
import sys
import tempfile
import time

import home_reader
from fault_driver import DEFAULT, SETTINGS, prepare
from home_reader import records_of
from shop_runner import MEMORY, Shop, arguments, fresh

KINDS = ['flip', 'replace', 'cut']
SHAPE = 'shape'
NUMBERS = {'id', 'contact', 'contact2', 'bill', 'newcustomer', 'company', 'order', 'product', 'material'}
FLAGS = {'applydiscount', 'discountispercentage', 'includeBOM', 'sent', 'stockadded', 'repeats', 'decreaseQty', 'exportbrevand',
         'exportgoogle', 'hidebuttoncode', 'complete', 'alarm', 'alarmacknowledged'}

# The ids of the home's tasks.
TASKS = {'1', '2'}


def values_in(root):
    """The containers of all values in a property list, each with the key or the place of one."""
    for key, value in list(root.items() if isinstance(root, dict) else enumerate(root)):
        yield root, key
        if isinstance(value, (dict, list)):
            yield from values_in(value)


def reshape(data, at):
    """The value at that place becomes a list, and a list or a dictionary becomes a text."""
    root = plistlib.loads(data)
    container, key = list(values_in(root))[at]
    container[key] = 'KEEP' if isinstance(container[key], (dict, list)) else ['KEEP']
    return plistlib.dumps(root)


def damage(data, kind, at, chance):
    if kind == SHAPE:
        return reshape(data, at)
    if kind == 'cut':
        return data[:at]
    byte = data[at] ^ (1 << chance.randrange(8)) if kind == 'flip' else chance.choice([b for b in range(256) if b != data[at]])
    return data[:at] + bytes([byte]) + data[at + 1:]


def leading_number(text):
    found = re.match(r'\s*[-+]?\d+', text)
    return int(found.group()) if found else 0


def in_order(value):
    """A value whose dictionaries have their keys in order: it is the same whichever order they are written in."""
    if isinstance(value, dict):
        return {key: in_order(value[key]) for key in sorted(value)}
    return [in_order(entry) for entry in value] if isinstance(value, list) else value


def plain(record):
    """A record as any reader of the format takes it."""
    result = {}
    for key, value in in_order(record).items():
        if key in NUMBERS and isinstance(value, str):
            value = leading_number(value)
        elif key in FLAGS and isinstance(value, str):
            value = value == 'YES'
        elif key == 'paymentarray' and isinstance(value, list):
            # An empty text and none are the same.
            value = [{name: entry[name] for name in entry if entry[name] != ''} if isinstance(entry, dict) else entry for entry in value]
        elif key == 'actions' and isinstance(value, list):
            # A task may be gone, and a goal then skips it.
            value = [id for id in value if id in TASKS or not leading_number(id)]
        # An id that is no number is given anew; a line whose contact is none gets its order's.
        if value != '' and (key, value) not in (('id', 0), ('contact', 0)):
            result[key] = repr(value)
    return result


def stands_in(record, others):
    """Whether one of the others has everything that the record has."""
    wanted = plain(record).items()
    return any(wanted <= plain(other).items() for other in others)


def check(path, damaged, before, files, told):
    """What is wrong, in words; nothing when all is well."""
    if damaged in home_reader.kept_contents(files):
        return '' if told else f'{path} is kept, and nothing was told'
    if files.get(path) == damaged:
        return ''
    try:
        was = home_reader.parse(damaged, path)
    except home_reader.Damaged:
        was = None
    now = home_reader.parse(files[path], path) if path in files else None
    if path.endswith('.plist'):
        lost = [key for key in (before if was is None else was) if key not in now]
        return f'{path}: {lost} went and the original is not kept' if len(lost) > (was is None) else ''
    if was is None:
        # Ours reads what the other reader refuses; nothing but the one byte may be missing then.
        lost = [record for record in records_of(before) if not stands_in(record, records_of(now))]
        return f'{path}: read in spite of its damage, and {len(lost)} records changed' if len(lost) > 1 else ''
    lost = [record for record in records_of(was) if not stands_in(record, records_of(now))]
    return f'{path}: the original is not kept, and lost is {lost[0]}' if lost else ''


class Worker:
    def __init__(self, options, work, home, seed):
        self.place = os.path.join(work, f'worker-{os.getpid()}')
        os.makedirs(self.place)
        self.shop = Shop(options.shop, options.library)
        self.home, self.seed = home, seed
        self.before = home_reader.files_below(home)

    def run(self, path, kind, at):
        chance = random.Random(f'{self.seed} {path} {kind} {at}')
        damaged = damage(self.before[path], kind, at, chance)
        fresh(self.place, self.home)
        with open(os.path.join(self.place, 'home', path), 'wb') as file:
            file.write(damaged)
        run = self.shop.run('addEverywhere', self.place)
        if run.killed or run.status:
            return f'the program ended with {run.status}'
        if run.texts('unsaved'):
            return f'not saved: {run.texts("unsaved")}'
        files = home_reader.files_below(os.path.join(self.place, 'home'))
        # What comes up at the end is told by the next start.
        told = run.texts('told') or files.get(home_reader.NOTE)
        return check(path, damaged, home_reader.parse(self.before[path], path), files, bool(told))


def work_on(options, work, home, cases, results, deadline):
    worker = Worker(options, work, home, options.seed)
    for case in cases:
        if time.monotonic() > deadline:
            break
        try:
            results.put((case, worker.run(*case)))
        except Exception as error:
            results.put((case, f'{type(error).__name__}: {error}'))
    results.put(None)


def main():
    parser = arguments()
    parser.add_argument('--workers', type=int, default=2)
    parser.add_argument('--shown', type=int, default=20)
    parser.add_argument('--case', help='only this one')
    options = parser.parse_args()
    begin = time.monotonic()
    with tempfile.TemporaryDirectory(prefix='vendaro-damage-', dir=MEMORY) as work:
        shop = Shop(options.shop, options.library)
        home = prepare(shop, work)['business']
        shop.close()
        files = home_reader.files_below(home)
        paths = [path for path in files if path == SETTINGS or (os.path.dirname(path) == DEFAULT and path.endswith(('.xml', '.plist')))]
        cases = [(path, kind, at) for path in sorted(paths) for kind in KINDS for at in range(len(files[path]))]
        cases += [(path, SHAPE, at) for path in sorted(paths) for at in range(len(list(values_in(plistlib.loads(files[path])))))]
        random.Random(options.seed).shuffle(cases)
        if options.case:
            cases = [case for case in cases if options.case == f'{os.path.basename(case[0])} {case[1]} {case[2]}']
        deadline = begin + options.seconds if options.seconds else float('inf')
        context = multiprocessing.get_context('fork')
        results = context.Queue()
        workers = [context.Process(target=work_on, args=(options, work, home, cases[n::options.workers], results, deadline), daemon=True)
                   for n in range(options.workers)]
        for worker in workers:
            worker.start()
        ran = failed = 0
        busy = len(workers)
        while busy:
            result = results.get()
            if result is None:
                busy -= 1
                continue
            ran += 1
            if result[1]:
                failed += 1
                if failed <= options.shown:
                    print(f'FAILED: {result[0]}: {result[1]}', flush=True)
        print(f'{ran} of {len(cases)} damaged files in {time.monotonic() - begin:.0f} s, seed {options.seed}: {failed} failed')
        return 1 if failed or not ran else 0


if __name__ == '__main__':
    sys.exit(main())
