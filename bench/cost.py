"""Processor time and memory of the program while it plays with its window open and its bars moving, and those of
other players meanwhile: all play the same stream of 128 kbit/s MP3 at the same time, each on a sound card of its own,
because two listeners at one card change how often it wakes each of them. What happens once, at the start, does not
count."""
import time

import peers
from desktop import Failure, NullSink, until
from figures import Line, middle
from playing import AUDIBLE, Meter, Stage, memory_megabytes

MOST_SECONDS = 0.8  # of processor time, each minute
MOST_MEGABYTES = 60
MINUTE = 60.0


NO_SOUND = "no sound"
FELL_SILENT = "ended or fell silent"


def start_rival(stage, peer, scratch, address):
    """The process and its sound card; nothing when it was not heard in a minute."""
    sink = NullSink(stage.children, scratch / f"card-{peer.name}")
    process = peers.start(stage.children, peer, address, {**stage.environment, **sink.environment}, scratch)
    if not until(lambda: sink.loudness() > AUDIBLE, 60, pause=0):
        stage.children.finish(process)
        peers.missed(peer.name, NO_SOUND)
        return None
    return process, sink


def start_rivals(stage, chosen, scratch, address_for):
    """Name -> (process, sound card) of those that are heard, and the names of the others."""
    started = {peer.name: start_rival(stage, peer, scratch, address_for(peer)) for peer in chosen}
    return ({name: rival for name, rival in started.items() if rival},
            [name for name, rival in started.items() if not rival])


def meet(players, seconds):
    """Name -> seconds of processor time, scaled to a minute."""
    meters = {name: Meter(process.pid) for name, (process, _) in players.items()}
    time.sleep(seconds)
    return {name: meter.seconds() * MINUTE / seconds for name, meter in meters.items()}, meters["own"].by_thread()


def drop_silent(players):
    """Removes the others that are not heard any more, and returns their names."""
    silent = [name for name, (process, sink) in players.items()
              if process.poll() is not None or sink.loudness() < AUDIBLE]
    if "own" in silent:
        raise Failure("the program ended or fell silent")
    for name in silent:
        peers.missed(name, FELL_SILENT)
        del players[name]
    return silent


def measure(arguments, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    players = {"own": (stage.start_program(), stage.sink)}
    chosen = [peer for peer in peers.PLAYERS if not arguments.alone]
    rivals, silent = start_rivals(stage, chosen, scratch, lambda _: stage.address)
    players.update(rivals)
    time.sleep(5)
    used = {name: [] for name in players}
    for _ in range(arguments.runs):
        once, by_thread = meet(players, arguments.seconds)
        for name, seconds in once.items():
            used[name].append(seconds)
        if arguments.details:
            print(", ".join(f"{name} {spent:.2f}" for name, spent in by_thread if spent >= 0.01), flush=True)
    fallen = drop_silent(players)
    memory = {name: [memory_megabytes(process.pid)] for name, (process, _) in players.items()}
    hidden = []
    stage.hide(players["own"][0])
    for _ in range(min(arguments.runs, 2)):
        hidden.append(meet(players, arguments.seconds)[0]["own"])
    fallen += drop_silent(players)
    for numbers in (used, memory):
        numbers.update((name, NO_SOUND) for name in silent)
        numbers.update((name, FELL_SILENT) for name in fallen)
    own, own_memory = used.pop("own"), memory.pop("own")
    return [Line("processor per 60 s of playing, bars moving", own, "s", f"at most {MOST_SECONDS}",
                 middle(own) <= MOST_SECONDS, used, digits=2),
            Line("the same, window hidden", hidden, "s", "", None, digits=2),
            Line("memory while playing (resident)", own_memory, "MB", f"at most {MOST_MEGABYTES}",
                 own_memory[0] <= MOST_MEGABYTES, memory)]
