"""A person with a home and the program: does deeds on it and on the model of it, and holds what is there against what must be."""
import datetime
import os
import plistlib

from earlier_files import readable_state_of
from folder import Lock
from home import BROKEN, SETTINGS, RecoveryReader, Wrong, home_reader, saved_settings, state_of
from house import DEEDS
from program import FOLDER_KEYS, LOCATION, ORDER_FILTER, OWN_KEYS, Program
from records import FILES, PAIR
from restoring import restore
from shop_process import ShopProcess

TRACKED = (*OWN_KEYS, *FOLDER_KEYS, LOCATION, ORDER_FILTER)
FIRST_SETTINGS = {
    'VendaroDateFormat': '0', 'VendaroHandlesTax': 'YES', 'VendaroTaxShipping': 'S', 'askAboutUpgrading': True,
    'VendaroTaxRates': [{'code': code, 'description': '', 'rate': rate} for code, rate in (('S', '20'), ('L', '5'), ('Z', '0'), ('E', '0'))],
    'VendaroCurrency': '£', 'VendaroCurrencyCode': 'GBP', 'VendaroOrderPrefix': '', 'VendaroItemPrefix': '', 'VendaroContactPrefix': 'C',
    'VendaroStockWarn': '0', 'VendaroStatuses': 'Enquiry\nOrdered\nPaid\nComplete', 'VendaroPricesTaxInclusive': '1',
    'VendaroDefaultSort': '0'}
#: What changes together.
UNITS = [PAIR] + [(file,) for file in FILES if file not in PAIR]
#: So many states are kept of a database, and all of the last so many days.
MOST_STATES = 50
DAYS_OF_ALL_STATES = 14
LISTS = ('contacts', 'orders', 'items', 'lines', 'bills', 'tasks', 'goals', 'payments')


class Person:
    def __init__(self, name, work, tools, world, location):
        self.name, self.world = name, world
        self.home = os.path.join(work, name)
        self.process = ShopProcess(*tools, os.path.join(work, f'counts-{name}'))
        self.recovery = RecoveryReader(self.home)
        self.write_first_settings(location)
        self.program = None
        self.mirror = {}
        #: What was told since the program started.
        self.told = set()
        #: Files that are not on disk as they should be, and those that may be so.
        self.stale, self.doubtful = {}, set()
        self.fault = None
        self.watched = self.home
        #: Files of which the next start must tell.
        self.notes = []

    def write_first_settings(self, location):
        path = os.path.join(self.home, SETTINGS)
        os.makedirs(os.path.dirname(path))
        with open(path, 'wb') as file:
            plistlib.dump(FIRST_SETTINGS | {LOCATION: location}, file)

    def find_folder(self, location):
        return self.world.folder(location.replace('~', self.home, 1) if location.startswith('~') else location)

    def runs(self):
        return self.program is not None

    def reader(self):
        return self.world.reader(self.program.folder)

    # Doing

    def start(self, fault=None, unreadable=()):
        """Answers the reply; none when the program was killed."""
        self.process.begin(self.home, self.name)
        self.program = Program(self.name, self.home, self.read_settings(), self.find_folder)
        self.mirror = {}
        self.told = set()
        self.stale, self.doubtful = {}, set()
        return self.do({'do': 'start', 'unreadable': list(unreadable)}, fault)

    def read_settings(self):
        return saved_settings(self.home, TRACKED)

    def do(self, asked, fault=None):
        """Answers the reply; none when the program is not there any more."""
        program = self.program
        program.begin()
        program.now, program.answers = self.world.now, asked.get('answers', {})
        program.unsaved = set(self.stale) | self.doubtful
        before = Before(self)
        earlier = self.earlier_state(asked)
        listed = self.imagine(asked, earlier)
        asked = asked | {'now': self.world.now.isoformat()}
        if fault:
            self.fault = fault if fault['at'] else None
            self.watched = fault.get('folder', self.home)
            asked['fault'] = fault
        reply = self.process.ask(asked)
        self.world.note(self.name, asked, reply)
        if 'ended' in reply and 'alerts' not in reply:
            return self.after_kill(reply, before)
        self.judge(asked, reply, before, listed)
        if earlier is not None:
            self.judge_earlier(reply, earlier)
        if asked['do'] == 'settings' and self.fault:
            self.settle_settings(before)
        if asked['do'] == 'quit':
            self.after_quit(reply)
        elif self.fault and not self.fault.get('stays'):
            self.fault = None
        return reply

    def earlier_state(self, asked):
        """What is brought back from, if anything is."""
        return readable_state_of(os.path.join(self.place_of_states(), asked['state'])) if asked['do'] == 'restore' else None

    def imagine(self, asked, earlier):
        """Lets the model do what is asked."""
        if earlier is not None:
            return restore(self.program, asked, earlier)
        DEEDS[asked['do']](self.program, asked)
        return None

    def place_of_states(self):
        return os.path.dirname(self.recovery.generations(self.program.folder.path)[0][1])

    # Judging what the program says

    def judge(self, asked, reply, before, listed):
        if asked['do'] == 'start' and self.program.folder.candidates:
            self.settle_candidates(reply)
        self.recovery.look()
        if asked['do'] == 'unlock' and self.fault:
            self.settle_lock(reply)
        self.judge_files(reply, before)
        self.judge_attachments(reply, before)
        self.judge_alerts(reply)
        if asked['do'] != 'quit':
            self.judge_memory(reply)
        if reply['readOnly'] != self.program.read_only:
            raise Wrong(f'read-only: {reply["readOnly"]} instead of {self.program.read_only}')
        if listed is not None:
            self.judge_differences(reply, listed)
        if not self.fault and not asked.get('unreadable'):
            self.judge_unread(set(reply['told']) - self.told)
        # All that was told of a database is told again with each news.
        self.told |= set(reply['told'])
        self.judge_foreign(asked, reply, before)
        self.judge_state_of_today(before)
        self.judge_earlier_states(before)

    def judge_alerts(self, reply):
        wanted = self.program.alerts
        fits = len(wanted) == len(reply['alerts']) and all(
            one[0] == other[0] and one[1] in (None, other[1].replace('\r', ' ').replace('\n', ' '))
            for one, other in zip(wanted, reply['alerts']))
        if not fits and not self.fault:
            raise Wrong(f'asked: {reply["alerts"]}, but it must be {wanted}')

    def judge_memory(self, reply):
        self.mirror |= reply['memory']
        for name in LISTS:
            wanted, found = self.program.memory(name), self.mirror[name]['records']
            if wanted != found:
                raise Wrong(f'{name} in memory{home_reader.difference(wanted, found)}')
            if name == 'payments':
                continue
            collection = self.program.lists[name]
            numbers = [record['id'] for record in found]
            if len(set(numbers)) != len(numbers):
                raise Wrong(f'{name} with equal ids: {numbers}')
            shown = [record['id'] for record in collection.shown()]
            if name in self.program.filters and shown != self.mirror[name]['shown']:
                raise Wrong(f'{name} shown are {self.mirror[name]["shown"]} instead of {shown}')
            undoable = [record['id'] for record in collection.undoable]
            if name in self.program.filters and undoable != self.mirror[name]['undo']:
                raise Wrong(f'{name}: undo would bring {self.mirror[name]["undo"]} instead of {undoable}')

    @staticmethod
    def judge_differences(reply, listed):
        wanted = [difference.what for difference in listed]
        if [row[2] for row in reply['differences']] != wanted and not reply['trouble']:
            raise Wrong(f'the differences to an earlier state are {reply["differences"]} instead of {wanted}')

    @staticmethod
    def judge_earlier(reply, earlier):
        """It is told which files of an earlier state do not read, and of no others."""
        broken = [file for file in FILES if earlier.get(file) == BROKEN]
        if len(reply['unread']) != len(broken) or not all(text.startswith(file) for file, text in zip(broken, reply['unread'])):
            raise Wrong(f'of the earlier state {broken} do not read, and it is told: {reply["unread"]}')

    # Judging what lies on disk

    def judge_unread(self, told):
        """Only a file that was damaged, and that nothing took the place of yet, may not read."""
        data, damaged = self.reader().data, self.reader().damaged
        for text in told:
            if 'could not be read' in text and not any(text.startswith(file) and data[file] in damaged for file in FILES):
                raise Wrong(f'told for no reason: {text}')

    def judge_files(self, reply, before):
        """Every file holds what it must, or under a fault what it held before or at a moment of the deed."""
        folder, moments = before.folder, self.program.moments
        if folder is None or before.candidates and not moments:
            return
        reader, wanted = self.world.reader(folder), before.after(moments)
        before.changed |= set(reader.look())
        if (self.fault or before.candidates) and reader.is_interrupted():
            # What could not take its place is read through the intent until it can.
            folder.candidates = combinations(before.states(moments))
            self.doubtful |= set(FILES)
            folder.may_be_littered |= bool(self.fault)
            return
        found = reader.state()
        if before.candidates:
            wanted = found | {file: wanted[file] for moment in moments for file in moment}
        # Only what is unsaved is tried again; of the rest nobody knows whether it was.
        wanted |= {file: found[file] for file in self.program.retried - set(self.stale)}
        if self.fault or self.program.retried or before.candidates:
            self.judge_under_fault(found, wanted, before)
        else:
            for file in FILES:
                if found[file] != wanted[file]:
                    raise Wrong(f'{file} on disk{home_reader.difference(wanted[file], found[file])}')
        if folder is self.program.folder:
            self.settle_unsaved(found, wanted, reply)
        else:
            self.judge_left_behind(found, wanted, reply, before)
        self.program.knows(folder, before.changed)
        folder.files, folder.candidates = dict(found), []
        self.judge_leftovers(reader, before)

    def judge_leftovers(self, reader, before):
        folder = before.folder
        if self.program.moments and before.is_first_write:
            # What was left by a fault goes with the first write.
            folder.may_be_littered = False
            self.program.first_write = folder is not self.program.folder
        if self.fault:
            folder.may_be_littered = True
        elif self.program.moments and not folder.may_be_littered and reader.leftovers():
            raise Wrong(f'left in the folder: {reader.leftovers()}')

    def judge_under_fault(self, found, wanted, before):
        states = before.states(self.program.moments)
        for unit in UNITS:
            if not any(part(found, unit) == part(state, unit) for state in states):
                file = unit[0]
                raise Wrong(f'{" and ".join(unit)} hold what they never held together'
                            f'{home_reader.difference(states[-1][file], found[file])}')
        for file in self.program.retried & set(self.stale):
            if not self.fault and found[file] != wanted[file]:
                raise Wrong(f'{file} was not written with the next write')

    def settle_unsaved(self, found, wanted, reply):
        written = {file for moment in self.program.moments for file in moment}
        stale = {file: wanted[file] for file in FILES if found[file] != wanted[file]}
        for file in written:
            self.stale.pop(file, None)
        self.stale |= stale
        if self.fault:
            self.doubtful |= written
        else:
            self.doubtful -= written
        if not reply['unsaved']:
            if self.stale:
                raise Wrong(f'{sorted(self.stale)} not saved, and nothing is shown')
            self.doubtful = set()
        elif not self.stale and not self.doubtful:
            raise Wrong(f'everything is saved, but it says: {reply["unsaved"]}')

    def judge_left_behind(self, found, wanted, reply, before):
        """What could not be written into a folder that was left is in the recovery store, and that is told."""
        for file in FILES:
            if found[file] == wanted[file]:
                continue
            if self.recovery.find(file, wanted[file]) is None or not any(file in text for text in reply['told']):
                raise Wrong(f'{file} was left behind unsaved, and it is not kept or not told')
        self.stale, self.doubtful = {}, set()
        if self.fault:
            reader = self.world.reader(before.folder)
            before.folder.lock = (before.folder.lock or Lock(self.name, 'database open')) if reader.has_lock() else None

    def settle_lock(self, reply):
        """The lock was taken away, or everything stays as it was and the person is told."""
        folder = self.program.folder
        if reply['readOnly']:
            if len(reply['alerts']) < 2:
                raise Wrong('a lock could not be taken away, and nothing is said')
            self.program.read_only = True
            folder.lock = (folder.lock or Lock(self.name, 'database open')) if self.reader().has_lock() else None

    def judge_attachments(self, reply, before):
        folder = before.folder
        if folder is None or folder.attachments == before.attachments:
            return
        found = self.world.reader(folder).attachments()
        wanted = {order: dict.fromkeys(names, self.world.attachment) for order, names in folder.attachments.items() if names}
        if found != wanted and not self.fault and not reply.get('trouble'):
            raise Wrong(f'attachments are {found.keys()} instead of {wanted.keys()}')
        folder.attachments = names_of(found)
        self.judge_kept_attachments(before)

    def judge_kept_attachments(self, before):
        for order, names in before.attachments.items():
            for name in names:
                if name not in before.folder.attachments.get(order, {}) and not self.attachment_is_kept(order, name):
                    raise Wrong(f'{name} of order {order} is gone')

    def judge_foreign(self, asked, reply, before):
        """What somebody else wrote was kept before it was written over, and that is told."""
        data = self.world.reader(before.folder).data if before.folder else {}
        for file in self.program.foreign:
            # What is there still was not written over: whatever stopped it, or because it is what the program would write.
            if before.data.get(file) is None or data.get(file) == before.data[file]:
                continue
            if not self.recovery.holds(before.data[file]):
                raise Wrong(f'what somebody else wrote into {file} is not kept')
            if 'ended' in reply:
                # Nobody looks any more: the next start tells it.
                self.notes.append(file)
            elif not tells(reply, file) and not self.was_told(file, before.data[file]):
                raise Wrong(f'nobody was told that {file} of somebody else was written over')
        if asked['do'] == 'start':
            # A start in which a call fails tells them too, or the next one does.
            self.notes = [file for file in self.notes if not tells(reply, file)]
            if self.notes and not self.fault:
                raise Wrong(f'the start does not tell that {self.notes[0]} of somebody else was written over')

    def was_told(self, file, data):
        """Whether the window tells it already, of the same bytes: what is kept is not kept twice, and its sentence is the same."""
        kept = [name for name, thing in self.recovery.things.items() if thing == data]
        return any(f'/{name}.' in text for text in self.told if file in text and 'somebody else' in text for name in kept)

    def judge_state_of_today(self, before):
        """The first write of a day keeps what was there."""
        if not self.program.moments or self.program.retried or self.fault or before.candidates or before.generations is None:
            return
        today = self.world.now.strftime('%Y%m%d')
        if any(name.startswith(today) for name, _ in before.generations):
            return
        kept = [place for name, place in self.recovery.generations(before.folder.path) if name.startswith(today)]
        held = {file: entries for file, entries in before.files.items() if entries is not None}
        if held and (not kept or state_of(kept[-1]) != held):
            raise Wrong('the files of before were not kept as a state of today')

    def judge_earlier_states(self, before):
        """Those of the last fourteen days stay, unless there are fifty of them."""
        left = {name for name, _ in self.recovery.generations(before.folder.path)} if before.folder else set()
        gone = [name for name, _ in before.generations or () if name not in left and self.is_of_last_days(name)]
        if gone and (len(left) < MOST_STATES or not all(map(self.is_of_last_days, left))):
            raise Wrong(f'the state {gone[0]} is gone')

    def is_of_last_days(self, name):
        since = datetime.datetime.strptime(name[:8], '%Y%m%d').date()
        return 0 <= (self.world.now.date() - since).days <= DAYS_OF_ALL_STATES

    def settle_settings(self, before):
        """What was to be written is on disk, or what was there before."""
        saved = self.read_settings()
        if saved not in (before.saved, self.program.saved):
            raise Wrong(f'settings on disk: {home_reader.difference(self.program.saved, saved)}')
        self.program.saved = saved
        self.program.folder.info |= self.reader().info()

    # Ends

    def settle_candidates(self, reply):
        """A write was broken off while its files took their places: what the program reads says how it counts."""
        folder = self.program.folder
        found = {name: part['records'] for name, part in reply['memory'].items()}
        fitting = []
        for candidate in folder.candidates:
            self.program.load(candidate)
            if all(self.program.memory(name) == found[name] for name in LISTS):
                fitting.append(candidate)
        if fitting:
            # More than one where they differ only in what is not read back: the mark of stock that was added, or a file without records
            # and one that is not there. The disk says which.
            self.program.load(fitting[-1])
            folder.files, folder.candidates = dict(fitting[-1]), fitting
            return
        name = next(name for name in LISTS if self.program.memory(name) != found[name])
        raise Wrong(f'what was read after a broken-off write is of no one moment: {name}'
                    f'{home_reader.difference(self.program.memory(name), found[name])}')

    def after_kill(self, reply, before):
        if reply['ended'] != 'killed 9':
            raise Wrong(f'the program ended by itself: {reply["ended"]}')
        self.recovery.look()
        for folder in [one for one in (before.folder, self.program.folder) if one is not None]:
            self.look_after_kill(folder, before.states(self.program.moments) if folder is before.folder else [folder.files], before)
        if before.folder is not None:
            self.judge_kept_attachments(before)
            self.judge_foreign_after_kill(before)
        self.judge_earlier_states(before)
        saved = self.read_settings()
        if saved not in (before.saved, self.program.saved):
            raise Wrong(f'settings on disk: {home_reader.difference(self.program.saved, saved)}')
        self.program = self.fault = None
        # The start that died may have told them.
        self.notes = []

    def look_after_kill(self, folder, states, before):
        reader = self.world.reader(folder)
        changed = set(reader.look()) | (before.changed if folder is before.folder else set())
        folder.may_be_littered = True
        folder.lock = (folder.lock or Lock(self.name, 'database open')) if reader.has_lock() else None
        folder.info = reader.info()
        folder.attachments = names_of(reader.attachments())
        for file in changed:
            folder.writes[file] += 1
        if before.folder is not folder:
            states = folder.candidates or states
        if reader.is_interrupted():
            folder.candidates = states
            return
        found = reader.state()
        if not any(all(found[file] == state[file] for file in FILES) for state in states):
            raise Wrong(f'killed, and no moment of the deed is like what is there: {distance(states[-1], found)}')
        folder.files, folder.candidates = dict(found), []

    def judge_foreign_after_kill(self, before):
        data = self.world.reader(before.folder).data
        for file in self.program.foreign:
            if before.data.get(file) is not None and data.get(file) != before.data[file] and not self.recovery.holds(before.data[file]):
                raise Wrong(f'what somebody else wrote into {file} is not kept')

    def attachment_is_kept(self, order, name):
        return any(thing.endswith(f' order{order}') and isinstance(files, dict) and name in files for thing, files in self.recovery.things.items())

    def after_quit(self, reply):
        if reply['ended'] != 'quit':
            raise Wrong(f'quitting ended with {reply["ended"]}')
        folder, reader = self.program.folder, self.reader()
        if self.stale:
            self.judge_kept_at_end()
        saved = self.read_settings()
        if saved != {key: value for key, value in self.program.saved.items() if key in TRACKED} and not self.fault:
            raise Wrong(f'settings on disk: {home_reader.difference(self.program.saved, saved)}')
        if not self.fault and reader.has_lock() != (folder.lock is not None):
            raise Wrong(f'after quitting the lock is {reader.has_lock()}')
        if not self.fault and {key: value for key, value in reader.info().items() if key in folder.info} != folder.info:
            raise Wrong(f'settings of the folder: {home_reader.difference(folder.info, reader.info())}')
        if self.fault:
            folder.info = reader.info()
            folder.lock = folder.lock or Lock(self.name, 'database open') if reader.has_lock() else None
        self.last_folder = folder
        self.program = self.fault = None

    def judge_kept_at_end(self):
        """What could not be saved is in the recovery store, when that could be written."""
        self.world.count('ended unsaved')
        if self.watched == self.home:
            return
        for file, entries in self.stale.items():
            if self.recovery.find(file, entries) is None:
                raise Wrong(f'{file} could not be written, and what it should hold is not in the recovery store')

    def close(self):
        self.process.close()


def tells(reply, file):
    """Whether the person was told that the file of somebody else was written over."""
    return any(file in text and 'somebody else' in text for text in reply['told'])


def distance(wanted, found):
    return next((f'{file}{home_reader.difference(wanted[file], found[file])}' for file in FILES if wanted[file] != found[file]),
                'files of two moments')


def part(state, unit):
    return [state[file] for file in unit]


def combinations(states):
    """Every state in which each unit is as it is in one of the states."""
    found = [{}]
    for unit in UNITS:
        parts = []
        for state in states:
            if part(state, unit) not in parts:
                parts.append(part(state, unit))
        found = [one | dict(zip(unit, files)) for one in found for files in parts]
    return found


def names_of(attachments):
    return {order: dict.fromkeys(names) for order, names in attachments.items()}


class Before:
    """How the open folder was before a deed."""

    def __init__(self, person):
        self.folder = folder = person.program.folder
        self.saved = dict(person.program.saved)
        self.is_first_write = person.program.first_write
        self.data, self.files, self.attachments, self.generations, self.changed, self.candidates = {}, {}, {}, None, set(), []
        if folder is None:
            return
        reader = person.world.reader(folder)
        # Whatever changed by now was somebody else's doing.
        reader.look()
        self.data = {} if folder.candidates else dict(reader.data)
        self.files = dict(folder.files)
        self.candidates = list(folder.candidates)
        self.attachments = {order: dict(names) for order, names in folder.attachments.items()}
        self.generations = person.recovery.generations(folder.path)

    def states(self, moments):
        """What the files may hold after so many of the moments, the likeliest last."""
        states = []
        for start in [*self.candidates, self.files]:
            states.append(start)
            for moment in moments:
                states.append(states[-1] | moment)
        return states

    def after(self, moments):
        return self.states(moments)[-1]
