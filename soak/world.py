"""What the soaked program lives in: a screen, a sound server, a session bus, radio servers, folders of its own; and
how it is started there. Not what happens to it (faults.py, user.py)."""
import ctypes
import os
import pathlib
import select
import shutil
import signal
import subprocess

import catalogue
from desktop import Failure, NullSink, start_screen, wait_for
from report import Report

DEMO = pathlib.Path(__file__).resolve().parent.parent / "demo"
CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH, DROP_CAPABILITY = 1, 2, 24
SET_PARENT_DEATH_SIGNAL, BECOME_REAPER = 1, 36
NEW_MOUNT_NAMESPACE = 0x20000
SMALL_DISK = 512 * 1024  # bytes
STUBS = ("xdg-open", "pavucontrol")  # so that nothing else is started


def be_an_ordinary_program():
    """Runs in the child before the program: a file that cannot grow is an error and not a signal, and the
    administrator may write only what its permissions allow, like everybody."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    process = ctypes.CDLL(None)
    process.prctl(SET_PARENT_DEATH_SIGNAL, signal.SIGKILL)
    if os.geteuid() == 0:
        for capability in (CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH):
            process.prctl(DROP_CAPABILITY, capability, 0, 0, 0)


def mount_small_disk(folder):
    """A disk that only this process and its children see, and that ends with them. Returns whether that worked."""
    commands = (["mount", "--make-rprivate", "/"],
                ["mount", "-t", "tmpfs", "-o", f"size={SMALL_DISK}", "soak", str(folder)])
    if os.geteuid() != 0 or ctypes.CDLL(None).unshare(NEW_MOUNT_NAMESPACE) != 0:
        return False
    return all(subprocess.run(command, stderr=subprocess.DEVNULL, check=False).returncode == 0 for command in commands)


class Servers:
    """The running soak_servers."""

    def __init__(self, children, program, seed):
        self.process = children.start("servers", [program, DEMO / "loop.mp3", str(seed)], bufsize=0,
                                      stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.targets = []
        while (line := self._line()) != "ready":
            kind, _, address = line.partition(" ")
            if kind == "good":
                self.good = address
            else:
                self.targets.append(address)

    def order(self, what):
        self.process.stdin.write(what.encode() + b"\n")
        self.process.stdin.flush()
        if self._line() != "done":
            raise Failure("the radio servers did not obey")

    def _line(self):
        ready, _, _ = select.select([self.process.stdout], [], [], 30)
        line = self.process.stdout.readline().decode().strip() if ready else ""
        if not line:
            raise Failure("the radio servers are gone")
        return line


class World:
    def __init__(self, children, build, scratch, output, seed):
        self.children, self.build, self.scratch, self.output = children, build, scratch, output
        ctypes.CDLL(None).prctl(BECOME_REAPER, 1)
        self.servers = Servers(children, build / "bin" / "soak_servers", seed)
        self.display = start_screen(children)
        self.sound = NullSink(children, scratch / "sound")
        self.disk_is_small = self._make_folders()
        self.station_file = self.settings / "Funkhaus.ini"
        self.environment = {**os.environ, **self.sound.environment, "DISPLAY": self.display, "QT_QPA_PLATFORM": "xcb",
                            "APPDATA": str(scratch / "config"), "XDG_STATE_HOME": str(scratch / "config" / "state"),
                            "XDG_DATA_HOME": str(scratch / "data"), "XDG_MUSIC_DIR": str(scratch / "music"),
                            "HOME": str(scratch / "home"), "PATH": f"{scratch / 'bin'}:{os.environ['PATH']}"}
        self._start_bus()
        self.write_first_catalogue()

    def _make_folders(self):
        """Whether settings and state are on a small disk of their own, which only the administrator can make."""
        for name in ("config", "data", "music", "home", "lists", "bin"):
            (self.scratch / name).mkdir()
        for stub in STUBS:
            path = self.scratch / "bin" / stub
            path.write_text("#!/bin/sh\n")
            path.chmod(0o755)
        self.settings = self.scratch / "config" / "Ordnerzentrale"
        is_small = mount_small_disk(self.scratch / "config")
        self.settings.mkdir()
        return is_small

    def _start_bus(self):
        """Media keys come over it; without dbus-daemon there are none."""
        self.has_bus = shutil.which("dbus-daemon") is not None and shutil.which("gdbus") is not None
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={self.scratch / 'bus'}"
        if self.has_bus:
            self.children.start("bus", ["dbus-daemon", "--session", "--nofork", "--nopidfile",
                                        f"--address=unix:path={self.scratch / 'bus'}"])
            wait_for("the session bus", (self.scratch / "bus").exists, 20)

    def write_first_catalogue(self):
        addresses = [self.servers.good] * 6 + self.servers.targets + ["http://127.0.0.1:9/tot", "kein Link", ""]
        catalogue.replace(self.station_file, catalogue.make(addresses))

    def choose_view(self, number):
        """For the next start; "0" is all stations."""
        (self.settings / "Opt.ini").write_bytes(f"[Pfad3]\r\nFunkhausFavorit={number}\r\n".encode())

    def start(self, name, *arguments, program="funkhausplayer", **environment):
        (self.output / f"{name}.log").unlink(missing_ok=True)
        log = open(self.output / f"{name}.log", "wb")
        process = subprocess.Popen([self.build / "bin" / program, *arguments], stdin=subprocess.DEVNULL, stdout=log,
                                   stderr=log, env={**self.environment, **environment}, cwd=self.scratch / "home",
                                   preexec_fn=be_an_ordinary_program)
        log.close()
        self.children.running.append(process)
        return process

    def forget(self, process):
        self.children.running.remove(process)

    def learn_places(self, screen, wait_for_window):
        """Name -> (x, y, width, height) from the window's corner, of the main window and the new-station dialog,
        from the build that reports its controls."""
        report = Report(self.scratch / "report.txt")
        process = self.start("reporting", program="demo_player", FUNKHAUS_DEMO_REPORT=str(report.path))
        main = wait_for_window(process)
        wait_for("the report", lambda: report.find("Command8_5"), 60)
        places = self._offsets(report, "window")
        screen.focus(main.number)
        screen.key("ctrl+n")
        wait_for("the new-station dialog", lambda: report.find("dialog.CommandButton1"), 30)
        places.update(self._offsets(report, "dialog"))
        process.kill()
        process.wait()
        self.forget(process)
        return places

    @staticmethod
    def _offsets(report, window):
        controls = report.controls()
        corner = controls[window]
        return {name: (control.x - corner.x, control.y - corner.y, control.width, control.height)
                for name, control in controls.items()}

    def end(self):
        """Unmounts the small disk, so that the scratch folder can be removed."""
        if self.disk_is_small:
            subprocess.run(["umount", "-l", str(self.scratch / "config")], check=False)
