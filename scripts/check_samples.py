#!/usr/bin/env python3
"""Checks a sample project: its layout on disk, its terms, and its translations.

Every problem is one line on the error output, and the exit code is then 1; else the figures of each language are
printed. What is checked is what the editor and the i18next format ask for, and what makes the sample worth having:
enough terms, every kind of text, some translations missing and some outdated.
Usage: check_samples.py [PROJECT FOLDER]
"""

import json
import re
import sys
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
COLLECTIONS = ["meshes", "textures", "shaders", "materials", "images", "animations", "skins", "pipelines", "fonts"]
MEMBERS = ["settings", "languages", "localization", "objects"] + COLLECTIONS

# Containers at these depths are printed over several lines, deeper ones on one.
PROJECT_LEVELS = 3
TRANSLATION_LEVELS = 1

# The categories of cardinal numbers, from the Unicode CLDR.
PLURAL_FORMS = {
    "ar": ["zero", "one", "two", "few", "many", "other"],
    "de": ["one", "other"],
    "en": ["one", "other"],
    "fr": ["one", "many", "other"],
    "ja": ["other"],
    "pt-BR": ["one", "many", "other"],
    "ru": ["one", "few", "many", "other"],
}
# Those of ordinal numbers.
ORDINAL_FORMS = {
    "ar": ["other"],
    "de": ["other"],
    "en": ["one", "two", "few", "other"],
    "fr": ["one", "other"],
    "ja": ["other"],
    "pt-BR": ["other"],
    "ru": ["other"],
}
ALL_FORMS = ["zero", "one", "two", "few", "many", "other"]
# Forms that stand for one single number may say it in words, without {{count}}; "one" of French or Russian may not.
SINGLE_NUMBER_FORMS = {"ar": {"zero", "one", "two"}, "de": {"one"}, "en": {"one"}}

RESOURCE_MEMBERS = {
    "animation": "animations", "background": "textures", "fallbacks": "fonts", "font": "fonts", "image": "images",
    "material": "materials", "mesh": "meshes", "shader": "shaders", "skin": "skins", "texture": "textures",
    "exits": "objects", "keyItem": "objects", "lens": "objects", "opens": "objects", "pointsTo": "objects",
    "sells": "objects", "startObject": "objects", "target": "objects",
}
TEXT_MEMBERS = {"text", "title", "label", "description", "hint"}
# Texts of the postcard, left for "Gather Strings" to find.
UNGATHERED = {"/objects/postcard/title", "/objects/postcard/text", "/objects/postcard/stamp/label"}

KEY = re.compile(r"""([a-z]+:[a-z]+(\.[a-z]+|\.\[[0-9]\])*
                     |[a-z][a-z0-9]*(\.[a-z][a-z0-9]*)+(_(male|female))?(_(one|other)|_ordinal_(one|two|few|other))?)""", re.VERBOSE)
PLACEHOLDER = re.compile(r"\{\{.*?\}\}|\$t\(.*?\)")
STATES = {"draft", "review"}
MINIMUM_TERMS = 150
MISSING_RANGE = (0.005, 0.10)
STALE_RANGE = (1, 6)


def fingerprint(text):
    """FNV-1a, 64 bits, over the UTF-8 bytes."""
    value = 14695981039346656037
    for byte in text.encode():
        value = ((value ^ byte) * 1099511628211) % 2**64
    return f"{value:016x}"


def print_value(value, levels, depth=0):
    if depth >= levels or not value or not isinstance(value, (dict, list)):
        return json.dumps(value, ensure_ascii=False)
    if isinstance(value, dict):
        brackets = "{}"
        members = [f"{json.dumps(key, ensure_ascii=False)}: {print_value(member, levels, depth + 1)}"
                   for key, member in value.items()]
    else:
        brackets = "[]"
        members = [print_value(member, levels, depth + 1) for member in value]
    indent = "\n" + "  " * (depth + 1)
    return brackets[0] + indent + ("," + indent).join(members) + indent[:-2] + brackets[1]


def plural_forms(stem, code):
    return (ORDINAL_FORMS if stem.endswith("_ordinal") else PLURAL_FORMS)[code]


class Check:
    def __init__(self, folder):
        self.folder = folder
        self.problems = []
        self.figures = []

    def expect(self, condition, message):
        if not condition:
            self.problems.append(message)
        return condition

    def read(self, name, levels):
        """Returns the parsed file; an object without members when it cannot be read."""
        def unique(pairs):
            for key, count in Counter(key for key, _ in pairs).items():
                self.expect(count == 1, f'{name}: member "{key}" is given {count} times')
            return dict(pairs)

        try:
            text = (self.folder / name).read_bytes().decode("utf-8")
            value = json.loads(text, object_pairs_hook=unique)
        except (OSError, ValueError) as error:
            self.problems.append(f"{name}: {error}")
            return {}
        if not self.expect(isinstance(value, dict), f"{name}: the root is no object"):
            return {}
        printed = print_value(value, levels) + "\n"
        if printed != text:
            pairs = enumerate(zip(printed.split("\n"), text.split("\n")), 1)
            line = next((number for number, (one, two) in pairs if one != two), "end")
            self.problems.append(f"{name}:{line}: not printed as the editor prints it")
        return value

    def resolve(self, pointer):
        node = self.project
        for token in pointer.split("/")[1:]:
            token = token.replace("~1", "/").replace("~0", "~")
            if isinstance(node, list) and token.isdigit() and int(token) < len(node):
                node = node[int(token)]
            elif isinstance(node, dict) and token in node:
                node = node[token]
            else:
                return None
        return node

    def run(self):
        self.project = self.read("project.json", PROJECT_LEVELS)
        if not self.expect(list(self.project) == MEMBERS, f"project.json: the members are {list(self.project)}"):
            return
        self.expect((self.folder / ".gitignore").read_text() == ".editor/\n", ".gitignore does not name .editor/")
        self.check_entries()
        self.check_references(self.project, "")
        self.check_languages()
        self.check_terms()
        self.check_gathered()
        self.check_kinds_of_text()
        for code in self.languages[1:]:
            self.check_translations(code)

    def check_entries(self):
        for collection in ["objects"] + COLLECTIONS:
            entries = self.project[collection]
            self.expect(len(entries) >= 3, f"/{collection} holds only {len(entries)}")
            for key, entry in entries.items():
                self.expect(bool(entry.get("name")), f"/{collection}/{key} has no name")
            names = Counter(entry.get("name") for entry in entries.values())
            for name, count in names.items():
                self.expect(count == 1, f'/{collection}: {count} entries are called "{name}"')
        self.figures.append(f"{len(self.project['objects'])} objects; resources: " + ", ".join(
            f"{len(self.project[collection])} {collection}" for collection in COLLECTIONS))

    def check_references(self, value, path):
        """Members that name another entry by its ID name one that exists."""
        if path.startswith("/localization"):
            return
        members = value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ()
        for key, member in members:
            collection = RESOURCE_MEMBERS.get(key)
            for name in member if isinstance(member, list) else [member]:
                if collection and isinstance(name, str):
                    self.expect(name in self.project[collection], f"{path}/{key}: no {collection} entry {name}")
            self.check_references(member, f"{path}/{key}")

    def check_languages(self):
        languages = self.project["languages"]
        default = [code for code, entry in languages.items() if entry.get("isDefault") is True]
        self.expect(default == ["en"], f"/languages: the default is {default}")
        self.languages = ["en"] + [code for code in languages if code != "en"]
        table = (ROOT / "host" / "localization" / "AllLanguages.inc").read_text(encoding="utf-8")
        for code in languages:
            self.expect(f'"{code}"_s}}' in table, f"/languages/{code}: not a language that the editor knows")
            self.expect(code in PLURAL_FORMS, f"/languages/{code}: its plural forms are not known here")
        files = sorted(path.name for path in (self.folder / "localization").iterdir())
        self.expect(files == sorted(f"{code}.json" for code in self.languages[1:]), f"localization/ holds {files}")

    def check_terms(self):
        self.terms = self.project["localization"]["terms"]
        self.sources = {}
        self.groups = {}
        places = Counter(term.get("sourceText") for term in self.terms.values())
        for key, term in self.terms.items():
            place = f"/localization/terms/{key}"
            self.expect(KEY.fullmatch(key), f"{place}: not a key of the sample's form")
            self.expect(not any(other.startswith(key + ".") for other in self.terms), f"{place}: both leaf and branch")
            self.expect(isinstance(term.get("translatable"), bool), f"{place}: translatable is no boolean")
            unknown = set(term) - {"sourceText", "translatable", "note", "maxLength"}
            self.expect(not unknown, f"{place}: unknown members {unknown}")
            self.expect(places[term.get("sourceText")] == 1, f"{place}: shares its source text with another term")
            source = self.resolve(term.get("sourceText", ""))
            if not self.expect(isinstance(source, str) and source, f"{place}: its source text does not resolve"):
                continue
            self.sources[key] = source
            self.expect(len(source) <= term.get("maxLength", len(source)), f"{place}: source text too long")
            stem, _, form = key.rpartition("_")
            if form in ALL_FORMS:
                self.groups.setdefault(stem, []).append(form)
        for stem, forms in self.groups.items():
            self.expect(forms == plural_forms(stem, "en"), f"/localization/terms/{stem}_*: the plural forms are {forms}")
        for key in self.project["localization"]["strings"]:
            self.expect(f"/localization/strings/{key}" in places, f"/localization/strings/{key}: no term shows it")
        self.expect(len(self.terms) >= MINIMUM_TERMS, f"only {len(self.terms)} terms")

    def check_gathered(self):
        found = set()

        def visit(value, path):
            members = value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ()
            for key, member in members:
                if isinstance(member, str) and member and (key in TEXT_MEMBERS or str(key).endswith("Text")):
                    found.add(f"{path}/{key}")
                visit(member, f"{path}/{key}")

        for key, entry in self.project["objects"].items():
            visit(entry, f"/objects/{key}")
        left = found - {term["sourceText"] for term in self.terms.values()}
        self.expect(left == UNGATHERED, f"texts without a term: {sorted(left)}, expected {sorted(UNGATHERED)}")

    def check_kinds_of_text(self):
        def count(name, least, condition):
            number = sum(1 for key, source in self.sources.items() if condition(key, source))
            self.expect(number >= least, f"only {number} terms {name}, expected {least}")
            return f"{number} {name}"

        kinds = [
            count("not translatable", 3, lambda key, _: not self.terms[key]["translatable"]),
            count("with placeholders", 15, lambda _, source: PLACEHOLDER.search(source)),
            count("of several lines", 8, lambda _, source: "\n" in source),
            count("of several paragraphs", 1, lambda _, source: source.count("\n\n") >= 4 and len(source) > 800),
            count("with a context", 2, lambda key, _: re.search("_(male|female)", key)),
            count("of an ordinal", 4, lambda key, _: "_ordinal_" in key),
            count("in a namespace", 4, lambda key, _: ":" in key),
            count("of an array", 3, lambda key, _: "[" in key),
            count("from /localization/strings", 2, lambda key, _: "/strings/" in self.terms[key]["sourceText"]),
            count("with a note", 3, lambda key, _: "note" in self.terms[key]),
            count("with a maximum length", 3, lambda key, _: "maxLength" in self.terms[key]),
        ]
        for text in self.sources.values():
            for used in re.findall(r"\$t\((.*?)\)", text):
                self.expect(used in self.terms, f"$t({used}) names no term")
        self.expect(len(self.groups) >= 6, f"only {len(self.groups)} plural groups")
        self.figures.append(f"{len(self.terms)} terms, {len(self.groups)} plural groups; " + ", ".join(kinds))

    def expected_keys(self, code):
        """The keys that a complete translation has, each with its source text."""
        expected = {}
        for key, source in self.sources.items():
            stem, _, form = key.rpartition("_")
            if not self.terms[key]["translatable"]:
                continue
            if form not in ALL_FORMS:
                expected[key] = source
            elif form == "other":
                for target_form in plural_forms(stem, code):
                    target = f"{stem}_{target_form}"
                    expected[target] = self.sources.get(target, source)
        return expected

    def check_translations(self, code):
        name = f"localization/{code}.json"
        entries = self.read(name, TRANSLATION_LEVELS)
        keys = list(entries)
        self.expect(keys == sorted(keys, key=str.encode), f"{name}: the keys are not in byte order")
        expected = self.expected_keys(code)
        counts = Counter()
        for key, entry in entries.items():
            if self.expect(key in expected, f"{name}: {key} is not to be translated here"):
                self.check_translation(f"{name}: {key}", code, key, entry, expected[key], counts)
        translated = {key for key, entry in entries.items() if entry.get("text")}
        for stem in self.groups:
            forms = plural_forms(stem, code)
            present = [form for form in forms if f"{stem}_{form}" in translated]
            self.expect(present in ([], forms), f"{name}: of {stem}_* only {present}")
        missing = len(set(expected) - translated)
        rate = missing / len(expected)
        low, high = MISSING_RANGE
        self.expect(low <= rate <= high, f"{name}: {missing} of {len(expected)} are missing")
        low, high = STALE_RANGE
        self.expect(low <= counts["stale"] <= high, f"{name}: {counts['stale']} are stale")
        self.expect(counts["draft"] + counts["review"] >= 1, f"{name}: none is a draft or in review")
        self.figures.append(f"{code}: {len(translated)} of {len(expected)} texts, {missing} missing ({rate:.1%}), "
                            f"{counts['stale']} stale, {counts['draft']} draft, {counts['review']} in review")

    def check_translation(self, place, code, key, entry, source, counts):
        unknown = set(entry) - {"text", "source", "state", "note"}
        self.expect(not unknown, f"{place}: unknown members {unknown}")
        self.expect(isinstance(entry.get("text"), str), f"{place}: text is no string")
        self.expect(re.fullmatch("[0-9a-f]{16}", entry.get("source", "")), f"{place}: source is no fingerprint")
        self.expect(entry.get("state", "draft") in STATES, f"{place}: unknown state {entry.get('state')}")
        counts[entry.get("state")] += 1
        counts["stale"] += entry.get("source") != fingerprint(source)
        text = entry.get("text")
        if not text:
            return
        limit = self.terms.get(key, {}).get("maxLength", len(text))
        self.expect(len(text) <= limit, f"{place}: {len(text)} characters, at most {limit}")
        self.expect(text == text.strip(), f"{place}: blanks at an end")
        form = key.rpartition("_")[2]
        used = Counter(PLACEHOLDER.findall(text))
        wanted = Counter(PLACEHOLDER.findall(source))
        if form in ALL_FORMS:
            # A group's forms share their placeholders; the form for one may have left out the number.
            wanted["{{count}}"] = 1
            if form in SINGLE_NUMBER_FORMS.get(code, ()):
                used["{{count}}"] = 1
        self.expect(used == wanted, f"{place}: placeholders {sorted(used.elements())}, "
                                    f"expected {sorted(wanted.elements())}")
        self.expect(text.count("\n\n") == source.count("\n\n"), f"{place}: not as many paragraphs as the source text")


def main(arguments):
    folder = Path(arguments[0]) if arguments else ROOT / "samples" / "lighthouse"
    check = Check(folder)
    check.run()
    for problem in check.problems:
        print(f"check_samples: {problem}", file=sys.stderr)
    if check.problems:
        return 1
    print(f"{folder.name}: " + "\n".join(check.figures))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
