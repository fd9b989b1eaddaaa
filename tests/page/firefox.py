"""The same in headless Firefox, by its own remote protocol: a length, a colon, and JSON over a socket."""

import itertools
import json
import shutil
import socket
import subprocess
import tempfile
import time
from pathlib import Path

from browser import OpenedPage

PREFERENCES = {
    "browser.download.folderList": 2,
    "browser.download.always_ask_before_handling_new_types": False,
    "browser.download.alwaysOpenPanel": False,
    "datareporting.policy.dataSubmissionEnabled": False,
    "dom.disable_open_during_load": False,
    "dom.w3c_touch_events.enabled": 1,
    "intl.accept_languages": "en",
    "network.captive-portal-service.enabled": False,
    "network.connectivity-service.enabled": False,
    "privacy.reduceTimerPrecision": False,
}
# What the browser keeps of requests, but for its own, and of complaints.
LISTEN = """
    globalThis.asked = [];
    Services.obs.addObserver((request) => {
        const { loadInfo, URI } = request.QueryInterface(Ci.nsIChannel);
        if (!loadInfo.triggeringPrincipal.isSystemPrincipal) asked.push(URI.spec);
    }, 'http-on-modify-request');
    Services.io.offline = true;
"""
COMPLAINTS = """
    return Services.console.getMessageArray()
        .filter((each) => each instanceof Ci.nsIScriptError && !(each.flags & Ci.nsIScriptError.warningFlag))
        .filter((each) => each.sourceName.startsWith(arguments[0]) || /Content-Security-Policy/.test(each.errorMessage))
        .map((each) => each.errorMessage);
"""
SIZE = """
    const { style } = gBrowser.selectedBrowser;
    style.maxWidth = style.minWidth = arguments[0] + 'px';
    style.maxHeight = style.minHeight = arguments[1] + 'px';
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class FirefoxPage(OpenedPage):
    def __init__(self, file, width, height, touch=False, link="", downloads=None, before=""):
        self.profile = Path(tempfile.mkdtemp())
        self.numbers = itertools.count()
        port = free_port()
        wanted = {**PREFERENCES, "marionette.port": port, "browser.download.dir": str(downloads or self.profile)}
        (self.profile / "user.js").write_text(
            "".join(f"user_pref({json.dumps(name)}, {json.dumps(value)});\n" for name, value in wanted.items()))
        self.program = subprocess.Popen(
            ["firefox-esr", "--headless", "--no-remote", "--marionette", "--remote-allow-system-access", "--profile", self.profile,
             "--window-size", f"{max(width, 500)},{height + 200}"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            self.connect(port)
            self.command("WebDriver:NewSession")
            self.own(LISTEN)
            self.own(SIZE, width, height)
            super().__init__(file, link, before)
        except BaseException:
            self.program.kill()
            self.program.wait()
            raise

    def connect(self, port):
        end = time.monotonic() + 60
        while True:
            try:
                self.wire = socket.create_connection(("127.0.0.1", port), timeout=60)
                self.read()
                return
            except OSError:
                if time.monotonic() > end:
                    raise
                time.sleep(0.1)

    def read(self):
        size = b""
        while not size.endswith(b":"):
            if not (byte := self.wire.recv(1)):
                raise ConnectionError("the browser has gone")
            size += byte
        text = b""
        while len(text) < int(size[:-1]):
            text += self.wire.recv(int(size[:-1]) - len(text))
        return json.loads(text)

    def command(self, name, **parameters):
        text = json.dumps([0, next(self.numbers), name, parameters]).encode()
        self.wire.sendall(f"{len(text)}:".encode() + text)
        _, _, error, result = self.read()
        if error:
            raise RuntimeError(f"{name}: {error['message']}")
        return result.get("value") if isinstance(result, dict) else result

    def own(self, script, *arguments):
        """Runs a script in the browser's own window."""
        self.command("Marionette:SetContext", value="chrome")
        try:
            return self.command("WebDriver:ExecuteScript", script=script, args=arguments, sandbox="system", newSandbox=False)
        finally:
            self.command("Marionette:SetContext", value="content")

    def go(self, address):
        self.command("WebDriver:Navigate", url=address)

    def run(self, script, *arguments):
        return self.command("WebDriver:ExecuteScript", script=script, args=arguments, newSandbox=False)

    def close(self):
        try:
            self.command("Marionette:Quit", flags=["eForceQuit"])
            self.program.wait(timeout=30)
        except (OSError, RuntimeError, subprocess.TimeoutExpired):
            self.program.kill()
            self.program.wait()
        self.wire.close()
        shutil.rmtree(self.profile, ignore_errors=True)

    def act(self, kind, number, *steps, **parameters):
        source = {"type": kind, "id": f"{kind}{number}", "actions": list(steps)}
        return {**source, "parameters": parameters} if parameters else source

    def perform(self, *sources):
        self.command("WebDriver:PerformActions", actions=list(sources))

    def mouse(self, kind, at):
        move = {"type": "pointerMove", "x": round(at[0]), "y": round(at[1]), "duration": 0, "origin": "viewport"}
        press = {"down": "pointerDown", "up": "pointerUp"}.get(kind)
        self.perform(self.act("pointer", 0, move, *([{"type": press, "button": 0}] if press else []), pointerType="mouse"))

    def turn_wheel(self, name, notches, across=0.5, down=0.5):
        x, y = map(round, self.place(name, across, down))
        self.perform(self.act("wheel", 0, {"type": "scroll", "x": x, "y": y, "deltaX": 0, "deltaY": 100 * notches,
                                           "origin": "viewport"}))

    def key(self, key, code):
        self.perform(self.act("key", 0, {"type": "keyDown", "value": key}, {"type": "keyUp", "value": key}))

    def touch(self, kind, *points):
        steps = []
        if kind == "end":
            self.perform(*(self.act("pointer", f"finger{i}", {"type": "pointerUp", "button": 0}, pointerType="touch")
                           for i in range(self.fingers)))
            return
        self.fingers = len(points)
        for i, (x, y) in enumerate(points):
            steps.append([{"type": "pointerMove", "x": round(x), "y": round(y), "duration": 0, "origin": "viewport"}])
            if kind == "start":
                steps[i].append({"type": "pointerDown", "button": 0})
        self.perform(*(self.act("pointer", f"finger{i}", *each, pointerType="touch") for i, each in enumerate(steps)))

    def requests(self):
        return self.own("return asked")

    def complaints(self):
        return self.own(COMPLAINTS, self.file.as_uri())
