# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""What came from outside is text, never markup; and who may change something."""

import html
import http.client
import json

from scene import precheck
from steps import open_newest
from webdriver import until

# each would call mark() if anything of it ran
STRINGS = [
    "<script>mark('script')</script>",
    "<img src=x onerror=mark('img')>",
    "\"><svg onload=mark('svg')>",
    "javascript:mark('address')",
    "'-mark('quote')-'",
    "<style>body{display:none}</style>",
    "<iframe srcdoc=\"<script>parent.mark('frame')</script>\"></iframe>",
    "]]><script>mark('cdata')</script>",
    "&lt;script&gt;mark('entity')&lt;/script&gt;",
    "\u202e\u2066reversed",
    "</pre></main><form action=http://evil.test><input name=card>",
    "__proto__",
    "constructor",
]

# listens before any script of the page
LISTEN = """window.ran = []; window.mark = (name) => window.ran.push(name);
document.addEventListener('securitypolicyviolation', (event) => window.ran.push('policy: ' + event.violatedDirective));
window.addEventListener('error', (event) => window.ran.push('error: ' + event.message));"""

# what a page that is less careful would do with a text
PLANTS = ["document.createElement('img').setAttribute('onerror', \"mark('planted')\")",
          "document.body.innerHTML = '<b>planted</b>'",
          "document.createElement('script').textContent = \"mark('planted')\"",
          "document.write('<b>planted</b>')",
          "document.createElement('iframe').srcdoc = '<b>planted</b>'"]

RULES = """strict = false
[auth]
user = "till"
password = "secret"
apiKey = "demo"
[discount]
percent = 5
"""


def rules():
    text = RULES
    for i, string in enumerate(STRINGS):
        text += f"[[card]]\nnumber = {json.dumps(string + str(i))}\nname = {json.dumps(string)}\nsurname = 'x'\nbalance = 5\n"
    return text + f"[[message]]\nchannel = 'pos'\ntext = {json.dumps(STRINGS[0])}\n"


def foreign_elements(window):
    """How many elements are there that the page itself never makes."""
    return window.run("return document.querySelectorAll('body script, body iframe, body img, body style, "
                      "main form[action], [onerror], [onload], a[href]').length")


def send_hostile(scene):
    for i, string in enumerate(STRINGS):
        text = html.escape(string, quote=False)
        scene.post("precheck", precheck(text, card=html.escape(string + str(i), quote=False), sku=text))
        scene.post("precheck", string)  # no document at all
        scene.post("precheck", f"<RawCheck>{string}</RawCheck>")


def nothing_foreign_runs(stage):
    scene = stage.scene(rules=rules())
    window = stage.browser()
    window.cdp("Page.addScriptToEvaluateOnNewDocument", source=LISTEN)
    send_hostile(scene)
    window.open(scene.page)
    window.says("connected", "#state")
    count = 3 * len(STRINGS)
    until(lambda: len(scene.get("/exchanges")["exchanges"]) == count, "all exchanges")
    for number in range(1, count + 1):
        window.run("document.querySelector('.list').scrollTop = arguments[0]", max(0, count - number - 3) * 28)
        open_newest(window, number)
        assert foreign_elements(window) == 0, number
    first = STRINGS[0]
    window.run("document.querySelector('.list').scrollTop = 1e6")
    open_newest(window, 1)
    shown = window.run("return document.querySelector('.sides pre').textContent")
    assert html.escape(first, quote=False) in shown, shown
    for tab in ("Books", "Faults", "Try a check", "Rules"):
        window.button(tab, "#tabs")
        window.says(first if tab != "Faults" else "Nothing")
        assert foreign_elements(window) == 0, tab
    ran = window.run("return window.ran")
    assert ran == [], ran
    assert window.alert() is None
    # the listener hears what runs, and the policy refuses what would make markup or a script of a text
    window.run("mark('heard')")
    assert window.run("return window.ran") == ["heard"]
    for plant in PLANTS:
        outcome = window.run(f"try {{ {plant}; return 'let in' }} catch (refused) {{ return refused.name }}")
        assert outcome == "TypeError", f"{plant}: {outcome}"


def only_the_page_may_change(stage):
    scene = stage.scene()
    host = scene.page.removeprefix("http://").rstrip("/")
    fault = json.dumps({"kind": "reply-lost"})

    def ask(headers, method="POST"):
        connection = http.client.HTTPConnection(host)
        connection.putrequest(method, "/faults", skip_host=True)
        for name, value in {"Host": host, "Content-Type": "application/json", **headers}.items():
            connection.putheader(name, value)
        connection.putheader("Content-Length", str(len(fault)))
        connection.endheaders(fault.encode())
        return connection.getresponse().status

    assert ask({"Host": "evil.test"}) == 403
    assert ask({"Origin": "http://evil.test"}) == 403
    assert ask({"Origin": f"http://{host}"}) == 403, "without the token"
    assert ask({"Origin": f"http://{host}", "X-Orva-Token": "0" * 32}) == 403
    assert ask({"Content-Type": "text/plain"}) == 415
    assert scene.get("/faults") == []
    assert ask({}) == 200, "a script"
    # a page of another address, in a real browser
    other = stage.scene()
    window = stage.browser()
    window.open(other.page)
    window.says("connected", "#state")
    status = window.run("return fetch(arguments[0] + 'faults', {method: 'POST', mode: 'no-cors', body: arguments[1]})"
                        ".then(() => 'sent', (refused) => 'refused')", scene.page, fault)
    assert status == "refused", status  # by the page's own policy
    window.open("data:text/html,<p>another page</p>")
    window.run("return fetch(arguments[0] + 'faults', {method: 'POST', mode: 'no-cors', "
               "headers: {'Content-Type': 'text/plain'}, body: arguments[1]}).then(() => 1, () => 1)", scene.page, fault)
    assert len(scene.get("/faults")) == 1, "another page has armed a fault"
    status, _ = scene.ask("GET", "/")
    assert status == 200
    policy = http.client.HTTPConnection(host)
    policy.request("GET", "/")
    header = policy.getresponse().getheader("Content-Security-Policy")
    assert "unsafe" not in header and "default-src 'none'" in header, header


STEPS = [nothing_foreign_runs, only_the_page_may_change]
SHORT = [nothing_foreign_runs]
