"""The players that the program is compared with, each as its package brings it, with a home of its own. Not what is
measured."""
import dataclasses
import os
import pathlib
import shutil
import sys

NOBODY = 65534


@dataclasses.dataclass(frozen=True)
class Peer:
    name: str
    command: tuple  # what plays the address that follows
    has_window: bool
    refuses_root: bool = False


VLC = Peer("VLC", ("vlc", "--no-qt-privacy-ask", "--no-qt-error-dialogs"), True, refuses_root=True)
AUDACIOUS = Peer("Audacious", ("audacious",), True)
GOODVIBES = Peer("Goodvibes", ("goodvibes",), True)
MPV = Peer("mpv", ("mpv", "--no-config", "--no-terminal"), False)
GST_PLAY = Peer("gst-play-1.0", ("gst-play-1.0", "--no-interactive", "--quiet"), False)
PLAYERS = (GST_PLAY, MPV, AUDACIOUS, VLC, GOODVIBES)


def missed(name, what):
    """Reports that a player did not do what is measured; the others are measured all the same."""
    print(f"{name}: {what}", file=sys.stderr, flush=True)


def home(folder):
    """The variables that make a folder the home of a program: what it keeps is neither the user's nor another's."""
    folder = pathlib.Path(folder)
    places = {"HOME": folder, "XDG_CONFIG_HOME": folder / "config", "XDG_CACHE_HOME": folder / "cache",
              "XDG_DATA_HOME": folder / "data", "XDG_STATE_HOME": folder / "state", "XDG_RUNTIME_DIR": folder / "run"}
    for place in places.values():
        place.mkdir(mode=0o700, parents=True, exist_ok=True)
    return {name: str(place) for name, place in places.items()}


def as_nobody(options, folder):
    """Opens the sound server to everybody and gives the folder to another user, whose bus and whose places of the sound
    server are not those of this one."""
    environment = options["env"]
    if runtime := environment.pop("PULSE_RUNTIME_PATH", None):
        os.chmod(runtime, 0o711)
        os.chmod(environment["PULSE_SERVER"].removeprefix("unix:"), 0o777)
    for name in ("PULSE_COOKIE", "DBUS_SESSION_BUS_ADDRESS"):
        environment.pop(name, None)
    for place in (folder, *folder.glob("**/*")):
        if not place.is_symlink():
            shutil.chown(place, NOBODY, NOBODY)
    options.update(user=NOBODY, group=NOBODY, extra_groups=[])


def start(children, peer, address, environment, scratch):
    """The peer, playing the address (None: its window only)."""
    folder = pathlib.Path(scratch) / peer.name
    options = {"env": {**environment, **home(folder), "GSETTINGS_BACKEND": "memory"}}
    if peer.refuses_root and os.geteuid() == 0:
        as_nobody(options, folder)
    return children.start(peer.name, [*peer.command, *([address] if address else [])], **options)
