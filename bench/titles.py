"""The run over all titles of many stations of this machine that answer at once: what each station costs beyond the
time that its server took."""
import socket
import threading
import time

from desktop import Hands, wait_for
from figures import Line, middle
from playing import Stage

STATIONS = 100
MOST = 5.0  # ms each
INTERVAL = 16000


class TitleServer:
    """Sends every client sound up to the first title, the title, and a little more, as fast as it takes it."""

    def __init__(self):
        title = "StreamTitle='Künstler - Lied';".encode()
        length = -(-len(title) // 16)
        self.answer = (b"HTTP/1.0 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: Titel\r\nicy-metaint: %d\r\n\r\n"
                       % INTERVAL + bytes(INTERVAL) + bytes([length]) + title.ljust(length * 16, b"\0") + bytes(INTERVAL))
        self.lock = threading.Lock()
        self.first, self.last, self.had_the_word, self.served = None, None, 0.0, 0
        self.listener = socket.create_server(("127.0.0.1", 0), backlog=64)
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._serve, daemon=True).start()

    def forget(self):
        with self.lock:
            self.first, self.last, self.had_the_word, self.served = None, None, 0.0, 0

    def _serve(self):
        while True:
            connection, _ = self.listener.accept()
            threading.Thread(target=self._answer, args=(connection, time.monotonic()), daemon=True).start()

    def _answer(self, connection, accepted):
        answered = accepted
        with connection:
            try:
                connection.recv(65536)
                connection.sendall(self.answer)
                answered = time.monotonic()
                while connection.recv(65536):
                    pass
            except OSError:
                pass
        with self.lock:
            self.first = min(self.first or accepted, accepted)
            self.last = time.monotonic()
            self.had_the_word += answered - accepted
            self.served += 1


def measure(arguments, children, scratch):
    server = TitleServer()
    names = [(f"Sender {number:03}", f"http://127.0.0.1:{server.port}/{number}") for number in range(STATIONS)]
    stage = Stage(children, arguments.build, scratch, arguments.output)
    stage.write_stations(names)
    _, (titles,) = stage.places([], ["Command3"])
    program = stage.open_program()
    hands = Hands(stage.display)
    hands.focus(program.pid)
    each = []
    for number in range(arguments.runs + 1):
        server.forget()
        hands.click(*titles.middle)
        time.sleep(0.5)
        hands.press_keys("Return")
        wait_for("the first title", lambda: server.served, 10)
        wait_for("the last title", lambda: time.monotonic() - server.last > 1.0, 60)
        if arguments.details:
            print(f"{server.served} connections, {server.last - server.first:.3f} s, "
                  f"{server.had_the_word:.3f} s of them the server's", flush=True)
        if number:
            each.append((server.last - server.first - server.had_the_word) * 1000 / STATIONS)
    return [Line(f"all titles of {STATIONS} local stations, each", each, "ms", f"at most {MOST:g} beyond the servers'",
                 middle(each) <= MOST, digits=2)]
