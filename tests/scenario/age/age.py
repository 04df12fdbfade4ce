#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Measures a till with few and with many closed checks.

    tests/scenario/age/age.py BUILD [--small N] [--large N] [--runs N] [--limit RATIO] [--folder DIR]

Ends with 1 where an operation takes more than RATIO times as long with many, or a list more memory,
or a sale waits longer than 50 ms for the right to write while checks go into the archive.
"""

import argparse
import os
import shutil
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

CONFIG = """[Orva]
serverUrl = "{address}"
merchantId = "1042"
pos = "3"
timeout = 10
user = "till"
password = "secret"
apikey = "demo"

[till]
database = "till.sqlite"
plugin = "{plugin}"
keepChecksDays = {days}
"""
LINE = '[[line]]\ncode = "{0}"\nname = "Товар номер {0}"\nprice = 149.90\nquantity = 1\n'
LONGEST_WAIT = 0.050
LARGEST_MEMORY_RATIO = 1.5


class Till:
    """A till with so many closed checks."""

    def __init__(self, build, folder, address, count):
        self.folder = folder
        self.program = build / "bin/orva-till"
        self.plugin = build / "lib/liborva.so"
        self.address = address
        folder.mkdir(parents=True)
        self.configure(400)
        lines = "".join(LINE.format(number) for number in range(1, 11))
        (folder / "sale.toml").write_text(f'type = "sale"\ncard = "2200000000017"\n{lines}')
        (folder / "nocard.toml").write_text(f'type = "sale"\n{lines}')
        self.run("sell", "sale.toml", "--wait", "20")
        subprocess.run([build / "tests/scenario/age/orva-age-fill", folder / "till.sqlite",
                        str(count)], check=True)
        self.next_return = 2

    def configure(self, days):
        (self.folder / "orva.toml").write_text(
            CONFIG.format(address=self.address, plugin=self.plugin, days=days))

    def start(self, *arguments):
        return subprocess.Popen([self.program, *arguments], cwd=self.folder,
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)

    def run(self, *arguments, codes=(0,)):
        """Returns seconds and the most memory in KiB."""
        begin = time.monotonic()
        process = self.start(*arguments)
        said = process.stderr.read().decode()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode not in codes:
            sys.exit(f"age.py: {' '.join(arguments)} ended with {process.returncode}: {said}")
        return time.monotonic() - begin, usage.ru_maxrss

    def take_back(self):
        """A return of a sale that is named by its number, another one each time."""
        (self.folder / "return.toml").write_text(
            f'type = "return"\nsale = "{self.next_return}"\n[[line]]\nposition = 1\nquantity = 1\n')
        self.next_return += 1
        return self.run("return", "return.toml")


OPERATIONS = {
    "open, sell, close": lambda till: till.run("sell", "nocard.toml"),
    "return by number": lambda till: till.take_back(),
    "explain last": lambda till: till.run("explain", "last", codes=(0, 4)),
    "doctor": lambda till: till.run("doctor", codes=(0, 1)),
    "checks": lambda till: till.run("checks"),
}


def compare(small, large, runs, limit):
    """Every operation on both in turn. Returns whether one takes too long."""
    wrong = False
    for name, operation in OPERATIONS.items():
        times = ([], [])
        for _ in range(runs):
            for till, taken in zip((small, large), times):
                taken.append(operation(till)[0])
        few, many = (statistics.median(taken) for taken in times)
        is_wrong = many / few > limit
        wrong |= is_wrong
        print(f"{name}: {few * 1000:.1f} ms, {many * 1000:.1f} ms, ratio {many / few:.2f}"
              f"{', TOO MUCH' if is_wrong else ''}", flush=True)
    return wrong


def compare_lists(small, large):
    wrong = False
    for name in (("ledger",), ("ledger", "--csv"), ("checks", "--all")):
        few, many = small.run(*name), large.run(*name)
        is_wrong = many[1] > LARGEST_MEMORY_RATIO * few[1]
        wrong |= is_wrong
        print(f"{' '.join(name)}: {few[0]:.2f} s and {few[1] // 1024} MiB, {many[0]:.2f} s and "
              f"{many[1] // 1024} MiB{', TOO MUCH' if is_wrong else ''}", flush=True)
    return wrong


def watch_archiving(till):
    """How long a sale waits for the right to write meanwhile."""
    till.run("queue", "deliver", codes=(0, 1))
    till.configure(0)
    database = till.folder / "till.sqlite"
    size = database.stat().st_size
    checks = count_of(database)
    writer = sqlite3.connect(database, timeout=30, isolation_level=None)
    begin = time.monotonic()
    process = till.start("archive")
    waits = []
    while process.poll() is None:
        before = time.monotonic()
        writer.execute("BEGIN IMMEDIATE")
        waits.append(time.monotonic() - before)
        writer.execute("ROLLBACK")
        time.sleep(0.005)
    writer.close()
    if process.returncode != 0:
        sys.exit(f"age.py: archive: {process.stderr.read().decode()}")
    left = count_of(database)
    archived = sum(file.stat().st_size for file in till.folder.glob("till.sqlite-archive/*.checks"))
    waits.sort()
    is_wrong = waits[-1] > LONGEST_WAIT or left > 0
    print(f"archive: {checks} checks in {time.monotonic() - begin:.1f} s, {left} left; the file "
          f"{size >> 20} -> {database.stat().st_size >> 20} MiB, the archive {archived >> 20} MiB; "
          f"{len(waits)} sales waited at most {waits[-1] * 1000:.1f} ms, 999 of 1000 at most "
          f"{waits[len(waits) * 999 // 1000] * 1000:.1f} ms{', TOO MUCH' if is_wrong else ''}",
          flush=True)
    return is_wrong


def count_of(database):
    """The closed checks that nothing waits for."""
    with sqlite3.connect(database) as connection:
        return connection.execute(
            "SELECT count(*) FROM checks LEFT JOIN queue_messages m ON m.id = message_id "
            "WHERE checks.state = 'closed' AND (m.id IS NULL OR m.state = 'delivered')"
        ).fetchone()[0]


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("build", type=Path)
    parser.add_argument("--small", type=int, default=1000)
    parser.add_argument("--large", type=int, default=100_000)
    parser.add_argument("--runs", type=int, default=9)
    parser.add_argument("--limit", type=float, default=1.2)
    parser.add_argument("--folder", default=None)
    options = parser.parse_args()
    build = options.build.resolve()
    folder = Path(tempfile.mkdtemp(prefix="orva-age-", dir=options.folder))
    server = subprocess.Popen(
        [build / "bin/orva-simulator", "--database", folder / "server.sqlite", "--port", "0"],
        cwd=folder, stdout=subprocess.PIPE, text=True)
    try:
        address = server.stdout.readline().split()[-1]
        small, large = (Till(build, folder / str(count), address, count)
                        for count in (options.small, options.large))
        print(f"{options.small} against {options.large} closed checks, "
              f"{(large.folder / 'till.sqlite').stat().st_size >> 20} MiB", flush=True)
        wrong = compare(small, large, options.runs, options.limit)
        wrong |= compare_lists(small, large)
        wrong |= watch_archiving(large)
        wrong |= compare_lists(small, large)
    finally:
        server.terminate()
        server.wait()
        shutil.rmtree(folder)
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
