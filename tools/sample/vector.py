"""Small vector and quaternion arithmetic on tuples: x, y, z and x, y, z, w."""

import math


def add(a, b):
    return (a[0] + b[0], a[1] + b[1], a[2] + b[2])


def sub(a, b):
    return (a[0] - b[0], a[1] - b[1], a[2] - b[2])


def scale(a, s):
    return (a[0] * s, a[1] * s, a[2] * s)


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(a):
    length = math.sqrt(dot(a, a))
    return scale(a, 1.0 / length) if length > 1e-9 else (0.0, 1.0, 0.0)


def mix(a, b, t):
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def quat(axis, degrees):
    half = math.radians(degrees) * 0.5
    s = math.sin(half)
    axis = unit(axis)
    return (axis[0] * s, axis[1] * s, axis[2] * s, math.cos(half))


def quat_mul(a, b):
    ax, ay, az, aw = a
    bx, by, bz, bw = b
    return (aw * bx + ax * bw + ay * bz - az * by, aw * by - ax * bz + ay * bw + az * bx,
            aw * bz + ax * by - ay * bx + az * bw, aw * bw - ax * bx - ay * by - az * bz)


def euler(x, y, z):
    """Degrees; about z first, then x, then y."""
    return quat_mul(quat((0, 1, 0), y), quat_mul(quat((1, 0, 0), x), quat((0, 0, 1), z)))


def rotate(q, v):
    x, y, z, w = q
    t = scale(cross((x, y, z), v), 2.0)
    return add(add(v, scale(t, w)), cross((x, y, z), t))


class Random:
    """A generator of our own, so that every Python makes the same file."""

    def __init__(self, seed):
        self.state = seed & 0xFFFFFFFF

    def next(self):
        """0 to 1."""
        self.state = (self.state * 1664525 + 1013904223) & 0xFFFFFFFF
        return (self.state >> 8) / 16777216.0

    def between(self, low, high):
        return low + (high - low) * self.next()
