"""Items: the stock they hold, what collective items are made of, their editor, their deletion."""
import re

from figures import amount, over, plus, short, single, times
from records import ITEMS, leading_integer, leading_number

COLLECTIVE = 'Collective item'


def held(program, item):
    """How many a collective item's parts make."""
    if item.text('type') != COLLECTIVE:
        return 0.0
    counts = []
    for part in item['constituents']:
        found = program.items.find(leading_integer(part[0]))
        if found and leading_number(part[3]) > 0:
            counts.append(over(quantity(found), single(leading_number(part[3]))))
    return max(min(counts), 0.0) if counts else 0.0


def quantity(item):
    """What is in stock; from a million on it is written in the short form, which no other amount is read from."""
    text = item.text('qty')
    return single(float(text)) if is_short_form(text) else amount(text)


def is_short_form(text):
    return re.fullmatch(r'-?\d(\.\d+)?e[+-]\d+', text) is not None and '%g' % float(text) == text


def whole_quantity(item):
    text = item.text('qty')
    return int(float(text)) if is_short_form(text) else leading_integer(text)


def lists(program, collective, item):
    return collective.text('type') == COLLECTIVE and any(program.items.find(leading_integer(part[0])) is item for part in collective['constituents'])


def where_used(program, item):
    return [other for other in program.items.records if lists(program, other, item)]


def refers_to_itself(program, candidate, seen):
    if candidate.text('type') != COLLECTIVE:
        return candidate in seen
    if not candidate['constituents']:
        return False
    if candidate in seen:
        return True
    seen.append(candidate)
    for part in candidate['constituents']:
        found = program.items.find(leading_integer(part[0]))
        if found and (found in seen or (found.text('type') == COLLECTIVE and refers_to_itself(program, found, seen))):
            return True
    return False


def move(program, item, by, around=()):
    """Stock comes or goes; answers whether the person let it. around: the collective items whose parts are being moved."""
    if item.text('type') == COLLECTIVE:
        return move_parts(program, item, by, around)
    if not item['decreaseQty']:
        return True
    if by < 0 and quantity(item) < -by:
        text = f'You don\'t have enough {item.text("item")}. Do you still wish to add {short(-by)} to this order?'
        if program.ask('Out of Stock', text) != 0:
            return False
    left = plus(quantity(item), by)
    item.put('qty', short(left))
    if by < 0 and left <= leading_integer(item.text('warnlevel')):
        program.ask('Low Stock', f'This leaves {"%.2g" % left} of {item.text("item")} in stock.')
    return True


def move_parts(program, item, by, around):
    if by < 0 and held(program, item) <= 0:
        text = f'You don\'t have enough of one or more items that make up the collective item {item.text("item")}. ' \
               'Do you still wish to add one to this order?'
        if program.ask('Out of Stock', text) != 0:
            return False
    # A plain item may become a collective one again that its own parts have meanwhile: the way ends there, without a question.
    for part in list(item['constituents']):
        found = program.items.find(leading_integer(part[0]))
        if found and found is not item and found not in around:
            move(program, found, times(by, single(leading_number(part[3]))), (*around, item))
    return True


class Editor:
    """The item editor: what it shows and how that gets into the item."""

    def __init__(self, program, item):
        self.program, self.item = program, item
        self.texts = {}
        self.supplier = ''
        supplier = program.contacts.find(leading_integer(item.text('supplier')))
        if supplier:
            self.supplier = supplier.text('name')
        self.collective = item.text('type') == COLLECTIVE
        self.managed = item['decreaseQty']
        self.show_quantity()

    def show_quantity(self):
        self.item['type'] = COLLECTIVE if self.collective else 'Item'
        self.shown = self.quantity = short(held(self.program, self.item)) if self.collective else self.item.text('qty')

    def edit(self, key, value):
        if key == 'collective':
            if value != self.collective:
                self.collective = value
                self.show_quantity()
        elif key == 'decreaseQty':
            self.managed = value
        elif key == 'supplier':
            self.supplier = value
        elif key != 'qty':
            self.texts[key] = value
        elif not self.collective:
            self.quantity = value

    def change_part(self, part):
        parts = self.item['constituents']
        if part[0] == 'add':
            found = self.program.items.find(part[1])
            if found and self.program.may_change() and self.may_add(found):
                parts.append([str(found['id']), found.text('code'), found.text('item'), '1'])
        elif part[1] < len(parts) and self.program.may_change():
            if part[0] == 'qty':
                parts[part[1]][3] = short(single(float(part[2])))
            else:
                del parts[part[1]]
        self.quantity = short(held(self.program, self.item))

    def may_add(self, part):
        name = part.text('item')
        if part is self.item or refers_to_itself(self.program, part, [self.item]):
            self.program.ask('Self referential', f'Unable to add {name}. An item cannot contain an item containing itself')
            return False
        if lists(self.program, self.item, part):
            # A new item has its name in the editor only.
            own = self.item.text('item') or self.texts.get('item', '')
            self.program.ask('Already contains', f'Unable to add {name}. {own} already contains it. Simply edit the quantity.')
            return False
        return True

    def copy_into_item(self):
        for key, text in self.texts.items():
            self.item.put(key, text)
        if self.quantity != self.shown:
            self.item.put('qty', self.quantity)
        found = next((record for record in self.program.contacts.records if record.text('name') == self.supplier), None)
        self.item['supplier'] = str(found['id'] if found else 0)
        self.item['decreaseQty'] = self.managed
        self.item['type'] = COLLECTIVE if self.collective else 'Item'
        if self.collective:
            self.item['qty'] = short(held(self.program, self.item))


def item(program, asked):
    found = program.items.find(asked['id'])
    made = None
    if not found:
        if not program.may_change():
            return
        found = made = ITEMS.new()
        found['id'] = program.items.next_free()
        found['code'] = program.form['VendaroItemPrefix'] + str(found['id'])
        found.put('warnlevel', program.form['VendaroStockWarn'])
    before = found.text('type')
    editor = Editor(program, found)
    for key, value in asked['edits']:
        editor.edit(key, value)
    for part in asked.get('parts', ()):
        editor.change_part(part)
    if asked['then'] == 'cancel' or not program.may_change():
        found['type'] = before
        if made:
            program.items.settle()
        return
    editor.copy_into_item()
    if made:
        program.items.add(found)
    program.filter('items')
    program.write('items')


def delete_items(program, asked):
    selected = program.chosen_to_go(program.items.shown(), asked['ids'], 'Delete Item',
                                    'Do you want to delete the selected item from the database?')
    if not selected:
        return
    gone = []
    for record in reversed(selected):
        users = where_used(program, record)
        if users:
            names = ', '.join(user.text('item') for user in users)
            program.ask('Delete Item', f'Unable to delete {record.text("item")} because it is used in collective item(s): {names}')
        else:
            program.items.remove([record])
            gone.append(record)
    program.items.undoable = gone


DEEDS = {'item': item}

