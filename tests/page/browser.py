"""A page in a headless browser, opened by file:// without a network, and led as a person would."""

import base64
import hashlib
import json
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service


def with_script(file, script):
    """A copy of a page that runs a script before its own."""
    text = file.read_text(encoding="utf-8")
    code = base64.b64encode(hashlib.sha256(script.encode()).digest()).decode()
    text = text.replace("script-src ", f"script-src 'sha256-{code}' ", 1).replace("</head>", f"<script>{script}</script></head>", 1)
    copy = file.with_name(f"{file.stem}_with_script.html")
    copy.write_text(text, encoding="utf-8", newline="\n")
    return copy


class OpenedPage:
    """One opened page. What it asks of the network is kept in requests(), what it complains of in complaints()."""

    def __init__(self, file, link, before):
        self.file = with_script(file, before) if before else file
        self.go(self.file.as_uri() + ("#" + link if link else ""))
        self.wait(lambda: self.run("return Boolean(window.keelview?.person.window)"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def wait(self, holds, seconds=20):
        end = time.monotonic() + seconds
        while not (found := holds()):
            if time.monotonic() > end:
                raise AssertionError("what was waited for did not come")
            time.sleep(0.05)
        return found

    def link(self):
        """What is shown now, by the keys of the page's own link."""
        return dict(part.split("=", 1) for part in self.run("return keelview.link()").split("&"))

    def time(self):
        return float(self.link()["t"])

    def report(self, moments=""):
        return self.run("return keelview.report(arguments[0])", moments)

    def place(self, name, across=0.5, down=0.5):
        """A point of an element in the window, by shares of its size as it is seen."""
        box = self.run(
            "const r = document.getElementById(arguments[0]).getBoundingClientRect(); return [r.x, r.y, r.width, r.height]",
            name)
        return box[0] + across * box[2], box[1] + down * box[3]

    def click(self, name, across=0.5, down=0.5):
        at = self.place(name, across, down)
        for kind in ("move", "down", "up"):
            self.mouse(kind, at)

    def is_seen(self, name):
        return self.run("const e = document.getElementById(arguments[0]); return e.offsetParent !== null && e.offsetWidth > 0",
                        name)

    def words(self, name):
        return self.run("return document.getElementById(arguments[0]).textContent", name)


class ChromiumPage(OpenedPage):
    def __init__(self, file, width, height, touch=False, link="", downloads=None, before=""):
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium"
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--hide-scrollbars", "--lang=en"):
            options.add_argument(argument)
        options.add_argument(f"--window-size={width},{height}")
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
        self.call("Network.enable")
        self.call("Network.emulateNetworkConditions", offline=True, latency=0, downloadThroughput=0, uploadThroughput=0)
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=touch)
        if touch:
            self.call("Emulation.setTouchEmulationEnabled", enabled=True, maxTouchPoints=2)
        if downloads:
            self.call("Browser.setDownloadBehavior", behavior="allow", downloadPath=str(downloads))
        self.held = False
        super().__init__(file, link, before)

    def close(self):
        self.driver.quit()

    def go(self, address):
        self.driver.get(address)

    def call(self, command, **parameters):
        return self.driver.execute_cdp_cmd(command, parameters)

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def mouse(self, kind, at):
        """Moves the mouse to a point of the window, or has its left button go down or up there."""
        self.held = kind == "down" or (kind == "move" and self.held)
        what = {"move": "mouseMoved", "down": "mousePressed", "up": "mouseReleased"}[kind]
        button = {} if kind == "move" and not self.held else {"button": "left", "buttons": int(self.held), "clickCount": 1}
        self.call("Input.dispatchMouseEvent", type=what, x=at[0], y=at[1], **button)

    def turn_wheel(self, name, notches, across=0.5, down=0.5):
        x, y = self.place(name, across, down)
        self.call("Input.dispatchMouseEvent", type="mouseWheel", x=x, y=y, deltaX=0, deltaY=100 * notches)

    def key(self, key, code):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=key, windowsVirtualKeyCode=code)

    def touch(self, kind, *points):
        """Fingers go down at points, move to others or go up ("start", "move", "end")."""
        touched = [{"x": x, "y": y, "id": i} for i, (x, y) in enumerate(points)]
        self.call("Input.dispatchTouchEvent", type="touch" + kind.capitalize(), touchPoints=touched)

    def requests(self):
        """The addresses that the page has asked for, but for its own."""
        asked = []
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                asked.append(message["params"]["request"]["url"])
        return [url for url in asked if url.split("#")[0] != self.driver.current_url.split("#")[0]]

    def complaints(self):
        return [entry["message"] for entry in self.driver.get_log("browser") if entry["level"] == "SEVERE"]


def browser_named(name):
    """The class of the pages of a browser: chromium, or firefox."""
    if name == "chromium":
        return ChromiumPage
    from firefox import FirefoxPage
    return FirefoxPage
