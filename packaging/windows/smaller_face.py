#!/usr/bin/python3
"""Writes a face without the ideographs that Shift-JIS of Windows does not have, which is half of it: smaller_face.py
FACE TARGET. Texts and race files of the program need no others; the few names that do are written in the faces that
Windows comes with. The name and all else of the face stay."""

import sys

from fontTools import subset

source, target = sys.argv[1:]
IDEOGRAPHS = [range(0x3400, 0xA000), range(0xF900, 0xFB00), range(0x20000, 0x30000)]


def is_needed(code):
    if not any(code in block for block in IDEOGRAPHS):
        return True
    try:
        return bool(chr(code).encode("cp932"))
    except UnicodeEncodeError:
        return False


options = subset.Options(layout_features=["*"], name_IDs=["*"], name_languages=["*"], name_legacy=True, notdef_outline=True,
                         drop_tables=[*subset.Options().drop_tables, "FFTM"])
face = subset.load_font(source, options)
chosen = subset.Subsetter(options)
chosen.populate(unicodes=filter(is_needed, face.getBestCmap()))
chosen.subset(face)
subset.save_font(face, target, options)
