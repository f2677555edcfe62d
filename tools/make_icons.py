#!/usr/bin/env python3
"""Draws the toolbar bitmaps of resources/: `tools/make_icons.py resources`.

Each icon is a list of (colour, shape) layers in a 16 x 15 box; a shape answers whether a point lies in it.
Written as 32-bit bitmaps with alpha, once at 1x and once at 2x.
"""
import struct
import sys
from pathlib import Path

WIDTH, HEIGHT = 16, 15
SAMPLES = 6  # per axis and pixel

INK = (58, 66, 82)
BLUE = (43, 120, 214)
SKY = (142, 190, 246)
RED = (222, 66, 58)
PAPER = (247, 249, 252)


def rect(left, top, right, bottom):
    return lambda x, y: left <= x < right and top <= y < bottom


def disc(cx, cy, radius):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius


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


TOOLBARS = {"toolbar_1740": [film_strip, animate, camera_frame, to_virtual, to_normal]}


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


def bitmap(icons, scale):
    width, height = WIDTH * scale * len(icons), HEIGHT * scale
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
    for name, draw in TOOLBARS.items():
        icons = [icon() for icon in draw]
        (folder / f"{name}.bmp").write_bytes(bitmap(icons, 1))
        (folder / f"{name}@2x.bmp").write_bytes(bitmap(icons, 2))


if __name__ == "__main__":
    main()
