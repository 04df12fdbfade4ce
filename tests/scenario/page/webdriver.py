# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""A browser driven over HTTP, as the WebDriver standard says, with nothing but the standard library."""

import base64
import json
import os
import shutil
import subprocess
import tempfile
import time
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
PATIENCE = 20  # seconds that anything is waited for


class BrowserError(Exception):
    """What the browser refused, in its words."""


def until(condition, what, patience=PATIENCE):
    """Waits until condition() gives something, and returns it."""
    end = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"did not happen in {patience} s: {what}")
        time.sleep(0.05)


class Driver:
    """The driver's process, on a port of its own on loopback."""

    def __init__(self):
        program = shutil.which("chromedriver")
        if program is None:
            raise SystemExit("page: there is no chromedriver: run scripts/setup page")
        self.folder = tempfile.TemporaryDirectory(prefix="orva-page-driver-")
        self.log = os.path.join(self.folder.name, "driver.log")
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen([program, "--port=0"], stdout=log, stderr=log)
        self.port = until(self._announced, "the driver's port")

    def _announced(self):
        with open(self.log, encoding="utf-8", errors="replace") as log:
            for line in log:
                if "started successfully on port" in line:
                    return int(line.rsplit(" ", 1)[1].strip(". \n"))
        return None

    def close(self):
        self.process.terminate()
        self.process.wait()
        self.folder.cleanup()


class Browser:
    """One session with a profile of its own."""

    def __init__(self, driver, language="en-GB", dark=False, size=(1280, 900)):
        self.base = f"http://127.0.0.1:{driver.port}/session"
        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--disable-background-networking", "--disable-component-update", "--no-first-run",
                     "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1", "--enable-precise-memory-info",
                     f"--window-size={size[0]},{size[1]}", f"--lang={language}"]
        if dark:
            arguments.append("--blink-settings=preferredColorScheme=0")
        options = {"args": arguments, "prefs": {"intl.accept_languages": language}}
        answer = self._ask("POST", "", {"capabilities": {"alwaysMatch": {
            "browserName": "chrome", "unhandledPromptBehavior": "ignore",
            "goog:loggingPrefs": {"browser": "ALL"}, "goog:chromeOptions": options}}})
        self.session = answer["sessionId"]

    def _ask(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, {"Content-Type": "application/json"},
                                         method=method)
        try:
            with urllib.request.urlopen(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise BrowserError(json.load(error)["value"]["message"]) from None

    def ask(self, method, path, body=None):
        return self._ask(method, f"/{self.session}{path}", body)

    def open(self, url):
        self.ask("POST", "/url", {"url": url})

    def run(self, script, *arguments):
        """The value of a script's "return"; promises are waited for."""
        return self.ask("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def cdp(self, command, **parameters):
        """A command of the browser's own protocol."""
        return self.ask("POST", "/goog/cdp/execute", {"cmd": command, "params": parameters})

    def judged(self, axe):
        """What that script says of the page: how many of its rules it passes, and what violates one."""
        # evaluated by the browser's own protocol, which no policy of the page concerns
        self.cdp("Runtime.evaluate", expression=axe)
        found = self.cdp("Runtime.evaluate", awaitPromise=True, returnByValue=True, expression=(
            "axe.run(document).then((result) => ({passes: result.passes.length, "
            "violations: result.violations.map((one) => one.id + ': ' + "
            "one.nodes.map((node) => node.target + ' ' + node.failureSummary).join('; '))}))"))
        return found["result"]["value"]

    def all(self, selector):
        found = self.ask("POST", "/elements", {"using": "css selector", "value": selector})
        return [element[ELEMENT] for element in found]

    def one(self, selector):
        return until(lambda: self.all(selector), f"an element {selector}")[0]

    def click(self, selector):
        self.ask("POST", f"/element/{self.one(selector)}/click", {})

    def button(self, text, within="body"):
        """Clicks the button with that text."""
        script = """return [...document.querySelectorAll(arguments[0] + ' button')]
            .find((button) => button.textContent === arguments[1] && button.checkVisibility())"""
        found = until(lambda: self.run(script, within, text), f"the button {text}")
        self.ask("POST", f"/element/{found[ELEMENT]}/click", {})

    def type(self, selector, text):
        element = self.one(selector)
        self.ask("POST", f"/element/{element}/clear", {})
        self.ask("POST", f"/element/{element}/value", {"text": text})

    def press(self, *keys):
        """Keys one after the other, to whatever has the focus; names as WebDriver codes them."""
        codes = {"Tab": "\ue004", "Enter": "\ue007", "Escape": "\ue00c", "Home": "\ue011", "End": "\ue010",
                 "Down": "\ue015", "Up": "\ue013", "PageDown": "\ue00f"}
        actions = []
        for key in keys:
            code = codes.get(key, key)
            actions += [{"type": "keyDown", "value": code}, {"type": "keyUp", "value": code}]
        self.ask("POST", "/actions", {"actions": [{"type": "key", "id": "keys", "actions": actions}]})

    def text(self, selector="body"):
        return self.run("return document.querySelector(arguments[0])?.innerText ?? ''", selector)

    def says(self, text, selector="body", patience=PATIENCE):
        """Waits until a text stands there."""
        try:
            until(lambda: text in self.text(selector), "", patience)
        except AssertionError:
            raise AssertionError(f"{selector} does not say \"{text}\" but:\n{self.text(selector)[:3000]}") from None

    def log(self):
        return self.ask("POST", "/se/log", {"type": "browser"})

    def alert(self):
        """The text of a dialogue that a script has opened, or None."""
        try:
            return self.ask("GET", "/alert/text")
        except BrowserError:
            return None

    def picture(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self.ask("GET", "/screenshot")))

    def close(self):
        self._ask("DELETE", f"/{self.session}")
