"""The rules that the tree of this repository keeps, each a function of the root folder that lists what breaks it."""

import json
import os
import re
import subprocess
from pathlib import Path

# --- The tree -------------------------------------------------------------------------------------------------------

UNTRACKED = {".git", ".deps", "build", "__pycache__", "node_modules", ".cache", ".editor"}
TEXT = {".h", ".cpp", ".inc", ".py", ".sh", ".cmake", ".txt", ".md", ".json", ".mjs", ".conf", ".map", ".in", ""}


def files_of(root):
    """All files of the project as paths with slashes, relative to the root: those that git knows or would add."""
    if (root / ".git").exists():
        call = ["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
        try:
            listed = subprocess.run(call, capture_output=True, check=True).stdout.decode().split("\0")
            return sorted(name for name in listed if name and (root / name).is_file())
        except (OSError, subprocess.CalledProcessError):
            pass  # no git on this machine, or a folder that it does not trust
    found = []
    for folder, folders, names in os.walk(root):
        folders[:] = [name for name in folders if name not in UNTRACKED]
        found += [os.path.relpath(os.path.join(folder, name), root) for name in names]
    return sorted(found)


def text_of(root, name):
    return (root / name).read_text(encoding="utf-8", errors="replace")


def is_source(name):
    return name.endswith((".h", ".cpp", ".inc"))


# --- Arrows ---------------------------------------------------------------------------------------------------------

# The longest folder that holds a file is its room. A room knows itself and the rooms named here, and no other.
ROOMS = {
    "compat": [],
    "engine": [],
    "host/include": ["engine"],
    "editor": ["engine", "host/include"],
    "plugin": ["engine", "host/include", "editor"],
    "host": ["engine", "host/include", "editor", "host/document", "host/fonts", "host/localization"],
    "host/document": ["engine", "host/include", "editor", "host/localization"],
    "host/localization": ["engine", "host/include", "editor", "host/document"],
    "host/fonts": ["engine", "host/include", "host/document", "host/localization"],
    "host/batch": ["engine", "host/include", "host/document", "host/fonts", "host/localization"],
}

# Headers that only some rooms may include: pattern, the rooms or files that may, what it is about.
GUARDED = [
    (r"epoxy/", ["compat"], "the loader of OpenGL belongs to compat; beside Magnum's headers it does not compile"),
    (r"GLFW/|imgui_impl_", ["host/app", "tests", "benchmarks"], "the window belongs to host/app"),
    (r"imgui(_internal)?\.h|imgui_te_", ["editor", "plugin", "host/app", "host/modules", "tests", "benchmarks",
                                         "samples", "host/include"], "no GUI below the views"),
    (r"Magnum/(GL|Platform)/", ["compat", "editor", "plugin", "host/app", "tests", "benchmarks", "samples"],
     "no OpenGL below the views"),
    (r"portable-file-dialogs\.h", ["engine/Utils"], "native dialogs are opened through engine/Utils/Dialogs.h"),
]

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(["<])([^">]+)[">]', re.MULTILINE)


def inside(name, folder):
    return name == folder or name.startswith(folder + "/")


def room_of(name):
    rooms = [room for room in ROOMS if inside(name, room)]
    return max(rooms, key=len) if rooms else None


def arrows(root):
    """Includes that run against the arrows between rooms."""
    names = [name for name in files_of(root) if is_source(name)]
    headers = [name for name in names if room_of(name) and not name.endswith(".cpp")]
    broken = []
    for name in names:
        room = room_of(name)
        for _, included in INCLUDE.findall(text_of(root, name)):
            for pattern, allowed, reason in GUARDED:
                if re.match(pattern, included) and not any(inside(name, place) for place in allowed):
                    broken.append(f"{name}: includes {included}: {reason}")
            if room is None:
                continue
            beside = os.path.normpath(os.path.join(os.path.dirname(name), included))
            meant = [beside] if beside in headers else [h for h in headers if inside_path(h, included)]
            if room != "compat":
                # Whether Corrade and Magnum come from compat or not is none of the business of those above.
                meant = [header for header in meant if room_of(header) != "compat"]
            if meant and not any(room_of(header) in [room, *ROOMS[room]] for header in meant):
                broken.append(f"{name}: includes {meant[0]}, but {room} may only know {', '.join(ROOMS[room]) or 'itself'}")
    return broken


def inside_path(header, included):
    return header == included or header.endswith("/" + included)


def one_place(root):
    """What only one file may know."""
    secrets = [
        (r"\bIMGUI_HAS_IMSTR\b", ["editor/ImGuiText.h"], "only editor/ImGuiText.h tells the branches of Dear ImGui apart"),
    ]
    broken = []
    for name in files_of(root):
        if not is_source(name):
            continue
        text = text_of(root, name)
        for pattern, places, reason in secrets:
            if name not in places and not inside(name, "tests") and re.search(pattern, text):
                broken.append(f"{name}: {reason}")
    return broken


# --- Tests ----------------------------------------------------------------------------------------------------------

TESTED = ("plugin", "editor", "engine", "host")


def untested(root):
    """Sources without a test file of the same stem, unless tests/repository/untested.txt says why."""
    names = files_of(root)
    reasons, broken = {}, []
    exceptions = root / "tests/repository/untested.txt"
    for line in exceptions.read_text(encoding="utf-8").splitlines() if exceptions.exists() else []:
        if not line or line.startswith("#"):
            continue
        source, _, reason = line.partition(": ")
        if not reason.strip():
            broken.append(f"untested.txt: {source}: no reason given")
        reasons[source] = reason
    sources = [name for name in names if name.endswith(".cpp") and any(inside(name, room) for room in TESTED)]
    stems = sorted((Path(name).stem for name in sources), key=len, reverse=True)
    # ChangeMergingTest.cpp tests Change.cpp; ChangeManagerTest.cpp does not when there is a ChangeManager.cpp.
    tested = set()
    for name in names:
        if inside(name, "tests") and name.endswith("Test.cpp"):
            subject = Path(name).name.removesuffix("Test.cpp")
            tested.add(next((stem for stem in stems if re.match(re.escape(stem) + r"(?![a-z])", subject)), None))
    for name in sources:
        has_test = Path(name).stem in tested
        if not has_test and name not in reasons:
            broken.append(f"{name}: no test file of the same stem, and no reason in tests/repository/untested.txt")
        if has_test and name in reasons:
            broken.append(f"untested.txt: {name}: has a test file now")
    broken += [f"untested.txt: {name}: there is no such file" for name in reasons if name not in names]
    return broken


def uncompiled(root, build):
    """Sources that no target compiles: a test file that is not in a CMakeLists.txt never runs."""
    commands = json.loads((build / "compile_commands.json").read_text())
    compiled = {os.path.realpath(os.path.join(entry["directory"], entry["file"])) for entry in commands}
    # Not built with every configuration: compat stands in for what is not installed, and a sample plug-in is a project
    # of its own.
    apart = ["samples", "compat"]
    return [f"{name}: no target compiles it" for name in files_of(root)
            if name.endswith(".cpp") and not any(inside(name, room) for room in apart)
            and os.path.realpath(root / name) not in compiled]


# --- Text -----------------------------------------------------------------------------------------------------------

WORDS = [
    (r"\bpart [1-6]\.[0-9]\b|\bspec\.md\b|\b(the|this|our) spec(ification)?\b|\bseed[ ]document|DEVELOPERS\.md",
     "speaks of a document that readers do not have"),
    (r"(?<![\w.])/(work|opt)/[a-z]|(?<!\w)[.]library\b|\bissue #?[0-9]+\b", "speaks of one machine or one workplace"),
    (r"https?://(deb|registry|files|static|proxy|packages)\.", "names the host of a package registry"),
]


def words(root):
    """Lines that speak of anything but this project."""
    broken = []
    for name in files_of(root):
        if Path(name).suffix not in TEXT or name.endswith(".json"):
            continue
        for number, line in enumerate(text_of(root, name).splitlines(), 1):
            broken += [f"{name}:{number}: {reason}" for pattern, reason in WORDS if re.search(pattern, line, re.IGNORECASE)]
    return broken


def text_form(root):
    """Line ends, final newlines, tabs, blanks at line ends, and `#pragma once`."""
    broken = []
    for name in files_of(root):
        path = root / name
        if path.suffix not in TEXT or inside(name, "samples"):
            continue
        data = path.read_bytes()
        if not data:
            broken.append(f"{name}: is empty")
            continue
        if b"\r" in data:
            broken.append(f"{name}: has carriage returns")
        if not data.endswith(b"\n") or data.endswith(b"\n\n"):
            broken.append(f"{name}: does not end with one newline")
        for number, line in enumerate(data.split(b"\n"), 1):
            if b"\t" in line:
                broken.append(f"{name}:{number}: has a tab")
            if line.endswith(b" ") and path.suffix != ".md":
                broken.append(f"{name}:{number}: ends with a blank")
        if name.endswith(".h") and b"\n#pragma once\n" not in b"\n" + data:
            broken.append(f"{name}: has no #pragma once")
    return broken


# --- Libraries ------------------------------------------------------------------------------------------------------


def symbols(library):
    output = subprocess.run(["nm", "-D", "--defined-only", "--format=posix", str(library)],
                            capture_output=True, check=True, text=True).stdout
    return {line.split()[0] for line in output.splitlines()}


def soname(library):
    output = subprocess.run(["readelf", "-d", "-W", str(library)], capture_output=True, check=True, text=True).stdout
    return re.search(r"\(SONAME\).*\[(.+)\]", output).group(1)


def flavours(plain, test):
    """What a module could miss when the test flavour of Dear ImGui is loaded in place of the plain one."""
    broken = [f"{name}: not in the test flavour" for name in sorted(symbols(plain) - symbols(test))
              if name.startswith("_ZN") or name.startswith("_Z")]
    if soname(plain) != soname(test):
        broken.append(f"the SONAMEs differ: {soname(plain)} and {soname(test)}")
    return broken
