"""A headless Chromium, driven over the HTTP protocol of its driver with nothing but the standard library."""

import base64
import json
import shutil
import subprocess
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
OPTIONS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
           "--disable-background-networking", "--hide-scrollbars=false"]
KEYS = {"enter": "\ue007", "escape": "\ue00c", "tab": "\ue004", "left": "\ue012", "up": "\ue013", "right": "\ue014",
        "down": "\ue015", "shift": "\ue008", "control": "\ue009", "alt": "\ue00a", "f2": "\ue032", "delete": "\ue017",
        "end": "\ue010", "home": "\ue011", "space": " ", "backspace": "\ue003"}


def missing_programs():
    return [name for name in ("chromium", "chromedriver") if shutil.which(name) is None]


class Browser:
    def __init__(self, profile):
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, text=True)
        self.address = f"http://127.0.0.1:{self._port()}"
        wanted = {"browserName": "chrome", "pageLoadStrategy": "normal",
                  "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"},
                  "goog:chromeOptions": {"args": OPTIONS + [f"--user-data-dir={profile}"],
                                         "binary": shutil.which("chromium")}}
        made = self._call("POST", "/session", {"capabilities": {"alwaysMatch": wanted}})
        self.session = f"/session/{made['sessionId']}"

    def _port(self):
        for line in self.driver.stdout:
            if "started successfully on port" in line:
                return int(line.rstrip(".\n").rsplit(" ", 1)[1])
        raise RuntimeError("chromedriver did not start")

    def close(self):
        try:
            self._call("DELETE", self.session)
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.driver.stdout.close()

    def _call(self, method, path, body=None):
        request = urllib.request.Request(self.address + path, method=method,
                                         data=None if body is None else json.dumps(body).encode(),
                                         headers={"Content-Type": "application/json"})
        try:
            with urllib.request.urlopen(request, timeout=60) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def _post(self, path, **body):
        return self._call("POST", self.session + path, body)

    def open(self, path):
        self.visit(f"file://{path}")

    def visit(self, address):
        self._post("/url", url=address)

    def run(self, script, *arguments):
        """The result of a function body in the page."""
        return self._post("/execute/sync", script=script, args=list(arguments))

    def run_until_done(self, script):
        """What the script hands to the function that is its argument."""
        return self._post("/execute/async", script=script, args=[])

    def find(self, selector):
        return self._post("/element", using="css selector", value=selector)[ELEMENT]

    def click(self, selector):
        self._post(f"/element/{self.find(selector)}/click")

    def type(self, selector, text):
        self._post(f"/element/{self.find(selector)}/value", text=text)

    def press(self, *names):
        """Keys, one after the other, to whatever has the focus."""
        keys = [{"type": kind, "value": KEYS.get(name, name)} for name in names for kind in ("keyDown", "keyUp")]
        self._post("/actions", actions=[{"type": "key", "id": "keys", "actions": keys}])

    def press_with(self, held, *names):
        """Keys, one after the other, while another one is held."""
        keys = [{"type": kind, "value": KEYS.get(name, name)} for name in names for kind in ("keyDown", "keyUp")]
        around = [{"type": kind, "value": KEYS[held]} for kind in ("keyDown", "keyUp")]
        self._post("/actions", actions=[{"type": "key", "id": "keys", "actions": around[:1] + keys + around[1:]}])

    def click_with(self, held, selector):
        around = [{"type": kind, "value": KEYS[held]} for kind in ("keyDown", "keyUp")]
        pause = {"type": "pause", "duration": 0}
        move = {"type": "pointerMove", "duration": 0, "x": 0, "y": 0, "origin": {ELEMENT: self.find(selector)}}
        clicks = [{"type": kind, "button": 0} for kind in ("pointerDown", "pointerUp")]
        self._post("/actions", actions=[
            {"type": "key", "id": "keys", "actions": around[:1] + [pause] * 3 + around[1:]},
            {"type": "pointer", "id": "mouse", "actions": [pause, move] + clicks + [pause]}])

    def drag(self, start, end, below=0, kind="mouse", hold=0):
        """From the middle of an element to so many pixels below the middle of another one."""
        def move(selector, y, duration):
            at = self.run("""const element = document.querySelector(arguments[0]);
                             element.scrollIntoView({ block: 'nearest', inline: 'nearest' });
                             const { left, top, width, height } = element.getBoundingClientRect();
                             return [left + width / 2, top + height / 2]""", selector)
            return {"type": "pointerMove", "duration": duration, "x": round(at[0]), "y": round(at[1] + y)}
        steps = [move(start, 0, 0), {"type": "pointerDown", "button": 0}, move(start, 8, 50), move(end, below, 150),
                 {"type": "pause", "duration": hold}, {"type": "pointerUp", "button": 0}]
        self._post("/actions", actions=[{"type": "pointer", "id": kind, "parameters": {"pointerType": kind},
                                         "actions": steps}])

    def window(self):
        return self._call("GET", self.session + "/window")

    def new_window(self):
        """A second one, which is shown from now on."""
        before = self.window()
        self.show_window(self._post("/window/new", type="tab")["handle"])
        return before

    def show_window(self, handle):
        self._post("/window", handle=handle)

    def close_window(self):
        self._call("DELETE", self.session + "/window")

    def point(self, selector):
        """Moves the pointer onto an element."""
        move = {"type": "pointerMove", "duration": 0, "x": 0, "y": 0, "origin": {ELEMENT: self.find(selector)}}
        self._post("/actions", actions=[{"type": "pointer", "id": "mouse", "actions": [move]}])

    def devtools(self, command, **parameters):
        return self._post("/goog/cdp/execute", cmd=command, params=parameters)

    def processor_time(self):
        """Seconds that the page has worked: without those in which other programs did."""
        self.devtools("Performance.enable", timeDomain="threadTicks")
        metrics = self.devtools("Performance.getMetrics")["metrics"]
        return next(each["value"] for each in metrics if each["name"] == "TaskDuration")

    def resize(self, width, height, is_mobile=False):
        self.devtools("Emulation.setDeviceMetricsOverride", width=width, height=height,
                      deviceScaleFactor=2 if is_mobile else 1, mobile=is_mobile)

    def prefer(self, scheme):
        self.devtools("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])

    def screenshot(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self._call("GET", self.session + "/screenshot")))

    def console(self):
        """What the page complained of since the last time."""
        return [line["message"] for line in self._post("/se/log", type="browser")]

    def requests(self):
        """The addresses that were asked for since the last time."""
        events = [json.loads(line["message"])["message"] for line in self._post("/se/log", type="performance")]
        return [event["params"]["request"]["url"] for event in events
                if event["method"] == "Network.requestWillBeSent"]
