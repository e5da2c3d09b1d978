#!/usr/bin/env python3
"""Checks the code against the table of allowed includes between rooms, and rejects include cycles.

A source file includes its own header before all others, so that compiling it shows that the header stands alone.
A header in ports/ says in its first line whether it is a port, for these are what a system must supply: among the rooms
that a system's program may include, there is one that implements each of them.

Usage: check_includes.py SOURCE_ROOT
       check_includes.py --self-test
"""
import pathlib
import re
import sys

# Room -> rooms that it may include, from the top floor down. A room may always include itself.
LOGIC_GROUND = {"app/settings", "app/state", "app/text", "ports"}
ALLOWED = {
    "programs/linux": {"window", "recorder", "app/forms", "app/settings", "controls", "ports", "platform/ini", "platform/posix",
                       "platform/icu", "platform/values", "platform/http", "platform/curl", "platform/gstreamer", "platform/desktop",
                       "platform/qt"},
    "programs/windows": {"window", "recorder", "app/forms", "app/settings", "controls", "ports", "platform/ini",
                         "platform/values", "platform/http", "platform/win32/base", "platform/win32/text", "platform/win32/system",
                         "platform/win32/internet", "platform/win32/media", "platform/win32/ui"},
    "window": {"ui", "catalogue", "playlist", "stream", "player", "app/forms", "controls"} | LOGIC_GROUND,
    "ui": {"stream", "player", "controls"} | LOGIC_GROUND,
    "catalogue": {"stream", "playlist", "app/forms", "controls"} | LOGIC_GROUND,
    "recorder": {"stream", "playlist", "app/forms", "controls"} | LOGIC_GROUND,
    "playlist": {"controls"} | LOGIC_GROUND,
    "stream": LOGIC_GROUND,
    "player": LOGIC_GROUND,
    "app/forms": {"controls"},
    "app/state": {"app/text", "controls", "ports"},
    "app/settings": {"app/text", "ports"},
    "app/text": {"ports"},
    "controls": set(),
    "ports": set(),
    "platform/ini": {"ports"},
    "platform/front": {"controls"},
    "platform/disk": {"ports"},
    "platform/posix": {"platform/disk", "ports"},
    "platform/icu": {"ports"},
    "platform/values": {"ports"},
    "platform/live": {"ports"},
    "platform/http": {"ports"},
    "platform/curl": {"platform/http", "ports"},
    "platform/gstreamer": {"platform/live", "ports"},
    "platform/desktop": {"ports"},
    "platform/qt": {"platform/front", "app/forms", "controls", "ports"},
    "platform/win32/base": {"ports"},
    "platform/win32/text": {"platform/win32/base", "ports"},
    "platform/win32/system": {"platform/win32/base", "platform/disk", "ports"},
    "platform/win32/internet": {"platform/http", "platform/win32/base", "ports"},
    "platform/win32/media": {"platform/http", "platform/live", "platform/win32/base", "platform/win32/internet", "ports"},
    "platform/win32/ui": {"platform/win32/base", "platform/front", "app/forms", "controls", "ports"},
}
# The one header that includes the system's own, and removes the macros that would replace names of the ports. Source
# files include it; a header would pass those names on.
WINDOWS_API = "platform/win32/base/windows_api.h"
# Rooms whose code may use no system, toolkit or library header: the standard library only. Some of the platform's are
# among them, because every system uses them: the INI engine, what the adapters of disks share, and, as they measure
# time, HTTP's own rules, what the front ends share, and what playing a station needs.
LOGIC = {room for room in ALLOWED if not room.startswith(("platform/", "programs/"))} | \
    {"platform/ini", "platform/disk"}
PLAIN = LOGIC | {"platform/http", "platform/front", "platform/live"}
STANDARD = set("""algorithm any array atomic bit bitset cassert cctype cerrno cfloat charconv chrono cinttypes
climits cmath compare complex concepts condition_variable csignal cstdarg cstddef cstdint cstdio cstdlib cstring
ctime deque exception filesystem forward_list fstream functional future initializer_list iomanip ios iosfwd
iostream istream iterator limits list locale map memory memory_resource mutex new numbers numeric optional
ostream queue random ranges ratio regex scoped_allocator set shared_mutex source_location span sstream stack
stdexcept streambuf string string_view system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set
utility valarray variant vector version""".split())
# Of the standard library, what would reach the system or the clock behind the ports' back.
BEHIND_PORTS = {"filesystem", "fstream", "thread", "mutex", "chrono", "iostream", "cstdio", "ctime", "csignal"}

PROGRAMS = [room for room in ALLOWED if room.startswith("programs/")]

INTERFACE = re.compile(r"^class (\w+)[^;{]*\{(.*?)^\};", re.M | re.S)
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)


def room_of(path):
    """The room of a project path, or None for what belongs to no room (tests, tools)."""
    parts = pathlib.PurePosixPath(path).parts
    for depth in (3, 2, 1):
        room = "/".join(parts[:depth])
        if len(parts) == depth + 1 and room in ALLOWED:
            return room
    return None


def check(files):
    """files: project path -> text. Returns the list of violations."""
    errors, graph = [], {}
    for path, text in sorted(files.items()):
        header = path.removesuffix(".cpp") + ".h"
        if path.endswith(".cpp") and header in files and INCLUDE.findall(text)[:1] != [('"', header)]:
            errors.append(f"{path}: its own header is not its first include")
        room = room_of(path)
        if room is None:
            continue
        if room == "ports" and not text.startswith(("#pragma once\n// Port: ", "#pragma once\n// No port: ")):
            errors.append(f"{path}: does not say in its first line whether it is a port")
        if path.endswith(".h") and "#pragma once" not in text:
            errors.append(f"{path}: no #pragma once")
        for kind, target in INCLUDE.findall(text):
            if target == WINDOWS_API and path.endswith(".h"):
                errors.append(f"{path}: {target} is for source files")
            if kind == "<":
                if room.startswith("platform/win32/") and target not in STANDARD and path.endswith(".h") \
                        and path != WINDOWS_API:
                    errors.append(f"{path}: <{target}> is for source files")
                if target == "windows.h" and path != WINDOWS_API:
                    errors.append(f"{path}: <{target}> comes through {WINDOWS_API}")
                if room in PLAIN and target not in STANDARD:
                    errors.append(f"{path}: <{target}> is not the standard library")
                if room in LOGIC and target in BEHIND_PORTS:
                    errors.append(f"{path}: <{target}> reaches the system behind the ports")
                continue
            if target not in files:
                errors.append(f'{path}: "{target}" is no file of the project (includes start at its root)')
                continue
            graph.setdefault(path, []).append(target)
            other = room_of(target)
            if other == room:
                continue
            if other is None or other not in ALLOWED[room]:
                errors.append(f"{path}: room {room} may not include {target}")
    return errors + circles(graph) + unanswered(files)


def unanswered(files):
    """The ports that a system's program lacks. A class that only the logic implements is one that adapters call."""
    errors = []
    for path, text in sorted(files.items()):
        if room_of(path) != "ports" or not text.startswith("#pragma once\n// Port: "):
            continue
        for name, body in INTERFACE.findall(text):
            derived = re.compile(rf"\bpublic (?:platform::)?{name}\b")
            rooms = {room_of(file) for file, code in files.items() if derived.search(code)} - {None}
            if " = 0;" not in body or rooms and not any(room.startswith("platform/") for room in rooms):
                continue
            errors += [f"{path}: {program} has no room that implements {name}" for program in PROGRAMS
                       if any(room_of(file) == program for file in files)
                       and not any(room.startswith("platform/") for room in rooms & reached(program))]
    return errors


def reached(room):
    """The rooms that it includes, directly or not."""
    found = set()
    rooms = [room]
    while rooms:
        new = ALLOWED[rooms.pop()] - found
        found |= new
        rooms += new
    return found


def circles(graph):
    errors, done, open_ = [], set(), []

    def visit(node):
        if node in open_:
            errors.append("circle: " + " -> ".join(open_[open_.index(node):] + [node]))
            return
        if node in done:
            return
        open_.append(node)
        for target in graph.get(node, []):
            visit(target)
        open_.pop()
        done.add(node)

    for node in sorted(graph):
        visit(node)
    return errors


def read_tree(root):
    root = pathlib.Path(root)
    files = {}
    for pattern in ("*.h", "*.cpp"):
        for path in root.rglob(pattern):
            name = path.relative_to(root).as_posix()
            if not name.startswith(("build", ".")):
                files[name] = path.read_text(encoding="utf-8")
    return files


def self_test():
    good = {"app/text/a.h": '#pragma once\n#include "ports/text.h"\n#include <string>\n',
            "ports/text.h": "#pragma once\n// No port: text.\n"}
    assert check(good) == [], check(good)
    cases = {
        "the ground floor may not see a feature": {"app/state/a.h": '#pragma once\n#include "ui/b.h"\n',
                                                   "ui/b.h": "#pragma once\n"},
        "no system header in the logic": {"stream/a.cpp": "#include <unistd.h>\n"},
        "no toolkit in the logic": {"ui/a.cpp": "#include <QString>\n"},
        "no clock behind the ports": {"player/a.cpp": "#include <chrono>\n"},
        "no toolkit in what the front ends share": {"platform/front/a.cpp": "#include <QString>\n"},
        "no system header in the INI engine": {"platform/ini/a.cpp": "#include <sys/stat.h>\n"},
        "no library header in what playing shares": {"platform/live/a.cpp": "#include <gst/gst.h>\n"},
        "no system header in what disks share": {"platform/disk/a.cpp": "#include <fcntl.h>\n"},
        "no library header in HTTP's own rules": {"platform/http/a.cpp": "#include <curl/curl.h>\n"},
        "HTTP's own rules see no system's adapter": {"platform/http/a.cpp": '#include "platform/curl/b.h"\n',
                                                     "platform/curl/b.h": "#pragma once\n"},
        "the INI engine sees no system's adapter": {"platform/ini/a.cpp": '#include "platform/posix/b.h"\n',
                                                    "platform/posix/b.h": "#pragma once\n"},
        "adapters do not see each other": {"platform/qt/a.cpp": '#include "platform/icu/b.h"\n',
                                           "platform/icu/b.h": "#pragma once\n"},
        "adapters of one system do not see each other": {
            "platform/win32/ui/a.cpp": '#include "platform/win32/internet/b.h"\n',
            "platform/win32/internet/b.h": "#pragma once\n"},
        "no system header in a header": {"platform/win32/media/a.h": "#pragma once\n#include <mfapi.h>\n"},
        "the system's own header comes through ours": {"platform/win32/ui/a.cpp": "#include <windows.h>\n"},
        "ours is for source files": {"platform/win32/ui/a.h": f'#pragma once\n#include "{WINDOWS_API}"\n',
                                     WINDOWS_API: "#pragma once\n"},
        "a front end sees no feature": {"platform/qt/a.cpp": '#include "recorder/record_control.h"\n',
                                        "recorder/record_control.h": "#pragma once\n"},
        "forms know no settings": {"app/forms/a.h": '#pragma once\n#include "app/settings/b.h"\n',
                                   "app/settings/b.h": "#pragma once\n"},
        "ui and catalogue do not see each other": {"ui/a.h": '#pragma once\n#include "catalogue/b.h"\n',
                                                   "catalogue/b.h": "#pragma once\n"},
        "a port says that it is one": {"ports/a.h": "#pragma once\n// Text.\n"},
        "a system's program has every port": {
            "ports/a.h": "#pragma once\n// Port: a.\nclass A {\n  virtual void B() = 0;\n};\n",
            "platform/posix/a.h": '#pragma once\n#include "ports/a.h"\nclass C : public platform::A {};\n',
            "programs/linux/main.cpp": "", "programs/windows/main.cpp": ""},
        "no circles": {"app/text/a.h": '#pragma once\n#include "app/text/b.h"\n',
                       "app/text/b.h": '#pragma once\n#include "app/text/a.h"\n'},
        "no unknown file": {"app/text/a.h": '#pragma once\n#include "missing.h"\n'},
        "include guard": {"app/text/a.h": "\n"},
        "own header first": {"app/text/a.h": "#pragma once\n", "app/text/b.h": "#pragma once\n",
                             "app/text/a.cpp": '#include "app/text/b.h"\n#include "app/text/a.h"\n'},
        "own header at all": {"tests/a.h": "#pragma once\n", "tests/a.cpp": "#include <string>\n"},
    }
    for name, files in cases.items():
        assert check(files), name
    print(f"{len(cases)} forbidden trees rejected")


def main():
    if sys.argv[1:] == ["--self-test"]:
        self_test()
        return 0
    errors = check(read_tree(sys.argv[1]))
    print("\n".join(errors) or "every include follows the table")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
