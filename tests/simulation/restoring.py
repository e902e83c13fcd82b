"""What became of an earlier state's records, and how they come back, those as well whose number another record has by now."""
from dataclasses import dataclass

from records import BILLS, CONTACTS, GOALS, ITEMS, KIND_OF, KINDS, LINES, ORDERS, PAIR, TASKS, leading_integer, written

#: What people know a record by.
TITLES = {'contacts': ('name',), 'orders': ('ordernum', 'title'), 'items': ('code', 'item'), 'lines': ('code', 'item'),
          'bills': ('number', 'name'), 'tasks': ('title',), 'goals': ('name',)}
#: A line stays what it is, of the order it was written for, from the day it was written.
LASTING = {'lines': ('order', 'product', 'dateadded')}
#: What would have to be a coincidence in two records, and a lot of work in one. Nothing that is made from the id is among it.
TELLING = {'contacts': ('name', 'companyname', 'email', 'phone', 'mobile', 'add1', 'postcode', 'website'),
           'orders': ('title', 'date', 'contact', 'description', 'transactionref'),
           'items': ('item', 'description', 'part', 'ean', 'link', 'imagelink'),
           'bills': ('number', 'name', 'details', 'datepaid', 'amount'),
           'tasks': ('title', 'details', 'startdate', 'order'), 'goals': ('name', 'details')}
#: The fields that hold the id of another record.
LINKS = {'contacts': {'company': CONTACTS}, 'orders': {'contact': CONTACTS, 'contact2': CONTACTS, 'bill': BILLS},
         'lines': {'order': ORDERS, 'product': ITEMS, 'contact': CONTACTS}, 'tasks': {'order': ORDERS, 'material': LINES}}


def title_of(kind, record):
    return ' '.join(record.text(key) for key in TITLES[kind.name] if record.text(key)) or str(record['id'])


def changed_keys(kind, entry, earlier, now):
    """entry: the earlier record as its file has it. A line's contact that is open there is its order's, whichever that is."""
    silent = {'stockadded'} | ({'contact'} if kind is LINES and not leading_integer(entry.get('contact', '')) else set())
    keys = [*kind.texts, *kind.integers, *kind.flags]
    changed = [key for key in keys if key not in silent and earlier.get(key, '') != now.get(key, '')]
    if kind.nested and [written(kind.nested, part) for part in earlier[kind.nested]] != [written(kind.nested, part) for part in now[kind.nested]]:
        changed.append(kind.nested)
    return sorted(changed) + ['further keys'] * (earlier.others != now.others)


def are_two(kind, earlier, now):
    """Whether it cannot be one record that was changed: something lasting is different, or two telling values are and none is the same."""
    def answers(keys):
        # Where one of them has nothing, it says nothing.
        return [earlier[key] == now[key] for key in keys if earlier.get(key) and now.get(key)]

    if not all(answers(LASTING.get(kind.name, ()))):
        return True
    telling = answers(TELLING.get(kind.name, ()))
    return len(telling) > 1 and not any(telling)


def follow(kind, record, number_of):
    """Each id of another record in this one becomes what number_of says of its kind and id."""
    for key, other in LINKS.get(kind.name, {}).items():
        record[key] = number_of(other, record[key])
    if kind is GOALS:
        record['actions'] = [number_of(TASKS, number) for number in record['actions']]
    if kind is ITEMS:
        for part in record['constituents']:
            number = leading_integer(part[0])
            if number_of(ITEMS, number) != number:
                part[0] = str(number_of(ITEMS, number))
        supplier = leading_integer(record.text('supplier'))
        if number_of(CONTACTS, supplier) != supplier:
            record['supplier'] = str(number_of(CONTACTS, supplier))


def named_of_kind(kind, record):
    """The ids of its own kind in the record, in their places."""
    numbers = []
    follow(kind, record, lambda other, number: (numbers.append(number) if other is kind else None) or number)
    return numbers


def unchanged(number):
    return number


def with_all_named(sides, given, pair):
    """What was given, and the pair with all that it names, and what those name: None when that gives one of them two, or to two."""
    reached, waiting = set(), [pair]
    while waiting:
        pair = waiting.pop()
        if pair not in sides:
            return None
        if pair not in reached:
            reached.add(pair)
            waiting += sides[pair]
    together = reached | set(given.items())
    is_one_to_one = all(len({pair[side] for pair in together}) == len(together) for side in (0, 1))
    return dict(together) if is_one_to_one else None


@dataclass
class Difference:
    kind: object
    #: The record as its file has it, and its id then.
    entry: dict
    number: int
    #: The order it belongs to.
    owner: int
    what: str
    is_gone: bool
    is_replaced: bool


class Earlier:
    """An earlier state beside what there is now."""

    def __init__(self, program, state):
        self.program = program
        self.entries = {kind.name: state.get(kind.file) or [] for kind in KINDS}
        #: The kind's name and the id then, to the id on the way back.
        self.numbers = {}
        self.give_all_numbers()
        self.differences = [difference for kind in KINDS for difference in self.compared(kind)]

    def number_of(self, kind, number):
        return self.numbers.get((kind.name, number), number)

    def as_of_now(self, kind, entry, own=None):
        """The record as it would stand among those of now; own says what becomes of the numbers of its kind."""
        own = own or (lambda number: self.number_of(kind, number))
        record = kind.record(entry)
        follow(kind, record, lambda other, named: own(named) if other is kind else self.number_of(other, named))
        if kind is GOALS:
            record['actions'] = self.tasks_of(record)
        self.program.complete(kind, record)
        record['id'] = own(record['id'])
        return record

    def tasks_of(self, goal):
        """The tasks that are there, or come back: a goal has no others."""
        back = {self.number_of(TASKS, leading_integer(entry.get('id', ''))) for entry in self.entries['tasks']}
        return [number for number in goal['actions'] if number in back or self.program.lists['tasks'].find(number)]

    def changed_since(self, kind, entry, now, own=None):
        """The keys of the earlier record which are not as the one of now has them."""
        if kind is GOALS:
            now = now.with_tasks(self.tasks_of(now))
        return changed_keys(kind, entry, self.as_of_now(kind, entry, own), now)

    def compared(self, kind):
        found = self.program.lists[kind.name].find
        for entry in self.entries[kind.name]:
            then, number = kind.record(entry), self.as_of_now(kind, entry)['id']
            now = found(number)
            changed = [] if now is None else self.changed_since(kind, entry, now)
            what = 'Changed: ' + ', '.join(changed) if now is not None else 'Deleted'
            is_replaced = now is None and number != then['id']
            if is_replaced:
                what += f'; its number is used by {title_of(kind, found(then["id"]))}'
            if now is None or changed:
                owner = then['order'] if kind is LINES else 0
                yield Difference(kind, entry, then['id'], owner, what, now is None, is_replaced)

    # Numbers that others have by now

    def give_all_numbers(self):
        """What a record names tells who came back as which, and may have come back itself: so it is asked until the answers stay."""
        before = None
        while self.numbers != before:
            before = dict(self.numbers)
            for kind in KINDS:
                given = self.given_numbers(kind)
                self.numbers = {key: number for key, number in self.numbers.items() if key[0] != kind.name}
                self.numbers |= {(kind.name, then): number for then, number in given.items()}

    def given_numbers(self, kind):
        """Who finds another one under his number has that of the record he came back as, or gets the next that was never given."""
        present = sorted(self.program.lists[kind.name].records, key=lambda record: record['id'])
        entries = {leading_integer(entry.get('id', '')): entry for entry in reversed(self.entries[kind.name])}
        # In the order of the file.
        lost = {number: entries[number] for number in (leading_integer(entry.get('id', '')) for entry in self.entries[kind.name])
                if self.has_another(kind, number, entries[number])}
        others = {record['id']: record for record in present if record['id'] not in entries or record['id'] in lost}
        given = self.those_back(kind, lost, others)
        highest = max([*entries, *(record['id'] for record in present)], default=0)
        for number in lost:
            if number not in given:
                highest += 1
                given[number] = highest
        return given

    def those_back(self, kind, lost, others):
        """Each in turn is the first of the others that it can be, if all it names can be what that one names, none of them two. Whoever
        had his answer keeps it as long as it fits; the rest choose after them."""
        sides = self.possible_pairs(kind, lost, others)
        given = {}
        for is_known in (True, False):
            for number in lost:
                for other in others:
                    if number not in given and (self.number_of(kind, number) == other or not is_known):
                        given = with_all_named(sides, given, (number, other)) or given
        return given

    def possible_pairs(self, kind, lost, others):
        """The pairs of a lost record and one of the others that may be one, each with the pairs that they name side by side: all that
        look so, without those that name a pair that does not."""
        sides = {}
        for number, entry in lost.items():
            then = kind.record(entry)
            for other, now in others.items():
                if all(then.text(key) == now.text(key) for key in TITLES[kind.name]):
                    beside = self.pairs_named(kind, lost, (number, entry), now)
                    if beside is not None:
                        sides[number, other] = beside
        before = None
        while len(sides) != before:
            before = len(sides)
            sides = {pair: beside for pair, beside in sides.items() if all(one in sides for one in beside)}
        return sides

    def pairs_named(self, kind, lost, earlier, now):
        """The pairs that the two name side by side, if they are the same, supposing that those are; None otherwise."""
        number, entry = earlier
        then_named, now_named = named_of_kind(kind, kind.record(entry)), named_of_kind(kind, now)
        beside = [(number, now['id']), *zip(then_named, now_named)]
        supposed = {then: now for then, now in beside if then in lost}
        are_same = len(then_named) == len(now_named) and not self.changed_since(kind, entry, now, lambda named: supposed.get(named, named))
        return [pair for pair in beside if pair[0] in lost] if are_same else None

    def has_another(self, kind, number, entry):
        now = self.program.lists[kind.name].find(number)
        return now is not None and are_two(kind, self.as_of_now(kind, entry, unchanged), now)

    # What goes along

    def with_company(self, chosen):
        """The chosen differences, the lines of orders among them, the orders of lines, and whoever is named by a number of another."""
        chosen = set(chosen)
        while True:
            numbers = {self.differences[row].number for row in chosen if self.differences[row].kind is ORDERS}
            more = {row for row, each in enumerate(self.differences) if each.owner and each.owner in numbers}
            more |= {row for one in chosen for row in self.named_by(self.differences[one])}
            if more <= chosen:
                return sorted(chosen)
            chosen |= more

    def named_by(self, difference):
        """Whom it would not name without them: whose number another has, a line's order, a goal's tasks."""
        named = set()
        follow(difference.kind, difference.kind.record(difference.entry),
               lambda kind, number: named.add((kind.name, number)) or number)

        def goes_along(other):
            is_needed = other.kind is TASKS or other.kind is ORDERS and other.number == difference.owner
            return (other.kind.name, other.number) in named and (other.is_replaced or other.is_gone and is_needed)

        return [row for row, other in enumerate(self.differences) if goes_along(other)]


def restore(program, asked, state):
    """Brings back all differences or the chosen ones; answers all."""
    earlier = Earlier(program, state)
    found = earlier.differences
    chosen = set(range(len(found))) if asked['all'] else {row for row in asked['rows'] if row < len(found)}
    if not chosen or not program.may_change():
        return found
    program.write_everything()
    touched = []
    for row in earlier.with_company(chosen):
        kind = found[row].kind
        bring_back(program, kind, earlier.as_of_now(kind, found[row].entry))
        for file in PAIR if kind is ORDERS else (kind.file,):
            if file not in touched:
                touched.append(file)
    program.link_contacts()
    for file in touched:
        program.take_over(KIND_OF[file].name)
    program.write_files(touched)
    return found


def bring_back(program, kind, record):
    now = program.lists[kind.name].find(record['id'])
    if now is None:
        program.adopt(kind, record)
        return
    if kind is GOALS:
        program.drop_unknown_tasks(record)
    payments = now.get('paymentarray', [])
    program.payments = [pair for pair in program.payments if not any(pair[1] is payment for payment in payments)]
    now.clear()
    now.update(record)
    now.others = record.others
    if kind is ORDERS:
        program.payments += [(now, payment) for payment in now['paymentarray']]
        now.links = [program.contacts.find(now[key]) for key in ('contact', 'contact2')]
