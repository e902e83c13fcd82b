#!/usr/bin/env python3
"""The simulation must notice what goes wrong: lives in which one thing is spoilt behind its back, one for each way of spoiling.

  notice_driver.py --shop PROGRAM --library LIBRARY [--seed S]
"""
import glob
import os
import random
import shutil
import sys
import tempfile

import person
import shop_process
from home import SUPPORT, Wrong
from life import Life
from simulation import MEMORY, arguments
from world import World

MOST_DAYS = 400
#: What lay in the recovery store after the step before.
SEEN = set()


def spoil_file(home, asked, reply):
    """A figure on disk is another one."""
    paths = glob.glob(os.path.join(glob.escape(home), SUPPORT, '*.vendb', 'itemsordered.xml'))
    if asked['do'] != 'order' or asked['then'] != 'save' or 'fault' in asked or 'ended' in reply:
        return False
    spoilt = False
    for path in paths:
        with open(path, 'rb') as file:
            data = file.read()
        changed = data.replace(b'<string>1</string>', b'<string>2</string>', 1)
        with open(path, 'wb') as file:
            file.write(changed)
        spoilt |= changed != data
    return spoilt


def spoil_memory(_home, _asked, reply):
    """An order has another balance than it must have."""
    for record in reply.get('memory', {}).get('orders', {}).get('records', []):
        record['balance'] = '0.17'
        return True
    return False


def spoil_rows(_home, _asked, reply):
    """A row is missing in a list."""
    shown = reply.get('memory', {}).get('items', {}).get('shown', [])
    return bool(shown) and bool(shown.pop())


def spoil_alert(_home, asked, reply):
    """A question was not asked."""
    if 'fault' in asked or not reply.get('alerts'):
        return False
    reply['alerts'] = reply['alerts'][1:]
    return True


def spoil_notice(_home, _asked, reply):
    """What is not saved is not shown."""
    if not reply.get('unsaved') or reply.get('ended'):
        return False
    reply['unsaved'] = ''
    return True


def spoil_recovery(home, _asked, reply):
    """Something is gone from the recovery store."""
    known = known_before(home, os.path.join('Recovery', '2* *.xml'), reply)
    if not known:
        return False
    os.remove(known[0])
    return True


def known_before(home, pattern, reply):
    """What is only there since this step is known to nobody, and a program that was killed is looked after later."""
    things = set(glob.glob(os.path.join(glob.escape(home), SUPPORT, pattern)))
    known = sorted(things & SEEN)
    SEEN.clear()
    if 'ended' not in reply:
        SEEN.update(things)
    return known


def spoil_state(home, _asked, reply):
    """A state of the last days is gone."""
    known = known_before(home, os.path.join('Recovery', 'Generations', 'vendarodatabase-*', '2*'), reply)
    if len(known) < 3:
        return False
    shutil.rmtree(known[-1])
    return True


def spoil_lock(home, asked, reply):
    """A lock stays behind."""
    # The second person's own folders are not worked in.
    is_first = os.path.basename(home) == 'ada'
    if not is_first or asked['do'] != 'quit' or 'fault' in asked or reply.get('ended') != 'quit' or reply['readOnly']:
        return False
    for folder in glob.glob(os.path.join(glob.escape(home), SUPPORT, '*.vendb')):
        with open(os.path.join(folder, 'lock.xml'), 'w', encoding='utf-8') as lock:
            lock.write('left behind')
    return True


def spoil_listing(_home, _asked, reply):
    """What became of a record of an earlier state is told wrongly."""
    if not reply.get('differences') or reply['trouble']:
        return False
    row = reply['differences'][-1]
    row[2] = 'Changed: name' if row[2].startswith('Deleted') else 'Deleted'
    return True


WAYS = (spoil_file, spoil_memory, spoil_rows, spoil_alert, spoil_notice, spoil_recovery, spoil_lock, spoil_listing, spoil_state)
#: Of what is not saved some may be on disk all the same: silence about that is no loss.
OFTEN = (spoil_notice,)


class SpoiltProcess(shop_process.ShopProcess):
    """Spoils the way that is set, once or often."""
    way = None
    spoilt = 0

    def begin(self, home, user):
        self.home = home
        super().begin(home, user)

    def ask(self, asked):
        reply = super().ask(asked)
        if not SpoiltProcess.spoilt or SpoiltProcess.way in OFTEN:
            SpoiltProcess.spoilt += SpoiltProcess.way(self.home, asked, reply)
        return reply


def is_noticed(options, way):
    """Says what was noticed, and when."""
    SpoiltProcess.way, SpoiltProcess.spoilt = staticmethod(way), 0
    SEEN.clear()
    with tempfile.TemporaryDirectory(prefix='vendaro-life-', dir=MEMORY) as work:
        world = World(work, lambda line: None)
        life = Life(random.Random(options.seed), world, (os.path.abspath(options.shop), os.path.abspath(options.library)))
        try:
            while world.day < MOST_DAYS:
                world.day += 1
                life.day()
        except Wrong as found:
            print(f'{way.__doc__} Day {world.day}: {str(found)[:90]}')
            return SpoiltProcess.spoilt > 0
        finally:
            life.close()
    print(f'NOT NOTICED in {world.day} days ({SpoiltProcess.spoilt} times): {way.__doc__}')
    return False


def main():
    options = arguments()
    person.ShopProcess = SpoiltProcess
    return 0 if all([is_noticed(options, way) for way in WAYS]) else 1


if __name__ == '__main__':
    sys.exit(main())
