"""The mouse of a virtual screen and a look at its pixels, within a millisecond: a program of its own for each click
would blur what is measured. Not for working a window (demo/desktop.py)."""
import ctypes

from desktop import Failure

LEFT, RIGHT = 1, 3
Z_PIXMAP, ALL_PLANES = 2, 0xFFFFFFFF


class Picture(ctypes.Structure):
    """The beginning of Xlib's XImage."""
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int),
                ("bitmap_unit", ctypes.c_int), ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int),
                ("depth", ctypes.c_int), ("bytes_per_line", ctypes.c_int)]


class Pointer:
    def __init__(self, display):
        self.x11, self.xtst = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XGetImage.restype = ctypes.POINTER(Picture)
        self.connection = ctypes.c_void_p(self.x11.XOpenDisplay(display.encode()))
        if not self.connection:
            raise Failure("no connection to the screen")
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.connection))
        self.screen_height = self.x11.XDisplayHeight(self.connection, 0)

    def click(self, button=LEFT, times=1):
        """Where the pointer is."""
        for _ in range(times):
            for down in (1, 0):
                self.xtst.XTestFakeButtonEvent(self.connection, button, down, 0)
        self.x11.XSync(self.connection, 0)

    def move(self, x, y):
        self.xtst.XTestFakeMotionEvent(self.connection, -1, x, y, 0)
        self.x11.XSync(self.connection, 0)

    def look(self, x, y, width, height):
        """The pixels of a part of the screen, as bytes that can be compared."""
        picture = self.x11.XGetImage(self.connection, self.root, x, y, width, height, ctypes.c_ulong(ALL_PLANES),
                                     Z_PIXMAP)
        if not picture:
            raise Failure("no picture of the screen")
        seen = ctypes.string_at(picture.contents.data, picture.contents.bytes_per_line * picture.contents.height)
        self.x11.XDestroyImage(picture)
        return seen
