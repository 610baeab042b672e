#!/usr/bin/env python3
"""Checks the table of known languages (host/localization/AllLanguages.inc) against what the editor takes for granted.

Prints one line per problem and exits with 1 if there is any, else prints the figures and exits with 0.
Usage: check_languages.py [FILE]
"""

import re
import sys
from pathlib import Path

ROW = re.compile(r'\{"(?P<name>[^"\\]+)"_s, "(?P<code>[^"\\]+)"_s\},')

# RFC 5646 without extended language, variant, extension and private use subtags, in the recommended case.
TAG = re.compile(r"[a-z]{2,3}(-[A-Z][a-z]{3})?(-([A-Z]{2}|[0-9]{3}))?")

ROW_COUNT = 411
ENGLISH_INDEX = 89


def read_rows(path, problems):
    """Returns the (name, code) pairs in file order; a line that is neither a row nor a comment is a problem."""
    rows = []
    for number, line in enumerate(path.read_bytes().decode("utf-8").split("\n"), 1):
        if not line or line.startswith("//"):
            continue
        match = ROW.fullmatch(line)
        if match:
            rows.append((match["name"], match["code"]))
        else:
            problems.append(f"{path.name}:{number}: not a row: {line}")
    return rows


def find_repeated(values):
    seen = set()
    return [value for value in values if value in seen or seen.add(value)]


def check_rows(rows, problems):
    names = [name for name, _ in rows]
    codes = [code for _, code in rows]
    if len(rows) != ROW_COUNT:
        problems.append(f"expected {ROW_COUNT} rows, got {len(rows)}")
    if len(rows) > ENGLISH_INDEX and rows[ENGLISH_INDEX] != ("English", "en"):
        problems.append(f"expected English, en at index {ENGLISH_INDEX}, got {', '.join(rows[ENGLISH_INDEX])}")
    for first, second in zip(names, names[1:]):
        if first.encode() >= second.encode():
            problems.append(f'"{second}" stands after "{first}", out of order')
    problems += [f'name "{name}" is given twice' for name in find_repeated(names)]
    # Tags are compared without case (RFC 5646, 2.1.1), so two that differ in case alone are one language.
    problems += [f'code "{code}" is given twice' for code in find_repeated(code.lower() for code in codes)]
    problems += [f'code "{code}" is no well-formed tag' for code in codes if not TAG.fullmatch(code)]
    problems += [f'name "{name}" has blanks at an end' for name in names if name != name.strip()]
    bare = {code for code in codes if "-" not in code}
    problems += [f'"{code}" has no row for its language alone' for code in codes if code.split("-")[0] not in bare]


def main(arguments):
    default = Path(__file__).resolve().parent.parent / "host" / "localization" / "AllLanguages.inc"
    path = Path(arguments[0]) if arguments else default
    problems = []
    rows = read_rows(path, problems)
    check_rows(rows, problems)
    for problem in problems:
        print(f"check_languages: {problem}", file=sys.stderr)
    if problems:
        return 1
    variants = sum("-" in code for _, code in rows)
    print(f"{len(rows)} rows: {len(rows) - variants} languages, {variants} variants; "
          f"English at index {ENGLISH_INDEX}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
