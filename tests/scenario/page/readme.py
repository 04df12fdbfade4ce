#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""The pictures of the README, with the made-up people and cards of the built-in rules: readme.py BUILD-FOLDER FOLDER"""

import argparse
import os

from prove import Stage
from report import exported, show
from scene import precheck
from steps import open_newest, open_page
from webdriver import Driver

LARGEST = 150 * 1024
SIZE = (1060, 1180)


def page(stage, file):
    scene, window = open_page(stage, size=SIZE)
    scene.open_till(stage.tree)
    scene.till("sell", "sale.toml", "--points", "50", "--wait", "30")
    scene.post("precheck", precheck("visit-2", card="2200000000024", total="349.90"))
    scene.post("precheck", precheck("visit-3", card="2200000000099"))
    scene.ask("POST", "/faults", {"kind": "status", "endpoint": "precheck", "status": 503})
    scene.post("precheck", precheck("visit-4", total="89.00"))
    number = scene.get("/exchanges")["last"]
    open_newest(window, number)
    confirm = [row["number"] for row in scene.get("/exchanges")["exchanges"] if row["operation"] == "checkconfirm"][0]
    open_newest(window, confirm)
    window.run("scrollTo(0, 0); document.activeElement.blur()")
    window.picture(file)


def report(stage, file):
    window = show(stage, exported(stage), size=SIZE)
    window.run("scrollTo(0, 0)")
    window.picture(file)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build")
    parser.add_argument("folder")
    options = parser.parse_args()
    options.axe = None
    os.makedirs(options.folder, exist_ok=True)
    driver = Driver()
    try:
        for make in (page, report):
            stage = Stage(options, driver)
            file = os.path.join(options.folder, make.__name__ + ".png")
            try:
                make(stage, file)
            finally:
                stage.close()
            size = os.path.getsize(file)
            print(f"{file}: {size // 1024} KiB")
            if size > LARGEST:
                raise SystemExit(f"docs: {file} has {size} bytes: more than {LARGEST}")
    finally:
        driver.close()


if __name__ == "__main__":
    main()
