"""The two programs of a system, as the demonstration starts and finds them. Not what is done with their windows."""
import os
import pathlib
import shutil

from desktop import Failure, resize_window, wait_for
from report import Report
from stations import add_pictures, make_program_folder

# High enough for a list without a scroll bar: only what can be seen is in the report.
SIZE = (1300, 1060)


class Player:
    """A player that was started: the process of its window, and the one whose end is its end."""

    def __init__(self, pid, process):
        self.pid, self.process = pid, process

    def wait(self, timeout):
        return self.process.wait(timeout)


class Programs:
    """What the systems have in common; the others name their files and start the player.

    `settings` is the folder of the program family, `music` the one that recordings lie in, `beside` the player's own.
    """

    numeric = False  # whether stations need addresses without names
    captions = {}  # what the system calls its boxes' buttons and an error, where that is not German

    def __init__(self, children, scratch, settings, music, beside):
        self.children, self.settings, self.music, self.beside = children, settings, music, beside
        self.report = Report(scratch / "report.txt")

    def launch(self, display):
        """Starts the player and gives its window a size; returns the Player."""
        self.report.path.unlink(missing_ok=True)
        process = self.start()
        wait_for("the window", lambda: self.report.find("window") or process.poll() is not None, 60)
        if process.poll() is not None:
            raise Failure(f"the program ended at once, with {process.returncode}")
        player = Player(self.pid_of(process), process)
        resize_window(display, player.pid, *SIZE)
        wait_for("the larger window", lambda: self.report.find("window").height >= SIZE[1], 20)
        return player

    def shown_path(self, path):
        """A file's path as the program's users write it."""
        return str(path)


class LinuxPrograms(Programs):
    """From a build. `report`: with a report of the player's controls, for a visitor who is no person."""

    def __init__(self, children, scratch, build, report=True):
        super().__init__(children, scratch, scratch / "settings" / "Ordnerzentrale", scratch / "music" / "Funkhausplayer",
                         scratch / "program")
        binaries = build / "bin"
        player = binaries / ("demo_player" if report else "funkhausplayer")
        self.program = make_program_folder(self.beside, player, binaries / "OZRecordFunkhaus")
        self.environment = {**os.environ, "APPDATA": str(scratch / "settings"), "XDG_STATE_HOME": str(scratch / "state"),
                            "XDG_DATA_HOME": str(scratch / "data")}
        if report:
            self.environment.update(QT_QPA_PLATFORM="xcb", FUNKHAUS_DEMO_REPORT=str(self.report.path),
                                    XDG_MUSIC_DIR=str(scratch / "music"))

    def start(self):
        return self.children.start("player", [self.program], env=self.environment)

    @staticmethod
    def pid_of(process):
        return process.pid

    def recorders(self):
        """The ids of the processes of the recording tool."""
        tool = self.program.with_name("OZRecordFunkhaus")
        return [pid for pid in process_ids() if is_same(f"/proc/{pid}/exe", tool)]


class WindowsPrograms(Programs):
    """From an unpacked archive, under Wine in a prefix that exists; `build` has the demonstration's own program."""

    numeric = True
    captions = {"Ja": "Yes", "Nein": "No", "Das System kann die angegebene Datei nicht finden.": "File not found."}

    def __init__(self, children, scratch, build, unpacked):
        prefix = pathlib.Path(os.environ["WINEPREFIX"])
        users = [folder for folder in (prefix / "drive_c/users").iterdir() if folder.name != "Public"]
        if len(users) != 1:
            raise Failure(f"{prefix} has {len(users)} users")
        user = users[0]
        super().__init__(children, scratch, user / "AppData/Roaming/Ordnerzentrale", user / "Music/Funkhausplayer",
                         scratch / "program")
        shutil.copytree(unpacked, self.beside)
        add_pictures(self.beside)
        self.program = self.beside / "Funkhausplayer.exe"
        self.reporter = build / "bin" / "control_report.exe"
        self.environment = dict(os.environ)
        # The prefix belongs to the build; what an earlier run left in it is not to meet this one.
        for folder in (self.settings, self.music, user / "AppData/Local/Funkhausplayer"):
            if not folder.resolve().is_relative_to(prefix.resolve()):
                raise Failure(f"{folder} leads out of Wine's prefix")
            shutil.rmtree(folder, ignore_errors=True)

    def start(self):
        return self.start_by_wine(self.reporter, self.shown_path(self.report.path), self.shown_path(self.program))

    def start_by_wine(self, *words):
        wine = pathlib.Path(__file__).resolve().parent.parent / "scripts" / "wine"
        return self.children.start("player", [wine, *words], env=self.environment)

    def pid_of(self, _process):
        return self.processes(self.program.name)[0]

    def recorders(self):
        return self.processes("OZRecordFunkhaus.exe")

    def processes(self, name):
        """Of a program in the demonstration's own folder. Its own path is the first word of a program's line."""
        wanted = self.shown_path(self.beside / name)
        return [pid for pid in process_ids() if words_of(pid)[:1] == [wanted]]

    def shown_path(self, path):
        """Wine has the whole machine as a drive."""
        return "Z:" + str(path).replace("/", "\\")


def process_ids():
    return [int(entry.name) for entry in pathlib.Path("/proc").iterdir() if entry.name.isdigit()]


def words_of(pid):
    try:
        return pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().decode(errors="replace").split("\0")
    except OSError:
        return []


def is_same(link, program):
    try:
        return os.path.samefile(link, program)
    except OSError:
        return False
