# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Changes of more than one token: statements dropped and exchanged, conditions negated, arguments
swapped. Each is (start, end, replacement, description) in characters of the text."""

import re

COMMUTATIVE = {"checkedSum"}  # functions whose two arguments may change places
DECLARING = {"using", "typedef", "static_assert", "friend", "template"}
PARAMETER = re.compile(r"^([\w:<>,*& ]+[ &*])\w+$")
ENDS_OPERAND = {"?", ":", ";", ",", "=", "return"}


def rearrangements(source, structure):
    yield from _statements(source, structure)
    yield from _conditions(source, structure)
    yield from _operands(source)
    yield from _branches(source)
    yield from _arguments(source)
    yield from _chained_arguments(source)


def _span(source, first, last):
    return source.tokens[first].start, source.tokens[last].end


def _statements(source, structure):
    for block in structure.blocks:
        for item, following in zip(block, block[1:] + [None]):
            if item is None or source.tokens[item.first].text in DECLARING:
                continue
            start, end = _span(source, item.first, item.last)
            if _is_droppable(source, item):
                yield start, end, ";", "statement dropped"
            if source.tokens[item.first].text == "return" and not _returns_literal(source, item):
                yield source.tokens[item.first + 1].start, end, "{};", "nothing returned"
            if following is not None and _is_movable(source, item, following):
                first, second = source.text[start:end], source.piece(following.first, following.last)
                gap = source.text[end:source.tokens[following.first].start]
                yield (start, source.tokens[following.last].end, second + gap + first,
                       "exchanged with the next statement")


def _returns_literal(source, item):
    """Nothing, what is the same as "{}", or a value that has changes of its own."""
    value = source.tokens[item.first + 1]
    alone = item.last - item.first == 2
    return (value.text in (";", "{", "true", "false") or (alone and value.kind in ("number", "text"))
            or source.piece(item.first + 1, item.last - 1) in ("nullptr", "std::nullopt"))


def _declared(source, item):
    """The name that a statement declares, if it does: two names, or a name behind * & >, then = ; { (."""
    tokens = source.tokens[item.first:item.last + 1]
    for before, name, after in zip(tokens, tokens[1:], tokens[2:]):
        if before.text in ("(", ".", "->", "=", "::", "{", "return", "throw", "new"):
            return None
        if (name.kind == "name" and after.text in ("=", ";", "{", "(", "[")
                and (before.kind == "name" or before.text in ("*", "&", ">"))):
            return name.text
    return None


def _is_droppable(source, item):
    word = source.tokens[item.first].text
    if word == "return":
        return item.depth > 0  # without its last return a function is none
    return _declared(source, item) is None


def _is_movable(source, item, following):
    words = {source.tokens[item.first].text, source.tokens[following.first].text}
    if words & (DECLARING | {"return", "break", "throw", "continue"}):
        return False
    name, next_name = _declared(source, item), _declared(source, following)
    if name and next_name and not (_calls(source, item) and _calls(source, following)):
        return False  # of two values that nothing is called for, either may come first
    used = {token.text for token in source.tokens[following.first:following.last + 1]}
    return name is None or name not in used


def _calls(source, item):
    return any(token.text == "(" for token in source.tokens[item.first:item.last])


def _conditions(source, structure):
    for condition in structure.conditions:
        first, last = condition.first, condition.last
        inner = source.tokens[first:last + 1]
        # a lone comparison or a sign in front is negated by the changes of single tokens
        alone = not any(token.text in ("&&", "||") for token in inner)
        if alone and (inner[0].text == "!" or
                      any(token.text in ("==", "!=", "<", ">", "<=", ">=") and source.spaced(token)
                          for token in inner)):
            continue
        start, end = _span(source, first, last)
        yield start, end, f"!({source.text[start:end]})", "condition negated"


def _operands(source):
    """Each operand of && and || is left out once."""
    for index, token in enumerate(source.tokens):
        if token.text not in ("&&", "||") or not source.spaced(token):
            continue
        left, right = _operand(source, index, -1), _operand(source, index, 1)
        right_end = source.tokens[right].end
        yield source.tokens[index - 1].end, right_end, "", "operand behind it left out"
        if source.tokens[left - 1].text not in ("&&", "||"):
            start = source.tokens[left].start
            yield start, source.tokens[index + 1].start, "", "operand before it left out"


def _operand(source, index, step):
    """The farthest token of the operand beside the operator."""
    at = index + step
    while True:
        if source.tokens[at].partner >= 0 and (source.tokens[at].text in "([{") == (step > 0):
            at = source.tokens[at].partner
        beyond = source.tokens[at + step]
        if (beyond.text in ENDS_OPERAND or beyond.text in ("&&", "||")
                or (beyond.partner >= 0 and (beyond.text in "([{") == (step < 0))):
            return at
        at += step


def _branches(source):
    """a ? b : c becomes a ? c : b."""
    for index, token in enumerate(source.tokens):
        if token.text != "?":
            continue
        colon = _operand(source, index, 1) + 1
        if source.tokens[colon].text != ":":
            continue
        last = _operand(source, colon, 1)
        first, second = source.piece(index + 1, colon - 1), source.piece(colon + 1, last)
        start, end = _span(source, index + 1, last)
        yield start, end, f"{second} : {first}", "branches exchanged"


def _arguments(source):
    for index, token in enumerate(source.tokens):
        if token.text not in ("(", "{") or token.partner < 0 or token.role in ("scope", "block"):
            continue
        if index > 0 and source.tokens[index - 1].text in COMMUTATIVE:
            continue
        pieces = _pieces(source, index)
        for (a, b), (c, d) in zip(pieces, pieces[1:]):
            first, second = source.piece(a, b), source.piece(c, d)
            if first != second and _may_swap(source, first, second):
                start, end = _span(source, a, d)
                gap = source.text[source.tokens[b].end:source.tokens[c].start]
                yield start, end, second + gap + first, "swapped with the next argument"


def _may_swap(source, first, second):
    """Parameters cannot where their types differ, and need not where they are declared only."""
    types = [PARAMETER.match(" ".join(piece.split())) for piece in (first, second)]
    if not all(types):
        return True
    return types[0].group(1) == types[1].group(1) and not source.name.endswith(".h")


def _pieces(source, opening):
    """The first and last token of each part between the commas of a bracket."""
    pieces, first, at = [], opening + 1, opening + 1
    closing = source.tokens[opening].partner
    while at <= closing:
        if at == closing or source.tokens[at].text == ",":
            if at > first:
                pieces.append((first, at - 1))
            first = at + 1
        elif source.tokens[at].text in ("(", "[", "{") and source.tokens[at].partner > at:
            at = source.tokens[at].partner
        elif source.tokens[at].text == ";":
            return []  # the head of a loop
        at += 1
    return pieces


def _chained_arguments(source):
    """x.arg(a).arg(b) becomes x.arg(b).arg(a)."""
    tokens = source.tokens
    for index in range(len(tokens) - 4):
        if tokens[index].text != "arg" or tokens[index + 1].text != "(":
            continue
        closing = tokens[index + 1].partner
        if [token.text for token in tokens[closing + 1:closing + 4]] != [".", "arg", "("]:
            continue
        other = tokens[closing + 3].partner
        first = source.piece(index + 1, closing)
        second = source.piece(closing + 3, other)
        start, end = _span(source, index + 1, other)
        yield start, end, f"{second}.arg{first}", "swapped with the next argument"
