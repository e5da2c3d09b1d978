"""What goes wrong around the program: its radio servers, its sound server, its settings folder, another program that
edits the station file. Each fault heals after a while. Not what the user does (user.py)."""
import os
import resource
import shutil
import time

import catalogue

SERVER_ORDERS = ("shuffle",) * 6 + ("down", "up", "up", "quiet", "loud", "loud")
LONGEST = {"sound": 5.0, "read-only": 3.0, "full": 3.0, "away": 2.0, "unreadable": 2.0}  # seconds
FOLDER_FAULTS = ("read-only", "full", "away", "unreadable")


class Faults:
    def __init__(self, world, judge, random):
        self.world, self.judge, self.random = world, judge, random
        self.count, self.by_kind = 0, {}
        self.running = {}  # kind -> when it heals
        self.edits = 0
        self.full_until = 0.0
        self.untouchable = b""  # the station file while it cannot be written
        self.elsewhere = world.settings.with_name("woanders")
        self.program = None
        self.a_start_is_under_way = lambda: False

    def strike(self, may_vanish):
        """Causes one fault: most often a server's."""
        self.heal_what_is_due()
        choice = self.random.random()
        if choice < 0.72:
            order = self.random.choice(SERVER_ORDERS)
            self.world.servers.order(order)
            return self._note(f"server {order}")
        if choice < 0.86 and not self.folder_is_ill():
            return self._edit(may_vanish)
        kind = self.random.choice([*FOLDER_FAULTS, "sound"])
        is_ill = kind in self.running or (kind != "sound" and self.folder_is_ill())
        # A start makes the folder when it is not there.
        if is_ill or (kind == "away" and self.a_start_is_under_way()):
            self.world.servers.order("shuffle")
            return self._note("server shuffle")
        getattr(self, "_start_" + kind.replace("-", "_"))()
        self.running[kind] = time.monotonic() + self.random.uniform(0.1, LONGEST[kind])
        return self._note(kind)

    def folder_is_ill(self):
        return any(kind in self.running for kind in FOLDER_FAULTS)

    def heal_what_is_due(self):
        for kind in [kind for kind, when in self.running.items() if when <= time.monotonic()]:
            self._heal(kind)

    def heal_all(self):
        for kind in list(self.running):
            self._heal(kind)
        for order in ("up", "loud"):
            self.world.servers.order(order)

    def _heal(self, kind):
        del self.running[kind]
        getattr(self, "_end_" + kind.replace("-", "_"))()

    def _note(self, kind):
        self.count += 1
        self.by_kind[kind] = self.by_kind.get(kind, 0) + 1
        return kind

    def _edit(self, may_vanish):
        self.edits += 1
        try:
            catalogue.edit_from_outside(self.world.station_file, self.judge, may_vanish, f"Fremdsender {self.edits}",
                                        self.edits)
        except OSError:
            return None  # The little disk has no room for it.
        return self._note("edited from outside")

    def _start_sound(self):
        self.world.sound.server.kill()
        self.world.sound.server.wait()
        self.world.forget(self.world.sound.server)

    def _end_sound(self):
        self.world.sound.start()

    def _start_read_only(self):
        self.world.settings.chmod(0o555)
        self.untouchable = self.world.station_file.read_bytes()

    def _end_read_only(self):
        self._expect_untouched(self.world.station_file)
        self.world.settings.chmod(0o755)

    def _start_unreadable(self):
        self.world.station_file.chmod(0)

    def _end_unreadable(self):
        self.world.station_file.chmod(0o644)

    def _start_full(self):
        """A disk without room; for those who cannot make one, files that cannot grow."""
        if not self.world.disk_is_small:
            self._limit_files(1000)
            return
        ballast = self.world.settings.parent / "ballast"
        with open(ballast, "wb", buffering=0) as file:
            try:
                while file.write(bytes(4096)):
                    pass
            except OSError:
                pass

    def _end_full(self):
        self.full_until = time.monotonic()
        if self.world.disk_is_small:
            (self.world.settings.parent / "ballast").unlink()
        else:
            self._limit_files(resource.RLIM_INFINITY)

    def _limit_files(self, size):
        try:
            hard = resource.prlimit(self.program.pid, resource.RLIMIT_FSIZE)[1]
            resource.prlimit(self.program.pid, resource.RLIMIT_FSIZE, (size, hard))
        except ProcessLookupError:
            pass

    def _start_away(self):
        os.rename(self.world.settings, self.elsewhere)
        self.untouchable = (self.elsewhere / self.world.station_file.name).read_bytes()

    def _end_away(self):
        if self.world.settings.exists():
            self.judge.fail("lost", "the settings folder was made anew while it was away")
            shutil.rmtree(self.world.settings)
        self._expect_untouched(self.elsewhere / self.world.station_file.name)
        os.rename(self.elsewhere, self.world.settings)

    def _expect_untouched(self, station_file):
        """Nobody can have written it, so every comment and every foreign key is there, whatever the user has done."""
        if station_file.read_bytes() != self.untouchable:
            self.judge.fail("lost", "the station file changed while nobody could write it")
