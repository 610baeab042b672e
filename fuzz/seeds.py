"""What fuzzing begins with: the small ones among the hostile inputs, and some others.

    seeds.py FOLDER     makes FOLDER/json, FOLDER/archive and FOLDER/import
"""

import hashlib
import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tests/hostile"))
from corpus import CASES  # noqa: E402

MAX_SIZE = 6000

JSON = [
    b'{"apples_one": "One", "apples_other": "{{count}} apples", "apples_few": "", "n": null}',
    b'{"key_ordinal_one": "1st", "key_ordinal_other": "nth", "key_male": "x", "key_plural": "y", "key_0": "z"}',
    b'{"menu.file": "File", "Status: Loading...": "x", "a:b": "y", "c d": "z"}',
    b'{"a": [1, -2.50e+3, true, false, null, {}, [], "x", {"b": ["y", ["z"]]}], "c": {"d": {}}}',
    b'{"n": [0, -0, 0.0, 1e308, 4.9e-324, 18446744073709551615, -9223372036854775808, 123456789012345678901234567890]}',
    '{"ä.ö": "\\u00fc \\ud83d\\ude00 \\n\\t\\" {{- name, format}} $t(other.key, {\\"a\\": 1})"}'.encode(),
]
FOLDERS = [
    {"en.json": b'{"greeting": "Hi", "new": {"key": "x"}}',
     "de/translation.json": b'{"greeting": "Hallo", "new": {"key": "y"}}'},
    {"en/menu.json": b'{"file": "File", "a.b": "x"}', "de/menu.json": b'{"file": "Datei"}',
     "pl.json": b'{"apples_few": "x"}'},
    {"en/flat.json": b'{"a.b": "x", "Status: Loading...": "y"}', "fr/flat.json": b'{"a.b": "z", "c": 1}'},
    {"en.json": b'{"list": ["a", {"b": "c"}], "n": 1.50}', "de.json": b'{"list": ["x"], "n": 2}', "enGB/x.json": b"{}"},
]


def by_files(files):
    return b"".join(b"\x1e" + name.encode() + b"\n" + content for name, content in files.items())


def is_plain(content):
    return isinstance(content, dict) and all(isinstance(name, str) and isinstance(inner, bytes)
                                             for name, inner in content.items())


def main():
    folder = Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    seeds = {"json": list(JSON), "archive": [], "import": [by_files(files) for files in FOLDERS]}
    for case in CASES.values():
        content = case["content"]
        if isinstance(content, bytes):
            seeds["archive"].append(content)
            seeds["import"].append(content)
        elif is_plain(content):
            seeds["json"] += content.values()
            seeds["import"].append(by_files(content))
    for name, inputs in seeds.items():
        (folder / name).mkdir(parents=True)
        for one in inputs:
            if len(one) <= MAX_SIZE:
                (folder / name / hashlib.sha1(one).hexdigest()).write_bytes(one)


if __name__ == "__main__":
    main()
