# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Many exchanges: nothing is lost, and what it costs."""

import http.client
import threading
import time

from scene import CARD, precheck
from webdriver import until

MANY = 10_000


def memory_of(process):
    """Resident bytes."""
    with open(f"/proc/{process.pid}/status", encoding="utf-8") as file:
        for line in file:
            if line.startswith("VmRSS:"):
                return int(line.split()[1]) * 1024
    raise AssertionError("no figure of the memory")


def fill(scene, count, connections=4, card=CARD, status=200):
    """Sends so many pre-checks of few checks over some connections; returns the seconds it took."""
    authorization = scene.authorization()
    host = scene.server.removeprefix("http://").rstrip("/")

    def send(part):
        connection = http.client.HTTPConnection(host)
        for i in range(part, count, connections):
            connection.request("POST", "/api/1.x/precheck", precheck(f"load-{i % 50}", card=card),
                               {"Content-Type": "application/xml", "Authorization": authorization})
            answer = connection.getresponse()
            answer.read()
            assert answer.status == status, answer.status

    start = time.monotonic()
    threads = [threading.Thread(target=send, args=(part,)) for part in range(connections)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return time.monotonic() - start


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
    numbers = []
    while len(numbers) < 2 * count + 200:
        page = scene.get(f"/exchanges?after={len(numbers)}&most={MANY}")
        numbers += [row["number"] for row in page["exchanges"]]
    assert numbers == list(range(1, 2 * count + 201)), "an exchange is missing"
    return f"{alone:.0f} requests a second alone, {watched:.0f} with the page open; {len(numbers)} exchanges, none missing"


STEPS = [ten_thousand_exchanges_open_fast, nothing_is_lost_while_it_comes_fast]
SHORT = []
