# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""The list of mutants that no test can tell from the original, each with its reason."""

import fnmatch
from dataclasses import dataclass

import records


@dataclass
class Entry:
    where: int  # in the list
    file: str
    line: str
    change: str  # "*" stands for anything
    reason: str
    below: str = ""  # the line above, where the line itself stands more than once in the file
    matches: int = 0

    def covers(self, mutant):
        pattern = self.change.replace("[", "[[]").replace("?", "[?]")
        return (self.file == mutant.file and self.line == mutant.line_text
                and self.below in ("", mutant.line_above)
                and fnmatch.fnmatchcase(mutant.change, pattern))


def read(path):
    return [Entry(where, **record)
            for where, record in records.read(path, ("file", "line", "change", "reason"), ("below",))]


def listed(mutants, entries, path):
    """The identities of the mutants that are listed; an entry without a match, or
    with two where it has no "*", is an error."""
    found = set()
    for mutant in mutants:
        for entry in entries:
            if entry.covers(mutant):
                entry.matches += 1
                found.add(id(mutant))
    stale = [entry for entry in entries if entry.matches != 1 and not ("*" in entry.change
                                                                       and entry.matches)]
    for entry in stale:
        print(f"{path}:{entry.where}: matches {entry.matches}: {entry.file}: {entry.change}")
    if stale:
        raise SystemExit("mutants: the list of equivalent mutants does not fit the sources")
    return found
