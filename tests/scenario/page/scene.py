# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""A shop to look at: a simulator with its page, a till, and requests that no till would send."""

import json
import os
import re
import subprocess
import tempfile
import urllib.error
import urllib.request

from webdriver import until

CARD = "2200000000017"


class Scene:
    """The simulator of a build folder with rules of its own, on free ports."""

    def __init__(self, build, rules=None):
        self.build = os.path.abspath(build)
        self.folder = tempfile.TemporaryDirectory(prefix="orva-page-")
        self.rules = self.path("rules.toml")
        self.write_rules(rules if rules is not None else self._built_in())
        self.log = self.path("simulator.log")
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen(
                [self._program("orva-simulator"), "--page", "--quiet", "--port", "0", "--config", self.rules,
                 "--database", self.path("books.sqlite")], stdout=log, stderr=log)
        self.page = until(lambda: self._line("Page at "), "the page's address")
        self.server = self._line("Listening on ")

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def _program(self, name):
        return os.path.join(self.build, "bin", name)

    def _built_in(self):
        return subprocess.run([self._program("orva-simulator"), "rules"], check=True, text=True,
                              stdout=subprocess.PIPE).stdout

    def _line(self, start):
        with open(self.log, encoding="utf-8") as log:
            for line in log:
                if line.startswith(start) and line.endswith("\n"):
                    return line.removeprefix(start).strip()
        return None

    def write_rules(self, text):
        with open(self.rules + ".new", "w", encoding="utf-8") as file:
            file.write(text)
        os.replace(self.rules + ".new", self.rules)

    def ask(self, method, path, body=None, headers=None):
        """What a script asks of the admin address: (status, text)."""
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.page.rstrip("/") + path, data,
                                         {"Content-Type": "application/json", **(headers or {})}, method=method)
        try:
            with urllib.request.urlopen(request, timeout=30) as answer:
                return answer.status, answer.read().decode()
        except urllib.error.HTTPError as error:
            return error.code, error.read().decode()

    def get(self, path):
        return json.loads(self.ask("GET", path)[1])

    def post(self, operation, body, authorization=None):
        """What a till sends: the status, or 0 where the connection was closed."""
        request = urllib.request.Request(
            self.server + "api/1.x/" + operation, body.encode(),
            {"Content-Type": "application/xml", "Authorization": authorization or self.authorization()})
        try:
            with urllib.request.urlopen(request, timeout=30) as answer:
                answer.read()
                return answer.status
        except urllib.error.HTTPError as error:
            return error.code
        except OSError:
            return 0

    def authorization(self):
        """As the simulator's own line to try with names it."""
        if not hasattr(self, "_authorization"):
            with tempfile.TemporaryDirectory() as folder:
                process = subprocess.Popen(
                    [self._program("orva-simulator"), "--port", "0", "--no-page", "--database",
                     os.path.join(folder, "books.sqlite")], stdout=subprocess.PIPE, text=True,
                    env={**os.environ, "LC_ALL": "C.UTF-8"})
                for line in process.stdout:
                    found = re.search(r"'Authorization: ([^']*)'", line)
                    if found:
                        break
                process.terminate()
                process.wait()
                self._authorization = found[1]
        return self._authorization

    def till(self, *arguments, locale="C.UTF-8"):
        """Runs the till to its end and returns what it printed."""
        done = subprocess.run([self._program("orva-till"), "--config", self.path("orva.toml"), *arguments],
                              cwd=self.folder.name, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              env={**os.environ, "LC_ALL": locale, "LANGUAGE": ""}, check=False)
        return done.stdout

    def open_till(self, tree):
        """Sets a till up that sells over this simulator."""
        answers = "\n".join([self.server, "1042", "3", "till", "secret", "demo"]) + "\n"
        subprocess.run([self._program("orva-till"), "--config", self.path("orva.toml"), "--plugin",
                        os.path.join(self.build, "lib", "liborva.so"), "init"], cwd=self.folder.name, input=answers,
                       text=True, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for name in ("sale.toml", "return.toml"):
            with open(os.path.join(tree, "till", "examples", name), encoding="utf-8") as source:
                with open(self.path(name), "w", encoding="utf-8") as target:
                    target.write(source.read())

    def close(self):
        self.process.terminate()
        code = self.process.wait()
        with open(self.log, encoding="utf-8") as log:
            said = log.read()
        self.folder.cleanup()
        if code != 0:
            raise AssertionError(f"the simulator ended with {code}:\n{said}")


def precheck(check, card=CARD, total="100.00", sku="1001", extra=""):
    """A pre-check's document; what stands in it is put in as it is."""
    return (f"<RawCheck><id>{check}</id><chType>1</chType><total>{total}</total><items><RawItem>"
            f"<quantity>1.000</quantity><id>1</id><sku>{sku}</sku><total>{total}</total></RawItem></items>"
            f"<cardNumber>{card}</cardNumber>{extra}</RawCheck>")
