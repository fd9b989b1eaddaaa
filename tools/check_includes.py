#!/usr/bin/env python3
"""Keeps the floors of the house: who may include whom.

    check_includes.py [--root FOLDER]     check FOLDER/src (default: the project that holds this script)
    check_includes.py --self-test         show that the check finds what it is there for

Fails on an include that points to a higher floor, on a circle of files, on a toolkit header outside
src/display/qt/, on a display header in a room that must build without a window, and on a file of ours that an
include does not find. Every message begins with file:line. docs/architecture.md tells why the floors are there.
"""

import argparse
import re
import sys
import tempfile
import unittest
from pathlib import Path, PurePosixPath

# The floor of a file: the first pattern that its path below src matches from the start.
FLOORS = [
    (r"base/", 1),
    (r"racedata/", 2),
    (r"analysis/(mark_rounding|mark_rounding_walk|leg_statistics|wind_at|track_at|race_numbers)\.", 3),
    (r"map/(view|nearest_entry)\.", 3),
    (r"display/race_disp", 4),
    (r"display/", 3),
    (r"session/(app_state|held_keys|save_race)\.", 4),
    (r"map/(replay_frame|auto_trace)", 6),
    (r"session/replay_clock", 6),
    (r"session/race_session", 7),
    (r"map/(map_interaction|course_setting|measuring|boat_list)\.", 8),
    (r"shell/(control_panel|hints|hint_table|time_setting|wind_field|screen_capture|exit_button)", 8),
    (r"analysis/(time_bar_mouse|wind_panel_mouse|graph_cursors|wind_entry|data_view)\.", 8),
    (r"map/overview_mouse\.", 8),
    (r"shell/view_switch\.", 8),
    (r"analysis/", 5),
    (r"map/", 5),
    (r"(shell|editor|session|report)/", 9),
]

# Rooms that build into the library without a window, or into a program without one: never a display header.
WINDOWLESS = re.compile(
    r"base/|racedata/|report/|map/(view|nearest_entry)\.|analysis/(mark_rounding|mark_rounding_walk|leg_statistics|wind_at|track_at|race_numbers)\."
)
TOOLKIT_ROOM = "display/qt/"
TOOLKIT_HEADER = re.compile(r"Q[A-Z]\w*|Qt\w*/.*|q[a-z]\w*\.h|private/q\w+\.h")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def floor_of(path):
    """The floor of a path below src, or None if no room has that name."""
    for pattern, floor in FLOORS:
        if re.match(pattern, path):
            return floor
    return None


def includes_of(file):
    """The (line number, bracket, name) of every include of a file."""
    lines = file.read_text(encoding="utf-8").splitlines()
    for number, line in enumerate(lines, start=1):
        if found := INCLUDE.match(line):
            yield number, found.group(1), found.group(2)


def resolve(source, path, name):
    """The path below src that an include in quotes names, or None: from the including file, then from src."""
    for candidate in (PurePosixPath(path).parent / name, PurePosixPath(name)):
        file = (source / candidate).resolve()
        if file.is_file() and file.is_relative_to(source):
            return file.relative_to(source).as_posix()
    return None


def complaint_about(path, target):
    """What is wrong with path including target, or None."""
    if floor_of(target) > floor_of(path):
        return f"floor {floor_of(path)} includes {target} of floor {floor_of(target)}"
    if WINDOWLESS.match(path) and target.startswith("display/"):
        return f"a room without a window includes {target}"
    if path.startswith("display/") and floor_of(path) == 3 and not target.startswith(("base/", "display/")):
        return f"the drawing layer includes {target}: it may know base alone"
    if target.startswith(TOOLKIT_ROOM) and not path.startswith(TOOLKIT_ROOM):
        return f"{target} is the toolkit's own room"
    return None


def check_file(source, path, complaints):
    """Complains about one file's includes; gives {included path: line number} of ours."""
    edges = {}
    if floor_of(path) is None:
        complaints.append(f"src/{path}:1: no floor is settled for this room")
        return edges
    for line, bracket, name in includes_of(source / path):
        place = f"src/{path}:{line}:"
        if TOOLKIT_HEADER.fullmatch(name) and not path.startswith(TOOLKIT_ROOM):
            complaints.append(f"{place} toolkit header {name} outside src/{TOOLKIT_ROOM}")
            continue
        if bracket == "<":
            continue
        target = resolve(source, path, name)
        if target is None:
            complaints.append(f'{place} "{name}" is no file of ours')
            continue
        if floor_of(target) is not None and (wrong := complaint_about(path, target)):
            complaints.append(f"{place} {wrong}")
        edges.setdefault(target, line)
    return edges


def complain_about_circles(graph, complaints):
    """One complaint for each include that closes a circle; the walk keeps its own stack."""
    state = {}
    for start in sorted(graph):
        if start in state:
            continue
        state[start] = "open"
        walk = [(start, iter(sorted(graph[start].items())))]
        while walk:
            path, rest = walk[-1]
            target, line = next(rest, (None, 0))
            if target is None:
                state[path] = "done"
                walk.pop()
            elif state.get(target) == "open":
                names = [step for step, _ in walk]
                circle = " -> ".join(names[names.index(target):] + [target])
                complaints.append(f"src/{path}:{line}: a circle of files: {circle}")
            elif target not in state:
                state[target] = "open"
                walk.append((target, iter(sorted(graph.get(target, {}).items()))))


def check(root):
    """All complaints about the sources below root/src, and the number of files looked at."""
    source = (root / "src").resolve()
    complaints, graph = [], {}
    for file in sorted(source.rglob("*")):
        if file.suffix in {".h", ".cpp"}:
            path = file.relative_to(source).as_posix()
            graph[path] = check_file(source, path, complaints)
    complain_about_circles(graph, complaints)
    return complaints, len(graph)


class SelfTest(unittest.TestCase):
    """Small houses with one fault each, and one without."""

    def complaints(self, files):
        with tempfile.TemporaryDirectory() as folder:
            for path, text in files.items():
                file = Path(folder) / "src" / path
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text, encoding="utf-8")
            return check(Path(folder))[0]

    def test_finds_each_fault_at_its_line(self):
        chart, view = {"map/chart.h": ""}, {"map/view.h": ""}
        canvas, race = {"display/canvas.h": ""}, {"racedata/race.h": ""}
        cases = {
            "upward": ({"base/a.h": '\n#include "racedata/race.h"\n'} | race, "src/base/a.h:2: floor 1 includes"),
            "upward between pictures": (
                {"map/chart.h": '#include "map/auto_trace.h"', "map/auto_trace.h": ""},
                "src/map/chart.h:1: floor 5 includes map/auto_trace.h of floor 6",
            ),
            "numbers that draw": ({"map/view.cpp": '#include "display/canvas.h"'} | canvas, "without a window"),
            "report that draws": ({"report/main.cpp": '#include "display/canvas.h"'} | canvas, "without a window"),
            "surface that knows a race": ({"display/canvas.cpp": '#include "racedata/race.h"'} | race, "base alone"),
            "toolkit in a picture": ({"map/chart.cpp": "#include <QPainter>"}, "toolkit header QPainter outside"),
            "toolkit by folder": ({"map/chart.cpp": "#include <QtGui/QPainter>"}, "toolkit header"),
            "toolkit in small letters": ({"map/chart.cpp": '#include "qpainter.h"'}, "toolkit header"),
            "toolkit's own room": (
                {"map/chart.cpp": '#include "display/qt/painter.h"', "display/qt/painter.h": "#include <QPainter>"},
                "toolkit's own room",
            ),
            "circle of two": (
                {"map/chart.h": '#include "map/boat.h"', "map/boat.h": '#include "map/chart.h"'},
                "a circle of files: map/boat.h -> map/chart.h -> map/boat.h",
            ),
            "circle of three": (
                {"base/a.h": '#include "b.h"', "base/b.h": '#include "c.h"', "base/c.h": '#include "a.h"'},
                "src/base/c.h:1: a circle of files: base/a.h -> base/b.h -> base/c.h -> base/a.h",
            ),
            "itself": ({"base/a.h": '#include "base/a.h"'}, "a circle of files: base/a.h -> base/a.h"),
            "no such file": ({"base/a.h": '#include "base/gone.h"'}, "is no file of ours"),
            "no such room": ({"cellar/a.h": ""}, "no floor is settled"),
        }
        for name, (files, wanted) in cases.items():
            with self.subTest(name):
                found = self.complaints(files)
                self.assertEqual(len(found), 1, found)
                self.assertIn(wanted, found[0])
        self.assertEqual(self.complaints(chart | view | canvas | race), [])

    def test_leaves_a_sound_house_alone(self):
        sound = {
            "base/a.h": "#include <vector>\n",
            "racedata/race.h": '#include "base/a.h"\n#include "racedata/limits.h"\n',
            "racedata/limits.h": "",
            "display/canvas.h": '#include "base/a.h"\n',
            "display/qt/canvas.cpp": '#include <QPainter>\n#include "display/canvas.h"\n',
            "session/app_state.h": '#include "racedata/race.h"\n#include "map/view.h"\n',
            "map/view.h": "",
            "map/chart.h": '#include "session/app_state.h"\n#include "display/canvas.h"\n',
            "session/main.cpp": '#include "map/chart.h"\n// #include <QPainter>\n',
        }
        self.assertEqual(self.complaints(sound), [])


def main():
    parser = argparse.ArgumentParser(description="checks who includes whom below src")
    parser.add_argument("--root", type=Path, default=Path(__file__).resolve().parent.parent)
    parser.add_argument("--self-test", action="store_true")
    options = parser.parse_args()
    if options.self_test:
        return 0 if unittest.main(argv=[sys.argv[0]], exit=False).result.wasSuccessful() else 1
    complaints, count = check(options.root)
    print("\n".join(complaints), file=sys.stderr)
    print(f"{count} files, {len(complaints)} complaints")
    return 1 if complaints or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
