#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""What the trial of servers finds: measure.py BUILD-FOLDER [--sound N] [--at-least PERCENT] [--workers N]
[--seed N] [DEVIATION...]

Runs `orva-till verify` against the sound simulator in shuffled runs, which must find nothing, and against the
simulator with each deviation, which must name the requirement that it breaks before all others. Prints a table
of what finds what, and the cases that no deviation broke. The exit code is 1 where that is not so, or fewer than
that are found."""

import argparse
import concurrent.futures
import json
import os
import subprocess
import sys
import tempfile
import time

USAGE_ENDS = 2
CARDS = {"card": "2200000000017", "secondCard": "2200000000024", "emptyCard": "2200000000031"}


def write(folder, name, text):
    path = os.path.join(folder, name)
    with open(os.open(path, os.O_CREAT | os.O_WRONLY, 0o600), "w", encoding="utf-8") as file:
        file.write(text)
    return path


def settings(build, folder, address, authority=None):
    """The file of a till that may sell to this address. authority: a certificate to trust."""
    write(folder, "password", "secret")
    write(folder, "apikey", "demo")
    cards = "".join(f'{key} = "{number}"\n' for key, number in CARDS.items())
    trusts = f'[http]\ncaFile = "{authority}"\n' if authority else ""
    return write(folder, "orva.toml", f"""{trusts}[till]
plugin = "{os.path.abspath(build)}/lib/liborva.so"
[Orva]
serverUrl = "{address}"
merchantId = "1042"
pos = "3"
user = "till"
password = {{ file = "password" }}
apikey = {{ file = "apikey" }}
[verify]
testServer = "{address}"
{cards}""")


def run_till(build, *arguments):
    environment = dict(os.environ, LC_ALL="C.UTF-8", LANGUAGE="en")
    return subprocess.run([f"{build}/bin/orva-till", *arguments], capture_output=True, text=True, env=environment,
                          timeout=600, check=False)


def tried_at(build, address, config, arguments):
    """One run against a server. Returns what it says as JSON."""
    run = run_till(build, "verify", address, "--config", config, "--json", *arguments)
    if run.returncode >= USAGE_ENDS or not run.stdout:
        raise RuntimeError(f"orva-till ended with {run.returncode}: {run.stderr}")
    result = json.loads(run.stdout)
    if result["good"] != (run.returncode == 0):
        raise RuntimeError(f"orva-till ended with {run.returncode}, and its result is {result['good']}")
    return result


def tried(build, deviations, arguments):
    """One run against a simulator of its own."""
    with tempfile.TemporaryDirectory(prefix="orva-verify-") as folder:
        server = subprocess.Popen(
            [f"{build}/bin/orva-simulator", "--port", "0", "--quiet", "--database", f"{folder}/books.sqlite",
             *[word for name in deviations for word in ("--deviate", name)]],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, env=dict(os.environ, LC_ALL="C.UTF-8"))
        try:
            address = server.stdout.readline().split()[-1]
            return tried_at(build, address, settings(build, folder, address), arguments)
        finally:
            server.terminate()
            server.wait()


def known_deviations(build):
    listed = subprocess.run([f"{build}/bin/orva-simulator", "--deviate", "list", "--json"], check=True,
                            capture_output=True, text=True).stdout
    return [json.loads(line) for line in listed.splitlines() if line.strip()]


def quick_cases(build):
    """All cases but the request that comes slowly on purpose: no deviation is about that."""
    listed = run_till(build, "verify", "http://localhost/", "--list").stdout
    cases = [line.strip() for line in listed.splitlines() if line.startswith("  ")]
    return [name for name in cases if not name.startswith("slow-request.")]


def cases_in(result, state):
    return [case["name"] for requirement in result["requirements"] for case in requirement["cases"]
            if case["state"] == state]


def sound_runs(pool, options):
    """Shuffled runs against the sound server. Returns how many found something."""
    runs = [pool.submit(tried, options.build, [], ["--strict", "--shuffle", "--seed", str(options.seed + number)])
            for number in range(options.sound)]
    wrong = 0
    for number, run in enumerate(runs):
        result = run.result()
        cases = sum(len(requirement["cases"]) for requirement in result["requirements"])
        if result["broken"] or result["leftBehind"]:
            wrong += 1
            print(f"sound server, seed {options.seed + number}: {result['broken']} {result['leftBehind']}")
        elif number == 0:
            print(f"cases: {cases}, not tried: {', '.join(cases_in(result, 'notTried'))}")
    print(f"sound runs: {options.sound}, of which found something: {wrong}", flush=True)
    return wrong


def deviating_runs(pool, options):
    """A run for each deviation. Returns the rows (deviation, what was named in which order), and the cases that
    no deviation broke."""
    cases = quick_cases(options.build)
    unbroken = set(cases)
    wanted = [row for row in known_deviations(options.build)
              if not options.deviation or row["name"] in options.deviation]
    runs = [(row, pool.submit(tried, options.build, [row["name"]], [*cases, "--strict"])) for row in wanted]
    width = max((len(row["name"]) for row in wanted), default=0)
    print(f"{'deviation':{width}} {'breaks':24} named")
    rows = []
    for row, run in runs:
        try:
            broken = run.result()["broken"]
            unbroken -= set(cases_in(run.result(), "broken"))
        except RuntimeError as error:
            broken = [f"({error})"]
        mark = " " if broken[:1] == [row["breaks"]] else "!" if row["breaks"] in broken else "-"
        print(f"{row['name']:{width}} {row['breaks']:24} {mark} {', '.join(broken) or 'nothing'}"
              f"{' (blind)' if row.get('blind') else ''}", flush=True)
        rows.append((row, broken))
    return rows, [name for name in cases if name in unbroken]


def share(rows):
    found = sum(broken[:1] == [row["breaks"]] for row, broken in rows)
    return found, len(rows), 100 * found / len(rows) if rows else 100


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build")
    parser.add_argument("--sound", type=int, default=20, help="shuffled runs against the sound server")
    parser.add_argument("--at-least", type=float, default=95, help="percent that must be named first")
    parser.add_argument("--workers", type=int, default=6)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("deviation", nargs="*")
    options = parser.parse_intermixed_args()
    began = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(options.workers) as pool:
        wrong = sound_runs(pool, options)
        rows, unbroken = deviating_runs(pool, options)
    print(f"cases that no deviation broke: {len(unbroken)}: {', '.join(unbroken)}")
    found, count, percent = share(rows)
    blind, blinds, blind_percent = share([pair for pair in rows if pair[0].get("blind")])
    print(f"deviations: {count}, named first: {found} ({percent:.1f} %), "
          f"of {blinds} blind ones: {blind} ({blind_percent:.1f} %), in {time.monotonic() - began:.0f} s")
    return 1 if wrong or percent < options.at_least else 0


if __name__ == "__main__":
    sys.exit(main())
