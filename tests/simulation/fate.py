"""What happens next: deeds that make sense in the state the model is in, chosen by chance alone."""
NAMES = ('Ann Lee', 'Bo Ek', 'Cy Dee', 'Di Ash', 'Zoë "Z" & Co <x>', 'Eve Fay', 'Potters Ltd', 'Ümit Öz', 'Gil Hay', 'O\'Neill')
GOODS = ('Mug', 'Teapot', 'Saucer', 'Bowl', 'Plate', 'Vase & stand', 'Jug "blue"', 'Tile')
WORDS = ('tea', 'kiln', 'spring', 'clay', 'gift', 'blue', 'Straße', 'a < b', 'two\nlines', 'tab\there', ' blanks ', '😀', 'a\rb', ']]>&amp;')
#: What somebody may type where an amount belongs.
ODD_AMOUNTS = ('abc', '-5.00', '1e5', '99999999', '12,34.5', ' 7 ', '.5', '9999999', '5.')
STATUSES = ('Enquiry', 'Ordered', 'Paid', 'Complete')
METHODS = ('web', 'Cash', 'Card', 'Bank transfer', 'Cheque')
QUANTITIES = ('1', '2', '3', '5', '12', '0', '2.5', '0.5')
PURCHASE = 'Purchase Order'
#: Deeds and how often they come up; the first three also when a disk is full.
DEEDS = {'contact': 14, 'item': 13, 'order': 30, 'bill': 4, 'task': 4, 'goal': 3, 'delete_contacts': 4, 'delete_items': 4,
         'delete_orders': 5, 'delete_order': 2, 'attach': 4, 'settings': 4, 'filter': 5, 'restore': 1, 'retry': 1}
PLAIN = ('contact', 'item', 'order', 'bill', 'task', 'goal')
#: More records than these and one is deleted instead of made.
MOST = {'contacts': 7, 'items': 7, 'orders': 5, 'bills': 4, 'tasks': 4, 'goals': 3}
#: An order with more lines than these gets no further ones.
MOST_LINES = 6
FAILURES = ('ENOSPC', 'EDQUOT', 'EROFS', 'EIO', 'EINTR', 'short')
DEATHS = ('kill-before', 'kill-after', 'power-before', 'power-after', 'short-kill')


class Fate:
    def __init__(self, chance):
        self.chance = chance
        self.next_name = 0
        #: How many changing calls a deed had when it was done without a fault.
        self.calls = {}

    # Small choices

    def happens(self, percent):
        return self.chance.random() * 100 < percent

    def one_of(self, things):
        return self.chance.choice(list(things))

    def number_of(self, records):
        return self.one_of(records)['id'] if records else 0

    def price(self):
        if self.happens(4):
            return self.one_of(ODD_AMOUNTS)
        return f'{self.chance.choice((0, 1, 4, 19, 250, 1234))}.{self.chance.choice((0, 5, 50, 99)):02}'

    def date(self, program):
        return program.now.strftime('%d/%m/%y') if self.happens(80) else '31/12/23'

    def edits(self, choices, least=1):
        """Some of the fields, each with a value of its own."""
        fields = self.chance.sample(sorted(choices), self.chance.randint(least, min(3, len(choices))))
        return [[field, choices[field]()] for field in fields]

    def words(self):
        return ' '.join(self.chance.sample(WORDS, self.chance.randint(1, 2)))

    def name(self):
        self.next_name += 1
        return f'{self.one_of(NAMES)} {self.next_name}'

    def end(self, cancels=15):
        return 'cancel' if self.happens(cancels) else 'save'

    def answers(self):
        return {'Out of Stock': int(self.happens(40)), 'Delete Item': int(self.happens(10)), 'Delete Order': int(self.happens(10)),
                'Delete contact': int(self.happens(10)), 'Delete payment': int(self.happens(20))}

    # Deeds

    def deed(self, program, names=None):
        """A deed that can be asked of the program; none when the one that came up makes no sense now."""
        filled = [name for name in program.filters if program.lists[name].undoable]
        if filled and not names and self.happens(25):
            return {'do': 'undo', 'list': self.one_of(filled)}
        names = names or list(DEEDS)
        name = self.chance.choices(names, [DEEDS[each] for each in names])[0]
        asked = getattr(self, name)(program)
        return asked and asked | {'answers': self.answers()}

    def record(self, program, name):
        """0 for a new record, or one that is there."""
        records = program.lists[name].records
        return 0 if not records or self.happens(45) and len(records) < MOST[name] else self.number_of(records)

    def contact(self, program):
        number = self.record(program, 'contacts')
        found = program.contacts.find(number)
        kind = found.text('kind') if found else ''
        edits = self.edits({'add1': self.words, 'postcode': lambda: self.one_of(('AB1 2CD', '')), 'comments': self.words,
                            'email': lambda: self.one_of(('a@example.org', '')), 'phone': lambda: '01 23'}, least=0)
        if not found or self.happens(30):
            edits.append(['name', self.name()])
        asked = {'do': 'contact', 'id': number, 'company': not found and self.happens(25), 'edits': edits, 'then': self.end()}
        if kind == 'Company Contact':
            asked['edits'] += self.company_edit(program, 30)
        elif self.happens(40):
            edits.append(['type', self.one_of(('Customer', 'Supplier'))])
        if kind == 'Individual' and asked['then'] == 'save' and self.happens(20):
            asked |= {'then': self.one_of(('makeCompany', 'link')), 'next': {'then': self.end(30), 'edits': []}}
            if asked['then'] == 'link':
                asked['next']['edits'] = self.company_edit(program, 90)
        return asked

    def company_edit(self, program, percent):
        companies = [record.text('name') for record in program.contacts.records if record.text('kind') == 'Company']
        return [['company', self.one_of(companies)]] if companies and self.happens(percent) else []

    def item(self, program):
        number = self.record(program, 'items')
        found = program.items.find(number)
        collective = bool(found) and found.text('type') == 'Collective item'
        suppliers = [record.text('name') for record in program.contacts.records if record.text('type') == 'Supplier']
        edits = self.edits({'price': self.price, 'bought': self.price, 'shipping': lambda: self.one_of(('', '1.50', '3.00')),
                            'category': lambda: self.one_of(('Tea', 'Gifts, Tea', '')), 'taxcode': lambda: self.one_of('SLZE'),
                            'condition': lambda: self.one_of(('New', 'Used')), 'decreaseQty': lambda: self.happens(85),
                            'supplier': lambda: self.one_of(suppliers + ['Nobody'])}, least=0)
        parts = []
        if not found or self.happens(20):
            edits += [['item', f'{self.one_of(GOODS)} {self.chance.randint(1, 99)}'], ['description', self.words()]]
        if not collective and (not found or self.happens(30)):
            edits += [['qty', self.one_of(('10', '25', '3', '0', '2000000', 'abc'))], ['warnlevel', self.one_of(('', '0', '2'))]]
        if collective or len(program.items.records) > 2 and self.happens(15):
            if not collective:
                edits.append(['collective', True])
            elif self.happens(5):
                edits.append(['collective', False])
            parts = [self.part(program) for _ in range(self.chance.randint(1, 3))] if edits[-1:] != [['collective', False]] else []
        return {'do': 'item', 'id': number, 'edits': edits, 'parts': parts, 'then': self.end()}

    def part(self, program):
        what = self.one_of(('add', 'add', 'add', 'qty', 'remove'))
        if what == 'add':
            return [what, self.number_of(program.items.records)]
        return ['qty', self.chance.randint(0, 2), self.one_of(('1', '2', '0.5', '3'))] if what == 'qty' else [what, self.chance.randint(0, 2)]

    def order(self, program):
        number = self.record(program, 'orders')
        found = program.orders.find(number)
        purchase = found.text('type') == PURCHASE if found else self.happens(25)
        steps = [] if found and self.happens(70) else [['edit', [['title', self.words()]]]]
        steps += [self.step(program, purchase) for _ in range(self.chance.randint(1, 6))]
        if found and len(program.lines_of(found)) > MOST_LINES:
            steps = [step for step in steps if step and step[0] != 'item'] + [['remove line', 0]]
        return {'do': 'order', 'id': number, 'purchase': purchase, 'steps': [step for step in steps if step], 'then': self.end(12)}

    def step(self, program, purchase):
        what = self.chance.choices(('item', 'cell', 'edit', 'contact', 'pay', 'pay all', 'payment cell', 'remove payment', 'remove line',
                                    'tax', 'shipping', 'stock'), (30, 14, 18, 10, 8, 3, 3, 3, 5, 4, 4, 6))[0]
        row = self.chance.randint(0, 3)
        if what == 'item':
            return [what, self.number_of(program.items.records)]
        if what == 'cell':
            column = self.one_of(('qty', 'qty', 'cost', 'total', 'item', 'taxcode'))
            return [what, row, column, self.cell(column)]
        if what == 'edit':
            return [what, self.order_edits(program, purchase)]
        if what == 'contact':
            return [what, self.number_of(program.contacts.records), self.one_of((1, 1, 2))]
        if what == 'pay':
            return [what, [['amountTendered', self.price()], ['tenderPaymentMethod', self.one_of(METHODS)]], self.end(20)]
        if what == 'payment cell':
            return [what, row, *self.one_of((('amount', self.price()), ('datepaid', self.date(program)), ('paymentmethod', 'Card')))]
        if what == 'stock':
            return ['add stock'] if purchase else None
        return [what, row] if what.startswith('remove') else [what]

    def cell(self, column):
        if column in ('qty', 'cost', 'total'):
            return self.one_of(QUANTITIES) if column == 'qty' else self.price()
        return self.words() if column == 'item' else self.one_of('SLZEX')

    def order_edits(self, program, purchase):
        choices = {'title': self.words, 'orderNum': self.words, 'description': self.words, 'status': lambda: self.one_of(STATUSES),
                   'paymentMethod': lambda: self.one_of(METHODS), 'applyDiscount': lambda: self.happens(60),
                   'discount': lambda: self.one_of(('10', '5', '2.50')), 'discountChoice': lambda: self.one_of((0, 1)),
                   'shipping': lambda: self.one_of(('', '5', '1,250.00')), 'sent': lambda: self.happens(50),
                   'repeats': lambda: self.happens(50), 'date': lambda: self.date(program)}
        if purchase:
            choices['balancePaid'] = lambda: self.one_of(('', self.date(program)))
        return self.edits(choices)

    def fields(self, program, name, choices):
        number = self.record(program, name)
        deletes = number and (len(program.lists[name].records) >= MOST[name] or self.happens(20))
        return {'do': name[:-1], 'id': number, 'edits': self.edits(choices), 'delete': bool(deletes)}

    def bill(self, program):
        return self.fields(program, 'bills', {'name': self.words, 'amount': self.price, 'vat': self.price, 'number': lambda: 'B7',
                                              'datepaid': lambda: self.date(program)})

    def task(self, program):
        return self.fields(program, 'tasks', {'title': self.words, 'details': self.words, 'startdate': lambda: self.date(program),
                                              'complete': lambda: self.one_of(('Yes', 'No'))})

    def goal(self, program):
        asked = self.fields(program, 'goals', {'name': self.words, 'details': self.words})
        if not asked['delete'] and self.happens(50):
            asked['task'] = self.number_of(program.lists['tasks'].records)
        return asked

    def delete_of(self, program, name):
        records = program.lists[name].records
        if len(records) < 2 or len(records) < MOST[name] and self.happens(40):
            return None
        some = self.chance.sample(records, self.chance.choice((1, 1, 1, 2)))
        # The newest often: its id is given out again.
        return {'do': 'delete', 'list': name, 'ids': sorted({records[-1 if self.happens(30) else 0]['id'], *(one['id'] for one in some[1:])}
                                                            if self.happens(50) else {one['id'] for one in some})}

    def delete_contacts(self, program):
        return self.delete_of(program, 'contacts')

    def delete_items(self, program):
        return self.delete_of(program, 'items')

    def delete_orders(self, program):
        return self.delete_of(program, 'orders')

    def delete_order(self, program):
        return {'do': 'deleteOrder', 'id': self.number_of(program.orders.records)} if len(program.orders.records) > 2 else None

    def attach(self, program):
        # One file for each order: the second of that name is refused.
        return {'do': 'attach', 'id': self.number_of(program.orders.records), 'path': 'scan'} if program.orders.records else None

    def settings(self, _program):
        return {'do': 'settings', 'edits': self.edits({
            'VendaroCurrency': lambda: self.one_of(('£', '€', '$')), 'VendaroOrderPrefix': lambda: self.one_of(('', 'P', 'INV-')),
            'VendaroItemPrefix': lambda: self.one_of(('', 'I')), 'VendaroContactPrefix': lambda: self.one_of(('C', 'K')),
            'VendaroStockWarn': lambda: self.one_of(('0', '2', '')), 'VendaroPricesTaxInclusive': lambda: self.one_of((0, 1)),
            'VendaroDefaultSort': lambda: self.one_of((0, 0, 1)),
            'VendaroStatuses': lambda: self.one_of(('Enquiry\nOrdered\nPaid\nComplete', 'Enquiry\nOrdered\nPaid\nComplete\nLate'))})}

    def filter(self, program):
        name = self.one_of(program.filters)
        titles = {'contacts': ('All', 'All', 'Customer', 'Supplier'), 'items': ('All', 'In stock'),
                  'orders': ('All', 'All', 'Incomplete', 'Purchase orders', 'Enquiry')}[name]
        edits = [['search', self.one_of(('', '', 'tea', 'ann', 'clay 1', 'zzz'))], ['filter', self.one_of(titles)]]
        return {'do': 'filter', 'list': name, 'edits': self.chance.sample(edits, self.chance.randint(1, 2))}

    def restore(self, _program):
        """The state is filled in by whoever sees the recovery store."""
        return {'do': 'restore', 'all': self.happens(50), 'rows': sorted(self.chance.sample(range(6), 2))}

    def retry(self, _program):
        return {'do': 'retry'}

    def unlike_others(self, name):
        """A record is made that has nothing in common with those before it."""
        self.next_name += 1
        own = f'{self.next_name}, and no other'
        if name == 'orders':
            paid = [['balancePaid', f'{self.chance.randint(1, 28):02}/02/20']]
            return {'do': 'order', 'id': 0, 'purchase': True, 'then': 'save',
                    'steps': [['edit', [['title', own], ['description', own]]], ['edit', paid]]}
        fields = {'contacts': ('name', 'add1', 'postcode', 'email', 'phone'), 'items': ('item', 'description')}[name]
        return {'do': name[:-1], 'id': 0, 'edits': [[field, own] for field in fields], 'parts': [], 'company': False, 'then': 'save'}

    # Faults

    def death(self, deed, folder):
        most = self.calls.get(deed, 12)
        return {'kind': self.one_of(DEATHS), 'at': self.chance.randint(1, most + 1), 'last': 'once', 'folder': folder}

    def refusal(self, deed, folder):
        """Nothing can be changed in the folder for the length of a deed, from a call on."""
        most = self.calls.get(deed, 12)
        return {'kind': self.one_of(('ENOSPC', 'EDQUOT', 'EROFS')), 'at': self.chance.randint(1, most + 1), 'folder': folder,
                'last': self.one_of(('once', 'forever'))}

    def failure(self, deed, folder):
        most = self.calls.get(deed, 12)
        kind = self.one_of(FAILURES)
        forever = kind != 'EINTR' and self.happens(50)
        return {'kind': kind, 'at': self.chance.randint(1, most * (4 if kind == 'EIO' else 1) + 1), 'folder': folder,
                'last': 'forever' if forever else 'once', 'stays': forever and self.happens(50)}
