"""Waiting for what others do, never for a time that should be long enough."""

import time


def wait_for(condition, what, timeout=60.0):
    """Waits until `condition` gives something true, and returns it."""
    end = time.monotonic() + timeout
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError("waited in vain for " + what)
        time.sleep(0.02)
