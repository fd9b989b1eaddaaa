"""A regatta is handed out: built by clicks in the real program, unpacked elsewhere, and started there with nothing
but its own libraries and faces."""

import subprocess
import sys
import tarfile
import tempfile
import time
import unittest
from pathlib import Path

from virtual_display import VirtualDisplay, wait_until

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1]).resolve()

# Places in the menu and in the builder, from the corners of their windows.
MENU_DISTRIBUTION = (295, 505)
FOLDER_NAME, FIRST_RACE, SECOND_RACE, FIRST_CHOSEN, BUILD_BUTTON = (150, 33), (100, 82), (100, 97), (100, 178), (232, 404)
# The choice of another race on a display of 1280 x 1024.
RACE_FILES, SHOW = (1155, 761), (1250, 761)

# The C library belongs to each system; the X library takes its cursors from the system where they are there.
SYSTEM = ("ld-linux", "libc.", "libm.", "libpthread", "libdl", "librt", "libresolv", "libXcursor", "libXfixes", "libXrender")


class Distribution(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree, self.elsewhere = Path(folder.name) / "tree", Path(folder.name) / "elsewhere"
        subprocess.run([PROJECT / "tools/lay_out_tree.sh", BUILD, self.tree, "en"], check=True, timeout=60)
        (self.tree / "raceadmin/Ver.00").write_text("0,1\r\n")
        self.display = self.enterContext(VirtualDisplay())

    def window(self, title):
        found = wait_until(lambda: self.display.window_titled(title), 60, f"a window titled {title}")
        time.sleep(1)
        return found

    def clicker(self, window):
        """Clicks at places counted from the window's corner."""
        lines = self.display.xdotool("getwindowgeometry", "--shell", window).splitlines()
        left, top = (int(next(line for line in lines if line.startswith(name))[2:]) for name in ("X=", "Y="))

        def click(place):
            self.display.click(left + place[0], top + place[1])
            time.sleep(0.5)

        return click

    def build(self, name):
        program = self.display.start([self.tree / "keelview"], LC_ALL="C.UTF-8")
        self.window("Keelview")
        self.display.xdotool("key", "Return")  # "Edit Data ?"
        time.sleep(2)
        self.clicker(self.window("^Keelview$"))(MENU_DISTRIBUTION)
        click = self.clicker(self.window("^Create Distribution File$"))
        for place in (FIRST_RACE, SECOND_RACE, FIRST_CHOSEN, FOLDER_NAME):
            click(place)
        self.display.xdotool("type", name)
        click(BUILD_BUTTON)
        self.display.xdotool("key", "Return")  # yes
        packed = self.tree / "distribution" / f"{name}.tar.gz"
        wait_until(packed.is_file, 90, "a packed distribution")
        program.terminate()
        return packed

    def test_built_by_clicks_and_started_elsewhere(self):
        with tarfile.open(self.build("Autumn Series")) as packed:
            packed.extractall(self.elsewhere)
        place = self.elsewhere / "Autumn Series"
        self.assertEqual((place / "raceadmin/ver.00").read_bytes(), b"1,1\r\n")
        program = self.display.start([place / "keelview"], LC_ALL="C.UTF-8")
        self.window(r"\(Enoshima_R1\.txt\)")
        mapped = {line.split(maxsplit=5)[5] for line in Path(f"/proc/{program.pid}/maps").read_text().splitlines()
                  if ".so" in line or line.endswith(".ttf")}  # fmt: skip
        # Where this machine has a face that the distribution brings, either of the two may be taken.
        brought = {face.name for face in (place / "fonts").iterdir()}
        foreign = [file for file in mapped if not file.startswith(str(place))
                   and not Path(file).name.startswith(SYSTEM) and Path(file).name not in brought]  # fmt: skip
        self.assertEqual(foreign, [], "libraries and faces of this machine")
        self.assertTrue(any("libQt6Core" in file for file in mapped))

        self.display.click(*RACE_FILES)
        self.display.xdotool("key", "Down", "Return")
        self.display.click(*SHOW)
        self.window(r"\(Enoshima_R2\.txt\)")


if __name__ == "__main__":
    unittest.main(argv=["test_distribution_e2e"], verbosity=2)
