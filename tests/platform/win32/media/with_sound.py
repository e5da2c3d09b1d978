#!/usr/bin/env python3
"""Runs a program with a sound server of its own, whose loudness it can ask for, and a radio station on 127.0.0.1.

Usage: with_sound.py COMMAND [ARGUMENT...]

The environment variable FUNKHAUS_STATION names the station, "http://127.0.0.1:PORT". It serves
  /stream         the loop in the tempo of its sound after a burst of 96 KB
  /icy            the same after a status line "ICY 200 OK"
  /titles         the same with blocks of titles
  /cut            the same, but only the burst, each time
  /returns        twice the burst once, then 404 until /return was asked for
  /silent         accepts, and says nothing
  /page           an HTML page
  /count?/path    how often /path was asked for
  /open           how many connections to the sound are open
  /loudness       root mean square of the last 300 ms, 0 to 32767
and answers 404 to everything else.
"""
import array
import collections
import os
import pathlib
import socket
import subprocess
import sys
import tempfile
import threading
import time

LOOP = (pathlib.Path(__file__).resolve().parents[4] / "demo" / "loop.mp3").read_bytes()
BURST = 96 * 1024
BYTES_PER_SECOND = 16000
INTERVAL = 8000


class Station:
    def __init__(self, loudness):
        self.loudness = loudness
        self.asked = collections.Counter()
        self.open = 0
        self.lock = threading.Lock()
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            connection, _ = self.listener.accept()
            threading.Thread(target=self.serve, args=(connection,), daemon=True).start()

    def serve(self, connection):
        with connection:
            try:
                request = b""
                while b"\r\n\r\n" not in request:
                    data = connection.recv(4096)
                    if not data:
                        return
                    request += data
                self.answer(connection, request.split()[1].decode())
            except OSError:
                pass

    def answer(self, connection, target):
        if target.startswith("/count?"):
            return self.text(connection, str(self.asked[target.removeprefix("/count?")]))
        self.asked[target] += 1
        if target == "/loudness":
            return self.text(connection, str(int(self.loudness())))
        if target == "/open":
            return self.text(connection, str(self.open))
        if target == "/page":
            return self.text(connection, "<html>Kein Ton</html>", "text/html")
        if target == "/silent":
            connection.recv(1)
            return None
        away = target == "/returns" and self.asked[target] > 1 and not self.asked["/return"]
        if away or target not in ("/stream", "/icy", "/titles", "/cut", "/returns"):
            connection.sendall(b"HTTP/1.0 404 Not Found\r\nContent-Length: 0\r\n\r\n")
            return None
        status = b"ICY 200 OK" if target == "/icy" else b"HTTP/1.0 200 OK"
        titles = target == "/titles"
        extra = b"icy-metaint: %d\r\n" % INTERVAL if titles else b""
        connection.sendall(status + b"\r\nicy-name: Probe\r\nContent-Type: audio/mpeg\r\nicy-br:128\r\n" + extra + b"\r\n")
        with self.lock:
            self.open += 1
        try:
            self.send_loop(connection, titles,
                           bursts={"/cut": 1, "/returns": 0 if self.asked["/return"] else 2}.get(target, 0))
        finally:
            with self.lock:
                self.open -= 1

    def send_loop(self, connection, titles, bursts):
        begun, sent, place = time.monotonic(), 0, 0
        while True:
            if sent >= bursts * BURST > 0:
                return
            ahead = sent - max(bursts, 1) * BURST - (time.monotonic() - begun) * BYTES_PER_SECOND
            if ahead > 0:
                time.sleep(ahead / BYTES_PER_SECOND)
            piece = bytes(LOOP[(place + at) % len(LOOP)] for at in range(INTERVAL))
            place, sent = (place + INTERVAL) % len(LOOP), sent + INTERVAL
            title = b"StreamTitle='Probe';".ljust(32, b"\0")
            connection.sendall(piece + (b"\x02" + title if titles else b""))

    @staticmethod
    def text(connection, text, kind="text/plain"):
        connection.sendall(f"HTTP/1.0 200 OK\r\nContent-Type: {kind}\r\nContent-Length: {len(text)}\r\n\r\n{text}".encode())


class Sound:
    def __init__(self, folder):
        self.environment = dict(os.environ, XDG_RUNTIME_DIR=folder, HOME=folder, LC_ALL="C",
                                DBUS_SESSION_BUS_ADDRESS=f"unix:path={folder}/no-bus")
        self.environment.pop("PULSE_SERVER", None)
        self.address = f"unix:{folder}/native"
        self.server = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
             "--load=module-null-sink sink_name=ci rate=48000 norewinds=1",
             f"--load=module-native-protocol-unix auth-anonymous=1 socket={folder}/native"],
            env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.environment["PULSE_SERVER"] = self.address
        limit = time.monotonic() + 15
        while subprocess.run(["pactl", "info"], env=self.environment, capture_output=True).returncode:
            if time.monotonic() > limit:
                raise SystemExit("the sound server does not answer")
            time.sleep(0.05)
        self.recorder = subprocess.Popen(
            ["parec", "--device=ci.monitor", "--rate=8000", "--channels=1", "--format=s16le", "--latency-msec=20"],
            env=self.environment, stdout=subprocess.PIPE)
        self.blocks = collections.deque(maxlen=30)
        threading.Thread(target=self.listen, daemon=True).start()

    def listen(self):
        while block := self.recorder.stdout.read(160):
            self.blocks.append((time.monotonic(), array.array("h", block)))

    def loudness(self):
        late = time.monotonic() - 0.35
        samples = [sample for arrived, block in list(self.blocks) if arrived > late for sample in block]
        return (sum(sample * sample for sample in samples) / len(samples)) ** 0.5 if samples else 0

    def end(self):
        for process in (self.recorder, self.server):
            process.terminate()
            process.wait()


def main():
    with tempfile.TemporaryDirectory(prefix="funkhaus-sound-") as folder:
        sound = Sound(folder)
        try:
            station = Station(sound.loudness)
            environment = dict(os.environ, PULSE_SERVER=sound.address,
                               FUNKHAUS_STATION=f"http://127.0.0.1:{station.port}")
            return subprocess.run(sys.argv[1:], env=environment).returncode
        finally:
            sound.end()


if __name__ == "__main__":
    sys.exit(main())
