"""The kinds of record, how their files spell them, and the collections they stand in: the rules of the format, written down once more."""
import re
from dataclasses import dataclass, field


def leading_integer(text):
    found = re.match(r'\s*[-+]?\d+', text)
    return int(found.group()) if found else 0


def leading_number(text):
    found = re.match(r'\s*[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?', text, re.IGNORECASE)
    return float(found.group()) if found else 0.0


#: Keys that are written under another spelling than they are read from.
READ_FROM = {'stockadded': 'stockAdded'}


@dataclass(frozen=True)
class Kind:
    """A kind of record. Integers and flags are always written, texts when they are not empty, or always too."""
    name: str
    file: str
    root: str
    texts: tuple
    integers: tuple = ()
    flags: tuple = ()
    nested: str = ''
    always: bool = False
    defaults: dict = field(default_factory=dict)
    #: In which fields a search looks.
    searched: tuple = ()

    def new(self):
        record = {key: 0 for key in ('id', *self.integers)} | {key: False for key in self.flags} | dict(self.defaults)
        if self.nested:
            record[self.nested] = []
        return Record(record)

    def entry(self, record):
        """The record as its file has to hold it."""
        entry = {key: str(record[key]) for key in ('id', *self.integers)}
        entry |= {key: 'YES' if record[key] else 'NO' for key in self.flags}
        entry |= {key: record.text(key) for key in self.texts if self.always or record.text(key)}
        if self.nested and (record[self.nested] or self.always):
            entry[self.nested] = [written(self.nested, part) for part in record[self.nested]]
        return record.others | entry

    def record(self, entry):
        """The record that its file's entry stands for, before rules that need other records."""
        record = Record({'id': leading_integer(entry.get('id', ''))})
        record.others = {key: value for key, value in entry.items() if key not in self.keys()}
        for key in self.integers:
            record[key] = leading_integer(entry.get(key, ''))
        for key in self.flags:
            record[key] = entry.get(READ_FROM.get(key, key)) == 'YES'
        for key in self.texts:
            record.put(key, entry.get(key, self.defaults.get(key, '')))
        if self.nested:
            record[self.nested] = [read(self.nested, part) for part in entry.get(self.nested, [])]
        return record

    def keys(self):
        """All that mean something in an entry; what stands under others is kept as it is."""
        return ('id', *self.integers, *self.flags, *(READ_FROM[key] for key in self.flags if key in READ_FROM), *self.texts, self.nested)


PAYMENT_KEYS = ('amount', 'datepaid', 'paymentmethod')
PART_KEYS = ('id', 'code', 'item', 'qty')


class Part(list):
    """A payment or a part of a set that was read, with all that its file holds of it."""

    def __init__(self, values, entry):
        super().__init__(values)
        self.entry, self.as_read = entry, list(values)


def written(nested, part):
    if nested == 'actions':
        return str(part)
    payment = nested == 'paymentarray'
    if isinstance(part, Part):
        fresh = dict.fromkeys(PAYMENT_KEYS, '') if payment else {}
        # Only what was changed since has another value now.
        changes = {key: value for key, value, old in zip(PAYMENT_KEYS if payment else PART_KEYS, part, part.as_read) if value != old}
        return fresh | part.entry | {key: value if payment else written_value(key, value) for key, value in changes.items()}
    if payment:
        return dict(zip(PAYMENT_KEYS, part))
    return {key: written_value(key, value) for key, value in zip(PART_KEYS, part)}


def written_value(key, text):
    """Of a set's part."""
    if key == 'id':
        return int(text)
    if key != 'qty':
        return text
    quantity = float(text)
    return int(quantity) if quantity == int(quantity) else quantity


def read(nested, part):
    if nested == 'actions':
        return leading_integer(part)
    if nested == 'paymentarray':
        return Part([part.get(key, '') for key in PAYMENT_KEYS], part)
    return Part(['%g' % value if isinstance(value, float) else str(value) for value in (part.get(key, '') for key in PART_KEYS)], part)


class Record(dict):
    """A record's fields. An empty text is no entry."""
    __slots__ = ('visible', 'links', 'others')

    def __init__(self, fields):
        super().__init__(fields)
        self.visible = True
        #: Of an order: the contacts it was connected with.
        self.links = [None, None]
        #: What its entry holds under keys that mean nothing here.
        self.others = {}

    # Two records of equal fields are still two.
    __hash__ = object.__hash__

    def __eq__(self, other):
        return self is other

    def text(self, key):
        return self.get(key, '')

    def with_tasks(self, numbers):
        """The same, of a goal, with other tasks."""
        same = Record(self | {'actions': numbers})
        same.others = self.others
        return same

    def put(self, key, text):
        if text:
            self[key] = text
        else:
            self.pop(key, None)


CONTACTS = Kind(
    'contacts', 'contacts.xml', 'contacts',
    ('add1', 'add2', 'add3', 'comments', 'county', 'country', 'companyname', 'email', 'extension', 'fax', 'jobtitle', 'kind', 'mobile',
     'name', 'phone', 'postcode', 'ref', 'salutation', 'title', 'type', 'website'),
    ('company',), defaults={'kind': 'Individual', 'type': 'Customer'},
    searched=('add1', 'add2', 'add3', 'postcode', 'comments', 'country', 'county', 'email', 'extension', 'fax', 'jobtitle', 'kind',
              'mobile', 'name', 'phone', 'ref', 'title', 'type', 'website', 'salutation'))
ORDERS = Kind(
    'orders', 'orders.xml', 'orders',
    ('balance', 'balancepaid', 'date', 'description', 'deposit', 'depositpaid', 'discount', 'lastrepeatdate', 'paymentmethod', 'ordernum',
     'repeatfrequency', 'shipping', 'status', 'tax', 'transactionref', 'net', 'taxrate', 'title', 'totalitemspurchased', 'type', 'value',
     'valuewithtax'),
    ('contact', 'contact2', 'bill', 'newcustomer'),
    ('applydiscount', 'discountispercentage', 'includeBOM', 'sent', 'stockadded', 'repeats'), 'paymentarray',
    defaults={'status': 'Enquiry', 'type': 'Customer', 'paymentmethod': 'web', 'repeatfrequency': 'month', 'discountispercentage': True},
    searched=('date', 'title', 'status', 'type', 'ordernum'))
ITEMS = Kind(
    'items', 'items.xml', 'products',
    ('brand', 'bought', 'buttoncode', 'code', 'category', 'condition', 'description', 'ean', 'item', 'link', 'imagelink', 'part', 'price',
     'qty', 'quantitymethod', 'optimumqty', 'shipping', 'status', 'supplier', 'taxcode', 'type', 'warnlevel', 'variation', 'websitefolder'),
    (), ('decreaseQty', 'exportbrevand', 'exportgoogle', 'hidebuttoncode'), 'constituents',
    defaults={'type': 'Item', 'websitefolder': '~/sites/mysite/', 'decreaseQty': True, 'hidebuttoncode': True},
    searched=('category', 'brand', 'code', 'part', 'condition', 'description', 'ean', 'item', 'status', 'variation', 'supplier'))
LINES = Kind(
    'lines', 'itemsordered.xml', 'materials', ('item', 'code', 'dateadded', 'qty', 'cost', 'unit', 'total', 'taxcode', 'variation'),
    ('order', 'product', 'contact'), defaults={'qty': '1'})
BILLS = Kind('bills', 'bills.xml', 'bills', ('number', 'name', 'details', 'datepaid', 'category', 'amount', 'net', 'vat'))
TASKS = Kind(
    'tasks', 'actions.xml', 'actions',
    ('details', 'enddate', 'endtime', 'rate', 'startdate', 'starttime', 'totalcharge', 'totaltime', 'totaltimeunits', 'title', 'type'),
    ('order', 'material'), ('complete', 'alarmacknowledged', 'alarm'), always=True, defaults={'type': 'Task', 'totaltimeunits': 'Hours'})
GOALS = Kind('goals', 'goals.xml', 'goals', ('details', 'name'), (), (), 'actions', always=True)

#: In the order the files are read and written in.
KINDS = (CONTACTS, ORDERS, ITEMS, LINES, BILLS, TASKS, GOALS)
FILES = tuple(kind.file for kind in KINDS)
KIND_OF = {kind.name: kind for kind in KINDS} | {kind.file: kind for kind in KINDS}
PAIR = (ORDERS.file, LINES.file)


class Collection:
    """Records in the order they came, with ids, a filter's marks and one step of undo."""

    def __init__(self, kind):
        self.kind = kind
        self.records = []
        self.highest = 0
        self.undoable = []
        self.newest_first = True

    def find(self, number):
        """The record of that id that stands in the list; a later one of the same id goes before."""
        return next((record for record in reversed(self.records) if record['id'] == number), None)

    def add(self, record):
        self.records.append(record)
        if record['id']:
            self.highest = max(self.highest, record['id'])
        else:
            self.highest += 1
            record['id'] = self.highest
        self.undoable = []
        return record

    def next_free(self):
        """The next id: above the highest, and never one that stands in the list."""
        self.highest += 1
        while self.find(self.highest):
            self.highest += 1
        return self.highest

    def settle(self):
        self.highest = max((record['id'] for record in self.records), default=0)

    def remove(self, gone):
        self.records = [record for record in self.records if record not in gone]
        self.settle()

    def undo(self):
        self.records += self.undoable
        self.undoable = []

    def shown(self):
        """The records of the rows."""
        rows = reversed(self.records) if self.newest_first else self.records
        return [record for record in rows if record.visible]

    def entries(self):
        return [self.kind.entry(record) for record in self.records]
