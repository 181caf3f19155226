"""The clip that plays while a file is saved: sheets fly from one folder into another.

It is an AVI of uncompressed 8-bit pictures without sound, the plainest kind that the system's
animation control plays.
"""

import math
import struct

from canvas import Canvas, rgb

WIDTH, HEIGHT = 272, 60
FRAMES = 24
FRAME_MICROSECONDS = 50000
BACKGROUND = rgb("f0f0f0")  # The control shows the colour of the first pixel as transparent.
FOLDER, FOLDER_BACK, FOLDER_EDGE = rgb("f7c948"), rgb("c98a14"), rgb("ffe08a")
SHEETS = 2


def _folder_back(c, left):
    c.box(left, 18, left + 20, 30, FOLDER_BACK, 3)
    c.box(left, 23, left + 48, 55, FOLDER_BACK, 3)


def _folder_front(c, left):
    c.polygon([(left + 5, 33), (left + 55, 33), (left + 48, 56), (left, 56)], FOLDER)
    c.stroke([(left + 6, 34), (left + 53, 34)], FOLDER_EDGE, 2)


def _sheet(c, progress):
    """A sheet on its way, `progress` from 0 (in the left folder) to 1 (in the right one)."""
    x = 22 + progress * 196
    y = 28 - 22 * math.sin(math.pi * progress)
    c.frame(x, y, x + 22, y + 26, rgb("7d8b99"), rgb("ffffff"))
    for line in (6, 11, 16):
        c.box(x + 4, y + line, x + 18, y + line + 2, rgb("9fc5e8"))


def _frame(number):
    c = Canvas(WIDTH, HEIGHT, scale=1.0)
    c.fill(BACKGROUND)
    for left in (8, 204):
        _folder_back(c, left)
    for sheet in range(SHEETS):
        _sheet(c, (number / FRAMES + sheet / SHEETS) % 1.0)
    for left in (8, 204):
        _folder_front(c, left)
    return [(red, green, blue) for row in c.rgba_rows()
            for red, green, blue in zip(row[0::4], row[1::4], row[2::4])]


def _coarse(pixel):
    """The nearest of the few shades that keep the palette small; the background stays exact."""
    return pixel if pixel == BACKGROUND else tuple(min(255, round(v / 24) * 24) for v in pixel)


def _chunk(kind, data):
    return kind + struct.pack("<I", len(data)) + data + b"\0" * (len(data) % 2)


def _list(kind, data):
    return _chunk(b"LIST", kind + data)


def _bitmap_header(palette):
    header = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 8, 0, WIDTH * HEIGHT, 0, 0,
                         len(palette), 0)
    return header + b"".join(struct.pack("<BBBB", blue, green, red, 0)
                             for red, green, blue in palette)


def _headers(palette):
    main = struct.pack("<14I", FRAME_MICROSECONDS, WIDTH * HEIGHT * 1000000 // FRAME_MICROSECONDS,
                       0, 0x10, FRAMES, 0, 1, WIDTH * HEIGHT, WIDTH, HEIGHT, 0, 0, 0, 0)
    stream = struct.pack("<4s4sIHHIIIIIIII4H", b"vids", b"DIB ", 0, 0, 0, 0, FRAME_MICROSECONDS,
                         1000000, 0, FRAMES, WIDTH * HEIGHT, 0xFFFFFFFF, 0,
                         0, 0, WIDTH, HEIGHT)
    return _list(b"hdrl", _chunk(b"avih", main)
                 + _list(b"strl", _chunk(b"strh", stream)
                         + _chunk(b"strf", _bitmap_header(palette))))


def clip():
    """The bytes of the clip."""
    frames = [[_coarse(pixel) for pixel in _frame(number)] for number in range(FRAMES)]
    palette = [BACKGROUND] + sorted({p for frame in frames for p in frame} - {BACKGROUND})
    assert len(palette) <= 256, "too many shades for 8-bit pictures"
    index_of = {colour: index for index, colour in enumerate(palette)}

    movie, index = b"", b""
    for frame in frames:
        index += struct.pack("<4sIII", b"00db", 0x10, 4 + len(movie), WIDTH * HEIGHT)
        rows = [bytes(index_of[p] for p in frame[y * WIDTH:(y + 1) * WIDTH])
                for y in reversed(range(HEIGHT))]
        movie += _chunk(b"00db", b"".join(rows))
    body = _headers(palette) + _list(b"movi", movie) + _chunk(b"idx1", index)
    return _chunk(b"RIFF", b"AVI " + body)
