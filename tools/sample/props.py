"""The things that stand around the harbour. Each maker returns (nodes, clips)."""

import math

from . import glb
from . import vector as v
from .solid import Material, Solid, ground_shade

BACK = ((2, -1),)
BELOW = ((1, -1),)

WOOD = Material("wood", "#a9784a")
DARK_WOOD = Material("dark wood", "#6b4a30")
PALE_WOOD = Material("pale wood", "#c9a878")
STONE = Material("stone", "#b0a795")
DARK_STONE = Material("dark stone", "#857d70")
IRON = Material("iron", "#4a4e55", roughness=0.42, metallic=0.6)
PAINTED_IRON = Material("painted iron", "#3f6f6a", roughness=0.7)
ROPE = Material("rope", "#cdb686")
RED = Material("red paint", "#c8442f", roughness=0.7)
WHITE = Material("white paint", "#f2ede0", roughness=0.75)
BLUE = Material("blue paint", "#2f6fa3", roughness=0.7)
YELLOW = Material("yellow paint", "#e6ae3c", roughness=0.7)
GREEN = Material("green paint", "#4f8a5b", roughness=0.75)
GLASS = Material("glass", "#2d4656", roughness=0.12)
GLOW = Material("glow", "#ffd890", emission=1.0)
CLOTH = Material("cloth", "#e8dcc0")
WATER = Material("water", "#0e4a5c", roughness=0.06, ripple=1.0)
GRASS = Material("grass", "#6f9350")
ROCK = Material("rock", "#8b8378")


def alone(name, solid, clips=()):
    return [glb.Node(name, solid=solid)], list(clips)


def crate():
    s = Solid(11)
    s.shade = ground_shade(0.5, 0.62)
    size = 0.9
    s.box((0, size / 2, 0), (size - 0.08, size - 0.08, size - 0.08), DARK_WOOD, 0.01)
    for axis in range(3):
        u, w = (axis + 1) % 3, (axis + 2) % 3
        for a in (-1, 1):
            for b in (-1, 1):
                center, extent = [0, size / 2, 0], [0.12, 0.12, 0.12]
                center[u] += a * (size / 2 - 0.06)
                center[w] += b * (size / 2 - 0.06)
                extent[axis] = size
                s.box(tuple(center), tuple(extent), PALE_WOOD, 0.015)
    for side in range(4):
        s.place((0, 0, 0), v.quat((0, 1, 0), side * 90))
        for plank in range(4):
            y = 0.2 + plank * 0.167
            s.box((0, y, size / 2 - 0.045), (size - 0.22, 0.155, 0.03), WOOD, 0.0, 0.14, BACK)
    s.place()
    for plank in range(4):
        s.box((-0.255 + plank * 0.17, size - 0.045, 0), (0.16, 0.03, size - 0.22), WOOD, 0.0, 0.14, BELOW)
    return alone("crate", s)


def barrel():
    s = Solid(12)
    s.shade = ground_shade(0.6, 0.6)
    staves = 14
    profile = [(0.03, 0.30), (0.25, 0.365), (0.5, 0.39), (0.75, 0.365), (0.97, 0.30)]
    for i in range(staves):
        tint = 1.0 + s.random.between(-0.16, 0.12)
        a0, a1 = 2 * math.pi * i / staves, 2 * math.pi * (i + 1) / staves
        for (y0, r0), (y1, r1) in zip(profile, profile[1:]):
            points = [(r0 * math.sin(a0), y0, r0 * math.cos(a0)), (r0 * math.sin(a1), y0, r0 * math.cos(a1)),
                      (r1 * math.sin(a1), y1, r1 * math.cos(a1)), (r1 * math.sin(a0), y1, r1 * math.cos(a0))]
            s.polygon(points, WOOD, tint=tint)
    for y, r in ((0.12, 0.335), (0.3, 0.378), (0.7, 0.378), (0.88, 0.335)):
        s.torus((0, y, 0), r, 0.018, IRON)
    s.cylinder((0, 0.9, 0), 0.03, 0.31, DARK_WOOD)
    s.cylinder((0, 0.02, 0), 0.03, 0.30, DARK_WOOD)
    return alone("barrel", s)


def lamp_post():
    s = Solid(13)
    s.shade = ground_shade(1.0, 0.6)
    s.lathe((0, 0, 0), [(0, 0.20), (0.12, 0.20), (0.18, 0.13), (0.6, 0.10), (0.66, 0.13), (0.72, 0.07),
                        (2.7, 0.05), (2.75, 0.09), (2.82, 0.05), (3.0, 0.05)], PAINTED_IRON, 12)
    s.beam((0, 2.55, 0), (0.55, 2.95, 0), 0.025, PAINTED_IRON)
    s.beam((0, 3.0, 0), (0.62, 3.05, 0), 0.035, PAINTED_IRON)
    lamp = glb.Node("lamp", "lamp post", (0.62, 2.98, 0), Solid(14))
    head = lamp.solid
    head.lathe((0, -0.42, 0), [(0, 0.09), (0.34, 0.15)], GLOW, 6)
    head.lathe((0, -0.08, 0), [(0, 0.21), (0.05, 0.19), (0.16, 0.04), (0.22, 0.02)], PAINTED_IRON, 6)
    head.cylinder((0, -0.46, 0), 0.05, 0.10, PAINTED_IRON, sides=6)
    for i in range(6):
        a = 2 * math.pi * i / 6
        head.beam((0.092 * math.cos(a), -0.42, 0.092 * math.sin(a)), (0.155 * math.cos(a), -0.08, 0.155 * math.sin(a)),
                  0.012, PAINTED_IRON, 4)
    return [glb.Node("lamp post", solid=s), lamp], []


def hull(s, length, width, depth, material, rim, inside):
    """An open boat along z, bow at +z, keel at y = 0."""
    stations, ribs = 10, 5

    def point(i, j, inset=0.0):
        t = i / (stations - 1) * 2 - 1
        half = width * 0.5 * (1.0 - abs(max(t, -0.75 if t < 0 else t)) ** 2.6 * (1.0 if t > 0 else 0.45)) - inset
        half = max(half, 0.02)
        rise = depth * (0.14 * max(t, 0) ** 2 * 2 + 0.06 * min(t, 0) ** 2 + 0.0)
        u = j / (ribs - 1)
        y = inset + (depth + rise - inset) * u ** 1.5
        return half * (0.25 + 0.75 * u ** 0.55), y, t * length * 0.5 * (1.0 - 0.06 * (1 - u))

    for side in (-1, 1):
        for i in range(stations - 1):
            for j in range(ribs - 1):
                quad = [point(i, j), point(i + 1, j), point(i + 1, j + 1), point(i, j + 1)]
                outer = [(x * side, y, z) for x, y, z in quad]
                if side < 0:
                    outer.reverse()
                s.polygon(list(reversed(outer)), material if j < ribs - 2 else rim, tint=0.8 + 0.06 * j)
                quad = [point(i, j, 0.06), point(i + 1, j, 0.06), point(i + 1, j + 1, 0.06), point(i, j + 1, 0.06)]
                inner = [(x * side, y, z) for x, y, z in quad]
                if side < 0:
                    inner.reverse()
                s.polygon(inner, inside, tint=0.7 + 0.08 * j)
            a, b = point(i, ribs - 1), point(i + 1, ribs - 1)
            c, d = point(i + 1, ribs - 1, 0.06), point(i, ribs - 1, 0.06)
            top = [(x * side, y, z) for x, y, z in (a, b, c, d)]
            if side > 0:
                top.reverse()
            s.polygon(top, DARK_WOOD)
    for i in range(stations - 1):
        a, b = point(i, 0), point(i + 1, 0)
        s.polygon([(-a[0], a[1], a[2]), (a[0], a[1], a[2]), (b[0], b[1], b[2]), (-b[0], b[1], b[2])], material, tint=0.7)
        a, b = point(i, 0, 0.06), point(i + 1, 0, 0.06)
        s.polygon([(-a[0], a[1] + 0.02, a[2]), (-b[0], b[1] + 0.02, b[2]), (b[0], b[1] + 0.02, b[2]),
                   (a[0], a[1] + 0.02, a[2])], inside, tint=0.75)
    stern = [point(0, j) for j in range(ribs)]
    outline = [(x, y, stern[j][2]) for j, (x, y, _) in enumerate(stern)]
    s.sheet([(-x, y, z) for x, y, z in outline] + list(reversed(outline)), rim)


def row_boat():
    s = Solid(15)
    hull(s, 3.4, 1.4, 0.55, BLUE, WHITE, PALE_WOOD)
    for z in (-0.85, 0.1, 0.95):
        s.box((0, 0.38, z), (1.15 if z < 0.5 else 0.9, 0.05, 0.26), WOOD, 0.01)
    for side in (-1, 1):
        s.beam((side * 0.45, 0.47, -1.1), (side * 0.30, 0.50, 1.0), 0.022, PALE_WOOD)
        s.box((side * 0.47, 0.46, -1.25), (0.03, 0.16, 0.42), PALE_WOOD, 0.01)
    s.torus((0.0, 0.43, -0.85), 0.12, 0.03, ROPE)
    return alone("row boat", s)


def fishing_boat():
    s = Solid(16)
    hull(s, 8.5, 2.9, 1.5, RED, WHITE, PALE_WOOD)
    s.box((0, 0.95, -0.5), (1.9, 0.06, 5.2), WOOD, 0.01)
    s.box((0, 1.85, -1.5), (1.6, 1.8, 1.9), WHITE, 0.05)
    s.box((0, 2.85, -1.45), (1.9, 0.14, 2.3), BLUE, 0.04)
    for x in (-0.45, 0.45):
        s.box((x, 2.25, -0.54), (0.55, 0.55, 0.04), GLASS, 0.01)
    for side in (-1, 1):
        s.box((side * 0.81, 2.25, -1.5), (0.04, 0.55, 1.1), GLASS, 0.01)
        s.torus((side * 0.84, 1.55, -1.5), 0.28, 0.065, WHITE, (1, 0, 0))
        s.torus((side * 0.85, 1.55, -1.5), 0.30, 0.03, RED, (1, 0, 0), 12)
    s.cylinder((0, 2.9, -2.0), 0.7, 0.16, IRON)
    s.cylinder((0, 3.5, -2.0), 0.14, 0.19, RED)
    s.beam((0, 0.9, 0.6), (0, 5.6, 0.6), 0.09, PALE_WOOD, end_radius=0.05)
    s.beam((0, 1.9, 0.6), (0, 4.4, 3.0), 0.05, PALE_WOOD)
    for x, z in ((-1.25, -0.6), (1.25, -0.6), (0, 4.1)):
        s.beam((0, 5.4, 0.6), (x, 1.7, z), 0.012, ROPE, 4)
    s.box((0, 1.2, 1.9), (1.1, 0.45, 0.9), DARK_WOOD, 0.03)
    s.sheet([(0, 5.5, 0.62), (0, 5.5, 1.35), (0, 5.05, 0.62)], RED)
    return alone("fishing boat", s)


def dock():
    s = Solid(17)
    for i in range(34):
        z = i * 0.48
        s.box((s.random.between(-0.03, 0.03), -0.05, z), (3.0, 0.09, 0.45), WOOD, 0.012, 0.2)
    for side in (-1, 1):
        s.box((side * 1.25, -0.2, 8.0), (0.2, 0.22, 16.4), DARK_WOOD, 0.02)
        for z in (0.6, 4.4, 8.2, 12.0, 15.7):
            s.cylinder((side * 1.5, -2.6, z), 3.3, 0.15, DARK_WOOD, sides=10)
            s.cylinder((side * 1.5, 0.70, z), 0.06, 0.17, ROPE, sides=10)
            s.torus((side * 1.5, 0.35, z), 0.17, 0.035, ROPE, sides=12)
    return alone("dock", s)


def quay():
    s = Solid(18)
    for row in range(8):
        for column in range(30):
            w, d = 2.0, 2.0
            x = -29 + column * w + (0.5 if row % 2 else -0.5)
            z = -13.0 + row * d
            s.box((x, -0.1, z), (w - 0.05, 0.2, d - 0.05), STONE, 0.0, 0.10, BELOW)
    s.box((0, -1.6, -6.1), (61.6, 2.9, 15.9), DARK_STONE, 0.0)
    for column in range(31):
        x = -30 + column * 2.0
        s.box((x, 0.0, 2.05), (1.96, 0.5, 0.5), STONE, 0.05, 0.14)
        for row in range(4):
            s.box((x + (1.0 if row % 2 else 0.0), -0.55 - row * 0.6, 1.95), (1.93, 0.55, 0.4), DARK_STONE, 0.0, 0.16, BACK)
    return alone("quay", s)


def water():
    s = Solid(19)
    s.polygon([(-400, 0, -400), (-400, 0, 400), (400, 0, 400), (400, 0, -400)], WATER)
    return alone("water", s)


def house(width, height, wall, trim, roof, seed, lit):
    s = Solid(seed)
    s.shade = ground_shade(1.6, 0.72)
    depth = 6.0
    peak = height + width * 0.42
    outline = [(-width / 2, 0), (width / 2, 0), (width / 2, height), (0, peak), (-width / 2, height)]
    s.place((0, 0, -depth / 2))
    s.prism(outline, depth, wall)
    s.place()
    s.box((0, 0.25, 0.06), (width + 0.1, 0.5, 0.16), DARK_STONE, 0.03)
    slope = math.hypot(width / 2, peak - height)
    angle = math.degrees(math.atan2(peak - height, width / 2))
    for side in (-1, 1):
        for row in range(6):
            along = (row + 0.5) / 6
            x = side * width / 2 * (1.06 - along * 1.06)
            y = height - 0.06 * width * 0.42 + (peak - height + 0.06 * width * 0.42) * along + 0.12
            s.place((x, y, -depth / 2), v.quat((0, 0, 1), -side * angle))
            s.box((0, -0.02 * row % 0.04, 0), (slope / 6 * 1.16, 0.12, depth + 0.7), roof, 0.0, 0.16)
    s.place()
    s.box((0, peak + 0.12, -depth / 2), (0.3, 0.22, depth + 0.8), roof, 0.05)
    floors = 2 if height > 5.5 else 1
    for floor in range(floors + 1):
        columns = (-0.28, 0.28) if floor < floors else (0.0,)
        for c in columns:
            if floor == 0 and c < 0:
                continue
            y = 1.0 + floor * 2.5
            if floor == floors:
                y = height + 0.1
            window(s, (c * width, y, 0.03), trim, lit and (floor + (c > 0)) % 2 == 0, shutters=floor < floors)
    door(s, (-0.28 * width, 0, 0.05), trim)
    s.box((width * 0.25, peak - 0.1, -depth * 0.6), (0.7, 1.9, 0.7), DARK_STONE, 0.04)
    s.box((width * 0.25, peak + 0.9, -depth * 0.6), (0.84, 0.16, 0.84), STONE, 0.03)
    return alone("house", s)


def window(s, base, trim, lit, shutters):
    x, y, z = base
    s.box((x, y + 0.65, z), (0.94, 1.34, 0.12), WHITE, 0.0, hidden=BACK)
    s.box((x, y + 0.65, z + 0.045), (0.76, 1.14, 0.06), GLOW if lit else GLASS, 0.0, hidden=BACK)
    s.box((x, y + 0.65, z + 0.075), (0.05, 1.14, 0.04), WHITE, 0.0, hidden=BACK)
    s.box((x, y + 0.78, z + 0.075), (0.76, 0.05, 0.04), WHITE, 0.0, hidden=BACK)
    s.box((x, y - 0.06, z + 0.1), (1.12, 0.1, 0.3), STONE, 0.0, hidden=BACK)
    if shutters:
        for side in (-1, 1):
            s.box((x + side * 0.70, y + 0.65, z + 0.03), (0.42, 1.34, 0.07), trim, 0.0, hidden=BACK)
            for slat in range(5):
                s.box((x + side * 0.70, y + 0.2 + slat * 0.22, z + 0.07), (0.32, 0.09, 0.03), trim, 0.0, 0.12, hidden=BACK)


def door(s, base, trim):
    x, y, z = base
    s.box((x, y + 1.12, z), (1.25, 2.3, 0.14), WHITE, 0.0, hidden=BACK)
    s.box((x, y + 1.08, z + 0.05), (1.0, 2.12, 0.1), trim, 0.0, hidden=BACK)
    for side in (-1, 1):
        s.box((x + side * 0.23, y + 1.55, z + 0.1), (0.36, 0.8, 0.04), trim, 0.0, 0.15, hidden=BACK)
        s.box((x + side * 0.23, y + 0.6, z + 0.1), (0.36, 0.75, 0.04), trim, 0.0, 0.15, hidden=BACK)
    s.ball((x + 0.4, y + 1.05, z + 0.14), (0.04, 0.04, 0.04), YELLOW, 8)
    s.box((x, y + 0.06, z + 0.3), (1.6, 0.14, 0.6), STONE, 0.0, hidden=BACK)
    for i in range(5):
        s.place((x - 0.8 + i * 0.4, y + 2.75, z + 0.45), v.quat((1, 0, 0), 28))
        s.box((0, 0, 0), (0.4, 0.04, 1.0), trim if i % 2 else CLOTH, 0.0, 0.02)
    s.place()


HOUSES = {
    "house_ochre": lambda: house(6.2, 6.2, Material("ochre wall", "#dca85a"), GREEN, Material("roof a", "#a4523a"), 31, True),
    "house_rose": lambda: house(5.2, 7.0, Material("rose wall", "#d68a78"), BLUE, Material("roof b", "#7a4a3e"), 32, False),
    "house_white": lambda: house(6.8, 5.2, Material("white wall", "#e9e0cc"), BLUE, Material("roof c", "#b0603f"), 33, True),
    "house_blue": lambda: house(5.6, 6.6, Material("blue wall", "#7ba3b8"), WHITE, Material("roof d", "#8c4a3a"), 34, False),
    "house_green": lambda: house(6.0, 5.8, Material("green wall", "#9cb27e"), RED, Material("roof e", "#9a5a40"), 35, True),
}


def crane():
    base = Solid(20)
    base.shade = ground_shade(1.2, 0.7)
    base.box((0, 0.3, 0), (2.2, 0.6, 2.2), DARK_STONE, 0.06)
    base.lathe((0, 0.6, 0), [(0, 0.55), (0.5, 0.42), (2.2, 0.36)], PAINTED_IRON, 12)
    cab = Solid(21)
    cab.cylinder((0, 0, 0), 0.16, 0.7, IRON, sides=16)
    cab.box((0, 0.85, -0.5), (1.5, 1.4, 1.9), YELLOW, 0.06)
    cab.box((0, 1.65, -0.5), (1.7, 0.14, 2.1), PAINTED_IRON, 0.04)
    cab.box((0, 1.05, 0.46), (1.1, 0.6, 0.05), GLASS, 0.0)
    for side in (-1, 1):
        cab.box((side * 0.76, 1.05, -0.3), (0.05, 0.6, 0.9), GLASS, 0.0)
    cab.box((0, 0.7, -1.75), (1.2, 0.9, 0.7), IRON, 0.05)
    boom = Solid(22)
    tip = (0, 4.6, 6.2)
    for x in (-0.35, 0.35):
        for y in (0.0, 0.45):
            boom.beam((x, y, 0), (x * 0.35, 4.6 - 0.25 + y * 0.5, 6.2), 0.05, PAINTED_IRON, 6)
    for i in range(9):
        t0, t1 = i / 9.0, (i + 1) / 9.0
        low0, low1 = v.mix((0, 0, 0), (0, 4.35, 6.2), t0), v.mix((0, 0, 0), (0, 4.35, 6.2), t1)
        w0, w1 = 0.35 * (1 - 0.65 * t0), 0.35 * (1 - 0.65 * t1)
        h1 = 0.45 * (1 - 0.5 * t1)
        for side in (-1, 1):
            boom.beam((side * w0, low0[1], low0[2]), (side * w1, low1[1] + h1, low1[2]), 0.028, PAINTED_IRON, 5)
        boom.beam((-w0, low0[1], low0[2]), (w1, low1[1], low1[2]), 0.028, PAINTED_IRON, 5)
    boom.cylinder((0, 4.4, 6.2), 0.12, 0.22, IRON)
    hook = Solid(23)
    hook.beam((0, 0, 0), (0, -3.3, 0), 0.02, IRON, 5)
    hook.box((0, -3.45, 0), (0.24, 0.34, 0.14), YELLOW, 0.03)
    hook.torus((0, -3.78, 0), 0.13, 0.035, IRON, (1, 0, 0), 12)
    nodes = [glb.Node("base", solid=base), glb.Node("cab", "base", (0, 2.8, 0), cab),
             glb.Node("boom", "cab", (0, 0.5, 0.55), boom), glb.Node("hook", "boom", tip, hook)]
    turn = [(0.0, v.quat((0, 1, 0), 0)), (2.5, v.quat((0, 1, 0), 20)), (5.0, v.quat((0, 1, 0), 55)),
            (7.0, v.quat((0, 1, 0), 70)), (8.0, v.quat((0, 1, 0), 70))]
    swing = [(i * 0.5, v.quat((1, 0, 0), 3.5 * math.sin(i * 0.5 * 1.9))) for i in range(17)]
    return nodes, [glb.Clip("Turn", {("cab", "rotation"): turn, ("hook", "rotation"): swing})]


def buoy():
    s = Solid(24)
    s.lathe((0, -0.55, 0), [(0, 0.2), (0.25, 0.75), (0.75, 0.75), (0.85, 0.55)], RED, 14)
    s.torus((0, 0.05, 0), 0.75, 0.06, DARK_WOOD)
    for i in range(4):
        a = math.pi / 4 + math.pi / 2 * i
        s.beam((0.45 * math.cos(a), 0.25, 0.45 * math.sin(a)), (0.12 * math.cos(a), 1.9, 0.12 * math.sin(a)), 0.04, WHITE, 6)
    s.cylinder((0, 1.15, 0), 0.06, 0.33, RED, sides=10)
    s.ball((0, 2.05, 0), (0.15, 0.18, 0.15), GLOW, 10)
    s.cylinder((0, 1.84, 0), 0.07, 0.2, RED, sides=10)
    root = glb.Node("buoy root")
    curve = [(i * 0.5, (0.0, 0.08 * math.sin(2 * math.pi * i / 8), 0.0)) for i in range(9)]
    tilt = [(i * 0.5, v.euler(6 * math.sin(2 * math.pi * i / 8 + 1), 0, 5 * math.cos(2 * math.pi * i / 8))) for i in range(9)]
    return [root, glb.Node("buoy", "buoy root", solid=s)], [
        glb.Clip("Bob", {("buoy", "translation"): curve, ("buoy", "rotation"): tilt})]


def cart():
    s = Solid(25)
    s.box((0, 0.62, 0), (1.1, 0.08, 1.7), WOOD, 0.015)
    for side in (-1, 1):
        for row in range(2):
            s.box((side * 0.54, 0.76 + row * 0.17, 0), (0.05, 0.14, 1.7), PALE_WOOD, 0.012, 0.12)
        s.box((side * 0.42, 0.56, 1.25), (0.07, 0.07, 1.2), DARK_WOOD, 0.012)
        s.box((side * 0.42, 0.28, -0.7), (0.07, 0.56, 0.07), DARK_WOOD, 0.012)
    s.box((0, 0.82, -0.84), (1.1, 0.34, 0.05), PALE_WOOD, 0.012)
    s.beam((-0.42, 0.56, 1.82), (0.42, 0.56, 1.82), 0.03, DARK_WOOD)
    s.beam((-0.72, 0.45, 0.1), (0.72, 0.45, 0.1), 0.04, IRON)
    for side in (-1, 1):
        s.torus((side * 0.66, 0.45, 0.1), 0.42, 0.045, DARK_WOOD, (1, 0, 0), 18)
        for i in range(8):
            a = math.pi * i / 4
            s.beam((side * 0.66, 0.45, 0.1), (side * 0.66, 0.45 + 0.4 * math.sin(a), 0.1 + 0.4 * math.cos(a)), 0.022, PALE_WOOD, 5)
    for x, z, r in ((-0.22, -0.35, 0.27), (0.25, -0.2, 0.25), (0.0, 0.3, 0.28)):
        s.ball((x, 0.84, z), (r, r * 0.8, r * 1.15), CLOTH, 12)
    return alone("cart", s)


def bollard():
    s = Solid(26)
    s.lathe((0, 0, 0), [(0, 0.22), (0.06, 0.2), (0.1, 0.13), (0.36, 0.13), (0.42, 0.22), (0.5, 0.22), (0.56, 0.14), (0.58, 0.02)], IRON, 14)
    s.torus((0, 0.2, 0), 0.17, 0.035, ROPE)
    s.torus((0, 0.27, 0), 0.17, 0.035, ROPE)
    return alone("bollard", s)


def bench():
    s = Solid(27)
    for i in range(3):
        s.box((0, 0.46, -0.16 + i * 0.15), (1.7, 0.05, 0.13), WOOD, 0.01, 0.12)
    for i in range(2):
        s.box((0, 0.68 + i * 0.17, -0.27), (1.7, 0.13, 0.05), WOOD, 0.01, 0.12)
    for x in (-0.7, 0.7):
        s.box((x, 0.23, 0.1), (0.07, 0.46, 0.07), PAINTED_IRON, 0.01)
        s.box((x, 0.47, -0.28), (0.07, 0.94, 0.06), PAINTED_IRON, 0.01)
    return alone("bench", s)


def net_rack():
    s = Solid(28)
    for x in (-1.4, 1.4):
        s.beam((x, 0, -0.5), (x, 1.9, 0), 0.05, DARK_WOOD)
        s.beam((x, 0, 0.5), (x, 1.9, 0), 0.05, DARK_WOOD)
    s.beam((-1.6, 1.86, 0), (1.6, 1.86, 0), 0.05, DARK_WOOD)
    for i in range(15):
        x = -1.35 + i * 0.193
        s.beam((x, 1.88, 0.05), (x + s.random.between(-0.12, 0.12), 0.55 + 0.25 * math.sin(i * 0.9), 0.18), 0.010, ROPE, 4)
    for j in range(7):
        y = 1.7 - j * 0.17
        for i in range(14):
            x = -1.35 + i * 0.193
            s.beam((x, y, 0.06 + j * 0.017), (x + 0.193, y - 0.03 * math.sin(i), 0.06 + j * 0.017), 0.008, ROPE, 4)
    for i in range(5):
        s.ball((-1.2 + i * 0.6, 1.86, 0.1), (0.09, 0.09, 0.09), YELLOW if i % 2 else RED, 8)
    return alone("net rack", s)


def fish_crate():
    s = Solid(29)
    s.box((0, 0.04, 0), (0.8, 0.05, 0.5), WOOD, 0.01)
    for side in (-1, 1):
        for row in range(2):
            s.box((side * 0.39, 0.12 + row * 0.12, 0), (0.04, 0.1, 0.5), PALE_WOOD, 0.008, 0.12)
            s.box((0, 0.12 + row * 0.12, side * 0.24), (0.8, 0.1, 0.04), PALE_WOOD, 0.008, 0.12)
    fish = Material("fish", "#9fb4bd", roughness=0.35, metallic=0.2)
    for i in range(7):
        x = -0.3 + i * 0.1
        y = 0.17 + s.random.between(0, 0.06)
        z = s.random.between(-0.03, 0.03)
        s.ball((x, y, z), (0.045, 0.05, 0.17), fish, 8)
        s.sheet([(x, y, z - 0.15), (x, y + 0.06, z - 0.23), (x, y - 0.05, z - 0.23)], fish)
    return alone("fish crate", s)


def lighthouse():
    s = Solid(30)
    for i in range(9):
        a = 2 * math.pi * i / 9
        r = 4.5 + s.random.between(0, 2.0)
        s.ball((r * math.cos(a), -0.5, r * math.sin(a)), (3.2 + s.random.between(-1, 1), 2.2 + s.random.between(-0.6, 0.8), 3.0), ROCK, 7)
    s.ball((0, 0, 0), (6.5, 2.6, 6.5), GRASS, 10)
    for i in range(5):
        y, r0, r1 = 2.0 + i * 3.0, 2.3 - i * 0.22, 2.3 - (i + 1) * 0.22
        s.cylinder((0, y, 0), 3.0, r0, RED if i % 2 else WHITE, r1, 18, caps=(False, False))
    s.cylinder((0, 17.0, 0), 0.35, 1.9, DARK_STONE, sides=18)
    s.cylinder((0, 17.3, 0), 1.9, 0.95, GLOW, sides=10)
    s.lathe((0, 19.2, 0), [(0, 1.4), (1.1, 0.15), (1.5, 0.1)], RED, 14)
    for i in range(10):
        a = 2 * math.pi * i / 10
        s.beam((1.8 * math.cos(a), 17.3, 1.8 * math.sin(a)), (1.8 * math.cos(a), 18.2, 1.8 * math.sin(a)), 0.05, IRON, 4)
    s.torus((0, 18.2, 0), 1.8, 0.05, IRON)
    s.box((4.2, 3.4, 1.0), (3.2, 2.4, 2.8), WHITE, 0.06)
    return alone("lighthouse", s)


def hills():
    s = Solid(36)
    bushes = Material("bushes", "#547a45")
    for i in range(11):
        x = -85 + i * 17
        s.ball((x, -3 + s.random.between(-2, 1), -34 - s.random.between(0, 16)),
               (15 + s.random.between(0, 8), 10 + s.random.between(0, 10), 13), GRASS, 12, tint=0.85 + s.random.between(0, 0.25))
    for i in range(46):
        x = s.random.between(-60, 60)
        z = -21.5 - s.random.between(0, 6)
        r = s.random.between(0.8, 2.2)
        s.ball((x, 0.4 + r * 0.4 + (-21.5 - z) * 0.55, z), (r * 1.1, r, r), bushes, 8, tint=0.75 + s.random.between(0, 0.4))
    s.box((0, -1.5, -22), (150, 2.9, 16), GRASS, 0.0)
    return alone("hills", s)


def gull():
    body = Solid(37)
    grey = Material("feathers", "#aab4ba")
    body.ball((0, 0, 0), (0.1, 0.09, 0.24), WHITE, 10)
    body.ball((0, 0.06, 0.24), (0.065, 0.065, 0.08), WHITE, 8)
    body.beam((0, 0.05, 0.29), (0, 0.03, 0.37), 0.02, YELLOW, 5, 0.005)
    body.sheet([(-0.05, 0, -0.2), (0.05, 0, -0.2), (0.1, 0, -0.38), (-0.1, 0, -0.38)], WHITE)
    nodes = [glb.Node("gull"), glb.Node("body", "gull", solid=body)]
    curves = {}
    for name, side in (("wing left", 1), ("wing right", -1)):
        wing = Solid(38)
        wing.sheet([(0, 0, 0.1), (side * 0.42, 0.05, 0.12), (side * 0.42, 0.05, -0.06), (0, 0, -0.12)][::side], grey)
        wing.sheet([(side * 0.42, 0.05, 0.12), (side * 0.85, 0.0, -0.06), (side * 0.42, 0.05, -0.06)][::side], WHITE)
        nodes.append(glb.Node(name, "body", (side * 0.07, 0.04, 0.0), wing))
        curves[(name, "rotation")] = [(i * 0.1, v.quat((0, 0, 1), side * (8 + 28 * math.sin(2 * math.pi * i / 8)))) for i in range(9)]
    curves[("body", "translation")] = [(i * 0.1, (0, -0.04 * math.sin(2 * math.pi * i / 8), 0)) for i in range(9)]
    return nodes, [glb.Clip("Fly", curves)]


def suitcase():
    s = Solid(39)
    leather = Material("leather", "#7c4a2a", roughness=0.6)
    s.box((0, -0.28, 0), (0.16, 0.36, 0.52), leather, 0.03)
    for z in (-0.15, 0.15):
        s.box((0, -0.28, z), (0.175, 0.375, 0.04), DARK_WOOD, 0.008)
    s.torus((0, -0.08, 0), 0.075, 0.016, DARK_WOOD, (1, 0, 0), 12)
    return alone("suitcase", s)


MAKERS = {"crate": crate, "barrel": barrel, "lamp_post": lamp_post, "row_boat": row_boat,
          "fishing_boat": fishing_boat, "dock": dock, "quay": quay, "water": water, "crane": crane, "buoy": buoy,
          "cart": cart, "bollard": bollard, "bench": bench, "net_rack": net_rack, "fish_crate": fish_crate,
          "lighthouse": lighthouse, "hills": hills, "gull": gull, "suitcase": suitcase, **HOUSES}
