"""Xlib and XTEST through ctypes, as far as starting, driving and photographing a window needs them.

Every call is synchronous: an operation returns when the server has carried it out. Errors of the protocol (a window
that has just gone, say) are ignored as calls and show in what the next query answers.
"""

import ctypes
import ctypes.util
import struct
import zlib

x11 = ctypes.CDLL("libX11.so.6")
xtst = ctypes.CDLL("libXtst.so.6")

Pointer, Id, Int, UInt, Long = ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_uint, ctypes.c_long
Z_PIXMAP, CLIENT_MESSAGE, IS_VIEWABLE = 2, 33, 2


def _Declare(library, name, result, *arguments):
    function = getattr(library, name)
    function.restype, function.argtypes = result, arguments
    return function


def _Out(kind):
    return ctypes.POINTER(kind)


_XOpenDisplay = _Declare(x11, "XOpenDisplay", Pointer, ctypes.c_char_p)
_XCloseDisplay = _Declare(x11, "XCloseDisplay", Int, Pointer)
_XDefaultRootWindow = _Declare(x11, "XDefaultRootWindow", Id, Pointer)
_XSync = _Declare(x11, "XSync", Int, Pointer, Int)
_XFree = _Declare(x11, "XFree", Int, Pointer)
_XInternAtom = _Declare(x11, "XInternAtom", Id, Pointer, ctypes.c_char_p, Int)
_XQueryTree = _Declare(x11, "XQueryTree", Int, Pointer, Id, _Out(Id), _Out(Id), _Out(_Out(Id)), _Out(UInt))
_XGetWindowProperty = _Declare(x11, "XGetWindowProperty", Int, Pointer, Id, Id, Long, Long, Int, Id, _Out(Id), _Out(Int),
                               _Out(Id), _Out(Id), _Out(Pointer))
_XGetGeometry = _Declare(x11, "XGetGeometry", Int, Pointer, Id, _Out(Id), _Out(Int), _Out(Int), _Out(UInt), _Out(UInt),
                         _Out(UInt), _Out(UInt))
_XTranslateCoordinates = _Declare(x11, "XTranslateCoordinates", Int, Pointer, Id, Id, Int, Int, _Out(Int), _Out(Int),
                                  _Out(Id))
_XGetWindowAttributes = _Declare(x11, "XGetWindowAttributes", Int, Pointer, Id, Pointer)
_XMoveResizeWindow = _Declare(x11, "XMoveResizeWindow", Int, Pointer, Id, Int, Int, UInt, UInt)
_XRaiseWindow = _Declare(x11, "XRaiseWindow", Int, Pointer, Id)
_XSetInputFocus = _Declare(x11, "XSetInputFocus", Int, Pointer, Id, Int, Id)
_XSendEvent = _Declare(x11, "XSendEvent", Int, Pointer, Id, Int, Long, Pointer)
_XStringToKeysym = _Declare(x11, "XStringToKeysym", Id, ctypes.c_char_p)
_XKeysymToKeycode = _Declare(x11, "XKeysymToKeycode", ctypes.c_ubyte, Pointer, Id)
_XFakeMotion = _Declare(xtst, "XTestFakeMotionEvent", Int, Pointer, Int, Int, Int, Id)
_XFakeButton = _Declare(xtst, "XTestFakeButtonEvent", Int, Pointer, UInt, Int, Id)
_XFakeKey = _Declare(xtst, "XTestFakeKeyEvent", Int, Pointer, UInt, Int, Id)


class _XImage(ctypes.Structure):
    """The leading fields of Xlib's XImage; its functions follow and are not used."""

    _fields_ = [("width", Int), ("height", Int), ("xoffset", Int), ("format", Int), ("data", Pointer),
                ("byteOrder", Int), ("bitmapUnit", Int), ("bitmapBitOrder", Int), ("bitmapPad", Int), ("depth", Int),
                ("bytesPerLine", Int), ("bitsPerPixel", Int)]


class _ClientMessage(ctypes.Structure):
    _fields_ = [("type", Int), ("serial", Id), ("sendEvent", Int), ("display", Pointer), ("window", Id),
                ("messageType", Id), ("format", Int), ("data", Long * 5)]


class _Event(ctypes.Union):
    # XEvent is padded to 24 longs.
    _fields_ = [("client", _ClientMessage), ("pad", Long * 24)]


class _WindowAttributes(ctypes.Structure):
    _fields_ = [("x", Int), ("y", Int), ("width", Int), ("height", Int), ("borderWidth", Int), ("depth", Int),
                ("visual", Pointer), ("root", Id), ("windowClass", Int), ("bitGravity", Int), ("winGravity", Int),
                ("backingStore", Int), ("backingPlanes", Id), ("backingPixel", Id), ("saveUnder", Int),
                ("colormap", Id), ("mapInstalled", Int), ("mapState", Int), ("allEventMasks", Long),
                ("yourEventMask", Long), ("doNotPropagate", Long), ("overrideRedirect", Int), ("screen", Pointer)]


_XGetImage = _Declare(x11, "XGetImage", _Out(_XImage), Pointer, Id, Int, Int, UInt, UInt, Id, Int)
_XDestroyImage = _Declare(x11, "XDestroyImage", Int, _Out(_XImage))

_ERROR_HANDLER = ctypes.CFUNCTYPE(Int, Pointer, Pointer)
_ignoreErrors = _ERROR_HANDLER(lambda display, event: 0)
x11.XSetErrorHandler(_ignoreErrors)


class Picture:
    """Pixels as the screen has them: rows of width * 4 bytes, blue, green, red and a byte without meaning."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data

    def Pixel(self, x, y):
        """Blue, green and red of one pixel."""
        offset = (y * self.width + x) * 4
        return tuple(self.data[offset:offset + 3])

    def Opaque(self):
        """The same bytes with 255 in each fourth place, so that two pictures compare by their colours alone."""
        data = bytearray(self.data)
        data[3::4] = b"\xff" * (self.width * self.height)
        return bytes(data)

    def IsPlain(self):
        """Whether all pixels have one colour."""
        opaque = self.Opaque()
        return opaque == opaque[:4] * (self.width * self.height)

    def Crop(self, x, y, width, height):
        rows = [self.data[((y + row) * self.width + x) * 4:((y + row) * self.width + x + width) * 4]
                for row in range(height)]
        return Picture(width, height, b"".join(rows))

    def SavePng(self, path):
        """Writes a PNG of 8-bit RGB."""
        rows = bytearray()
        for y in range(self.height):
            row = self.data[y * self.width * 4:(y + 1) * self.width * 4]
            rgb = bytearray(self.width * 3)
            rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
            rows += b"\0" + rgb
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            for kind, body in ((b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)),
                               (b"IDAT", zlib.compress(bytes(rows), 6)), (b"IEND", b"")):
                file.write(struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body)))


class Display:
    """A connection to an X server."""

    def __init__(self, name):
        self.handle = _XOpenDisplay(name.encode())
        if not self.handle:
            raise RuntimeError(f"cannot open the display {name}")
        self.root = _XDefaultRootWindow(self.handle)

    def Close(self):
        _XCloseDisplay(self.handle)

    def Sync(self):
        _XSync(self.handle, 0)

    def Atom(self, name):
        return _XInternAtom(self.handle, name.encode(), 0)

    def Children(self, window):
        """The windows directly inside window, the lowest first."""
        root, parent, children, count = Id(), Id(), _Out(Id)(), UInt()
        if not _XQueryTree(self.handle, window, root, parent, children, count):
            return []
        result = [children[i] for i in range(count.value)]
        _XFree(children)
        return result

    def Title(self, window):
        """The title by the EWMH name or by the old property; empty when the window has neither."""
        for name in ("_NET_WM_NAME", "WM_NAME"):
            kind, form, count, rest, data = Id(), Int(), Id(), Id(), Pointer()
            failed = _XGetWindowProperty(self.handle, window, self.Atom(name), 0, 1024, 0, 0, kind, form, count, rest,
                                         data)
            if failed or not data.value:
                continue
            text = ctypes.string_at(data.value, count.value)
            _XFree(data)
            if text:
                return text.decode("utf-8" if name == "_NET_WM_NAME" else "latin-1", "replace")
        return ""

    def IsViewable(self, window):
        attributes = _WindowAttributes()
        return bool(_XGetWindowAttributes(self.handle, window, ctypes.byref(attributes))) and \
            attributes.mapState == IS_VIEWABLE

    def Rectangle(self, window):
        """x, y, width, height of the window's inside in pixels of the screen; None when the window is gone."""
        root, x, y, width, height, border, depth = Id(), Int(), Int(), UInt(), UInt(), UInt(), UInt()
        if not _XGetGeometry(self.handle, window, root, x, y, width, height, border, depth):
            return None
        child = Id()
        _XTranslateCoordinates(self.handle, window, self.root, 0, 0, x, y, child)
        return x.value, y.value, width.value, height.value

    def FindWindow(self, titleStart):
        """The topmost visible top-level window whose title begins with the text, or None."""
        for window in reversed(self.Children(self.root)):
            if self.IsViewable(window) and self.Title(window).startswith(titleStart):
                return window
        return None

    def MoveResize(self, window, x, y, width, height):
        _XMoveResizeWindow(self.handle, window, x, y, width, height)
        self.Sync()

    def Focus(self, window):
        """Raises the window and gives it the keyboard, as a window manager would."""
        revertToParent, currentTime = 2, 0
        _XRaiseWindow(self.handle, window)
        _XSetInputFocus(self.handle, window, revertToParent, currentTime)
        self.Sync()

    def AskToClose(self, window):
        """What a window manager sends when the user clicks the close button (ICCCM, WM_DELETE_WINDOW)."""
        event = _Event()
        message = event.client
        message.type, message.window, message.format = CLIENT_MESSAGE, window, 32
        message.messageType = self.Atom("WM_PROTOCOLS")
        message.data[0] = self.Atom("WM_DELETE_WINDOW")
        _XSendEvent(self.handle, window, 0, 0, ctypes.byref(event))
        self.Sync()

    def Move(self, x, y):
        """Puts the mouse at a pixel of the screen."""
        _XFakeMotion(self.handle, -1, x, y, 0)
        self.Sync()

    def Button(self, number, down):
        _XFakeButton(self.handle, number, 1 if down else 0, 0)
        self.Sync()

    def Wheel(self, notches):
        """Turns the wheel at the mouse's place; up is positive."""
        for _ in range(abs(notches)):
            self.Button(4 if notches > 0 else 5, True)
            self.Button(4 if notches > 0 else 5, False)

    def Drag(self, start, end, steps=8):
        """Holds the left button from one pixel of the screen to another."""
        self.Move(*start)
        self.Button(1, True)
        for i in range(1, steps + 1):
            self.Move(start[0] + (end[0] - start[0]) * i // steps, start[1] + (end[1] - start[1]) * i // steps)
        self.Button(1, False)

    def Key(self, name, down=None):
        """Presses and releases a key by its X name ("Escape", "plus"); with down only one of the two."""
        code = _XKeysymToKeycode(self.handle, _XStringToKeysym(name.encode()))
        for state in ([1, 0] if down is None else [int(down)]):
            _XFakeKey(self.handle, code, state, 0)
        self.Sync()

    def Grab(self, window=None):
        """What the screen shows now, of all of it or of the inside of one window."""
        x, y, width, height = self.Rectangle(window or self.root)
        allPlanes = 0xFFFFFFFF
        image = _XGetImage(self.handle, self.root, x, y, width, height, allPlanes, Z_PIXMAP)
        if not image:
            raise RuntimeError(f"the screen has no area {width} x {height} at {x}, {y}")
        fields = image.contents
        if fields.bitsPerPixel != 32:
            raise RuntimeError(f"{fields.bitsPerPixel} bits a pixel; a depth of 24 is needed")
        stride = fields.bytesPerLine
        data = ctypes.string_at(fields.data, stride * height)
        _XDestroyImage(image)
        if stride != width * 4:
            data = b"".join(data[row * stride:row * stride + width * 4] for row in range(height))
        return Picture(width, height, data)
