# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""The page of a case that a till exports, as somebody opens it from a mail: a file, no script, no network."""

import os

from webdriver import until

LANGUAGES = {"en": "C.UTF-8", "ru": "ru_RU.UTF-8"}
HOSTILE = "<script>document.title='ran'</script><img src=x onerror=alert(1)>"


def exported(stage, language="en", sale="sale.toml", *options):
    """Sells over a simulator, recorded, and exports the sale; the page's file."""
    scene = stage.scene()
    scene.open_till(stage.tree)
    with open(scene.path("orva.toml"), "a", encoding="utf-8") as file:
        file.write('[recording]\nfolder = "records"\n')
    if sale != "sale.toml":
        with open(scene.path("sale.toml"), encoding="utf-8") as file:
            text = file.read()
        with open(scene.path(sale), "w", encoding="utf-8") as file:
            file.write(text.replace('name = "', f'name = "{HOSTILE}', 1))
    said = scene.till("sell", sale, "--points", "50", "--wait", "30", locale=LANGUAGES[language])
    page = scene.path("case.html")
    said += scene.till("log", "export", "1", "--html", page, *options, locale=LANGUAGES[language])
    assert os.path.exists(page), said
    return page


def show(stage, page, language="en", dark=False, size=(1280, 900)):
    window = stage.browser(language=language, size=size)
    window.cdp("Emulation.setEmulatedMedia",
               features=[{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])
    window.cdp("Network.enable")
    window.open("file://" + page)
    until(lambda: window.all("h1"), "the page")
    return window


def report_needs_no_script_and_nothing_beside_it(stage):
    page = exported(stage)
    window = show(stage, page)
    assert window.run("return document.scripts.length + document.querySelectorAll("
                      "'link, img, iframe, object, embed, [src], [onclick], [onload]').length") == 0
    assert window.run("return [...document.querySelectorAll('[href]')].every((one) => "
                      "one.getAttribute('href').startsWith('#'))")
    loaded = window.run("return performance.getEntriesByType('resource').map((one) => one.name)")
    assert loaded == [], loaded
    whole = window.text()
    window.cdp("Emulation.setScriptExecutionDisabled", value=True)
    window.open("file://" + page)
    window.cdp("Emulation.setScriptExecutionDisabled", value=False)
    assert window.text() == whole and len(whole) > 1000, "without scripts it shows something else"


def amounts_of_the_slip_lead_to_their_element_and_back(stage):
    window = show(stage, exported(stage))
    links = window.run("return [...document.querySelectorAll('a[href^=\"#answer-\"]')].map((link) => "
                       "link.getAttribute('href').slice(1))")
    assert len(links) > 5, links
    for target in links:
        window.run("document.querySelector(`a[href='#${arguments[0]}']`).click()", target)
        seen = until(lambda target=target: window.run(
            "const at = document.querySelector(':target'); if (at?.id !== arguments[0]) { return null; } "
            "const box = at.getBoundingClientRect(); "
            "return box.height > 0 && box.top > -1 && box.top < innerHeight && {back: at.querySelector('a')?.hash}",
            target), f"the element {target} in sight")
        assert seen["back"], f"{target} leads nowhere back"
        window.run("document.querySelector(':target a[href]').click()")
        until(lambda back=seen["back"]: window.run("return '#' + document.querySelector(':target')?.id") == back,
              "back at the slip")
    return f"{len(links)} amounts"


def report_shows_time_line_queue_and_replay(stage):
    window = show(stage, exported(stage))
    assert window.run("return document.querySelectorAll('svg rect').length") >= 2, "no chart"
    for text in ("What the queue did", "delivered", "What a replay does differently", "identical", "****0017"):
        window.says(text)
    assert "2200000000017" not in window.run("return document.documentElement.outerHTML")
    assert window.all("details > summary")
    stage.close()
    window = show(stage, exported(stage, "en", "sale.toml", "--with-cards"))
    assert "2200000000017" in window.run("return document.documentElement.outerHTML")


def next_by_tab(window):
    """What has the focus after the next Tab; nothing behind the last one."""
    window.press("Tab")
    name = window.run("return document.activeElement.tagName")
    if name == "BODY":
        return None
    assert window.run("const style = getComputedStyle(document.activeElement); "
                      "return style.outlineStyle !== 'none' && style.outlineWidth !== '0px'"), f"{name} shows no focus"
    return name


def keyboard_alone_unfolds_and_follows_an_amount(stage):
    window = show(stage, exported(stage))
    window.run("document.querySelectorAll('details').forEach((one) => { one.open = false; })")
    unfolded = 0
    while name := next_by_tab(window):
        if name == "SUMMARY":
            unfolded += 1
            for key, opened in (("Enter", True), (" ", False), (" ", True)):
                window.press(key)
                until(lambda opened=opened: window.run(
                    "return document.activeElement.parentElement.open") == opened, "what is folded")
    assert unfolded == len(window.all("details")) > 0, unfolded
    window.run("document.activeElement.blur()")
    while not window.run("return document.activeElement.hash?.startsWith('#answer-')"):
        assert next_by_tab(window), "no amount is reached"
    wanted = window.run("return document.activeElement.hash")
    window.press("Enter")
    until(lambda: window.run("return '#' + document.querySelector(':target')?.id") == wanted, "the amount's element")
    return f"{unfolded} folded parts"


def report_shows_markup_as_text(stage):
    window = show(stage, exported(stage, "en", "hostile.toml"))
    window.says(HOSTILE[:20])
    assert window.run("return document.querySelectorAll('script, img').length") == 0
    assert window.run("return document.title") != "ran" and window.alert() is None


def report_in_both_languages_and_colours_narrow_and_wide(stage):
    for language, heading in (("en", "What the queue did"), ("ru", "Что сделала очередь")):
        page = exported(stage, language)
        for dark in (False, True):
            window = show(stage, page, language, dark)
            window.says(heading)
            assert window.run("return document.documentElement.lang") == language
            light = sum(window.run("return getComputedStyle(document.querySelector('h1')).color.match(/\\d+/g)"
                                   ".slice(0, 3).map(Number)"))
            assert (light > 380) == dark, light
            window.picture(os.path.join(stage.pictures, f"report-{language}-{'dark' if dark else 'light'}.png"))
            for width in (480, 800, 1920):
                window.cdp("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1,
                           mobile=False)
                wide = window.run("return document.documentElement.scrollWidth")
                assert wide <= width, f"{wide} wide in a window of {width}"
                if not dark:
                    window.picture(os.path.join(stage.pictures, f"report-{language}-{width}.png"))
        stage.close()


def no_violation_is_found_in_the_report(stage):
    if not stage.options.axe:
        raise AssertionError("no script that judges: run through scripts/prove page, or name one with --axe")
    with open(stage.options.axe, encoding="utf-8") as file:
        axe = file.read()
    for language in LANGUAGES:
        for dark in (False, True):
            window = show(stage, exported(stage, language), language, dark)
            window.run("document.querySelectorAll('details').forEach((one) => { one.open = true; })")
            value = window.judged(axe)
            assert value["violations"] == [], str(value["violations"])[:2000]
            assert value["passes"] > 10, value
            stage.close()
    return f"{2 * len(LANGUAGES)} views without a violation"


STEPS = [report_needs_no_script_and_nothing_beside_it, amounts_of_the_slip_lead_to_their_element_and_back,
         report_shows_time_line_queue_and_replay, keyboard_alone_unfolds_and_follows_an_amount,
         report_shows_markup_as_text,
         report_in_both_languages_and_colours_narrow_and_wide, no_violation_is_found_in_the_report]
SHORT = [report_needs_no_script_and_nothing_beside_it]
