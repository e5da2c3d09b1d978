"""A desktop without hardware for the demonstration: a virtual screen, a silent sound card that can be listened
to, real mouse and key events. Not a test framework, and nothing that the program itself uses."""
import array
import ctypes
import math
import os
import pathlib
import select
import signal
import subprocess
import time


class Failure(Exception):
    """Something that the demonstration needs did not happen."""


def until(condition, seconds, pause=0.1):
    """Waits until the condition gives something true, and returns that; nothing when the time is up."""
    end = time.monotonic() + seconds
    while not (result := condition()) and time.monotonic() < end:
        time.sleep(pause)
    return result or None


def wait_for(what, condition, seconds, pause=0.1):
    """The same, but fails when the time is up."""
    result = until(condition, seconds, pause)
    if not result:
        raise Failure(f"waited {seconds} s for {what}")
    return result


def end_with_parent():
    """Runs in a child before its program, so that even a demonstration that is killed leaves nothing behind."""
    set_parent_death_signal = 1
    ctypes.CDLL(None).prctl(set_parent_death_signal, signal.SIGTERM)


class Children:
    """The processes that were started; all are ended together, last first."""

    def __init__(self, log_folder):
        self.log_folder = pathlib.Path(log_folder)
        self.running = []

    def start(self, name, command, **options):
        log = open(self.log_folder / f"{name}.log", "wb")
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", log)
        child = subprocess.Popen(command, stderr=log, preexec_fn=end_with_parent, **options)
        log.close()
        self.running.append(child)
        return child

    def finish(self, child):
        """Ends one of them."""
        if child.poll() is None:
            child.terminate()
        try:
            child.wait(timeout=5)
        except subprocess.TimeoutExpired:
            child.kill()
            child.wait()
        self.running.remove(child)

    def end(self):
        for child in reversed(list(self.running)):
            self.finish(child)


def start_screen(children, size="1400x900"):
    """Starts a virtual screen and returns its display name. The server chooses the number, so that several
    can run at once. It stays as it is when its last program ends: while it began anew it would refuse the next one."""
    reading, writing = os.pipe()
    server = children.start("xvfb", ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size}x24", "-nolisten",
                                     "tcp", "-noreset"], pass_fds=[writing])
    os.close(writing)
    with os.fdopen(reading, "rb") as pipe:
        ready, _, _ = select.select([pipe], [], [], 20)
        number = pipe.readline().decode().strip() if ready else ""
    if not number or server.poll() is not None:
        raise Failure("the virtual screen did not start")
    return f":{number}"


class NullSink:
    """A private sound server whose only card is silent; what is played can be recorded from its monitor."""

    def __init__(self, children, folder):
        self.children, self.folder = children, pathlib.Path(folder)
        self.folder.mkdir(mode=0o700, parents=True)
        self.socket = self.folder / "native"
        self.environment = {"PULSE_SERVER": f"unix:{self.socket}", "PULSE_RUNTIME_PATH": str(self.folder),
                            "PULSE_COOKIE": str(self.folder / "cookie")}
        self.start()

    def start(self):
        """Starts the server again after it was ended."""
        self.socket.unlink(missing_ok=True)
        # Without "norewinds" playing sometimes stalls at its beginning.
        self.server = self.children.start("pulseaudio", [
            "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--log-target=stderr",
            "--load=module-null-sink sink_name=demo rate=48000 norewinds=1",
            f"--load=module-native-protocol-unix auth-anonymous=1 socket={self.socket}"],
            env={**os.environ, **self.environment, "XDG_RUNTIME_DIR": str(self.folder), "HOME": str(self.folder)})
        wait_for("the sound server", lambda: self.server.poll() is not None or self.socket.exists(), 20)
        if self.server.poll() is not None:
            raise Failure("the sound server did not start")

    def loudness(self, seconds=1.0):
        """The root mean square of what is heard now, in dB below full scale; -120 is silence."""
        rate = 48000
        wanted = int(rate * seconds) * 4
        recorder = subprocess.Popen(["parec", "-d", "demo.monitor", "--format=s16le", f"--rate={rate}", "--channels=2",
                                     "--latency-msec=50"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                    env={**os.environ, **self.environment})
        recorded = b""
        end = time.monotonic() + seconds + 10
        try:
            while len(recorded) < wanted and time.monotonic() < end:
                if select.select([recorder.stdout], [], [], 0.5)[0]:
                    piece = os.read(recorder.stdout.fileno(), 65536)
                    if not piece:
                        break
                    recorded += piece
        finally:
            recorder.terminate()
            recorder.wait()
            recorder.stdout.close()
        if len(recorded) < wanted:
            raise Failure("the sound server's monitor could not be recorded")
        samples = array.array("h", recorded[:wanted])
        mean = sum(sample * sample for sample in samples) / len(samples)
        return max(-120.0, 20 * math.log10(math.sqrt(mean) / 32768)) if mean else -120.0


class Hands:
    """Moves and clicks the real pointer of a display, and presses its keys."""

    def __init__(self, display):
        self.environment = {**os.environ, "DISPLAY": display}

    def click(self, x, y, times=1):
        self._work("mousemove", "--sync", str(x), str(y), "click", "--repeat", str(times), "--delay", "60", "1")

    def rest(self):
        """Takes the pointer out of the way, into the screen's last corner."""
        self._work("mousemove", "--sync", "99999", "99999")

    def press_keys(self, *keys):
        self._work("key", "--delay", "40", *keys)

    def write(self, text):
        self._work("type", "--delay", "15", text)

    def focus(self, process_id):
        """Gives the keyboard focus to the topmost window of a process, as a window manager would."""
        windows = visible_windows(self.environment["DISPLAY"], process_id)
        if not windows:
            raise Failure("no window to give the keyboard to")
        self._work("windowfocus", "--sync", str(windows[-1]))

    def _work(self, *order):
        subprocess.run(["xdotool", *order], check=True, env=self.environment)


def visible_windows(display, process_id):
    """The window numbers of a process, in the order in which they were opened."""
    search = subprocess.run(["xdotool", "search", "--all", "--onlyvisible", "--pid", str(process_id), "--name", "."],
                            stdout=subprocess.PIPE, env={**os.environ, "DISPLAY": display}, check=False)
    return sorted(map(int, search.stdout.split()))


def resize_window(display, process_id, width, height):
    """Gives the main window of a process another size, in pixels of the screen."""
    window = visible_windows(display, process_id)[0]
    subprocess.run(["xdotool", "windowsize", str(window), str(width), str(height)], check=True,
                   env={**os.environ, "DISPLAY": display})


def screenshot(display, path, window="root"):
    subprocess.run(["import", "-display", display, "-window", str(window), str(path)], check=True)


def close_window(display, process_id):
    """Asks the main window of a process to close, as the cross in a title bar does: there is no window manager on
    the virtual screen that could. See ICCCM, section 4.2.8.1, "Window Deletion"."""
    found = visible_windows(display, process_id)
    if not found:
        raise Failure("the window to close is not there")

    class ClientMessage(ctypes.Structure):
        _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                    ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                    ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24)]

    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.c_void_p]
    x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
    connection = x11.XOpenDisplay(display.encode())
    if not connection:
        raise Failure("no connection to the screen")
    client_message = 33
    for window in found:
        event = ClientMessage(type=client_message, window=window, format=32,
                              message_type=x11.XInternAtom(connection, b"WM_PROTOCOLS", 0))
        event.data[0] = x11.XInternAtom(connection, b"WM_DELETE_WINDOW", 0)
        x11.XSendEvent(connection, window, 0, 0, ctypes.byref(event))
    x11.XCloseDisplay(connection)
