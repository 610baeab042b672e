#!/usr/bin/env python3
"""Catalogues of published applications go into a new project and come out as they were.

Usage: round_trip_test.py TOOL CATALOGUES NAME                          one of those that fetch.sh fetches
       round_trip_test.py TOOL FOLDER --default CODE [NAME=CODE | -NAME]...      any others

NAME=CODE says which language a folder or file is of that has no code for its name, -NAME that it is of none.

What must come out is worked out here from the files alone: every text, key, order and type, but for texts that are empty,
which are counted, and for keys that neither the default language has nor are plural forms of one of its sets. These, and
no others, must be reported; plural forms of version 3 with the first of their file and the number of the others. Exit code: 0, 1 for a difference, 77 where the catalogues are not there.
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import zipfile
from collections import Counter
from pathlib import Path

# By name: the default language, what languages the names stand for that are no codes, and the names that no language
# of the editor has.
CATALOGUES = {
    "dashboard": ("en", {"enGB": "en-GB", "ptBR": "pt-BR", "ptPT": "pt-PT", "zhCN": "zh-CN", "zhTW": "zh-TW"}, set()),
    "editor-client": ("en-US", {}, set()),
    "analytics": ("en", {
        "ar_EG": "ar-EG", "ar_IQ": "ar-IQ", "en_US": "en-US", "es_419": "es-419", "hi_IN": "hi-IN", "pt_BR": "pt-BR",
        "uz_Cyrl": "uz-Cyrl", "uz_Latn": "uz-Latn", "zh_CN": "zh-CN"},
                  {"prs", "tet", "uz_UZ_Cyrl", "uz_UZ_Latn"}),
}
OLD_FORM = re.compile(r"_(plural|[0-9]+)$")
OTHER_OLD_FORMS = re.compile(r" nor those of ([0-9]+) more plural forms of version 3 of the format$")
CATEGORIES = ("zero", "one", "two", "few", "many", "other")


class Pairs(list):
    """The members of an object in their order."""


def read(path):
    return json.loads(path.read_bytes().decode("utf-8-sig"), object_pairs_hook=Pairs)


def leaves(value, path=()):
    if isinstance(value, (Pairs, list)) and value:
        members = value if isinstance(value, Pairs) else enumerate(value)
        for name, inner in members:
            yield from leaves(inner, path + (name,))
    else:
        yield path, value


def is_missing(value):
    return value is None or value == ""


def kept(value, is_kept, path=()):
    """The value without the leaves that are not kept, and without what is then empty; None where nothing is left."""
    if isinstance(value, Pairs) and value:
        members = [(name, kept(inner, is_kept, path + (name,))) for name, inner in value]
        return Pairs((name, inner) for name, inner in members if inner is not None) or None
    if isinstance(value, list) and not isinstance(value, Pairs) and value:
        members = [kept(inner, is_kept, path + (i,)) for i, inner in enumerate(value)]
        while members and members[-1] is None:
            members.pop()
        return members or None
    return value if is_kept(path, value) else None


def plural_categories(codes):
    """By language, what CLDR gives it for cardinal and for ordinal numbers."""
    program = """
        const of = (code, type) => new Intl.PluralRules(code, {type}).resolvedOptions().pluralCategories;
        const codes = JSON.parse(process.argv[1]);
        console.log(JSON.stringify(Object.fromEntries(codes.map(code => [code, [of(code, "cardinal"), of(code, "ordinal")]]))));
    """
    run = subprocess.run(["node", "-e", program, json.dumps(sorted(codes))], check=True, capture_output=True)
    return json.loads(run.stdout)


def plural_form(path):
    """Base, whether it is ordinal, and category of a key; None where it ends in no category."""
    if not path or not isinstance(path[-1], str):
        return None
    base, _, category = path[-1].rpartition("_")
    if category not in CATEGORIES or not base:
        return None
    ordinal = base.endswith("_ordinal") and base != "_ordinal"
    return path[:-1] + (base.removesuffix("_ordinal") if ordinal else base,), ordinal, category


def proven_sets(paths, categories):
    def is_form(path, ordinal):
        form = plural_form(path)
        return form and form[1] == ordinal and form[2] in {*categories[ordinal], "zero"}

    sets = {}
    for path in paths:
        form = plural_form(path)
        if form:
            sets.setdefault(form[:2], set()).add(form[2])
    proven = set()
    for (base, ordinal), forms in sets.items():
        # A language that knows no numbers proves a plural by "other" alone, unless its neighbours say that it is a name.
        beginning = base[-1] + ("_ordinal_" if ordinal else "_")
        is_alone = categories[ordinal] == ["other"] and not any(
            len(path) >= len(base) and path[:len(base) - 1] == base[:-1] and str(path[len(base) - 1]).startswith(beginning)
            and not is_form(path, ordinal) for path in paths)
        if "other" in forms and forms <= {*categories[ordinal], "zero"} and (len(forms) > 1 or is_alone):
            proven.add((base, ordinal))
    return proven


def other_shape(path, is_flat):
    """The path that the i18next library takes for the same: ("a.b",) and ("a", "b")."""
    if not all(isinstance(name, str) for name in path):
        return None
    if is_flat:
        return (".".join(path),)
    return tuple(path[0].split(".")) if len(path) == 1 else None


def has_flat_shape(file):
    return (not any(isinstance(value, (Pairs, list)) for _, value in file)
            and any(c in name for name, _ in file for c in ".: "))


class Catalogue:
    def __init__(self, folder, default, names, strangers):
        self.files = {}
        for path in sorted(folder.rglob("*.json")):
            parts = path.relative_to(folder).with_suffix("").parts
            if len(parts) > 2 or parts[0].startswith("$"):
                continue
            name, namespace = parts if len(parts) == 2 else (parts[0], "translation")
            if name in strangers:
                continue
            self.files[names.get(name, name), namespace] = read(path)
        self.default = default
        self.categories = plural_categories({code for code, _ in self.files})

    def expected(self, code, namespace):
        """The file that must come out, and the paths that must be reported as left out."""
        own = {path for path, value in leaves(self.files.get((self.default, namespace), Pairs()))
               if not is_missing(value)}
        sets = proven_sets(own, self.categories[self.default])

        is_flat = has_flat_shape(self.files.get((self.default, namespace), Pairs()))

        def is_known(path):
            form = plural_form(path)
            return path in own or other_shape(path, is_flat) in own or (
                form is not None and form[:2] in sets and form[2] in {*self.categories[code][form[1]], "zero"})

        file = self.files[code, namespace]
        unknown = [path for path, value in leaves(file) if not is_missing(value) and not is_known(path)]
        return kept(file, lambda path, value: not is_missing(value) and is_known(path)) or Pairs(), unknown


def key_of(namespace, path, is_flat):
    def segment(name):
        if isinstance(name, int):
            return f"[{name}]"
        escaped = ":%#" if is_flat else ".:%#"
        out = "".join(f"%{ord(c):02X}" if c in escaped or ord(c) < 32 or ord(c) == 127 else c for c in name)
        return "%5B" + out[1:] if out.startswith("[") else out

    key = ".".join(segment(name) for name in path)
    if namespace == "translation":
        return key
    return f"{namespace}:" + ("%20" + key[1:] if key.startswith(" ") else key)


def printed(value):
    return json.dumps(value, ensure_ascii=False)


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in sorted(folder.rglob("*")) if path.is_file()}


def stamped(folder):
    return {name: (bytes, (folder / name).stat().st_mtime_ns) for name, bytes in contents(folder).items()}


class Test:
    def __init__(self, tool, folder, default, names, strangers):
        self.tool = tool
        self.folder = folder
        self.default, self.names, self.strangers = default, names, strangers
        self.catalogue = Catalogue(folder, default, names, strangers)
        self.problems = []
        self.left_out = self.empty = 0

    def run_tool(self, *arguments):
        run = subprocess.run([self.tool, *map(str, arguments)], capture_output=True, text=True)
        if run.returncode != 0:
            self.problems.append(f"{' '.join(map(str, arguments))}: {run.returncode}: {run.stderr}")
        return run.stdout

    def import_into(self, project, source):
        project.mkdir()
        (project / "project.json").write_text("{}\n")
        maps = [part for name, code in self.names.items() for part in ("--map", f"{name}={code}")]
        return self.run_tool("import", project, "--from", source, "--default", self.default, *maps, "--json")

    def run(self, work):
        project, out = work / "project", work / "out"
        report = self.import_into(project, self.folder)
        self.run_tool("export", project, "--to", out)
        if self.problems:
            return
        self.compare_files(out)
        self.compare_report(json.loads(report), json.loads((project / "project.json").read_text()))
        self.compare_archives(work, project, out)

        before = stamped(out)
        self.run_tool("export", project, "--to", out)
        if stamped(out) != before:
            self.problems.append("a second export touched files")
        before = stamped(project)
        self.run_tool("import", project, "--from", out)
        if stamped(project) != before:
            self.problems.append("the import of an unchanged export changed the project")

    def compare_archives(self, work, project, out):
        with zipfile.ZipFile(work / "in.zip", "w", zipfile.ZIP_DEFLATED) as archive:
            for path in sorted(self.folder.rglob("*.json")):
                archive.write(path, Path("enclosing") / path.relative_to(self.folder))
        self.import_into(work / "other", work / "in.zip")
        if contents(work / "other") != contents(project):
            self.problems.append("the import of an archive made another project")
        self.run_tool("export", project, "--zip", work / "out.zip")
        with zipfile.ZipFile(work / "out.zip") as archive:
            if {name: archive.read(name) for name in archive.namelist()} != contents(out):
                self.problems.append("the archive has other files than the folder")

    def compare_files(self, out):
        made = {path.relative_to(out).with_suffix("").parts for path in out.rglob("*.json")}
        for code, namespace in sorted(made - set(self.catalogue.files)):
            if read(out / code / f"{namespace}.json"):
                self.problems.append(f"{code}/{namespace}.json: was not among the files")
        for (code, namespace) in sorted(self.catalogue.files):
            wanted, _ = self.catalogue.expected(code, namespace)
            path = out / code / f"{namespace}.json"
            written = read(path) if path.exists() else None
            if printed(written) == printed(wanted):
                continue
            one, two = dict(leaves(wanted)), dict(leaves(written)) if written is not None else {}
            different = [key for key in one.keys() | two.keys() if printed(one.get(key)) != printed(two.get(key))]
            what = f"{len(different)} texts differ, such as {sorted(map(str, different))[0]}" if different else "the order differs"
            self.problems.append(f"{code}/{namespace}.json: {what}")

    def compare_report(self, report, project):
        namespaces = project["localization"].get("namespaces", {})
        wanted = Counter()
        for code, namespace in self.catalogue.files:
            is_flat = namespaces.get(namespace, {}).get("flat") is True
            _, unknown = self.catalogue.expected(code, namespace)
            wanted.update((code, key_of(namespace, path, is_flat)) for path in unknown)
        told = Counter((line["language"], line["term"]) for line in report["lines"]
                       if line["outcome"] == "skipped" and line.get("term"))
        untold = wanted - told
        for language in {language for language, _ in untold}:
            others = {key: count for key, count in untold.items() if key[0] == language and OLD_FORM.search(key[1])}
            counted = sum(int(found[1]) for line in report["lines"] if line.get("language") == language
                          and (found := OTHER_OLD_FORMS.search(line.get("reason", ""))))
            if counted == sum(others.values()):
                untold -= Counter(others)
        for language, term in sorted(untold.keys()):
            self.problems.append(f"{language}: {term} is left out and not reported")
        for language, term in sorted((told - wanted).keys()):
            self.problems.append(f"{language}: {term} is reported and not left out")
        self.left_out = sum(wanted.values())
        empty = Counter(code for (code, _), file in self.catalogue.files.items()
                        for _, value in leaves(file) if is_missing(value))
        self.empty = sum(empty.values())
        for language in report["languages"]:
            if language["empty"] != empty[language["language"]]:
                self.problems.append(f"{language['language']}: {language['empty']} empty texts counted, "
                                     f"not {empty[language['language']]}")
        files = [line.get("file", "") for line in report["lines"]
                 if line.get("reason", "").startswith("no language has the code ")]
        for name in sorted(self.strangers):
            if not any(file.startswith((f"{name}/", f"{name}.json")) for file in files):
                self.problems.append(f"{name} is no language, and that is not reported")


def main(tool, folder, *arguments):
    folder = Path(folder)
    if arguments[0] == "--default":
        names = dict(argument.split("=") for argument in arguments[2:] if "=" in argument)
        catalogues = arguments[1], names, {argument[1:] for argument in arguments[2:] if argument.startswith("-")}
    else:
        folder /= arguments[0]
        catalogues = CATALOGUES[arguments[0]]
    if not folder.is_dir():
        print(f"skipped: there are no catalogues at {folder}; tests/catalogues/fetch.sh fetches them")
        return 77
    test = Test(tool, folder, *catalogues)
    with tempfile.TemporaryDirectory() as work:
        test.run(Path(work))
    for problem in test.problems[:50]:
        print(problem)
    if test.problems:
        print(f"{len(test.problems)} problems")
        return 1
    texts = sum(1 for file in test.catalogue.files.values() for _ in leaves(file))
    print(f"{len(test.catalogue.files)} files with {texts} values compared; {test.empty} empty, "
          f"{test.left_out} left out and reported")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
