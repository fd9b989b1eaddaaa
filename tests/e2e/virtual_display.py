"""A person in front of a screen, for tests: an X server of its own, a program on it, eyes, a mouse and a way to
close windows. Every process started here is ended again, whatever happens."""

import contextlib
import ctypes
import os
import select
import signal
import subprocess
import time

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


def read_line(reader, seconds):
    """The line that comes out of a pipe, without its end. The server writes the number and the line's end apart, and
    gives up if nobody reads the second."""
    line = b""
    while not line.endswith(b"\n") and select.select([reader], [], [], seconds)[0]:
        if not (piece := os.read(reader, 16)):
            break
        line += piece
    return line.strip()


def end_process(process):
    """Ends a process that leads its own session, with all that it started."""
    for kind in (signal.SIGTERM, signal.SIGKILL):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, kind)
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(timeout=10)
            return


class Shot:
    """What the screen showed at one moment: rows of red, green, blue bytes."""

    def __init__(self, netpbm):
        header = f"P6\n{WIDTH} {HEIGHT}\n255\n".encode()
        self.pixels = netpbm[len(header):]
        if not netpbm.startswith(header) or len(self.pixels) != 3 * WIDTH * HEIGHT:
            raise AssertionError("the screen could not be read")

    def rows(self, box):
        left, top, width, height = box
        for y in range(top, top + height):
            start = 3 * (y * WIDTH + left)
            yield self.pixels[start:start + 3 * width]

    def share(self, box, colour):
        """How much of a box has exactly this colour, 0 to 1."""
        wanted, count = bytes(colour), 0
        for row in self.rows(box):
            if wanted in row:
                count += sum(row[i:i + 3] == wanted for i in range(0, len(row), 3))
        return count / (box[2] * box[3])

    def colours(self, box):
        """How many colours a box shows."""
        return len({row[i:i + 3] for row in self.rows(box) for i in range(0, len(row), 3)})

    def changed(self, other, box):
        """How many pixels of a box differ between two shots."""
        count = 0
        for mine, theirs in zip(self.rows(box), other.rows(box)):
            if mine != theirs:
                count += sum(mine[i:i + 3] != theirs[i:i + 3] for i in range(0, len(mine), 3))
        return count


class VirtualDisplay:
    def __enter__(self):
        reader, writer = os.pipe()
        command = ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp", "-noreset"]
        self.server = subprocess.Popen(
            command, pass_fds=[writer], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True
        )
        self.programs = []
        os.close(writer)
        try:
            number = read_line(reader, 30)
            if not number:
                raise AssertionError("the virtual display did not start")
        except BaseException:
            end_process(self.server)
            raise
        finally:
            os.close(reader)
        self.name = ":" + number.decode()
        return self

    def __exit__(self, *_):
        for program in self.programs:
            end_process(program)
        end_process(self.server)

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
        done = subprocess.run(
            ["xdotool", *map(str, words)], env=settings, timeout=20, check=False, capture_output=True, text=True
        )
        return done.stdout.rstrip("\n")

    def window_titled(self, part):
        """The visible window with this in its title (a regular expression), or None."""
        found = self.xdotool("search", "--onlyvisible", "--name", part).split()
        return found[0] if found else None

    def title(self, window):
        return self.xdotool("getwindowname", window)

    def move(self, x, y):
        self.xdotool("mousemove", x, y)
        time.sleep(0.1)

    def click(self, x, y, button=1):
        self.move(x, y)
        self.xdotool("click", button)

    def key(self, name):
        self.xdotool("key", name)

    @contextlib.contextmanager
    def held(self, key):
        """Holds a key down."""
        self.xdotool("keydown", key)
        time.sleep(0.1)
        try:
            yield
        finally:
            self.xdotool("keyup", key)

    def click_in(self, window, x, y):
        """A click at a place of a window's inner area."""
        place = dict(line.split("=") for line in self.xdotool("getwindowgeometry", "--shell", window).splitlines())
        self.click(int(place["X"]) + x, int(place["Y"]) + y)

    def type(self, text, *keys):
        """Types a text in place of what stands in the field with the focus, then presses the keys."""
        self.xdotool("key", "ctrl+a")
        self.xdotool("type", text)
        for key in keys:
            self.xdotool("key", key)

    def shot(self):
        """What the screen shows now."""
        command = ["/usr/bin/import", "-display", self.name, "-window", "root", "-depth", "8", "ppm:-"]
        return Shot(subprocess.run(command, timeout=20, check=True, capture_output=True).stdout)

    def close(self, window):
        """Asks a window to close, as its close button does."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XInternAtom.restype = ctypes.c_ulong
        x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
        x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.c_void_p]
        x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
        connection = x11.XOpenDisplay(self.name.encode())
        if not connection:
            raise AssertionError("the display is gone")

        class ClientMessage(ctypes.Structure):
            _fields_ = [
                ("type", ctypes.c_int),
                ("serial", ctypes.c_ulong),
                ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p),
                ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5),
                ("room_for_any_event", ctypes.c_long * 24),
            ]

        client_message_type = 33
        message = ClientMessage(type=client_message_type, window=int(window), format=32)
        message.message_type = x11.XInternAtom(connection, b"WM_PROTOCOLS", 0)
        message.data[0] = x11.XInternAtom(connection, b"WM_DELETE_WINDOW", 0)
        x11.XSendEvent(connection, int(window), 0, 0, ctypes.byref(message))
        x11.XCloseDisplay(connection)
