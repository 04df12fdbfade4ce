# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Makes small mistakes in the sources and sees whether the tests notice."""

import argparse
import collections
import json
import os
import queue
import random
import resource
import signal
import sys
import threading
import time
from pathlib import Path

import equivalents
from areas import AREAS, area_of
from build import MODULE_PROGRAMS, Build
from catalogue import all_mutants, unchanged
from worker import COMPILE_FAILED, KILLED, SAME, SURVIVED, Worker, end, run_limited, running, spent

ROOT = Path(__file__).resolve().parents[2]
LIST = Path("tests/mutants/equivalent.txt")
WANTED = 95.0


def arguments():
    parser = argparse.ArgumentParser(prog="scripts/mutants", description=__doc__)
    parser.add_argument("--area", action="append", choices=[area.name for area in AREAS],
                        help="mutants of that area; may be given several times (all)")
    parser.add_argument("--only", metavar="FILE", help="mutants of files whose path contains it")
    parser.add_argument("--sample", type=int, metavar="N", help="that many of them, by chance")
    parser.add_argument("--seed", type=int, default=1, help="of the chance (1)")
    parser.add_argument("--again", action="store_true", help="what survived the last time, only")
    parser.add_argument("--list", action="store_true", help="print the mutants and do nothing")
    parser.add_argument("--beside", metavar="FOLDER", type=Path,
                        help="take that build instead of making one; its test programs are built")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="at a time (all cores)")
    return parser.parse_args()


def chosen(options, report):
    """Returns (mutants to try, number of listed ones)."""
    mutants = all_mutants(ROOT)
    listed = equivalents.listed(mutants, equivalents.read(ROOT / LIST), LIST)
    if options.area:
        mutants = [mutant for mutant in mutants if area_of(mutant.file).name in options.area]
    if options.only:
        mutants = [mutant for mutant in mutants if options.only in mutant.file]
    if options.again:
        left = {line.split("\t")[1] for line in report.read_text().splitlines()
                if line.startswith(SURVIVED)}
        mutants = [mutant for mutant in mutants if str(mutant) in left]
    # drawn from all, so that what is listed later changes no sample
    if options.sample and options.sample < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.sample)
    tried = [mutant for mutant in mutants if id(mutant) not in listed]
    return tried, len(mutants) - len(tried)


def measured_limits(build, scratch):
    """How much time each program may take with a mutant; without one all of them must pass. What
    has passed is not asked again until it is built anew."""
    scratch.mkdir(exist_ok=True)
    kept = build.scratch / "seconds.json"
    known = json.loads(kept.read_text()) if kept.exists() else {}
    limits = {}
    for name, path in build.programs().items():
        built = [(build.folder / file).stat().st_mtime for file in (path, "host/libposhost.so")]
        if name in MODULE_PROGRAMS or known.get(name, [None])[0] != built:
            known[name] = [built, seconds_of(build, path, scratch)]
        limits[name] = 3 * known[name][1] + 2
    kept.write_text(json.dumps(known))
    return limits


def seconds_of(build, path, scratch):
    for _ in range(2):  # some measure times, which a busy machine may keep too long
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        if run_limited([str(build.folder / path)], 600, build.folder, scratch) == 0:
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime
    raise SystemExit(f"mutants: {build.folder / path} fails without any mutant")


def run(build, mutants, limits, jobs, report):
    waiting, outcomes = queue.SimpleQueue(), []
    for mutant in mutants:
        waiting.put(mutant)
    kills = collections.defaultdict(collections.Counter)
    lock = threading.Lock()
    control = Worker(build, build.scratch / "worker-0", limits, kills)
    for area in build.areas:
        if control.judge(unchanged(area.control)).verdict != SURVIVED:
            raise SystemExit(f"mutants: the tests of {area.name} fail without any mutant")

    def work(number):
        worker = Worker(build, build.scratch / f"worker-{number}", limits, kills)
        while True:
            try:
                outcome = worker.judge(waiting.get_nowait())
            except queue.Empty:
                return
            with lock:
                outcomes.append(outcome)
                show(outcome, len(outcomes), len(mutants), report)

    # daemons, so that this program can be ended while they wait for theirs
    threads = [threading.Thread(target=work, args=(number,), daemon=True) for number in range(jobs)]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("mutants: ended"))
    try:
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    finally:
        for group in list(running):
            end(group)
    return outcomes


def show(outcome, count, total, report):
    print(outcome.verdict, outcome.mutant, outcome.by, sep="\t", file=report, flush=True)
    if outcome.verdict == SURVIVED:
        print(f"SURVIVED {outcome.mutant}\n         {outcome.mutant.line_text}", flush=True)
    elif sys.stdout.isatty() or count % 100 == 0:
        print(f"{count} of {total}", end="\r" if sys.stdout.isatty() else "\n", flush=True)


def tell_pace(count, seconds, before):
    each = ", ".join(f"{what} {total / max(count, 1):.1f} s" for what, total in spent.items())
    print(f"{60 * count / max(seconds, 1):.1f} mutants a minute after {before:.0f} s of preparing; "
          f"each: {each}")


def main():
    options = arguments()
    folder = ROOT / "build/mutants"
    mutants, listed = chosen(options, folder / "report.txt")
    if options.list:
        print(*mutants, sep="\n")
        print(f"{len(mutants)} mutants, {listed} more are listed as equivalent")
        return 0
    started = time.monotonic()
    wanted = {area_of(mutant.file).name for mutant in mutants}
    build = Build(ROOT, options.jobs, [area for area in AREAS if area.name in wanted],
                  options.beside and options.beside.resolve())
    build.prepare()
    limits = measured_limits(build, folder / "scratch")
    prepared = time.monotonic()
    spent.clear()
    with open(folder / "report.txt", "w", encoding="utf-8") as report:
        outcomes = run(build, mutants, limits, options.jobs, report)
    tell_pace(len(outcomes), time.monotonic() - prepared, prepared - started)
    verdicts = collections.Counter(outcome.verdict for outcome in outcomes)
    tried = verdicts[KILLED] + verdicts[SURVIVED]
    share = 100 * verdicts[KILLED] / tried if tried else 0.0
    seed = f", seed {options.seed}" if options.sample else ""
    print(f"{len(mutants)} mutants made in {time.monotonic() - started:.0f} s{seed}: "
          f"{verdicts[COMPILE_FAILED]} did not compile, {verdicts[SAME]} changed no object, "
          f"{verdicts[KILLED]} killed, {verdicts[SURVIVED]} survived; {listed} more are listed as equivalent")
    for area in build.areas:
        of_area = collections.Counter(outcome.verdict for outcome in outcomes
                                      if area_of(outcome.mutant.file) is area)
        print(f"{area.name}: {of_area.total()} sampled, {of_area[KILLED]} killed, "
              f"{of_area[SURVIVED]} survived, {of_area[COMPILE_FAILED]} did not compile, "
              f"{of_area[SAME]} changed no object")
    print(f"{share:.1f} % of those that compile are killed (wanted: {WANTED:.0f} %)")
    return 0 if share >= WANTED else 1


if __name__ == "__main__":
    sys.exit(main())
