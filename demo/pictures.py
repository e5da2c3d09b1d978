#!/usr/bin/env python3
"""Takes pictures of the program's windows: in light, dark and high contrast, at 100, 150 and 200 %, in German and
English, with the smallest window and one that fills a screen of 1920 x 1080.

Usage: pictures.py BUILD_FOLDER OUTPUT_FOLDER [--only WORD] [--icons THEME] [--docs FOLDER]

The stations are those of the demonstration. --only takes the looks whose name has the word in it, as in
"dark-200-en". With --docs the pictures of the documents are taken as well and written there, framed and made small.
"""
import argparse
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import framing
from desktop import Children, Failure, Hands, NullSink, resize_window, screenshot, start_screen, visible_windows, wait_for
from report import Report
from stations import CATALOGUE, Stations, make_program_folder, write_catalogue

SCREEN = (1920, 1080)
SMALLEST = (672, 636)  # Form1's smallest size in pixels at 100 %, with its status line
WIDTH_IF_LOWER = 908  # its smallest width on a screen that is too low for that
USUAL = (1024, 724)
PLAYED = CATALOGUE[0]
# The run over all titles asks only these; a playlist has no title.
STREAMS = {entry.name: entry for entry in CATALOGUE if entry.target == "/stream"}


class Look:
    """What a desktop and its user chose."""

    def __init__(self, colors="light", scale=100, language="de"):
        self.colors, self.scale, self.language = colors, scale, language
        self.name = f"{colors}-{scale}-{language}"

    def pixels(self, size):
        """A size in pixels of the screen, no larger than that."""
        return tuple(min(length * self.scale // 100, room) for length, room in zip(size, SCREEN))

    def smallest(self):
        """What a window manager, of which this screen has none, would let a user have."""
        width, height = SMALLEST
        return (width if height * self.scale // 100 <= SCREEN[1] else WIDTH_IF_LOWER, height)


class Studio:
    """A screen, a sound card and stations, for one program after the other."""

    def __init__(self, arguments, children, scratch):
        self.programs = arguments.build / "bin"
        self.icons, self.output = arguments.icons, arguments.output
        self.children, self.scratch = children, scratch
        self.display = start_screen(children, "x".join(map(str, SCREEN)))
        self.sink = NullSink(children, scratch / "sound")
        self.stations = Stations(children, self.programs / "demo_station", arguments.output)
        self.folder = scratch / "program"
        make_program_folder(self.folder, self.programs / "demo_player", self.programs / "demo_recorder")
        shutil.move(self.folder / "demo_recorder", self.folder / "OZRecordFunkhaus")

    def environment(self, look, settings, report):
        environment = {**os.environ, **self.sink.environment, "APPDATA": str(settings), "DISPLAY": self.display,
                       "XDG_STATE_HOME": str(settings / "state"), "XDG_DATA_HOME": str(settings / "data"),
                       "XDG_MUSIC_DIR": "/tmp/Musik", "QT_QPA_PLATFORM": "xcb",
                       "QT_SCALE_FACTOR": str(look.scale / 100), "FUNKHAUS_DEMO_REPORT": str(report.path),
                       "FUNKHAUS_DEMO_COLORS": look.colors, "FUNKHAUS_DEMO_ICONS": self.icons or ""}
        # Only what is named above decides about the look.
        for name in ("QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP", "DBUS_SESSION_BUS_ADDRESS"):
            environment.pop(name, None)
        return environment

    def open(self, look, program, *words):
        return Sitting(self, look, program, words)


class Sitting:
    """A program's window with somebody in front of it."""

    def __init__(self, studio, look, program, words):
        self.studio, self.look = studio, look
        settings = pathlib.Path(tempfile.mkdtemp(dir=studio.scratch))
        folder = settings / "Ordnerzentrale"
        write_catalogue(folder / "Funkhaus.ini", studio.stations.rows())
        if look.language == "en":
            (folder / "Opt.ini").write_bytes(b"[Pfad1]\r\nLanguages=English\r\n")
        self.report = Report(settings / "report.txt")
        self.process = studio.children.start("window", [studio.folder / program, *words],
                                             env=studio.environment(look, settings, self.report))
        wait_for("the window", lambda: self.report.controls() or self.process.poll() is not None, 30)
        if self.process.poll() is not None:
            raise Failure(f"{program} ended at once, with {self.process.returncode}")
        self.hands = Hands(studio.display)
        self.hands.focus(self.process.pid)

    def __enter__(self):
        return self

    def __exit__(self, failure, *_):
        if failure:
            screenshot(self.studio.display, self.studio.output / "failure.png")
        self.process.terminate()
        self.process.wait(timeout=10)

    def click(self, control, times=1):
        # The report is in the program's own pixels.
        self.hands.click(*(place * self.look.scale // 100 for place in control.middle), times)

    def press(self, name):
        self.click(wait_for(f"the control {name}", lambda: self.report.find(name), 10))

    def fill(self, name, text):
        self.press(name)
        self.hands.press_keys("ctrl+a")
        self.hands.write(text)
        wait_for(f"the text in {name}", lambda: self.report.text(name) == text, 10)

    def resize(self, size):
        width, height = self.look.pixels(size)
        resize_window(self.studio.display, self.process.pid, width, height)
        wanted = height * 100 // self.look.scale
        wait_for("the window's size", lambda: abs(self.report.find("window").height - wanted) <= 1, 10)

    def shoot(self, path):
        """Takes a picture of the window that was opened last."""
        self.hands.rest()
        time.sleep(0.6)
        screenshot(self.studio.display, path, visible_windows(self.studio.display, self.process.pid)[-1])

    def fetch_titles(self):
        """Brings all titles into the list, and waits for those of the rows in sight."""
        self.press("Command3")
        # The box that says that this may take a while.
        self.press("box[0]")

        def filled():
            rows = [row.text for row in map(self.report.row, STREAMS) if row]
            return rows and all(any(title in row for title in STREAMS[row.split(" | ")[0]].titles) for row in rows)
        wait_for("the titles", filled, 60)

    def play(self):
        # No window manager gives the keyboard focus back after a box; and the row need not be in sight.
        self.hands.focus(self.process.pid)
        self.hands.press_keys("ctrl+f")
        self.hands.write(PLAYED.name)
        wait_for("the station in the editor", lambda: self.report.text("TextBox1_0") == PLAYED.name, 20)
        self.hands.press_keys("Return")
        wait_for("the position", lambda: (self.report.text("Label1") or "").startswith("Pos"), 40)
        wait_for("the title", lambda: self.report.text("Label4") in PLAYED.titles, 30)
        # The levels come up, and the marks show that there were higher ones.
        time.sleep(3)

    def add_station(self):
        self.hands.press_keys("ctrl+n")
        wait_for("the new-station dialog", lambda: self.report.find("dialog"), 10)
        self.fill("dialog.TextBox1_0", "Radio Silberpappel")
        self.fill("dialog.TextBox1_1", "http://stream.silberpappel.example:8000/live")


def shoot_player(studio, look, output):
    with studio.open(look, "demo_player") as sitting:
        sitting.resize(SCREEN)
        sitting.fetch_titles()
        sitting.play()
        sitting.shoot(output / f"{look.name}-large.png")
        sitting.resize(look.smallest())
        sitting.shoot(output / f"{look.name}-smallest.png")
        sitting.resize(USUAL)
        sitting.shoot(output / f"{look.name}-usual.png")
        sitting.add_station()
        sitting.shoot(output / f"{look.name}-new-station.png")
        sitting.press("dialog.CommandButton1")
        wait_for("the question", lambda: sitting.report.find("box"), 10)
        sitting.shoot(output / f"{look.name}-question.png")


def shoot_recorder(studio, look, path):
    with studio.open(look, "OZRecordFunkhaus", studio.stations.all[0].link) as sitting:
        wait_for("the recording", lambda: sitting.report.text("dialog.title") in PLAYED.titles, 30)
        time.sleep(3)
        sitting.shoot(path)


def shoot_documents(studio, output, documents):
    """Takes the pictures of README and of the guide."""
    for look in (Look("light"), Look("dark")):
        with studio.open(look, "demo_player") as sitting:
            sitting.resize(USUAL)
            sitting.fetch_titles()
            sitting.play()
            sitting.shoot(output / f"document-{look.colors}.png")
            if look.colors == "light":
                sitting.add_station()
                sitting.shoot(output / "document-new-station.png")
                sitting.press("dialog.CommandButton2")
                sitting.fill("Combo1", "Oldies")
                sitting.press("Check1")
                wait_for("the view", lambda: sitting.report.text("Frame2") == "Genre-Filter: Oldies", 10)
                sitting.shoot(output / "document-genre.png")
        shoot_recorder(studio, look, output / f"document-recording-{look.colors}.png")
    framing.write_documents(output, documents)


def run(arguments, children, scratch):
    studio = Studio(arguments, children, scratch)
    looks = [Look(colors, scale, language) for colors in ("light", "dark", "contrast") for scale in (100, 150, 200)
             for language in ("de", "en")]
    for look in looks:
        if arguments.only and not any(word in look.name for word in arguments.only):
            continue
        print(look.name, flush=True)
        shoot_player(studio, look, arguments.output)
        # The recording tool knows no other language.
        if look.language == "de":
            shoot_recorder(studio, look, arguments.output / f"{look.name}-recording.png")
    if arguments.docs:
        print("documents", flush=True)
        shoot_documents(studio, arguments.output, arguments.docs)
    print(f"Pictures: {arguments.output}")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for the pictures")
    parser.add_argument("--only", action="append", help="a word in the names of the looks to be taken")
    parser.add_argument("--icons", help="the name of an icon theme that is installed")
    parser.add_argument("--docs", type=pathlib.Path, help="folder of the documents' pictures, which are replaced")
    arguments = parser.parse_args()
    arguments.output.mkdir(parents=True, exist_ok=True)
    # So what was started is ended also when this program itself is asked to end.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    children = Children(arguments.output)
    with tempfile.TemporaryDirectory(prefix="funkhaus-pictures-") as scratch:
        try:
            return run(arguments, children, pathlib.Path(scratch))
        except (Failure, subprocess.CalledProcessError) as failure:
            print(f"No more pictures: {failure}", file=sys.stderr)
            return 1
        finally:
            children.end()


if __name__ == "__main__":
    sys.exit(main())
