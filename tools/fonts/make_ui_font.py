#!/usr/bin/env python3
"""Makes one weight of the program's own font: the digits become the font's figures of equal width, and the family gets our name.

usage: make_ui_font.py SOURCE.otf TARGET.otf "Family Name"

The toolkit cannot switch on the font feature that makes figures line up, so the character map points at those figures directly.
The source font's licence (SIL Open Font License) allows this under a name of one's own.
"""
import os
import sys

from fontTools.ttLib import TTFont

SOURCE_FAMILY = "Inter"
NAMES_WITH_FAMILY = {1, 3, 4, 16, 18}
POSTSCRIPT_NAME = 6


def tabular_figures(font):
    """Glyph name to the name of its equal-width sibling, read from the substitution table."""
    table = font["GSUB"].table
    pairs = {}
    for record in table.FeatureList.FeatureRecord:
        if record.FeatureTag != "tnum":
            continue
        for index in record.Feature.LookupListIndex:
            for subtable in table.LookupList.Lookup[index].SubTable:
                pairs.update(getattr(getattr(subtable, "ExtSubTable", subtable), "mapping", {}))
    return pairs


def map_digits(font, pairs):
    """Points the ten digits at their equal-width glyphs, in every character map; says which digits were found."""
    mapped = set()
    for charmap in font["cmap"].tables:
        for code in range(ord("0"), ord("9") + 1):
            glyph = charmap.cmap.get(code)
            if glyph in pairs:
                charmap.cmap[code] = pairs[glyph]
                mapped.add(chr(code))
    return mapped


def level_digits(font):
    """The interpolated weights are a few units off in one digit; a column of figures would show it."""
    charmap = font.getBestCmap()
    metrics = font["hmtx"].metrics
    glyphs = [charmap[code] for code in range(ord("0"), ord("9") + 1)]
    widths = [metrics[glyph][0] for glyph in glyphs]
    common = max(set(widths), key=widths.count)
    for glyph in glyphs:
        width, bearing = metrics[glyph]
        metrics[glyph] = (common, bearing + (common - width) // 2)


def rename(font, family):
    joined = family.replace(" ", "")
    for record in list(font["name"].names):
        if record.nameID in NAMES_WITH_FAMILY or record.nameID == POSTSCRIPT_NAME:
            ours = joined if record.nameID == POSTSCRIPT_NAME else family
            text = record.toUnicode().replace(SOURCE_FAMILY, ours)
            font["name"].setName(text, record.nameID, record.platformID, record.platEncID, record.langID)
    if "CFF " in font:
        outlines = font["CFF "].cff
        outlines.fontNames[0] = outlines.fontNames[0].replace(SOURCE_FAMILY, joined)
        top = outlines.topDictIndex[0]
        for field in ("FullName", "FamilyName"):
            if hasattr(top, field):
                setattr(top, field, getattr(top, field).replace(SOURCE_FAMILY, family))


def main():
    source, target, family = sys.argv[1:4]
    font = TTFont(source)
    mapped = map_digits(font, tabular_figures(font))
    if len(mapped) != 10:
        sys.exit(f"{source}: no figures of equal width for {sorted(set('0123456789') - mapped)}")
    level_digits(font)
    rename(font, family)
    partial = target + ".part"
    font.save(partial)
    os.replace(partial, target)


main()
