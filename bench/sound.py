"""What a silent sound card is heard to play, and a way to a station that can be cut. Not for a person's ears."""
import array
import os
import select
import socket
import subprocess
import threading
import time
from urllib.parse import urlsplit

from desktop import wait_for

HEARD = 300  # of 32767; silence is 0


class Relay:
    """Passes connections on to a station, while it is up."""

    def __init__(self, address):
        parts = urlsplit(address)
        self.target = parts.hostname, parts.port
        self.events = []  # (when, what)
        self.listener = self._listen(0)
        self.port = self.listener.getsockname()[1]
        self.address = f"http://127.0.0.1:{self.port}{parts.path}"
        self.passing = set()

    def _listen(self, port):
        listener = socket.create_server(("127.0.0.1", port), backlog=16)
        threading.Thread(target=self._accept, args=(listener,), daemon=True).start()
        return listener

    def cut(self):
        """As if the server had died: its connections break off, new ones are refused."""
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()
        for client in list(self.passing):
            try:
                client.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass

    def restore(self):
        """At the same port; the moment from which it accepts again."""
        self.listener = self._listen(self.port)
        return time.monotonic()

    def _accept(self, listener):
        while True:
            try:
                connection, _ = listener.accept()
            except OSError:
                return
            threading.Thread(target=self._pass_on, args=(connection,), daemon=True).start()

    def _pass_on(self, client):
        self.passing.add(client)
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
        self.passing.discard(client)


class Ear:
    """Notes when the sound card's monitor was loud and when it was silent last."""

    def __init__(self, children, sink):
        self.loud = self.silent = 0.0
        self.recorder = children.start("ear", ["parec", "-d", "demo.monitor", "--format=s16le", "--rate=48000",
                                               "--channels=2", "--latency-msec=10"], stdout=subprocess.PIPE,
                                       env={**os.environ, **sink.environment})
        threading.Thread(target=self._listen, daemon=True).start()
        wait_for("the card's monitor", lambda: self.silent or self.loud, 20)

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
