# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Prints the line coverage of each file of plugin/ and client/ by their own tests; 1 where a line is
not covered that the list does not give a reason for, or is listed and covered."""

import json
import os
import shutil
import subprocess
import sys
from pathlib import Path

import records
from build import PROGRAMS, Build

ROOT = Path(__file__).resolve().parents[2]
LIST = "tests/mutants/uncovered.txt"
KEYS = ("file", "line", "reason")
# reaches nothing that the spending model's test does not reach, in three times the time
LEFT_OUT = {"client-spending-properties-test"}


def measured(build):
    """Runs the tests on objects that count; returns gcovr's entries for the files."""
    folder = build.folder / "coverage"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    objects = {}
    for source in build.compile_commands:
        if source.startswith(("client/", "plugin/")):
            target = folder / (source.replace("/", "_") + ".o")
            command = build.compile_command(source, target, "--coverage", "-fprofile-abs-path")
            subprocess.run(command, cwd=build.folder, check=True)
            objects[build.object_of(source)] = str(target)
    for name in sorted(PROGRAMS.keys() - LEFT_OUT):
        program = folder / name
        command = build.link_command(name, objects, program) + ["--coverage"]
        subprocess.run(command, cwd=build.folder, check=True)
        with open(folder / f"{name}.log", "w", encoding="utf-8") as log:
            subprocess.run([program, "--gtest_brief=1"], cwd=build.folder, check=True, stdout=log,
                           stderr=log, env=dict(os.environ, LC_ALL="C.UTF-8"))
    report = folder / "lines.json"
    subprocess.run(["gcovr", "--root", ROOT, "--object-directory", folder, "--filter", "client/",
                    "--filter", "plugin/", "--json", report, folder], cwd=ROOT, check=True)
    return sorted(json.loads(report.read_text())["files"], key=lambda entry: entry["file"])


def main():
    entries = {(record["file"], record["line"]): where
               for where, record in records.read(ROOT / LIST, KEYS)}
    total = covered = excused = 0
    bad = []
    build = Build(ROOT, os.cpu_count())
    build.prepare()
    for entry in measured(build):
        name = entry["file"]
        texts = (ROOT / name).read_text().splitlines()
        lines = [line for line in entry["lines"] if not line["gcovr/noncode"]]
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
