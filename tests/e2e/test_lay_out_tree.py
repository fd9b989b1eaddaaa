"""The laid-out tree belongs to the user: a later ./run renews what it laid out itself and nothing else."""

import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]


class LayOutTree(unittest.TestCase):
    def setUp(self):
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.build, self.tree = folder / "build", folder / "a tree"
        for path, text in {
            "keelview": "program 1",
            "keelview-report": "report 1",
            "demo/raceadmin/Enoshima_R1.txt": "race 1",
            "demo/gpsdat/one.trk": "track 1",
            "demo/attachment/帆走 指示書.txt": "document 1",
        }.items():
            self.write(self.build / path, text)

    @staticmethod
    def write(file, text):
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def lay_out(self, *words):
        script = PROJECT / "tools" / "lay_out_tree.sh"
        subprocess.run([script, self.build, self.tree, *(words or ("en",))], check=True, timeout=60)

    def assert_texts(self, files):
        self.assertEqual({path: (self.tree / path).read_text(encoding="utf-8") for path in files}, files)

    def test_first_time_everything_is_there(self):
        self.lay_out()
        self.assert_texts({"keelview": "program 1", "attachment/帆走 指示書.txt": "document 1",
                           "raceadmin/Ver.00": "1,1\n", "raceadmin/racefile.st": "Enoshima_R1.txt\n"})  # fmt: skip
        cells = {file.name for file in (PROJECT / "coastline").iterdir()}
        self.assertEqual({file.name for file in (self.tree / "coastline").iterdir()}, cells)
        self.assertIn("NOTICE", cells)  # the coast's licence travels with the coast
        for name in ("gun.wav", "winddat", "help", "help-e"):
            self.assertTrue((self.tree / name).exists(), name)

    def test_what_is_the_users_stays(self):
        self.write(self.tree / "gpsdat/one.trk", "older than the demo")
        self.lay_out()
        mine = {"raceadmin/Enoshima_R1.txt": "my marks", "raceadmin/Ver.00": "0,1", "gpsdat/mine.trk": "my track"}
        for path, text in mine.items():
            self.write(self.tree / path, text)
        self.write(self.build / "demo/raceadmin/Enoshima_R1.txt", "race 2")
        for language in ("ja", "en"):
            self.lay_out(language)
            self.assert_texts(mine | {"gpsdat/one.trk": "older than the demo"})

    def test_what_nobody_touched_is_renewed(self):
        self.lay_out()
        self.write(self.build / "keelview", "program 2")
        self.write(self.build / "demo/gpsdat/one.trk", "track 2")
        self.write(self.build / "demo/gpsdat/two.trk", "new in the demo")
        (self.tree / "raceadmin/Enoshima_R1.txt").unlink()
        self.lay_out("ja")
        self.assert_texts({"keelview": "program 2", "gpsdat/one.trk": "track 2", "gpsdat/two.trk": "new in the demo",
                           "raceadmin/Enoshima_R1.txt": "race 1", "raceadmin/Ver.00": "1,0\n",
                           "raceadmin/racefile.st": "Enoshima_R2.txt\n"})  # fmt: skip
        for words, settings in ((("en",), "1,1\n"), (("ja", "edit"), "0,0\n")):
            self.lay_out(*words)
            self.assert_texts({"raceadmin/Ver.00": settings})


if __name__ == "__main__":
    unittest.main(argv=["test_lay_out_tree"])
