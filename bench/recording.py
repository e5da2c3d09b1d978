"""How fast OZRecordFunkhaus records, and what it costs, against curl and ffmpeg at the same server.

A server on this machine sends an MP3 stream as fast as it is taken, with a title block after every 16000 bytes, as
most stations have it. curl writes the stream into a file as it comes, ffmpeg takes the titles out. The rate is that of
the whole stream from the first byte to the last one on the disk, processor time that of the whole process."""
import os
import pathlib
import signal
import socket
import subprocess
import tempfile
import threading
import time

from desktop import Failure
from figures import Line, ratio

MEGABYTES = 300
LEAST_OF_CURL = 0.5
INTERVAL = 16000
TITLES = 15


def tone(folder):
    path = folder / "tone.mp3"
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", "sine=frequency=440:duration=60",
                    "-b:a", "320k", "-write_xing", "0", "-id3v2_version", "0", path], check=True)
    return path.read_bytes()


def stream_of(audio, size):
    """The whole stream, and how many bytes of it are sound behind the first title."""
    audio = audio * (size // len(audio) + 1)
    pieces, count = [], size // INTERVAL
    for number in range(count):
        title = f"StreamTitle='Titel {number * TITLES // count + 1}';".encode()
        changes = number == 0 or number * TITLES // count != (number - 1) * TITLES // count
        length = -(-len(title) // 16)
        block = bytes([length]) + title.ljust(length * 16, b"\0") if changes else b"\0"
        pieces.append(audio[number * INTERVAL:(number + 1) * INTERVAL] + block)
    return b"".join(pieces), (count - 1) * INTERVAL


class Server:
    """Sends the same stream to everybody, from its beginning."""

    def __init__(self, stream):
        self.stream = memoryview(stream)
        self.header = (b"HTTP/1.0 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: Messung\r\n"
                       b"icy-metaint: %d\r\n\r\n" % INTERVAL)
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.address = f"http://127.0.0.1:{self.listener.getsockname()[1]}/stream"
        self.done = threading.Event()
        threading.Thread(target=self._serve, daemon=True).start()

    def _serve(self):
        while True:
            connection, _ = self.listener.accept()
            threading.Thread(target=self._answer, args=(connection,), daemon=True).start()

    def _answer(self, connection):
        with connection:
            try:
                connection.recv(65536)
                if self.done.is_set():  # whoever comes again after the end is not to be measured
                    return
                connection.sendall(self.header)
                connection.sendall(self.stream)
                self.done.set()
            except OSError:
                pass


def spent(process):
    _, _, usage = os.wait4(process.pid, 0)
    process.returncode = 0
    return usage.ru_utime + usage.ru_stime


def recorded(folder):
    return sum(entry.stat().st_size for entry in folder.glob("**/*") if entry.is_file())


def record(name, programs, server, folder, expected):
    """Seconds, and seconds of processor time."""
    if name == "own":
        return run_tool(programs / "OZRecordFunkhaus", server, folder, expected)
    if name == "curl":
        return run_reference(["curl", "-s", "-H", "Icy-MetaData: 1", "-o", f"{folder}/all", server.address])
    return run_reference(["ffmpeg", "-v", "fatal", "-i", server.address, "-c", "copy", f"{folder}/all.mp3"])


def run_tool(tool, server, folder, expected):
    environment = {**os.environ, "XDG_MUSIC_DIR": str(folder)}
    process = subprocess.Popen([tool, "--terminal", server.address], env=environment, stdout=subprocess.DEVNULL)
    while recorded(folder) == 0:
        time.sleep(0.001)
    started = time.monotonic()
    while recorded(folder) < expected:
        time.sleep(0.005)
        if time.monotonic() - started > 300:
            raise Failure(f"only {recorded(folder)} of {expected} bytes were recorded")
    seconds = time.monotonic() - started
    process.send_signal(signal.SIGTERM)
    return seconds, spent(process)


def run_reference(command):
    started = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    used = spent(process)
    return time.monotonic() - started, used


def measure(arguments, _children, scratch):
    """In turn: the tool on the terminal, curl, ffmpeg."""
    stream, expected = stream_of(tone(scratch), MEGABYTES * 1000 * 1000)
    rates, used = {}, {}
    for _ in range(arguments.runs):
        for name in ("own", "curl", "ffmpeg -c copy"):
            server = Server(stream)
            with tempfile.TemporaryDirectory(dir=scratch) as folder:
                seconds, processor = record(name, arguments.build / "bin", server, pathlib.Path(folder), expected)
            rates.setdefault(name, []).append(len(stream) / 1e6 / seconds)
            used.setdefault(name, []).append(processor)
    own_rates, own_used = rates.pop("own"), used.pop("own")
    of_curl, of_ffmpeg = ratio(own_rates, rates["curl"]), ratio(own_used, used["ffmpeg -c copy"])
    return [Line(f"recording {MEGABYTES} MB with titles", own_rates, "MB/s",
                 f"at least {LEAST_OF_CURL} of curl's: {of_curl:.2f}", of_curl >= LEAST_OF_CURL, rates),
            Line("processor for that", own_used, "s", f"at most ffmpeg's: {of_ffmpeg:.2f} of it", of_ffmpeg <= 1.0,
                 used, digits=2)]
