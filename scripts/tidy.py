#!/usr/bin/env python3
"""Runs clang-tidy over the project's own sources: scripts/tidy.py BUILD_FOLDER [FILE...]

BUILD_FOLDER is one that was built with Clang. A file is looked at again only when it, one of the headers it includes,
the checks or its compile command changed; tests are left out, since GoogleTest's macros drown them in findings.
"""

import concurrent.futures
import hashlib
import json
import os
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
# The analyzer gives a function up after so many states. With its own limit, 225,000, it takes two or three times as long as all
# other checks together.
ANALYZER = [f"--extra-arg={word}" for word in ("-Xclang", "-analyzer-config", "-Xclang", "max-nodes=30000")]
ROOMS = ("compat/", "editor/", "engine/", "plugin/", "host/", "samples/", "benchmarks/")


def included_files(build):
    """The files that each object was compiled from, as Ninja recorded them."""
    files, current = {}, None
    output = subprocess.run(["ninja", "-C", build, "-t", "deps"], check=True, capture_output=True, text=True).stdout
    for line in output.splitlines():
        if line.startswith("    "):
            files[current].append(line.strip())
        elif ": #deps" in line:
            current = line.split(": #deps")[0]
            files[current] = []
    return files


class Digests:
    """SHA-256 of files, each read once; system headers count by name and time."""

    def __init__(self, build):
        self._build = build
        self._known = {}

    def of(self, name):
        if name not in self._known:
            path = os.path.join(self._build, name)
            if path.startswith("/usr/"):
                self._known[name] = str(os.stat(path).st_mtime_ns)
            else:
                self._known[name] = hashlib.sha256(Path(path).read_bytes()).hexdigest()
        return self._known[name]


def main():
    build = Path(sys.argv[1]).resolve()
    wanted = {str(Path(name).resolve()) for name in sys.argv[2:]}
    tidy = shutil.which("clang-tidy-14") or shutil.which("clang-tidy")
    if not tidy:
        sys.exit("tidy: clang-tidy is not installed; scripts/setup.sh --tests installs it")

    headers = included_files(build)
    digests = Digests(build)
    checks = digests.of(str(ROOT / ".clang-tidy"))
    stamps = build / "tidy"
    stamps.mkdir(exist_ok=True)

    jobs, fresh = {}, 0
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = os.path.join(entry["directory"], entry["file"])
        relative = os.path.relpath(source, ROOT)
        if not relative.startswith(ROOMS) or (wanted and source not in wanted):
            continue
        parts = [checks, *ANALYZER, entry["command"], digests.of(source)]
        words = shlex.split(entry["command"])
        parts += [digests.of(name) for name in headers.get(words[words.index("-o") + 1], [])]
        stamp = stamps / hashlib.sha256("\n".join(parts).encode()).hexdigest()
        if stamp.exists():
            fresh += 1
        else:
            jobs[relative] = stamp

    def look(relative):
        call = [tidy, "-p", str(build), "--quiet", *ANALYZER, str(ROOT / relative)]
        return relative, subprocess.run(call, cwd=ROOT, capture_output=True, text=True)

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for relative, result in pool.map(look, jobs):
            if result.returncode == 0:
                jobs[relative].touch()
                continue
            failed += 1
            # On success it only tells how many warnings of other people's headers it suppressed; so only here.
            print(result.stdout.strip() or result.stderr.strip(), flush=True)
    print(f"clang-tidy: {len(jobs)} files looked at, {failed} with findings, {fresh} unchanged since the last time")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
