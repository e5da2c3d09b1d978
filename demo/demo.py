#!/usr/bin/env python3
"""The demonstration: a radio station of our own on this machine, a catalogue that names it, and the program.

Usage: demo.py BUILD_FOLDER OUTPUT_FOLDER [--headless]

With a screen the program's window is left to the person in front of it. Without one (or with --headless) a
virtual screen and a silent sound card take their place, the window is worked with real mouse events, and the
exit code says whether the stations were heard.
"""
import argparse
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

from desktop import Children, Failure, Mouse, NullSink, close_window, screenshot, start_screen, wait_for
from report import Report

DEMO = pathlib.Path(__file__).resolve().parent
AUDIBLE = -50.0   # The loop is played at about -18 dB; a player's volume may lie lower.
SILENT = -80.0


class Station:
    """The running demo_station."""

    def __init__(self, children, program, log_folder):
        self.log = pathlib.Path(log_folder, "station.txt")
        with open(self.log, "wb") as output:
            # The station ends when this pipe does, so it cannot outlive the demonstration.
            process = children.start("station", [program, DEMO / "loop.mp3"], stdin=subprocess.PIPE, stdout=output)
        wait_for("the station", lambda: self.lines("port ") or process.poll() is not None, 10)
        if process.poll() is not None:
            raise Failure("the station did not start")
        self.address = f"http://127.0.0.1:{self.lines('port ')[0]}"

    def lines(self, beginning):
        """The rests of the log's lines that begin so."""
        return [line[len(beginning):] for line in self.log.read_text(encoding="utf-8").splitlines()
                if line.startswith(beginning)]


def catalogue(address, dead_address):
    """(name, link, genre, favourite, entry of a playlist) of every station."""
    return [
        ("Radio Lichtung", f"{address}/stream", "Pop & Hits", "1", ""),
        ("Küstenfunk Süd", f"{address}/station.m3u", "Oldies", "1", "1"),
        ("Blaue Stunde", f"{address}/station.pls", "Jazz & Blues", "", ""),
        ("Stilles Haus", f"{dead_address}/stream", "Rock", "", ""),
        ("Verzogen", f"{address}/gone", "Klassik", "", ""),
    ]


def write_catalogue(path, stations):
    lines = []
    for name, link, genre, favourite, entry in stations:
        lines += [f"[{name}]", f"Station={name}", f"Link={link}", f"Genre={genre}", f"Favorit={favourite}",
                  f"M3uNr={entry}"]
    path.parent.mkdir(parents=True)
    path.write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


def make_program_folder(folder, program):
    """The program's own folder: the program, and beside it the icons and pictures of its stations."""
    folder.mkdir()
    shutil.copy2(program, folder / program.name)
    for beside in ("RadioIco", "RadioJPG"):
        shutil.copytree(DEMO / beside, folder / beside)
    languages = DEMO.parent / "Languages"
    if languages.is_dir():
        shutil.copytree(languages, folder / "Languages")
    return folder / program.name


class Visitor:
    """Works the window with the mouse and listens."""

    def __init__(self, display, sink, report, station, output):
        self.display, self.sink, self.report, self.station, self.output = display, sink, report, station, output
        self.mouse = Mouse(display)

    def press(self, name):
        self.mouse.click(*wait_for(f"the control {name}", lambda: self.report.find(name), 10).middle)

    def select(self, name):
        row = wait_for(f"the row of {name}", lambda: self.report.row(name), 20)
        # Near the left edge: the middle of a wide column may lie under a scroll bar.
        self.mouse.click(row.x + min(row.width // 2, 80), row.middle[1])
        wait_for(f"{name} in the editor", lambda: self.report.text("TextBox1_0") == name, 20)

    def hear(self, name):
        """Plays a station until it is heard, and stops it; gives a line for the person who reads the log."""
        titles_before = len(self.station.lines("title "))
        self.select(name)
        self.press("Command1")
        wait_for(f"sound of {name}", lambda: self.sink.loudness() > AUDIBLE, 40, pause=0)
        position = wait_for(f"the position of {name}", lambda: self.running_position(), 20)
        title = wait_for(f"the title of {name}", self.shown_title, 30)
        screenshot(self.display, self.picture_of(name))
        loudness = self.sink.loudness(2.0)
        if loudness < AUDIBLE:
            raise Failure(f"{name} fell silent, {loudness:.1f} dB")
        self.press("Command6")
        wait_for(f"silence after {name}", lambda: self.sink.loudness(0.5) < SILENT, 15, pause=0)
        wait_for("an empty position", lambda: not self.report.text("Label1"), 10)
        served = len(self.station.lines("title ")) - titles_before
        return f"{name}: {loudness:.1f} dB, {position}, \"{title}\" ({served} titles served)"

    def picture_of(self, name):
        return self.output / f"{name.replace(' ', '-')}.png"

    def running_position(self):
        """The text of the position once it has moved."""
        first = self.report.text("Label1")
        if not first or not first.startswith("Pos: "):
            return None
        time.sleep(1.2)
        second = self.report.text("Label1")
        return second if second and second.startswith("Pos: ") and second != first else None

    def shown_title(self):
        title = self.report.text("Label4")
        return title if title and title in self.station.lines("title ") else None

    def meet_dead(self, name, box):
        """Selects and starts a station that is not there: the window says what it has to say (`box`, None for
        nothing), stays alive and silent."""
        self.select(name)
        self.press("Command1")
        if box:
            wait_for(f"the box of {name}", lambda: (self.report.text("box") or "").strip() == box, 20)
        loudness = self.sink.loudness(2.0)
        if loudness > SILENT:
            raise Failure(f"{name} was heard at {loudness:.1f} dB")
        screenshot(self.display, self.picture_of(name))
        if bool(box) != bool(self.report.find("box")):
            raise Failure(f'{name} was answered by "{self.report.text("box")}"')
        if box:
            self.press("box[0]")
            wait_for("the box to close", lambda: not self.report.find("box"), 10)
        self.press("Command6")
        return f"{name}: silent" + (f', "{box}"' if box else "")


def visit(player, visitor):
    quiet = visitor.sink.loudness()
    if quiet > SILENT:
        raise Failure(f"{quiet:.1f} dB before anything is played")
    wait_for("the window", lambda: visitor.report.find("window") or player.poll() is not None, 30)
    if player.poll() is not None:
        raise Failure(f"the program ended at once, with {player.returncode}")
    for name in ("Radio Lichtung", "Küstenfunk Süd", "Blaue Stunde"):
        print(visitor.hear(name), flush=True)
    print(visitor.meet_dead("Stilles Haus", box=None), flush=True)
    print(visitor.meet_dead("Verzogen", box="Das System kann die angegebene Datei nicht finden."), flush=True)
    # The window has come through and still plays.
    print(visitor.hear("Radio Lichtung"), flush=True)
    close_window(visitor.display, player.pid)
    try:
        code = player.wait(timeout=15)
    except subprocess.TimeoutExpired as error:
        raise Failure("the program did not end after its window was closed") from error
    if code != 0:
        raise Failure(f"the program ended with {code}")


def run(arguments, children, scratch):
    output = arguments.output
    headless = arguments.headless or not (os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY"))
    programs = arguments.build / "bin"
    station = Station(children, programs / "demo_station", output)
    # Bound but not listening: whoever connects is refused, and nobody else can take the port.
    with socket.socket() as dead:
        dead.bind(("127.0.0.1", 0))
        stations = catalogue(station.address, f"http://127.0.0.1:{dead.getsockname()[1]}")
        write_catalogue(scratch / "settings" / "Ordnerzentrale" / "Funkhaus.ini", stations)
        program = make_program_folder(scratch / "program",
                                      programs / ("demo_player" if headless else "funkhausplayer"))
        environment = {**os.environ, "APPDATA": str(scratch / "settings")}
        if not headless:
            print(f"The station plays at {station.address}; the demonstration ends with the window.", flush=True)
            return subprocess.run([program], env=environment, check=False).returncode
        display = start_screen(children)
        sink = NullSink(children, scratch / "sound")
        report = Report(scratch / "report.txt")
        environment.update(sink.environment, DISPLAY=display, QT_QPA_PLATFORM="xcb",
                           FUNKHAUS_DEMO_REPORT=str(report.path))
        player = children.start("player", [program], env=environment)
        try:
            visit(player, Visitor(display, sink, report, station, output))
        except Failure:
            screenshot(display, output / "failure.png")
            if report.path.exists():
                shutil.copy2(report.path, output / "failure-report.txt")
            raise
    print(f"Titles served: {len(station.lines('title '))}, requests: {len(station.lines('request '))}; "
          f"screenshots in {output}")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for logs and screenshots")
    parser.add_argument("--headless", action="store_true", help="even with a screen")
    arguments = parser.parse_args()
    arguments.output.mkdir(parents=True, exist_ok=True)
    # So what was started is ended also when the demonstration itself is told to end.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    children = Children(arguments.output)
    with tempfile.TemporaryDirectory(prefix="funkhaus-demo-") as scratch:
        try:
            return run(arguments, children, pathlib.Path(scratch))
        except Failure as failure:
            print(f"The demonstration failed: {failure}", file=sys.stderr)
            return 1
        finally:
            children.end()


if __name__ == "__main__":
    sys.exit(main())
