"""A server dies for some seconds and comes back: how soon after that there is sound. Each player has a sound card
and a way to the station of its own, and all are cut off and readmitted at the same moments. A player that stays
silent for long after the first time has given up and is not asked again."""
import dataclasses
import time

import peers
from cost import NO_SOUND, start_rivals
from desktop import Failure, wait_for
from figures import Line, middle
from playing import NAME, Stage
from sound import Ear, Relay

MOST = 1.0  # seconds
AWAY = 12.0  # longer than what any of them has buffered of this station
PATIENCE = 20.0


@dataclasses.dataclass
class Player:
    ear: Ear
    relay: Relay


def first_heard(players, restored):
    """Notes for each player the first sound since then; those that were not heard in time are left out."""
    waiting, first = dict(players), {}
    while waiting and time.monotonic() < restored + PATIENCE:
        for name, player in list(waiting.items()):
            if heard := player.ear.heard_since(restored):
                first[name] = heard - restored
                del waiting[name]
        time.sleep(0.002)
    return first


def measure(arguments, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    relay = Relay(stage.address)
    stage.write_stations([(NAME, relay.address)])
    stage.start_program()
    players = {"own": Player(Ear(children, stage.sink), relay)}
    ways = {peer.name: Relay(stage.address) for peer in peers.PLAYERS}
    rivals, silent = start_rivals(stage, peers.PLAYERS, scratch, lambda peer: ways[peer.name].address)
    players.update((name, Player(Ear(children, sink), ways[name])) for name, (_, sink) in rivals.items())
    found = {name: [] for name in players}
    for _ in range(arguments.runs):
        time.sleep(5)
        for player in players.values():
            player.relay.cut()
        time.sleep(AWAY)
        for player in players.values():
            wait_for("silence", lambda player=player: player.ear.silent_for(0.5), 30)
        for player in players.values():
            restored = player.relay.restore()
        first = first_heard(players, restored)
        for name, seconds in first.items():
            found[name].append(seconds)
        if "own" not in first:
            raise Failure("the program was not heard again")
        players = {name: player for name, player in players.items() if name in first}
    own = found.pop("own")
    others = {name: times or f"never (within {PATIENCE:.0f} s)" for name, times in found.items()}
    others.update((name, NO_SOUND) for name in silent)
    return [Line("sound after a server's return", own, "s", f"at most {MOST}", middle(own) <= MOST, others, digits=2)]
