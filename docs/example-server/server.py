# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""A loyalty server for tills, written from docs/protocol.md with Python's standard library alone."""
import argparse, base64, hashlib, json, re, sqlite3, sys, threading
import xml.etree.ElementTree as ET
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

USER, PASSWORD, KEY = "till", "secret", "demo"
PERCENT = {"discount": 5, "award": 5, "pay": 50}
CARDS = [{"number": "2200000000017", "name": "Анна", "surname": "Соколова", "balance": "500.00"},
         {"number": "2200000000024", "name": "Пётр", "surname": "Ильин", "balance": "60.50"},
         {"number": "2200000000031", "name": "Ольга", "surname": "", "balance": "0.00"}]
LARGEST_BODY = 16 << 20
ADDED_TO_REQUEST, ADDED_TO_ANSWER = ("client", "awards", "informing"), ("usedAwards", "payments")
GRANTED = {"discountGranted": "awards/RawItemAwards/discount", "award": "awards/RawItemAwards/awardBonus",
           "pointsAllowed": "awards/RawItemAwards/allowBonusInCurrency"}
USED = {"discount": "usedAwards/RawItemUsedAwards/usedDiscount",
        "points": "usedAwards/RawItemUsedAwards/usedBonusInCurrency"}
SCHEMA = """PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;
CREATE TABLE IF NOT EXISTS cards(number TEXT PRIMARY KEY, name TEXT, surname TEXT, balance INTEGER);
CREATE TABLE IF NOT EXISTS answers(check_id TEXT, digest TEXT, text TEXT, PRIMARY KEY(check_id, digest));
CREATE TABLE IF NOT EXISTS tries(check_id TEXT PRIMARY KEY, digest TEXT);
CREATE TABLE IF NOT EXISTS checks(check_id TEXT PRIMARY KEY, type TEXT, card TEXT, original TEXT, lines TEXT);
CREATE INDEX IF NOT EXISTS returns_of_sale ON checks(original);"""

class Refusal(Exception):
    """A request that is not done, with status, the requirement behind it, and a sentence for people."""

def share(amount, part, whole):
    return (2 * amount * part + whole) // (2 * whole)

def earned_by(lines, paid):
    """What each line of a sale earns."""
    if any(line["discount"] > line["discountGranted"] or line["points"] > line["pointsAllowed"] for line in lines):
        raise Refusal(424, "used-within-granted", "A line used more than it was granted")
    left = sum(line["total"] - line["discount"] for line in lines)
    spent = sum(line["points"] for line in lines)
    if paid != left - spent:
        raise Refusal(424, "payment-agrees", f"{money(left - spent)} is to be paid, not {money(paid)}")
    return [share(line["award"], left - spent, left) if spent else line["award"] for line in lines]

def grant(total, least):
    discount = min(share(total, PERCENT["discount"], 100), max(0, total - least))
    award, allowed = (share(total - discount, PERCENT[name], 100) for name in ("award", "pay"))
    return {"discount": discount, "awardBonus": award, "allowBonusInCurrency": allowed}

def returned_part(sold, before, part):
    """What a part of a sold line gives back and takes back, after the parts before it."""
    def now(booked, taken):
        return share(sold[booked], before["quantity"] + part["quantity"], sold["quantity"]) - before[taken]
    if not 0 < part["quantity"] <= sold["quantity"] - before["quantity"]:
        raise Refusal(424, "return-within-sale", "More is returned than is left of the line")
    if (part["total"], part["givenBack"]) != (now("total", "total"), now("points", "givenBack")):
        raise Refusal(424, "return-shares-agree", "The returned part has another total or was paid with other points")
    return {"givenBack": part["givenBack"], "takenBack": now("earned", "takenBack")}

def money(kopecks):
    return f"{'-' if kopecks < 0 else ''}{abs(kopecks) // 100}.{abs(kopecks) % 100:02}"

def number(text, decimals, what):
    if not re.fullmatch(r"[0-9]{1,12}(\.[0-9]{1,%d})?" % decimals, text or ""):
        raise Refusal(400, "malformed-400", f"{what} is no number from 0")
    whole, _, fraction = text.partition(".")
    return int(whole + fraction.ljust(decimals, "0"))

def need(parent, path):
    element = parent.find(path)
    if element is None:
        raise Refusal(400, "malformed-400", f"{path} is missing")
    return element.text or ""

def sum_at(parent, path):
    return sum(number(element.text, 2, path) for element in parent.findall(path))

def add(parent, path, **texts):
    """Puts the elements of a path below one another, and into the last one elements with texts."""
    for name in path.split("/"):
        parent = ET.SubElement(parent, name)
    for name, text in texts.items():
        ET.SubElement(parent, name).text = text
    return parent

def digest(root, left_out=()):
    """Equal for documents with the same elements and texts, however they are laid out."""
    def plain(element):
        text = element.text or ""
        return [element.tag, text if text.strip() else "",
                [plain(child) for child in element if child.tag not in left_out]]
    return hashlib.sha256(json.dumps(plain(root)).encode()).hexdigest()

class Check:
    """A check as it came; its lines by their id, as what is booked of them begins."""
    def __init__(self, root):
        self.root, self.id, self.type = root, need(root, "id"), need(root, "chType")
        if root.tag != "RawCheck" or self.type not in ("1", "2") or not 1 <= len(self.id) <= 256:
            raise Refusal(400, "malformed-400", "It is no RawCheck, or its id or chType cannot be")
        self.card, self.original = need(root, "cardNumber"), need(root, "originalId") if self.type == "2" else None
        self.items, self.lines = {}, {}
        need(root, "items")
        quantity = "quantity" if self.type == "1" else "returnedQuantity"
        for item in root.findall("items/RawItem"):
            key = need(item, "id")
            if not re.fullmatch("[1-9][0-9]{0,9}", key):
                raise Refusal(400, "malformed-400", "A line's id is no whole number from 1")
            if key in self.lines:
                raise Refusal(424, "line-ids-unique", f"Two lines have the id {key}")
            self.items[key], self.lines[key] = item, {
                "sku": need(item, "sku"), "quantity": number(need(item, quantity), 3, quantity),
                "total": number(need(item, "total"), 2, "total"),
                "givenBack": sum_at(item, "returnedAwards/RawItemReturnedAwards/usedBonusInCurrency")}
        if number(need(root, "total"), 2, "total") != sum(line["total"] for line in self.lines.values()):
            raise Refusal(424, "sums-agree", "The lines do not add up to the total")

class Books:
    def __init__(self, file):
        self.db, self.lock = sqlite3.connect(file, check_same_thread=False), threading.Lock()
        self.db.executescript(SCHEMA)
        with self.db:
            self.db.executemany("INSERT OR IGNORE INTO cards VALUES(:number,:name,:surname,:balance)", [
                card | {"balance": number(card["balance"], 2, "balance")} for card in CARDS])
    def row(self, sql, *values):
        return self.db.execute(sql, values).fetchone()
    def precheck(self, check):
        self.refuse_booked(check)
        card = self.row("SELECT name, surname, balance FROM cards WHERE number=?", check.card)
        if card is None:
            raise Refusal(424, "unknown-card", "The card is unknown")
        for element in [check.root, *check.items.values()]:
            element[:] = [child for child in element if child.tag not in ADDED_TO_REQUEST + ADDED_TO_ANSWER]
        if check.type == "1":
            grants = {key: grant(line["total"], sum_at(check.items[key], "minTotal"))
                      for key, line in check.lines.items()}
        else:
            grants = {key: {"awardBonus": -part["takenBack"]} for key, part in self.returned(check).items()}
        for key, grants_of_line in grants.items():
            add(check.items[key], "awards/RawItemAwards", **{name: money(sum) for name, sum in grants_of_line.items()})
        client = add(check.root, "client/RawCheckClient", name=card[0], surname=card[1])
        add(client, "account/RawCheckAccount", balance=money(card[2]))
        award = sum(line["awardBonus"] for line in grants.values())
        allowed = min(card[2], sum(line.get("allowBonusInCurrency", 0) for line in grants.values()))
        add(check.root, "awards/RawCheckAwards", allowBonus=money(max(0, allowed)), awardBonus=money(award))
        self.db.execute("INSERT OR REPLACE INTO answers VALUES(?,?,?)",
                        (check.id, digest(check.root), ET.tostring(check.root, "unicode")))
        return check.root
    def returned(self, check):
        """What each line of a return gives back and takes back, by what is booked now."""
        sale = self.row("SELECT lines FROM checks WHERE check_id=? AND type='1' AND card=?", check.original, check.card)
        if sale is None:
            raise Refusal(424, "return-of-booked-sale", "No such sale with this card is booked")
        earlier = self.db.execute("SELECT lines FROM checks WHERE original=?", (check.original,)).fetchall()
        sold, earlier, parts = json.loads(sale[0]), [json.loads(lines) for lines, in earlier], {}
        for key, line in check.lines.items():
            if sold.get(key, {}).get("sku") != line["sku"]:
                raise Refusal(424, "return-within-sale", f"The sale has no line {key} of this sku")
            before = {name: sum(lines[key][name] for lines in earlier if key in lines)
                      for name in ("quantity", "total", "givenBack", "takenBack")}
            parts[key] = returned_part(sold[key], before, line)
        return parts
    def booking(self, check):
        """What each line books; refused unless all agrees with the answer it was made from."""
        bare = digest(check.root, ADDED_TO_ANSWER)
        found = self.row("SELECT text FROM answers WHERE check_id=? ORDER BY digest=? DESC, rowid DESC", check.id, bare)
        if found is None:
            raise Refusal(424, "steps-in-order", "The check was never pre-checked")
        answer = Check(ET.fromstring(found[0]))
        if any(getattr(answer, name) != getattr(check, name) for name in ("card", "type", "original", "lines")):
            raise Refusal(424, "same-check", "This is not the check that was pre-checked")
        if check.type == "2":
            return {key: {"points": 0, "earned": 0} | part for key, part in self.returned(check).items()}
        need(check.root, "payments/RawCheckPayment/amount")
        lines = [{"total": line["total"]} |
                 {name: sum_at(answer.items[key], path) for name, path in GRANTED.items()} |
                 {name: sum_at(check.items[key], path) for name, path in USED.items()}
                 for key, line in check.lines.items()]
        earned = earned_by(lines, sum_at(check.root, "payments/RawCheckPayment/amount"))
        return {key: {"points": line["points"], "earned": award, "givenBack": 0, "takenBack": 0}
                for key, line, award in zip(check.lines, lines, earned)}
    def paymenttry(self, check):
        if self.row("SELECT digest FROM tries WHERE check_id=?", check.id) != (digest(check.root),):
            self.refuse_booked(check)
        if not self.row("SELECT 1 FROM checks WHERE check_id=?", check.id):
            self.booking(check)
            self.db.execute("INSERT OR REPLACE INTO tries VALUES(?,?)", (check.id, digest(check.root)))
        return add(ET.Element("answer"), "RawCheck", id=check.id)
    def checkconfirm(self, check):
        self.refuse_booked(check)
        booked = self.booking(check)
        tried = self.row("SELECT digest FROM tries WHERE check_id=?", check.id)
        if tried is None:
            raise Refusal(424, "steps-in-order", "No payment was tried for this check")
        if tried != (digest(check.root),):
            raise Refusal(424, "confirm-equals-try", "This is not the payment that was tried last")
        change = sum(line["earned"] + line["givenBack"] - line["points"] - line["takenBack"]
                     for line in booked.values())
        self.db.execute("INSERT INTO checks VALUES(?,?,?,?,?)", (check.id, check.type, check.card, check.original,
                        json.dumps({key: line | booked[key] for key, line in check.lines.items()})))
        self.db.execute("UPDATE cards SET balance=balance+? WHERE number=?", (change, check.card))
        self.db.execute("DELETE FROM answers WHERE check_id=?", (check.id,))
        return add(ET.Element("answer"), "RawCheck", id=check.id)
    def refuse_booked(self, check):
        if self.row("SELECT 1 FROM checks WHERE check_id=?", check.id):
            raise Refusal(409, "known-check-409", "The check is booked already")

class Handler(BaseHTTPRequestHandler):
    protocol_version, timeout, wbufsize = "HTTP/1.1", 60, -1  # an answer leaves in one piece
    error_message_format, error_content_type = "%(message)s\n", "text/plain"
    def do_POST(self):
        try:
            body, books = self.body(), self.server.books
            steps = {"/api/1.x/" + step.__name__: step
                     for step in (books.precheck, books.paymenttry, books.checkconfirm)}
            scheme, _, credentials = self.headers.get("Authorization", "").partition(" ")
            if self.path not in steps:
                raise Refusal(404, "addresses", "There is nothing here")
            if scheme.lower() != "basic" or credentials.strip() != self.server.credentials:
                raise Refusal(401, "credentials-first", "User, password or key is wrong")
            with books.lock, books.db:  # done whole or not at all
                root = steps[self.path](Check(ET.fromstring(body.decode("utf-8"))))
            answer = ET.tostring(root, "utf-8", xml_declaration=True).replace(b"\r", b"&#13;")
            self.reply(200, "application/xml; charset=utf-8", answer)
        except Refusal as refusal:
            self.reply(refusal.args[0], "text/plain; charset=utf-8", refusal.args[2].encode() + b"\n")
        except (ValueError, ET.ParseError) as error:
            self.reply(400, "text/plain; charset=utf-8", f"The body is no XML in UTF-8: {error}\n".encode())
        except (sqlite3.Error, RecursionError) as error:
            print(f"{self.path}: {error}", file=sys.stderr)
            self.reply(503, "text/plain", b"The books cannot be used just now\n")
    def do_GET(self):
        self.close_connection = True
        self.reply(405, "text/plain", b"This address takes POST only\n")
    do_PUT = do_DELETE = do_PATCH = do_GET
    def body(self):
        closes, self.close_connection, body = self.close_connection, True, b""  # unless all of it is read
        if "Transfer-Encoding" not in self.headers:
            body = self.rfile.read(min(int(self.headers.get("Content-Length", 0)), LARGEST_BODY + 1))
        else:
            while len(body) <= LARGEST_BODY and (size := int(self.rfile.readline(99).partition(b";")[0], 16)):
                body += self.rfile.read(min(size, LARGEST_BODY + 1)) + self.rfile.readline(99)[2:]
            self.rfile.readline(99)
        if len(body) > LARGEST_BODY:
            raise Refusal(413, "many-lines", "The body is too large")
        if "Content-Encoding" in self.headers:
            raise Refusal(415, "request-codings", "The body must not be compressed")
        self.close_connection = closes
        return body
    def reply(self, status, content_type, body):
        self.send_response(status)
        self.send_header("Content-Type", content_type)
        self.send_header("Content-Length", len(body))
        if status == 503:
            self.send_header("Retry-After", "5")
        if self.close_connection:
            self.send_header("Connection", "close")
        self.end_headers()
        self.wfile.write(body)

def wrong_vectors(vectors):
    def outcome(compute, *arguments):
        try:
            return compute(*arguments)
        except Refusal as refusal:
            return refusal.args[1]
    wrong = [sale["name"] for sale in vectors["sales"]
             if outcome(earned_by, sale["lines"], sale["paid"]) != sale.get("earned", sale.get("refused"))]
    for vector in vectors["returns"]:
        before = {"quantity": 0, "total": 0, "givenBack": 0, "takenBack": 0}
        for part in vector["returns"]:
            expected = part.get("refused") or {key: part[key] for key in ("givenBack", "takenBack")}
            if outcome(returned_part, vector["sold"], before, part) != expected:
                wrong.append(vector["name"])
            before = before if "refused" in part else {key: before[key] + part[key] for key in before}
    return wrong

def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--database", default="books.sqlite")
    options.add_argument("--port", type=int, default=8711, help="of 127.0.0.1; 0 takes a free one")
    options.add_argument("--books", action="store_true", help="print what every check did to its card, and end")
    options.add_argument("--vectors", help="hold the arithmetic against a file of vectors, and end")
    given = options.parse_args()
    if given.vectors:
        vectors = json.load(open(given.vectors, encoding="utf-8"))
        print(*(f"{len(vectors[kind])} {kind}" for kind in ("sales", "returns")), sep=", ")
        sys.exit("\n".join(f"wrong: {name}" for name in wrong_vectors(vectors)) or 0)
    books = Books(given.database)
    if given.books:
        print("check,card,earned,spent,givenBack,takenBack")
        for check, card, lines in books.db.execute("SELECT check_id, card, lines FROM checks ORDER BY rowid"):
            print(check, card, *(money(sum(line[name] for line in json.loads(lines).values()))
                                 for name in ("earned", "points", "givenBack", "takenBack")), sep=",")
        return
    ThreadingHTTPServer.request_queue_size = 64
    server = ThreadingHTTPServer(("127.0.0.1", given.port), Handler)
    digits = hashlib.sha1(PASSWORD.encode("latin-1")).hexdigest()
    server.books, server.credentials = books, base64.b64encode(f"{USER}:{digits}:{KEY}".encode()).decode()
    print(f"Listening on http://127.0.0.1:{server.server_port}/", flush=True)
    server.serve_forever()

if __name__ == "__main__":
    main()
