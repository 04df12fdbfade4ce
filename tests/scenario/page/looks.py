# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""How the page looks: languages, dark and light, narrow and wide, and for who does not look."""

import os

from scene import precheck
from steps import open_newest
from webdriver import until

TABS = {"en-GB": ("Exchanges", "Books", "Faults", "Try a check", "Rules"),
        "ru-RU": ("Обмен", "Книга", "Неисправности", "Пробный чек", "Правила")}


def dressed(stage, language="en-GB", dark=False, size=(1280, 900)):
    scene = stage.scene()
    window = stage.browser(language=language, size=size)
    window.cdp("Emulation.setEmulatedMedia",
               features=[{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])
    for i in range(12):
        scene.post("precheck", precheck(f"visit-{i // 2}", total=f"{100 + i}.00"))
    scene.post("precheck", precheck("stranger", card="999"))
    window.open(scene.page)
    until(lambda: window.all("#row-13"), "the exchanges")
    return scene, window


def pictures_in_both_languages_and_colours(stage):
    sizes = []
    for language in TABS:
        for dark in (False, True):
            _, window = dressed(stage, language, dark)
            name = f"{language[:2]}-{'dark' if dark else 'light'}"
            open_newest_of(window, 12)
            background = window.run("return getComputedStyle(document.body).backgroundColor")
            assert (background == "rgb(19, 24, 23)") == dark, background
            assert window.run("return document.documentElement.lang") == language[:2]
            for i, tab in enumerate(TABS[language]):
                window.button(tab, "#tabs")
                path = os.path.join(stage.pictures, f"{name}-{i + 1}.png")
                window.picture(path)
                sizes.append(os.path.getsize(path))
            stage.close()
    return f"{len(sizes)} pictures, the largest {max(sizes) // 1024} KiB"


def open_newest_of(window, number):
    window.click(f"#row-{number}")
    until(lambda: window.run("return document.activeElement.tagName") == "H2", "the opened exchange")


def nothing_is_wider_than_the_window(stage):
    for width in (480, 800, 1920):
        _, window = dressed(stage, "ru-RU")
        window.cdp("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1, mobile=False)
        open_newest_of(window, 12)
        for tab in TABS["ru-RU"]:
            window.button(tab, "#tabs")
            wide = window.run("return document.documentElement.scrollWidth")
            assert wide <= width, f"{tab} is {wide} wide in a window of {width}"
        window.button(TABS["ru-RU"][0], "#tabs")
        window.picture(os.path.join(stage.pictures, f"width-{width}.png"))
        stage.close()


def no_violation_is_found(stage):
    if not stage.options.axe:
        raise AssertionError("no script that judges: run through scripts/prove page, or name one with --axe")
    with open(stage.options.axe, encoding="utf-8") as file:
        axe = file.read()
    judged = 0
    for language, dark in (("en-GB", False), ("ru-RU", True)):
        scene, window = dressed(stage, language, dark)
        scene.ask("POST", "/faults", {"kind": "delay", "endpoint": "checkconfirm"})
        open_newest_of(window, 12)
        for tab in TABS[language]:
            window.button(tab, "#tabs")
            if tab == TABS[language][3]:
                until(lambda: window.all("[name=card] option"), "the cards")
                window.run("document.querySelector('.buttons button:not([type])').click()")
                until(lambda: window.all("main table"), "what is granted")
            value = window.judged(axe)
            assert value["violations"] == [], f"{tab} ({language}): {value['violations']}"
            assert value["passes"] > 10, value
            judged += 1
        stage.close()
    return f"{judged} views without a violation"


STEPS = [pictures_in_both_languages_and_colours, nothing_is_wider_than_the_window, no_violation_is_found]
SHORT = [no_violation_is_found]
