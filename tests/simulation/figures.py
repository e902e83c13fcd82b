"""Money and quantities as the program has to work them out: single precision after every step, two decimals with ties to even."""
import struct
from decimal import ROUND_HALF_EVEN, Decimal

CENT = Decimal('0.01')
LIMIT = 10_000_000


def single(number):
    """The nearest number of single precision."""
    return struct.unpack('f', struct.pack('f', number))[0]


def reads(text):
    """What the text is as a number, or none. Only the plain British form is ever typed here: "-1,234.5"."""
    plain = text.strip().replace(',', '')
    digits = plain[1:] if plain.startswith('-') else plain
    if not digits.replace('.', '', 1).isdigit():
        return None
    number = float(plain)
    return number if abs(number) <= LIMIT else None


def amount(text):
    """The text as a number of single precision; 0 when it does not read."""
    number = reads(text)
    return single(number) if number is not None else 0.0


def money(number):
    """A number as money text."""
    cents = Decimal(repr(float(number))).quantize(CENT, ROUND_HALF_EVEN)
    return f'{cents:,}' if cents else '0.00'


def normalised(text):
    """Typed money in the form it is kept in; what does not read stays."""
    number = reads(text)
    return money(number) if number is not None else text


def short(number):
    """A quantity as it is written into stock."""
    return '%g' % number


def times(one, other):
    return single(one * other)


def plus(one, other):
    return single(one + other)


def minus(one, other):
    return single(one - other)


def over(one, other):
    return single(one / other)
