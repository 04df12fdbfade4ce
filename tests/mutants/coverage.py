# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Prints the line coverage of each file of plugin/ and client/ from gcovr's report; 1 where a line
is not covered that is not listed with a reason, or is listed and covered."""

import json
import sys
from pathlib import Path

import records

ROOT = Path(__file__).resolve().parents[2]
LIST = "tests/mutants/uncovered.txt"
KEYS = ("file", "line", "reason")


def main():
    entries = {(record["file"], record["line"]): where
               for where, record in records.read(ROOT / LIST, KEYS)}
    total = covered = excused = 0
    bad = []
    for measured in sorted(json.loads(Path(sys.argv[1]).read_text())["files"],
                           key=lambda entry: entry["file"]):
        name = measured["file"]
        texts = (ROOT / name).read_text().splitlines()
        lines = [line for line in measured["lines"] if not line["gcovr/noncode"]]
        missed = [line["line_number"] for line in lines if not line["count"]]
        for number in missed:
            text = texts[number - 1].strip()
            if entries.get((name, text)) is None:
                bad.append(f"{name}:{number}: not covered: {text}")
            else:
                entries[(name, text)] = 0
                excused += 1
        total += len(lines)
        covered += len(lines) - len(missed)
        print(f"{name:36} {len(lines) - len(missed):4} of {len(lines):4} lines")
    bad += [f"{LIST}:{where}: is covered or gone: {name}: {text}"
            for (name, text), where in entries.items() if where]
    print(*bad, sep="\n", end="\n" if bad else "")
    if total == 0:
        raise SystemExit("coverage: nothing was measured")
    print(f"{100 * covered / total:.1f} % of {total} lines covered, {excused} listed with a reason, "
          f"{total - covered - excused} neither")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
