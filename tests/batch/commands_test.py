"""Runs the commands of a document in order, beside a copy of the sample project, and compares what it shows.

    commands_test.py DOCUMENT PROGRAM SAMPLE [NODE_MODULES] [--write]

A block marked `console` holds commands, each behind "$ " (continued behind "> "), and below each what it prints, output and
error output alike; a line "..." stands for any number of lines. A command that ends with another code than 0 fails, so a
document shows the code with "echo $?". All blocks are run in one folder, in which "game" is the copy and PROGRAM is found by its
name. A block marked with a kind and a file's name, as `sh ci.sh`, is written to that file first.

Commands that begin with "node " find their packages in the folder NODE_MODULES. Where it or Node.js is missing they are left out,
and a line says so.

--write puts what the commands print into the document, where it differs; to be looked at before it is committed.
"""

import difflib
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

BLOCK = re.compile(r"^```(\w+)[ \t]*([^\n]*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def commands_of(text):
    """The commands of a console block with the lines shown below each."""
    found = []
    for line in text.splitlines():
        if line.startswith("$ "):
            found.append(([line[2:]], []))
        elif line.startswith("> ") and found and not found[-1][1]:
            found[-1][0].append(line[2:])
        elif found:
            found[-1][1].append(line)
        else:
            raise ValueError(f"a block begins with {line!r} and not with a command")
    return [("\n".join(command), shown) for command, shown in found]


def matches(shown, printed):
    """Whether lines are those shown, where "..." stands for any number of them."""
    pattern = "".join(r"(?:.*\n)*" if line == "..." else re.escape(line) + r"\n" for line in shown)
    return re.fullmatch(pattern, "".join(line + "\n" for line in printed)) is not None


class Desk:
    """The folder in which the commands are run."""

    def __init__(self, folder, program, modules):
        self.folder = Path(folder)
        own = {name: value for name, value in os.environ.items() if not name.startswith(("GIT_", "LC_", "LANG"))}
        self.environment = dict(own, LC_ALL="C.UTF-8", PATH=f"{program.parent}:{own['PATH']}")
        self.has_node = shutil.which("node") is not None and modules is not None and modules.is_dir()
        if self.has_node:
            (self.folder / "node_modules").symlink_to(modules)
        self.count = 0
        self.left_out = 0
        self.wrong = []

    def run(self, command, shown):
        """The lines that a command prints; remembers where they are not those shown."""
        self.count += 1
        done = subprocess.run(["bash", "-c", command], cwd=self.folder, env=self.environment, text=True, errors="replace",
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        printed = done.stdout.splitlines()
        if done.returncode:
            self.wrong.append(f"$ {command}\nends with {done.returncode}:\n" + "\n".join(printed))
        elif not matches(shown, printed):
            lines = difflib.unified_diff(shown, printed, "shown", "printed", lineterm="")
            self.wrong.append(f"$ {command}\n" + "\n".join(lines))
        return printed

    def follow(self, block):
        """A block as it is when everything is shown that its commands print."""
        kind, name, text = block.groups()
        if name:
            (self.folder / name).write_text(text, encoding="utf-8")
        if kind != "console":
            return block.group()
        lines = []
        for command, shown in commands_of(text):
            if command.startswith("node ") and not self.has_node:
                self.left_out += 1
                lines += ["$ " + command, *shown]
                continue
            printed = self.run(command, shown)
            lines += ["$ " + command.replace("\n", "\n> "), *(shown if matches(shown, printed) else printed)]
        return "\n".join([f"```{kind}", *lines, "```"])


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "--write"]
    document, program, sample, modules = (Path(path).resolve() for path in (*arguments, "node_modules")[:4])
    text = document.read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as folder:
        desk = Desk(folder, program, modules)
        shutil.copytree(sample, desk.folder / "game", ignore=shutil.ignore_patterns(".editor", "i18n"))
        followed = BLOCK.sub(desk.follow, text)
    if "--write" in sys.argv:
        document.write_text(followed, encoding="utf-8")
    for one in desk.wrong:
        print(f"{document.name}: {one}\n", file=sys.stderr)
    print(f"{document.name}: {desk.count} commands, {len(desk.wrong)} not as shown")
    if desk.left_out:
        print(f"{document.name}: left out {desk.left_out} with Node.js: it is not installed, or no packages are at {modules}")
    return 1 if desk.wrong or not desk.count else 0


if __name__ == "__main__":
    sys.exit(main())
