"""The windows, the mouse and the keys of a virtual screen, from outside the program: Xlib and XTest, within a
millisecond a call. Not for what is done with them (user.py)."""
import ctypes
import dataclasses
import os

from desktop import Failure

VIEWABLE, CLIENT_MESSAGE, ROOT_MESSAGES, ANY_TYPE = 2, 33, 0xA0000, 0
LEFT, RIGHT, WHEEL_UP, WHEEL_DOWN = 1, 3, 4, 5
KEYS_OF = {" ": "space", ":": "colon", "/": "slash", ".": "period", "-": "minus", "_": "underscore", ";": "semicolon",
           "=": "equal", "[": "bracketleft", "]": "bracketright", "#": "numbersign", "?": "question", "%": "percent"}
SHIFTED = set(':_#?%ABCDEFGHIJKLMNOPQRSTUVWXYZ')


class Attributes(ctypes.Structure):
    """Xlib's XWindowAttributes."""
    _fields_ = ([(name, ctypes.c_int) for name in ("x", "y", "width", "height", "border", "depth")]
                + [("visual", ctypes.c_void_p), ("root", ctypes.c_ulong)]
                + [(name, ctypes.c_int) for name in ("kind", "bit_gravity", "win_gravity", "backing_store")]
                + [("planes", ctypes.c_ulong), ("pixel", ctypes.c_ulong), ("save_under", ctypes.c_int),
                   ("colormap", ctypes.c_ulong), ("map_installed", ctypes.c_int), ("map_state", ctypes.c_int),
                   ("all_events", ctypes.c_long), ("your_events", ctypes.c_long), ("do_not_propagate", ctypes.c_long),
                   ("override", ctypes.c_int), ("screen", ctypes.c_void_p)])


class Message(ctypes.Structure):
    """Xlib's XClientMessageEvent, as long as an XEvent."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24)]


class Picture(ctypes.Structure):
    """The beginning of Xlib's XImage."""
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int),
                ("bitmap_unit", ctypes.c_int), ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int),
                ("depth", ctypes.c_int), ("bytes_per_line", ctypes.c_int)]


@dataclasses.dataclass(frozen=True)
class Window:
    number: int
    process: int
    title: str
    popup: bool
    x: int
    y: int
    width: int
    height: int


@ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
def ignore_error(_display, _event):
    """Windows may disappear at any moment; Xlib would end this process because of it."""
    return 0


@ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p)
def screen_is_lost(_display):
    """Xlib ends the process after this call, without cleaning up."""
    print("The virtual screen is gone.", flush=True)
    lost[0]()
    os._exit(2)


lost = [lambda: None]  # what is done then, before the process ends


class Screen:
    """One connection; not shared by threads."""

    def __init__(self, display):
        self.x, self.test = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        for function in (self.x.XDefaultRootWindow, self.x.XInternAtom, self.x.XStringToKeysym):
            function.restype = ctypes.c_ulong
        self.x.XGetImage.restype = ctypes.POINTER(Picture)
        self.x.XSetErrorHandler(ignore_error)
        self.x.XSetIOErrorHandler(screen_is_lost)
        self.connection = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))
        if not self.connection:
            raise Failure("no connection to the screen")
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.connection))
        self.atoms, self.codes = {}, {}

    def atom(self, name):
        if name not in self.atoms:
            self.atoms[name] = self.x.XInternAtom(self.connection, name.encode(), 0)
        return self.atoms[name]

    # Looking

    def property(self, window, name, limit=64):
        """The bytes of a property (a number has eight), empty when there is none."""
        kind, form = ctypes.c_ulong(), ctypes.c_int()
        count, rest, data = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_void_p()
        self.x.XGetWindowProperty(self.connection, ctypes.c_ulong(window), ctypes.c_ulong(self.atom(name)), 0, limit, 0,
                                  ctypes.c_ulong(ANY_TYPE), ctypes.byref(kind), ctypes.byref(form), ctypes.byref(count),
                                  ctypes.byref(rest), ctypes.byref(data))
        if not data:
            return b""
        size = {8: 1, 16: 2, 32: 8}.get(form.value, 0)
        found = ctypes.string_at(data, count.value * size)
        self.x.XFree(data)
        return found

    def windows(self):
        """The visible windows of a process, the topmost last."""
        root, parent, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_uint()
        children = ctypes.POINTER(ctypes.c_ulong)()
        if not self.x.XQueryTree(self.connection, self.root, ctypes.byref(root), ctypes.byref(parent),
                                 ctypes.byref(children), ctypes.byref(count)):
            return []
        numbers = [children[index] for index in range(count.value)]
        if children:
            self.x.XFree(children)
        return [window for window in map(self.window, numbers) if window]

    def window(self, number):
        attributes = Attributes()
        if not self.x.XGetWindowAttributes(self.connection, ctypes.c_ulong(number), ctypes.byref(attributes)):
            return None
        process = self.property(number, "_NET_WM_PID")
        if attributes.map_state != VIEWABLE or len(process) != 8:
            return None
        return Window(number, int.from_bytes(process, "little"),
                      self.property(number, "_NET_WM_NAME").decode("utf-8", "replace"), bool(attributes.override),
                      attributes.x, attributes.y, attributes.width, attributes.height)

    def look(self, x, y, width, height):
        """The pixels of a part of the screen, as bytes that can be compared."""
        picture = self.x.XGetImage(self.connection, self.root, x, y, width, height, ctypes.c_ulong(0xFFFFFFFF), 2)
        if not picture:
            return b""
        seen = ctypes.string_at(picture.contents.data, picture.contents.bytes_per_line * picture.contents.height)
        self.x.XDestroyImage(picture)
        return seen

    # Acting

    def move(self, x, y):
        self.test.XTestFakeMotionEvent(self.connection, -1, x, y, 0)
        self.x.XFlush(self.connection)

    def button(self, number, down):
        self.test.XTestFakeButtonEvent(self.connection, number, down, 0)
        self.x.XFlush(self.connection)

    def click(self, x, y, button=LEFT, times=1):
        self.move(x, y)
        for _ in range(times):
            self.button(button, 1)
            self.button(button, 0)

    def key(self, combination):
        """Such as "Return", "ctrl+n", "shift+Tab"."""
        codes = [self.code(name) for name in combination.split("+")]
        for code in codes:
            self.test.XTestFakeKeyEvent(self.connection, code, 1, 0)
        for code in reversed(codes):
            self.test.XTestFakeKeyEvent(self.connection, code, 0, 0)
        self.x.XFlush(self.connection)

    def write(self, text):
        """ASCII letters, digits and the marks of KEYS_OF, on the American keyboard that a virtual screen has."""
        for letter in text:
            name = KEYS_OF.get(letter, letter.lower())
            self.key(f"shift+{name}" if letter in SHIFTED else name)

    def code(self, name):
        name = {"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L"}.get(name, name)
        if name not in self.codes:
            symbol = ctypes.c_ulong(self.x.XStringToKeysym(name.encode()))
            self.codes[name] = self.x.XKeysymToKeycode(self.connection, symbol)
            if not self.codes[name]:
                raise Failure(f"the keyboard has no key {name}")
        return self.codes[name]

    def focus(self, number):
        """Gives the keyboard focus to a window, as a window manager would."""
        parent = 2
        self.x.XSetInputFocus(self.connection, ctypes.c_ulong(number), parent, ctypes.c_ulong(0))
        self.x.XFlush(self.connection)

    def resize(self, number, width, height):
        self.x.XResizeWindow(self.connection, ctypes.c_ulong(number), width, height)
        self.x.XFlush(self.connection)

    # Messages between a window manager and a window

    def send_protocol(self, number, protocol, *data):
        """A message of WM_PROTOCOLS: to close (ICCCM 4.2.8.1), or a ping (EWMH, _NET_WM_PING)."""
        event = Message(type=CLIENT_MESSAGE, window=number, format=32, message_type=self.atom("WM_PROTOCOLS"))
        for index, value in enumerate((self.atom(protocol), *data)):
            event.data[index] = value
        self.x.XSendEvent(self.connection, ctypes.c_ulong(number), 0, ctypes.c_long(0), ctypes.byref(event))
        self.x.XFlush(self.connection)

    def close(self, number):
        self.send_protocol(number, "WM_DELETE_WINDOW")

    def ping(self, number, mark):
        self.send_protocol(number, "_NET_WM_PING", mark, number)

    def listen_for_answers(self):
        """Answers to pings go to the root window."""
        self.x.XSelectInput(self.connection, self.root, ctypes.c_long(ROOT_MESSAGES))

    def answers(self):
        """The marks of the pings that were answered since."""
        marks, event = [], Message()
        while self.x.XPending(self.connection):
            self.x.XNextEvent(self.connection, ctypes.byref(event))
            if event.type == CLIENT_MESSAGE and event.data[0] == self.atom("_NET_WM_PING"):
                marks.append(event.data[1])
        return marks
