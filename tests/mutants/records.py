# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Reads lists of exceptions: records of "key: value" lines with empty lines between them; "#"
begins a comment."""


def read(path, keys, more=()):
    """Yields (line number, values by key); every key must be there once, those of more may be."""
    record, begin = {}, 0
    for number, line in enumerate([*path.read_text().splitlines(), ""], 1):
        if line.startswith("#"):
            continue
        if line.strip():
            begin = begin if record else number
            key, separator, value = line.partition(":")
            if key not in (*keys, *more) or not separator or key in record or not value.strip():
                raise SystemExit(f"{path}:{number}: wants {', '.join(keys)}, each once")
            record[key] = value.strip()
        elif record:
            if not set(keys) <= set(record):
                raise SystemExit(f"{path}:{begin}: wants {', '.join(keys)}, each once")
            yield begin, record
            record = {}
