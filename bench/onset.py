#!/usr/bin/env python3
"""The time from a double click on a station to its sound, and where it goes.

Usage: onset.py BUILD_FOLDER OUTPUT_FOLDER [--runs N]

The program plays a station of this machine on a silent sound card, is stopped, and is started again by a double click
on the same row. Sound is what the card's monitor brings. Between program and station stands a relay that notes when
each connection comes and goes, and by its user agent what for. Each run begins at another part of a second, because
the program asks a whole-second clock.
"""
import argparse
import array
import os
import pathlib
import random
import select
import socket
import subprocess
import sys
import threading
import time
from urllib.parse import urlsplit

import playing
from playing import NAME, Stage, measure
from pointer import Pointer
from desktop import Failure, wait_for

MOST = 0.8  # seconds
HEARD = 300  # of 32767; silence is 0


class Relay:
    """Passes connections on to a station."""

    def __init__(self, address):
        parts = urlsplit(address)
        self.target = parts.hostname, parts.port
        self.events = []  # (when, what)
        self.socket = socket.socket()
        self.socket.bind(("127.0.0.1", 0))
        self.socket.listen(16)
        self.address = f"http://127.0.0.1:{self.socket.getsockname()[1]}{parts.path}"
        threading.Thread(target=self._accept, daemon=True).start()

    def _accept(self):
        while True:
            connection, _ = self.socket.accept()
            threading.Thread(target=self._pass_on, args=(connection,), daemon=True).start()

    def _pass_on(self, client):
        with client, socket.create_connection(self.target) as station:
            agent, request = None, b""
            while True:
                ready, _, _ = select.select([client, station], [], [])
                try:
                    if client in ready:
                        piece = client.recv(65536)
                        if not piece:
                            break
                        request += piece
                        if agent is None and b"\r\n\r\n" in request:
                            agent = next((line.partition(":")[2].strip() for line in request.decode().split("\r\n")
                                          if line.lower().startswith("user-agent:")), "no agent")
                            self.events.append((time.monotonic(), f"asked by {agent}"))
                        station.sendall(piece)
                    if station in ready:
                        piece = station.recv(65536)
                        if not piece:
                            break
                        client.sendall(piece)
                except OSError:
                    break
            self.events.append((time.monotonic(), f"left by {agent}"))


class Ear:
    """Notes when the sound card's monitor was loud and when it was silent last."""

    def __init__(self, children, sink):
        self.loud = self.silent = 0.0
        self.recorder = children.start("ear", ["parec", "-d", "demo.monitor", "--format=s16le", "--rate=48000",
                                               "--channels=2", "--latency-msec=10"], stdout=subprocess.PIPE,
                                       env={**os.environ, **sink.environment})
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        while piece := os.read(self.recorder.stdout.fileno(), 65536):
            samples = array.array("h", piece[:len(piece) // 2 * 2])
            if max(map(abs, samples), default=0) >= HEARD:
                self.loud = time.monotonic()
            else:
                self.silent = time.monotonic()

    def heard_since(self, when):
        return self.loud if self.loud > when else None

    def silent_for(self, seconds):
        return self.silent - self.loud > seconds


def run(arguments, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    relay = Relay(stage.address)
    playing.write_catalogue(scratch / "relayed" / "Ordnerzentrale" / "Funkhaus.ini",
                            [(NAME, relay.address, "Pop & Hits", "", "")])
    (row,), (stop,) = stage.places([NAME], ["Command6"])
    stage.environment["APPDATA"] = str(scratch / "relayed")
    program = stage.open_program()
    pointer, ear = Pointer(stage.display), Ear(children, stage.sink)
    wait_for("the card's monitor", lambda: ear.silent_for(0), 20)
    times = []
    for number in range(arguments.runs + 1):
        pointer.move(*row)
        time.sleep(1 + random.random())
        relay.events.clear()
        clicked = time.monotonic()
        pointer.click(times=2)
        heard = wait_for("sound", lambda: ear.heard_since(clicked), 30, pause=0.001)
        time.sleep(0.5)
        steps = ", ".join(f"{(when - clicked) * 1000:.0f} {what}" for when, what in list(relay.events)
                          if clicked <= when <= heard)
        note = "" if number else " (first of the program, not counted)"
        print(f"{(heard - clicked) * 1000:5.0f} ms{note}: {steps}", flush=True)
        if number:
            times.append(heard - clicked)
        pointer.move(*stop.middle)
        pointer.click()
        wait_for("silence", lambda: ear.silent_for(0.5), 30)
        if program.poll() is not None:
            raise Failure(f"the program ended with {program.returncode}")
    times.sort()
    print(f"{len(times)} runs: {times[0] * 1000:.0f} to {times[-1] * 1000:.0f} ms, in the middle "
          f"{times[len(times) // 2] * 1000:.0f} ms (at most {MOST * 1000:.0f} ms)")
    return 0 if times[-1] <= MOST else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for logs")
    parser.add_argument("--runs", type=int, default=10)
    arguments = parser.parse_args()
    return measure(run, arguments)


if __name__ == "__main__":
    sys.exit(main())
