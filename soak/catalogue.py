"""The station file of the soak: made, read strictly, judged, and edited as by another program.

A file is torn unless it is whole lines, each ended by CR LF: a comment, a section that comes once, or a key of the
program's or the foreign one after a section. Its first line, a comment, must always be there."""
import contextlib
import fcntl
import os

HEAD = "; Diese Zeile gehört einem Menschen."
KEYS = ("Station", "Link", "Genre", "Favorit", "M3uNr", "Fremd")
GENRES = ("Pop & Hits", "Rock", "Oldies", "Dance", "Klassik", "Electro,Black Music", "Kinder", "Sonstiges")
CHANGES_BY_ITSELF = ("Favorit=", "M3uNr=")  # by a mark, and by saving the list
FOREIGN = (";", "Fremd=")  # lines that the program never writes, and loses only with their station
MOST_AT_ONCE = 12  # actions that come to effect together, after the program has kept the user waiting


class Torn(Exception):
    """The station file is torn, in the sense above."""


def make(addresses):
    """The bytes of a catalogue that names each address once."""
    lines = [HEAD]
    for number, address in enumerate(addresses):
        name = f"Sender {number:02} Süd" if number % 7 == 3 else f"Sender {number:02}"
        lines += [f"[{name}]", f"; Notiz zu {name}", f"Station={name}", f"Link={address}",
                  f"Genre={GENRES[number % len(GENRES)]}", f"Favorit={'1' if number % 5 == 0 else ''}",
                  f"M3uNr={'1' if number % 6 == 1 else ''}", f"Fremd={number * 17}"]
    return "".join(line + "\r\n" for line in lines).encode("cp1252")


def parse(content):
    """Section -> its lines; raises Torn."""
    text = content.decode("cp1252", "replace")
    if not text.endswith("\r\n"):
        raise Torn(f"does not end with a whole line: {text[-60:]!r}")
    sections, lines = {}, None
    for number, line in enumerate(text[:-2].split("\r\n"), 1):
        if "\n" in line or "\0" in line:
            raise Torn(f"line {number} is not one: {line[:60]!r}")
        if line.startswith("[") and line.endswith("]"):
            name = line[1:-1].lower()
            if name in sections:
                raise Torn(f"two sections {line}")
            lines = sections.setdefault(name, [])
        elif not line.startswith(";") and (lines is None or line.partition("=")[0] not in KEYS or "=" not in line):
            raise Torn(f"line {number} is {line[:60]!r}")
        elif lines is not None:
            lines.append(line)
    if not text.startswith(HEAD + "\r\n"):
        raise Torn(f"the comment at the head is gone: {text[:60]!r}")
    return sections


def lasting(lines):
    """The lines that only an edit of the station may change."""
    return [line for line in lines if not line.startswith(CHANGES_BY_ITSELF)]


def foreign(lines):
    return [line for line in lines if line.startswith(FOREIGN)]


class Judge:
    """Looks at the file again and again. `may_vanish` is how many stations the user can have deleted or renamed at
    most since the last look, or None: then no station may vanish, and none may change but by a mark. A station that
    was written anew, without its comments and foreign keys, counts as one that vanished."""

    def __init__(self, path, fail):
        self.path, self.fail, self.stamp, self.known = path, fail, None, {}
        self.credit, self.looks, self.lost = 0, 0, 0

    def forget(self):
        self.stamp, self.known, self.credit = None, {}, 0

    def look(self, may_vanish):
        self.credit = min(self.credit + (may_vanish or 0), MOST_AT_ONCE)
        try:
            status = os.stat(self.path)
            if (status.st_ino, status.st_mtime_ns) == self.stamp:
                return
            sections = parse(self.path.read_bytes())
        except OSError:
            return  # The folder is away.
        except Torn as torn:
            self.fail("torn", f"the station file {torn}")
            return
        self.looks += 1
        self._compare(sections, strictly=may_vanish is None)
        self.stamp, self.known = (status.st_ino, status.st_mtime_ns), sections

    def _compare(self, sections, strictly):
        vanished = [name for name, lines in self.known.items()
                    if name not in sections or not set(foreign(lines)) <= set(sections[name])]
        self.credit -= len(vanished)
        if vanished and (strictly or self.credit < 0):
            self.lost += len(vanished)
            self.fail("lost", f"{len(vanished)} stations vanished or lost foreign lines without a deletion: "
                      f"{vanished[:5]}")
        for name, lines in self.known.items() if strictly else ():
            if name not in vanished and lasting(sections[name]) != lasting(lines):
                self.lost += 1
                self.fail("lost", f"[{name}] changed by itself: {lines} became {sections[name]}")
        self.credit = max(self.credit, 0)

    def contains(self, name):
        return name.lower() in self.known


@contextlib.contextmanager
def locked(folder):
    """Takes the folder's advisory lock, as every program does that shares the file."""
    descriptor = os.open(folder, os.O_RDONLY | os.O_DIRECTORY)
    try:
        fcntl.flock(descriptor, fcntl.LOCK_EX)
        yield
    finally:
        os.close(descriptor)


def replace(path, content):
    """Replaces the file in one step, as a careful program does."""
    beside = path.with_name("anderes-programm.neu")
    try:
        beside.write_bytes(content)
        os.replace(beside, path)
    except OSError:
        beside.unlink(missing_ok=True)
        raise


def edit_from_outside(path, judge, may_vanish, name, value):
    """Another program adds a station and changes its own key elsewhere. The judge looks before and after, under the
    lock, so that it takes neither for the player's doing."""
    with locked(path.parent):
        judge.look(may_vanish)
        lines = path.read_bytes().decode("cp1252").split("\r\n")
        foreign = [index for index, line in enumerate(lines) if line.startswith("Fremd=")]
        if foreign:
            lines[foreign[value % len(foreign)]] = f"Fremd={value}"
        lines[-1:] = [f"[{name}]", f"Station={name}", "Link=http://127.0.0.1:9/", "Genre=Rock", "Favorit=", "M3uNr=",
                      f"Fremd={value}", ""]
        replace(path, "\r\n".join(lines).encode("cp1252"))
        judge.stamp, judge.known = None, {}
        judge.look(None)
