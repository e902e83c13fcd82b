#!/usr/bin/env python3
"""Works out every case in this folder in single precision, and says where a case expects something else."""
import math
import pathlib
import re
import struct
import sys
from decimal import ROUND_HALF_EVEN, Decimal

FIGURE = re.compile(r"-?(\d+(,\d+)*)?(\.\d*)?")


def single(number):
    return struct.unpack("f", struct.pack("f", number))[0]


def read(text):
    if not FIGURE.fullmatch(text) or not re.search(r"\d", text):
        return 0.0
    number = float(text.replace(",", ""))
    return single(number) if abs(number) <= 1e7 else 0.0


def write(number):
    if not math.isfinite(number):
        return "0.00"
    rounded = Decimal(repr(number)).quantize(Decimal("0.01"), ROUND_HALF_EVEN)
    return f"{rounded + 0:,.2f}" if rounded else "0.00"


def times(a, b):
    return single(a * b)


def divided(a, b):
    return single(a / b) if b else math.inf


def plus(a, b):
    return single(a + b)


class Sale:
    def __init__(self):
        self.rates = {}
        self.exclusive = False
        self.shipping_code = None
        self.purchase = False
        self.lines = []
        self.discount = None
        self.payments = []
        self.fields = {"subtotal": "", "shipping": "", "tax": "", "net": "", "remaining": "", "balance": "",
                       "saved-with-shipping": ""}

    def value(self, name):
        return read(self.fields[name])

    def rate(self, code):
        return single(float(self.rates.get(code, "0")))

    def total(self):
        total = plus(self.value("subtotal"), self.value("shipping"))
        return plus(total, self.value("tax")) if self.purchase or self.exclusive else total

    def paid(self):
        paid = 0.0
        for amount in self.payments:
            paid = plus(paid, read(amount))
        return paid

    def balance(self):
        total = self.total()
        self.fields["balance"] = write(total)
        self.fields["remaining"] = write(max(plus(total, -self.paid()), 0.0))

    def subtotal(self):
        total = 0.0
        for line in self.lines:
            total = plus(total, read(line["total"]))
        if self.discount:
            amount, kind = self.discount
            if kind == "percent":
                total = plus(total, divided(times(total, read(amount)), -100.0))
            else:
                total = plus(total, -read(amount))
        self.fields["subtotal"] = write(total)
        self.balance()

    def line_tax(self, on_top):
        tax = 0.0
        for line in self.lines:
            amount = read(line["total"])
            if self.discount and self.discount[1] == "percent":
                amount = plus(amount, divided(times(amount, read(self.discount[0])), -100.0))
            elif self.discount:
                amount = plus(amount, -divided(read(self.discount[0]), single(len(self.lines))))
            rate = self.rate(line["code"])
            if on_top:
                tax = plus(tax, times(amount, divided(rate, 100.0)))
            else:
                tax = plus(tax, times(divided(amount, plus(rate, 100.0)), rate))
        return tax

    def calculate_tax(self):
        self.subtotal()
        if self.purchase:
            self.fields["net"] = self.fields["subtotal"]
            self.fields["tax"] = write(self.line_tax(True))
        else:
            lines = self.line_tax(self.exclusive)
            shipping = times(divided(self.rate(self.shipping_code), 100.0), self.value("shipping"))
            self.fields["tax"] = write(plus(lines, shipping))
            if self.exclusive:
                self.fields["net"] = self.fields["subtotal"]
            else:
                self.fields["net"] = write(plus(plus(self.value("subtotal"), -lines), self.value("shipping")))
        self.balance()

    def shipping_from_items(self):
        total = 0.0
        for line in self.lines:
            if "ships" in line:
                total = plus(total, times(read(line["ships"]), read(line["qty"])))
        self.fields["shipping"] = write(total)
        self.balance()

    def save(self):
        self.fields["saved-with-shipping"] = write(plus(self.value("subtotal"), self.value("shipping")))

    def carry_out(self, words):
        if words[0] == "rate":
            self.rates.setdefault(words[1], words[2])
        elif words[0] == "prices":
            self.exclusive = words[1] == "exclusive"
        elif words[0] == "shipping-code":
            self.shipping_code = words[1]
        elif words[0] == "type":
            self.purchase = words[1:] == ["Purchase", "Order"]
        elif words[0] == "line":
            line = {"total": words[1], "code": words[2], "qty": "1"}
            line.update(zip(words[3::2], words[4::2]))
            self.lines.append(line)
        elif words[0] == "shipping":
            self.fields["shipping"] = words[1]
            self.balance()
        elif words[0] == "discount":
            self.discount = (words[1], words[2])
            self.subtotal()
        elif words[0] == "payment":
            self.payments.append(words[1])
        else:
            {"calculate tax": self.calculate_tax, "shipping from items": self.shipping_from_items,
             "subtotal": self.subtotal, "save": self.save}[" ".join(words[1:])]()

    def figure(self, name):
        if name == "count":
            count = 0
            for line in self.lines:
                count = int(plus(float(count), read(line["qty"])))
            return str(count)
        if name == "total-due":
            return write(max(self.total(), 0.0))
        return self.fields[name]


def main():
    wrong = 0
    for path in sorted(pathlib.Path(__file__).parent.glob("*.txt")):
        sale = Sale()
        expecting = False
        for line in path.read_text(encoding="utf-8").splitlines():
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            if line == "---":
                expecting = True
            elif not expecting:
                sale.carry_out(line.split(" "))
            else:
                name, _, value = line.partition(" ")
                if sale.figure(name) != value:
                    print(f"{path.name}: {name} is {sale.figure(name)}, not {value}")
                    wrong += 1
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
