#!/usr/bin/env python3
"""Every command of the shop with every fault at every file call, each on a fresh copy of a small business.

  fault_driver.py --shop PROGRAM --library LIBRARY [--seconds N] [--seed S] [--workers N] [--commands a,b]
  fault_driver.py --shop PROGRAM --library LIBRARY --case 'order EIO once 17' [--keep FOLDER]

Without --seconds every case is run; with it, cases in a random order of the seed until the time is over. After each case:
 - every record file parses, and holds what it held before or after one of the requests, not older than what was reported saved;
 - orders and their lines are from the same moment;
 - what was there and is nowhere in the folder lies in the recovery store;
 - a fault that did not kill and cost something was shown;
 - the program opens the folder again, quits, and then the folder holds exactly its usual files, and the above.
"""
import multiprocessing
import os
import queue
import random
import shutil
import sys
import tempfile
import time

import home_reader
from home_reader import is_leftover, units
from shop_runner import MEMORY, Shop, arguments, fresh

CHANGING = ['kill-before', 'kill-after', 'power-before', 'power-after']
FAILING_CHANGES = ['ENOSPC', 'EDQUOT', 'EROFS']
SUPPORT = 'Library/Application Support/Vendaro'
TEMPLATES = SUPPORT + '/stationary/'
DEFAULT = SUPPORT + '/vendarodatabase.vendb'
SETTINGS = 'Library/Preferences/Vendaro.plist'
NOTEPAD = '/notepad.rtfd/TXT.rtf'
RIGHT_AFTER, OPENED_AGAIN = 'right after', 'opened again'
NOT_RUN = {'base', 'open', 'openAll', 'orderUnlocked', 'addEverywhere'}
#: From which home a command starts, when it is not the business at rest.
STARTS = {'unlock': 'locked', 'firstStart': 'empty', 'openTorn': 'torn', 'orderOnTorn': 'torn'}
#: Cases that are another command on a special home.
EXTRA = {'openTorn': 'open', 'orderOnTorn': 'orderUnlocked'}


class Story:
    """A command without faults: the states the home goes through, and how many calls there are."""

    def __init__(self, name, home, states, reopened, requests, calls):
        self.name, self.home, self.states, self.requests = name, home, states, requests
        #: The states after the program opened them and quit, the one database or all: reading turns an order's older form of payments
        #: into the newer, and a database that was never opened gets its settings.
        self.reopened = reopened
        self.calls, self.changing, self.writes = calls
        self.files = home_reader.files_below(home)

    def cases(self):
        for kind in CHANGING:
            yield from ((kind, 'once', n) for n in range(1, self.changing + 1))
        for kind in FAILING_CHANGES:
            yield from ((kind, last, n) for n in range(1, self.changing + 1) for last in ('once', 'forever'))
        yield from (('EIO', last, n) for n in range(1, self.calls + 1) for last in ('once', 'forever'))
        yield from (('EINTR', 'once', n) for n in range(1, self.calls + 1))
        yield from (('short', last, n) for n in range(1, self.writes + 1) for last in ('once', 'forever'))
        yield from (('short-kill', 'once', n) for n in range(1, self.writes + 1))


def command_of(name):
    return EXTRA.get(name, name)


def state_of(home):
    problems = []
    state = units(home_reader.files_below(home), problems)
    if problems:
        raise RuntimeError(f'{home}: {problems}')
    return state


def prepare(shop, work):
    """The homes that the stories start from."""
    homes = {}
    place = os.path.join(work, 'prepare')
    os.makedirs(os.path.join(place, 'home'))

    def keep(name):
        homes[name] = os.path.join(work, 'home-' + name)
        shutil.copytree(os.path.join(place, 'home'), homes[name])

    keep('empty')
    run = shop.run('base', place)
    if run.killed or run.status or run.texts('unsaved'):
        raise RuntimeError(f'the small business could not be made: {run.events}')
    keep('business')
    # A program that died right after it was started.
    with open(os.path.join(place, 'home', DEFAULT, 'lock.xml'), 'w', encoding='utf-8') as lock:
        lock.write('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict><key>datetime</key>'
                   '<string>2024-03-01 09:00:00 +0000</string><key>reason</key><string>database open</string>'
                   '<key>user</key><string>bob</string></dict></plist>\n')
    keep('locked')
    torn(shop, work, homes)
    return homes


def torn(shop, work, homes):
    """A home whose program died when one of two files had its new contents: the first such place."""
    place = os.path.join(work, 'torn')
    os.makedirs(place)
    for at in range(1, 200):
        fresh(place, homes['business'])
        shop.run('order', place, (at, 'kill-after', 'once'))
        names = os.listdir(os.path.join(place, 'home', DEFAULT))
        if '.vendaro-commit' in names:
            temporary = [name for name in names if name.startswith('.vendaro-') and 'itemsordered' in name]
            orders = [name for name in names if name.startswith('.vendaro-orders')]
            if temporary and not orders:
                homes['torn'] = os.path.join(work, 'home-torn')
                shutil.copytree(os.path.join(place, 'home'), homes['torn'])
                return
    raise RuntimeError('no order was caught between its two files')


def opened(shop, command, place, home):
    """The state of a copy of the home after the program opened it and quit."""
    fresh(place, home)
    shop.run(command, place)
    return state_of(os.path.join(place, 'home'))


def tell_story(shop, name, homes, work):
    """Runs the command without faults, once for the states and once for the calls."""
    home = homes[STARTS.get(name, 'business')]
    place = os.path.join(work, 'story')
    marks = os.path.join(work, 'marks-' + name)
    os.makedirs(place, exist_ok=True)
    os.makedirs(marks)
    fresh(place, home)
    shop.run(command_of(name), place, marks=marks)
    first = state_of(home)
    if STARTS.get(name) == 'torn':
        # What counts is what is read through the interrupted write.
        fresh(place, home)
        shop.run('open', place)
        first = state_of(os.path.join(place, 'home'))
    moments = [home] + [os.path.join(marks, mark) for mark in sorted(os.listdir(marks), key=int)]
    states = [first] + [state_of(moment) for moment in moments[1:]]
    reopened = [[opened(shop, command, place, moment) for moment in moments] for command in ('open', 'openAll')]
    fresh(place, home)
    run = shop.run(command_of(name), place)
    if run.killed or run.status or run.texts('unsaved'):
        raise RuntimeError(f'{name} fails without a fault: {run.events}')
    return Story(name, home, states, reopened, run.texts('asked'), (run.calls, run.changing, run.writes))


class Judge:
    """Judges what one case left."""

    def __init__(self, story, run):
        self.story, self.run = story, run
        self.problems = []
        self.saved, self.unsaved = self.marks_of_requests()
        self.degraded = run.told_unreadable()
        # What comes next goes another way than without the fault.
        self.dependent = any(text.split()[0] in ('new', 'switch', 'delete') for text in run.texts('unsaved'))

    def marks_of_requests(self):
        """The last mark that was reported saved, and those that were not."""
        saved, unsaved, at = 0, set(), 0
        for event, text in self.run.events:
            if event == 'asked':
                at = next((n for n in range(at + 1, len(self.story.requests) + 1) if self.story.requests[n - 1] == text), at)
            elif event == 'saved':
                saved = at
            elif event == 'unsaved':
                unsaved.add(at)
        return saved, unsaved

    def say(self, problem):
        self.problems.append(problem)

    def judge(self, files, when, skipped='/'):
        found = units(files, [] if self.degraded else self.problems)
        kept = home_reader.kept_contents(files)
        known = set().union(*self.story.states)
        for unit in sorted(known | set(found)):
            # Templates that could not be installed are at the next start.
            if not unit.startswith(skipped) and not (when == RIGHT_AFTER and unit.startswith(TEMPLATES)):
                self.judge_unit(unit, found.get(unit), kept, when)
        self.judge_originals(files, kept, when)
        return found

    def judge_unit(self, unit, contents, kept, when):
        if self.degraded or self.dependent:
            for path, piece in home_reader.pair_of(unit, contents):
                self.judge_degraded(path, piece, kept, when)
            return
        states = self.story.states
        allowed = [states] if when == RIGHT_AFTER else [states, *self.story.reopened]
        places = sorted({n for moments in allowed for n, state in enumerate(moments) if state.get(unit) == contents})
        if any(n >= self.saved for n in places):
            return
        if contents is None and any(states[n - 1].get(unit) is None for n in self.unsaved if n > 0):
            return
        if not holds_records(unit) and self.unsaved and places:
            return
        # Nobody types into the notepad here: where there was none, it is as empty without its file, which the next end writes.
        if contents is None and unit.endswith(NOTEPAD) and states[0].get(unit) is None:
            return
        what = 'is gone' if contents is None \
            else f'holds what it never held, {home_reader.difference(states[-1].get(unit), contents)}' if not places \
            else f'is as it was at moment {places[-1]}, and moment {self.saved} was reported saved'
        self.say(f'{when}: {unit} {what}')

    def judge_degraded(self, path, contents, kept, when):
        """Something could not be read and that was told: what was there is in its place or in the recovery store."""
        original = self.story.files.get(path)
        if original is None or original in kept:
            return
        if os.path.basename(path) not in home_reader.RECORD_FILES:
            return
        first, last = self.piece(path, 0), self.piece(path, -1)
        moments = [self.piece(path, n) for n in range(self.saved, len(self.story.states))] + [first]
        if any(one in moments for one in kept_lists(kept)):
            return
        stay = home_reader.ids_of_both(first, last)
        if not stay <= home_reader.ids_of(contents):
            self.say(f'{when}: {path} lost records {sorted(stay - home_reader.ids_of(contents))} and its original is not kept')

    def piece(self, path, moment):
        state = self.story.states[moment]
        for unit, contents in state.items():
            for name, piece in home_reader.pair_of(unit, contents):
                if name == path:
                    return piece
        return None

    def judge_originals(self, files, kept, when):
        everywhere = set(files.values())
        for path, data in self.story.files.items():
            name = os.path.basename(path)
            if name in home_reader.RECORD_FILES or name.endswith('.plist') or is_leftover(name) or home_reader.is_lock(name):
                continue
            if data not in everywhere:
                self.say(f'{when}: {path} vanished and is not in the recovery store')

    def judge_silence(self, found):
        """A fault that did not kill and cost something must have been shown."""
        if self.run.killed or self.run.showed_trouble():
            return
        for unit, contents in self.story.states[-1].items():
            if found.get(unit) != contents and not unit.startswith(TEMPLATES):
                self.say(f'{unit} is not what it was asked to be, and nothing was shown')

    def judge_names(self, home):
        known = {os.path.basename(path) for path in self.story.files} | {'.', '..'}
        for state in self.story.states:
            known |= {name for unit in state for path, _ in home_reader.pair_of(unit, None) for name in path.split('/')}
        for name in os.listdir(os.path.join(home, DEFAULT)):
            if is_leftover(name) or name == 'lock.xml' or (name not in known and not home_reader.is_lock(name)):
                self.say(f'{OPENED_AGAIN}: {name} is left in the folder')
        for folder in (os.path.dirname(SETTINGS), home_reader.RECOVERY):
            for place, folders, names in os.walk(os.path.join(home, folder)):
                for name in folders + names:
                    if is_leftover(name) or name.startswith('.2'):
                        self.say(f'{OPENED_AGAIN}: {name} is left in {os.path.relpath(place, home)}')


def kept_lists(kept):
    """What of the kept files is a property list."""
    for data in kept:
        try:
            yield home_reader.parse(data, '')
        except home_reader.Damaged:
            continue


def holds_records(unit):
    """Whether the unit is made of records or settings."""
    name = unit.split('/')[-1]
    return name in home_reader.RECORD_FILES or name == home_reader.PAIR_NAME or '.plist/#' in unit


class Worker:
    def __init__(self, options, work, stories):
        self.place = os.path.join(work, f'worker-{os.getpid()}')
        os.makedirs(self.place)
        self.shop = Shop(options.shop, options.library)
        self.stories = stories
        self.opened = {}

    def run(self, name, kind, last, at):
        """Answers the judge of the case, or none when the fault did not come up."""
        story = self.stories[name]
        fresh(self.place, story.home)
        run = self.shop.run(command_of(name), self.place, (at, kind, last))
        if not run.given:
            return None
        judge = Judge(story, run)
        dies = 'kill' in kind or 'power' in kind
        if run.killed != dies or run.status != (9 if dies else 0):
            judge.say(f'the program ended with {run.status}')
        self.judge_home(judge, name)
        return judge

    def judge_home(self, judge, name):
        """What the case left in the home, and what that is after it was opened again."""
        home = os.path.join(self.place, 'home')
        files = home_reader.files_below(home)
        interrupted = any(path.endswith('.vendaro-commit') for path in files)
        found = units(files, [])
        if interrupted:
            units(files, judge.problems)
        else:
            found = judge.judge(files, RIGHT_AFTER)
        self.open_again(judge, name, files, home)
        if not judge.problems:
            judge.judge_silence(found)

    def open_again(self, judge, name, files, home):
        key = (name, home_reader.shape(files))
        if key not in self.opened:
            others = any(path.startswith(SUPPORT) and not path.startswith(DEFAULT) and '.vendb/' in path for path in files)
            run = self.shop.run('openAll' if others else 'open', self.place)
            problems = [] if not run.killed and run.status == 0 else [f'opening again ended with {run.status}']
            if run.texts('unsaved'):
                problems.append(f'opened again: not saved, {run.texts("unsaved")}')
            names = Judge(judge.story, run)
            names.judge_names(home)
            self.opened[key] = (home_reader.files_below(home), problems + names.problems, others, run.told_unreadable())
        after, problems, others, told = self.opened[key]
        judge.problems += problems
        if told and not judge.degraded:
            judge.say('opened again: something could not be read')
        judge.judge(after, OPENED_AGAIN, SETTINGS if others else '/')


def work_on(options, work, stories, cases, results, deadline):
    worker = Worker(options, work, stories)
    while time.monotonic() < deadline:
        try:
            case = cases.get(timeout=0.5)
        except queue.Empty:
            break
        try:
            judge = worker.run(*case)
        except Exception as error:
            results.put((case, [f'{type(error).__name__}: {error}'], False))
            break
        results.put((case, judge.problems if judge else None, bool(judge and (judge.degraded or judge.dependent))))
    results.put(None)


def run_all(options, work, stories, cases, deadline):
    """Prints what fails; answers how many cases ran, and how many failed."""
    context = multiprocessing.get_context('fork')
    waiting, results = context.Queue(), context.Queue()
    workers = [context.Process(target=work_on, args=(options, work, stories, waiting, results, deadline), daemon=True)
               for _ in range(options.workers)]
    for case in cases:
        waiting.put(case)
    for worker in workers:
        worker.start()
    counts = {'ran': 0, 'without': 0, 'degraded': 0, 'failed': 0}
    busy = len(workers)
    while busy:
        result = results.get()
        if result is None:
            busy -= 1
            continue
        case, problems, degraded = result
        counts['ran'] += 1
        counts['without'] += problems is None
        counts['degraded'] += degraded
        if problems:
            counts['failed'] += 1
            if counts['failed'] <= options.shown:
                print(f'FAILED: --case "{" ".join(map(str, case))}"\n   ' + '\n   '.join(problems[:4]), flush=True)
    waiting.cancel_join_thread()
    return counts


def one_case(options, work, stories):
    name, kind, last, at = options.case.split()
    worker = Worker(options, work, stories)
    run_home = os.path.join(worker.place, 'home')
    judge = worker.run(name, kind, last, int(at))
    if not judge:
        print('the fault did not come up')
        return 0
    print('\n'.join(f'{event}\t{text}' for event, text in judge.run.events))
    print('saved up to', judge.saved, 'not saved', judge.unsaved, 'could not read:', judge.degraded)
    print('\n'.join(judge.problems) or 'as it should be')
    if options.keep:
        shutil.copytree(run_home, options.keep)
    return 1 if judge.problems else 0


def main():
    parser = arguments()
    parser.add_argument('--workers', type=int, default=2)
    parser.add_argument('--commands')
    parser.add_argument('--shown', type=int, default=20)
    parser.add_argument('--case')
    parser.add_argument('--keep')
    options = parser.parse_args()
    begin = time.monotonic()
    with tempfile.TemporaryDirectory(prefix='vendaro-faults-', dir=MEMORY) as work:
        shop = Shop(options.shop, options.library)
        homes = prepare(shop, work)
        names = shop.run('list', work).texts('command')
        names = [name for name in names if name not in NOT_RUN] + sorted(EXTRA)
        if options.commands:
            names = options.commands.split(',')
        if options.case:
            names = [options.case.split()[0]]
        stories = {name: tell_story(shop, name, homes, work) for name in names}
        shop.close()
        if options.case:
            return one_case(options, work, stories)
        cases = [(name, *case) for name, story in stories.items() for case in story.cases()]
        total = len(cases)
        if options.seconds:
            random.Random(options.seed).shuffle(cases)
        deadline = time.monotonic() + options.seconds if options.seconds else float('inf')
        counts = run_all(options, work, stories, cases, deadline)
        print(f'{counts["ran"]} of {total} cases of {len(names)} commands in {time.monotonic() - begin:.0f} s, seed {options.seed}: '
              f'{counts["failed"]} failed, {counts["without"]} without the fault coming up, '
              f'{counts["degraded"]} in which something could not be read or opened and that was told')
        return 1 if counts['failed'] or counts['ran'] < min(total, 50) else 0


if __name__ == '__main__':
    sys.exit(main())
