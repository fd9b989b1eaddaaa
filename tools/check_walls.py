#!/usr/bin/env python3
"""Keeps the walls of the house. The floors are kept by the compiler: each folder of src is a library of its own that
sees only the folders below it.

    check_walls.py [--root FOLDER]    check FOLDER/src (default: the project that holds this script)
    check_walls.py --self-test        show that the check finds what it is there for

Fails on a toolkit header where the browser or the report must build without a toolkit, on a look into the toolkit's own
room from outside, and on a circle of files. Every message begins with file:line.
"""

import re
import sys
import tempfile
from pathlib import Path

TOOLKIT_ROOM = "display/qt/"
# Rooms of the desktop alone. All others are shared with the browser and the report.
DESKTOP = (TOOLKIT_ROOM, "shell/", "editor/", "distribution/", "import/")
TOOLKIT_HEADER = re.compile(r"Q[A-Z]\w*|Qt\w*/.*|q[a-z]\w*\.h|private/q\w+\.h")
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')


def includes_of(file):
    """The (line number, name) of every include of a file."""
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), start=1):
        if found := INCLUDE.match(line):
            yield number, found.group(1)


def complaint_about(path, name):
    """What is wrong with path including name, or None."""
    if TOOLKIT_HEADER.fullmatch(name) and not path.startswith(DESKTOP):
        return f"toolkit header {name} in a room that builds without it"
    if name.startswith(TOOLKIT_ROOM) and not path.startswith(TOOLKIT_ROOM):
        return f"{name} is the toolkit's own room"
    return None


def circles(graph):
    """A list of files for each include that closes a circle."""
    found, done = [], set()

    def walk(path, way):
        if path in way:
            found.append(way[way.index(path):] + [path])
        elif path not in done:
            for target in sorted(graph.get(path, ())):
                walk(target, way + [path])
            done.add(path)

    for path in sorted(graph):
        walk(path, [])
    return found


def check(root):
    """All complaints about the sources below root/src, and the number of files looked at."""
    source, complaints, graph = root / "src", [], {}
    for file in sorted(source.rglob("*")):
        if file.suffix not in {".h", ".cpp"}:
            continue
        path = file.relative_to(source).as_posix()
        graph[path] = set()
        for line, name in includes_of(file):
            if wrong := complaint_about(path, name):
                complaints.append(f"src/{path}:{line}: {wrong}")
            if (source / name).is_file():
                graph[path].add(name)
    complaints += [f"src/{way[0]}:1: a circle of files: {' -> '.join(way)}" for way in circles(graph)]
    return complaints, len(graph)


def self_test():
    """Small houses with one fault each, and one without."""
    cases = {
        "toolkit header QPainter": {"map/chart.cpp": "\n#include <QPainter>"},
        "toolkit header QtGui/QPainter": {"analysis/a.cpp": "#include <QtGui/QPainter>"},
        "toolkit header qpainter.h": {"display/a.cpp": '#include "qpainter.h"'},
        "toolkit's own room": {"shell/a.cpp": '#include "display/qt/plates.h"'},
        "a circle of files: base/a.h -> base/b.h -> base/a.h": {
            "base/a.h": '#include "base/b.h"', "base/b.h": '#include "base/a.h"'},
        "": {"shell/a.cpp": "#include <QWidget>", "display/qt/a.h": "#include <QWidget>",
             "map/chart.h": '#include "base/a.h"\n// #include <QPainter>', "base/a.h": "#include <vector>"},
    }
    for wanted, files in cases.items():
        with tempfile.TemporaryDirectory() as folder:
            for path, text in files.items():
                (Path(folder) / "src" / path).parent.mkdir(parents=True, exist_ok=True)
                (Path(folder) / "src" / path).write_text(text, encoding="utf-8")
            found = check(Path(folder))[0]
            assert len(found) == bool(wanted) and all(wanted in complaint for complaint in found), (wanted, found)


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    root = Path(sys.argv[2]) if sys.argv[1:2] == ["--root"] else Path(__file__).resolve().parent.parent
    complaints, count = check(root)
    print("\n".join(complaints + [f"{count} files, {len(complaints)} complaints"]))
    return 1 if complaints or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
