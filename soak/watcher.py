"""Watches a program from outside: whether its window answers, and what it needs. Judges nothing."""
import pathlib
import shutil
import subprocess
import threading
import time

from screen import Screen

DEAF = 3.5      # seconds without an answer to a window manager's ping
PAUSE = 0.2     # between two pings


class PingWatcher(threading.Thread):
    """Pings the main window again and again, on a connection of its own. `deaf_for(seconds, stack)` is called, on
    this thread, when an answer is missing for too long."""

    def __init__(self, display, output, deaf_for):
        super().__init__(daemon=True)
        self.screen, self.output, self.deaf_for = Screen(display), output, deaf_for
        self.screen.listen_for_answers()
        self.target = None  # (process id, window number) while there is one that has to answer
        self.longest, self.silent, self.ended = 0.0, 0.0, False

    def end(self):
        """Before the screen does."""
        self.ended = True
        self.join(10)

    def await_answer(self):
        """Nobody clicks faster than a window can look for longer than this."""
        while self.silent > 1.0 and self.silent < DEAF and not self.ended:
            time.sleep(PAUSE / 4)

    def run(self):
        """`sent` has for each ping that waits for its answer when it was sent, by a clock that stands still while the
        window's thread is ready and other programs have the processor."""
        mark, sent, told, of = 0, {}, False, None
        while not self.ended:
            target = self.target
            if target != of:
                sent, told, of = {}, False, target
            now = time.monotonic() - starved(target)
            for answered in self.screen.answers():
                if answered in sent:
                    self.longest = max(self.longest, now - sent[answered])
                    sent = {other: when for other, when in sent.items() if other > answered}
                    told = False
            if target:
                mark += 1
                sent[mark] = now
                self.screen.ping(target[1], mark)
                self.silent = now - min(sent.values())
                if self.silent > DEAF and not told and self.target == target:
                    told = True
                    self.deaf_for(self.silent, stack_of(target[0], self.output))
            else:
                self.silent = 0.0
            time.sleep(PAUSE)


def starved(target):
    """Seconds for which the main thread of a process has waited for a processor so far. See proc(5), schedstat."""
    try:
        text = pathlib.Path(f"/proc/{target[0]}/task/{target[0]}/schedstat").read_text() if target else "0 0"
        return int(text.split()[1]) / 1e9
    except (OSError, IndexError):
        return 0.0


def stack_of(process_id, output):
    """Where the stacks of the process were written, if gdb is there to read them."""
    if not shutil.which("gdb"):
        return "no gdb to read its stack"
    path = output / f"stacks-{process_id}-{int(time.monotonic())}.txt"
    with open(path, "wb") as file:
        subprocess.run(["gdb", "-p", str(process_id), "-batch", "-ex", "thread apply all backtrace 40"], stdout=file,
                       stderr=subprocess.DEVNULL, timeout=120, check=False)
    return str(path)


def needs(process_id):
    """(MB of resident memory, threads, open files), None when the process is gone."""
    folder = pathlib.Path(f"/proc/{process_id}")
    try:
        for line in (folder / "status").read_text().splitlines():
            if line.startswith("VmRSS:"):
                memory = int(line.split()[1]) / 1024
        return memory, len(list((folder / "task").iterdir())), len(list((folder / "fd").iterdir()))
    except (OSError, UnboundLocalError):
        return None


def thread_names(process_id):
    """How many threads there are of each name."""
    names = {}
    for task in pathlib.Path(f"/proc/{process_id}/task").glob("*/comm"):
        try:
            name = task.read_text().strip()
        except OSError:
            continue
        names[name] = names.get(name, 0) + 1
    return ", ".join(f"{count} {name}" for name, count in sorted(names.items()))
