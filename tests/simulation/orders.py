"""Orders: their editor with lines, figures and payments, their deletion, their attachments."""
import stock
from figures import amount, minus, money, normalised, over, plus, reads, single, times
from program import SHIPPING_CODE, TAX_RATES
from records import BILLS, LINES, ORDERS

PURCHASE = 'Purchase Order'
#: Fields of the editor that are copied as they are, and their keys in the file.
TEXTS = {'date': 'date', 'description': 'description', 'orderNum': 'ordernum', 'title': 'title'}
CHOICES = {'paymentMethod': 'paymentmethod', 'status': 'status', 'repeatFrequency': 'repeatfrequency', 'type': 'type'}
MONEY = {'shipping': 'shipping', 'taxAmount': 'tax', 'net': 'net', 'subtotal': 'value'}


def number_for_new(program):
    """The next id that nothing has and that no line names as its order's."""
    number = program.orders.next_free()
    while any(line['order'] == number for line in program.lines.records):
        number = program.orders.next_free()
    return number


class Editor:
    def __init__(self, program, order, creating):
        self.program, self.order, self.creating = program, order, creating
        self.form = {field: order.text(key) for field, key in (TEXTS | CHOICES | MONEY).items()}
        self.form['balancePaid'] = order.text('balancepaid')
        self.form['discount'] = order.text('discount') if order['applydiscount'] else ''
        self.flat = order['applydiscount'] and not order['discountispercentage']
        self.flags = {'sent': order['sent'], 'repeats': order['repeats'], 'applyDiscount': order['applydiscount'], 'includeBOM': True}
        self.may_add_stock = self.is_purchase() and not order['stockadded']

    def is_purchase(self):
        return self.order.text('type') == PURCHASE

    # Figures

    def lines(self):
        return self.program.lines_of(self.order)

    def figure(self, field):
        return amount(self.form[field])

    def reckon_subtotal(self):
        total = 0.0
        for line in self.lines():
            total = plus(total, amount(line.text('total')))
        discount = self.figure('discount')
        if self.flags['applyDiscount']:
            total = minus(total, discount) if self.flat else plus(total, over(times(total, discount), -100.0))
        self.form['subtotal'] = money(total)
        self.reckon_balance()

    def line_tax(self, on_top):
        tax = 0.0
        lines = self.lines()
        discount = self.figure('discount')
        for line in lines:
            total = amount(line.text('total'))
            if self.flags['applyDiscount']:
                share = over(discount, single(len(lines)))
                total = minus(total, share) if self.flat else plus(total, over(times(total, discount), -100.0))
            rate = single(float(TAX_RATES.get(line.text('taxcode'), '0')))
            tax = plus(tax, times(total, over(rate, 100.0)) if on_top else times(over(total, plus(rate, 100.0)), rate))
        return tax

    def reckon_tax(self):
        self.reckon_subtotal()
        exclusive = self.program.exclusive()
        if self.is_purchase():
            self.form['net'] = self.form['subtotal']
            self.form['taxAmount'] = money(self.line_tax(on_top=True))
        else:
            tax = self.line_tax(exclusive)
            shipping_rate = over(single(float(TAX_RATES[SHIPPING_CODE])), 100.0)
            self.form['taxAmount'] = money(plus(tax, times(shipping_rate, self.figure('shipping'))))
            self.form['net'] = self.form['subtotal'] if exclusive \
                else money(plus(minus(self.figure('subtotal'), tax), self.figure('shipping')))
        self.reckon_balance()

    def reckon_balance(self):
        """Answers what is still due."""
        total = plus(self.figure('subtotal'), self.figure('shipping'))
        if self.is_purchase() or self.program.exclusive():
            total = plus(total, self.figure('taxAmount'))
        self.order['balance'] = money(total)
        paid = 0.0
        for payment in self.order['paymentarray']:
            paid = plus(paid, amount(payment[0]))
        return max(minus(total, paid), 0.0)

    # Steps

    def edit(self, edits):
        for field, value in edits:
            if field == 'discountChoice':
                if bool(value) != self.flat:
                    self.flat = bool(value)
                    self.reckon_subtotal()
            elif field in self.flags:
                changed = self.flags[field] != value
                self.flags[field] = value
                if field == 'applyDiscount' and changed:
                    self.reckon_subtotal()
            elif self.form[field] != value:
                self.form[field] = value
                self.edited(field)

    def edited(self, field):
        if field in ('shipping', 'taxAmount'):
            self.reckon_balance()
        elif field == 'discount':
            self.reckon_subtotal()
        elif field == 'type':
            self.order['type'] = self.form['type']
            self.may_add_stock = self.is_purchase() and not self.order['stockadded']

    def add_item(self, number):
        program = self.program
        item = program.items.find(number)
        if not item or not program.may_change():
            return
        if not self.is_purchase():
            stock.move(program, item, -1.0)
        line = LINES.new()
        line['order'], line['product'], line['contact'] = self.order['id'], item['id'], self.order['contact']
        line['dateadded'] = program.now.strftime('%d/%m/%Y')
        for key, text in (('item', item.text('item')), ('code', item.text('code')), ('variation', item.text('variation')),
                          ('taxcode', item.text('taxcode') or 'S'),
                          ('cost', item.text('bought' if self.is_purchase() else 'price'))):
            line.put(key, text)
        retotal(line)
        program.lines.add(line)
        self.reckon_tax()

    def managed_item(self, line):
        """The item whose stock goes with the line, when there is one."""
        item = self.program.items.find(line['product'])
        return item if item and item['decreaseQty'] and not self.is_purchase() else None

    def set_cell(self, row, column, typed):
        lines = self.lines()
        if row >= len(lines) or not self.program.may_change():
            return
        line = lines[row]
        if column in ('cost', 'total', 'qty') and typed and reads(typed) is None:
            return
        text = normalised(typed) if column in ('cost', 'total') and typed else typed
        item = self.managed_item(line)
        before, after = amount(line.text('qty')), amount(text)
        if column == 'qty' and item and before != after and not stock.move(self.program, item, minus(before, after)):
            return
        line.put(column, text)
        if column in ('cost', 'qty'):
            retotal(line)
        self.reckon_tax()
        self.program.write('lines')

    def remove_line(self, row):
        lines = self.lines()
        if row >= len(lines):
            return
        question = 'Do you want to remove the selected Item from this Order? (It will be deleted from this list but the original Item ' \
                   'will remain in your inventory)'
        if self.program.ask('Delete Item', question) == 0 and self.program.may_change():
            item = self.managed_item(lines[row])
            if item:
                stock.move(self.program, item, single(int(amount(lines[row].text('qty')))))
            self.program.lines.remove([lines[row]])
            self.reckon_tax()
        self.program.write('lines')

    def ship_as_items_say(self):
        total = 0.0
        for line in self.lines():
            item = self.program.items.find(line['product'])
            if item:
                total = plus(total, times(amount(item.text('shipping')), amount(line.text('qty'))))
        self.form['shipping'] = money(total)
        self.reckon_balance()

    def take_payment(self, edits, then):
        self.reckon_balance()
        panel = {'tenderPaymentMethod': self.form['paymentMethod'], 'amountTendered': '', 'datePaid': self.program.today()} | dict(edits)
        if then != 'cancel' and reads(panel['amountTendered']) is not None:
            self.pay(money(amount(panel['amountTendered'])), panel['datePaid'], panel['tenderPaymentMethod'])

    def pay_all(self):
        due = self.reckon_balance()
        if due != 0:
            self.pay(money(due), self.program.today(), self.form['paymentMethod'])

    def pay(self, paid, date, method):
        payment = [paid, date, method]
        self.order['paymentarray'].append(payment)
        self.program.payments.append((self.order, payment))
        self.reckon_balance()
        self.order.put('balancepaid', date)
        self.form['balancePaid'] = date

    def set_payment_cell(self, row, column, typed):
        payments = self.order['paymentarray']
        if row >= len(payments) or not self.program.may_change():
            return
        if column == 'amount' and typed and reads(typed) is None:
            return
        place = ('amount', 'datepaid', 'paymentmethod').index(column)
        payments[row][place] = normalised(typed) if column == 'amount' else typed
        self.reckon_balance()

    def remove_payment(self, row):
        payments = self.order['paymentarray']
        if row >= len(payments) or not self.program.may_change():
            return
        if self.program.ask('Delete payment', 'are you sure you want to delete the selected payment?') == 0:
            # The money-in list keeps it until the next load.
            del payments[row]
            self.reckon_balance()

    def connect(self, number, tab):
        program = self.program
        contact = program.contacts.find(number)
        if not contact or not program.may_change():
            return
        key, place = (('contact', 0), ('contact2', 1))[tab - 1]
        self.order[key] = contact['id']
        self.order.links[place] = contact
        orders = sum(order['contact'] == contact['id'] for order in program.orders.records)
        if orders:
            self.order['newcustomer'] = 1 if orders == 1 else 2
        for line in self.lines():
            line['contact'] = contact['id']

    def add_stock(self):
        if not self.may_add_stock or not self.program.may_change():
            return
        for line in self.lines():
            item = self.program.items.find(line['product'])
            if item and item['decreaseQty']:
                stock.move(self.program, item, single(int(amount(line.text('qty')))))
        self.order['stockadded'] = True
        self.may_add_stock = False

    STEPS = {'edit': edit, 'item': add_item, 'cell': set_cell, 'remove line': remove_line, 'tax': reckon_tax, 'shipping': ship_as_items_say,
             'pay': take_payment, 'pay all': pay_all, 'payment cell': set_payment_cell, 'remove payment': remove_payment,
             'contact': connect, 'add stock': add_stock}

    # The end

    def save(self):
        if not self.program.may_change():
            return
        order = self.order
        for field, key in TEXTS.items():
            order.put(key, self.form[field])
        for field, key in CHOICES.items():
            order.put(key, self.form[field])
        for field, key in MONEY.items():
            order.put(key, normalised(self.form[field]))
        order['valuewithtax'] = money(plus(self.figure('subtotal'), self.figure('shipping')))
        order['totalitemspurchased'] = str(self.count_items())
        order['includeBOM'], order['sent'], order['repeats'] = (self.flags[name] for name in ('includeBOM', 'sent', 'repeats'))
        if self.is_purchase():
            order.put('balancepaid', self.form['balancePaid'])
        order['applydiscount'] = self.flags['applyDiscount']
        order.put('discount', self.form['discount'] if self.flags['applyDiscount'] else '')
        order['discountispercentage'] = not self.flags['applyDiscount'] or not self.flat
        if self.flags['repeats'] and not order.text('lastrepeatdate'):
            order['lastrepeatdate'] = self.program.today()
        if self.is_purchase() and self.form['balancePaid']:
            self.file_bill()
            self.program.write('bills')
        self.program.filter('orders')
        self.program.write_orders()
        self.program.write('items')

    def count_items(self):
        count = 0
        for line in self.lines():
            count = int(plus(single(count), amount(line.text('qty'))))
        return count

    def file_bill(self):
        order = self.order
        bill = self.program.bills.find(order['bill']) if order['bill'] > 0 else None
        if not bill:
            bill = self.program.bills.add(BILLS.new())
            order['bill'] = bill['id']
        for key, text in (('amount', 'balance'), ('datepaid', 'balancepaid'), ('net', 'net'), ('vat', 'tax'), ('name', 'title')):
            bill.put(key, order.text(text))


def retotal(line):
    line['total'] = money(times(amount(line.text('qty')), amount(line.text('cost'))))


def order(program, asked):
    found = program.orders.find(asked['id'])
    creating = not found
    if creating:
        if not program.may_change():
            return
        found = ORDERS.new()
        found['id'] = number_for_new(program)
        program.orders.add(found)
        found['ordernum'] = program.form['VendaroOrderPrefix'] + str(found['id'])
        found['date'] = 'today' if asked.get('purchase') else program.today()
        if asked.get('purchase'):
            found['type'] = PURCHASE
    editor = Editor(program, found, creating)
    for step in asked['steps']:
        Editor.STEPS[step[0]](editor, *step[1:])
    if asked['then'] == 'cancel':
        if creating and program.may_change():
            remove(program, [found])
            program.write_orders()
        return
    editor.save()


def remove(program, orders):
    for found in orders:
        attached = program.folder.attachments.pop(found['id'], {})
        if attached:
            program.removed_attachments.append((found['id'], attached))
    numbers = [found['id'] for found in orders]
    program.lines.remove([line for line in program.lines.records if line['order'] in numbers])
    payments = [payment for found in orders for payment in found['paymentarray']]
    program.payments = [pair for pair in program.payments if not any(pair[1] is payment for payment in payments)]
    bills = [program.bills.find(found['bill']) for found in orders if found['bill'] > 0]
    program.bills.remove([bill for bill in bills if bill])
    # Its number may go to another order's bill before the order is undone.
    for found in orders:
        found['bill'] = 0
    program.orders.remove(orders)


def delete_one(program, asked):
    found = program.orders.find(asked['id'])
    if found and program.may_change():
        remove(program, [found])
        program.write_orders()


def delete_orders(program, asked):
    selected = program.chosen_to_go(program.orders.shown(), asked['ids'], 'Delete Order',
                                    'Are you sure you want to delete the selected item(s) from the database?')
    if not selected:
        return
    remove(program, selected[::-1])
    program.write_orders()
    program.orders.undoable = selected[::-1]


def attach(program, asked):
    """A file whose bytes are given goes to the order; none of that name must be there already."""
    found = program.orders.find(asked['id'])
    name = asked['path'].split('/')[-1]
    if not found or not program.may_change():
        return
    attached = program.folder.attachments.setdefault(found['id'], {})
    attached.setdefault(name, asked['path'])


DEEDS = {'order': order, 'deleteOrder': delete_one, 'attach': attach}
