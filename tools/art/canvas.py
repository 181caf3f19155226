"""A small painter of antialiased shapes, for pictures that need no more than the standard library.

Shapes are given in a design grid of 16 units and painted at any pixel size. Edges of boxes snap to
whole pixels, so that straight lines stay crisp at every size.
"""

import math
import struct
import zlib

GRID = 16.0


def rgb(text):
    """The colour "rrggbb" as three numbers from 0 to 255."""
    return tuple(int(text[i:i + 2], 16) for i in (0, 2, 4))


class Canvas:
    """Pixels of premultiplied colour and coverage, top row first, at first transparent."""

    def __init__(self, width, height=None, scale=None):
        self.width = width
        self.height = height or width
        self.scale = scale or width / GRID
        self.pixels = [(0.0, 0.0, 0.0, 0.0)] * (self.width * self.height)

    def fill(self, colour):
        self.pixels = [(*colour, 1.0)] * (self.width * self.height)

    def _paint(self, distance, bounds, colour, alpha=1.0):
        """Paints where `distance` (pixels to the shape's edge, negative inside) says so."""
        left, top, right, bottom = bounds
        for y in range(max(0, math.floor(top) - 1), min(self.height, math.ceil(bottom) + 1)):
            for x in range(max(0, math.floor(left) - 1), min(self.width, math.ceil(right) + 1)):
                cover = min(1.0, max(0.0, 0.5 - distance(x + 0.5, y + 0.5))) * alpha
                if cover > 0.0:
                    i = y * self.width + x
                    old = self.pixels[i]
                    self.pixels[i] = (*(c * cover + o * (1 - cover)
                                        for c, o in zip(colour, old[:3])),
                                      cover + old[3] * (1 - cover))

    def box(self, left, top, right, bottom, colour, radius=0.0, alpha=1.0):
        """A box, its corners rounded by `radius`."""
        x0, y0, x1, y1 = (float(round(v * self.scale)) for v in (left, top, right, bottom))
        x1, y1 = max(x1, x0 + 1), max(y1, y0 + 1)
        r = min(radius * self.scale, (x1 - x0) / 2, (y1 - y0) / 2)
        middle_x, middle_y = (x0 + x1) / 2, (y0 + y1) / 2
        half_x, half_y = (x1 - x0) / 2 - r, (y1 - y0) / 2 - r

        def distance(x, y):
            dx, dy = abs(x - middle_x) - half_x, abs(y - middle_y) - half_y
            return math.hypot(max(dx, 0), max(dy, 0)) + min(max(dx, dy), 0) - r

        self._paint(distance, (x0, y0, x1, y1), colour, alpha)

    def frame(self, left, top, right, bottom, edge, inside, line=1.0, radius=0.0):
        """A box with an edge of `line` units, at least one pixel."""
        self.box(left, top, right, bottom, edge, radius)
        pixels = max(1, round(line * self.scale)) / self.scale
        self.box(left + pixels, top + pixels, right - pixels, bottom - pixels, inside,
                 max(0.0, radius - pixels))

    def stroke(self, points, colour, thickness, alpha=1.0):
        """A line through `points` with round ends."""
        scaled = [(x * self.scale, y * self.scale) for x, y in points]
        r = thickness * self.scale / 2

        def to_segment(x, y, a, b):
            ax, ay, bx, by = *a, *b
            length = (bx - ax) ** 2 + (by - ay) ** 2
            t = min(1.0, max(0.0, ((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / length))
            return math.hypot(x - ax - t * (bx - ax), y - ay - t * (by - ay))

        def distance(x, y):
            return min(to_segment(x, y, a, b) for a, b in zip(scaled, scaled[1:])) - r

        self._paint(distance, self._bounds(scaled, r), colour, alpha)

    def polygon(self, points, colour, alpha=1.0):
        """A convex polygon, its points clockwise on the screen."""
        scaled = [(x * self.scale, y * self.scale) for x, y in points]
        edges = list(zip(scaled, scaled[1:] + scaled[:1]))

        def distance(x, y):
            return max(((x - ax) * (by - ay) - (y - ay) * (bx - ax))
                       / math.hypot(bx - ax, by - ay) for (ax, ay), (bx, by) in edges)

        self._paint(distance, self._bounds(scaled, 0), colour, alpha)

    @staticmethod
    def _bounds(points, margin):
        xs, ys = zip(*points)
        return min(xs) - margin, min(ys) - margin, max(xs) + margin, max(ys) + margin

    def rgba_rows(self):
        """Rows from the top, each the bytes red, green, blue, alpha of its pixels."""
        rows = []
        for y in range(self.height):
            row = bytearray()
            for red, green, blue, alpha in self.pixels[y * self.width:(y + 1) * self.width]:
                divisor = alpha or 1.0
                row += bytes(min(255, round(c / divisor)) for c in (red, green, blue))
                row.append(round(alpha * 255))
            rows.append(bytes(row))
        return rows

    def png(self):
        def chunk(kind, data):
            body = kind + data
            return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 6, 0, 0, 0)
        raw = b"".join(b"\0" + row for row in self.rgba_rows())
        return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
                + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))
