# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Many exchanges: nothing is lost, and what it costs."""

import os
import re
import socket
import statistics
import threading
import time

from scene import CARD, precheck
from webdriver import Driver, until

MANY = 10_000
AFTER = 100_000
SECONDS = 60
NOISE = 1.2  # how far two measurements of the same may lie apart on a machine that does something else too


def memory_of(process):
    """Resident bytes."""
    with open(f"/proc/{process.pid}/status", encoding="utf-8") as file:
        for line in file:
            if line.startswith("VmRSS:"):
                return int(line.split()[1]) * 1024
    raise AssertionError("no figure of the memory")


def processor_seconds(*roots):
    """What these processes and all below them have taken of the processors so far."""
    children = {}
    times = {}
    for name in os.listdir("/proc"):
        if name.isdigit():
            try:
                with open(f"/proc/{name}/stat", encoding="utf-8", errors="replace") as file:
                    fields = file.read().rsplit(")", 1)[1].split()
            except OSError:
                continue  # it has just ended
            children.setdefault(int(fields[1]), []).append(int(name))
            times[int(name)] = int(fields[11]) + int(fields[12])
    wanted = list(roots)
    for process in wanted:
        wanted += children.get(process, [])
    return sum(times.get(process, 0) for process in wanted) / os.sysconf("SC_CLK_TCK")


def answered(connection):
    """The status of the next answer, read to its end; with less work than a client's own library has."""
    read = b""
    while b"\r\n\r\n" not in read:
        more = connection.recv(65536)
        if not more:
            raise OSError("the connection was closed")
        read += more
    head, body = read.split(b"\r\n\r\n", 1)
    left = int(re.search(rb"content-length: *(\d+)", head, re.IGNORECASE)[1]) - len(body)
    while left > 0:
        left -= len(connection.recv(left))
    return int(head.split(b" ", 2)[1])


def fill(scene, count, connections=4, card=CARD, status=200, rate=0):
    """Sends so many pre-checks of few checks over some connections, at most so many a second where a rate is
    named; returns the seconds it took."""
    authorization = scene.authorization()
    host = scene.server.removeprefix("http://").rstrip("/")

    requests = []
    for i in range(50):
        body = precheck(f"load-{i}", card=card).encode()
        requests.append(f"POST /api/1.x/precheck HTTP/1.1\r\nHost: {host}\r\nContent-Type: application/xml\r\n"
                        f"Authorization: {authorization}\r\nContent-Length: {len(body)}\r\n\r\n".encode() + body)
    wrong = []

    def send(part):
        address, port = host.split(":")
        connection = socket.create_connection((address, int(port)), timeout=60)
        connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        with connection:
            for i in range(part, count, connections):
                if rate:
                    time.sleep(max(0.0, start + i / rate - time.monotonic()))
                connection.sendall(requests[i % len(requests)])
                if answered(connection) != status:
                    wrong.append(i)

    start = time.monotonic()  # before any thread looks at it
    threads = [threading.Thread(target=send, args=(part,)) for part in range(connections)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    took = time.monotonic() - start
    assert wrong == [], f"{len(wrong)} requests were answered otherwise than with {status}"
    return took


def metric(window, name):
    return {one["name"]: one["value"] for one in window.cdp("Performance.getMetrics")["metrics"]}[name]


def ten_thousand_exchanges_open_fast(stage):
    scene = stage.scene()
    fill(scene, 500)
    before = memory_of(scene.process)
    fill(scene, MANY)
    grown = memory_of(scene.process) - before
    window = stage.browser()
    window.cdp("Performance.enable")
    window.open(scene.page)
    window.says(f"{MANY + 500:,}", ".count")
    scripting = metric(window, "ScriptDuration")
    heap = metric(window, "JSHeapUsedSize")
    figures = (f"{MANY + 500} exchanges: script {scripting:.2f} s, heap {heap / 1e6:.0f} MB, "
               f"simulator grew by {grown / 1e6:.1f} MB")
    assert scripting <= 1 and heap <= 100e6 and grown <= 20e6, figures
    assert len(window.all(".list .body .row")) < 100
    window.run("document.querySelector('.list').scrollTop = 1e9")
    until(lambda: window.all("#row-1"), "the oldest")
    window.click("#row-1")
    window.says("Exchange 1", ".detail h2")
    return figures


def nothing_is_lost_while_it_comes_fast(stage):
    scene = stage.scene()
    count = 5_000

    def unknown(many):  # an unknown card writes nothing, so the disk is not what is measured
        return fill(scene, many, card="999", status=424)

    unknown(200)
    alone = count / unknown(count)
    window = stage.browser()
    window.open(scene.page)
    window.says(f"{count + 200:,}", ".count")
    watched = count / unknown(count)
    window.says(f"{2 * count + 200:,}", ".count")
    all_are_there(scene, 2 * count + 200)
    return (f"{alone:.0f} requests a second alone, {watched:.0f} with the page open, as fast as they go; "
            f"{2 * count + 200} exchanges, none missing")


def all_are_there(scene, count):
    numbers = []
    while len(numbers) < count:
        page = scene.get(f"/exchanges?after={len(numbers)}&most={MANY}")
        if not page["exchanges"]:
            break
        numbers += [row["number"] for row in page["exchanges"]]
    assert numbers == list(range(1, count + 1)), f"{len(numbers)} of {count} exchanges are there"


def rate_holds_for_a_minute_with_the_page_open(stage):
    scene = stage.scene()
    rate = 1_000
    count = rate * SECONDS
    alone = count / fill(scene, count, card="999", status=424, rate=rate)
    window = stage.browser()
    window.open(scene.page)
    window.says(f"{count:,}", ".count")
    watched = count / fill(scene, count, card="999", status=424, rate=rate)
    window.says(f"{2 * count:,}", ".count")
    all_are_there(scene, 2 * count)
    figures = (f"{rate} requests a second asked for, {SECONDS} s: {alone:.0f} alone, {watched:.0f} with the page "
               f"open, {2 * count} exchanges there")
    assert alone >= 0.9 * rate, f"{figures}: this machine has no room for so many at the moment"
    assert watched >= 0.9 * alone, figures
    return figures


class Watched:
    """A simulator with its page open in a browser of its own, and what requests cost both."""

    def __init__(self, stage, driver):
        self.scene = stage.scene()
        self.driver = driver
        self.window = stage.browser(driver=driver)
        self.window.open(self.scene.page)
        self.window.says("connected", "#state")

    def _processor_seconds(self):
        return processor_seconds(self.scene.process.pid), processor_seconds(self.driver.process.pid)

    def cost(self, count, rate):
        """Microseconds of the simulator and of the browser for a request."""
        before = self._processor_seconds()
        fill(self.scene, count, card="999", status=424, rate=rate)
        return [(now - then) / count * 1e6 for now, then in zip(self._processor_seconds(), before)]


def no_request_costs_more_after_many(stage):
    batch = 5_000
    rate = 500  # the same of both, for a browser's work goes by time as well
    second = Driver()
    try:
        old = Watched(stage, stage.driver)
        fill(old.scene, AFTER, card="999", status=424)
        old.window.says(f"{AFTER:,}", ".count", patience=120)
        new = Watched(stage, second)
        new.cost(batch, rate)  # what is worked out once
        costs = {old: [], new: []}
        for _ in range(5):  # by turns, for what else the machine does concerns both then
            for one, found in costs.items():
                found.append(one.cost(batch, rate))
        (old_server, old_browser), (new_server, new_browser) = (
            [statistics.median(part) for part in zip(*found)] for found in costs.values())
        stage.close()
    finally:
        second.close()
    figures = (f"a request takes the simulator {new_server:.0f} us, {old_server:.0f} us after {AFTER} exchanges, and "
               f"the browser {new_browser:.0f} us, then {old_browser:.0f} us")
    assert old_server <= new_server * NOISE and old_browser <= new_browser * NOISE, figures
    return figures


STEPS = [ten_thousand_exchanges_open_fast, nothing_is_lost_while_it_comes_fast,
         rate_holds_for_a_minute_with_the_page_open, no_request_costs_more_after_many]
SHORT = []
