#!/usr/bin/env python3
"""Makes the file that a race is put into to be a page: make_page_file.py PROGRAM.wasm OUT.html

Takes web/page.html and fills its slots with the script that unpacks, and with the block that it unpacks: the style
sheet, all other modules of the script as one, the pictures and the program. The slots {{title}} and {{race}} stay. The
page's policy lets run what has these hashes, and nothing else.
"""

import base64
import hashlib
import re
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
WEB = ROOT / "web"
# In the order in which they need each other.
BOOT = ["blocks", "boot"]
MODULES = ["memory", "letters", "controls", "system", "person", "desk", "start"]
PICTURES = ["blue_p.png", "seven.png", "logo_en.png", "logo_ja.png"]


def script(modules):
    """The modules as one text, without what only a reader needs."""
    lines = []
    for module in modules:
        text = (WEB / f"{module}.js").read_text(encoding="utf-8")
        text = re.sub(r"/\*\*.*?\*/", "", text, flags=re.DOTALL)
        for line in text.splitlines():
            line = line.strip()
            if line and not line.startswith(("//", "import ")):
                lines.append(line.removeprefix("export "))
    return "\n".join(lines)


def style():
    text = (WEB / "style.css").read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)
    return "\n".join(line.strip() for line in text.splitlines() if line.strip())


def base128(content):
    """As src/base/html.h has it."""
    bits = int.from_bytes(content, "big") << -len(content) * 8 % 7
    digits = bytearray()
    count = (len(content) * 8 + 6) // 7
    for at in range(0, count, 4096):  # the high ones first; not one by one, as each takes as long as its number is
        run = min(4096, count - at)
        part = bits >> 7 * (count - at - run) & (1 << 7 * run) - 1
        digits += bytes(part >> 7 * k & 127 for k in reversed(range(run)))
    rare, text, at = b"\0\r<", [], 0
    while at < count:
        sign = digits[at]
        at += 1
        if sign in rare and at == count:
            sign += 128
        elif sign in rare:
            sign = 256 + 128 * rare.index(sign) + digits[at]
            at += 1
        text.append(chr(sign))
    return "".join(text)


def block(files):
    """The files as one text. Zopfli gives the same bytes each time and fewer of them than others."""
    content = b"".join(struct.pack("<II", len(name), len(bytes_)) + name.encode() + bytes_ for name, bytes_ in files)
    with tempfile.NamedTemporaryFile() as file:
        file.write(content)
        file.flush()
        packed = subprocess.run(["zopfli", "-c", file.name], check=True, capture_output=True).stdout
    return base128(packed)


def hash_of(text):
    return "sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode()


def main():
    program, out = map(Path, sys.argv[1:])
    boot, main_script = script(BOOT), script(MODULES)
    files = [("style.css", style().encode()), ("script.js", main_script.encode())]
    files += [(name, (WEB / "pictures" / name).read_bytes()) for name in PICTURES]
    files.append(("keelview.wasm", program.read_bytes()))
    slots = {
        "boot-hash": hash_of(boot),
        "script-hash": hash_of(main_script),
        "style-hash": hash_of(style()),
        "boot": boot,
        "program": block(files),
    }
    page = re.sub(r"\{\{(.*?)\}\}", lambda slot: slots.get(slot[1], slot[0]),
                  (WEB / "page.html").read_text(encoding="utf-8"))
    out.write_text(page, encoding="utf-8", newline="\n")
    for name, content in files:
        print(f"{name}: {len(content)} bytes")
    print(f"{out}: {out.stat().st_size} bytes")


if __name__ == "__main__":
    main()
