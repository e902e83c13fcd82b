"""Files that were damaged while nobody worked, and files that cannot be read: nothing may be lost by opening the folder and quitting."""
import os

from home import INTENT, Wrong
from program import Program
from records import FILES

TRACES = ('flip', 'replace', 'cut')


def may_suffer(person, folder):
    """Only a folder at rest: what is broken off is another matter."""
    return not folder.candidates and not os.path.exists(os.path.join(folder.path, INTENT)) and any(folder.files.values())


def folder_of(person):
    return person.find_folder(person.read_settings()['VendaroDbLocation'])


def full_file(chance, folder, data):
    return chance.choice([file for file in FILES if folder.files[file] and data[file]])


def damaged_bytes(chance, data):
    kind, at = chance.choice(TRACES), chance.randrange(len(data))
    if kind == 'cut':
        return data[:at]
    byte = data[at] ^ (1 << chance.randrange(8)) if kind == 'flip' else chance.randrange(256)
    return data[:at] + bytes([byte]) + data[at + 1:]


def choose_victim(life, person, counted):
    """The folder that is opened next, its files, and the one that suffers; none when the folder must be left alone."""
    folder = folder_of(person)
    if not may_suffer(person, folder):
        return None
    life.world.count(counted)
    reader = life.world.reader(folder)
    reader.look()
    good = dict(reader.data)
    return folder, good, full_file(life.chance, folder, good)


def live_with_damage(life, person):
    """A byte of a file is another one: the program opens the folder and quits. Then the person puts the files back."""
    victim = choose_victim(life, person, 'files damaged')
    if not victim:
        return
    folder, good, file = victim
    bad = damaged_bytes(life.chance, good[file])
    write(folder, file, bad)
    told = open_and_quit(life, person, folder, None)
    judge(life, person, folder, good | {file: bad}, told, file)
    put_back(life, folder, good)


def live_with_failed_reading(life, person):
    """The disk does not give a file away when the program starts."""
    victim = choose_victim(life, person, 'readings failed')
    if not victim:
        return
    folder, good, file = victim
    last = life.chance.choice(('once', 'forever'))
    fault = {'kind': 'EIO', 'at': life.chance.randint(1, 6), 'last': last, 'folder': os.path.join(folder.path, file)}
    told = open_and_quit(life, person, folder, fault)
    judge(life, person, folder, good, told, file)
    put_back(life, folder, good)


def restore_after_damage(life, person):
    """A file is cut short: the program is opened without its records, and an earlier state is brought back; life goes on from there."""
    folder = folder_of(person)
    states = person.recovery.generations(folder.path)
    if not may_suffer(person, folder) or not states:
        return
    life.world.count('files cut')
    reader = life.world.reader(folder)
    reader.look()
    file = full_file(life.chance, folder, reader.data)
    bad = reader.data[file][:life.chance.randrange(len(reader.data[file]) - 20)]
    reader.damaged.add(bad)
    write(folder, file, bad)
    reader.look()
    folder.files[file] = reader.read(file)
    folder.writes[file] += 1
    reply = person.start(unreadable=[file])
    if not any(f'{file} could not be read' in text for text in reply['told']) or not person.recovery.holds(bad):
        raise Wrong(f'{file} was cut short, and it is not told or its original not kept')
    life.unlock()
    state = life.chance.choice(states[:2])[0]
    person.do({'do': 'restore', 'all': True, 'rows': [], 'state': state})
    life.look_again(state)


def open_and_quit(life, person, folder, fault):
    """Answers what was told at the start."""
    person.process.begin(person.home, person.name)
    now = {'now': life.world.now.isoformat()}
    start = {'do': 'start', 'answers': {}} | now | ({'fault': fault} if fault else {})
    told = ask(life, person, start)['told']
    if folder.lock is not None:
        ask(life, person, {'do': 'unlock', 'answers': {'Unlock database': 1}} | now)
    reply = ask(life, person, {'do': 'quit'} | now)
    if reply['ended'] != 'quit' or reply['unsaved']:
        raise Wrong(f'quitting after a file was damaged: {reply}')
    folder.lock = None
    person.notes = []
    person.recovery.look()
    return told


def ask(life, person, asked):
    reply = person.process.ask(asked)
    life.world.note(person.name, asked, reply)
    if 'alerts' not in reply:
        raise Wrong(f'the program ended after a file was damaged: {reply["ended"]}')
    return reply


def judge(life, person, folder, before, told, suspect):
    """What each file held stands in it still, or its bytes are kept."""
    reader = life.world.reader(folder)
    reader.look()
    # The clock may have gone back: the newest state need not have the latest name.
    kept = [data for _, place in person.recovery.generations(folder.path) for data in files_of(place)]
    after = expected(person, folder)
    for file in FILES:
        data = before[file]
        if data is None or data == reader.data[file] or person.recovery.holds(data) or data in kept:
            continue
        try:
            now = reader.read(file)
        except Wrong as error:
            raise Wrong(f'after {suspect} was damaged: {error}') from error
        lost = [entry for entry in after[file] or [] if entry not in now]
        # The one record in which the damage lies may be another one.
        if len(lost) > (file == suspect):
            raise Wrong(f'after {suspect} was damaged, {file} is not kept and {len(lost)} of its records changed, the first {lost[0]}')
    unread = any(f'{suspect} could not be read' in text for text in told)
    if unread and before[suspect] != reader.data[suspect] and not person.recovery.holds(before[suspect]):
        raise Wrong(f'it was told that {suspect} could not be read, and its original is not kept')


def files_of(folder):
    return [data for data in (read(os.path.join(folder, name)) for name in os.listdir(folder))]


def read(path):
    with open(path, 'rb') as file:
        return file.read()


def expected(person, folder):
    """What the files hold after they were read and written once without damage."""
    program = Program(person.name, person.home, person.read_settings(), person.find_folder)
    program.folder = folder
    program.load(folder.files)
    return program.snapshot()


def write(folder, file, data):
    with open(os.path.join(folder.path, file), 'wb') as target:
        target.write(data)


def put_back(life, folder, good):
    for file, data in good.items():
        if data is not None:
            write(folder, file, data)
            folder.writes[file] += 1
    reader = life.world.reader(folder)
    reader.look()
    folder.info = reader.info()
    folder.files = reader.state()
