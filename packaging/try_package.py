#!/usr/bin/env python3
"""Installs the Debian package where nothing else is, plays the demonstration's station with it, and removes it again.

Usage: try_package.py PACKAGE.deb BUILD_FOLDER CACHE_FOLDER

The place is a bare root with what the package depends on and nothing more, made from the Debian mirror of this
machine's apt and kept in the cache folder. Where none can be made, the reason is printed; then the package is unpacked into an
empty folder and runs with this machine's libraries, which leaves its dependencies unproven.
"""
import argparse
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

REPOSITORY = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(REPOSITORY / "demo"))

from desktop import (Children, Failure, Hands, NullSink, close_window, screenshot, start_screen,  # noqa: E402
                     visible_windows, wait_for)
from stations import Station, write_catalogue  # noqa: E402
from visitor import AUDIBLE, SILENT  # noqa: E402

PACKAGE = "funkhausplayer"
LISTENER = 65534   # "nobody": the files of the system are closed to the user who listens.
HOME = "home/listener"
# What installing any package changes.
ACCOUNTS_OF_DPKG = ("var/lib/dpkg", "var/log", "var/cache", "run", "proc", "dev", "sys", "tmp", HOME)


class NoRoot(Exception):
    """A bare root cannot be made or entered on this machine."""


def output_of(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **options).stdout


def sources():
    """The lines of this machine's apt that name Debian's own mirror."""
    form = "$(REPO_URI) $(RELEASE) $(COMPONENT) $(ORIGIN)"
    lines = output_of("apt-get", "indextargets", "--format", form, "Created-By: Packages").split("\n")
    found = [line.rsplit(" ", 1)[0] for line in dict.fromkeys(lines) if line.endswith(" Debian")]
    if not found:
        raise NoRoot("apt knows no Debian mirror")
    return "".join(f"deb {line}\n" for line in found)


def dependencies(package):
    """The names of the packages that must be there; of alternatives the first."""
    field = output_of("dpkg-deb", "--field", package, "Depends")
    return [re.split(r"[\s(|:]", alternatives.strip())[0] for alternatives in field.split(",")]


def bare_root(cache, names):
    """The archive of a root that holds just these packages and what they depend on."""
    if os.geteuid() != 0:
        raise NoRoot("that is root's work")
    lines = sources()
    key = hashlib.sha256("\n".join([lines, *sorted(names)]).encode()).hexdigest()[:16]
    archive = cache / f"{key}.tar"
    if archive.exists():
        return archive
    cache.mkdir(parents=True, exist_ok=True)
    for old in cache.glob("*.tar"):
        old.unlink()
    print("Making a bare root; this takes a minute or two.", flush=True)
    made = cache / "making"
    proxies = [f"--aptopt={line}" for line in output_of("apt-config", "dump").split("\n")
               if re.match(r"Acquire::https?::proxy ", line, re.IGNORECASE)]
    command = ["mmdebstrap", "--quiet", "--variant=apt", "--format=tar", "--dpkgopt=force-unsafe-io", *proxies,
               f"--include={','.join(names)}", "", str(made), "-"]
    try:
        subprocess.run(command, input=lines, text=True, check=True)
    except (OSError, subprocess.CalledProcessError) as error:
        made.unlink(missing_ok=True)
        raise NoRoot(error) from error
    made.rename(archive)
    return archive


class BareRoot:
    """The unpacked root; programs run in it as a user without rights."""

    proven = "with nothing but its dependencies"

    def __init__(self, archive, folder):
        self.folder = folder
        subprocess.run(["tar", "--extract", "--numeric-owner", "--file", archive, "--directory", folder,
                        "--exclude=./dev/*"], check=True)
        self.dpkg_options = []
        if subprocess.run([*self._entering(), "true"], check=False).returncode != 0:
            raise NoRoot("it cannot be entered")

    def _entering(self):
        mounts = " && ".join(f'mkdir -p "$0{path}" && mount --rbind {path} "$0{path}"'
                             for path in ("/proc", "/dev", "/tmp/.X11-unix"))
        pathlib.Path("/tmp/.X11-unix").mkdir(mode=0o1777, exist_ok=True)
        return ["unshare", "--mount", "sh", "-c", f'{mounts} && exec chroot --userspec={LISTENER}:{LISTENER} "$0" "$@"',
                self.folder]

    def command(self, program, variables):
        return [*self._entering(), "env", "-i", *(f"{name}={value}" for name, value in variables.items()),
                f"/usr/bin/{program}"]

    def inside(self, path):
        """The name under which the programs find a path of the root."""
        return f"/{path}"


class EmptyFolder:
    """A folder with a package database of its own; programs run from it with this machine's libraries."""

    proven = "unpacked into an empty folder"

    def __init__(self, folder):
        self.folder = folder
        for part in ("info", "updates"):
            (folder / "var/lib/dpkg" / part).mkdir(parents=True)
        for part in ("status", "available"):
            (folder / "var/lib/dpkg" / part).touch()
        for part in ("home", "tmp"):
            (folder / part).mkdir()
        self.dpkg_options = ["--force-depends", "--force-not-root", "--force-script-chrootless", "--force-bad-path"]

    def command(self, program, variables):
        return ["env", "-i", *(f"{name}={value}" for name, value in variables.items()),
                str(self.folder / "usr/bin" / program)]

    def inside(self, path):
        return str(self.folder / path)


def dpkg(root, *order):
    environment = {**os.environ, "DEBIAN_FRONTEND": "noninteractive", "PATH": os.environ["PATH"] + ":/usr/sbin:/sbin"}
    done = subprocess.run(["dpkg", f"--root={root.folder}", *root.dpkg_options, *order], check=False, env=environment,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise Failure(f"dpkg {' '.join(order)}: {done.stdout}")


def everything(folder):
    """Each path of the root with its kind, rights and owner, except dpkg's own records."""
    found = set()
    for current, folders, files in os.walk(folder):
        inner = os.path.relpath(current, folder)
        folders[:] = [name for name in folders if os.path.normpath(f"{inner}/{name}") not in ACCOUNTS_OF_DPKG]
        for name in folders + files:
            status = os.lstat(os.path.join(current, name))
            found.add((os.path.normpath(f"{inner}/{name}"), status.st_mode, status.st_uid, status.st_gid))
    return found


def listener(root, station):
    """A home with a catalogue of one station, and the environment of its user."""
    home = root.folder / HOME
    write_catalogue(home / ".config/Ordnerzentrale/Funkhaus.ini",
                    [("Radio Lichtung", f"{station.address}/stream", "Pop & Hits", "1", "")])
    for kind, end in (("RadioIco", "ico"), ("RadioJPG", "jpg")):
        data = home / ".local/share/funkhausplayer" / kind
        data.mkdir(parents=True)
        shutil.copy(REPOSITORY / "demo" / kind / f"Radio Lichtung.{end}", data)
    if os.geteuid() == 0:
        for path in [home, *home.rglob("*")]:
            os.chown(path, LISTENER, LISTENER)
    return {"HOME": root.inside(HOME), "LANG": "C.UTF-8", "PATH": "/usr/bin:/bin"}


def play(root, children, programs, output):
    """Starts the installed player, plays the station with the keyboard, listens, and closes the window."""
    station = Station(children, programs / "demo_station", output)
    display = start_screen(children, "1024x768")
    sound = root.folder / "tmp/sound"
    sink = NullSink(children, sound)
    sound.chmod(0o711)
    if sink.loudness() > SILENT:
        raise Failure("there is sound before anything is played")
    variables = {**listener(root, station), "DISPLAY": display, "QT_QPA_PLATFORM": "xcb",
                 "PULSE_SERVER": f"unix:{root.inside('tmp/sound/native')}"}
    usage = output_of(*root.command("OZRecordFunkhaus", variables), "--help")
    if not usage.startswith("Aufruf: OZRecordFunkhaus"):
        raise Failure(f'the recording tool answers "{usage}"')
    player = children.start("player", root.command("funkhausplayer", variables))
    wait_for("the window", lambda: visible_windows(display, player.pid) or player.poll() is not None, 30)
    if player.poll() is not None:
        raise Failure(f"the player ended at once, with {player.returncode}")
    hands = Hands(display)
    hands.focus(player.pid)
    try:
        hands.press_keys("ctrl+f", "Return")
        wait_for("sound", lambda: sink.loudness(0.5) > AUDIBLE, 40, pause=0)
        titles = wait_for("a title", lambda: station.lines("title "), 20)
        screenshot(display, output / "playing.png")
    except Failure:
        screenshot(display, output / "failure.png")
        raise
    close_window(display, player.pid)
    if player.wait(timeout=20) != 0:
        raise Failure(f"the player ended with {player.returncode}")
    return f'played "{titles[0]}"'


def try_package(root, package, build, output):
    before = everything(root.folder)
    dpkg(root, "--install", str(package))
    added = {path for path, *_ in everything(root.folder) - before}
    if f"usr/bin/{PACKAGE}" not in added:
        raise Failure("the package installs no player")
    print(f"Installed {root.proven}: {len(added)} files and folders", flush=True)
    children = Children(output)
    try:
        print("As a user without rights: " + play(root, children, build / "bin", output), flush=True)
    finally:
        children.end()
    here = everything(root.folder)
    if {path for path, *_ in here - before} != added:
        raise Failure("running the programs changed " + str(sorted({path for path, *_ in here - before} ^ added)))
    dpkg(root, "--purge", PACKAGE)
    changed = everything(root.folder) ^ before
    known = output_of("dpkg-query", f"--admindir={root.folder}/var/lib/dpkg", "--show", "--showformat=${Package}\\n")
    left = list((root.folder / "var/lib/dpkg/info").glob(f"{PACKAGE}.*"))
    if changed or left or PACKAGE in known.split("\n"):
        raise Failure(f"left behind: {sorted(path for path, *_ in changed)[:10]} {left}")
    print("Removed: nothing is left", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("package", "build", "cache"):
        parser.add_argument(name, type=lambda text: pathlib.Path(text).resolve())
    arguments = parser.parse_args()
    output = arguments.build / "tried"
    output.mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="root-", dir=arguments.build) as folder:
        os.chmod(folder, 0o755)
        try:
            bare = pathlib.Path(folder, "bare")
            bare.mkdir()
            root = BareRoot(bare_root(arguments.cache, dependencies(arguments.package)), bare)
        except NoRoot as reason:
            print(f"There can be no bare root here: {reason}; the package is only unpacked.", flush=True)
            empty = pathlib.Path(folder, "empty")
            empty.mkdir()
            root = EmptyFolder(empty)
        try:
            try_package(root, arguments.package, arguments.build, output)
        except (Failure, subprocess.SubprocessError) as error:
            print(f"The package failed: {error}", file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
