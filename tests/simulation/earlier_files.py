"""The files of an earlier state as the program takes them, damaged ones among them: what it reads of them, and what it does not read."""
import os
import re
from xml.etree import ElementTree

from home import BROKEN, read_bytes
from records import FILES, KIND_OF

#: What stands before a file's root carries no value, nor do characters that no text may hold; they are marked until their place is known.
BEFORE_ROOT = re.compile(rb'(?:\s|<\?.*?\?>|<!DOCTYPE[^>\[]*>)*<plist(?:\s[^>]*)?>', re.DOTALL)
NO_TEXT = re.compile(rb'[\x00-\x08\x0b\x0c\x0e-\x1f]')
MARK = '\ufdd0'
BLANKS = ' \t\r\n'


class Unreadable(Exception):
    """It is no property list."""


def readable_state_of(folder):
    """File to entries; BROKEN for a file that does not read. What else than entries a file holds is passed over."""
    data = {file: read_bytes(os.path.join(folder, file)) for file in FILES}
    return {file: readable_entries(content, file) for file, content in data.items() if content is not None}


def readable_entries(data, file):
    try:
        root = value_of(ElementTree.fromstring(NO_TEXT.sub(MARK.encode(), BEFORE_ROOT.sub(b'<plist>', data, count=1))))
    except (ElementTree.ParseError, Unreadable):
        return BROKEN
    entries = root.get(KIND_OF[file].root, []) if isinstance(root, dict) else None
    return entries if isinstance(entries, list) and all(isinstance(entry, dict) for entry in entries) else BROKEN


def value_of(element):
    if element.tag in ('plist', 'dict', 'array'):
        values = values_in(element)
        if element.tag == 'array':
            return values
        if element.tag == 'dict':
            return dict_of(element, values)
        if len(values) == 1:
            return values[0]
    elif len(element) == 0:
        text = (element.text or '').replace(MARK, '')
        if element.tag in ('string', 'key'):
            return text
        if element.tag in ('integer', 'real'):
            return number_of(element.tag, text)
    raise Unreadable(element.tag)


def values_in(element):
    """Those of its elements, between which nothing may stand."""
    if any((text or '').strip(BLANKS) for text in (element.text, *(child.tail for child in element))):
        raise Unreadable(element.tag)
    return [value_of(child) for child in element]


def dict_of(element, values):
    if [child.tag == 'key' for child in element] != [True, False] * (len(values) // 2):
        raise Unreadable('dict')
    return dict(zip(values[::2], values[1::2]))


def number_of(tag, text):
    """What is no number is taken as text."""
    if tag == 'integer':
        return int(text) if re.fullmatch(r'\s*[-+]?\d+\s*', text) else text
    return float(text) if re.fullmatch(r'\s*[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?\s*', text) else text
