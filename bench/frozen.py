"""How long the window is frozen while a station is selected whose server accepts and never answers.

First a station with titles is selected and polling is switched on (right click on "Alle Titel anzeigen"), then the
silent one. From that click on the mute box is clicked again and again: the window is frozen from a click to the moment
at which the box on the screen looks different, when that takes longer than DEAF. What the click does may come later:
widgets take input in every wait, and its turn comes behind it."""
import socket
import threading
import time

from desktop import Failure, wait_for
from figures import Line
from playing import NAME, Stage
from pointer import RIGHT, Pointer

SILENT = "Stille Station"
DEAF = 0.1  # seconds; a window that works answers within a few hundredths
PAUSE = 0.02  # between two clicks
SECONDS = 60.0
MOST_IN_ALL, MOST_AT_ONCE = 6.0, 3.5  # seconds of them


class SilentServer:
    """Accepts every connection, reads what is asked and never answers."""

    def __init__(self):
        self.asked = []  # (when, the user agent's line)
        self.socket = socket.socket()
        self.socket.bind(("127.0.0.1", 0))
        self.socket.listen(16)
        self.address = f"http://127.0.0.1:{self.socket.getsockname()[1]}/still"
        threading.Thread(target=self._accept, daemon=True).start()

    def _accept(self):
        while True:
            connection, _ = self.socket.accept()
            threading.Thread(target=self._listen, args=(connection,), daemon=True).start()

    def _listen(self, connection):
        request = b""
        with connection:
            while piece := connection.recv(4096):
                request += piece
                if request.endswith(b"\r\n\r\n"):
                    agent = next((line for line in request.decode("latin-1").split("\r\n")
                                  if line.lower().startswith("user-agent:")), "no agent")
                    self.asked.append((time.monotonic(), agent.partition(":")[2].strip()))


class Probe:
    """Clicks a box and waits until it looks different."""

    def __init__(self, pointer, box):
        self.pointer, self.box = pointer, box
        self.area = (box.x, box.y, min(box.width, 24), box.height)

    def point(self):
        self.pointer.move(self.box.x + 8, self.box.middle[1])

    def reaction(self, limit):
        """Seconds from the click to the change."""
        before = self.pointer.look(*self.area)
        clicked = time.monotonic()
        self.pointer.click()
        while self.pointer.look(*self.area) == before:
            if time.monotonic() - clicked > limit:
                raise Failure(f"the box did not change within {limit:.0f} s")
            time.sleep(0.002)
        return time.monotonic() - clicked

    def settle(self):
        """Until the look of a pressed box, or of one under the pointer, is gone."""
        last, since = self.pointer.look(*self.area), time.monotonic()
        while time.monotonic() - since < 0.3:
            time.sleep(0.02)
            seen = self.pointer.look(*self.area)
            if seen != last:
                last, since = seen, time.monotonic()


def probe_for(probe, started, seconds):
    """(seconds since the start, length) of every time in which the window was frozen."""
    deaf, reactions = [], []
    while (now := time.monotonic() - started) < seconds:
        reaction = probe.reaction(60)
        reactions.append(reaction)
        if reaction > DEAF:
            deaf.append((now, reaction))
        time.sleep(PAUSE)
    return deaf, sorted(reactions)


def select_both(stage, pointer, probe, server, places):
    """Selects the live station, has its title polled, and selects the silent one; the moment of that click."""
    live, silent, titles = places
    pointer.move(*live)
    pointer.click()
    wait_for("the station's title", lambda: stage.station.lines("title "), 60)
    pointer.move(*titles.middle)
    pointer.click(RIGHT)
    served = len(stage.station.lines("title "))
    wait_for("the polling", lambda: len(stage.station.lines("title ")) > served + 1, 60)
    probe.point()
    probe.settle()
    pointer.move(*silent)
    server.asked.clear()
    pointer.click()
    return time.monotonic()


def measure(arguments, children, scratch):
    server = SilentServer()
    stage = Stage(children, arguments.build, scratch, arguments.output, [(SILENT, server.address)])
    (live, silent), (titles, mute) = stage.places([NAME, SILENT], ["Command3", "ckSavMute"])
    program = stage.open_program()
    pointer = Pointer(stage.display)
    probe = Probe(pointer, mute)
    started = select_both(stage, pointer, probe, server, (live, silent, titles))
    probe.point()
    deaf, _ = probe_for(probe, started, SECONDS)
    if program.poll() is not None:
        raise Failure(f"the program ended with {program.returncode}")
    if arguments.details:
        for when, length in deaf:
            print(f"frozen from {when:5.1f} s for {length:5.2f} s")
        for when, agent in server.asked:
            print(f"asked at {when - started:5.1f} s by {agent}", flush=True)
    total, longest = sum(length for _, length in deaf), max((length for _, length in deaf), default=0.0)
    return [Line(f"window frozen, in {SECONDS:.0f} s with a silent server", [total], "s", f"at most {MOST_IN_ALL:g}",
                 total <= MOST_IN_ALL, digits=1),
            Line("the longest of it at once", [longest], "s", f"at most {MOST_AT_ONCE:g}", longest <= MOST_AT_ONCE,
                 digits=1)]
