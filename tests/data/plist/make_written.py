"""Writes the files that PlistWriterTest compares with, by Python's own property list writer."""
import datetime
import pathlib
import plistlib

here = pathlib.Path(__file__).parent


def write(name, value):
    (here / name).write_bytes(plistlib.dumps(value))


def nested(depth):
    return {"data": bytes(range(100)), "deeper": nested(depth - 1)} if depth else {"data": bytes(range(100))}


write("written_values.plist", {
    "empty text": "",
    "markup": "<b> & \"quotes\" 'single' ]]> &amp;",
    "lines": "one\n\ttwo\n",
    "letters": "Ünï€ 😀 \u0085 \u2028",
    "<key> & more": "x",
    "Upper": 1, "lower": -2, "Ärger": 3, "": 4, "😀": 5, "\uffee": 6,
    "largest": 9223372036854775807, "smallest": -9223372036854775808,
    "real": 17.5, "yes": True, "no": False,
    "date": datetime.datetime(2020, 5, 5, 10, 39, 44),
    "empty list": [], "empty dictionary": {},
    "lists": [[], [[]], {"a": []}, ["x", {"b": {}}]],
})
write("written_data.plist", {str(size): bytes(i * 37 % 256 for i in range(size)) for size in (0, 1, 2, 3, 45, 50, 51, 52, 57, 200)})
write("written_deep_data.plist", nested(12))
write("written_root_text.plist", "just a text & no more")
