"""Notices when a window that a program has opened is painted, to a millisecond. Not for working a window
(pointer.py)."""
import ctypes
import select
import time

from desktop import Failure
from pointer import Pointer

MAP_NOTIFY = 19
SUBSTRUCTURE_NOTIFY = ctypes.c_long(1 << 19)
SMALLEST = 100  # pixels; what is smaller is a helper's window


class MapEvent(ctypes.Structure):
    """Xlib's XMapEvent, padded to the size of XEvent."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("event", ctypes.c_ulong), ("window", ctypes.c_ulong),
                ("override_redirect", ctypes.c_int), ("room", ctypes.c_long * 24)]


@ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
def overlook_error(_connection, _error):
    """A window that is gone again is an error for Xlib, which would end this process."""
    return 0


class ScreenWatch(Pointer):
    """The screen's root window must be black, as that of a virtual screen without a window manager is."""

    def __init__(self, display):
        super().__init__(display)
        self.x11.XSetErrorHandler(overlook_error)
        self.x11.XSelectInput(self.connection, self.root, SUBSTRUCTURE_NOTIFY)
        self.x11.XSync(self.connection, 0)
        self.forget()

    def forget(self):
        """What has happened so far."""
        while self._next_event():
            pass

    def wait_until_painted(self, process, seconds):
        """The moment at which a window, opened since the last forget(), shows its first pixel."""
        end = time.monotonic() + seconds
        windows = []
        while time.monotonic() < end:
            if process.poll() is not None:
                raise Failure(f"the program ended with {process.returncode} before its window was there")
            while event := self._next_event():
                if event.type == MAP_NOTIFY and not event.override_redirect:
                    windows.append(event.window)
            if any(self._is_painted(window) for window in windows):
                return time.monotonic()
            if windows:
                time.sleep(0.0005)
            else:
                select.select([self.x11.XConnectionNumber(self.connection)], [], [], 0.05)
        raise Failure(f"no painted window within {seconds} s")

    def _next_event(self):
        if not self.x11.XPending(self.connection):
            return None
        event = MapEvent()
        self.x11.XNextEvent(self.connection, ctypes.byref(event))
        return event

    def _is_painted(self, window):
        place = self._place(window)
        if place is None:
            return False
        x, y, width, height = place
        return any(self.look(x + width // 2, y, 1, height))

    def _place(self, window):
        """(x, y, width, height) of what of a window is on the screen; None for a small window."""
        root, x, y = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_int()
        width, height, border, depth = (ctypes.c_uint() for _ in range(4))
        known = self.x11.XGetGeometry(self.connection, ctypes.c_ulong(window), ctypes.byref(root), ctypes.byref(x),
                                      ctypes.byref(y), ctypes.byref(width), ctypes.byref(height),
                                      ctypes.byref(border), ctypes.byref(depth))
        if not known or min(width.value, height.value) < SMALLEST:
            return None
        left, top = max(0, x.value), max(0, y.value)
        return left, top, x.value + width.value - left, min(y.value + height.value, self.screen_height) - top
