#!/usr/bin/env python3
"""Draws the toolbar bitmaps of resources/: `tools/make_icons.py resources`.

Each icon is a list of (colour, shape) layers in a box 16 wide and 15 or 16 high; a shape answers whether a
point lies in it. Written as 32-bit bitmaps with alpha, once at 1x and once at 2x.
"""
import math
import struct
import sys
from pathlib import Path

WIDTH = 16
SAMPLES = 6  # per axis and pixel

INK = (58, 66, 82)
BLUE = (43, 120, 214)
SKY = (142, 190, 246)
RED = (222, 66, 58)
GREEN = (38, 158, 92)
PAPER = (247, 249, 252)


def rect(left, top, right, bottom):
    return lambda x, y: left <= x < right and top <= y < bottom


def disc(cx, cy, radius):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius


def rounded(left, top, right, bottom, radius):
    def inside(x, y):
        dx = max(left + radius - x, x - right + radius, 0)
        dy = max(top + radius - y, y - bottom + radius, 0)
        return dx * dx + dy * dy <= radius * radius
    return inside


def polygon(*points):
    def inside(x, y):
        odd = False
        for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
            if (y1 > y) != (y2 > y) and x < (x2 - x1) * (y - y1) / (y2 - y1) + x1:
                odd = not odd
        return odd
    return inside


def line(points, width, closed=False, dash=None):
    """A stroke; with a dash length, every other stretch of that length is left out."""
    ends = points[1:] + points[:1] if closed else points[1:]
    segments = []
    run = 0.0
    for (x1, y1), (x2, y2) in zip(points, ends):
        length = ((x2 - x1) ** 2 + (y2 - y1) ** 2) ** 0.5
        segments.append((x1, y1, x2 - x1, y2 - y1, length, run))
        run += length

    def inside(x, y):
        for x1, y1, dx, dy, length, start in segments:
            t = ((x - x1) * dx + (y - y1) * dy) / (length * length)
            t = min(1.0, max(0.0, t))
            if (x - x1 - t * dx) ** 2 + (y - y1 - t * dy) ** 2 <= width * width / 4:
                if dash is None or int((start + t * length) / dash) % 2 == 0:
                    return True
        return False
    return inside


def arc(cx, cy, radius, width, start, end):
    """A stroke along a circle, clockwise from one angle to the other; degrees, 0 at the right."""
    def inside(x, y):
        distance = math.hypot(x - cx, y - cy)
        angle = math.degrees(math.atan2(y - cy, x - cx)) % 360
        return abs(distance - radius) <= width / 2 and (angle - start) % 360 <= (end - start) % 360
    return inside


def diamond(cx, cy, r):
    return [(cx, cy - r), (cx + r, cy), (cx, cy + r), (cx - r, cy)]


def mirrored(layers):
    return [(colour, lambda x, y, shape=shape: shape(WIDTH - x, y)) for colour, shape in layers]


def cube(cx, cy, r):
    """Outline points of a cube seen from a corner, and its middle."""
    h = r * 0.5
    return [(cx, cy - r), (cx + r, cy - h), (cx + r, cy + h), (cx, cy + r), (cx - r, cy + h), (cx - r, cy - h)], (cx, cy)


def film_strip():
    holes = [(PAPER, rect(x, y, x + 1.4, y + 1.4)) for x in (2.3, 5.6, 8.9, 12.2) for y in (2.4, 11.2)]
    return [(INK, rect(1, 1.5, 15, 13.5)), (SKY, rect(2.2, 4.8, 13.8, 10.2)),
            (PAPER, polygon((6.4, 5.2), (10.8, 7.5), (6.4, 9.8)))] + holes


def animate():
    outline, middle = cube(6.3, 8.2, 5.2)
    return [(SKY, polygon(*outline)), (PAPER, polygon(outline[0], outline[1], middle, outline[5])),
            (INK, line(outline, 1.1, closed=True)),
            (INK, line([outline[5], middle, outline[1]], 1.0)), (INK, line([middle, outline[3]], 1.0)),
            (PAPER, disc(12.4, 3.6, 3.3)), (RED, disc(12.4, 3.6, 2.6))]


def camera_frame():
    return [(INK, rect(1, 5, 10.5, 13)), (SKY, rect(2.2, 6.2, 9.3, 11.8)),
            (INK, polygon((10.5, 8.4), (14.8, 5.8), (14.8, 12.2), (10.5, 9.8))),
            (INK, disc(3.4, 3.4, 1.9)), (INK, disc(7.4, 3.0, 2.3)), (PAPER, disc(3.4, 3.4, 0.7)),
            (PAPER, disc(7.4, 3.0, 0.9)), (PAPER, rect(10.6, 0.6, 15.8, 5.8)),
            (BLUE, rect(12.5, 0.9, 13.9, 5.5)), (BLUE, rect(10.9, 2.5, 15.5, 3.9))]


def to_virtual():
    outline, middle = cube(8, 7.5, 6.4)
    return [(INK, line(outline, 1.2, closed=True, dash=1.75)),
            (BLUE, line([outline[5], middle, outline[1]], 1.1, dash=1.6)), (BLUE, line([middle, outline[3]], 1.1, dash=1.6))]


def to_normal():
    outline, middle = cube(8, 7.5, 6.4)
    return [(BLUE, polygon(*outline)), (SKY, polygon(outline[0], outline[1], middle, outline[5])),
            (INK, line(outline, 1.2, closed=True)),
            (INK, line([outline[5], middle, outline[1]], 1.1)), (INK, line([middle, outline[3]], 1.1))]


def undo():
    return [(BLUE, arc(8.5, 8.5, 4.6, 2.2, 205, 90)), (BLUE, polygon((0.8, 8.2), (7.4, 7.2), (2.6, 2.4)))]


def redo():
    return mirrored(undo())


def to_begin():
    return [(INK, rect(1, 3, 3, 13)), (BLUE, polygon((3, 8), (9, 3), (9, 13))),
            (BLUE, polygon((9, 8), (15, 3), (15, 13)))]


def to_end():
    return mirrored(to_begin())


def frame_back():
    return [(BLUE, polygon((2, 8), (10, 2.5), (10, 13.5))), (INK, rect(11, 3, 13, 13))]


def frame_forward():
    return mirrored(frame_back())


def key_back():
    return [(BLUE, polygon((0.5, 8), (7, 3.5), (7, 12.5))), (INK, polygon(*diamond(11, 8, 4.6))),
            (SKY, polygon(*diamond(11, 8, 3)))]


def key_forward():
    return mirrored(key_back())


def play():
    return [(GREEN, polygon((3, 1.5), (14.5, 8), (3, 14.5)))]


def stop():
    return [(RED, rounded(3, 3, 13, 13, 1.5))]


def validate():
    holes = [(PAPER, rect(x, y, x + 1.4, y + 1.4)) for x in (2.3, 5.6, 8.9, 12.2) for y in (2.4, 9.2)]
    return [(INK, rect(1, 1.5, 15, 11.5)), (SKY, rect(2.2, 4.8, 13.8, 8.2))] + holes + [
        (PAPER, line([(5.2, 10), (8.6, 13.4), (14.2, 6.2)], 4.2)),
        (GREEN, line([(5.2, 10), (8.6, 13.4), (14.2, 6.2)], 2.4))]


def deselect_keys():
    return [(INK, line(diamond(6.5, 7, 5.3), 1.3, closed=True, dash=1.9)),
            (RED, line([(9.4, 9.4), (14.2, 14.2)], 2.0)), (RED, line([(14.2, 9.4), (9.4, 14.2)], 2.0))]


def select_key():
    pointer = [(7.5, 6.5), (7.5, 15.2), (9.7, 13.2), (11.2, 15.6), (12.9, 14.6), (11.5, 12.3), (14.4, 12)]
    return [(INK, polygon(*diamond(6.5, 6.5, 5.9))), (SKY, polygon(*diamond(6.5, 6.5, 4.2))),
            (PAPER, line(pointer, 2.2, closed=True)), (BLUE, polygon(*pointer))]


def attach_movie():
    return [(INK, rect(1, 1, 12, 10)), (SKY, rect(2.2, 2.2, 10.8, 8.8)),
            (PAPER, polygon((4.8, 3), (9, 5.5), (4.8, 8))), (PAPER, line([(6.6, 13.2), (13.4, 9.2)], 5.6)),
            (BLUE, arc(7.2, 12.4, 2.3, 1.5, 0, 359)), (BLUE, arc(12.6, 10.4, 2.3, 1.5, 0, 359)),
            (BLUE, line([(8.6, 11.9), (11.2, 10.9)], 1.5))]


# For each bitmap the height of its pictures and how they are drawn, from left to right.
TOOLBARS = {
    "toolbar_1740": (15, [film_strip, animate, camera_frame, to_virtual, to_normal]),
    "toolbar_1757": (16, [undo, redo, to_begin, frame_back, key_back, key_forward, frame_forward, to_end, play, stop,
                          validate, animate, camera_frame, to_virtual, deselect_keys, select_key, attach_movie]),
}


def pixel(layers, left, top, size):
    """Average of the samples of one pixel, as b, g, r, a."""
    total = [0, 0, 0]
    covered = 0
    for row in range(SAMPLES):
        for column in range(SAMPLES):
            x = left + (column + 0.5) / SAMPLES * size
            y = top + (row + 0.5) / SAMPLES * size
            colour = next((c for c, shape in reversed(layers) if shape(x, y)), None)
            if colour:
                covered += 1
                total = [t + c for t, c in zip(total, colour)]
    if not covered:
        return b"\0\0\0\0"
    red, green, blue = (round(t / covered) for t in total)
    return bytes((blue, green, red, round(255 * covered / SAMPLES ** 2)))


def bitmap(icons, icon_height, scale):
    width, height = WIDTH * scale * len(icons), icon_height * scale
    rows = []
    for row in range(height):
        rows.append(b"".join(pixel(icon, column / scale, row / scale, 1 / scale)
                             for icon in icons for column in range(WIDTH * scale)))
    body = b"".join(reversed(rows))
    header = struct.pack("<2sIHHI", b"BM", 54 + len(body), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 32, 0, len(body), 2835, 2835, 0, 0)
    return header + info + body


def main():
    folder = Path(sys.argv[1])
    for name, (height, draw) in TOOLBARS.items():
        icons = [icon() for icon in draw]
        (folder / f"{name}.bmp").write_bytes(bitmap(icons, height, 1))
        (folder / f"{name}@2x.bmp").write_bytes(bitmap(icons, height, 2))


if __name__ == "__main__":
    main()
