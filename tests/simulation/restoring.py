"""What became of an earlier state's records, and how they come back, those as well whose number another record has by now."""
from dataclasses import dataclass

from records import BILLS, CONTACTS, GOALS, ITEMS, KIND_OF, KINDS, LINES, ORDERS, PAIR, TASKS, leading_integer

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


def changed_keys(kind, earlier, now):
    keys = [*kind.texts, *kind.integers, *kind.flags, kind.nested]
    different = [key for key in keys if key and key != 'stockadded' and earlier.get(key, '') != now.get(key, '')]
    return sorted(different)


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
            part[0] = str(number_of(ITEMS, int(part[0])))
        supplier = leading_integer(record.text('supplier'))
        if number_of(CONTACTS, supplier) != supplier:
            record['supplier'] = str(number_of(CONTACTS, supplier))


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
        #: The kind's name and the id then, to the id on the way back.
        self.numbers = {}
        self.differences = []
        for kind in KINDS:
            self.compare(kind, state.get(kind.file) or [])

    def number_of(self, kind, number):
        return self.numbers.get((kind.name, number), number)

    def as_of_now(self, kind, entry):
        """The record as it would stand among those of now."""
        record = kind.record(entry)
        follow(kind, record, self.number_of)
        self.program.complete(kind, record)
        record['id'] = self.number_of(kind, record['id'])
        return record

    def compare(self, kind, entries):
        self.give_numbers(kind, entries)
        found = self.program.lists[kind.name].find
        for entry in entries:
            then, record = kind.record(entry), self.as_of_now(kind, entry)
            now = found(record['id'])
            changed = [] if now is None else changed_keys(kind, record, now)
            what = 'Changed: ' + ', '.join(changed) if now is not None else 'Deleted'
            is_replaced = now is None and record['id'] != then['id']
            if is_replaced:
                what += f'; its number is used by {title_of(kind, found(then["id"]))}'
            if now is None or changed:
                owner = then['order'] if kind is LINES else 0
                self.differences.append(Difference(kind, entry, then['id'], owner, what, now is None, is_replaced))

    def give_numbers(self, kind, entries):
        """Who finds another one under his number has that of the record he came back as, or gets the next that was never given."""
        present = self.program.lists[kind.name].records
        then = {leading_integer(entry.get('id', '')) for entry in entries}
        added = [record for record in present if record['id'] not in then]
        highest = max(then | {record['id'] for record in present}, default=0)
        for entry in entries:
            record = self.as_of_now(kind, entry)
            now = self.program.lists[kind.name].find(record['id'])
            if now is None or not are_two(kind, record, now):
                continue
            back = next((one for one in added if not changed_keys(kind, record, one)), None)
            if back:
                added.remove(back)
            else:
                highest += 1
            self.numbers[kind.name, record['id']] = back['id'] if back else highest

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
        named = set()
        follow(difference.kind, difference.kind.record(difference.entry),
               lambda kind, number: named.add((kind.name, number)) or number)
        return [row for row, other in enumerate(self.differences) if (other.kind.name, other.number) in named
                and (other.is_replaced or other.is_gone and other.kind is ORDERS and other.number == difference.owner)]


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
    if kind is ORDERS:
        program.payments += [(now, payment) for payment in now['paymentarray']]
        now.links = [program.contacts.find(now[key]) for key in ('contact', 'contact2')]
