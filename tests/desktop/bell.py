"""The bell of the X server, which is what programs beep with."""

import ctypes

from keyboard_grab import X11

KEYBOARD = 0x100  # the core keyboard
BELL_MASK = 1 << 8


class Bell:
    """Hears each ringing from its making on."""

    def __init__(self, display_name):
        X11.XkbOpenDisplay.restype = ctypes.c_void_p
        first_event = ctypes.c_int()
        self.display = ctypes.c_void_p(X11.XkbOpenDisplay(
            display_name.encode(), ctypes.byref(first_event), None, None, None, None))
        self.first_event = first_event.value
        X11.XkbSelectEvents(self.display, KEYBOARD, BELL_MASK, BELL_MASK)
        X11.XSync(self.display, 0)
        self.rings = 0

    def count(self):
        """How often it has rung."""
        event = (ctypes.c_long * 24)()
        while X11.XPending(self.display):
            X11.XNextEvent(self.display, event)
            if ctypes.c_int.from_buffer(event).value == self.first_event:
                self.rings += 1
        return self.rings

    def close(self):
        X11.XCloseDisplay(self.display)
