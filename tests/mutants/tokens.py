# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Splits C++ sources into tokens, as far as making mutants needs it."""

import re
from dataclasses import dataclass

OPERATORS = ("<<=", ">>=", "...", "->", "::", "++", "--", "+=", "-=", "*=", "/=", "==", "!=", "<=",
             ">=", "&&", "||", "<<", ">>")

PATTERN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|\#(?:[^\n\\]|\\.)*)
    |(?P<text>(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*"\w*)
    |(?P<char>(?:u8|u|U|L)?'(?:[^'\\\n]|\\.)+')
    |(?P<number>\d(?:'?[\w.])*)
    |(?P<name>[A-Za-z_]\w*)
    |(?P<op>%s|.)""" % "|".join(map(re.escape, OPERATORS)), re.X | re.S)

CLOSING = {"(": ")", "[": "]", "{": "}"}
SCOPE_WORDS = {"namespace", "struct", "class", "enum", "union"}
# a brace behind one of these begins statements, not a list of values
BLOCK_AFTER = {")", "]", "else", "do", "try", "const", "override", "noexcept", "{", "}", ";", ":"}


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int
    partner: int = -1  # of a bracket: the index of the other one
    role: str = ""  # of a "{": scope, block or values


class Source:
    """A file's text with its tokens, brackets matched."""

    def __init__(self, name, text):
        self.name = name
        self.text = text
        self.tokens = [Token(m.lastgroup, m.group(), m.start(), m.end())
                       for m in PATTERN.finditer(text) if m.lastgroup != "skip"]
        self._match_brackets()
        for index, token in enumerate(self.tokens):
            if token.text == "{":
                token.role = self._role_of_brace(index)

    def line_of(self, offset):
        return self.text.count("\n", 0, offset) + 1

    def line_text(self, offset):
        """The line that the character stands in, or that the line break ends."""
        begin = self.text.rfind("\n", 0, offset) + 1
        end = self.text.find("\n", offset)
        return self.text[begin:end if end >= 0 else len(self.text)].strip()

    def line_above(self, offset):
        begin = self.text.rfind("\n", 0, offset)
        return self.line_text(begin) if begin > 0 else ""

    def spaced(self, token):
        """The style puts blanks around binary operators, and only around them."""
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()

    def piece(self, first, last):
        """The text from one token to another, both included."""
        return self.text[self.tokens[first].start:self.tokens[last].end]

    def _match_brackets(self):
        opened = []
        for index, token in enumerate(self.tokens):
            if token.kind != "op":
                continue
            if token.text in CLOSING:
                opened.append(index)
            elif opened and token.text == CLOSING[self.tokens[opened[-1]].text]:
                token.partner = opened.pop()
                self.tokens[token.partner].partner = index
        if opened:
            raise ValueError(f"{self.name}: a bracket is not closed")

    def _role_of_brace(self, index):
        head = index - 1
        while head >= 0 and self.tokens[head].text not in (";", "{", "}"):
            head -= 1
        words = {token.text for token in self.tokens[head + 1:index]}
        if words & SCOPE_WORDS and not words & {"(", "="}:
            return "scope"
        return "block" if self.tokens[index - 1].text in BLOCK_AFTER else "values"
