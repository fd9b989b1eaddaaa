#!/usr/bin/env python3
"""Makes the file that a race is put into to be a page: make_page_file.py PROGRAM.wasm OUT.html

Takes web/page.html and fills its slots with the style sheet, the modules of the script as one, the program and its
pictures. The slots {{title}} and {{race}} stay. The page's policy lets run what has these hashes, and nothing else.
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
MODULES = ["memory", "letters", "controls", "system", "person", "desk", "start"]
PICTURES = ["blue_p.png", "seven.png", "logo_en.png", "logo_ja.png"]


def script():
    """All modules as one text, without what only a reader needs."""
    lines = []
    for module in MODULES:
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


def pictures():
    """Name and content of each behind their sizes, 4 bytes each, the low one first."""
    packed = b""
    for name in PICTURES:
        content = (WEB / "pictures" / name).read_bytes()
        packed += struct.pack("<II", len(name), len(content)) + name.encode() + content
    return packed


def block(content):
    """Packed by zopfli, which gives the same bytes each time and fewer of them than others."""
    with tempfile.NamedTemporaryFile() as file:
        file.write(content)
        file.flush()
        packed = subprocess.run(["zopfli", "-c", file.name], check=True, capture_output=True).stdout
    return base64.b85encode(packed).decode().replace("<", ",")


def hash_of(text):
    return "sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode()


def main():
    program, out = map(Path, sys.argv[1:])
    slots = {
        "script-hash": hash_of(script()),
        "style-hash": hash_of(style()),
        "style": style(),
        "script": script(),
        "program": block(program.read_bytes()),
        "pictures": block(pictures()),
    }
    page = re.sub(r"\{\{(.*?)\}\}", lambda slot: slots.get(slot[1], slot[0]),
                  (WEB / "page.html").read_text(encoding="utf-8"))
    out.write_text(page, encoding="utf-8", newline="\n")
    for name, text in slots.items():
        if not name.endswith("hash"):
            print(f"{name}: {len(text)} bytes")
    print(f"{out}: {len(page)} bytes")


if __name__ == "__main__":
    main()
