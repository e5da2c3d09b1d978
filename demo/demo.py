#!/usr/bin/env python3
"""The demonstration: its own radio stations on this machine, a catalogue that names them, and the program.

Usage: demo.py BUILD_FOLDER OUTPUT_FOLDER [--headless] [--windows FOLDER]

With a screen the program's window is left to the person in front of it. Without one (or with --headless) a
virtual screen and a silent sound card take their place, the window is operated with real mouse events, and the
exit code says whether the stations were heard.
"""
import argparse
import os
import pathlib
import shutil
import signal
import sys
import tempfile

import sitting
from desktop import Children, Failure, NullSink, screenshot, start_screen
from programs import LinuxPrograms, WindowsPrograms
from stations import DeadAddress, Stations, write_catalogue
from visitor import SILENT, Visitor

class Teller:
    """Prints what was seen and heard, and keeps it in a file."""

    def __init__(self, path):
        self.path = path
        path.write_text("", encoding="utf-8")

    def __call__(self, line):
        print(line, flush=True)
        with self.path.open("a", encoding="utf-8") as file:
            file.write(line + "\n")


def visit(visitor, programs, scratch, tell):
    """Does everything that can be done with the window."""
    quiet = visitor.sink.loudness()
    if quiet > SILENT:
        raise Failure(f"{quiet:.1f} dB before anything is played")
    player = programs.launch(visitor.display)
    visitor.hands.focus(player.pid)
    for name in ("Radio Lichtung", "Küstenfunk Süd", "Blaue Stunde"):
        tell(visitor.hear(name))
    tell(visitor.meet_dead("Stilles Haus", box=None))
    tell(visitor.meet_dead("Verzogen", box="Das System kann die angegebene Datei nicht finden."))
    # The window has survived it and still plays.
    tell(sitting.play_and_turn(visitor))
    station_file = programs.settings / "Funkhaus.ini"
    tell(sitting.mark_favourite(visitor, station_file))
    tell(sitting.filter_genre(visitor))
    tell(sitting.add_and_save(visitor, station_file))
    tell(sitting.export_and_import(visitor, programs, scratch))
    tell(sitting.record(visitor, programs))
    tell(sitting.close_with_question(visitor, player))
    tell(sitting.start_again(visitor, programs.launch(visitor.display)))


def make_programs(arguments, children, scratch):
    if arguments.windows:
        return WindowsPrograms(children, scratch, arguments.build, arguments.windows)
    return LinuxPrograms(children, scratch, arguments.build, report=arguments.headless)


def settle(arguments, children, programs):
    """The stations, and their catalogue; gives the stations and what keeps the port of a dead one."""
    stations = Stations(children, arguments.build / "bin" / "demo_station", arguments.output)
    dead = DeadAddress()
    moved = stations.all[0].numeric_link.replace("/stream", "/gone")
    write_catalogue(programs.settings / "Funkhaus.ini", stations.rows(programs.numeric) + [
        ("Stilles Haus", f"{dead.address}/stream", "Rock", "", ""), ("Verzogen", moved, "Klassik", "", "")])
    return stations, dead


def run(arguments, children, scratch):
    output = arguments.output
    if not (os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY")):
        arguments.headless = True
    programs = make_programs(arguments, children, scratch)
    stations, _dead = settle(arguments, children, programs)
    if not arguments.headless:
        print("A dozen stations play on this machine; the demonstration ends with the window.", flush=True)
        return programs.start().wait()
    display = start_screen(children, "1400x1100")
    sink = NullSink(children, scratch / "sound")
    programs.environment.update(sink.environment, DISPLAY=display)
    tell = Teller(output / "report.txt")
    try:
        visit(Visitor(display, sink, programs, stations, output), programs, scratch, tell)
    except Failure as failure:
        tell(f"The demonstration failed: {failure}")
        screenshot(display, output / "failure.png")
        if programs.report.path.exists():
            shutil.copy2(programs.report.path, output / "failure-controls.txt")
        raise
    tell(f"Titles served: {len(stations.lines('title '))}, requests: {len(stations.lines('request '))}")
    print(f"Report and screenshots: {output}")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for logs and screenshots")
    parser.add_argument("--headless", action="store_true", help="even with a screen")
    parser.add_argument("--windows", type=pathlib.Path, metavar="FOLDER",
                        help="the programs for Windows, from an unpacked archive; started by Wine, without a screen")
    arguments = parser.parse_args()
    arguments.headless = arguments.headless or arguments.windows is not None
    arguments.output.mkdir(parents=True, exist_ok=True)
    for old in arguments.output.glob("*.png"):
        old.unlink()
    # So what was started is ended also when the demonstration itself is asked to end.
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
