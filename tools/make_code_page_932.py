#!/usr/bin/env python3
"""Writes the table of code page 932 for systems that have none: make_code_page_932.py > code_page_932.h

A row for each lead byte (81 to 9F, E0 to FC), in it a character for each trail byte (40 to 7E, 80 to FC), 0 where
there is none.
"""

LEADS = [*range(0x81, 0xA0), *range(0xE0, 0xFD)]
TRAILS = [*range(0x40, 0x7F), *range(0x80, 0xFD)]


def character(lead, trail):
    """The character of a pair of bytes as a number of 16 bits; 0 for none."""
    try:
        return ord(bytes((lead, trail)).decode("cp932"))
    except (UnicodeDecodeError, TypeError):  # no character, or two of one byte each
        return 0


def row(lead):
    return "    " + ", ".join(f"{character(lead, trail):#x}" for trail in TRAILS) + ","


print("#pragma once\n\n// Made by tools/make_code_page_932.py.\n\n#include <array>\n\nnamespace keelview {\n")
print(f"inline constexpr std::array<char16_t, {len(LEADS) * len(TRAILS)}> CodePage932Pairs{{")
print("\n".join(row(lead) for lead in LEADS))
print("};\n\n}  // namespace keelview")
