#!/usr/bin/env python3
"""Soaks the program: a random user in front of it, faults all around it, and a judge who looks on from outside.

Usage: soak.py BUILD_FOLDER OUTPUT_FOLDER [--minutes N] [--seed N] [--sanitized]

The program runs in sessions, each from a start to an end: a close with Yes or No, a signal, a kill. A session is
gentle or rough (user.py). Judged are

- crashes: an end that nobody asked for, an exit code, a line of a sanitizer, also of the recording tools and of later
  starts;
- hangs: no answer to a window manager's ping for 3.5 s, the time not counted for which other programs had the processor
  (watcher.py), or no reaction to a key within 20 s;
- rows lost: while the user is gentle no station may vanish from the station file, and none of its lines may change but
  the mark and the number, which saving normalises; nor by the next start and its save. A rough user's stations may
  vanish, or lose their comments and foreign keys by being written anew, one for each action at most. What was entered
  and not saved before a kill must be in the file once the next session has saved (catalogue.py, user.py). While its
  folder is away or read-only nothing in the file may change (faults.py);
- torn files: every look at the station file finds whole lines, each section once, the comment at its head;
- leftovers: temporary files that are there when a start's window is;
- growth: memory, threads and open files at rest (stopped, nothing open), within one gentle session.

The random choices are those of the seed; the moments at which they meet the program are not. So a repetition with the
same seed does the same things to a program that may be at another point. The exit code is 1 if anything failed.
"""
import argparse
import collections
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "demo"))
sys.path.insert(0, str(ROOT / "soak"))
import catalogue  # noqa: E402
from desktop import Children, Failure, screenshot, wait_for  # noqa: E402
from faults import Faults  # noqa: E402
from screen import Screen, lost  # noqa: E402
from user import User  # noqa: E402
from watcher import PingWatcher, needs, stack_of, thread_names  # noqa: E402
from world import World  # noqa: E402

ACTIONS_A_FAULT = 8
REST_EVERY = 20.0                       # seconds
LONGEST_SESSION = 120.0                 # seconds
MOST_STATIONS = 160
LONGEST_IDLENESS = 30.0                 # seconds
START_LIMIT, END_LIMIT = 30.0, 30.0     # seconds
MOST_MEMORY, MOST_THREADS, MOST_FILES = 12.0, 4, 6  # growth at rest within a session
# How a session ends: closed at rest with Yes or No, closed or asked to end in the middle of everything, killed.
ENDS = ("yes", "no", "abrupt", "abrupt", "kill", "kill", "term")
SANITIZERS = ("AddressSanitizer", "runtime error:", "LeakSanitizer")


def next_ended_child():
    """A child that has ended; it still can be waited for. None without one."""
    try:
        return os.waitid(os.P_ALL, 0, os.WEXITED | os.WNOHANG | os.WNOWAIT)
    except ChildProcessError:
        return None


def is_child(process_id):
    try:
        status = pathlib.Path(f"/proc/{process_id}/status").read_text()
    except OSError:
        return False
    return f"PPid:\t{os.getpid()}\n" in status


class Soak:
    def __init__(self, world, arguments):
        self.world, self.arguments = world, arguments
        self.random = random.Random(arguments.seed)
        self.output = arguments.output
        self.failures = collections.Counter()
        self.last = collections.deque(maxlen=40)
        self.actions_file = open(self.output / "actions.txt", "w", encoding="utf-8")
        self.screen = Screen(world.display)
        self.judge = catalogue.Judge(world.station_file, self.fail)
        self.faults = Faults(world, self.judge, self.random)
        self.watcher = PingWatcher(world.display, self.output,
                                   lambda seconds, stack: self.fail("hang", f"deaf for {seconds:.1f} s; {stack}"))
        self.watcher.start()
        places = world.learn_places(self.screen, self.wait_for_window)
        self.user = User(world, self.screen, self.faults, self.random, places, self.note)
        self.faults.a_start_is_under_way = self.user.a_start_is_under_way
        self.sessions, self.rests, self.first_rest, self.last_rest = 0, [], None, None
        self.program, self.ended_by, self.ended_at = None, None, None

    # What is noted

    def note(self, what):
        line = f"{self.user.actions:6d} {time.monotonic() - self.started:8.2f} {what}"
        self.last.append(line)
        self.actions_file.write(line + "\n")

    def fail(self, kind, what):
        self.failures[kind] += 1
        print(f"FAILED ({kind}, session {self.sessions}): {what}", flush=True)
        if self.failures[kind] > 3:
            return
        print("".join(f"    {line}\n" for line in list(self.last)[-12:]), flush=True)
        try:
            screenshot(self.world.display, self.output / f"{kind}-{self.failures[kind]}.png")
        except (OSError, subprocess.CalledProcessError):
            pass

    # A session

    def wait_for_window(self, process):
        def window():
            if process.poll() is not None:
                raise Failure(f"the program ended with {process.returncode} before it had a window")
            mine = [window for window in self.screen.windows() if window.process == process.pid and not window.popup]
            return next((window for window in mine if window.width > 500), None)
        return wait_for("the window", window, START_LIMIT, pause=0.05)

    def session(self, rough, seconds):
        self.sessions += 1
        self.open(rough)
        end, next_rest = time.monotonic() + seconds, time.monotonic() + REST_EVERY
        while time.monotonic() < end and self.program.poll() is None:
            self.watcher.await_answer()
            self.user.act()
            self.faults.heal_what_is_due()
            if self.random.randrange(ACTIONS_A_FAULT) == 0:
                struck = self.faults.strike(1 if rough else None)
                self.note(f"-- {struck}")
            self.judge.look(1 if rough else None)
            if time.monotonic() > next_rest:
                self.rest()
                next_rest = time.monotonic() + REST_EVERY
            time.sleep(self.random.choice((0.0, 0.01, 0.03, 0.1)))
        self.close(rough)

    def open(self, rough):
        self.world.choose_view("0")
        self.program = self.world.start(f"player-{self.sessions}")
        self.faults.program = self.program
        main = self.wait_for_window(self.program)
        leftovers = [str(path) for path in (self.world.scratch / "config").rglob("*.tmp")]
        if leftovers:
            self.fail("leftover", f"temporary files after a start: {leftovers}")
        self.watcher.target = (self.program.pid, main.number)
        self.user.meet(self.program, main, rough)
        self.user.settle()
        self.user.settle()
        if rough:  # The session before was gentle.
            self.judge.look(None)
        self.judge.forget()
        self.judge.look(None)
        self.check_promises()
        self.rests = []
        self.rest()

    def check_promises(self):
        """After a full disk, all that is expected is that what was entered is written a few seconds later."""
        disk_was_full = self.faults.full_until > self.ended_at - 5 if self.ended_at else False
        if self.ended_by == "kill" and not disk_was_full:
            for name, entered in self.user.promised.items():
                if entered < self.ended_at - 3 and not self.judge.contains(name):
                    age = self.ended_at - entered
                    self.fail("lost", f"[{name}], entered {age:.1f} s before a kill, did not come back")
        self.user.promised.clear()

    def rest(self):
        """Stopped, nothing open, no fault: what the program needs then."""
        self.faults.heal_all()
        self.user.settle()
        self.user.close_others()
        self.reap_orphans()
        if self.program.poll() is not None:
            return
        time.sleep(1.0)
        found = needs(self.program.pid)
        if found is None:
            return
        self.rests.append(found)
        self.first_rest, self.last_rest = self.first_rest or found, found
        names = thread_names(self.program.pid)
        self.note(f"-- at rest {found[0]:.1f} MB, {found[1]} threads, {found[2]} files; {names}")

    def close(self, rough):
        self.ended_by = self.random.choice(ENDS)
        if self.ended_by != "abrupt":
            self.user.await_starts()
        if self.ended_by in ("yes", "no"):
            self.rest()
        if not rough:
            self.judge_growth(is_at_rest=self.ended_by in ("yes", "no"))
        if self.program.poll() is not None:
            self.ended_by = "itself"
            self.fail("crash", f"the program ended with {self.program.returncode}")
        else:
            self.end_program()
        self.watcher.target = None
        self.faults.heal_all()
        self.judge.look(1 if rough else None)
        self.judge_log()
        self.world.forget(self.program)
        for name, code in self.user.end_starts():
            self.fail("crash", f"a {name} ended with {code}")
        self.end_recorders()
        if len(self.judge.known) > MOST_STATIONS or len(self.judge.known) < 30:
            self.world.write_first_catalogue()
            self.judge.forget()

    def end_program(self):
        self.note(f"-- ended by {self.ended_by}")
        self.ended_at = time.monotonic()
        if self.ended_by == "kill":
            self.watcher.target = None
            self.program.kill()
        elif self.ended_by == "term":
            self.program.terminate()
        end = self.ended_at + END_LIMIT
        while self.program.poll() is None and time.monotonic() < end:
            if self.ended_by not in ("kill", "term"):
                self.screen.close(self.user.main.number)  # again: a dialog may have been in the way
            dialog = self.user.dialog(self.user.windows())
            if dialog and self.ended_by != "term":
                self.screen.focus(dialog.number)
                keys = {"yes": ("Return",), "no": ("alt+n", "Return")}.get(self.ended_by, ("alt+n", "Return", "Escape"))
                self.screen.key(self.random.choice(keys))
            time.sleep(0.2)
        if self.program.poll() is None:
            self.fail("hang", f"the program did not end within {END_LIMIT:g} s by {self.ended_by}")
            self.program.kill()
        code = self.program.wait()
        wanted = -signal.SIGKILL if self.ended_by == "kill" else 0
        if code != wanted:
            self.fail("crash", f"the program ended with {code}, by {self.ended_by}")

    def judge_log(self):
        text = (self.output / f"player-{self.sessions}.log").read_text(encoding="utf-8", errors="replace")
        found = next((line for line in text.splitlines() if any(word in line for word in SANITIZERS)), None)
        if found:
            self.fail("sanitizer", f"{found} (player-{self.sessions}.log)")

    def judge_growth(self, is_at_rest):
        """From the third rest on, when what is loaded once is there. Threads that libraries keep for their next work
        end after some time of idleness, so they are judged only in a session that ends at rest."""
        if len(self.rests) < 4 or self.program.poll() is not None:
            return
        start, end = self.rests[2], self.rests[-1]
        endless = float("inf")
        limits = (endless if self.arguments.sanitized else MOST_MEMORY,
                  MOST_THREADS if is_at_rest else endless, MOST_FILES if is_at_rest else endless)
        patience = time.monotonic() + LONGEST_IDLENESS
        while is_at_rest and self.exceeds(start, end, limits) and time.monotonic() < patience:
            time.sleep(1)
            end = needs(self.program.pid) or end
        print(f"session {self.sessions}: at rest {start[0]:.1f} -> {end[0]:.1f} MB, {start[1]} -> {end[1]} threads, "
              f"{start[2]} -> {end[2]} files", flush=True)
        if self.exceeds(start, end, limits):
            self.fail("growth", f"from {start} to {end} within a session; {stack_of(self.program.pid, self.output)}")

    @staticmethod
    def exceeds(start, end, limits):
        return any(last - first > limit for first, last, limit in zip(start, end, limits))

    def end_recorders(self):
        for entry in pathlib.Path("/proc").iterdir():
            if entry.name.isdigit() and self.user.is_recorder(int(entry.name)) and is_child(int(entry.name)):
                os.kill(int(entry.name), signal.SIGTERM)
        self.reap_orphans()

    def reap_orphans(self):
        """What the program started becomes this process's child when the program has ended or released it."""
        mine = {child.pid: child for child in self.world.children.running}
        mine.update({child.pid: child for _, child in self.user.spawned})
        for child in mine.values():
            child.poll()
        while (found := next_ended_child()) is not None:
            if found.si_pid in mine:
                mine[found.si_pid].poll()
                continue
            name = pathlib.Path(f"/proc/{found.si_pid}/comm").read_text().strip()
            code = os.waitstatus_to_exitcode(os.waitpid(found.si_pid, 0)[1])
            if name.startswith("OZRecord") and code not in (0, 1, -signal.SIGTERM):
                self.fail("crash", f"a recording tool ended with {code}")

    # All of it

    def run(self):
        self.started = time.monotonic()
        seconds = self.arguments.minutes * 60
        length = min(LONGEST_SESSION, max(12.0, seconds / 4))
        while (left := seconds - (time.monotonic() - self.started)) > 5:
            rough = self.sessions % 2 == 1
            try:
                self.session(rough, min(length / 4 if rough and length > 60 else length, left))
            except Failure as failure:
                self.fail("hang", str(failure))
                self.give_up_session()
        self.actions_file.close()
        return self.summary()

    def give_up_session(self):
        self.watcher.target = None
        self.faults.heal_all()
        self.ended_by = "itself"
        if self.program in self.world.children.running:
            self.program.kill()
            self.program.wait()
            self.world.forget(self.program)

    def summary(self):
        took = time.monotonic() - self.started
        counted = ", ".join(f"{self.failures[kind]} {kind}" for kind in ("crash", "hang", "lost", "torn", "leftover",
                                                                          "growth", "sanitizer"))
        print(f"seed {self.arguments.seed}: {took:.0f} s, {self.sessions} sessions, {self.user.actions} actions, "
              f"{self.faults.count} faults, {self.judge.looks} looks at a changed station file")
        print("faults: " + ", ".join(f"{count} {kind}" for kind, count in sorted(self.faults.by_kind.items())))
        if self.first_rest:
            print("at rest, first and last: " + " -> ".join(
                f"{memory:.1f} MB, {threads} threads, {files} files"
                for memory, threads, files in (self.first_rest, self.last_rest)))
        print(f"longest without an answer {self.watcher.longest:.2f} s; failures: {counted}")
        if not self.failures:
            return 0
        sanitized = " --sanitize" if self.arguments.sanitized else ""
        print(f"To repeat it: scripts/soak {self.arguments.minutes:g} --seed {self.arguments.seed}{sanitized}\n"
              f"Actions, logs, stacks and pictures: {self.output}")
        return 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for logs")
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1_000_000))
    parser.add_argument("--sanitized", action="store_true", help="the build has sanitizers, which need memory")
    arguments = parser.parse_args()
    arguments.build, arguments.output = arguments.build.resolve(), arguments.output.resolve()
    arguments.output.mkdir(parents=True, exist_ok=True)
    for old in arguments.output.iterdir():
        if old.is_file():
            old.unlink()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    children = Children(arguments.output)
    with tempfile.TemporaryDirectory(prefix="funkhaus-soak-") as scratch:
        world = soak = None
        try:
            print(f"seed {arguments.seed}", flush=True)
            lost[0] = children.end
            world = World(children, arguments.build, pathlib.Path(scratch), arguments.output, arguments.seed)
            soak = Soak(world, arguments)
            return soak.run()
        except Failure as failure:
            print(f"Could not soak: {failure}")
            return 2
        finally:
            if soak:
                soak.watcher.end()
            children.end()
            if world:
                world.end()


if __name__ == "__main__":
    sys.exit(main())
