"""The program for Windows under Wine beside the one for Linux: from the start to the window, processor time and memory
while both play the same station at the same time, and the programs' sizes. What Wine does of its own, in its server and
its drivers, is counted with the program: on Windows that part belongs to the system and is another one."""
import os
import pathlib
import time

import start
from desktop import Hands, NullSink, start_screen, wait_for
from figures import Line
from playing import AUDIBLE, NAME, Meter, Stage, memory_megabytes, own_seconds, write_catalogue
from programs import WindowsPrograms, process_ids, words_of
from screen_watch import ScreenWatch

LARGEST = 4.0  # megabytes
MINUTE = 60.0


class Windows(WindowsPrograms):
    """Started without the report of its controls, which would cost time of its own."""

    def start_plain(self, environment):
        self.environment.update(environment)
        return self.start_by_wine(self.shown_path(self.program))

    def end(self, process):
        """Wine's own process is the program's."""
        self.children.finish(process)
        wait_for("the program's end", lambda: not self.processes(self.program.name), 20)


def sizes(windows, build):
    """Name -> megabytes of each program as it is packed, for both systems."""
    def megabytes(file):
        return [file.stat().st_size / 2**20]
    own = {name: megabytes(windows.beside / f"{name}.exe") for name in ("Funkhausplayer", "OZRecordFunkhaus")}
    packed = build.parent / "package"
    linux = {"Funkhausplayer": packed / "funkhausplayer", "OZRecordFunkhaus": packed / "OZRecordFunkhaus"}
    return [Line(f"size of {name}", own[name], "MB", f"at most {LARGEST:.0f}", own[name][0] <= LARGEST,
                 {"Linux, which uses the system's libraries": megabytes(linux[name])} if linux[name].exists() else {},
                 digits=1) for name in own]


def starts(arguments, windows, children, scratch):
    display = start_screen(children)
    watch = ScreenWatch(display)
    sink = NullSink(children, scratch / "starts")
    environment = {**sink.environment, "DISPLAY": display, "QT_QPA_PLATFORM": "xcb", "XDG_STATE_HOME": str(scratch / "s")}
    rows = start.stations(start.STATIONS)
    settings = scratch / "settings-of-starts"
    for folder in (windows.settings, settings / "Ordnerzentrale"):
        write_catalogue(folder / "Funkhaus.ini", rows)
    linux = [arguments.build / "bin" / "funkhausplayer"]
    ways = {"own": (lambda: windows.start_plain(environment), windows.end),
            "Linux": (lambda: children.start("player", linux, env={**os.environ, **environment, "APPDATA": str(settings)}),
                      children.finish)}
    found = {name: [] for name in ways}
    for number in range(arguments.runs + 1):
        for name, (begin, end) in ways.items():
            watch.forget()
            started = time.monotonic()
            process = begin()
            taken = (watch.wait_until_painted(process, 60) - started) * 1000
            time.sleep(1)
            end(process)
            if number:  # the first round fills caches
                found[name].append(taken)
    own = found.pop("own")
    return Line(f"start to window, {start.STATIONS} stations", own, "ms", "", None, found)


def play(stage, windows, sink):
    """The Windows program, playing; its process."""
    write_catalogue(windows.settings / "Funkhaus.ini", [(NAME, stage.address, "Pop & Hits", "", "")])
    environment = {**sink.environment, "DISPLAY": windows.display}
    windows.environment.update(environment)
    player = windows.launch(windows.display)
    row = wait_for("the row", lambda: windows.report.row(NAME), 60)
    button = windows.report.find("Command1")
    windows.end(player.process)
    process = windows.start_plain(environment)
    pid = wait_for("the program", lambda: windows.processes(windows.program.name), 60)[0]
    time.sleep(3)
    hands = Hands(windows.display)
    hands.focus(pid)
    hands.click(row.x + 80, row.middle[1])
    time.sleep(3)
    hands.click(*button.middle)
    wait_for("the sound of the Windows program", lambda: sink.loudness() > AUDIBLE, 60, pause=0)
    return pid


def server_seconds():
    """Of Wine's server, which all programs of a prefix share."""
    return sum(own_seconds(pid) for pid in process_ids() if pathlib.Path((words_of(pid) or [""])[0]).name.startswith("wineserver"))


def costs(arguments, windows, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    windows.display = start_screen(children, "1400x1100")
    sink = NullSink(children, scratch / "second-card")
    linux = stage.start_program()
    own = play(stage, windows, sink)
    time.sleep(5)
    used = {"own": [], "Linux": [], "Wine's server alone": []}
    for _ in range(arguments.runs):
        meters = {"own": Meter(own), "Linux": Meter(linux.pid)}
        server = server_seconds()
        time.sleep(arguments.seconds)
        server = server_seconds() - server
        once = {"own": meters["own"].seconds() + server, "Linux": meters["Linux"].seconds(), "Wine's server alone": server}
        for name, seconds in once.items():
            used[name].append(seconds * MINUTE / arguments.seconds)
    memory = [memory_megabytes(own)]
    spent = used.pop("own")
    return [Line("processor per 60 s of playing, bars moving", spent, "s", "", None, used, digits=2),
            Line("memory while playing (resident)", memory, "MB", "", None, {"Linux": [memory_megabytes(linux.pid)]})]


def measure(arguments, children, scratch):
    built = arguments.build.parent / "windows"
    os.environ.setdefault("WINEPREFIX", str(built / "wine"))
    [unpacked] = (built / "unpacked").iterdir()
    place = scratch / "windows"
    place.mkdir()
    windows = Windows(children, place, built, unpacked)
    return [*sizes(windows, arguments.build), starts(arguments, windows, children, scratch),
            *costs(arguments, windows, children, scratch)]
