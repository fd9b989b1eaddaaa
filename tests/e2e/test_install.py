"""What an installation consists of, and what the first start of an installed program makes of it."""

import gzip
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from virtual_display import end_process, wait_until

BUILD = Path(sys.argv[1]).resolve()


class Install(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.usr = cls.root / "usr"
        command = ["cmake", "--install", BUILD, "--prefix", cls.usr]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, timeout=60)

    def test_the_desktop_finds_program_icon_and_manual(self):
        share = self.usr / "share"
        entry = (share / "applications/org.keelview.Keelview.desktop").read_text(encoding="utf-8")
        self.assertIn("\nExec=keelview %F\n", entry)
        self.assertIn("\nIcon=keelview\n", entry)
        self.assertTrue((share / "icons/hicolor/scalable/apps/keelview.svg").is_file())
        self.assertTrue((share / "metainfo/org.keelview.Keelview.metainfo.xml").is_file())
        for program in ("keelview", "keelview-report"):
            page = gzip.decompress((share / f"man/man1/{program}.1.gz").read_bytes()).decode()
            self.assertTrue(page.startswith(f".TH {program.upper()} 1"))
            self.assertTrue(os.access(self.usr / "bin" / program, os.X_OK))
        for data in ("coastline/NOTICE", "coastline/world.shore", "tools/coast_for", "tools/shorelines.py"):
            self.assertTrue((share / "keelview" / data).is_file(), data)

    def test_the_first_start_lays_the_users_folder_out(self):
        data = self.root / "data"
        environment = os.environ | {"QT_QPA_PLATFORM": "offscreen", "LC_ALL": "ja_JP.UTF-8", "XDG_DATA_HOME": str(data)}
        environment.pop("KEELVIEW_TREE", None)
        started = subprocess.Popen([self.usr / "bin/keelview"], env=environment, stderr=subprocess.DEVNULL,
                                   start_new_session=True)  # fmt: skip
        self.addCleanup(end_process, started)
        link = data / "keelview/keelview"  # it is the last that is made
        wait_until(lambda: link.is_symlink() or started.poll() is not None, 60, "the user's folder")
        self.assertTrue(link.is_symlink())
        self.assertEqual((data / "keelview/raceadmin/Ver.00").read_text(encoding="ascii"), "0,0\n")
        report = [self.usr / "bin/keelview-report", data / "keelview", "Enoshima_R2.txt"]
        self.assertEqual(subprocess.run(report, capture_output=True, timeout=60).returncode, 0)
        self.assertFalse([path for path in (data / "keelview").iterdir() if path.name.startswith(".")])


if __name__ == "__main__":
    unittest.main(argv=["test_install"])
