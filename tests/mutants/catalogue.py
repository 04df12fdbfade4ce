# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""All mutants of the folders that are mutated."""

import collections
import re
import subprocess
from dataclasses import dataclass, field

from areas import area_of
from names import Names
from operators import token_changes
from rearrangements import rearrangements
from statements import Structure
from tokens import Source

# Its text is read by Qt's generator and not by the compiler; tests of the built module compare it.
WITHOUT_CODE = {"plugin/orva.h"}


@dataclass
class Mutant:
    file: str
    start: int
    end: int
    replacement: str
    line: int
    line_text: str
    change: str
    line_above: str
    words: frozenset = field(default_factory=frozenset)  # the function around it, in a header

    def __str__(self):
        return f"{self.file}:{self.line}: {self.change}"

    def applied(self, text):
        return text[:self.start] + self.replacement + text[self.end:]


def files(root):
    listed = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], cwd=root, check=True, text=True,
                            capture_output=True).stdout.split()
    return [name for name in listed if area_of(name) and name not in WITHOUT_CODE]


def all_mutants(root):
    elements = (root / "client/elements.h").read_text()

    def names_in(*folders):
        return Names([path.read_text() for folder in folders
                      for path in sorted((root / folder).rglob("*.h"))], elements)

    names = {"client": names_in("host", "client"), "host": names_in("host"),
             "till": names_in("host", "till"), "recording": names_in("host", "till"),
             "simulator": names_in("simulator")}
    return [mutant for name in files(root)
            for mutant in mutants_of(root, name, names[area_of(name).name])]


def unchanged(name):
    """The file as it is, which every test must pass."""
    return Mutant(name, 0, 0, "", 1, "", "unchanged", "")


def mutants_of(root, name, names):
    source = Source(name, (root / name).read_text())
    found, seen = [], set()
    for start, end, replacement, change in _changes(source, names):
        result = source.text[:start] + replacement + source.text[end:]
        if result not in seen:
            seen.add(result)
            found.append(Mutant(name, start, end, replacement, source.line_of(start),
                                source.line_text(start), change,
                                source.line_above(start), _function(source, start)))
    found.sort(key=lambda mutant: (mutant.start, mutant.end))
    _number_repetitions(found)
    return found


def _number_repetitions(mutants):
    """The second one of the same change on a line is its "#2"."""
    seen = collections.Counter()
    for mutant in mutants:
        place = (mutant.line, mutant.change)
        seen[place] += 1
        if seen[place] > 1:
            mutant.change += f" #{seen[place]}"


def _changes(source, names):
    for token, replacement in token_changes(source, names):
        shown = f"{token.text} -> {replacement}" if replacement else f"{token.text} dropped"
        yield token.start, token.end, replacement, shown
    for start, end, replacement, description in rearrangements(source, Structure(source)):
        shown = " ".join(source.text[start:end].split())
        shown = shown if len(shown) <= 60 else shown[:57] + "..."
        yield start, end, replacement, f"{description}: {shown}"


def _function(source, offset):
    """For the inline functions and constants of headers: the name that their users spell."""
    if not source.name.endswith(".h"):
        return frozenset()
    head = re.findall(r"^(?:inline|template|auto|T|QString)\b[^\n;={]*?(\w+)\s*(?:\(|=)",
                      source.text[:offset], re.M)
    return frozenset(head[-1:])
