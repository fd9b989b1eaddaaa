"""keelview-report as a script meets it: one JSON object, or one line on standard error and exit status 2."""

import csv
import io
import json
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD = Path(sys.argv[1])


class Report(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tree = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        for name in ("raceadmin", "gpsdat"):
            (cls.tree / name).mkdir()
        # North over the line at six knots, a fix every ten seconds, clocks nine hours ahead.
        fixes = (f"T N35{17 + t / 600:08.5f} E13929.00000 05/08/04 03:{30 + t // 60:02}:{t % 60:02} 1\r\n"
                 for t in range(0, 590, 10))  # fmt: skip
        (cls.tree / "gpsdat" / "a.trk").write_text("".join(fixes), encoding="ascii")
        race = (
            'T1, "春" の杯\r\nST, 2004/8/5 12:30:00\r\nFT, 2004/8/5 12:40:00\r\nWD, 350\r\n'
            "BN, a.trk, Al\tpha\r\nLN, 2117.5, 8368.9, 2117.5, 8369.3\r\nCRS, L1\r\n"
        )
        (cls.tree / "raceadmin" / "R1.txt").write_bytes(race.encode("cp932"))

    def run_report(self, *arguments):
        command = [BUILD / "keelview-report", *arguments]
        return subprocess.run(command, capture_output=True, timeout=60, text=True, encoding="utf-8")

    def test_a_race_is_one_json_object(self):
        before = sorted(self.tree.rglob("*"))
        ran = self.run_report(self.tree, "r1.TXT", "--at", "300.5", "--at", "-1")
        self.assertEqual((ran.returncode, ran.stderr), (0, ""))
        report = json.loads(ran.stdout)
        self.assertEqual(report["race"]["titles"], ['"春" の杯', "", ""])
        self.assertEqual(report["race"]["time_diff"], 9)
        (boat,) = report["boats"]
        self.assertEqual((boat["name"], boat["points"], boat["last_time"]), ("Al\tpha", 59, 580))
        miles = 580 / 600 * report["scale"]["metres_per_lat_minute"] / 1852
        self.assertAlmostEqual(boat["distance"], miles, places=4)
        self.assertAlmostEqual(boat["pass_times"][0], 300, delta=1)
        self.assertEqual(boat["pass_sources"], ["rule"])
        self.assertEqual(report["finish_order"], [1])
        sailing, waiting = report["at"]
        self.assertAlmostEqual(sailing["boats"][0]["lat"], 2117 + 300.5 / 600, places=4)
        self.assertAlmostEqual(sailing["boats"][0]["true_wind_angle"], 10)
        self.assertEqual(sailing["wind"], {"direction_true": 350, "direction_magnetic": 350, "speed": 0})
        self.assertEqual(waiting["boats"], [None])
        self.assertEqual(sorted(self.tree.rglob("*")), before)  # it only reads

    def test_a_page_is_written_whole_or_not_at_all(self):
        program = self.tree / "keelview-page.html"
        program.write_text("<title>{{title}}</title>{{race}}", encoding="utf-8")
        self.addCleanup(program.unlink)
        page = self.tree / "page.html"
        ran = self.run_report("--page", page, self.tree, "R1.txt", "--ja")
        self.assertEqual((ran.returncode, ran.stdout, ran.stderr), (0, "", ""))
        first = page.read_bytes()
        page.unlink()
        self.assertTrue(first.startswith("<title>&quot;春&quot; の杯</title>".encode()))
        self.run_report("--page", f"{self.tree / 'pages'}/", self.tree, "R1.txt", "--ja")
        self.addCleanup(shutil.rmtree, self.tree / "pages")
        self.assertEqual({file.name: file.read_bytes() for file in (self.tree / "pages").iterdir()}, {"R1.html": first})
        for arguments in (["--page"], ["--page", page, self.tree], ["--page", page, self.tree, "R1.txt", "R9.txt"]):
            ran = self.run_report(*arguments)
            self.assertEqual((ran.returncode, ran.stderr.count("\n")), (2, 1), arguments)
            self.assertFalse(page.exists())

    def test_the_walk_by_itself_has_bare_numbers(self):
        race = (self.tree / "raceadmin" / "R1.txt").read_bytes().replace(b"CRS, L1", b"CRS, L1, L2, L1")
        (self.tree / "raceadmin" / "R2.txt").write_bytes(race)
        self.addCleanup((self.tree / "raceadmin" / "R2.txt").unlink)
        ordered, walked = (json.loads(self.run_report(self.tree, "R2.txt", *walk).stdout) for walk in ((), ("--walk",)))
        start = ordered["boats"][0]["pass_times"][0]
        self.assertEqual(ordered["boats"][0]["pass_times"], [start, None, None])
        self.assertEqual(walked["boats"][0]["pass_times"], [start, 0, start])
        self.assertEqual(walked["first_pass_times"][1], 1000000)

    def test_the_tracks_are_told_as_they_stand_in_their_files(self):
        lines = "BN, a.trk, A\nBN, hole.trk, Hole\nBN, closed.vtk, C\nBN, gone.trk, G\nCL, 2, 1.25\n"
        (self.tree / "raceadmin" / "T.txt").write_text(lines, encoding="ascii")
        place = "T N3517.0 E13929.0 05/08/04 "
        fixes = [f"{place}03:{second // 60:02}:{second % 60:02} 1\n" for second in (*range(10), *range(60, 70))]
        lost = ["T N0 E0 05/08/04 03:00:10 1\n"] * 2
        (self.tree / "gpsdat" / "hole.trk").write_text("".join(fixes + lost), encoding="ascii")
        (self.tree / "gpsdat" / "closed.vtk").write_bytes(b"VTK" + bytes(600))
        self.addCleanup((self.tree / "raceadmin" / "T.txt").unlink)
        ran = self.run_report(self.tree, "T.txt", "--tracks")
        a, hole, closed, gone = json.loads(ran.stdout)["boats"]
        self.assertEqual((a["fixes"], a["median_interval"], a["gaps"], a["skipped"]), (59, 10, {"count": 0}, {}))
        self.assertEqual((hole["first_time"], hole["last_time"]), ("2004-08-05T03:00:01.250Z", "2004-08-05T03:01:10.250Z"))
        self.assertEqual((hole["gaps"], hole["skipped"]), ({"count": 1, "longest": 51}, {"no_place": 2}))
        self.assertEqual((closed["refused"], gone["refused"], gone["fixes"]), ("velocitek", "missing", 0))
        self.assertRegex(ran.stderr, r"\A.*gone.trk: not found\n.*closed.vtk: a Velocitek file.*GPX\n\Z")

    def test_only_the_members_that_are_asked_for_are_printed(self):
        whole = json.loads(self.run_report(self.tree, "R1.txt", "--at", "400").stdout)
        some = json.loads(self.run_report(self.tree, "R1.txt", "--at", "400", "--only", "boats,at, race").stdout)
        self.assertEqual(some, {key: whole[key] for key in ("race", "boats", "at")})
        coach = ("ranking", "gaps", "start", "manoeuvres", "wind_estimate", "current", "made_good", "polar", "polar_less_current", "debrief", "velocities")
        self.assertFalse(set(coach) & set(whole))
        answers = json.loads(self.run_report(self.tree, "R1.txt", "--only", ",".join(coach)).stdout)
        self.assertEqual(tuple(answers), coach)
        line, (boat,) = answers["start"]["line"], answers["start"]["boats"]
        self.assertAlmostEqual(line["bias_degrees"], -10)
        self.assertEqual((line["favoured_end"], answers["wind_estimate"]["used"]), (1, "typed"))
        self.assertAlmostEqual(boat["crossing"], 300, delta=0.1)
        self.assertEqual((boat["ocs"], boat["returned"]), (None, None))  # its track begins with the gun
        head, row = csv.reader(io.StringIO(self.run_report(self.tree, "R1.txt", "--csv", "start").stdout.lstrip("\ufeff")))
        cells = dict(zip(head, row))
        self.assertEqual((cells["Boat"], cells["line_favoured_end"], cells["number"], cells["ocs"]), ("Al\tpha", "1", "1", ""))
        self.assertAlmostEqual(float(cells["crossing"]), boat["crossing"])

    def test_wrong_use_is_one_line_and_exit_status_2(self):
        good = (self.tree, "R1.txt")
        for arguments in ((), good[:1], (*good, "more"), (*good, "--at"), (*good, "--at", "noon"), (*good, "--help-me"), (*good, "--only"),
                          (*good, "--only", "start,none"), (*good, "--csv", "boats"),
                          (self.tree, "none.txt"), (self.tree / "none", "R1.txt"), (self.tree, "../raceadmin/R1.txt")):  # fmt: skip
            with self.subTest(arguments=arguments):
                ran = self.run_report(*arguments)
                self.assertEqual((ran.returncode, ran.stdout), (2, ""))
                self.assertRegex(ran.stderr, r"\A[^\n]+\n\Z")

    def test_a_new_race_is_made_of_files(self):
        stick = self.tree / "stick/deep"
        stick.mkdir(parents=True)
        shutil.copy(self.tree / "gpsdat/a.trk", stick / "Alcyone.trk")
        (stick / "photo.jpg").write_bytes(b"\xff\xd8\xff\xe0" * 500_000)
        (stick / "self").symlink_to(".")
        made = self.run_report("--new", self.tree, "New", stick.parent, self.tree / "gone.gpx")
        report = json.loads(made.stdout)
        self.assertEqual((made.returncode, made.stderr, report["race"]), (0, "", "New.txt"))
        (boat,) = report["boats"]
        self.assertEqual((boat["name"], boat["file"], boat["fixes"]), ("Alcyone", "Alcyone.trk", 59))
        reasons = {file["file"]: file["refused"] for file in report["unused"]}
        self.assertEqual(reasons, {"stick/deep/photo.jpg": "unknown", "gone.gpx": "missing"})
        race = json.loads(self.run_report(self.tree, "New.txt").stdout)
        self.assertEqual((race["race"]["start"], race["boats"][0]["points"]), ("2004/08/05 12:30:00", 59))
        again = self.run_report("--new", self.tree, "New.txt", stick)
        self.assertEqual(again.returncode, 2)
        self.assertRegex(again.stderr, r"New.txt exists; --replace writes over it\n\Z")
        self.assertEqual(self.run_report("--new", self.tree, "New.txt", stick, "--replace").returncode, 0)

    def test_the_demo_races_find_themselves(self):
        tree = Path(self.enterContext(tempfile.TemporaryDirectory()))
        subprocess.run([BUILD / "tools/make_demo", tree], check=True, timeout=60)
        told = (b"ST,", b"FT,", b"WD,", b"MK,", b"LN,", b"CRS,")
        for name in ("Enoshima_R1.txt", "Enoshima_R2.txt"):
            with self.subTest(race=name):
                before = json.loads(self.run_report(tree, name).stdout)
                file = tree / "raceadmin" / name
                bare = b"".join(line for line in file.read_bytes().splitlines(True) if not line.startswith(told))
                file.write_bytes(bare)
                found = self.run_report("--find", tree, name)
                self.assertEqual((found.returncode, file.read_bytes()), (0, bare))
                (race,) = json.loads(found.stdout)["races"]
                self.assertEqual(race["start_time"], before["race"]["start"])
                self.assertEqual(race["course"], before["race"]["course"])
                for mark, place in zip(before["race"]["marks"], race["marks"], strict=True):
                    for one, other in zip(mark, place, strict=True):
                        self.assertAlmostEqual(one, other, delta=0.008)  # 15 m
                self.assertEqual(self.run_report("--find", tree, name, "--write").stdout, found.stdout)
                self.assertEqual((tree / "raceadmin" / (name + ".bak")).read_bytes(), bare)
                after = json.loads(self.run_report(tree, name).stdout)
                self.assertEqual(after["finish_order"], before["finish_order"])
                self.assertEqual([boat["name"] for boat in after["boats"]], [boat["name"] for boat in before["boats"]])

    def test_where_nobody_raced_no_race_is_written(self):
        before = (self.tree / "raceadmin/R1.txt").read_bytes()
        found = self.run_report("--find", self.tree, "R1.txt", "--write")
        self.assertEqual((found.returncode, json.loads(found.stdout)["races"]), (2, []))
        self.assertEqual((self.tree / "raceadmin/R1.txt").read_bytes(), before)


if __name__ == "__main__":
    unittest.main(argv=["test_report"])
