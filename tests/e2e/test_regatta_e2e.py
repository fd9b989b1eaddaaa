"""An organiser sets the marks, the line and the course of a race by clicks on the map, hands the regatta out, and it is
watched elsewhere, with nothing but its own libraries and faces. What was clicked must be the race that was taken away
from its file before."""

import json
import math
import re
import subprocess
import sys
import time
import unittest
from pathlib import Path

from virtual_display import OnScreen, wait_until

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1]).resolve()
RACE = "Enoshima_R1.txt"

# Places inside the menu and the builder of distributions.
RACING, RACING_OK, DISTRIBUTION = (300, 552), (60, 465), (295, 505)
FOLDER_NAME, FIRST_RACE, SECOND_RACE, FIRST_CHOSEN, BUILD_BUTTON = (150, 33), (100, 82), (100, 97), (100, 178), (232, 404)

# The race display on a screen of 1280 x 1024: the map's drawing area begins inside a border.
MAP_SIDE, MAP_LEFT, MAP_TOP = 970, 7, 7
RACE_CLOCK, BOAT_LIST = (865, 948, 95, 20), (1015, 178, 265, 160)
FORWARD, STOP, BACK, GRAPH_VIEW, MAP_VIEW = (1038, 681), (1038, 695), (1038, 709), (1215, 696), (1215, 682)
OPEN_WATER = (200, 800)  # no boat ever comes there
SET_MARK, SET_LINE, SET_COURSE, AUTO_TRACE = (1030, 759), (1112, 759), (1199, 759), (1038, 888)
RACE_FILES, SHOW = (1155, 761), (1250, 761)  # in a copy that shows races only
GRAPH_GROUND = (255, 255, 255)
MOVES, STANDS = 200, 40  # pixels of the map that differ between two moments; a blinking cursor is no film

# The C library belongs to each system; the X library takes its cursors from the system where they are there.
SYSTEM = ("ld-linux", "libc.", "libm.", "libpthread", "libdl", "librt", "libresolv", "libXcursor", "libXfixes", "libXrender")


def home_pixel(report, lat, lon):
    """The place on the screen of a position in the map's home view, worked out from the numbers of the race alone."""
    centre_lat, centre_lon = report["scale"]["centre"]
    per_minute = MAP_SIDE / report["scale"]["area_span"] * 0.75
    up = math.radians(report["race"]["wind_direction"])
    east = (lon - centre_lon) * report["scale"]["lon_scale"] * per_minute
    south = (centre_lat - lat) * per_minute
    x = east * math.cos(up) + south * math.sin(up) + MAP_SIDE / 2
    y = south * math.cos(up) - east * math.sin(up) + MAP_SIDE / 2
    return MAP_LEFT + round(x), MAP_TOP + round(y)


class Regatta(OnScreen):
    def setUp(self):
        super().setUp()
        subprocess.run([PROJECT / "tools/lay_out_tree.sh", BUILD, self.tree, "en", "edit"], check=True, timeout=60)
        self.race_file = self.tree / "raceadmin" / RACE
        self.untouched = self.report(self.tree)
        lines = self.race_file.read_bytes().splitlines(keepends=True)
        self.race_file.write_bytes(b"".join(line for line in lines if not line.startswith((b"MK,", b"LN,", b"CRS,"))))

    def report(self, tree):
        """What the race file leads to, by the report program."""
        done = subprocess.run([BUILD / "keelview-report", tree, RACE], check=True, capture_output=True, timeout=60)
        return json.loads(done.stdout)

    def open_race(self):
        """Says yes to editing, chooses the first race, stops the film and goes to the home view."""
        question = self.answer_yes("^Keelview$")
        menu = self.window("^Keelview$", other_than=question)
        for place in (RACING, RACING_OK):
            self.display.click_in(menu, *place)
        self.window(re.escape(f"({RACE})"))
        self.display.click(*STOP)
        wait_until(self.leave_auto_trace, 30, "the position under the pointer in the title")
        self.display.xdotool("mousemove", *OPEN_WATER, "keydown", "shift", "click", 3, "keyup", "shift")

    def leave_auto_trace(self):
        """Auto trace comes by itself, two seconds after the start; until then its box does not take a click."""
        self.display.click(*AUTO_TRACE)
        x, y = OPEN_WATER
        self.display.xdotool("mousemove", x - 1, y, "sleep", 0.1, "mousemove", x, y, "sleep", 0.1)
        return self.display.window_titled(r"N [0-9:.]+'/E [0-9:.]+'$")

    def click_until_filed(self, button, positions, line, count):
        """Clicks a button of the course and positions on the map; the race file then has so many of these lines."""
        self.display.click(*button)
        for position in positions:
            self.display.click(*home_pixel(self.untouched, *position))
            time.sleep(0.2)
        if button == SET_COURSE:
            self.display.click(*button)
        wait_until(lambda: sum(filed.startswith(line) for filed in self.race_file.read_text("cp932").splitlines()) == count,
                   5, f"{count} of {line} in the file")  # fmt: skip

    def set_course(self, race):
        course, places = race["course"], {}
        for number, mark in enumerate(race["marks"], start=1):
            self.click_until_filed(SET_MARK, [mark], "MK,", number)
            places[f"MK{number}"] = mark
        for number, line in enumerate(race["lines"], start=1):
            self.click_until_filed(SET_LINE, [line[:2], line[2:]], "LN,", number)
            places[f"L{number}"] = line[:2]
        self.click_until_filed(SET_COURSE, [places[entry] for entry in course], "CRS, " + ", ".join(course), 1)

    def hand_out(self, name):
        """Leaves the race for the builder of distributions; the place where the unpacked result lies."""
        self.display.close(self.window(re.escape(f"({RACE})")))
        self.gone(r"\(")
        self.press("^Keelview$", DISTRIBUTION)
        self.press("^Create Distribution File$", FIRST_RACE, SECOND_RACE, FIRST_CHOSEN, FOLDER_NAME)
        self.display.type(name)
        self.press("^Create Distribution File$", BUILD_BUTTON)
        time.sleep(1)
        self.display.keys("Return")  # yes
        # With the program for Windows, where this machine has built it, as a zip.
        for_windows = (self.tree / "windows").exists()
        packed = self.tree / "distribution" / (name + (".zip" if for_windows else ".tar.gz"))
        wait_until(packed.is_file, 90, "a packed distribution")
        self.program.terminate()
        elsewhere = self.folder / "elsewhere"
        subprocess.run(["unzip", "-q", packed, "-d", elsewhere] if for_windows else
                       ["tar", "--extract", "--file", packed, "--one-top-level=" + str(elsewhere)], check=True)  # fmt: skip
        self.assertEqual((elsewhere / name / "keelview.exe").exists(), for_windows)
        return elsewhere / name

    def see_what_it_loads(self, place):
        maps = Path(f"/proc/{self.program.pid}/maps").read_text().splitlines()
        mapped = {line.split(maxsplit=5)[5] for line in maps if ".so" in line or line.endswith(".ttf")}
        # Where this machine has a face that the distribution brings, either of the two may be taken.
        brought = {face.name for face in (place / "fonts").iterdir()}
        foreign = [file for file in mapped if not file.startswith(str(place))
                   and not Path(file).name.startswith(SYSTEM) and Path(file).name not in brought]  # fmt: skip
        self.assertEqual(foreign, [], "libraries and faces of this machine")
        self.assertTrue(any("libQt6Core" in file for file in mapped))

    def changed_in(self, seconds, box):
        before = self.display.shot()
        time.sleep(seconds)
        return self.display.shot().changed(before, box)

    def film_runs(self):
        wait_until(lambda: self.changed_in(0.5, self.MAP) > MOVES, 20, "boats that move")

    def watch_film(self):
        self.see_sea()
        self.assertGreater(len(set(self.display.shot().inside(BOAT_LIST))), 8, "eight boats, each in its colour")
        self.film_runs()
        self.assertGreater(self.changed_in(2, RACE_CLOCK), 0, "the race clock runs")
        self.display.click(*STOP)
        wait_until(lambda: self.changed_in(0.5, self.MAP) <= STANDS, 10, "a film that stands")
        self.assertEqual(self.changed_in(2, RACE_CLOCK), 0, "the race clock stands")
        for button in (BACK, FORWARD):
            self.display.click(*button)
            self.film_runs()
        self.display.click(*GRAPH_VIEW)
        wait_until(lambda: self.display.shot().share(self.MAP, GRAPH_GROUND) > 0.2, 10, "the graphs in the map's place")
        self.display.click(*MAP_VIEW)
        self.see_sea()

    def test_from_clicks_on_the_map_to_a_film_elsewhere(self):
        # A locale of neither language.
        self.start(PROJECT / "tools/start_program.sh", self.tree, LC_ALL="fr_FR.UTF-8")
        self.open_race()
        self.set_course(self.untouched["race"])
        place = self.hand_out("Autumn Series")
        clicked = self.report(place)
        self.assertEqual(clicked["race"]["course"], self.untouched["race"]["course"])
        self.assertEqual(clicked["finish_order"], self.untouched["finish_order"])
        for boat, meant in zip(clicked["boats"], self.untouched["boats"], strict=True):
            for now, before in zip(boat["pass_times"], meant["pass_times"], strict=True):
                if before is None:
                    self.assertIsNone(now, boat["name"])
                else:
                    self.assertLessEqual(abs(now - before), 3, f"{boat['name']}: a pixel is 1.7 m")
        self.assertEqual((place / "raceadmin/ver.00").read_bytes(), b"1,1\r\n")

        self.start(place / "keelview", LC_ALL="C.UTF-8")
        self.window('^ ?"Keelview" Race Browser   .*' + re.escape(f"({RACE})"))
        self.watch_film()
        self.see_what_it_loads(place)
        self.display.click(*RACE_FILES)
        self.display.keys("Down", "Return")
        self.display.click(*SHOW)
        self.display.close(self.window(r"\(Enoshima_R2\.txt\)"))
        self.ends_well()


if __name__ == "__main__":
    unittest.main(argv=["test_regatta_e2e"])
