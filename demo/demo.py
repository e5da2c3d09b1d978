#!/usr/bin/env python3
"""The demonstration: radio stations of our own on this machine, a catalogue that names them, and the program.

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
import subprocess
import sys
import tempfile

import sitting
from desktop import Children, Failure, NullSink, resize_window, screenshot, start_screen, wait_for
from report import Report
from stations import DeadAddress, Stations, make_program_folder, write_catalogue
from visitor import SILENT, Visitor

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


def settle(arguments, children, scratch):
    """The stations, their catalogue and the program's folder; gives the stations, the program and its environment."""
    programs = arguments.build / "bin"
    stations = Stations(children, programs / "demo_station", arguments.output)
    dead = DeadAddress()
    moved = stations.all[0].link.replace("/stream", "/gone")
    write_catalogue(scratch / "settings" / "Ordnerzentrale" / "Funkhaus.ini", stations.rows() + [
        ("Stilles Haus", f"{dead.address}/stream", "Rock", "", ""), ("Verzogen", moved, "Klassik", "", "")])
    player = "demo_player" if arguments.headless else "funkhausplayer"
    program = make_program_folder(scratch / "program", programs / player, programs / "OZRecordFunkhaus")
    environment = {**os.environ, "APPDATA": str(scratch / "settings"), "XDG_STATE_HOME": str(scratch / "state"),
                   "XDG_DATA_HOME": str(scratch / "data")}
    return stations, dead, program, environment


def run(arguments, children, scratch):
    output = arguments.output
    if not (os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY")):
        arguments.headless = True
    stations, _dead, program, environment = settle(arguments, children, scratch)
    if not arguments.headless:
        print("A dozen stations play on this machine; the demonstration ends with the window.", flush=True)
        return subprocess.run([program], env=environment, check=False).returncode
    display = start_screen(children, "1400x1100")
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
        # High enough for a list without a scroll bar: only what can be seen is in the report.
        resize_window(display, player.pid, 1300, 1060)
        wait_for("the larger window", lambda: report.find("window").height == 1060, 10)
        return player

    try:
        visit(launch, Visitor(display, sink, report, stations, output), scratch, program, tell)
    except Failure as failure:
        tell(f"The demonstration failed: {failure}")
        screenshot(display, output / "failure.png")
        if report.path.exists():
            shutil.copy2(report.path, output / "failure-controls.txt")
        raise
    tell(f"Titles served: {len(stations.lines('title '))}, requests: {len(stations.lines('request '))}")
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
