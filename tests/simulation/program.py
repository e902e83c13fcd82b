"""A running program as it must be: what it holds in memory, what it writes and asks. The deeds are in people, stock, orders, house."""
from folder import Lock
from records import CONTACTS, FILES, GOALS, KIND_OF, KINDS, LINES, ORDERS, Collection
from stock import whole_quantity

#: Settings of the user that the simulation changes.
OWN_KEYS = ('VendaroStockWarn', 'VendaroStatuses', 'VendaroPricesTaxInclusive', 'VendaroDefaultSort')
#: Settings that travel with the database, and whether the user's own settings follow them.
FOLDER_KEYS = {'VendaroCurrency': True, 'VendaroCurrencyCode': True, 'VendaroOrderPrefix': False, 'VendaroItemPrefix': False,
               'VendaroContactPrefix': False}
LOCATION = 'VendaroDbLocation'
ORDER_FILTER = 'orderManagerFilter'
TAX_RATES = {'S': '20', 'L': '5', 'Z': '0', 'E': '0'}
SHIPPING_CODE = 'S'
READ_ONLY = ('Read-only mode', 'Database is in read-only mode.')


class Program:
    def __init__(self, user, home, saved_settings, find_folder):
        """saved_settings: the user's settings as they are on disk. find_folder: location setting to Folder."""
        self.user, self.home = user, home
        self.find_folder = find_folder
        self.saved = saved_settings
        self.store = dict(saved_settings)
        self.form = dict(saved_settings)
        self.folder = None
        self.read_only = False
        #: Nothing was written since the folder was read.
        self.first_write = True
        self.lock = None
        self.lists = {kind.name: Collection(kind) for kind in KINDS}
        #: The money-in list: pairs of an order and a payment of its.
        self.payments = []
        self.filters = {name: {'search': '', 'filter': 'All'} for name in ('contacts', 'orders', 'items')}
        #: File to the number of the write that this program knows.
        self.known = {}
        #: What is not saved, or may not be.
        self.unsaved = set()
        self.now = None
        self.answers = {}
        self.begin()

    def begin(self):
        """Before a deed."""
        self.alerts = []
        #: The states of files that are written, one after the other: file to entries.
        self.moments = []
        #: Files that somebody else wrote and that are written over.
        self.foreign = []
        self.removed_attachments = []
        #: What the deed tries to write once more.
        self.retried = set()

    # What deeds use

    @property
    def contacts(self):
        return self.lists['contacts']

    @property
    def orders(self):
        return self.lists['orders']

    @property
    def items(self):
        return self.lists['items']

    @property
    def lines(self):
        return self.lists['lines']

    @property
    def bills(self):
        return self.lists['bills']

    def ask(self, title, text):
        """The place of the button that is pressed."""
        self.alerts.append([title, text.replace('\r', ' ').replace('\n', ' ')])
        return self.answers.get(title, 0)

    def may_change(self):
        if self.read_only:
            self.alerts.append(list(READ_ONLY))
        return not self.read_only

    def chosen_to_go(self, rows, ids, title, question):
        """The selected rows in their order, once the person said yes to deleting them; none otherwise."""
        selected = [record for record in rows if record['id'] in ids]
        return selected if selected and self.ask(title, question) == 0 and self.may_change() else []

    def today(self):
        return self.now.strftime('%d/%m/%y')

    def exclusive(self):
        return self.store['VendaroPricesTaxInclusive'] == '1'

    def lines_of(self, order):
        return [line for line in self.lines.records if line['order'] == order['id']]

    # Writing

    def write(self, *names):
        """The files of these lists, together."""
        if not self.read_only:
            self.write_files([KIND_OF[name].file for name in names])

    def write_orders(self):
        self.write('orders', 'lines')

    def write_files(self, files):
        moment = {}
        for file in files:
            moment[file] = self.lists[KIND_OF[file].name].entries()
            if self.known.get(file) != self.folder.writes[file] and self.folder.files[file] is not None and file not in self.foreign:
                self.foreign.append(file)
        self.moments.append(moment)

    def write_everything(self):
        if self.read_only:
            return
        self.write_files(FILES)

    def knows(self, folder, files):
        """These files of the folder are on disk as this program wrote them."""
        for file in files:
            folder.writes[file] += 1
            if folder is self.folder:
                self.known[file] = folder.writes[file]

    # Reading

    def start(self, unreadable=()):
        """unreadable: files that cannot be read, which is the same as if they were empty."""
        self.read_folder_settings()
        self.filters['orders']['filter'] = self.store.get(ORDER_FILTER, 'All')
        self.read_database(unreadable)

    def actual_folder(self):
        return self.find_folder(self.location)

    def may_write_into(self, folder):
        return not self.read_only if folder is self.folder else folder.lock is None

    def read_folder_settings(self):
        self.location = self.form[LOCATION]
        folder = self.actual_folder()
        for key, follows in FOLDER_KEYS.items():
            self.form[key] = self.store[key]
            if key not in folder.info:
                if self.may_write_into(folder):
                    folder.info[key] = self.form[key]
                continue
            self.form[key] = folder.info[key]
            if follows:
                self.store[key] = self.form[key]

    def read_database(self, unreadable=()):
        self.folder = self.actual_folder()
        self.load(self.folder.files | dict.fromkeys(unreadable))
        self.first_write = True
        self.lock = None
        self.read_only = self.folder.lock is not None
        if not self.read_only:
            self.folder.lock = self.lock = Lock(self.user, 'database open')
        elif self.folder.lock.reason == 'offline browsing':
            self.alerts.append(['Offline Database', None])

    def load(self, files):
        self.known = dict(self.folder.writes)
        self.payments = []
        for kind in KINDS:
            collection = self.lists[kind.name]
            collection.records, collection.highest, collection.undoable = [], 0, []
            for entry in files[kind.file] or []:
                self.adopt(kind, kind.record(entry))
            if kind is ORDERS:
                self.link_contacts()
            self.take_over(kind.name)

    def take_over(self, name):
        self.lists[name].newest_first = self.form['VendaroDefaultSort'] != '1'
        self.filter(name)

    def complete(self, kind, record):
        """What a file leaves open."""
        if kind is CONTACTS:
            record.put('ref', record.text('ref') or str(record['id']))
            if record.text('kind') == 'Company Contact' and not record['company']:
                record['kind'] = 'Individual'
        elif kind is ORDERS and not record['paymentarray']:
            # The older form, which knew a deposit and a balance instead of payments.
            for amount, date in (('deposit', 'depositpaid'), ('balance', 'balancepaid')):
                if record.text(amount) and (amount == 'deposit' or record.text(date)):
                    record['paymentarray'].append([record.text(amount), record.text(date), record.text('paymentmethod')])
        elif kind is LINES and not record['contact']:
            order = self.orders.find(record['order'])
            record['contact'] = order['contact'] if order else 0

    def drop_unknown_tasks(self, goal):
        goal['actions'] = [number for number in goal['actions'] if self.lists['tasks'].find(number)]

    def adopt(self, kind, record):
        self.complete(kind, record)
        if kind is GOALS:
            self.drop_unknown_tasks(record)
        self.lists[kind.name].add(record)
        if kind is ORDERS:
            self.payments += [(record, payment) for payment in record['paymentarray']]

    def link_contacts(self):
        for order in self.orders.records:
            for place, key in enumerate(('contact', 'contact2')):
                if order.links[place] is None or order.links[place] not in self.contacts.records:
                    order.links[place] = self.contacts.find(order[key]) or order.links[place]

    # Filtering

    def filter(self, name):
        if name not in self.filters:
            return
        words = [word.lower() for word in self.filters[name]['search'].split(' ') if word]
        for record in self.lists[name].records:
            record.visible = self.passes(name, record, self.filters[name]['filter']) \
                and all(self.matches(name, record, word) for word in words)

    @staticmethod
    def passes(name, record, choice):
        if choice == 'All':
            return True
        if name == 'contacts':
            return record.text('type') == choice
        if name == 'items':
            return not record.text('qty') or whole_quantity(record) > 0
        if choice == 'Incomplete':
            return record.text('status') != 'Complete'
        return record.text('type') == 'Purchase Order' if choice == 'Purchase orders' else record.text('status') == choice

    def matches(self, name, record, word):
        found = any(word in record.text(key).lower() for key in KIND_OF[name].searched)
        contact = record.links[0] if name == 'orders' else None
        return found or (contact is not None and self.matches('contacts', contact, word))

    # For the comparison with what the program says

    def memory(self, name):
        if name == 'payments':
            return [{'order': order['id'], 'payment': payment} for order, payment in self.payments]
        return [self.shape(name, record) for record in self.lists[name].records]

    def shape(self, name, record):
        if name != 'orders':
            return dict(record)
        links = [0 if link is None else link['id'] if link in self.contacts.records else -link['id'] for link in record.links]
        return dict(record) | {'linked': links}

    def snapshot(self):
        return {kind.file: self.lists[kind.name].entries() for kind in KINDS}
