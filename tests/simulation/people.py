"""Deeds with contacts, and with the records that have no editor of their own yet."""
from records import CONTACTS, KIND_OF

NO_COMPANY = ['Saving Company Contact',
              'The contact has no company selected, therefore it will be saved without a link to a company. To link it to a company, open '
              "it up once more and click the 'Link to Company' button"]
#: What a field of an editor is called in the file, where that differs.
KEYS = {'jobTitle': 'jobtitle'}


def contact(program, asked):
    """A contact is made or edited; making a company of it, or linking it to one, opens a second editor."""
    found = program.contacts.find(asked['id'])
    kind = found.text('kind') if found else 'Company' if asked.get('company') else 'Individual'
    if kind == 'Company Contact':
        finish_person(program, found, asked)
        return
    if kind == 'Company' or not found:
        if not program.may_change():
            return
    edited = found or new_contact(program, kind)
    if asked['then'] == 'cancel':
        if not found:
            program.contacts.settle()
        return
    if changes_kind(asked, kind):
        if not program.may_change():
            return
        edited['kind'] = 'Company' if asked['then'] == 'makeCompany' else 'Company Contact'
    if not program.may_change():
        return
    copy_editor(edited, asked['edits'])
    if not found:
        program.contacts.add(edited)
    saved(program)
    if changes_kind(asked, kind):
        second_editor(program, edited, asked)


def changes_kind(asked, kind):
    return kind == 'Individual' and asked['then'] in ('makeCompany', 'link')


def second_editor(program, edited, asked):
    if asked['then'] == 'link':
        finish_person(program, edited, asked['next'])
    elif asked['next']['then'] == 'save':
        copy_editor(edited, asked['next']['edits'])
        saved(program)


def new_contact(program, kind):
    made = CONTACTS.new()
    made['kind'] = kind
    made['id'] = program.contacts.next_free()
    made['ref'] = program.form['VendaroContactPrefix'] + str(made['id'])
    return made


def copy_editor(record, edits):
    for key, text in edits:
        record.put(KEYS.get(key, key), text)


def saved(program):
    program.filter('contacts')
    program.write('contacts')


def finish_person(program, person, asked):
    if asked['then'] == 'cancel':
        # Nobody stands under no company.
        if not person['company'] and not program.read_only:
            person['kind'] = 'Individual'
        return
    if not program.may_change():
        return
    names = dict(asked['edits'])
    companies = [record for record in program.contacts.records if record.text('kind') == 'Company']
    now = program.contacts.find(person['company'])
    wanted = names.pop('company', now.text('name') if now else '')
    chosen = next((record for record in companies if record.text('name') == wanted), None) if wanted else None
    if chosen:
        person['company'] = chosen['id']
    else:
        program.ask(*NO_COMPANY)
        person['kind'] = 'Individual'
    copy_editor(person, [edit for edit in asked['edits'] if edit[0] != 'company'])
    saved(program)


def outline(program):
    """The rows of the two-level list, all companies unfolded."""
    people = program.contacts.records
    rows = []
    shown = reversed(people) if program.contacts.newest_first else people
    for record in shown:
        if not record.visible or record.text('kind') == 'Company Contact':
            continue
        rows.append(record)
        if record.text('kind') == 'Company':
            rows += [other for other in people if other.text('kind') == 'Company Contact' and other['company'] == record['id']]
    return rows


def delete_contacts(program, asked):
    selected = program.chosen_to_go(outline(program), asked['ids'], 'Delete contact',
                                    'Do you want to delete the selected item from the database?')
    if not selected:
        return
    program.contacts.remove(selected)
    program.contacts.undoable = selected[::-1]


def plain(program, asked):
    """A bill, a task or a goal: its fields are set, or it goes; then its list is written."""
    if not program.may_change():
        return
    name = asked['do'] + 's'
    collection = program.lists[name]
    record = collection.find(asked['id'])
    if record and asked.get('delete'):
        collection.remove([record])
    else:
        record = record or collection.add(KIND_OF[name].new())
        for key, text in asked['edits']:
            if key == 'complete':
                record['complete'] = text == 'Yes'
            else:
                record.put(key, text)
    program.write(name)
    if name != 'goals':
        return
    goal = collection.find(asked['id'] or collection.highest)
    if goal and program.lists['tasks'].find(asked.get('task', 0)):
        goal['actions'].append(asked['task'])
        program.write(name)


DEEDS = {'contact': contact, 'bill': plain, 'task': plain, 'goal': plain}
