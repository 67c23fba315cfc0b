"""Whether some program has the keyboard for itself, as an open menu does."""

import ctypes

X11 = ctypes.CDLL("libX11.so.6")
X11.XOpenDisplay.restype = ctypes.c_void_p
X11.XOpenDisplay.argtypes = [ctypes.c_char_p]
X11.XDefaultRootWindow.restype = ctypes.c_ulong
X11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
X11.XGrabKeyboard.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int,
                              ctypes.c_int, ctypes.c_ulong]
X11.XCloseDisplay.argtypes = [ctypes.c_void_p]

ALREADY_GRABBED = 1
GRAB_ASYNC = 1
CURRENT_TIME = 0


def is_keyboard_grabbed(display_name):
    """Asks by trying; a grab of ours ends with the connection."""
    display = X11.XOpenDisplay(display_name.encode())
    answer = X11.XGrabKeyboard(display, X11.XDefaultRootWindow(display), 0, GRAB_ASYNC, GRAB_ASYNC,
                               CURRENT_TIME)
    X11.XCloseDisplay(display)
    return answer == ALREADY_GRABBED
