#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""The simulator's page in a real browser: prove.py BUILD-FOLDER [--short] [--axe FILE] [STEP...]

Prints a line a step. Pictures of the page stand in BUILD-FOLDER/page afterwards. The exit code is 1 where a
step fails."""

import argparse
import os
import sys
import time
import traceback

import hostile
import load
import looks
import report
import steps
from scene import Scene
from webdriver import Browser, Driver

TREE = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", "..", ".."))


class Stage:
    """What a step is given."""

    def __init__(self, options, driver):
        self.options = options
        self.driver = driver
        self.tree = TREE
        self.pictures = os.path.join(options.build, "page")
        os.makedirs(self.pictures, exist_ok=True)
        self.open = []

    def scene(self, **arguments):
        self.open.append(Scene(self.options.build, **arguments))
        return self.open[-1]

    def browser(self, driver=None, **arguments):
        self.open.append(Browser(driver or self.driver, **arguments))
        return self.open[-1]

    def close(self):
        for thing in reversed(self.open):
            thing.close()
        self.open = []


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build")
    parser.add_argument("--short", action="store_true", help="a few steps, for at most a minute")
    parser.add_argument("--axe", help="a script that judges how usable the page is")
    parser.add_argument("step", nargs="*")
    options = parser.parse_intermixed_args()
    wanted = [step for module in (steps, hostile, looks, report, load)
              for step in (module.SHORT if options.short and not options.step else module.STEPS)
              if not options.step or step.__name__ in options.step]
    if not wanted:
        raise SystemExit("page: there is no such step")
    driver = Driver()
    failed = 0
    try:
        for step in wanted:
            stage = Stage(options, driver)
            start = time.monotonic()
            try:
                figures = step(stage) or ""
                stage.close()
                print(f"held    {step.__name__:34} {time.monotonic() - start:5.1f} s  {figures}", flush=True)
            except Exception:  # a step must not keep the others from running
                failed += 1
                traceback.print_exc()
                print(f"FAILED  {step.__name__}", flush=True)
                try:
                    stage.close()
                except Exception:
                    traceback.print_exc()
    finally:
        driver.close()
    print(f"page: {len(wanted) - failed} of {len(wanted)} steps held")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
