"""The X server as a user's hands reach it: mouse, keys, the window that has the keyboard.

One connection for all of it, through the server's test extension (libXtst, which xdotool brings along): a program started for
each event would take more time than what it starts.
"""
import ctypes
import threading
import time
from ctypes import POINTER, byref, c_char_p, c_int, c_uint, c_ulong, c_void_p

MODIFIERS = {"ctrl": "Control_L", "alt": "Alt_L", "shift": "Shift_L"}
CURRENT_TIME = 0
REVERT_TO_PARENT = 2
KEY_HELD = 0.006  # seconds that a key is down, and between two changes of keys, as xdotool has it
BUTTON_HELD, BETWEEN_CLICKS = 0.012, 0.03


def _library(name: str, **functions: tuple) -> ctypes.CDLL:
    library = ctypes.CDLL(name)
    for function, (result, *arguments) in functions.items():
        getattr(library, function).restype, getattr(library, function).argtypes = result, arguments
    return library


_X = _library(
    "libX11.so.6",
    XInitThreads=(c_int,), XOpenDisplay=(c_void_p, c_char_p), XCloseDisplay=(c_int, c_void_p),
    XSetErrorHandler=(c_void_p, c_void_p), XSync=(c_int, c_void_p, c_int), XFree=(c_int, c_void_p),
    XDefaultRootWindow=(c_ulong, c_void_p), XFetchName=(c_int, c_void_p, c_ulong, POINTER(c_void_p)),
    XQueryTree=(c_int, c_void_p, c_ulong, POINTER(c_ulong), POINTER(c_ulong), POINTER(POINTER(c_ulong)), POINTER(c_uint)),
    XGetInputFocus=(c_int, c_void_p, POINTER(c_ulong), POINTER(c_int)),
    XSetInputFocus=(c_int, c_void_p, c_ulong, c_int, c_ulong),
    XStringToKeysym=(c_ulong, c_char_p), XKeysymToKeycode=(ctypes.c_ubyte, c_void_p, c_ulong),
    XkbKeycodeToKeysym=(c_ulong, c_void_p, ctypes.c_ubyte, c_int, c_int))
_TEST = _library(
    "libXtst.so.6",
    XTestFakeMotionEvent=(c_int, c_void_p, c_int, c_int, c_int, c_ulong),
    XTestFakeButtonEvent=(c_int, c_void_p, c_uint, c_int, c_ulong),
    XTestFakeKeyEvent=(c_int, c_void_p, c_uint, c_int, c_ulong))

# A window may go away while it is asked for; without a handler of its own the library would end the tests.
_LEAVE_ERRORS = ctypes.CFUNCTYPE(c_int, c_void_p, c_void_p)(lambda *_: 0)
_X.XInitThreads()
_X.XSetErrorHandler(_LEAVE_ERRORS)


class XClient:
    def __init__(self, display: str):
        self._display = _X.XOpenDisplay(display.encode())
        if not self._display:
            raise ConnectionError(f"there is no screen {display}")
        self._root = _X.XDefaultRootWindow(self._display)
        self._lock = threading.Lock()

    def close(self) -> None:
        """Before the server ends: the library would end the tests with it."""
        with self._lock:
            _X.XCloseDisplay(self._display)

    def _send(self, function, *arguments) -> None:
        with self._lock:
            function(self._display, *arguments, CURRENT_TIME)
            _X.XSync(self._display, False)

    def move(self, x: int, y: int) -> None:
        self._send(_TEST.XTestFakeMotionEvent, -1, x, y)

    def button(self, button: int, down: bool) -> None:
        self._send(_TEST.XTestFakeButtonEvent, button, down)

    def double_click(self) -> None:
        for pause in (BETWEEN_CLICKS, 0):
            self.button(1, True)
            time.sleep(BUTTON_HELD)
            self.button(1, False)
            time.sleep(pause)

    def _codes(self, keys: str) -> list[int]:
        """The keys of "ctrl+shift+Tab". What needs Shift by itself is typed, not pressed."""
        codes = []
        for name in keys.split("+"):
            symbol = _X.XStringToKeysym(MODIFIERS.get(name, name).encode())
            code = _X.XKeysymToKeycode(self._display, symbol)
            if not symbol or _X.XkbKeycodeToKeysym(self._display, code, 0, 0) != symbol:
                raise ValueError(f"there is no key {name!r}")
            codes.append(code)
        return codes

    def _turn(self, codes: list[int], down: bool) -> None:
        for code in codes:
            self._send(_TEST.XTestFakeKeyEvent, code, down)
            time.sleep(KEY_HELD)

    def keydown(self, keys: str) -> None:
        self._turn(self._codes(keys), True)

    def keyup(self, keys: str) -> None:
        self._turn(self._codes(keys)[::-1], False)

    def key(self, keys: str) -> None:
        self.keydown(keys)
        self.keyup(keys)

    def focus(self) -> int:
        """The window that the keys go to."""
        window, revert = c_ulong(), c_int()
        with self._lock:
            _X.XGetInputFocus(self._display, byref(window), byref(revert))
        return window.value

    def set_focus(self, window: int) -> None:
        """Nothing where the window has gone away."""
        self._send(_X.XSetInputFocus, window, REVERT_TO_PARENT)

    def titles(self) -> dict[str, int]:
        """The windows that lie on the screen itself, by their titles."""
        root, parent, windows, count = c_ulong(), c_ulong(), POINTER(c_ulong)(), c_uint()
        found = {}
        with self._lock:
            if not _X.XQueryTree(self._display, self._root, byref(root), byref(parent), byref(windows), byref(count)):
                return {}
            for window in windows[:count.value]:
                name = c_void_p()
                if _X.XFetchName(self._display, window, byref(name)) and name:
                    found[ctypes.string_at(name).decode("utf-8", "replace")] = window
                    _X.XFree(name)
            if windows:
                _X.XFree(windows)
        return found
