"""The program's icon and the pictures of its picture buttons, as Windows icons."""

import struct

from canvas import Canvas, rgb

APPLICATION_SIZES = (16, 20, 24, 32, 40, 48, 64, 256)
BUTTON_SIZES = (16, 20, 24, 32, 40, 48)
LARGEST_PLAIN = 64  # Larger pictures are stored as PNG, which every Windows since Vista reads.

INK = rgb("3a4653")
PAPER = rgb("ffffff")


def application(c):
    """A strip of film; the part between two handles is kept."""
    c.box(0, 1, 16, 15, rgb("22303f"), 2.2)
    for x in (1, 5, 9, 13):
        c.box(x, 2.5, x + 2, 4, rgb("8fa3b5"), 0.4)
        c.box(x, 12, x + 2, 13.5, rgb("8fa3b5"), 0.4)
    c.box(1, 5, 15, 11, rgb("566a7d"))
    c.box(4, 5, 12, 11, rgb("4fc3d9"))
    c.polygon([(4.5, 11), (7, 7.4), (9.5, 11)], rgb("23788c"))
    c.polygon([(7.5, 11), (9.5, 8.4), (11.5, 11)], rgb("2f93a8"))
    for x in (3, 12):
        c.box(x, 4, x + 1, 12, rgb("ffb02e"), 0.3)


def open_file(c):
    """A folder that stands open."""
    c.box(1, 3, 7, 6, rgb("c98a14"), 0.8)
    c.box(1, 4, 14, 14, rgb("c98a14"), 0.8)
    c.box(3, 5, 13, 9, PAPER)
    c.polygon([(3.4, 7), (15.6, 7), (13.6, 14), (1.2, 14)], rgb("f7c948"))
    c.stroke([(3.4, 7.4), (15.2, 7.4)], rgb("ffe08a"), 0.8)


def save_file(c):
    """A diskette."""
    c.box(1, 1, 15, 15, rgb("2f6fb5"), 1.0)
    c.box(4, 1, 12, 6, rgb("dfe7ef"))
    c.box(9, 2, 11, 5, rgb("2f6fb5"))
    c.box(3, 8, 13, 15, PAPER)
    for y in (10, 12):
        c.box(5, y, 11, y + 1, rgb("9db2c6"))


def _stacked_boxes(c):
    c.frame(5, 1, 15, 11, INK, rgb("eef2f5"))
    c.frame(1, 5, 11, 15, INK, PAPER)


def tick_all(c):
    """Two check boxes, ticked."""
    _stacked_boxes(c)
    c.stroke([(3.2, 10.2), (5.2, 12.3), (9.2, 7.4)], rgb("1c9146"), 1.7)


def clear_all(c):
    """Two check boxes, empty."""
    _stacked_boxes(c)


def _plain_image(c):
    """A 32-bit bitmap with alpha, as icons hold it: bottom row first, then an empty mask."""
    rows = [bytes(v for i in range(0, len(row), 4)
                  for v in (row[i + 2], row[i + 1], row[i], row[i + 3]))
            for row in reversed(c.rgba_rows())]
    mask = bytes((c.width + 31) // 32 * 4 * c.height)
    header = struct.pack("<IiiHHIIiiII", 40, c.width, 2 * c.height, 1, 32, 0, 0, 0, 0, 0, 0)
    return header + b"".join(rows) + mask


def icon(draw, sizes):
    """The bytes of a Windows icon that holds the picture in each of `sizes` pixels."""
    directory = struct.pack("<HHH", 0, 1, len(sizes))
    offset = len(directory) + 16 * len(sizes)
    images = b""
    for size in sizes:
        canvas = Canvas(size)
        draw(canvas)
        image = _plain_image(canvas) if size <= LARGEST_PLAIN else canvas.png()
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(image),
                                 offset + len(images))
        images += image
    return directory + images


ICONS = {
    "trimbrook.ico": (application, APPLICATION_SIZES),
    "open.ico": (open_file, BUTTON_SIZES),
    "save.ico": (save_file, BUTTON_SIZES),
    "tick_all.ico": (tick_all, BUTTON_SIZES),
    "clear_all.ico": (clear_all, BUTTON_SIZES),
}
