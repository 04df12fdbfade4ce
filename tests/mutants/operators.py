# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Changes of single tokens: numbers, texts, comparisons, signs, names."""

import re

BINARY = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
    "==": ("!=",), "!=": ("==",), "&&": ("||",), "||": ("&&",),
    "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",),
    "+=": ("-=",), "-=": ("+=",), "*=": ("/=",), "/=": ("*=",),
}
OTHERWISE = {"true": "false", "false": "true", "++": "--", "--": "++"}
TEXT = re.compile(r'^((?:u8|u|U|L)?)"(.*)"(\w*)$', re.S)
LETTER = re.compile(r"\\x[0-9a-fA-F]+|\\.|.", re.S)
BEFORE_SIGN = {"(", ",", "=", "return", "?", ":", "[", "{", "==", "!=", "<", ">", "<=", ">=", "*", "/"}


def token_changes(source, names):
    """Yields (token, replacement) for each change; names are those that may be exchanged."""
    texts = [token for token in source.tokens if token.kind == "text"]
    for index, token in enumerate(source.tokens):
        for replacement in _replacements(source, index, token, names, texts):
            if replacement != token.text:
                yield token, replacement


def _replacements(source, index, token, names, texts):
    before = source.tokens[index - 1].text if index else ""
    if token.kind == "number":
        return numbers(token.text)
    if token.kind == "text":
        return list(changed_texts(token, texts))
    if token.kind == "char":
        return [changed_letter(token.text)]
    if token.kind == "name":
        if token.text in OTHERWISE:
            return [OTHERWISE[token.text]]
        return names.others(source, index)
    if token.text in BINARY and source.spaced(token):
        return BINARY[token.text]
    if token.text in OTHERWISE:
        return [OTHERWISE[token.text]]
    if token.text == "!" or (token.text == "-" and before in BEFORE_SIGN):
        return [""]
    return []


def numbers(text):
    """A little more and a little less: the last digit goes up and down."""
    plain = text.replace("'", "")
    if re.fullmatch(r"\d+", plain):
        value = int(plain)
        return [str(value + 1)] + ([str(value - 1)] if value > 0 else [])
    match = re.fullmatch(r"(\d+)(?:\.(\d+))?(e\d+)?", plain)
    if not match:
        return []
    whole, decimals, exponent = match.group(1), match.group(2) or "", match.group(3) or ""
    value = int(whole + decimals)
    if value >= 2**53:  # one digit is less than a double can tell
        return [str(float(plain) * 2), str(float(plain) / 2)]
    changed = [value + 1] + ([value - 1] if value > 0 else [])
    return [_with_point(number, len(decimals)) + exponent for number in changed]


def _with_point(value, decimals):
    digits = str(value).zfill(decimals + 1)
    return f"{digits[:-decimals]}.{digits[-decimals:]}" if decimals else digits


def changed_texts(token, texts):
    """Cut by its last letter, exchanged with the file's next text, places in it exchanged."""
    prefix, content, suffix = TEXT.match(token.text).groups()
    letters = LETTER.findall(content)
    yield f'{prefix}"{"".join(letters[:-1]) if letters else "x"}"{suffix}'
    later = [other for other in texts if other.start > token.start] + texts
    for other in later:
        alike = TEXT.match(other.text).groups()
        if (alike[0], alike[2]) == (prefix, suffix) and alike[1] != content:
            yield other.text
            break
    if "%1" in content and "%2" in content:
        exchanged = content.replace("%1", "%\0").replace("%2", "%1").replace("%\0", "%2")
        yield f'{prefix}"{exchanged}"{suffix}'


def changed_letter(text):
    prefix, content = re.match(r"^((?:u8|u|U|L)?)'(.*)'$", text, re.S).groups()
    plain = len(content) == 1 and content.isascii() and content.isalnum() and content not in "z9Z"
    return f"{prefix}'{chr(ord(content) + 1) if plain else 'x'}'"
