"""Windows as they look, pixel by pixel."""

import collections
import struct
import subprocess

SAMPLE = 97  # each so many'th pixel


def picture_of(env, *which):
    """What `xwd` sees; None while a window in it comes or goes, which ends it."""
    asked = subprocess.run(["xwd", "-silent", *which], env=env, stdout=subprocess.PIPE,
                           stderr=subprocess.DEVNULL, check=False, timeout=60)
    return Picture(asked.stdout) if asked.returncode == 0 else None


class Picture:
    """The pixels of a window. Colours are (red, green, blue)."""

    def __init__(self, data):
        header = struct.unpack(">25I", data[:100])
        self.data = data
        self.begin = header[0] + 12 * header[19]
        self.width, self.height = header[4], header[5]
        self.pixel_size, self.line_size = header[11] // 8, header[12]

    def color(self, x, y):
        at = self.begin + y * self.line_size + x * self.pixel_size
        return tuple(reversed(self.data[at:at + 3]))

    def colors(self):
        return {self.color(x, y) for y in range(self.height) for x in range(self.width)}

    def commonest_color(self):
        """By a sample of the pixels."""
        places = range(0, self.width * self.height, SAMPLE)
        pixels = collections.Counter(
            self.color(place % self.width, place // self.width) for place in places)
        return pixels.most_common(1)[0][0]
