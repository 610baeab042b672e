#!/usr/bin/env python3
"""The export that stands beside a sample project is what the batch tool writes of it.

Usage: sample_export_test.py TOOL PROJECT EXPORT
"""

import subprocess
import sys
import tempfile
from pathlib import Path


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in sorted(folder.rglob("*")) if path.is_file()}


def main(tool, project, export):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([tool, "export", project, "--to", folder], check=True, stdout=subprocess.DEVNULL)
        made, kept = contents(Path(folder)), contents(Path(export))
    different = sorted(name for name in made.keys() | kept.keys() if made.get(name) != kept.get(name))
    for name in different:
        print(f"{name}: not the file that {Path(tool).name} writes")
    print(f"{len(made)} files compared")
    return 1 if different or not made else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
