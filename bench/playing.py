"""What the playing benchmarks share: a station, a virtual screen, a silent sound card, the program at play, and the
processor time and memory of a process. Not a test; it judges nothing."""
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "demo"))
import peers  # noqa: E402
from desktop import Children, Failure, Hands, NullSink, start_screen, visible_windows, wait_for  # noqa: E402
from report import Report  # noqa: E402
from stations import Station, write_catalogue  # noqa: E402

NAME = "Radio Messung"
AUDIBLE = -50.0  # dB; the station's loop is played at about -18 dB


def descendants(process_id):
    """A process and those that it has started, directly or not."""
    found = [process_id]
    for task in pathlib.Path(f"/proc/{process_id}/task").iterdir():
        for child in (task / "children").read_text().split():
            found += descendants(int(child))
    return found


def own_seconds(process_id):
    """User and system time of all threads so far, those that have ended included, and of the children that it has
    waited for. See proc(5)."""
    fields = pathlib.Path(f"/proc/{process_id}/stat").read_text().rsplit(")", 1)[1].split()
    return sum(map(int, fields[11:15])) / os.sysconf("SC_CLK_TCK")


def processor_seconds(process_id):
    return sum(map(own_seconds, descendants(process_id)))


def threads(process_id):
    """Thread name -> processor seconds of the threads that live, summed by name."""
    seconds = {}
    for task in pathlib.Path(f"/proc/{process_id}/task").iterdir():
        try:
            name = (task / "comm").read_text().strip()
            nanoseconds = int((task / "schedstat").read_text().split()[0])
        except FileNotFoundError:
            continue
        seconds[name] = seconds.get(name, 0) + nanoseconds / 1e9
    return seconds


def memory_megabytes(process_id, field="VmRSS"):
    """Resident memory ("VmRSS"), or its highest value ("VmHWM"), in units of 2^20 bytes."""
    for line in pathlib.Path(f"/proc/{process_id}/status").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) / 1024
    raise RuntimeError(f"no {field}")


def session_bus(children, scratch):
    """The variables that lead to a message bus of its own, without any service, as on a bare desktop."""
    socket = pathlib.Path(scratch) / "bus"
    children.start("bus", ["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address=unix:path={socket}"])
    wait_for("the message bus", socket.exists, 10)
    return {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={socket}"}


class Stage:
    """A station that sends 128 kbit/s MP3, a screen and a sound card, for programs that play. `more_stations` are
    (name, address) of further rows of the catalogue."""

    def __init__(self, children, build, scratch, log_folder, more_stations=()):
        self.children, self.build, self.scratch = children, build, scratch
        self.station = Station(children, build / "bin" / "demo_station", log_folder)
        self.address = f"{self.station.address}/stream"
        self.display = start_screen(children)
        self.sink = NullSink(children, scratch / "sound")
        self.environment = {**os.environ, **self.sink.environment, "DISPLAY": self.display, "QT_QPA_PLATFORM": "xcb"}
        self.environment.update(session_bus(children, scratch), **peers.home(scratch / "own"),
                                APPDATA=str(scratch / "settings"))
        self.write_stations([(NAME, self.address), *more_stations])

    def write_stations(self, stations):
        """The catalogue of the program's next start."""
        write_catalogue(self.scratch / "settings" / "Ordnerzentrale" / "Funkhaus.ini",
                        [(name, address, "Pop & Hits", "", "") for name, address in stations])

    def places(self, stations, controls):
        """Where to click on the stations' rows, and the controls, as two lists; learned from the build that reports
        its controls: the program itself then runs without a report, which would cost time of its own."""
        report = Report(self.scratch / "report.txt")
        process = self.children.start("reporting", [self.build / "bin" / "demo_player"],
                                      env={**self.environment, "FUNKHAUS_DEMO_REPORT": str(report.path)})
        rows = [wait_for(f"the row of {name}", lambda name=name: report.row(name), 60) for name in stations]
        found = [wait_for(f"the control {name}", lambda name=name: report.find(name), 10) for name in controls]
        process.terminate()
        process.wait()
        report.path.unlink()
        return [(row.x + min(row.width // 2, 80), row.middle[1]) for row in rows], found

    def open_program(self):
        """The program, its window open, and nothing done with it yet."""
        process = self.children.start("player", [self.build / "bin" / "funkhausplayer"], env=self.environment)
        wait_for("the window", lambda: visible_windows(self.display, process.pid), 60)
        return process

    def start_program(self):
        """The program, playing with its window open."""
        (row,), (start,) = self.places([NAME], ["Command1"])
        process = self.open_program()
        hands = Hands(self.display)
        left_before = len(self.station.lines("listener gone"))

        def title_was_read():
            hands.click(*row)
            return len(self.station.lines("listener gone")) > left_before

        wait_for("the station's title", title_was_read, 60, pause=3)
        hands.click(*start.middle)
        wait_for("sound", lambda: self.sink.loudness() > AUDIBLE, 60, pause=0)
        return process

    def hide(self, process):
        """Takes the window off the screen, as a window manager does when it is minimised."""
        for window in visible_windows(self.display, process.pid):
            subprocess.run(["xdotool", "windowunmap", "--sync", str(window)], check=True,
                           env={**os.environ, "DISPLAY": self.display})


def measure(run, arguments):
    """The exit code of `run(arguments, children, scratch)`, 2 when it could not measure."""
    arguments.output.mkdir(parents=True, exist_ok=True)
    # So what was started is ended also when the measurement itself is asked to end.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    children = Children(arguments.output)
    with tempfile.TemporaryDirectory(prefix="funkhaus-bench-") as scratch:
        try:
            return run(arguments, children, pathlib.Path(scratch))
        except Failure as failure:
            print(f"Not measured: {failure}", file=sys.stderr)
            return 2
        finally:
            children.end()


class Meter:
    """What a process needs from now on."""

    def __init__(self, process_id):
        self.id = process_id
        self.started = time.monotonic()
        self.before = processor_seconds(self.id)
        self.threads_before = threads(self.id)

    def seconds(self):
        return processor_seconds(self.id) - self.before

    def by_thread(self):
        """(name, processor seconds), the busiest first."""
        used = {name: total - self.threads_before.get(name, 0) for name, total in threads(self.id).items()}
        return sorted(used.items(), key=lambda entry: -entry[1])
