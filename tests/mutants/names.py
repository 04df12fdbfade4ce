# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Names that a programmer may take for one another: the values of an enumeration, the server's
elements."""

import re

COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.S)
# an enumeration that fills a structure is spelled with the structure's name
ENUM = re.compile(r"(?:struct\s+(\w+)\s*\{\s*)?enum\s+(?:class\s+)?(\w+)\s*(?::[\w\s]+)?\{(.*?)\}", re.S)
VALUE = re.compile(r"(\w+)\s*(?:=[^,]*)?(?:,|$)")
FUNCTION = re.compile(r"^inline QString (\w+)\(\)", re.M)


class Names:
    def __init__(self, headers, elements):
        """headers: texts with enumerations; elements: the text of elements.h"""
        self.rows = {"element": FUNCTION.findall(elements)}
        for text in headers:
            for outer, name, body in ENUM.findall(COMMENT.sub("", text)):
                self.rows[outer or name] = VALUE.findall(body.strip())

    def others(self, source, index):
        """The next name of the row that the token is in, when it is spelled ROW::NAME."""
        tokens = source.tokens
        if index < 2 or tokens[index - 1].text != "::":
            return []
        row = self.rows.get(tokens[index - 2].text, [])
        name = tokens[index].text
        if name not in row or len(row) < 2:
            return []
        return [row[(row.index(name) + 1) % len(row)]]
