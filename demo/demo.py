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

import sitting
from desktop import Children, Failure, NullSink, screenshot, start_screen, wait_for
from report import Report
from visitor import SILENT, Visitor

DEMO = pathlib.Path(__file__).resolve().parent


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
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


def make_program_folder(folder, program):
    """The program's own folder: the programs, and beside them the icons and pictures of the stations."""
    folder.mkdir()
    for file in (program, program.with_name("OZRecordFunkhaus")):
        shutil.copy2(file, folder / file.name)
    for beside in ("RadioIco", "RadioJPG"):
        shutil.copytree(DEMO / beside, folder / beside)
    languages = DEMO.parent / "Languages"
    if languages.is_dir():
        shutil.copytree(languages, folder / "Languages")
    return folder / program.name


class Teller:
    """Says what was seen and heard, and leaves it behind in a file."""

    def __init__(self, path):
        self.path = path
        path.write_text("", encoding="utf-8")

    def __call__(self, line):
        print(line, flush=True)
        with self.path.open("a", encoding="utf-8") as file:
            file.write(line + "\n")


def visit(launch, visitor, scratch, program, tell):
    """Does everything with the window that there is to do with it."""
    quiet = visitor.sink.loudness()
    if quiet > SILENT:
        raise Failure(f"{quiet:.1f} dB before anything is played")
    player = launch()
    visitor.hands.focus(player.pid)
    for name in ("Radio Lichtung", "Küstenfunk Süd", "Blaue Stunde"):
        tell(visitor.hear(name))
    tell(visitor.meet_dead("Stilles Haus", box=None))
    tell(visitor.meet_dead("Verzogen", box="Das System kann die angegebene Datei nicht finden."))
    # The window has come through and still plays.
    tell(sitting.play_and_turn(visitor))
    station_file = scratch / "settings" / "Ordnerzentrale" / "Funkhaus.ini"
    tell(sitting.mark_favourite(visitor, station_file))
    tell(sitting.filter_genre(visitor))
    tell(sitting.add_and_save(visitor, station_file))
    tell(sitting.export_and_import(visitor, scratch))
    tell(sitting.record(visitor, program.with_name("OZRecordFunkhaus"), scratch / "music" / "Funkhausplayer"))
    tell(sitting.close_with_question(visitor, player))
    tell(sitting.start_again(visitor, launch()))


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
        environment = {**os.environ, "APPDATA": str(scratch / "settings"), "XDG_STATE_HOME": str(scratch / "state"),
                       "XDG_DATA_HOME": str(scratch / "data")}
        if not headless:
            print(f"The station plays at {station.address}; the demonstration ends with the window.", flush=True)
            return subprocess.run([program], env=environment, check=False).returncode
        display = start_screen(children)
        sink = NullSink(children, scratch / "sound")
        report = Report(scratch / "report.txt")
        environment.update(sink.environment, DISPLAY=display, QT_QPA_PLATFORM="xcb",
                           FUNKHAUS_DEMO_REPORT=str(report.path), XDG_MUSIC_DIR=str(scratch / "music"))
        tell = Teller(output / "report.txt")

        def launch():
            report.path.unlink(missing_ok=True)
            player = children.start("player", [program], env=environment)
            wait_for("the window", lambda: report.find("window") or player.poll() is not None, 30)
            if player.poll() is not None:
                raise Failure(f"the program ended at once, with {player.returncode}")
            return player

        try:
            visit(launch, Visitor(display, sink, report, station, output), scratch, program, tell)
        except Failure as failure:
            tell(f"The demonstration failed: {failure}")
            screenshot(display, output / "failure.png")
            if report.path.exists():
                shutil.copy2(report.path, output / "failure-controls.txt")
            raise
    tell(f"Titles served: {len(station.lines('title '))}, requests: {len(station.lines('request '))}")
    print(f"Report and screenshots: {output}")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for logs and screenshots")
    parser.add_argument("--headless", action="store_true", help="even with a screen")
    arguments = parser.parse_args()
    arguments.output.mkdir(parents=True, exist_ok=True)
    for old in arguments.output.glob("*.png"):
        old.unlink()
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
