# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Which test suites stand nearest to a source: those that include its header or bear its name."""

import re
from pathlib import PurePath


class NearTests:
    def __init__(self, root):
        tests = {path: path.read_text() for path in sorted((root / "tests/unit").rglob("*test.cpp"))}
        self.suites = {path: set(re.findall(r"^TEST(?:_F|_P)?\((\w+),", text, re.M))
                       for path, text in tests.items()}
        self.included = {path: set(re.findall(r'^#include "(.+)"', text, re.M))
                         for path, text in tests.items()}

    def pattern(self, source):
        """For --gtest_filter; empty where no suite is near."""
        path = PurePath(source).with_suffix("")
        headers = {source, f"{path}.h", f"{path}_p.h"}
        near = set()
        for test, suites in self.suites.items():
            if self.included[test] & headers or test.name.startswith(path.name):
                near |= suites
        return ":".join(f"{suite}.*:*/{suite}.*" for suite in sorted(near))
