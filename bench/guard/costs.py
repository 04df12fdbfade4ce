#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""What closing a check and delivering a message cost, beside their floors, by callgrind.

    bench/guard/costs.py BUILD

Prints, for each of them once: instructions, those inside of a few functions, and how often SQLite and
the system are called. Does not depend on how busy the machine is.
"""

import collections
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

TIMES = 50
INSIDE = {
    "closing": {"the document's text": r"^QDomDocument::toString\(",
                "what was used, through XmlWrapper": r"::insertUsedImpacts\(",
                "of this, lines and positions": r"^orva::(linePosition|answerLines)\(",
                "the queue": r"^DBQueueBroker::addToQueue\(",
                "of this, SQLite": r"^sqlite3_step$"},
    "draining": {"libcurl": r"^curl_easy_perform$",
                 "the transport with it": r"^RestClient::post\(",
                 "the journal": r"::recordAndTakeNext\(",
                 "of this, SQLite": r"^sqlite3_step$"},
}
CALLS = {"statements prepared": r"^sqlite3_prepare", "statements run": r"^sqlite3_step$",
         "writes": r"^pwrite", "reads": r"^pread", "syncs": r"^f(data)?sync$"}


class Profile:
    """The calls of one of callgrind's files: how many of each function, and what is inside."""

    def __init__(self, file):
        self.total = 0
        self.calls = collections.Counter()
        self.inside = collections.Counter()
        names = {}
        callee = count = None
        for line in file.read_text().splitlines():
            if match := re.match(r"c?fn=\((\d+)\)(?: (.*))?", line):
                if match[2]:
                    names[match[1]] = re.sub(r"(@@.*|'\d+)$", "", match[2])
                if line.startswith("cfn"):
                    callee = names[match[1]]
            elif match := re.match(r"calls=(\d+)", line):
                count = int(match[1])
            elif match := re.match(r"totals: (\d+)", line):
                self.total = int(match[1])
            elif count is not None:
                self.calls[callee] += count
                self.inside[callee] += int(line.split()[1])
                count = None

    @staticmethod
    def sum(counter, pattern):
        return sum(value for name, value in counter.items() if re.search(pattern, name))


def measure(build, part, folder):
    subprocess.run(
        ["valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no", "--separate-threads=yes",
         f"--callgrind-out-file={folder / part}", build / "bin/orva-costs", part, str(TIMES)],
        env=os.environ | {"QT_HASH_SEED": "0", "LC_ALL": "C.UTF-8"}, check=True)
    # the first thread; the others are the server's
    return Profile(folder / f"{part}-01")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    build = Path(sys.argv[1]).resolve()
    print("| What | Once | Floor |\n|---|---|---|")
    with tempfile.TemporaryDirectory(prefix="orva-costs-") as folder:
        for part, functions in INSIDE.items():
            subject, floor = (measure(build, name, Path(folder)) for name in (part, f"{part}-floor"))
            if not subject.total or not floor.total:
                sys.exit(f"costs.py: nothing was counted of {part}")
            row = f"| {part}, instructions | {subject.total / TIMES:,.0f} | {floor.total / TIMES:,.0f}"
            print(f"{row}, ratio {subject.total / floor.total:.3f} |")
            for figures, patterns in (("inside", functions), ("calls", CALLS)):
                for name, pattern in patterns.items():
                    ours, floors = (profile.sum(getattr(profile, figures), pattern) / TIMES
                                    for profile in (subject, floor))
                    digits = 0 if figures == "inside" else 2
                    print(f"| {part}, {name} | {ours:,.{digits}f} | {floors:,.{digits}f} |")


if __name__ == "__main__":
    main()
