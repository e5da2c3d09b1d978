"""The program for Windows under Wine beside the one for Linux: from the start to the window, processor time and memory
while both play the same station at the same time, and the programs' sizes. What Wine does of its own, in its server and
its drivers, is counted with the program: on Windows that part belongs to the system and is another one."""
import os
import pathlib
import subprocess
import time

import peers
import start
from desktop import Failure, Hands, NullSink, close_window, start_screen, wait_for
from figures import Line
from playing import (AUDIBLE, NAME, ROOT, Meter, Stage, memory_megabytes, own_seconds, session_bus, write_catalogue)
from programs import WindowsPrograms, process_ids, words_of
from screen_watch import ScreenWatch

LARGEST = 4.0  # megabytes
MINUTE = 60.0
WINE = ROOT / "scripts" / "wine"


class Prefix:
    """Wine's files, made for this measurement, so that no program but those that are measured uses its server."""

    def __init__(self, folder, display):
        self.folder = folder
        self.environment = {**os.environ, "WINEPREFIX": str(folder), "DISPLAY": display}

    def make(self):
        self._run(WINE, "wineboot", "--init")
        # Nobody is there to answer the box that Wine shows when a program crashes.
        self._run(WINE, "reg", "add", r"HKCU\Software\Wine\WineDbg", "/v", "ShowCrashDialog", "/t", "REG_DWORD", "/d", "0",
                  "/f")
        self._run("wineserver", "-w")
        # Wine shows the folders of whoever runs it as those of its user.
        for link in self.folder.glob("drive_c/users/*/*"):
            if link.is_symlink():
                link.unlink()
                link.mkdir()
        self._run("wineserver", "-p")

    def end(self):
        """With every program that runs in it."""
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False)
        subprocess.run(["wineserver", "-w"], env=self.environment, check=False, timeout=60)

    def server_seconds(self):
        """Processor time of the server, which all programs of the prefix share."""
        return sum(own_seconds(pid) for pid in process_ids() if self._is_server(pid))

    def _is_server(self, pid):
        if pathlib.Path((words_of(pid) or [""])[0]).name.startswith("wineserver"):
            try:
                variables = pathlib.Path(f"/proc/{pid}/environ").read_bytes().split(b"\0")
            except OSError:
                return False
            return b"WINEPREFIX=" + os.fsencode(self.folder) in variables
        return False

    def _run(self, *command):
        # Wine's services keep the output that they were started with, so a reader of it would wait for them.
        subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=True, timeout=300)


class Windows(WindowsPrograms):
    """Measured without the report of its controls, which would cost time of its own."""

    def start_plain(self):
        return self.start_by_wine(self.shown_path(self.program))

    def pid(self):
        """Of the player, whoever has started it."""
        return wait_for("the program", lambda: self.processes(self.program.name), 60)[0]

    def end(self, process):
        """By closing its window: what started the player is another process where its controls are reported."""
        close_window(self.environment["DISPLAY"], self.pid())
        wait_for("the program's end", lambda: not self.processes(self.program.name), 30)
        process.wait(timeout=30)

    def places(self):
        """Where to click on the station's row, and on the button that starts it."""
        process = self.start()
        row = wait_for("the row", lambda: self.report.row(NAME), 60)
        button = self.report.find("Command1")
        self.end(process)
        return (row.x + 80, row.middle[1]), button.middle

    def play(self, sink):
        """The player's process id; what it plays is heard."""
        row, button = self.places()
        self.start_plain()
        pid = self.pid()
        hands = Hands(self.environment["DISPLAY"])

        def has_window():
            try:
                hands.focus(pid)
            except Failure:
                return False
            return True

        wait_for("the window", has_window, 60)
        hands.click(*row)
        time.sleep(3)  # the selection fetches the station's title
        hands.click(*button)
        wait_for("the sound of the Windows program", lambda: sink.loudness() > AUDIBLE, 60, pause=0)
        # While a pointer is on a button Wine asks a hundred times a second whether it still is.
        hands.rest()
        return pid


def megabytes(file):
    return [file.stat().st_size / 2**20]


def sizes(windows, build, scratch):
    """Of each program as it is packed; those for Linux without the names for a debugger, which no package has."""
    lines = []
    for name, linux in {"Funkhausplayer": "funkhausplayer", "OZRecordFunkhaus": "OZRecordFunkhaus"}.items():
        stripped = scratch / f"stripped-{linux}"
        subprocess.run(["strip", "-o", stripped, build / "bin" / linux], check=True)
        own = megabytes(windows.beside / f"{name}.exe")
        lines.append(Line(f"size of {name}", own, "MB", f"at most {LARGEST:.0f}", own[0] <= LARGEST,
                          {"Linux, which uses the system's libraries": megabytes(stripped)}, digits=1))
    return lines


def starts(arguments, windows, children, scratch):
    watch = ScreenWatch(windows.environment["DISPLAY"])
    rows = start.stations(start.STATIONS)
    settings = scratch / "settings-of-starts"
    for folder in (windows.settings, settings / "Ordnerzentrale"):
        write_catalogue(folder / "Funkhaus.ini", rows)
    # As the Windows program is started: with a sound server, and a home folder of its own.
    environment = {**windows.environment, **peers.home(scratch / "home-of-starts"), "QT_QPA_PLATFORM": "xcb",
                   "APPDATA": str(settings)}
    linux = [arguments.build / "bin" / "funkhausplayer"]
    ways = {"own": (windows.start_plain, windows.end),
            "Linux": (lambda: children.start("linux", linux, env=environment), children.finish)}
    found = {name: [] for name in ways}
    for number in range(arguments.runs + 1):
        for name, (begin, end) in ways.items():
            watch.forget()
            started = time.monotonic()
            process = begin()
            taken = (watch.wait_until_painted(process, 60) - started) * 1000
            time.sleep(1)  # what it still does then is not to meet the next start
            end(process)
            if number:  # the first round fills caches
                found[name].append(taken)
    own = found.pop("own")
    return Line(f"start to window, {start.STATIONS} stations", own, "ms", "", None, found)


def costs(arguments, windows, prefix, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    write_catalogue(windows.settings / "Funkhaus.ini", [(NAME, stage.address, "Pop & Hits", "", "")])
    own = windows.play(windows.sink)
    linux = stage.start_program().pid
    time.sleep(5)
    used = {"own": [], "Linux": [], "Wine's server alone": []}
    players, began = {"own": own, "Linux": linux}, time.monotonic()
    before = {name: memory_megabytes(pid) for name, pid in players.items()}
    for _ in range(arguments.runs):
        meters = {name: Meter(pid) for name, pid in players.items()}
        server = prefix.server_seconds()
        time.sleep(arguments.seconds)
        server = prefix.server_seconds() - server
        once = {"own": meters["own"].seconds() + server, "Linux": meters["Linux"].seconds(), "Wine's server alone": server}
        for name, seconds in once.items():
            used[name].append(seconds * MINUTE / arguments.seconds)
        if arguments.details:
            print("\n".join(f"{seconds:8.2f} s {name}" for name, seconds in meters["own"].by_thread()), flush=True)
    minutes = (time.monotonic() - began) / MINUTE
    growth = {name: (memory_megabytes(pid) - before[name]) / minutes for name, pid in players.items()}
    for who, sink in {"Windows": windows.sink, "Linux": stage.sink}.items():
        if sink.loudness() <= AUDIBLE:
            raise Failure(f"the {who} program is not heard any longer")
    spent = used.pop("own")
    return [Line("processor per 60 s of playing", spent, "s", "", None, used, digits=2),
            Line("memory when playing has begun (resident)", [before["own"]], "MB", "", None, {"Linux": [before["Linux"]]}),
            Line("its growth per minute of playing", [growth["own"]], "MB", "", None, {"Linux": [growth["Linux"]]},
                 digits=1)]


def unpacked(built):
    found = list((built / "unpacked").glob("*/Funkhausplayer.exe"))
    if len(found) != 1 or not (built / "bin" / "control_report.exe").exists():
        raise Failure(f"{built} has no unpacked archive, or no control_report.exe: run scripts/bench windows")
    return found[0].parent


def measure(arguments, children, scratch):
    built = arguments.build.parent / "windows"
    beside = unpacked(built)
    display = start_screen(children, "1400x1100")
    sink = NullSink(children, scratch / "card")
    prefix = Prefix(scratch / "wine", display)
    try:
        prefix.make()
        place = scratch / "windows"
        place.mkdir()
        # What the programs find of it in their own surroundings is what Wine reads.
        os.environ["WINEPREFIX"] = str(prefix.folder)
        windows = Windows(children, place, built, beside)
        windows.sink = sink
        windows.environment.update(sink.environment, **session_bus(children, place), DISPLAY=display)
        return [*sizes(windows, arguments.build, scratch), starts(arguments, windows, children, scratch),
                *costs(arguments, windows, prefix, children, scratch)]
    finally:
        prefix.end()  # before its screen
