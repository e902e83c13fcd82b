"""The days of the business: who starts and quits when, what goes wrong, who else comes by."""
import datetime
import os
import shutil

import fate as fates
from damage import live_with_damage, live_with_failed_reading, restore_after_damage
from home import DEFAULT, SUPPORT, Wrong, state_of
from person import Person
from program import LOCATION

CALM = 60
UNLOCK = {'do': 'unlock', 'answers': {'Unlock database': 1}}


class Life:
    def __init__(self, chance, world, tools):
        self.chance, self.world, self.tools = chance, world, tools
        self.fate = fates.Fate(chance)
        self.ada = self.person('ada', DEFAULT)
        self.bob = None
        self.databases = [DEFAULT]
        self.copies = 0

    def person(self, name, location):
        made = Person(name, self.world.work, self.tools, self.world, location)
        if location == DEFAULT:
            os.makedirs(DEFAULT.replace('~', made.home, 1))
        return made

    def happens(self, percent):
        return self.fate.happens(percent)

    def last(self):
        return self.world.last_line

    # Days

    def day(self):
        self.pass_time()
        if not self.ada.runs():
            self.begin_day()
        for _ in range(self.chance.randint(3, 12)):
            self.world.now += datetime.timedelta(minutes=self.chance.randint(1, 40))
            self.happening()
        if self.happens(CALM):
            self.quit()
        if self.world.day % 7 == 0:
            self.tidy_up()

    def pass_time(self):
        now = self.world.now
        days = 1
        if self.happens(2):
            days = self.chance.randint(2, 400)
        elif self.happens(2):
            days = -self.chance.randint(1, 60)
        elif self.happens(0.3):
            # The battery of the clock is empty, or was: years before what there is.
            days = -self.chance.randint(1000, 5000)
        elif self.happens(2):
            # The last day of a month or a year.
            month_end = (now.replace(day=28) + datetime.timedelta(days=4)).replace(day=1) - datetime.timedelta(days=1)
            days = max((now.replace(month=12, day=31) if self.happens(20) else month_end) - now, datetime.timedelta(days=1)).days
        self.world.now = (now + datetime.timedelta(days=days)).replace(hour=9, minute=0, second=self.chance.randint(0, 59))
        if not 2005 < self.world.now.year < 2060:
            self.world.now = self.world.now.replace(year=2024, day=1)

    def begin_day(self):
        if self.world.day > 3 and self.happens(3):
            live_with_damage(self, self.ada)
        if self.world.day > 3 and self.happens(2):
            live_with_failed_reading(self, self.ada)
        # The last of the three: the program runs on afterwards.
        if self.world.day > 3 and self.happens(1):
            restore_after_damage(self, self.ada)
        self.start()

    def start(self):
        """Until the program runs and may write."""
        folder = DEFAULT.replace('~', self.ada.home, 1)
        while not self.ada.runs():
            fault = self.fate.death('start', self.chance.choice((self.ada.home, folder))) if self.happens(2) else None
            self.ada.start(fault)
            self.learn_calls('start', fault)
        self.unlock()

    def unlock(self):
        while self.ada.runs() and self.ada.program.read_only:
            if self.happens(10):
                self.try_in_vain(self.ada)
            fault = None
            if self.happens(6):
                make = self.fate.death if self.happens(50) else self.fate.refusal
                fault = make('unlock', self.ada.program.folder.path)
            self.ada.do(UNLOCK, fault)
        if not self.ada.runs():
            self.start()

    def try_in_vain(self, person):
        """What a read-only database refuses."""
        for _ in range(2):
            asked = self.fate.deed(person.program, ['bill', 'task', 'delete_contacts', 'delete_items'])
            if asked:
                person.do(asked)

    def quit(self, person=None):
        person = person or self.ada
        if not person.runs():
            return
        fault = None
        if person is self.ada and not self.ada.fault:
            fault = self.fault_for({'do': 'quit'})
        reply = person.do({'do': 'quit'}, fault)
        self.learn_calls('quit', fault)
        # A program that is killed keeps nothing of what it could not save.
        if person is self.ada and reply:
            self.put_back()

    # What happens

    def happening(self):
        if not self.ada.runs():
            self.start()
        chance = self.chance.random() * 100
        if self.ada.fault:
            return self.with_full_disk()
        for percent, what in ((3, self.visit), (1.5, self.switch), (0.4, self.new_database), (0.5, self.copy), (3, self.start_again),
                              (1.5, self.die), (1, self.save_kept), (0.6, self.begin_anew)):
            if chance < percent:
                return what()
            chance -= percent
        return self.deed()

    def deed(self, names=None):
        asked = self.fate.deed(self.ada.program, names)
        if not asked:
            return
        if asked['do'] == 'attach':
            asked['path'] = self.world.scan()
        if asked['do'] == 'restore' and not self.choose_state(asked):
            return
        fault = self.fault_for(asked)
        reply = self.ada.do(asked, fault)
        self.learn_calls(asked['do'], fault)
        if asked['do'] == 'restore' and asked['all'] and reply and not fault:
            self.look_again(asked['state'])

    def look_again(self, state):
        """What was brought back, all of it, is not listed once more."""
        person = self.ada
        if person.program.read_only or state not in dict(person.recovery.generations(person.program.folder.path)):
            return
        self.world.count('looked again')
        reply = person.do({'do': 'restore', 'all': False, 'rows': [], 'state': state})
        if reply['differences']:
            raise Wrong(f'brought back, and listed again: {reply["differences"]}')

    def begin_anew(self):
        """All of a list goes, others get its numbers; then what went is brought back beside them."""
        self.start_again()
        self.world.now += datetime.timedelta(days=1)
        self.start_again()
        person = self.ada
        states = person.recovery.generations(person.program.folder.path)
        name = self.chance.choice(('contacts', 'items', 'orders'))
        if person.stale or person.doubtful or not states:
            return
        self.world.count('begun anew')
        person.do({'do': 'filter', 'list': name, 'edits': [['search', ''], ['filter', 'All']], 'answers': {}})
        # A part goes only after the set that it is in.
        for _ in range(3):
            person.do({'do': 'delete', 'list': name, 'ids': [record['id'] for record in person.program.lists[name].records], 'answers': {}})
        for _ in range(self.chance.randint(2, 6)):
            person.do(self.fate.unlike_others(name) | {'answers': {}})
        person.do({'do': 'restore', 'all': True, 'rows': [], 'state': states[0][0], 'answers': {}})
        self.look_again(states[0][0])

    def choose_state(self, asked):
        states = self.ada.recovery.generations(self.ada.program.folder.path)
        if states:
            asked['state'] = self.chance.choice(states[:3])[0]
        return bool(states)

    def fault_for(self, asked):
        if self.world.day < 3 or not self.happens(6):
            return None
        deed = asked['do']
        folder = self.chance.choice((self.ada.home, self.ada.program.folder.path))
        if self.happens(50) or not self.may_fail(asked):
            self.world.count('deaths planned')
            return self.fate.death(deed, folder)
        self.world.count('failures planned')
        fault = self.fate.failure(deed, folder)
        return fault if deed in fates.PLAIN else fault | {'stays': False}

    def may_fail(self, asked):
        """Whether a failing call changes nothing in what the program holds in memory: an order stays when its attachments cannot be kept,
        or when the look whether it has any fails."""
        deed = asked['do']
        if deed == 'delete':
            return asked['list'] != 'orders'
        if deed == 'order' and asked['then'] == 'cancel':
            return False
        return deed in (*fates.PLAIN, 'quit', 'settings', 'attach')

    def learn_calls(self, deed, fault):
        if not fault and self.ada.process.runs:
            self.fate.calls[deed] = self.ada.process.changing_calls()[0]

    def with_full_disk(self):
        """While nothing can be written: go on working, quit, or be rid of it."""
        if self.happens(30):
            self.ada.do({'do': 'retry'}, {'at': 0})
        elif self.happens(15):
            self.quit()
        else:
            asked = self.fate.deed(self.ada.program, fates.PLAIN)
            if asked:
                self.ada.do(asked)

    def put_back(self):
        """What could not be saved is put into its place from the recovery store, by hand."""
        person = self.ada
        if not person.stale or person.watched == person.home or self.happens(30):
            return
        self.world.count('put back by hand')
        folder = person.last_folder
        for file, entries in person.stale.items():
            data = person.recovery.find(file, entries)
            with open(os.path.join(folder.path, file), 'wb') as target:
                target.write(data)
            folder.files[file] = entries
            folder.writes[file] += 1
        person.stale = {}

    def start_again(self):
        self.quit()
        self.start()

    def die(self):
        self.ada.do({'do': 'die'})

    def save_kept(self):
        """Something is copied out of the recovery store."""
        things = self.ada.recovery.things
        if not things:
            return
        name = self.chance.choice(sorted(things))
        path = os.path.join(self.world.work, 'kept')
        self.ada.do({'do': 'saveKept', 'thing': name, 'path': path})
        if self.ada.recovery.contents(path) != things[name]:
            raise Wrong(f'{name} came out of the recovery store as something else')
        if os.path.isdir(path):
            shutil.rmtree(path)
        else:
            os.remove(path)

    # Databases

    def switch(self):
        others = [place for place in self.databases if self.ada.find_folder(place) is not self.ada.program.folder]
        if others:
            fault = self.sometimes_death('switch')
            if not fault and self.happens(8):
                fault = self.fate.refusal('switch', self.ada.program.folder.path)
            self.ada.do({'do': 'switch', 'location': self.chance.choice(others)}, fault)
            self.unlock()

    def sometimes_death(self, deed):
        return self.fate.death(deed, self.ada.home) if self.happens(8) else None

    def new_database(self):
        if len(self.databases) > 2:
            return self.drop_database()
        self.copies += 1
        name = f'Other {self.copies}'
        location = f'~/{SUPPORT}/{name}.vendb'
        self.ada.do({'do': 'newDatabase', 'name': name, 'location': location}, self.sometimes_death('newDatabase'))
        folder = self.ada.find_folder(location)
        if os.path.isdir(folder.path):
            self.databases.append(location)
        else:
            # The program died before it was there.
            self.world.forget(folder)

    def drop_database(self):
        for place in self.databases[1:]:
            folder = self.ada.find_folder(place)
            if folder is not self.ada.program.folder:
                self.remove(folder)
                self.databases.remove(place)
                return

    def remove(self, folder):
        shutil.rmtree(folder.path)
        self.world.forget(folder)

    def copy(self):
        """A copy for reading elsewhere, looked at once."""
        self.copies += 1
        path = os.path.join(self.ada.home, f'Travel {self.copies}.vendb')
        home, source = self.ada.program.store[LOCATION], self.ada.program.folder
        if source.candidates or self.ada.stale or self.ada.doubtful:
            return
        self.ada.do({'do': 'copy', 'path': path}, self.sometimes_death('copy'))
        if os.path.isdir(path) and (state_of(path) != {file: entries for file, entries in source.files.items() if entries is not None}
                                    or not self.world.reader(self.ada.find_folder(path)).has_lock()):
            raise Wrong('an offline copy is not what was on disk, or has no lock')
        if not self.ada.runs():
            for name in os.listdir(self.ada.home):
                if name.startswith('Travel'):
                    shutil.rmtree(os.path.join(self.ada.home, name))
            return
        self.ada.do({'do': 'switch', 'location': path})
        self.try_in_vain(self.ada)
        self.ada.do({'do': 'switch', 'location': home})
        self.remove(self.ada.find_folder(path))
        self.unlock()

    # The second person

    def visit(self):
        """Somebody else opens the first database: gives up, looks, or works in spite of the lock."""
        if not self.bob:
            self.bob = self.person('bob', DEFAULT.replace('~', self.ada.home, 1))
        folder = self.ada.find_folder(DEFAULT)
        if folder.candidates or self.ada.program.folder is folder and (self.ada.stale or self.ada.doubtful):
            return
        self.bob.start()
        if self.bob.program.read_only and self.happens(40):
            self.try_in_vain(self.bob)
        elif self.bob.program.read_only and self.happens(70):
            self.bob.do(UNLOCK)
        if not self.bob.program.read_only:
            self.world.count('two at once')
            self.work_side_by_side()
        self.quit(self.bob)

    def work_side_by_side(self):
        for _ in range(self.chance.randint(1, 4)):
            asked = self.fate.deed(self.bob.program, fates.PLAIN)
            if asked:
                self.bob.do(asked)
            if self.ada.runs() and self.happens(50):
                asked = self.fate.deed(self.ada.program, fates.PLAIN)
                if asked:
                    self.ada.do(asked, self.sometimes_death(asked['do']))

    # The end

    def tidy_up(self):
        """What piles up and nobody needs: kept locks, the trash."""
        for place in self.databases:
            folder = self.ada.find_folder(place).path
            for name in os.listdir(folder) if os.path.isdir(folder) else ():
                if name.startswith('unlock'):
                    os.remove(os.path.join(folder, name))
        for person in (self.ada, self.bob):
            if person:
                shutil.rmtree(person.recovery.trash, ignore_errors=True)

    def end(self):
        if self.ada.fault:
            self.ada.do({'do': 'retry'}, {'at': 0})
        if self.ada.runs():
            self.ada.do({'do': 'quit'})

    def close(self):
        for person in (self.ada, self.bob):
            if person:
                person.close()
