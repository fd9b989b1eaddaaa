"""The page of a race in a browser: its numbers beside keelview-report's, its pictures beside the desktop's, and a person
at it. test_page.py BROWSER BUILD PROGRAM [TEST...]: BROWSER is chromium or firefox, BUILD holds keelview-report,
view_pictures and the demo races, PROGRAM is the file that a race is put into."""

import base64
import json
import math
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from browser import browser_named

Page = browser_named(sys.argv[1])
BUILD, PROGRAM = map(Path, sys.argv[2:4])
ROOT = Path(__file__).resolve().parents[2]
NASTY = "</script><img src=x onerror=document.title='caught'>"
NO_TEXTS = "CanvasRenderingContext2D.prototype.fillText = () => {}"
WIDE = (1280, 1024)
WIDER = (1920, 1080)
PHONE = (390, 844)


def leaves(value, place=""):
    """All that stands in a JSON value, each with its place."""
    if not isinstance(value, (dict, list)):
        return [(place, value)]
    members = value.items() if isinstance(value, dict) else enumerate(value)
    return [(place, len(value))] + [leaf for name, member in members for leaf in leaves(member, f"{place}/{name}")]


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.tree = cls.scratch / "tree"
        shutil.copytree(BUILD / "demo", cls.tree)
        (cls.tree / "coastline").symlink_to(ROOT / "coastline")
        (cls.tree / PROGRAM.name).symlink_to(PROGRAM.resolve())
        cls.demo = cls.make_page("Enoshima_R1.txt", "enoshima_r2.TXT", "--en")

    @classmethod
    def report(cls, *arguments):
        return subprocess.run([BUILD / "keelview-report", *map(str, arguments)], check=True, capture_output=True,
                              text=True, encoding="utf-8", timeout=60).stdout

    @classmethod
    def make_page(cls, *races, name="page.html"):
        cls.report("--page", cls.scratch / name, cls.tree, *races)
        return cls.scratch / name

    def same_numbers(self, ours, theirs):
        ours, theirs = leaves(json.loads(ours)), leaves(json.loads(theirs))
        self.assertEqual(len(ours), len(theirs))
        numbers = 0
        for (place, a), (other, b) in zip(ours, theirs):
            both = isinstance(a, (int, float)) and isinstance(b, (int, float))
            numbers += both
            if both:
                self.assertTrue(math.isclose(a, b, rel_tol=1e-12, abs_tol=1e-300), f"{place}: {a}, not {b}")
            else:
                self.assertEqual((place, a), (other, b))
        self.assertGreater(numbers, 250)

    def test_the_numbers_of_a_page_are_those_of_the_report(self):
        moments = ["-60", "0", "333.3", "1200"]
        asked = [word for moment in moments for word in ("--at", moment)]
        for boats in range(3, 13):
            subprocess.run([BUILD / "tools/make_demo", self.scratch / f"fleet{boats}", str(boats)], check=True)
            for folder in ("raceadmin", "gpsdat", "winddat"):
                for file in (self.scratch / f"fleet{boats}" / folder).glob("*"):
                    shutil.copy(file, self.tree / folder / f"fleet{boats}_{file.name}")
            (race,) = (self.tree / "raceadmin").glob(f"fleet{boats}_*")
            text = race.read_bytes()
            for folder in ("gpsdat", "winddat"):
                for file in (self.scratch / f"fleet{boats}" / folder).glob("*"):
                    text = text.replace(file.name.encode(), f"fleet{boats}_{file.name}".encode())
            race.write_bytes(text)
        races = ["Enoshima_R1.txt", "enoshima_r2.TXT", *(file.name for file in (self.tree / "raceadmin").glob("fleet*"))]
        self.assertEqual(len(races), 12)
        with Page(self.make_page(*races, name="all.html"), *WIDE) as page:
            for race in races:
                with self.subTest(race):
                    page.run("location.hash = 'race=' + encodeURIComponent(arguments[0])", race)
                    page.wait(lambda: page.link()["race"] == race)
                    self.same_numbers(page.report(",".join(moments)), self.report(self.tree, race, *asked))

    def test_the_same_race_gives_the_same_bytes_and_few_of_them(self):
        again = self.make_page("Enoshima_R1.txt", "enoshima_r2.TXT", "--en", name="again.html")
        self.assertEqual(self.demo.read_bytes(), again.read_bytes())
        fixes = sum(boat["points"] for race in ("Enoshima_R1.txt", "enoshima_r2.TXT")
                    for boat in json.loads(self.report(self.tree, race))["boats"])
        print(f"page: {PROGRAM.stat().st_size} bytes without a race, "
              f"{(self.demo.stat().st_size - PROGRAM.stat().st_size) / fixes:.2f} bytes a fix with the rest of the races")

    def test_a_person_at_a_wide_page(self):
        for size in (WIDE, WIDER):
            with self.subTest(size), Page(self.demo, *size) as page:
                self.assertFalse(page.run("return document.documentElement.classList.contains('narrow')"))
                self.assertEqual(page.is_seen("Picture16"), size == WIDER)
                began = page.time()
                page.wait(lambda: page.time() > began + 1)  # it plays by itself
                page.key(" ", 32)
                stood = page.time()
                time.sleep(0.3)
                self.assertEqual(page.time(), stood)
                page.click("PicTimeBar", 0.5, 0.5)  # the middle of the race
                self.assertGreater(page.time(), 1000)
                page.wait(lambda: page.run("return keelview.controls.named('Check5').works.checked"))  # it follows the boats
                page.click("Check5", 0.1)
                zoom = float(page.link()["zoom"])
                page.turn_wheel("Picture1", -4)
                page.wait(lambda: float(page.link()["zoom"]) > zoom * 1.9)
                x, y = (float(page.link()[key]) for key in "xy")
                begin, end = page.place("Picture1", 0.5, 0.5), page.place("Picture1", 0.6, 0.7)
                page.mouse("down", begin)
                page.mouse("move", ((begin[0] + end[0]) / 2, (begin[1] + end[1]) / 2))
                page.mouse("move", end)
                page.mouse("up", end)
                self.assertNotEqual((x, y), tuple(float(page.link()[key]) for key in "xy"))
                page.click("Bnam(1)", 0.05)
                self.assertEqual(page.link()["boats"], "1,3,4,5,6,7,8")
                page.click("Option10", 0.1)
                self.assertTrue(page.is_seen("GPIC") and not page.is_seen("Picture1"))
                page.click("Option11", 0.1)
                self.assertTrue(page.is_seen("PicTime") and not page.is_seen("GPIC"))
                before = page.link()
                page.click("page-language")
                self.assertEqual(page.words("Option10"), "ｸﾞﾗﾌ")
                self.assertEqual(page.link(), before)
                page.click("page-language")
                self.assertEqual(page.words("Option10"), "Graph")
                self.assertEqual(page.complaints(), [])
                self.assertEqual(page.requests(), [])

    def test_a_person_at_a_phone(self):
        with Page(self.demo, *PHONE, touch=True) as page:
            left, top = page.place("Picture1", 0, 0)
            right, bottom = page.place("Picture1", 1, 1)
            self.assertAlmostEqual(left, 0, delta=1)
            self.assertAlmostEqual(right, 390, delta=1)
            self.assertGreaterEqual(page.place("PicTimeBar", 0, 0)[1], bottom - 1)
            page.wait(lambda: page.run("return keelview.controls.named('Check5').works.checked"))
            page.click("page-more")
            page.run("keelview.controls.named('Check5').works.click()")
            zoom = float(page.link()["zoom"])
            middle = ((left + right) / 2, (top + bottom) / 2)
            pinch = lambda apart: [(middle[0] - apart, middle[1]), (middle[0] + apart, middle[1])]
            page.touch("start", *pinch(20))
            for apart in (30, 40, 60, 80):
                page.touch("move", *pinch(apart))
            page.touch("end")
            page.wait(lambda: float(page.link()["zoom"]) > zoom * 2)
            x = float(page.link()["x"])
            page.touch("start", middle)
            for step in (10, 30, 60):
                page.touch("move", (middle[0] + step, middle[1]))
            page.touch("end")
            page.wait(lambda: float(page.link()["x"]) != x)
            at = page.place("PicTimeBar", 0.6, 0.5)
            page.touch("start", at)
            page.touch("end")
            page.wait(lambda: page.time() > 1500)
            for tab, seen in (("graphs", "GPIC"), ("tables", "PicTime"), ("side", "Picture16"), ("boats", "Picture8")):
                page.click(f"page-{tab}")
                page.wait(lambda: page.is_seen(seen))
            self.assertEqual(page.complaints(), [])
            self.assertEqual(page.requests(), [])

    def test_a_link_opens_at_its_moment(self):
        with Page(self.demo, *WIDE, link="race=enoshima_r2.TXT&t=600&boats=1,3&view=map&x=8368.5&y=2117.25&zoom=2") as page:
            page.key(" ", 32)
            shown = page.link()
            self.assertEqual(shown["race"], "enoshima_r2.TXT")
            self.assertAlmostEqual(float(shown["t"]), 600, delta=30)
            self.assertEqual([shown[key] for key in ("boats", "view", "x", "y", "zoom")],
                             ["1,3", "map", "8368.5", "2117.25", "2"])
            page.run("location.hash = 't=700&view=graph'")
            page.wait(lambda: page.link()["view"] == "graph")

    def test_names_are_never_markup(self):
        race = (self.tree / "raceadmin" / "Enoshima_R1.txt").read_bytes()
        lines = race.decode("cp932").replace("\r\n", "\n").split("\n")
        names = [NASTY, "\"'`&amp;", "x" * 10000]
        for i, line in enumerate(lines):
            if line.startswith("T1,"):
                lines[i] = "T1, " + NASTY
            elif line.startswith("BN,") and names:
                lines[i] = ",".join(line.split(",")[:2]) + ", " + names.pop(0)
        (self.tree / "raceadmin" / "nasty.txt").write_bytes("\r\n".join(lines).encode("utf-8-sig"))
        file = self.make_page("nasty.txt", name="nasty.html")
        self.assertEqual(file.read_text(encoding="utf-8").count("<script"), 3)
        with Page(file, *WIDE) as page:
            self.assertIn(NASTY, page.words("Bnam(0)"))
            self.assertIn("&amp;", page.words("Bnam(1)"))
            self.assertEqual(page.run("return document.querySelectorAll('img, iframe, object, link').length"), 0)
            self.assertIn(NASTY, page.run("return document.title"))
            self.assertEqual(json.loads(page.report())["boats"][2]["name"],
                             json.loads(self.report(self.tree, "nasty.txt"))["boats"][2]["name"])
            self.assertEqual(page.complaints(), [])
            self.assertEqual(page.requests(), [])

    def test_documents_are_kept_not_run(self):
        downloads = self.scratch / "downloads"
        downloads.mkdir()
        with Page(self.demo, *WIDE, downloads=downloads) as page:
            page.click("page-documents")
            page.run("[...document.querySelectorAll('dialog .link')].find((e) => /sailing/.test(e.textContent)).click()")
            kept = page.wait(lambda: [file for file in downloads.glob("*.txt") if file.stat().st_size > 0])
            self.assertEqual(kept[0].read_bytes(), (self.tree / "attachment" / "sailing_instructions.txt").read_bytes())

    def test_pictures_are_the_desktops(self):
        for view in ("map", "graph", "data"):
            with self.subTest(view):
                link = f"t=900&view={view}" + ("&x=8368.9&y=2117.6&zoom=1.5" if view == "map" else "")
                wanted = self.scratch / f"{view}.png"
                size = subprocess.run([BUILD / "tools/view_pictures", self.tree, "Enoshima_R1.txt", link, wanted], check=True,
                                      capture_output=True, text=True).stdout
                width, height = map(int, size.split())
                one = self.make_page("Enoshima_R1.txt", "--en", name="one.html")
                seen, bare = (self.picture(one, (width, height + 28), view, link, before) for before in ("", NO_TEXTS))
                share = self.share_of_others(wanted, seen, bare)
                print(f"{view}: {100 * share:.3f} % of the pixels differ")
                self.assertLess(share, 0.01)

    def picture(self, file, size, view, link, before):
        """What a page shows of a view, as a file."""
        with Page(file, *size, link=link, before=before) as page:
            page.key(" ", 32)
            page.run("keelview.memory.give(keelview.memory.program.FollowLink, arguments[0])", link)
            time.sleep(0.5)
            name = {"map": "Picture1", "graph": "GPIC", "data": "PicTime"}[view]
            seen = page.run("return document.getElementById(arguments[0]).firstChild.toDataURL()", name)
        out = self.scratch / f"{view}_{len(before)}.png"
        out.write_bytes(base64.b64decode(seen.split(",")[1]))
        return out

    def share_of_others(self, wanted, seen, bare):
        """How many of the pixels differ, but for those that a text covers or touches."""
        texts = self.scratch / "texts.png"
        subprocess.run(["convert", seen, bare, "-compose", "difference", "-composite", "-threshold", "0", "-morphology",
                        "Dilate", "Square:3", texts], check=True)
        for picture in (wanted, seen):
            subprocess.run(["convert", picture, texts, "-compose", "lighten", "-composite", picture], check=True)
        told = subprocess.run(["compare", "-metric", "AE", "-fuzz", "1%", wanted, seen, "null:"], capture_output=True, text=True)
        size = subprocess.run(["identify", "-format", "%w %h", wanted], capture_output=True, text=True, check=True).stdout
        width, height = map(int, size.split())
        self.assertGreater(width * height, 100000)
        return float(told.stderr.split()[0]) / (width * height)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
