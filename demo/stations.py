"""The invented stations of the demonstration and of the pictures: a catalogue, and a server for each of them on this
machine. Not what is done with them."""
import dataclasses
import pathlib
import shutil
import socket
import subprocess

from desktop import Failure, wait_for

DEMO = pathlib.Path(__file__).resolve().parent
# Names below "localhost" are those of this machine (RFC 6761), so these addresses need no name server.
HOST = "localhost"
USUAL_PORT = 8000


@dataclasses.dataclass(frozen=True)
class Entry:
    name: str
    host: str
    genre: str
    titles: tuple
    target: str = "/stream"
    favourite: bool = False
    number: str = ""  # of the entry in a playlist


CATALOGUE = (
    Entry("Radio Lichtung", "live.radio-lichtung", "Pop & Hits",
            ("Die Lichtung - Morgenlicht über dem Fluss", "Die Lichtung - Grüne Wege", "Die Lichtung - Später Sommer"),
            favourite=True),
    Entry("Küstenfunk Süd", "kuestenfunk", "Oldies", ("Die Molenjungs - Heimwärts bei Flut",), "/station.m3u",
            favourite=True, number="1"),
    Entry("Blaue Stunde", "blaue-stunde", "Jazz & Blues", ("Trio Halbmond - Regen auf der Terrasse",),
            "/station.pls"),
    Entry("Kupferwelle", "stream.kupferwelle", "Rock", ("Rostlaube - Schraubenschlüssel",)),
    Entry("Radio Mohnfeld", "mohnfeld", "Schlager & Disco", ("Gitta Sonnberg - Tausend rote Lichter",)),
    Entry("Nachtkurier", "nachtkurier", "Techno & House", ("Umspannwerk - Vier Uhr zwölf",), favourite=True),
    Entry("Studio Kiesel", "kiesel", "Electro,Black Music", ("Moduline - Kleine Schleife",)),
    Entry("Saal Orion", "saal-orion", "Klassik", ("Quartett im Speicher - Serenade in G, 2. Satz",)),
    Entry("Bergpfad", "bergpfad", "Volksmusik", ("Almgeiger Dreierlei - Zwiefacher vom Oberjoch",)),
    Entry("Wort am Fluss", "wort-am-fluss", "Nachrichten & Kultur", ("Gespräch am Mittag - Die Brückenbauer",)),
    Entry("Radio Papierboot", "papierboot", "Kinder", ("Kapitän Knopf - Das Lied vom Seepferd",)),
    Entry("Weite Prärie", "weite-praerie", "Country", ("The Hollow Creek Four - Dust on the Radio",)),
)


class Station:
    """A running demo_station."""

    def __init__(self, children, program, log_folder, entry=CATALOGUE[0], wanted_port=0):
        self.entry = entry
        self.log = pathlib.Path(log_folder, f"station-{entry.host}.txt")
        # The wanted port may be another program's.
        for port in dict.fromkeys((wanted_port, 0)):
            command = [program, DEMO / "loop.mp3", str(port), entry.name, entry.genre,
                       f"http://www.{entry.host.split('.')[-1]}.example/", *entry.titles]
            with open(self.log, "wb") as output:
                # The station ends when this pipe does, so it cannot outlive the demonstration.
                process = children.start(f"station-{entry.host}", command, stdin=subprocess.PIPE, stdout=output)
            wait_for("the station", lambda: self.lines("port ") or process.poll() is not None, 20)
            if process.poll() is None:
                break
        else:
            raise Failure(f"the server of {entry.name} did not start")
        self.address = f"http://127.0.0.1:{self.lines('port ')[0]}"
        self.link = f"http://{entry.host}.{HOST}:{self.lines('port ')[0]}{entry.target}"
        self.numeric_link = self.address + entry.target

    def lines(self, beginning):
        """Of the log's lines that begin so, what follows."""
        return [line[len(beginning):] for line in self.log.read_text(encoding="utf-8").splitlines()
                if line.startswith(beginning)]


class Stations:
    """The stations of the whole catalogue, running."""

    def __init__(self, children, program, log_folder):
        self.all = [Station(children, program, log_folder, entry, USUAL_PORT + number)
                    for number, entry in enumerate(CATALOGUE)]

    def lines(self, beginning):
        """The same of all logs."""
        return [line for station in self.all for line in station.lines(beginning)]

    def rows(self, numeric=False):
        """(name, link, genre, favourite, entry of a playlist) of every station; `numeric` for systems that do not know
        the names of RFC 6761."""
        return [(station.entry.name, station.numeric_link if numeric else station.link, station.entry.genre, "1" if station.entry.favourite else "",
                 station.entry.number) for station in self.all]


class DeadAddress:
    """Whoever connects is refused, and nobody else can take the port: it is bound, but nobody listens."""

    def __init__(self):
        self.socket = socket.socket()
        self.socket.bind(("127.0.0.1", 0))
        self.address = f"http://127.0.0.1:{self.socket.getsockname()[1]}"


def write_catalogue(path, rows):
    lines = []
    for name, link, genre, favourite, entry in rows:
        lines += [f"[{name}]", f"Station={name}", f"Link={link}", f"Genre={genre}", f"Favorit={favourite}",
                  f"M3uNr={entry}"]
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


def add_pictures(folder):
    """The icons and pictures of the stations, into a program's folder."""
    for beside in ("RadioIco", "RadioJPG"):
        shutil.copytree(DEMO / beside, folder / beside, dirs_exist_ok=True)


def make_program_folder(folder, *programs):
    """The program's own folder: the programs, and beside them the icons and pictures of the stations."""
    folder.mkdir()
    for file in programs:
        shutil.copy2(file, folder / file.name)
    add_pictures(folder)
    shutil.copytree(DEMO.parent / "Languages", folder / "Languages")
    return folder / programs[0].name
