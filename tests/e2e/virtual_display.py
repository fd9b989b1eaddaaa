"""A person in front of a screen, for tests: an X server of its own, a program on it, eyes, a mouse and a way to
close windows. Every process started here is ended again, whatever happens."""

import contextlib
import ctypes
import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from array import array
from pathlib import Path

WIDTH, HEIGHT = 1280, 1024


def wait_until(condition, seconds, what):
    """The first true value of condition(), asked again and again; fails with what was waited for."""
    deadline = time.monotonic() + seconds
    while True:
        if value := condition():
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {seconds} s: {what}")
        time.sleep(0.1)


def end_process(process):
    """Ends a process that leads its own session, with all that it started."""
    for kind in (signal.SIGTERM, signal.SIGKILL):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, kind)
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(timeout=10)
            return


class Shot:
    """What the screen showed at one moment. A box of it is left, top, width and height."""

    def __init__(self, rgba):
        self.pixels = array("I", rgba)

    def inside(self, box):
        """The pixels of a box, row by row."""
        left, top, width, height = box
        rows = range(top * WIDTH + left, (top + height) * WIDTH + left, WIDTH)
        return [pixel for row in rows for pixel in self.pixels[row:row + width]]

    def share(self, box, colour):
        """How much of a box has exactly this colour (red, green, blue), 0 to 1."""
        pixels = self.inside(box)
        return pixels.count(int.from_bytes((*colour, 255), sys.byteorder)) / len(pixels)

    def changed(self, other, box):
        """How many pixels of a box differ between two shots."""
        return sum(mine != theirs for mine, theirs in zip(self.inside(box), other.inside(box)))


class VirtualDisplay:
    def __enter__(self):
        command = ["Xvfb", "-displayfd", "1", "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp", "-noreset"]
        self.server = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, start_new_session=True, text=True)  # fmt: skip
        self.programs = []
        self.name = ":" + self.server.stdout.readline().strip()
        if self.name == ":":
            self.__exit__()
            raise AssertionError("the virtual display did not start")
        return self

    def __exit__(self, *_):
        for process in (*self.programs, self.server):
            end_process(process)
        self.server.stdout.close()

    def start(self, command, **environment):
        """Starts a program on this display, in a bare environment with the given additions."""
        kept = {name: os.environ[name] for name in ("PATH", "HOME", "ASAN_OPTIONS", "LSAN_OPTIONS") if name in os.environ}
        settings = kept | {"DISPLAY": self.name, "QT_QPA_PLATFORM": "xcb"} | environment
        program = subprocess.Popen(command, env=settings, stdin=subprocess.DEVNULL, start_new_session=True)
        self.programs.append(program)
        return program

    def xdotool(self, *words):
        """What xdotool prints; empty if it finds nothing."""
        settings = os.environ | {"DISPLAY": self.name, "LC_ALL": "C.UTF-8"}
        command = ["xdotool", *map(str, words)]
        done = subprocess.run(command, env=settings, timeout=20, check=False, capture_output=True, text=True)
        return done.stdout.rstrip("\n")

    def window_titled(self, part):
        """The visible window with this in its title (a regular expression), or None."""
        found = self.xdotool("search", "--onlyvisible", "--name", part).split()
        return found[0] if found else None

    def click(self, x, y, button=1):
        self.xdotool("mousemove", x, y)
        time.sleep(0.1)
        self.xdotool("click", button)

    def click_in(self, window, x, y):
        """A click at a place of a window's inner area."""
        place = dict(line.split("=") for line in self.xdotool("getwindowgeometry", "--shell", window).splitlines())
        self.click(int(place["X"]) + x, int(place["Y"]) + y)

    def keys(self, *names):
        self.xdotool("key", *names)

    def type(self, text):
        """Types a text in place of what stands in the field with the focus."""
        self.keys("ctrl+a")
        self.xdotool("type", text)

    def shot(self):
        """What the screen shows now."""
        command = ["/usr/bin/import", "-display", self.name, "-window", "root", "-depth", "8", "rgba:-"]
        return Shot(subprocess.run(command, timeout=20, check=True, capture_output=True).stdout)

    def close(self, window):
        """Asks a window to close, as its close button does."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        connection = ctypes.c_void_p(x11.XOpenDisplay(self.name.encode()))
        protocols, delete = (x11.XInternAtom(connection, name, 0) for name in (b"WM_PROTOCOLS", b"WM_DELETE_WINDOW"))
        client_message, bits, target = 33, 32, ctypes.c_ulong(int(window))
        # Each field of the event takes a machine word.
        event = (ctypes.c_long * 24)(client_message, 0, 0, 0, target.value, protocols, bits, delete)
        x11.XSendEvent(connection, target, 0, ctypes.c_long(0), event)
        x11.XCloseDisplay(connection)


class OnScreen(unittest.TestCase):
    """A test of the real program: a folder and a screen of its own, on which windows are known by their titles."""

    MAP, SEA = (5, 5, 970, 970), (0, 255, 255)  # of the race display

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.tree = self.folder / "tree"
        self.display = self.enterContext(VirtualDisplay())

    def start(self, *command, **environment):
        self.program = self.display.start(command, **environment)

    def window(self, title, other_than=None):
        def shown():
            self.assertIsNone(self.program.poll(), f"the program ended before {title} stood")
            window = self.display.window_titled(title)
            return window if window != other_than else None

        return wait_until(shown, 60, f"a window titled {title}")

    def gone(self, title):
        wait_until(lambda: not self.display.window_titled(title), 30, f"no window titled {title}")

    def press(self, title, *places):
        for place in places:
            self.display.click_in(self.window(title), *place)

    def answer_yes(self, title):
        """The window with the question, which is answered."""
        question = self.window(title)
        time.sleep(0.3)
        self.display.keys("Return")
        return question

    def see_sea(self):
        wait_until(lambda: self.display.shot().share(self.MAP, self.SEA) > 0.3, 30, "a map with the sea on it")

    def ends_well(self):
        self.assertEqual(self.program.wait(timeout=20), 0)
