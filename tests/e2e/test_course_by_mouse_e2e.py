"""An organiser sets marks, a line and the course of a race by clicks on the map of the real program: what comes out
must be the race that was taken away from its file before."""

import json
import math
import re
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from virtual_display import VirtualDisplay, wait_until

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1]).resolve()
RACE = "Enoshima_R1.txt"

# The display on a screen of 1280 x 1024: the map is 970 pixels wide, its drawing area begins inside a border.
MAP_SIDE, MAP_LEFT, MAP_TOP = 970, 7, 7
HINT = (255, 255, 192)
STOP, AUTO_TRACE, RANGE_BEARING = (1038, 695), (1038, 888), (1192, 872)
SET_MARK, SET_LINE, SET_COURSE = (1030, 759), (1112, 759), (1199, 759)
READOUT = (10, 10, 100, 15)
POSITION = re.compile(r" {20}N (\d+):([\d.]+)'/E (\d+):([\d.]+)'$")


class HomeView:
    """Where positions lie on the map in its home view, worked out from the numbers of the race alone."""

    def __init__(self, report):
        self.centre_lat, self.centre_lon = report["scale"]["centre"]
        self.lon_scale = report["scale"]["lon_scale"]
        self.pixels_per_minute = MAP_SIDE / report["scale"]["area_span"] * 0.75
        self.up = math.radians(report["race"]["wind_direction"])

    def pixel(self, lat, lon):
        """The place of a position on the screen, whole pixels."""
        east = (lon - self.centre_lon) * self.lon_scale * self.pixels_per_minute
        south = (self.centre_lat - lat) * self.pixels_per_minute
        x = east * math.cos(self.up) + south * math.sin(self.up) + MAP_SIDE / 2
        y = south * math.cos(self.up) - east * math.sin(self.up) + MAP_SIDE / 2
        return MAP_LEFT + round(x), MAP_TOP + round(y)

MENU_RACING, MENU_OK = (300, 552), (60, 465)  # places inside the menu


class CourseByMouse(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = Path(folder.name) / "tree"
        subprocess.run([PROJECT / "tools/lay_out_tree.sh", BUILD, self.tree, "en"], check=True, timeout=60)
        self.race_file = self.tree / "raceadmin" / RACE
        self.untouched = self.report()
        lines = self.race_file.read_bytes().splitlines(keepends=True)
        self.race_file.write_bytes(b"".join(line for line in lines if not line.startswith((b"MK,", b"LN,", b"CRS,"))))
        (self.tree / "raceadmin/Ver.00").write_text("0,1")
        self.home = HomeView(self.untouched)

    def report(self):
        """What the race file leads to, by the report program."""
        done = subprocess.run([BUILD / "keelview-report", self.tree, RACE], check=True, capture_output=True, timeout=60)
        return json.loads(done.stdout)

    def file_holds(self, key, count):
        """The race file has this many lines with the key."""
        return sum(line.startswith(key) for line in self.race_file.read_text("cp932").splitlines()) == count

    def open_race(self):
        """Starts the program, says yes to editing, chooses the first race, stops the film and goes to the home view."""
        self.display = self.enterContext(VirtualDisplay())
        program = self.display.start([PROJECT / "tools/start_program.sh", self.tree])
        wait_until(lambda: self.display.window_titled("Keelview"), 30, "the question whether to edit")
        self.display.key("Return")
        menu = wait_until(self.menu, 30, "the menu")
        for button in (MENU_RACING, MENU_OK):
            self.display.click_in(menu, *button)

        def race_window():
            self.assertIsNone(program.poll(), "the program ended before its window stood")
            return self.display.window_titled(re.escape(f"({RACE})"))

        self.window = wait_until(race_window, 60, "a window with the race file in its title")
        self.display.click(*STOP)
        wait_until(self.leave_auto_trace, 30, "the position under the pointer in the title")
        with self.display.held("shift"):
            self.display.click(500, 500, 3)

    def menu(self):
        """The menu's window, which bears the same title as the question but is higher; None until it stands."""
        window = self.display.window_titled("^Keelview$")
        height = window and re.search(r"HEIGHT=(\d+)", self.display.xdotool("getwindowgeometry", "--shell", window))
        return window if height and int(height[1]) > 500 else None

    def leave_auto_trace(self):
        """Auto trace comes by itself, two seconds after the start; until then its box does not take a click."""
        self.display.click(*AUTO_TRACE)
        return self.position_under(500, 500)

    def position_under(self, x, y):
        """Latitude and longitude in minutes, as the title tells; None if it tells none."""
        self.display.move(x - 1, y)
        self.display.move(x, y)
        found = POSITION.search(self.display.title(self.window))
        if not found:
            return None
        numbers = [float(text) for text in found.groups()]
        return numbers[0] * 60 + numbers[1], numbers[2] * 60 + numbers[3]

    def minutes_across(self):
        """Minutes of latitude and (scaled) longitude between two points of the map, 200 pixels apart."""
        (lat1, lon1), (lat2, lon2) = self.position_under(400, 500), self.position_under(600, 500)
        return math.hypot(lat2 - lat1, (lon2 - lon1) * self.home.lon_scale)

    def button_is_yellow(self, button):
        row = next(iter(self.display.shot().rows((button[0] - 2, button[1] + 5, 1, 1))))
        return row[0] > 240 and row[1] > 240 and row[2] < 130

    def set_marks_and_lines(self, race):
        for number, mark in enumerate(race["marks"], start=1):
            self.display.click(*SET_MARK)
            wait_until(lambda: self.button_is_yellow(SET_MARK), 5, "a yellow button while its mode is on")
            self.display.click(*self.home.pixel(*mark))
            wait_until(lambda n=number: self.file_holds("MK,", n), 5, f"mark {number} in the file")
        for number, (lat1, lon1, lat2, lon2) in enumerate(race["lines"], start=1):
            self.display.click(*SET_LINE)
            self.display.click(*self.home.pixel(lat1, lon1))
            self.display.click(*self.home.pixel(lat2, lon2))
            wait_until(lambda n=number: self.file_holds("LN,", n), 5, f"line {number} in the file")

    def set_course(self, race):
        self.display.click(*SET_COURSE)
        places = {f"MK{i}": mark for i, mark in enumerate(race["marks"], start=1)}
        places |= {f"L{i}": line[:2] for i, line in enumerate(race["lines"], start=1)}
        for entry in race["course"]:
            self.display.click(*self.home.pixel(*places[entry]))
            time.sleep(0.2)
        self.display.click(*SET_COURSE)
        course = "CRS, " + ", ".join(race["course"])
        wait_until(lambda: self.file_holds(course, 1), 5, "the whole course in the file")

    def compare_leg_times(self, race):
        clicked = self.report()
        self.assertEqual(clicked["race"]["course"], race["course"])
        for boat, meant in zip(clicked["boats"], self.untouched["boats"]):
            for time_now, time_before in zip(boat["pass_times"], meant["pass_times"]):
                self.assertLessEqual(abs(time_now - time_before), 3, f"{boat['name']}: a pixel is 1.7 m")
        self.assertEqual(clicked["finish_order"], self.untouched["finish_order"])

    def zoom_in_and_home(self):
        at_home, home_scale = self.position_under(500, 300), self.minutes_across()
        for _ in range(3):
            self.display.click(500, 500)
        self.assertAlmostEqual(self.minutes_across() * 1.4**3, home_scale, delta=0.01)
        for _ in range(3):
            self.display.click(500, 500, 3)
        self.assertEqual(self.position_under(500, 300), at_home)

    def measure(self, race):
        self.display.click(*RANGE_BEARING)
        from_mark, to_mark = (self.home.pixel(*mark) for mark in race["marks"])
        self.display.click(*from_mark)
        before = self.display.shot()
        self.display.move(*to_mark)
        shot = self.display.shot()
        self.assertGreater(shot.share(READOUT, HINT), 0.5, "range and bearing in the corner of the map")
        middle = ((from_mark[0] + to_mark[0]) // 2 - 5, (from_mark[1] + to_mark[1]) // 2 - 5, 11, 11)
        self.assertGreater(shot.changed(before, middle), 5, "the rubber band between the two marks")

    def test_course_set_by_clicks(self):
        race = self.untouched["race"]
        self.open_race()
        self.set_marks_and_lines(race)
        self.set_course(race)
        self.compare_leg_times(race)
        self.zoom_in_and_home()
        self.measure(race)


if __name__ == "__main__":
    unittest.main(argv=["test_course_by_mouse_e2e"])
