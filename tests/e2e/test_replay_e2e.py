"""The real program in a real X window, from the laid-out tree to its end, watched by the pixels and led by the
mouse, in both languages."""

import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from virtual_display import VirtualDisplay, wait_until

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1]).resolve()

# The display on a screen of 1280 x 1024.
MAP = (5, 5, 970, 970)
RACE_CLOCK = (MAP[0] + 970 - 110, MAP[1] + 970 - 27, 95, 20)
BOAT_LIST = (1015, 178, 265, 160)
SEA, GRAPH_GROUND = (0, 255, 255), (224, 224, 224)
# Controls of the control panel, whose corner is at (1015, 646): somewhere in the middle of each.
FORWARD, STOP, BACK = (1038, 681), (1038, 695), (1038, 709)
GRAPH_VIEW, MAP_VIEW = (1215, 696), (1215, 682)
EXIT = (1231, 931)

MOVES, STANDS = 200, 40  # pixels of the map that differ between two moments; a blinking cursor is no film


class Replay(unittest.TestCase):
    def open_race(self, language, **environment):
        """Lays a tree out, starts the program in it and waits for the race: (display, window, program)."""
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        tree = Path(folder.name) / "tree"
        subprocess.run([PROJECT / "tools/lay_out_tree.sh", BUILD, tree, language], check=True, timeout=60)
        display = self.enterContext(VirtualDisplay())
        program = display.start([PROJECT / "tools/start_program.sh", tree], **environment)

        def race_window():
            self.assertIsNone(program.poll(), "the program ended before its window stood")
            return display.window_titled(r"\(Enoshima_R[12]\.txt\)")

        window = wait_until(race_window, 60, "a window with the race file in its title")
        wait_until(lambda: display.shot().share(MAP, SEA) > 0.3, 30, "a map with the sea on it")
        return display, window, program

    def changed_in(self, display, seconds, box):
        before = display.shot()
        time.sleep(seconds)
        return display.shot().changed(before, box)

    def test_race_in_english(self):
        # A locale that the program does not speak: the start script has to give it one that it does.
        display, window, program = self.open_race("en", LANG="fr_FR.UTF-8")
        self.assertRegex(display.title(window), r'^ ?"Keelview" Race Browser   .*\(Enoshima_R1\.txt\)$')

        shot = display.shot()
        self.assertGreater(shot.colours(BOAT_LIST), 8, "eight boats, each in its colour")
        wait_until(lambda: self.changed_in(display, 0.5, MAP) > MOVES, 20, "boats that move")
        self.assertGreater(self.changed_in(display, 2, RACE_CLOCK), 0, "the race clock runs")

        display.click(*STOP)
        wait_until(lambda: self.changed_in(display, 0.5, MAP) <= STANDS, 10, "a film that stands")
        self.assertLessEqual(self.changed_in(display, 2, MAP), STANDS, "the film still stands")
        self.assertEqual(self.changed_in(display, 1, RACE_CLOCK), 0, "the race clock stands")

        for button in (BACK, FORWARD):
            display.click(*button)
            wait_until(lambda: self.changed_in(display, 0.5, MAP) > MOVES, 10, "the film runs again")

        display.click(*GRAPH_VIEW)
        wait_until(lambda: display.shot().share(MAP, GRAPH_GROUND) > 0.2, 10, "the graphs in the map's place")
        display.click(*MAP_VIEW)
        wait_until(lambda: display.shot().share(MAP, SEA) > 0.3, 10, "the map again")

        display.close(window)
        self.assertEqual(program.wait(timeout=20), 0)

    def test_race_in_japanese(self):
        display, window, program = self.open_race("ja", LANG="ja_JP.UTF-8")
        self.assertRegex(display.title(window), r"^キールビュー   .*\(Enoshima_R2\.txt\)$")
        wait_until(lambda: self.changed_in(display, 0.5, MAP) > MOVES, 20, "boats that move")
        display.click(*EXIT)
        self.assertEqual(program.wait(timeout=20), 0)


if __name__ == "__main__":
    unittest.main(argv=["test_replay_e2e"])
