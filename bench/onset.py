"""From a double click, and from the Start button, to the sound; other players from their own start. Sound is what a
silent sound card's monitor brings. Each run begins at another part of a second, because the program asks a
whole-second clock. --steps prints where the time goes: between program and station is a relay that notes when each
connection comes and goes, and by its user agent what for."""
import random
import time

import peers
import playing
from desktop import Failure, NullSink, until, wait_for
from figures import Line, middle
from playing import NAME, Stage
from pointer import Pointer
from sound import Ear, Relay

MIDDLE, MOST = 750, 800  # ms
SERVICES = 500  # ms; the wait for the services, which is part of every start
PATIENCE = 30  # seconds, with another player


RIVALS = (peers.GST_PLAY, peers.AUDACIOUS, peers.VLC)


class Listener:
    """Starts the program's station in one of two ways and waits for its sound."""

    def __init__(self, stage, relay, print_steps):
        self.relay, self.print_steps = relay, print_steps
        (row,), (start, stop) = stage.places([NAME], ["Command1", "Command6"])
        self.program = stage.open_program()
        self.pointer, self.ear = Pointer(stage.display), Ear(stage.children, stage.sink)
        self.row, self.start, self.stop = row, start.middle, stop.middle

    def double_click(self):
        return self._until_heard(self.row, 2)

    def press_start(self):
        return self._until_heard(self.start, 1)

    def _until_heard(self, place, clicks):
        self.pointer.move(*place)
        time.sleep(1 + random.random())
        self.relay.events.clear()
        clicked = time.monotonic()
        self.pointer.click(times=clicks)
        heard = wait_for("sound", lambda: self.ear.heard_since(clicked), 30, pause=0.001)
        time.sleep(0.5)
        if self.print_steps:
            print(f"{(heard - clicked) * 1000:5.0f} ms: " + ", ".join(
                f"{(when - clicked) * 1000:.0f} {what}" for when, what in list(self.relay.events)
                if clicked <= when <= heard), flush=True)
        self.pointer.move(*self.stop)
        self.pointer.click()
        wait_for("silence", lambda: self.ear.silent_for(0.5), 30)
        if self.program.poll() is not None:
            raise Failure(f"the program ended with {self.program.returncode}")
        return (heard - clicked) * 1000


class Rivals:
    """Each is started with the station's address, on a sound card that the program does not use."""

    def __init__(self, stage, scratch):
        self.stage, self.scratch = stage, scratch
        sink = NullSink(stage.children, scratch / "rivals")
        self.ear = Ear(stage.children, sink)
        self.environment = {**stage.environment, **sink.environment}

    def milliseconds(self, peer):
        """Nothing when it was not heard in time."""
        started = time.monotonic()
        process = peers.start(self.stage.children, peer, self.stage.address, self.environment, self.scratch)
        heard = until(lambda: self.ear.heard_since(started), PATIENCE, pause=0.001)
        self.stage.children.finish(process)
        wait_for("silence", lambda: self.ear.silent_for(0.5), 30)
        if heard:
            return (heard - started) * 1000
        peers.missed(peer.name, f"no sound within {PATIENCE} s")
        return None


def measure(arguments, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    relay = Relay(stage.address)
    stage.write_stations([(NAME, relay.address)])
    listener, rivals = Listener(stage, relay, arguments.details), Rivals(stage, scratch)
    ways = {"double click": listener.double_click, "Start": listener.press_start,
            **{peer.name: lambda peer=peer: rivals.milliseconds(peer) for peer in RIVALS}}
    found = {name: [] for name in ways}
    for number in range(arguments.runs + 1):
        for name, way in ways.items():
            taken = way()
            if number and taken is not None:  # the first round fills caches
                found[name].append(taken)
    clicks, starts = found.pop("double click"), found.pop("Start")
    return [Line("Start to sound", starts, "ms", f"as it is, {SERVICES} of it described", None,
                 {f"{name} from its own start": times or f"no sound (within {PATIENCE} s)"
                  for name, times in found.items()}),
            Line("double click to sound", clicks, "ms", f"{MIDDLE}, worst {MOST}",
                 middle(clicks) <= MIDDLE and max(clicks) <= MOST)]
