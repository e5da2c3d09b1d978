"""From starting a program to the first painted pixel of its window, everything in memory already; the program with
300 stations. Starts the programs in turn."""
import os
import time

import peers
from desktop import Failure, NullSink, start_screen
from figures import Line, ratio
from playing import session_bus, write_catalogue
from screen_watch import ScreenWatch

STATIONS = 300
MOST_RATIO = 1.4
OWN, EMPTY = "own", "empty window"
RIVALS = (peers.AUDACIOUS, peers.VLC, peers.GOODVIBES)


def stations(count):
    genres = ("Pop & Hits", "Rock", "Oldies", "Klassik")
    return [(f"Sender {number * 7919 % 1009:04}", f"http://127.0.0.1:9/{number}", genres[number % 4],
             "1" if number % 10 == 0 else "", "") for number in range(count)]


class Starter:
    def __init__(self, arguments, children, scratch):
        self.children, self.scratch = children, scratch
        display = start_screen(children)
        self.watch = ScreenWatch(display)
        sink = NullSink(children, scratch / "sound")
        self.environment = {**os.environ, **sink.environment, **session_bus(children, scratch), "DISPLAY": display,
                            "QT_QPA_PLATFORM": "xcb"}
        programs = arguments.build / "bin"
        write_catalogue(scratch / "settings" / "Ordnerzentrale" / "Funkhaus.ini", stations(STATIONS))
        own = {**self.environment, **peers.home(scratch / "own"), "APPDATA": str(scratch / "settings")}
        self.ways = {
            OWN: lambda: children.start("player", [programs / "funkhausplayer"], env=own),
            EMPTY: lambda: children.start("empty", [programs / "bench_empty_window"], env=own),
        }
        for peer in RIVALS:
            self.ways[peer.name] = lambda peer=peer: peers.start(children, peer, None, self.environment, scratch)

    def milliseconds(self, name):
        """Nothing when it is another player, and no window of it was seen."""
        self.watch.forget()
        started = time.monotonic()
        process = self.ways[name]()
        try:
            painted = self.watch.wait_until_painted(process, 30)
        except Failure as failure:
            if name in (OWN, EMPTY):
                raise
            peers.missed(name, failure)
            return None
        finally:
            time.sleep(0.3)  # what it still does then is not to meet the next start
            self.children.finish(process)
            time.sleep(0.1)
        return (painted - started) * 1000


def measure(arguments, children, scratch):
    starter = Starter(arguments, children, scratch)
    names = list(starter.ways)
    found = {name: [] for name in names}
    for number in range(arguments.runs + 1):
        for name in names:
            taken = starter.milliseconds(name)
            if number and taken is not None:  # the first round fills caches
                found[name].append(taken)
    own = found.pop(OWN)
    times = ratio(own, found[EMPTY])
    return [Line(f"start to window, {STATIONS} stations", own, "ms",
                 f"at most {MOST_RATIO} times the empty window: {times:.2f}", times <= MOST_RATIO,
                 {name: times or "no window" for name, times in found.items()})]
