"""Hostile and odd inputs, each with what an import has to say of it.

    corpus.py FOLDER    makes them in FOLDER, which must not be there yet, and cases.json with the table

The input of a case is FOLDER/<case>/in, or in.zip; messages say IN for its path. All is the same every time.
"""

import json
import os
import socket
import stat
import sys
from pathlib import Path

from archives import *

CASES = {}

GERMAN = b'{"greeting": "Hallo"}'
# Beside each hostile file lies one that nothing is wrong with: where one file is refused, none is imported.
FRENCH = {"fr.json": b'{"greeting": "Bonjour"}'}


class Link(str):
    """A symbolic link to a path."""


class Sparse(int):
    """A file of so many zeros, which take no place on the disk."""


class Fifo:
    pass


class Socket:
    pass


class Device:
    pass


class NoRights:
    """Content that nobody but a superuser may read."""

    def __init__(self, content):
        self.content = content


def case(name, content, outcome, messages):
    assert name not in CASES, name
    CASES[name] = {"content": content, "outcome": outcome, "messages": list(messages)}


def refused(name, content, *messages):
    """A folder (a dict), an archive or file (bytes): nothing is imported, for these reasons."""
    case(name, content, "refused", messages)


def imported(name, content, *messages):
    """All that can be read is imported, and this is said besides."""
    case(name, content, "imported", messages)


def json_refused(name, content, line, column, reason):
    refused(name, {"de.json": content, **FRENCH}, f"IN/de.json:{line}:{column}: {reason}")


def json_imported(name, content, *messages):
    imported(name, {"de.json": content}, *messages)


# --- JSON: encodings ------------------------------------------------------------------------------------------------

json_refused("json-empty", b"", 1, 1, "a value is missing")
json_refused("json-blank", b"  \n\t\r\n ", 3, 2, "a value is missing")
json_refused("json-mark-alone", b"\xef\xbb\xbf", 1, 1, "a value is missing")
json_imported("json-mark", b"\xef\xbb\xbf" + GERMAN)
json_refused("json-mark-twice", b"\xef\xbb\xbf\xef\xbb\xbf" + GERMAN, 1, 1, "this is no value")
json_refused("json-mark-inside", b"{\xef\xbb\xbf}", 1, 2, "the name of a member is missing")
json_refused("json-mark-half", b"\xef\xbb" + GERMAN, 1, 1, "not valid UTF-8")
json_refused("json-mark-of-page-1252", "ï»¿".encode() + GERMAN, 1, 1, "this is no value")
for code in "utf-16-le", "utf-16-be", "utf-32-le", "utf-32-be":
    mark = "\ufeff".encode(code)
    json_refused(f"json-{code}", mark + GERMAN.decode().encode(code), 1, 1, f"this is {code[:6].upper()}, not UTF-8")
    json_refused(f"json-{code}-without-mark", GERMAN.decode().encode(code), 1, 1 if code.endswith("be") else 2,
                 "control character U+0000")
json_refused("json-utf-7", b'{"greeting": "+AOQ-\xe4"}', 1, 20, "not valid UTF-8")
json_refused("json-latin-1", '{"greeting": "Grüße"}'.encode("latin-1"), 1, 17, "not valid UTF-8")
json_refused("json-shift-jis", '{"greeting": "日本"}'.encode("shift-jis"), 1, 15, "not valid UTF-8")
json_refused("json-ebcdic", '{"greeting": "x"}'.encode("cp500"), 1, 1, "not valid UTF-8")

for name, sequence in {
    "continuation-alone": b"\x80", "continuation-last": b"\xbf", "overlong-2": b"\xc0\x80",
        "overlong-2-last": b"\xc1\xbf",
    "overlong-3": b"\xe0\x80\x80", "overlong-3-last": b"\xe0\x9f\xbf", "overlong-4": b"\xf0\x80\x80\x80",
    "overlong-4-last": b"\xf0\x8f\xbf\xbf", "overlong-slash": b"\xc0\xaf", "surrogate-high": b"\xed\xa0\x80",
    "surrogate-low": b"\xed\xbf\xbf", "surrogate-pair": b"\xed\xa0\xbd\xed\xb8\x80",
        "beyond-unicode": b"\xf4\x90\x80\x80",
    "beyond-unicode-f5": b"\xf5\x80\x80\x80", "five-bytes": b"\xf8\x88\x80\x80\x80",
        "six-bytes": b"\xfc\x84\x80\x80\x80\x80",
    "fe": b"\xfe", "ff": b"\xff", "cut-2": b"\xc3", "cut-3": b"\xe2\x82", "cut-4": b"\xf0\x9f\x98",
    "second-byte": b"\xe2A\x80",
}.items():
    json_refused(f"utf8-{name}", b'{"greeting":\n "\xc3\xa4' + sequence + b'"}', 2, 4, "not valid UTF-8")
json_refused("utf8-in-a-name", b'{"gr\xff": "x"}', 1, 5, "not valid UTF-8")
json_refused("utf8-between-tokens", b'{"greeting": "x" \xff}', 1, 18, "not valid UTF-8")
json_refused("utf8-behind-the-value", GERMAN + b"\n\xfe", 2, 1, "not valid UTF-8")
json_refused("utf8-cut-by-the-end", b'{"greeting": "\xe2\x82', 1, 15, "not valid UTF-8")
for name, escape in {"high": "\\ud83d", "low": "\\ude00", "reversed": "\\ude00\\ud83d", "high-twice": "\\ud83d\\ud83d",
                     "high-and-letter": "\\ud83d\\u0041"}.items():
    json_refused(f"escape-surrogate-{name}", b'{"greeting": "x%s"}' % escape.encode(), 1, 16,
                 "a surrogate without its other half")
json_imported("escape-surrogate-pair", b'{"greeting": "\\ud83d\\ude00"}')
json_refused("escape-unknown", b'{"greeting": "\\x41"}', 1, 15, "this is no escape")
json_refused("escape-short", b'{"greeting": "\\u12"}', 1, 15, "an escape lacks four hexadecimal digits")

# --- JSON: grammar --------------------------------------------------------------------------------------------------

for name, content in {"array": b'["x"]', "string": b'"x"', "number": b"12", "true": b"true", "null": b"null",
                      "empty-array": b"[]"}.items():
    json_refused(f"root-{name}", content, 1, 1, "the file holds no object")
json_refused("root-cut-1", b"{", 1, 2, "the text ends too early")
json_refused("root-two-objects", b"{}\n{}", 2, 1, "something follows the value")
json_refused("root-closed-twice", b"{}}", 1, 3, "something follows the value")
json_refused("root-never-opened", b"]", 1, 1, "a value is missing")
json_refused("grammar-last-comma", b'{"greeting": "x",}', 1, 17, "a comma stands behind the last member")
json_refused("grammar-last-comma-in-array", b'{"a": ["x",]}', 1, 11, "a comma stands behind the last element")
json_refused("grammar-no-comma", b'{"a": "x" "b": "y"}', 1, 11, "a comma or a closing brace is missing")
json_refused("grammar-no-comma-in-array", b'{"a": ["x" "y"]}', 1, 12, "a comma or a closing bracket is missing")
json_refused("grammar-no-colon", b'{"a" "x"}', 1, 6, "a colon is missing behind the name of a member")
json_refused("grammar-wrong-bracket", b'{"a": ["x"}}', 1, 11, "a comma or a closing bracket is missing")
json_refused("grammar-single-quotes", b"{'a': 'x'}", 1, 2, "the name of a member is missing")
json_refused("grammar-no-quotes", b"{a: 1}", 1, 2, "the name of a member is missing")
json_refused("grammar-comment", b"{} // x", 1, 4, "something follows the value")
json_refused("grammar-comment-first", b"/* x */ {}", 1, 1, "this is no value")
json_refused("grammar-string-without-end", b'{"greeting": "x', 1, 16, "a string does not end")
json_refused("grammar-newline-in-string", b'{"greeting": "x\ny"}', 1, 16, "control character U+000A")
json_refused("grammar-tab-in-string", b'{"greeting": "\t"}', 1, 15, "control character U+0009")
json_refused("grammar-zero-in-string", b'{"greeting": "\0"}', 1, 15, "control character U+0000")
json_refused("grammar-zero-between-tokens", b'{"greeting":\0 "x"}', 1, 13, "control character U+0000")
json_refused("grammar-zero-behind", GERMAN + b"\0", 1, 22, "control character U+0000")
json_refused("grammar-form-feed", b'{\f"greeting": "x"}', 1, 2, "control character U+000C")
json_refused("grammar-no-break-space", '{\u00a0"greeting": "x"}'.encode(), 1, 2, "the name of a member is missing")
json_refused("grammar-html", b"<!DOCTYPE html>\n<html></html>", 1, 1, "this is no value")
json_refused("grammar-conflict-markers", b'{\n<<<<<<< ours\n"a": "x"\n', 2, 1, "the name of a member is missing")
json_refused("grammar-true-in-capitals", b'{"a": TRUE}', 1, 7, "this is no value")
json_imported("grammar-lines-of-old-systems", b'{"greeting":\r"Hallo"\r}')

# --- JSON: numbers --------------------------------------------------------------------------------------------------

for name, number, reason in [
    ("exponent-of-1000-digits", "1e" + "9" * 1000, "a number's exponent has more than 3 digits"),
    ("exponent-of-1000-digits-below-0", "1e-" + "9" * 1000, "a number's exponent has more than 3 digits"),
    ("exponent-of-1000-zeros", "1e" + "0" * 1000 + "1", "a number's exponent has more than 3 digits"),
    ("mantissa-of-1000-digits", "1" * 1000, "a number has more than 100 characters"),
    ("fraction-of-1000-digits", "0." + "1" * 1000, "a number has more than 100 characters"),
    ("mantissa-and-exponent", "1" * 1000 + "e" + "9" * 1000, "a number has more than 100 characters"),
    ("too-large", "1e400", "a number is too large"),
    ("too-large-below-0", "-1e400", "a number is too large"),
]:
    json_refused(f"number-{name}", b'{"greeting": "x",\n "n": %s}' % number.encode(), 2, 7, reason)
for name, number, column, reason in [
    ("zero-first", "012", 8, "a comma or a closing brace is missing"),
    ("plus", "+1", 7, "this is no value"),
    ("no-digits-before-the-point", ".5", 7, "this is no value"),
    ("no-digits-behind-the-point", "1.", 9, "a number lacks digits behind its point"),
    ("no-digits-in-the-exponent", "1e", 9, "a number lacks the digits of its exponent"),
    ("hexadecimal", "0x10", 8, "a comma or a closing brace is missing"),
    ("minus-alone", "-", 8, "this is no value"),
    ("two-minus", "--1", 8, "this is no value"),
    ("two-points", "1.2.3", 10, "a comma or a closing brace is missing"),
    ("nan", "NaN", 7, "this is no value"),
    ("infinity", "Infinity", 7, "this is no value"),
    ("infinity-below-0", "-Infinity", 8, "this is no value"),
]:
    json_refused(f"number-{name}", b'{"greeting": "x",\n "n": %s}' % number.encode(), 2, column, reason)

# --- JSON: depth, names, sizes --------------------------------------------------------------------------------------


def nested(opening, closing, depth, inner=b'"x"'):
    return b'{"a": ' + opening * (depth - 1) + inner + closing * (depth - 1) + b"}"


TOO_DEEP = "containers are nested more than 256 levels deep"
json_refused("depth-arrays", nested(b"[", b"]", 257), 1, 262, TOO_DEEP)
json_refused("depth-objects", nested(b'{"b":', b"}", 257), 1, 7 + 5 * 255, TOO_DEEP)
json_refused("depth-alternating", nested(b'[{"b":', b"}]", 129), 1, 7 + 6 * 127 + 1, TOO_DEEP)
json_refused("depth-200000-arrays", b"[" * 200_000, 1, 257, TOO_DEEP)
json_refused("depth-200000-objects", b'{"a":' * 200_000, 1, 1 + 5 * 256, TOO_DEEP)
json_refused("depth-1000000-arrays-closed", b"[" * 1_000_000 + b"]" * 1_000_000, 1, 257, TOO_DEEP)
UNKNOWN = "no term has this key"
DEEP_KEY = ".".join(["a"] + ["b"] * 255)
json_imported("depth-of-256-objects", nested(b'{"b":', b"}", 256), f"de: {DEEP_KEY}: {UNKNOWN}")
json_imported("depth-of-256-arrays", nested(b"[", b"]", 256), "de: " + ".".join(["a"] + ["[0]"] * 255) + f": {UNKNOWN}")

def twice(name):
    return f'the name "{name}" stands twice in one object'



json_refused("names-twice", b'{"greeting": "x",\n "greeting": "y"}', 2, 2, twice("greeting"))
json_refused("names-twice-equal", b'{"greeting": "x", "greeting": "x"}', 1, 19, twice("greeting"))
json_refused("names-twice-by-escapes", b'{"greeting": "x",\n "\\u0067reeting": "y"}', 2, 2, twice("greeting"))
json_refused("names-twice-by-other-escapes", b'{"a/b": "x", "a\\/b": "y"}', 1, 14, twice("a/b"))
json_refused("names-twice-inside", b'{"menu": {"file": "x", "edit": "y",\n"file": {}}}', 2, 1, twice("file"))
json_refused("names-twice-empty", b'{"": "x", "": "y"}', 1, 11, twice(""))
json_refused("names-twice-in-an-array", b'{"a": [{"b": "x", "b": "y"}]}', 1, 19, twice("b"))
json_refused("names-twice-among-20000", b"{" + b",".join(b'"k%d": "x"' % i for i in range(20_000)) + b',\n"k7": "y"}',
             2, 1, twice("k7"))
json_refused("names-twice-special", b'{"__proto__": "x", "__proto__": "y"}', 1, 20, twice("__proto__"))
LOST = "is lost where the i18next library merges a file into another one"
for name, why in [("__proto__", LOST), ("constructor", LOST),
                  ("prototype", "is lost in many programs that merge files, though not in the i18next library")]:
    json_imported(f"names-{name}", b'{"%s": {"greeting": "x"}}' % name.encode(), f"de: {name}.greeting: {UNKNOWN}",
                  f"de: {name}: {why}")
json_imported("names-__proto__-by-escapes", b'{"\\u005f_proto__": "x"}', f"de: __proto__: {UNKNOWN}",
              f"de: __proto__: {LOST}")
json_imported("names-zero", b'{"a\\u0000b": "x"}', f"de: a%00b: {UNKNOWN}")
json_imported("names-of-terminals", b'{"\\u001b[2J\\n": "x"}', f"de: %1B[2J%0A: {UNKNOWN}")
json_imported("names-of-array-elements", b'{"[0]": "x"}', f"de: %5B0]: {UNKNOWN}")
json_imported("names-empty", b'{"": "x"}', f"de: : {UNKNOWN}")
json_imported("names-of-1-mebibyte", b'{"' + b"n" * (1 << 20) + b'": "x"}', "de: " + "n" * (1 << 20) + f": {UNKNOWN}")
# Ten gigabytes of keys, were they all made.
json_refused("names-repeated-in-100000-keys",
             b'{"' + b"n" * 100_000 + b'": {' + b",".join(b'"%06d": "x"' % i for i in range(100_000)) + b"}}",
             1, 103_380, "too many keys repeat long names around them")
json_refused("array-of-65537-elements", b'{"a": [' + b",".join([b'"x"'] * 65537) + b"]}", 1, 262155,
             "an array has too many elements")
json_imported("text-of-1-mebibyte", b'{"greeting": "' + b"x" * (1 << 20) + b'"}')
json_imported("text-of-terminals", b'{"greeting": "\\u001b]0;x\\u0007\\u0000\\u202e"}')

# --- Folders --------------------------------------------------------------------------------------------------------

NO_TERMS = "holds no terms: there is no <language code>/translation.json and no <language code>.json"
refused("folder-empty", {}, f"IN: {NO_TERMS}")
refused("folder-missing", None, "IN: cannot be read: No such file or directory")
refused("folder-of-other-files", {"README.md": b"x", "de.txt": GERMAN, "de/notes.txt": GERMAN}, f"IN: {NO_TERMS}")
refused("folder-of-hidden-files", {".de.json": GERMAN, ".git/de.json": GERMAN, "de/.x.json": GERMAN}, f"IN: {NO_TERMS}")
imported("folder-with-system-files", {"de.json": GERMAN, ".DS_Store": b"\0\0\0\1Bud1", "Thumbs.db": b"\xd0\xcf",
                                      "desktop.ini": b"[x]", "de/.DS_Store": b"\0"})
refused("folder-of-unknown-code", {"xx-nonsense/translation.json": GERMAN},
        "IN: holds no terms of a known language; xx-nonsense/translation.json: no language has the code xx-nonsense")
refused("folder-language-twice", {"de.json": GERMAN, "de/translation.json": GERMAN},
        "IN/de.json: holds the same as IN/de/translation.json: one language, one namespace")
refused("folder-in-place-of-file", {"de.json/x": b"", **FRENCH}, "IN/de.json: cannot be read: Is a directory")
refused("folder-fifo", {"de.json": Fifo(), **FRENCH}, "IN/de.json: is no file")
refused("folder-fifo-inside", {"de/translation.json": Fifo(), **FRENCH},
        "IN/de/translation.json: is no file")
refused("folder-socket", {"de.json": Socket(), **FRENCH}, "IN/de.json: is no file")
refused("folder-device", {"de.json": Device(), **FRENCH}, "IN/de.json: is no file")
LEADS_OUT = "is a link that leads out of the folder"
refused("link-to-a-file-outside", {"de.json": Link("../outside.json"), **FRENCH}, f"IN/de.json: {LEADS_OUT}")
refused("link-to-a-device", {"de.json": Link("/dev/zero"), **FRENCH}, f"IN/de.json: {LEADS_OUT}")
refused("link-to-a-folder-outside", {"de": Link("../outside"), **FRENCH}, f"IN/de/translation.json: {LEADS_OUT}")
refused("link-by-way-of-a-link", {"de.json": Link("x"), "x": Link("../outside.json"), **FRENCH},
        f"IN/de.json: {LEADS_OUT}")
refused("link-dangling", {"de.json": Link("gone.json"), **FRENCH},
        "IN/de.json: cannot be read: No such file or directory")
refused("link-circle", {"de.json": Link("de.json"), **FRENCH},
        "IN/de.json: cannot be read: Too many levels of symbolic links")
refused("link-circle-of-folders", {"de": Link("fr"), "fr": Link("de"), "ja.json": GERMAN},
        "IN/de: cannot be read: Too many levels of symbolic links",
        "IN/fr: cannot be read: Too many levels of symbolic links")
imported("link-inside", {"texts.txt": GERMAN, "de.json": Link("texts.txt")})
imported("link-to-unknown-folders-outside", {"de.json": GERMAN, "xx": Link(".."), "yy": Link("/etc")})
refused("rights-file", {"de.json": NoRights(GERMAN), **FRENCH}, "IN/de.json: cannot be read: Permission denied")
refused("rights-language", {"de": NoRights({"translation.json": GERMAN}), **FRENCH},
        "IN/de: cannot be read: Permission denied")
imported("rights-other-folder", {"de.json": GERMAN, "other": NoRights({"x": b""})})
refused("rights-folder", NoRights({"de.json": GERMAN}), "IN: cannot be read: Permission denied")
refused("size-of-a-file", {"de.json": Sparse((64 << 20) + 1), **FRENCH}, "IN/de.json: is larger than 64 MiB")
refused("size-of-a-file-beyond-all", {"de.json": Sparse(1 << 40), **FRENCH},
        "IN/de.json: is larger than 64 MiB")
imported("name-of-known-language", {"de.json": GERMAN, "enGB/translation.json": GERMAN, "es_MX.json": GERMAN},
         "enGB/translation.json: no language has the code enGB; the nearest is en-GB: rename it, or map it with --map "
         "enGB=en-GB",
         "es_MX.json: no language has the code es_MX; the nearest is es-MX: rename it, or map it with --map "
         "es_MX=es-MX")
imported("case-of-folders", {"de/translation.json": GERMAN, "DE/translation.json": GERMAN},
         "DE/translation.json: no language has the code DE; the nearest is de, of which there are other files")
imported("name-with-newline", {"de.json": GERMAN, "d\ne.json": GERMAN}, "d\\ne.json: no language has the code d\\ne")
imported("name-of-terminals", {"de.json": GERMAN, "\x1b[2J\x1b]0;x\x07.json": GERMAN},
         "\\x1b[2J\\x1b]0;x\\x07.json: no language has the code \\x1b[2J\\x1b]0;x\\x07")
imported("name-that-turns-around", {"de.json": GERMAN, "\u202enosj.ed.json": GERMAN},
         "\\u202enosj.ed.json: no language has the code \\u202enosj.ed")
imported("name-of-240-characters", {"de.json": GERMAN, "n" * 240 + ".json": GERMAN},
         "n" * 240 + ".json: no language has the code " + "n" * 240)
refused("name-not-utf8", {b"de/m\xff.json": GERMAN, b"fr.json": GERMAN},
        "IN/de/m\\xff.json: has a name that is not valid UTF-8")
refused("name-of-namespace-with-newline", {"de/m\n.json": GERMAN, **FRENCH},
        "IN/de/m\\n.json: has a name that no namespace can have")
CUT_SHORT = ("an export was cut short here, and another one puts the files in order; "
             "without this folder they are taken as they are")
JOURNAL = b"quorvane-journal 1\ncomplete\nreplace de.json\nend\n"
refused("stage-with-journal", {"de.json": GERMAN, ".localization-export": {"journal": JOURNAL, "0.new": b"{}"}},
        f"IN/.localization-export: {CUT_SHORT}")
refused("stage-with-damaged-journal", {"de.json": GERMAN, ".localization-export": {"journal": b"x"}},
        "IN/.localization-export/journal: is no journal of a save; without it the files are taken as they are")
refused("stage-behind-a-link", {"de.json": GERMAN, ".localization-export": Link("../outside")},
        "IN/.localization-export: is a link where a folder is needed")
imported("stage-without-journal", {"de.json": GERMAN, ".localization-export": {"0.new": b"{}", "0.old": b"{}"}})

# --- Namespaces and terms -------------------------------------------------------------------------------------------

for name, namespace, key in [
    ("blank", "a b", "a%20b"), ("blank-first", " a", "%20a"), ("colon", "a:b", "a%3Ab"), ("dot", "a.b", "a%2Eb"),
    ("percent", "a%2Eb", "a%252Eb"), ("element", "[0]", "%5B0]"), ("hash", "#a", "%23a"), ("quote", 'a"b', 'a"b'),
    ("almost-default", "translation ", "translation%20"), ("letters", "日本", "日本"),
    ("long", "n" * 240, "n" * 240), ("special", "constructor", "constructor"),
]:
    imported(f"namespace-{name}", {f"en/{namespace}.json": b'{"key": "Key"}',
                                   f"de/{namespace}.json": b'{"key": "x", "y": "z"}'},
             f"en: : the namespace {namespace} is new", f"de: {key}:y: {UNKNOWN}")
imported("namespace-__proto__", {"de/__proto__.json": b'{"key": "x"}'},
         "de: : the project has nothing of the default language's en/__proto__.json, so this text is skipped",
         "de: : is a namespace that the i18next library finds, but does not hold for loaded, so that it loads it again "
         "and again")
NO_NAMESPACE = "has a name that no namespace can have"
refused("namespace-backslash", {"de/a\\b.json": GERMAN, **FRENCH}, f"IN/de/a\\b.json: {NO_NAMESPACE}")
refused("namespace-of-251-bytes", archive(Entry("de/" + "n" * 251 + ".json", GERMAN)),
        "IN/de/" + "n" * 251 + f".json: {NO_NAMESPACE}")
imported("namespace-cases",
        {"en/Menu.json": b'{"a": "A"}', "en/menu.json": b'{"a": "B"}', "de/menu.json": b'{"a": "C"}'},
        "en: : the namespace Menu is new", "en: : the namespace menu is new")
imported("terms-leaf-and-branch", {"en.json": b'{"greeting": {"inner": "x"}, "new": "y"}'},
         "en: greeting.inner: cannot stand beside greeting: one is a text, and the other lies below it")
imported("terms-leaf-and-branch-below", {"de.json": b'{"greeting": {"inner": "x"}}'},
         "de: greeting.inner: no term has this key, and it cannot stand beside greeting: one is a text, and the other "
         "lies below it")
imported("terms-element-and-member", {"en.json": b'{"list": ["x"], "other": {"[0]": "y", "a": "z"}}'})
imported("terms-value-for-text", {"en.json": b'{"greeting": 5}', "de.json": b'{"greeting": true}'},
         "en: greeting: is a number and no text, and the project has a term here",
         "de: greeting: is true or false and no text, and the term has a translation")
imported("terms-value-alone", {"de.json": b'{"n": 5, "e": {}, "a": []}'},
         "de: n: is a number and no text, and no term has this key",
         "de: e: is an empty object and no text, and no term has this key",
         "de: a: is an empty array and no text, and no term has this key")
imported("terms-not-translatable", {"en.json": b'{"name": "Other"}', "de.json": b'{"name": "Andere"}'},
         "en: name: is not translatable",
         "de: name: is not translatable")
imported("terms-of-version-3", {"de.json": b'{"apple": "Apfel", "apple_plural": "x", "pear_0": "a", "pear_1": "b"}'},
         "de: apple: no term has this key",
         "de: pear_0: no term has this key",
         "de: pear_1: no term has this key",
         "de: apple_plural: no term has this key",
         "de: apple_plural: looks like a plural form of version 3 of the format: it is an ordinary key, which "
         "version 4 does not choose by number")
imported("terms-empty", {"de.json": b'{"greeting": "", "x": null}'})
imported("terms-of-many-languages",
        {f"{code}.json": GERMAN for code in ("de", "fr", "pl", "ar", "ja", "pt-BR", "zh-Hant")})
imported("terms-flat-and-nested", {"en.json": b'{"a.b": "x", "a": {"b": "y"}}', "de.json": b'{"a.b": "z"}'},
         "en: a%2Eb: the i18next library finds a.b in its place")

# --- Archives: what they hold ---------------------------------------------------------------------------------------


def entries(*hostile, **options):
    return archive(Entry("fr.json", FRENCH["fr.json"]), *hostile, **options)


def name_refused(case_name, name, reason, shown=None):
    shown = name if shown is None else shown
    refused(f"archive-name-{case_name}", entries(Entry(name, GERMAN)), f"IN/{shown}: {reason}")


OUT = "leads out of its folder"
name_refused("climbs-out", "../de.json", OUT)
name_refused("climbs-out-inside", "x/../../de.json", OUT)
name_refused("climbs-at-the-end", "de/..", OUT)
name_refused("climbs-far", "../" * 200 + "etc/passwd", OUT)
name_refused("absolute", "/de.json", "has an absolute path")
name_refused("absolute-of-a-server", "//server/share/de.json", "has an absolute path")
name_refused("drive", "C:/de.json", "begins with a drive letter")
name_refused("drive-relative", "c:de.json", "begins with a drive letter")
name_refused("backslash", "de\\translation.json", "has a backslash in its name")
name_refused("backslash-climbs", "..\\..\\de.json", "has a backslash in its name")
name_refused("zero", b"de.json\0.txt", "has a zero byte in its name", "de.json\\x00.txt")
name_refused("terminal", b"../\x1b[2J\n.json", OUT, "../\\x1b[2J\\n.json")
name_refused("not-utf8", b"\xff.json", "has a name that is not valid UTF-8", "\\xff.json")
refused("archive-name-empty", entries(Entry("", GERMAN)), "IN: has an entry without a name")
imported("archive-name-of-65535-bytes", archive(Entry("de.json", GERMAN), Entry("x/" * 32767 + "x", b"")))
imported("archive-name-of-devices", archive(Entry("de.json", GERMAN), Entry("CON", b""), Entry("aux.json", GERMAN)),
         "aux.json: no language has the code aux")
imported("archive-name-of-page-437", archive(Entry(b"\x9abersetzung/de.json", GERMAN, flags=0)))
imported("archive-name-with-dots", archive(Entry("./i18n//./de.json", GERMAN)))

SAME = "has the name of another entry"
for case_name, first, second in [
    ("twice", "de.json", "de.json"), ("case", "de.json", "DE.json"), ("case-beyond-ascii", "É.txt", "é.txt"),
    ("case-sharp-s", "straße.txt", "STRASSE.txt"), ("composition", "\u00e9.txt", "e\u0301.txt"),
    ("needless-parts", "de/translation.json", "./de//translation.json"), ("file-and-folder", "de.json", "de.json/"),
]:
    refused(f"archive-names-{case_name}", archive(Entry(first, GERMAN), Entry(second, GERMAN)), f"IN/{second}: {SAME}")

LINKED = "is a link or a device"
refused("archive-link", entries(Entry("de.json", b"/etc/passwd", mode=LINK)), f"IN/de.json: {LINKED}")
refused("archive-link-beside", entries(Entry("de.json", GERMAN), Entry("x", b"/etc", mode=LINK)), f"IN/x: {LINKED}")
refused("archive-link-of-macos", entries(Entry("de.json", b"/x", mode=LINK, system=MACOS)), f"IN/de.json: {LINKED}")
refused("archive-link-of-windows", entries(Entry("de.json", b"x", mode=0, system=WINDOWS, attributes=0x400)),
        f"IN/de.json: {LINKED}")
refused("archive-device", entries(Entry("de.json", b"", mode=DEVICE)), f"IN/de.json: {LINKED}")
refused("archive-fifo", entries(Entry("de.json", b"", mode=FIFO)), f"IN/de.json: {LINKED}")
for case_name, flag in {"encrypted": ENCRYPTED, "encrypted-strongly": ENCRYPTED | STRONG, "masked": MASKED}.items():
    refused(f"archive-{case_name}", entries(Entry("de.json", GERMAN, flags=flag)), "IN/de.json: is encrypted")
refused("archive-encrypted-in-the-header-alone", entries(Entry("de.json", GERMAN, local={"flags": ENCRYPTED | UTF8})),
        "IN/de.json: is encrypted")
refused("archive-encrypted-by-aes", entries(Entry("de.json", GERMAN, method=99, flags=ENCRYPTED)),
        "IN/de.json: is encrypted")
for method, case_name in {1: "shrunk", 6: "imploded", 9: "deflate64", 12: "bzip2", 14: "lzma", 93: "zstd", 95: "xz",
                          65535: "unknown"}.items():
    refused(f"archive-method-{case_name}", entries(Entry("de.json", GERMAN, method=method)),
            "IN/de.json: is packed in another way than by deflate")
refused("archive-holds-no-terms", archive(Entry("README.md", b"x")), f"IN: {NO_TERMS}")
refused("archive-holds-nothing", archive(), f"IN: {NO_TERMS}")
refused("archive-of-bad-json", entries(Entry("de/translation.json", b'{"a": }')),
        "IN/de/translation.json:1:7: this is no value")
refused("archive-with-language-twice", archive(Entry("a/de.json", GERMAN), Entry("b/de.json", GERMAN)),
        "IN/b/de.json: holds the same as IN/a/de.json: one language, one namespace")

# --- Archives: bombs ------------------------------------------------------------------------------------------------

BOMB = "is packed more than 100 times smaller than it is"
ZEROS = b"{" + b" " * 1_000_000 + b"}"
refused("bomb", entries(Entry("de.json", ZEROS)), f"IN/de.json: {BOMB}")
refused("bomb-with-small-size", entries(Entry("de.json", ZEROS, size=50)),
        "IN/de.json: is damaged: it has another size than the directory says")
refused("bomb-with-zero-size", entries(Entry("de.json", ZEROS, size=0)),
        "IN/de.json: is damaged: it has another size than the directory says")
imported("bomb-that-nobody-reads", archive(Entry("de.json", GERMAN), Entry("zeros.bin", ZEROS)))
imported("bomb-below-the-limit", archive(Entry("de.json", b"{" + b" " * 99_998 + b"}")))
refused("bomb-of-archives", archive(Entry("de.json.zip", archive(Entry("de.json", ZEROS)))), f"IN: {NO_TERMS}")
refused("bomb-of-10001-entries", archive(*[Entry(f"{i}.txt", b"", method=STORED) for i in range(10_001)]),
        "IN: has more than 10000 entries")
imported("bomb-of-10000-entries", archive(Entry("de.json", GERMAN),
                                          *[Entry(f"{i}.txt", b"", method=STORED) for i in range(9_999)]))
SHARED = "shares bytes with another entry"
refused("overlap-same-bytes", archive(Entry("de.json", GERMAN), Entry("fr.json", GERMAN, shared_with=0)),
        "IN/fr.json: has two names")
QUOTED = local_header(Entry("fr.json", GERMAN)) + deflate(GERMAN)
refused("overlap-one-in-the-other",
        archive(Entry("de.json", QUOTED, method=STORED), Entry("fr.json", GERMAN, offset=37, shared_with=0)),
        f"IN/fr.json: {SHARED}")
refused("overlap-into-the-next", archive(Entry("de.json", GERMAN, packed_size=60), Entry("fr.json", GERMAN)),
        f"IN/fr.json: {SHARED}")
refused("overlap-with-the-directory", archive(Entry("de.json", GERMAN, packed_size=60)),
        "IN/de.json: shares bytes with the archive's directory")

# --- Archives: damage -----------------------------------------------------------------------------------------------

NO_ARCHIVE = "is no ZIP archive, or is cut off"
NOT_THERE = "is damaged: its directory is not where it should be"
PLAIN = entries(Entry("de.json", GERMAN))
refused("archive-empty-file", b"", f"IN: {NO_ARCHIVE}")
refused("archive-text", b"no archive at all, but long enough to be one", f"IN: {NO_ARCHIVE}")
refused("archive-json", GERMAN, f"IN: {NO_ARCHIVE}")
refused("archive-signature-alone", b"PK\x03\x04", f"IN: {NO_ARCHIVE}")
refused("archive-of-another-format", b"7z\xbc\xaf\x27\x1c" + bytes(100), f"IN: {NO_ARCHIVE}")
refused("archive-gzip", b"\x1f\x8b\x08\0" + bytes(100), f"IN: {NO_ARCHIVE}")
refused("archive-cut-in-half", PLAIN[:len(PLAIN) // 2], f"IN: {NO_ARCHIVE}")
refused("archive-cut-by-one-byte", PLAIN[:-1], f"IN: {NO_ARCHIVE}")
refused("archive-without-beginning", PLAIN[10:], f"IN: {NOT_THERE}")
refused("archive-checksum", entries(Entry("de.json", GERMAN, checksum=1)), "IN/de.json: is damaged: CRC error")
refused("archive-checksum-of-nothing", entries(Entry("de.json", GERMAN, checksum=0)),
        "IN/de.json: is damaged: CRC error")
refused("archive-size-too-small", entries(Entry("de.json", GERMAN, size=5)),
        "IN/de.json: is damaged: it has another size than the directory says")
refused("archive-size-too-large", entries(Entry("de.json", GERMAN, size=500)),
        "IN/de.json: is damaged: it has another size than the directory says")
refused("archive-size-of-2-gibibytes", entries(Entry("de.json", GERMAN, size=1 << 31)),
        "IN/de.json: is damaged: it has another size than the directory says")
refused("archive-packed-nonsense", entries(Entry("de.json", GERMAN, packed=b"\xff" * 30)),
        "IN/de.json: is damaged: Zlib error: data error")
refused("archive-packed-cut", entries(Entry("de.json", GERMAN, packed=deflate(GERMAN)[:-4])),
        "IN/de.json: is damaged: CRC error")
imported("archive-damage-elsewhere", archive(Entry("de.json", GERMAN), Entry("x.txt", b"x", checksum=7)))
refused("archive-two-names", entries(Entry("de.json", GERMAN, local={"name": b"../de.js"})),
        "IN/de.json: has two names")
refused("archive-two-sizes", entries(Entry("de.json", GERMAN, local={"size": 3})), "IN/de.json: has two sizes")
refused("archive-two-packed-sizes", entries(Entry("de.json", GERMAN, local={"packed_size": 3})),
        "IN/de.json: has two sizes")
refused("archive-two-checksums", entries(Entry("de.json", GERMAN, local={"checksum": 3})),
        "IN/de.json: has two checksums")
refused("archive-two-methods", entries(Entry("de.json", GERMAN, local={"method": STORED})),
        "IN/de.json: is packed in two ways")
OPEN = {"checksum": 0, "packed_size": 0, "size": 0}
NOT_BEHIND = "is damaged: its sizes do not stand behind it as in the directory"
refused("archive-descriptor-missing",
        entries(Entry("de.json", GERMAN, flags=DESCRIPTOR, local=OPEN)),
        f"IN/de.json: {NOT_BEHIND}")
refused("archive-descriptor-contradicts", entries(streamed("de.json", GERMAN, size=len(GERMAN) - 1)),
        f"IN/de.json: {NOT_BEHIND}")
refused("archive-directory-offset", entries(offset_lie=1), f"IN: {NOT_THERE}")
refused("archive-directory-offset-far", entries(offset_lie=1 << 30), f"IN: {NOT_THERE}")
refused("archive-directory-size", entries(size_lie=-1), f"IN: {NOT_THERE}")
refused("archive-count-too-large", entries(count=2), "IN: is damaged: its directory is cut off")
refused("archive-count-too-small", entries(Entry("de.json"), count=1),
        "IN: is damaged: its directory is longer than its entries")
refused("archive-count-zero", entries(count=0), "IN: is damaged: its directory is longer than its entries")
refused("archive-entry-elsewhere", entries(Entry("de.json", GERMAN, offset=7)),
        "IN/de.json: is damaged: it is not where the directory says")
refused("archive-entry-beyond", entries(Entry("de.json", GERMAN, offset=1 << 31)),
        "IN/de.json: is damaged: it is not where the directory says")
PARTS = "is part of an archive in several files"
refused("archive-in-parts", entries(Entry("de.json", GERMAN), disk=3), f"IN: {PARTS}")
refused("archive-in-parts-first", b"PK\x07\x08" + PLAIN[:-22], f"IN: {NO_ARCHIVE}")
refused("archive-in-parts-entry", entries(Entry("de.json", GERMAN, disk=2)), "IN/de.json: lies in another file")
refused("archive-followed", PLAIN + b"\n", "IN: is damaged: something follows its end")
refused("archive-followed-by-another", PLAIN + archive(Entry("ja.json", GERMAN)), f"IN: {NOT_THERE}")
refused("archive-with-two-ends", archive(Entry("de.json", GERMAN), comment=PLAIN), "IN: is ambiguous: it has two ends")
refused("archive-with-end-in-comment", archive(Entry("de.json", GERMAN), comment=b"PK\x05\x06" + b"x" * 40),
        "IN: is ambiguous: it has two ends")
refused("archive-behind-other-bytes", b"#!/bin/sh\nexit\n" + PLAIN, f"IN: {NOT_THERE}")

# --- Archives: ZIP64 ------------------------------------------------------------------------------------------------

PACKED = len(deflate(GERMAN))


def large(number=None, **changes):
    """An entry whose numbers stand in the ZIP64 fields."""
    numbers = [len(GERMAN), PACKED, 37 + len(deflate(FRENCH["fr.json"]))]
    true = sizes64(*numbers[:2])
    for place, value in (number or {}).items():
        numbers[place] = value
    return Entry("de.json", GERMAN, size=FULL32, packed_size=FULL32, offset=FULL32,
        extra=changes.pop("extra", sizes64(*numbers)),
                 local_extra=true, **changes)


ZIP64_MISSING = "is damaged: its ZIP64 sizes are missing"
END_ELSEWHERE = "is damaged: its ZIP64 end is not where it should be"
imported("zip64-entry", entries(large()), )
imported("zip64-end", entries(Entry("de.json", GERMAN), zip64=end64, full=True))
imported("zip64-end-not-needed", entries(large(), zip64=end64))
imported("zip64-field-not-needed", archive(Entry("de.json", GERMAN, extra=sizes64(1, 2, 3), local_extra=sizes64(4, 5))))
refused("zip64-size-false", entries(large({0: 1 << 40})), "IN/de.json: has two sizes")
refused("zip64-size-of-all", entries(large({0: (1 << 64) - 1})), "IN/de.json: has two sizes")
refused("zip64-packed-size-false", entries(large({1: 1 << 40})),
        "IN/de.json: shares bytes with the archive's directory")
refused("zip64-offset-false", entries(large({2: 1 << 40})),
        "IN/de.json: is damaged: it is not where the directory says")
refused("zip64-offset-overflows", entries(large({2: (1 << 64) - 20})),
        "IN/de.json: is damaged: it is not where the directory says")
refused("zip64-field-missing", entries(large(extra=b"")), f"IN/de.json: {ZIP64_MISSING}")
refused("zip64-field-short", entries(large(extra=sizes64(len(GERMAN)))), f"IN/de.json: {ZIP64_MISSING}")
refused("zip64-field-cut", entries(large(extra=sizes64(len(GERMAN), PACKED, 0)[:-5])), f"IN/de.json: {ZIP64_MISSING}")
refused("zip64-end-offset-false", entries(zip64=lambda c, s, o, p: end64(c, s, o, p + 1), full=True),
        f"IN: {END_ELSEWHERE}")
refused("zip64-end-offset-far", entries(zip64=lambda c, s, o, p: end64(c, s, o, 1 << 62), full=True),
        f"IN: {END_ELSEWHERE}")
refused("zip64-directory-offset-false", entries(zip64=lambda c, s, o, p: end64(c, s, o + 1, p), full=True),
        f"IN: {NOT_THERE}")
refused("zip64-directory-offset-overflows", entries(zip64=lambda c, s, o, p: end64(c, s, (1 << 64) - s, p), full=True),
        f"IN: {NOT_THERE}")
refused("zip64-directory-size-false", entries(zip64=lambda c, s, o, p: end64(c, 1 << 63, o, p), full=True),
        f"IN: {NOT_THERE}")
refused("zip64-count-false", entries(zip64=lambda c, s, o, p: end64(c + 1, s, o, p), full=True),
        "IN: is damaged: its directory is cut off")
refused("zip64-count-of-all", entries(zip64=lambda c, s, o, p: end64((1 << 64) - 1, s, o, p), full=True),
        "IN: has more than 10000 entries")
refused("zip64-ends-contradict", entries(zip64=lambda c, s, o, p: end64(c, s, o - 1, p)),
        "IN: is damaged: its two ends contradict each other")
refused("zip64-in-parts", entries(zip64=lambda c, s, o, p: end64(c, s, o, p, disk=1), full=True), f"IN: {PARTS}")
refused("zip64-of-two-parts", entries(zip64=lambda c, s, o, p: end64(c, s, o, p, disks=2), full=True), f"IN: {PARTS}")
refused("zip64-end-missing", entries(full=True), "IN: has more than 10000 entries")

# --- Archives as programs make them ---------------------------------------------------------------------------------

FILES = {"de/": b"", "de/translation.json": GERMAN, "README.md": b"x"}
imported("made-by-library", by_library(FILES))
imported("made-by-library-deflated", by_library(FILES, compression=zipfile.ZIP_DEFLATED))
imported("made-by-library-zip64", by_library(FILES, force_zip64=True))
imported("made-by-library-as-stream", by_library(FILES, stream=True, compression=zipfile.ZIP_DEFLATED))
imported("made-by-library-as-stream-stored", by_library(FILES, stream=True))
imported("made-by-library-as-stream-zip64", by_library(FILES, stream=True, force_zip64=True))
imported("made-as-stream", archive(streamed("de.json", GERMAN)))
imported("made-as-stream-without-signature", archive(streamed("de.json", GERMAN, signature=False)))
imported("made-as-stream-zip64", archive(streamed("de.json", GERMAN, "<QQ", local_extra=sizes64(0, 0), local={
    "checksum": 0, "packed_size": FULL32, "size": FULL32})))
imported("made-on-macos", archive(
    Entry("i18n/", b"", STORED, mode=FOLDER, flags=0),
        streamed("i18n/de.json", GERMAN, extra=extra(0x7875, b"\1\4\0\0\0\0\4\0\0\0\0")),
    Entry("i18n/.DS_Store", b"\0\0\0\1Bud1"), Entry("__MACOSX/i18n/._de.json", b"\0\5\x16\7"),
        Entry("__MACOSX/._i18n", b"\0\5\x16\7")))
imported("made-on-windows", archive(
    Entry("Übersetzung/de.json", GERMAN, mode=0, system=0, attributes=0x20,
        extra=extra(0x000A, bytes(4) + extra(1, bytes(24)))),
    Entry("Übersetzung/Thumbs.db", b"x", mode=0, system=0, attributes=0x26)))
imported("made-with-time-stamps", archive(Entry("de.json", GERMAN, extra=extra(0x5455, b"\3" + bytes(4)),
                                                local_extra=extra(0x5455, b"\3" + bytes(8)) + extra(0x7875,
                                                b"\1" + bytes(10)))))
imported("made-with-padding", archive(Entry("de.json", GERMAN, method=STORED, local_extra=b"\0" * 3)))
imported("made-with-unknown-fields", archive(Entry("de.json", GERMAN, extra=extra(0x9999, b"x" * 900),
                                                   local_extra=extra(0xCAFE, b""))))
imported("made-with-comment", archive(Entry("de.json", GERMAN), comment="Grüße".encode() * 100))
imported("made-of-whole-blocks", archive(Entry("de.json", GERMAN)) + bytes(10_000))
imported("made-to-extract-itself", archive(Entry("de.json", GERMAN), before=b"MZ" + bytes(500)))


# --- Making ---------------------------------------------------------------------------------------------------------


def make(path, content):
    """Makes what a case asks for. Returns why it cannot be made here, None where it was."""
    if content is None:
        return None
    if isinstance(content, NoRights):
        missing = make(path, content.content)
        os.chmod(path, 0)
        return missing
    if isinstance(content, dict):
        os.makedirs(path, exist_ok=True)
        missing = [make(os.path.join(os.fsencode(path), os.fsencode(name)), inner) for name, inner in content.items()]
        return next((reason for reason in missing if reason), None)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    if isinstance(content, Link):
        os.symlink(content, path)
    elif isinstance(content, Sparse):
        with open(path, "wb") as file:
            try:
                file.truncate(content)
            except OSError as error:
                return f"the disk takes no file of {int(content)} bytes: {error.strerror}"
    elif isinstance(content, Fifo):
        os.mkfifo(path)
    elif isinstance(content, Socket):
        # The name must be short, however long the way to it is.
        before = os.getcwd()
        os.chdir(os.path.dirname(path))
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(os.path.basename(path))
        os.chdir(before)
    elif isinstance(content, Device):
        try:
            os.mknod(path, 0o644 | stat.S_IFCHR, os.makedev(1, 5))
        except OSError as error:
            return f"only a superuser makes devices: {error.strerror}"
    else:
        Path(os.fsdecode(path)).write_bytes(content)
    return None


def has_no_rights(content):
    return isinstance(content, NoRights) or (isinstance(content, dict) and any(map(has_no_rights, content.values())))


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True)
    table = []
    for name, one in CASES.items():
        place = folder / name
        place.mkdir()
        (place / "outside").mkdir()
        (place / "outside/translation.json").write_bytes(GERMAN)
        (place / "outside.json").write_bytes(GERMAN)
        path = place / ("in.zip" if isinstance(one["content"], bytes) else "in")
        missing = make(str(path), one["content"])
        table.append({"name": name, "path": f"{name}/{path.name}", "outcome": one["outcome"],
        "messages": one["messages"],
                      "missing": missing or "", "isForOrdinaryUsers": has_no_rights(one["content"])})
    (folder / "cases.json").write_text(json.dumps(table, indent=1), encoding="utf-8")


if __name__ == "__main__":
    main()
