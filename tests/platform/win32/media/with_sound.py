#!/usr/bin/env python3
"""Runs a program with a sound server of its own, whose loudness it can ask for, and a radio station on 127.0.0.1.

Usage: with_sound.py COMMAND [ARGUMENT...]

Environment variables for it, files being named as Wine does:
  FUNKHAUS_STATION          the station, "http://127.0.0.1:PORT"
  FUNKHAUS_SECURE_STATION   the same over TLS, with a certificate for its name "localhost"
  FUNKHAUS_CERTIFICATE      the file with that certificate
  FUNKHAUS_STRANGER         the same with another certificate
  FUNKHAUS_LOOP             the file with its sound

It serves, each in the tempo of its sound after a burst of two seconds:
  /stream         the loop
  /icy            the same after a status line "ICY 200 OK"
  /titles         the same with blocks of titles
  /mislabelled    the same as "text/html"
  /shouted        the same with its type in capitals, and a parameter
  /hesitates      the same after half a second with 500 bytes only
  /unburst        the same without a burst
  /usual          the same at 128 kbit/s
  /cut            only the burst, each time
  /mistaken       the same as "text/html"
  /stalls         the burst, and the rest once /go was asked for
  /returns        the burst once, then 404 until /return was asked for
  /portal         the same with an HTML page in place of 404
  /listed         the same with a list of segments, called a text
  /noisy          the same with what is no sound
  /trickles       the same with 24 KB of sound, and the rest once /go was asked for
and besides
  /whole          the first two seconds of the loop as a file with a length
  /moved          a redirect to /stream
  /silent         accepts, and says nothing
  /fades          the same after it has answered 404 once
  /page, /list    an HTML page, a list of addresses
  /noise          what is no sound, as "audio/mpeg"
  /unplug, /plug  takes the only sound device away, and makes one again
  /forget         forgets what was asked for
  /count?/path    how often /path was asked for
  /agent          who asked for sound last
  /open           how many connections to the sound are open
  /loudness       root mean square of the last 300 ms, 0 to 32767
  /quietest       the lowest of each 50 ms of the last 5 s
and answers 404 to everything else.
"""
import array
import collections
import dataclasses
import os
import pathlib
import random
import select
import socket
import ssl
import subprocess
import sys
import tempfile
import threading
import time

USUAL_LOOP = (pathlib.Path(__file__).resolve().parents[4] / "demo" / "loop.mp3").read_bytes()
USUAL_FRAME = 384  # bytes: 128 kbit/s at 48 kHz
DENSE_FRAME = 960  # the same at 320 kbit/s


def dense_loop():
    """The same sound at 320 kbit/s, so that the 64 KB that Wine wants to see before it plays are 1.6 s of it.

    No frame uses bytes of the one before, so each can be stuffed.
    """
    frames = (USUAL_LOOP[at:at + USUAL_FRAME] for at in range(0, len(USUAL_LOOP), USUAL_FRAME))
    dense = (frame[:2] + bytes([frame[2] & 0x0F | 0xE0]) + frame[3:] for frame in frames)
    return b"".join(frame.ljust(DENSE_FRAME, b"\0") for frame in dense)


LOOP = dense_loop()
BYTES_PER_SECOND = 40_000
BURST = 2 * BYTES_PER_SECOND
INTERVAL = 4000
DEVICE = ["module-null-sink", "sink_name=ci", "rate=48000", "norewinds=1"]


@dataclasses.dataclass
class Show:
    """How a path sounds."""

    status: bytes = b"HTTP/1.0 200 OK"
    kind: str = "audio/mpeg"
    titles: bool = False
    loop: bytes = LOOP
    pace: int = BYTES_PER_SECOND
    hesitates: bool = False
    burst: int = BURST
    ends_after: int = 0  # bytes; 0 is never
    waits_for: str = ""  # after the burst


SHOWS = {
    "/stream": Show(),
    "/icy": Show(status=b"ICY 200 OK"),
    "/titles": Show(titles=True),
    "/mislabelled": Show(kind="text/html"),
    "/hesitates": Show(kind="text/html", hesitates=True),
    "/shouted": Show(kind="AUDIO/X-ANY; charset=utf-8"),
    "/unburst": Show(burst=0),
    "/usual": Show(loop=USUAL_LOOP, pace=16_000, burst=0),
    "/cut": Show(ends_after=BURST),
    "/mistaken": Show(kind="text/html", ends_after=BURST),
    "/stalls": Show(waits_for="/go"),
    "/returns": Show(ends_after=BURST),
    "/portal": Show(ends_after=BURST),
    "/listed": Show(ends_after=BURST),
    "/noisy": Show(ends_after=BURST),
    "/trickles": Show(ends_after=BURST),
}
LEAVING = ("/returns", "/portal", "/listed", "/noisy", "/trickles")
NOISE = random.Random(1).randbytes(200_000)


def made_certificate(folder, name):
    """A certificate that nobody vouches for, and its key."""
    names = [f"{folder}/{name}.pem", f"{folder}/{name}.key"]
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost",
                    "-addext", "subjectAltName=DNS:localhost", "-out", names[0], "-keyout", names[1]],
                   check=True, capture_output=True)
    return names


class Station:
    def __init__(self, sound, certificate, stranger):
        self.sound = sound
        self.asked = collections.Counter()
        self.agent = ""
        self.open = 0
        self.lock = threading.Lock()
        self.port = self.listen(lambda connection: connection)
        self.secure_port = self.listen(self.over_tls(certificate))
        self.stranger_port = self.listen(self.over_tls(stranger))

    @staticmethod
    def over_tls(certificate):
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(*certificate)
        return lambda connection: context.wrap_socket(connection, server_side=True)

    def listen(self, accepted):
        listener = socket.create_server(("127.0.0.1", 0))
        threading.Thread(target=self.accept, args=(listener, accepted), daemon=True).start()
        return listener.getsockname()[1]

    def accept(self, listener, accepted):
        while True:
            connection, _ = listener.accept()
            threading.Thread(target=self.serve, args=(connection, accepted), daemon=True).start()

    def serve(self, plain, accepted):
        try:
            with plain, accepted(plain) as connection:
                request = b""
                while b"\r\n\r\n" not in request:
                    data = connection.recv(4096)
                    if not data:
                        return
                    request += data
                target = request.split()[1].decode()
                if target in SHOWS:
                    self.agent = request.decode("latin-1").partition("User-Agent: ")[2].partition("\r\n")[0]
                self.answer(connection, target)
        except OSError:
            pass

    def answer(self, connection, target):
        if target.startswith("/count?"):
            return self.give(connection, str(self.asked[target.removeprefix("/count?")]))
        if target == "/forget":
            self.asked = collections.Counter({"/go": self.asked["/go"]})
        self.asked[target] += 1
        if target == "/silent" or (target == "/fades" and self.asked[target] > 1):
            connection.recv(1)
            return None
        leaves = target in LEAVING
        away = leaves and self.asked[target] > 1 and not self.asked["/return"]
        if target in SHOWS and not away:
            return self.play(connection, SHOWS["/stream" if leaves and self.asked["/return"] else target])
        if target == "/trickles":
            return self.play(connection, Show(burst=24_000, waits_for="/go"))
        if target == "/moved":
            return self.head(connection, b"HTTP/1.0 302 Found", ["Location: /stream", "Content-Length: 0"])
        if target in ("/unplug", "/plug"):
            self.sound.unplug() if target == "/unplug" else self.sound.plug()
            return self.give(connection, "0")
        answers = {
            "/loudness": lambda: (str(int(self.sound.loudness())), "text/plain"),
            "/quietest": lambda: (str(int(self.sound.quietest())), "text/plain"),
            "/open": lambda: (str(self.open), "text/plain"),
            "/agent": lambda: (self.agent, "text/plain"),
            "/portal": lambda: ("<html>Anmeldung</html>", "text/html"),
            "/page": lambda: ("<html>Kein Ton</html>", "text/html"),
            "/list": lambda: ("#EXTM3U\nhttp://127.0.0.1/stream\n", "audio/x-mpegurl"),
            "/noise": lambda: (NOISE, "audio/mpeg"),
            "/noisy": lambda: (NOISE, "audio/mpeg"),
            "/listed": lambda: ("#EXTM3U\n#EXT-X-TARGETDURATION:10\n", "text/plain"),
            "/whole": lambda: (LOOP[:76_800], "audio/mpeg"),
        }
        if target in answers:
            return self.give(connection, *answers[target]())
        return self.head(connection, b"HTTP/1.0 404 Not Found", ["Content-Length: 0"])

    def play(self, connection, show):
        titles = [f"icy-metaint: {INTERVAL}"] if show.titles else []
        self.head(connection, show.status, ["icy-name: Probe", f"Content-Type: {show.kind}",
                                            f"icy-br:{show.pace // 125}", *titles])
        with self.lock:
            self.open += 1
        try:
            self.send_loop(connection, show)
        finally:
            with self.lock:
                self.open -= 1

    def send_loop(self, connection, show):
        begun, sent, place, before = time.monotonic(), 0, 0, self.asked[show.waits_for]
        loop = show.loop + show.loop
        while not 0 < show.ends_after <= sent:
            ahead = sent - show.burst - (time.monotonic() - begun) * show.pace
            if ahead > 0 and self.hangs_up(connection, ahead / show.pace):
                return
            while show.waits_for and sent >= show.burst and self.asked[show.waits_for] == before:
                time.sleep(0.02)
            piece = loop[place:place + INTERVAL]
            if show.hesitates and sent == 0:
                connection.sendall(piece[:500])
                piece = piece[500:]
                time.sleep(0.5)
            place, sent = (place + INTERVAL) % len(show.loop), sent + INTERVAL
            title = b"StreamTitle='Probe';".ljust(32, b"\0")
            connection.sendall(piece + (b"\x02" + title if show.titles else b""))

    @staticmethod
    def hangs_up(connection, limit):
        """Whether the listener does so in so many seconds; it sends nothing any more."""
        return bool(select.select([connection], [], [], limit)[0])

    @staticmethod
    def head(connection, status, lines):
        connection.sendall(status + "".join(f"\r\n{line}" for line in [*lines, "", ""]).encode())

    def give(self, connection, content, kind="text/plain"):
        content = content.encode() if isinstance(content, str) else content
        self.head(connection, b"HTTP/1.0 200 OK", [f"Content-Type: {kind}", f"Content-Length: {len(content)}"])
        connection.sendall(content)


class Sound:
    def __init__(self, folder):
        self.environment = dict(os.environ, XDG_RUNTIME_DIR=folder, HOME=folder, LC_ALL="C",
                                DBUS_SESSION_BUS_ADDRESS=f"unix:path={folder}/no-bus")
        self.environment.pop("PULSE_SERVER", None)
        self.address = f"unix:{folder}/native"
        self.server = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
             f"--load={' '.join(DEVICE)}",
             f"--load=module-native-protocol-unix auth-anonymous=1 socket={folder}/native"],
            env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.environment["PULSE_SERVER"] = self.address
        limit = time.monotonic() + 15
        while subprocess.run(["pactl", "info"], env=self.environment, capture_output=True).returncode:
            if time.monotonic() > limit:
                raise SystemExit("the sound server does not answer")
            time.sleep(0.05)
        self.plugged = True
        self.blocks = collections.deque(maxlen=500)
        self.record()

    def record(self):
        self.recorder = subprocess.Popen(
            ["parec", "--device=ci.monitor", "--rate=8000", "--channels=1", "--format=s16le", "--latency-msec=20"],
            env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        threading.Thread(target=self.listen, args=(self.recorder.stdout,), daemon=True).start()

    def listen(self, recorded):
        while len(block := recorded.read(160)) == 160:
            self.blocks.append((time.monotonic(), array.array("h", block)))

    def unplug(self):
        if self.plugged:
            self.control("unload-module", "module-null-sink")
            self.recorder.terminate()  # it mostly ends with its device
            self.recorder.wait()
            self.plugged = False

    def plug(self):
        if not self.plugged:
            self.control("load-module", *DEVICE)
            self.plugged = True
            self.record()

    def control(self, *command):
        subprocess.run(["pactl", *command], env=self.environment, check=True, capture_output=True)

    def loudness(self):
        late = time.monotonic() - 0.35
        return self.mean(block for arrived, block in list(self.blocks)[-30:] if arrived > late)

    def quietest(self):
        blocks = [block for _, block in list(self.blocks)]
        return min((self.mean(blocks[at:at + 5]) for at in range(0, len(blocks) - 4, 5)), default=0)

    @staticmethod
    def mean(blocks):
        samples = [sample for block in blocks for sample in block]
        return (sum(sample * sample for sample in samples) / len(samples)) ** 0.5 if samples else 0

    def end(self):
        for process in (self.recorder, self.server):
            process.terminate()
            process.wait()


def main():
    with tempfile.TemporaryDirectory(prefix="funkhaus-sound-") as folder:
        sound = Sound(folder)
        try:
            certificate = made_certificate(folder, "certificate")
            station = Station(sound, certificate, made_certificate(folder, "stranger"))
            pathlib.Path(folder, "loop.mp3").write_bytes(LOOP)
            environment = dict(os.environ, PULSE_SERVER=sound.address,
                               FUNKHAUS_STATION=f"http://127.0.0.1:{station.port}",
                               FUNKHAUS_SECURE_STATION=f"https://localhost:{station.secure_port}",
                               FUNKHAUS_STRANGER=f"https://localhost:{station.stranger_port}",
                               FUNKHAUS_CERTIFICATE=f"Z:{certificate[0]}", FUNKHAUS_LOOP=f"Z:{folder}/loop.mp3")
            return subprocess.run(sys.argv[1:], env=environment).returncode
        finally:
            sound.end()


if __name__ == "__main__":
    sys.exit(main())
