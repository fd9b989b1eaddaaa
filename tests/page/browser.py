"""A page in headless Chromium, opened by file:// without a network, and led as a person would."""

import json
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service


class Page:
    """One opened page. What it asks of the network is kept in requests(), what it complains of in complaints()."""

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
        if before:
            self.call("Page.addScriptToEvaluateOnNewDocument", source=before)
        self.driver.get(file.as_uri() + ("#" + link if link else ""))
        self.wait(lambda: self.run("return Boolean(window.keelview?.person.window)"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.driver.quit()

    def call(self, command, **parameters):
        return self.driver.execute_cdp_cmd(command, parameters)

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

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

    def mouse(self, kind, at, **more):
        self.call("Input.dispatchMouseEvent", type=kind, x=at[0], y=at[1], **more)

    def click(self, name, across=0.5, down=0.5):
        at = self.place(name, across, down)
        self.mouse("mouseMoved", at)
        for kind in ("mousePressed", "mouseReleased"):
            self.mouse(kind, at, button="left", buttons=1, clickCount=1)

    def turn_wheel(self, name, notches, across=0.5, down=0.5):
        self.mouse("mouseWheel", self.place(name, across, down), deltaX=0, deltaY=100 * notches)

    def key(self, key, code):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=key, windowsVirtualKeyCode=code)

    def touch(self, kind, *points):
        touched = [{"x": x, "y": y, "id": i} for i, (x, y) in enumerate(points)]
        self.call("Input.dispatchTouchEvent", type=kind, touchPoints=touched)

    def is_seen(self, name):
        return self.run("const e = document.getElementById(arguments[0]); return e.offsetParent !== null && e.offsetWidth > 0",
                        name)

    def words(self, name):
        return self.run("return document.getElementById(arguments[0]).textContent", name)

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
