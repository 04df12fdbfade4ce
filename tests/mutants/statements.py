# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Finds the statements and conditions of a source."""

from dataclasses import dataclass

CONTROL = {"if", "for", "while", "switch", "catch"}


@dataclass
class Statement:
    """One that ends with a semicolon: its first and last token, the latter the semicolon."""

    first: int
    last: int
    depth: int  # 0 for those of a function's own block


@dataclass
class Condition:
    """What stands between the parentheses of an if or a while."""

    first: int
    last: int


class Structure:
    def __init__(self, source):
        self.source = source
        self.tokens = source.tokens
        self.blocks = []  # each a list of statements; None stands between two that are not adjacent
        self.conditions = []
        index = 0
        while index < len(self.tokens):
            if self.tokens[index].role == "block":
                index = self._block(index, 0)
            index += 1

    def _block(self, opening, depth):
        """Reads a block and returns the index of its closing brace."""
        items = []
        self.blocks.append(items)
        index = opening + 1
        end = self.tokens[opening].partner
        while index < end:
            token = self.tokens[index]
            if token.role == "block":
                index = self._block(index, depth + 1) + 1
                items.append(None)
            elif token.text in CONTROL:
                index = self._head(index) + 1
                items.append(None)
            elif token.text in ("else", "try", "do"):
                index += 1
            elif token.text in ("case", "default"):
                while self.tokens[index].text != ":":
                    index += 1
                index += 1
                items.append(None)
            else:
                last = self._end_of_statement(index, depth)
                items.append(Statement(index, last, depth))
                index = last + 1
        return end

    def _head(self, index):
        """Passes "if (...)" and its like; returns the index of the closing parenthesis."""
        word = self.tokens[index].text
        while self.tokens[index].text != "(":
            index += 1
        closing = self.tokens[index].partner
        if word in ("if", "while"):
            first = at = index + 1
            while at < closing:
                if self.tokens[at].text == ";":  # an initialiser stands in front
                    first = at + 1
                at = max(at, self.tokens[at].partner) + 1
            self.conditions.append(Condition(first, closing - 1))
        return closing

    def _end_of_statement(self, index, depth):
        while self.tokens[index].text != ";":
            token = self.tokens[index]
            if token.role == "block":  # a lambda
                index = self._block(index, 0)
            elif token.text in ("(", "[") or token.role == "values":
                index = self._lambdas_within(index, depth)
            index += 1
        return index

    def _lambdas_within(self, opening, depth):
        closing = self.tokens[opening].partner
        index = opening + 1
        while index < closing:
            if self.tokens[index].role == "block":
                index = self._block(index, 0)
            index += 1
        return closing
