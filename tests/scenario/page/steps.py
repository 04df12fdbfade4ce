# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""What a person does on the page, one step a promise."""

import json
import re

from scene import CARD, precheck
from webdriver import until


def open_page(stage, **browser):
    scene = stage.scene()
    window = stage.browser(**browser)
    window.open(scene.page)
    window.says("connected", "#state")
    return scene, window


def rows(window):
    return window.run("return [...document.querySelectorAll('.list .body .row')].map((row) => "
                      "[...row.children].map((cell) => cell.textContent))")


def open_newest(window, number):
    until(lambda: window.all(f"#row-{number}"), f"exchange {number} in the list")
    window.click(f"#row-{number}")
    window.says(f"Exchange {number}", ".detail h2")


def exchanges_arrive_live(stage):
    scene, window = open_page(stage)
    scene.post("precheck", precheck("live-1"))
    until(lambda: len(rows(window)) == 1, "the exchange in the list")
    _, operation, check, card, status, duration, fault = rows(window)[0]
    assert (operation, check, card, status, fault) == ("precheck", "live-1", CARD, "200", ""), rows(window)
    assert re.fullmatch(r"[\d.]+ ms", duration), duration
    scene.post("precheck", precheck("live-2", card="999"))
    until(lambda: [row[2] for row in rows(window)] == ["live-2", "live-1"], "the newest on top")
    assert rows(window)[0][4] == "424"


def filters_choose_exchanges(stage):
    scene, window = open_page(stage)
    scene.post("precheck", precheck("one"))
    scene.post("precheck", precheck("two", card="2200000000024", extra="<shopName>needle</shopName>"))
    scene.post("precheck", precheck("three", card="999"))
    until(lambda: len(rows(window)) == 3, "three exchanges")
    for name, value, wanted in (("card", "0024", ["two"]), ("check", "on", ["one"]), ("text", "NEEDLE", ["two"])):
        window.type(f".filter [name={name}]", value)
        until(lambda w=wanted: [row[2] for row in rows(window)] == w, f"{name} chooses {wanted}")
        window.run("const field = document.querySelector(arguments[0]); field.value = ''; "
                   "field.dispatchEvent(new Event('input'))", f".filter [name={name}]")
        until(lambda: len(rows(window)) == 3, "all again")
    window.run("const field = document.querySelector('[name=status]'); field.value = '4'; "
               "field.dispatchEvent(new Event('change'))")
    until(lambda: [row[2] for row in rows(window)] == ["three"], "the refused one")


def text_is_looked_for_in_what_comes(stage):
    scene, window = open_page(stage)
    scene.post("precheck", precheck("before", extra="<shopName>needle</shopName>"))
    window.type(".filter [name=text]", "needle")
    until(lambda: [row[2] for row in rows(window)] == ["before"], "the one that was there")
    for i in range(4):
        scene.post("precheck", precheck(f"hay-{i}"))
        scene.post("precheck", precheck(f"found-{i}", extra="<shopName>Needle</shopName>"))
    until(lambda: [row[2] for row in rows(window)] == [f"found-{i}" for i in (3, 2, 1, 0)] + ["before"],
          "those that have come")


def opened_exchange_shows_both_sides(stage):
    scene, window = open_page(stage)
    scene.post("precheck", precheck("sides"))
    open_newest(window, 1)
    request, answer = window.run("return [...document.querySelectorAll('.sides pre')].map((pre) => pre.textContent)")
    assert "\n  <id>sides</id>\n" in request, request
    assert "<awardBonus>" in answer, answer
    assert window.run("return document.querySelectorAll('.sides .xml-open').length") > 10
    # every finding stands at its element: the built-in rules are not strict, the schemas are
    findings = window.run("return [...document.querySelectorAll('.sides pre .finding')].map((one) => "
                          "[one.parentElement.firstElementChild.textContent, one.textContent])")
    missing = [name for place, sentence in findings for name in re.findall(r"^(\S+) is missing", sentence)
               if place == ("<RawCheck>" if "/" not in name else "<RawItem>")]
    assert {"number", "date", "items/RawItem[1]/price"} <= set(missing), findings
    assert len(findings) == len(scene.get("/exchanges/1")["findings"]), findings
    listed = window.run("return [...document.querySelectorAll('.findings li')].map((one) => one.textContent)")
    assert listed == [one["sentence"] for one in scene.get("/exchanges/1")["findings"]], listed
    left, right = window.run("return [...document.querySelectorAll('.sides section')].map((side) => "
                             "side.getBoundingClientRect().left)")
    assert left < right, "not side by side"


def finding_stands_at_its_element(stage):
    scene, window = open_page(stage)
    scene.open_till(stage.tree)
    scene.till("check", "sale.toml")
    number = scene.get("/exchanges")["last"]
    whole = scene.get(f"/exchanges/{number}")
    assert whole["findings"] == [], whole["findings"]
    parts = whole["request"].split("<sku>")
    assert len(parts) == 4, whole["request"]
    total = parts[3].replace("<total>", "<total>a lot of ", 1)
    scene.post("precheck", f"{parts[0]}<sku>{parts[1]}<surprise>1</surprise><sku>{parts[2]}<sku>{total}")
    open_newest(window, number + 1)
    beside = window.run("return [...document.querySelectorAll('.sides pre .finding')].map((finding) => "
                        "[finding.textContent, finding.parentElement.firstElementChild.textContent, "
                        "[...document.querySelectorAll('.sides pre .xml-open')].filter((open) => "
                        "open.textContent === '<RawItem>' && open.compareDocumentPosition(finding) & 4).length])")
    assert len(beside) == 2, beside
    assert beside[0][0].startswith("items/RawItem[2]/surprise is unknown here"), beside
    assert beside[0][1:] == ["<surprise>", 2], beside
    assert beside[1][0].startswith("items/RawItem[3]/total is \"a lot of "), beside
    assert beside[1][1:] == ["<total>", 3], beside


def difference_to_the_precheck_before(stage):
    scene, window = open_page(stage)
    scene.post("precheck", precheck("twice", total="100.00"))
    scene.post("precheck", precheck("other", total="70.00"))
    scene.post("precheck", precheck("twice", total="60.00"))
    open_newest(window, 3)
    window.says("Against the pre-check before (1)", ".detail")
    table = window.text(".detail > div > section:last-of-type")
    assert "total[1]" in table and "100.00" in table and "60.00" in table, table
    assert "other" not in table, table


def curl_line_has_no_authorization_and_works(stage):
    scene, window = open_page(stage)
    scene.post("precheck", precheck("it's \"quoted\""))
    open_newest(window, 1)
    window.button("Copy as curl", ".detail")
    line = until(lambda: window.text(".command"), "the line")
    assert line.startswith("curl ") and scene.server in line, line
    assert "uthorization" not in line and "Basic" not in line, line
    import subprocess
    answer = subprocess.run(["bash", "-c", line + f" -H 'Authorization: {scene.authorization()}'"], text=True,
                            stdout=subprocess.PIPE, check=True).stdout
    assert "<id>it's \"quoted\"</id>" in answer, answer


def send_again(stage):
    scene, window = open_page(stage)
    scene.post("precheck", precheck("again"))
    open_newest(window, 1)
    window.button("Send again", ".detail")
    window.says("the answer was 200", "#notice")
    until(lambda: [row[2] for row in rows(window)] == ["again", "again"], "both in the list")


def sale_and_return_of_a_till(stage):
    scene, window = open_page(stage)
    scene.open_till(stage.tree)
    said = scene.till("sell", "sale.toml", "--points", "50")
    said += scene.till("queue", "deliver")
    until(lambda: scene.get("/checks")["checks"], "the sale in the books: " + said)
    said = scene.till("return", "return.toml") + scene.till("queue", "deliver")
    until(lambda: len(scene.get("/checks")["checks"]) == 2, "the return in the books: " + said)
    confirm = [row for row in scene.get("/exchanges")["exchanges"] if row["operation"] == "checkconfirm"][0]
    open_newest(window, confirm["number"])
    window.says("Booked by it", ".detail")
    sale = scene.get("/checks")["checks"][1]
    spent = sale["spent"]
    window.says(spent, ".detail")
    window.button("Books", "#tabs")
    window.says("The books agree.")
    window.button(CARD)
    window.says("Course of the balance")
    points = window.run("return document.querySelector('svg.chart .course').getAttribute('points').split(' ').length")
    assert points == 2, points
    window.button(sale["id"])
    window.says("Returns of this sale")
    window.says(spent)
    window.says("discount.sku.\"1001\" = 10.00 %")
    back = scene.get(f"/checks/{sale['id']}")["returns"][0]
    reasons = {(one["line"], one["what"]): one for one in back["reasons"]}
    line = back["lines"][0]
    for what in ("total", "givenBack", "takenBack"):
        assert (0, what) in reasons and reasons[line["line"], what]["amount"] == line[what], reasons
        assert reasons[line["line"], what]["fits"], reasons
        window.says(reasons[line["line"], what]["rule"])


def faults_are_armed_struck_and_removed(stage):
    scene, window = open_page(stage)
    window.button("Faults", "#tabs")
    window.says("Nothing goes wrong on purpose.")
    window.run("const kind = document.querySelector('[name=kind]'); kind.value = 'status'; "
               "kind.dispatchEvent(new Event('change')); document.querySelector('[name=endpoint]').value = 'precheck'")
    window.type(".form [name=status]", "503")
    window.type(".form [name=card]", CARD)
    window.button("Arm")
    window.says("armed", "table")
    assert scene.post("precheck", precheck("other-card", card="2200000000024")) == 200
    assert scene.post("precheck", precheck("struck")) == 503
    window.says("the last that struck")
    window.button("Remove")
    window.says("Nothing goes wrong on purpose.")
    assert scene.get("/faults") == []
    window.button("Exchanges", "#tabs")
    until(lambda: rows(window) and rows(window)[0][6] == "status", "the fault at its exchange")
    assert window.all("#row-2.struck") and not window.all("#row-1.struck")


def server_away(stage):
    scene, window = open_page(stage)
    window.click("#away")
    until(lambda: scene.get("/server")["away"], "the server away")
    assert scene.post("precheck", precheck("away")) == 0
    window.click("#away")
    until(lambda: not scene.get("/server")["away"], "the server back")
    assert scene.post("precheck", precheck("back")) == 200


def check_to_try(stage):
    scene, window = open_page(stage)
    window.button("Try a check", "#tabs")
    window.says(CARD, "[name=card]")
    window.type("[name=total]", "95.05")
    window.type("[name=points]", "10")
    window.button("Work out")
    window.says("discount.sku.\"1001\" = 10.00 %")
    wanted = json.loads(scene.ask("POST", "/try", {
        "card": CARD, "points": "10", "lines": [{"sku": "1001", "total": "95.05", "minTotal": "0"}]})[1])
    for grant in wanted["lines"][0]["grants"]:
        window.says(grant["rule"])
        window.says(grant["granted"])
    assert scene.get("/checks")["checks"] == []


def mistake_in_the_rules(stage):
    scene, window = open_page(stage)
    window.button("Rules", "#tabs")
    window.says("The file is followed as it stands.")
    with open(scene.rules, encoding="utf-8") as file:
        good = file.read()
    scene.write_rules(good.replace("percent = 5 ", "percent = five ", 1))
    window.says("The file is not followed")
    line = good[:good.index("percent = 5 ")].count("\n") + 1
    window.says(f"rules.toml:{line}:")
    assert "percent = five" in window.text(".wrong-line")
    assert scene.post("precheck", precheck("old-rules")) == 200
    scene.write_rules(good)
    window.says("The file is followed as it stands.")


def keyboard_alone_opens_an_exchange(stage):
    scene, window = open_page(stage)
    for i in range(30):
        scene.post("precheck", precheck(f"key-{i}"))
    until(lambda: rows(window), "the rows")
    for _ in range(30):
        window.press("Tab")
        if window.run("return document.activeElement.classList.contains('list')"):
            break
    window.press("Down", "Down", "Down", "Enter")
    window.says("Exchange 28", ".detail h2")
    assert window.run("return document.activeElement.tagName") == "H2"
    window.press("Escape")
    until(lambda: window.run("return document.activeElement.classList.contains('list')"), "the focus back")
    window.press("End", "Enter")
    window.says("Exchange 1", ".detail h2")


STEPS = [exchanges_arrive_live, filters_choose_exchanges, text_is_looked_for_in_what_comes, opened_exchange_shows_both_sides,
         finding_stands_at_its_element, difference_to_the_precheck_before, curl_line_has_no_authorization_and_works,
         send_again, sale_and_return_of_a_till, faults_are_armed_struck_and_removed, server_away, check_to_try,
         mistake_in_the_rules, keyboard_alone_opens_an_exchange]
SHORT = [exchanges_arrive_live, opened_exchange_shows_both_sides, faults_are_armed_struck_and_removed]
