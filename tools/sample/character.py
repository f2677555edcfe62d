"""The two people of the harbour: one skeleton, two sets of clothes."""

import math

from . import glb
from . import vector as v
from .solid import Material, Solid

SIDES = (("L", 1), ("R", -1))

# Name, parent, place relative to the parent. The people look along +z, so their left is +x.
SKELETON = [
    ("Bip01", None, (0, 0.93, 0)),
    ("Bip01 Pelvis", "Bip01", (0, 0, 0)),
    ("Bip01 Spine", "Bip01 Pelvis", (0, 0.10, 0)),
    ("Bip01 Spine1", "Bip01 Spine", (0, 0.20, 0)),
    ("Bip01 Neck", "Bip01 Spine1", (0, 0.21, 0)),
    ("Bip01 Head", "Bip01 Neck", (0, 0.07, 0.01)),
    ("jaw", "Bip01 Head", (0, 0.05, 0.04)),
    ("hat", "Bip01 Head", (0, 0.24, 0)),
    ("Bip01 L Clavicle", "Bip01 Spine1", (0.05, 0.15, 0)),
    ("Bip01 L UpperArm", "Bip01 L Clavicle", (0.135, 0, 0)),
    ("Bip01 L Forearm", "Bip01 L UpperArm", (0, -0.27, 0)),
    ("Bip01 L Hand", "Bip01 L Forearm", (0, -0.25, 0)),
    ("Bip01 R Clavicle", "Bip01 Spine1", (-0.05, 0.15, 0)),
    ("Bip01 R UpperArm", "Bip01 R Clavicle", (-0.135, 0, 0)),
    ("Bip01 R Forearm", "Bip01 R UpperArm", (0, -0.27, 0)),
    ("Bip01 R Hand", "Bip01 R Forearm", (0, -0.25, 0)),
    ("prop", "Bip01 R Hand", (0, -0.09, 0)),
    ("Bip01 L Thigh", "Bip01 Pelvis", (0.10, -0.04, 0)),
    ("Bip01 L Calf", "Bip01 L Thigh", (0, -0.41, 0)),
    ("Bip01 L Foot", "Bip01 L Calf", (0, -0.40, 0)),
    ("Bip01 R Thigh", "Bip01 Pelvis", (-0.10, -0.04, 0)),
    ("Bip01 R Calf", "Bip01 R Thigh", (0, -0.41, 0)),
    ("Bip01 R Foot", "Bip01 R Calf", (0, -0.40, 0)),
]


def places():
    world = {}
    for name, parent, offset in SKELETON:
        world[name] = v.add(world[parent], offset) if parent else offset
    return world


class Look:
    def __init__(self, skin, coat, shirt, trousers, boots, hair, hat, beard, cap):
        self.skin = Material("skin", skin, roughness=0.8)
        self.coat = Material("coat", coat)
        self.shirt = Material("shirt", shirt)
        self.trousers = Material("trousers", trousers)
        self.boots = Material("boots", boots, roughness=0.7)
        self.hair = Material("hair", hair)
        self.hat = Material("hat cloth", hat)
        self.gold = Material("buttons", "#e0b64a", roughness=0.4, metallic=0.5)
        self.white = Material("eye white", "#f4f0e6")
        self.dark = Material("pupil", "#20242a")
        self.mouth = Material("mouth", "#6e2f2a")
        self.beard = beard
        self.cap = cap


def ring(center, x, z, weights):
    return (center, (x, 0, 0), (0, 0, -z), weights)


def limb(s, rows, material, caps=(True, True), sides=12):
    s.rings([ring(c, r, r * k, w) for c, r, k, w in rows], material, sides, caps)


def torso(s, look, at):
    pelvis, spine, chest = "Bip01 Pelvis", "Bip01 Spine", "Bip01 Spine1"
    rows = [(-0.10, 0.165, 0.125, {pelvis: 1}), (-0.02, 0.180, 0.140, {pelvis: 1}),
            (0.06, 0.175, 0.140, {pelvis: 0.6, spine: 0.4}), (0.16, 0.172, 0.138, {spine: 1}),
            (0.27, 0.185, 0.142, {spine: 0.5, chest: 0.5}), (0.38, 0.200, 0.140, {chest: 1}),
            (0.45, 0.195, 0.125, {chest: 1}), (0.50, 0.150, 0.100, {chest: 1}),
            (0.53, 0.085, 0.080, {chest: 0.7, "Bip01 Neck": 0.3})]
    s.rings([ring((0, 0.93 + y, 0), x, z, w) for y, x, z, w in rows], look.coat, 16, (True, False))
    s.rings([ring((0, 0.93 + y, 0.0), x, z, {pelvis: 1}) for y, x, z in
             ((-0.16, 0.215, 0.17), (-0.06, 0.190, 0.150), (0.02, 0.186, 0.146))], look.coat, 16, (False, False), 0.92)
    s.rings([ring((0, 0.93 + y, 0), x, z, {pelvis: 1}) for y, x, z in
             ((0.015, 0.187, 0.148), (0.06, 0.184, 0.148))], look.boots, 16, (True, True))
    s.box_weights((0, 0.967, 0.148), (0.06, 0.05, 0.015), look.gold, {pelvis: 1})
    for i in range(3):
        y = 1.06 + i * 0.10
        s.ball((0.0, y, 0.139 + 0.004 * i), (0.016, 0.016, 0.012), look.gold, 6, {spine if i < 2 else chest: 1})
    collar = [ring((0, 1.455, 0.0), 0.105, 0.100, {chest: 1}), ring((0, 1.505, 0.005), 0.085, 0.085, {chest: 0.5, "Bip01 Neck": 0.5})]
    s.rings(collar, look.shirt, 14, (False, False))
    s.rings([ring((0, 1.44, 0), 0.062, 0.062, {chest: 0.6, "Bip01 Neck": 0.4}),
             ring((0, 1.55, 0.01), 0.058, 0.060, {"Bip01 Neck": 0.5, "Bip01 Head": 0.5})], look.skin, 10, (False, False))


def head(s, look, at):
    base = at["Bip01 Head"]
    bone = {"Bip01 Head": 1}

    def p(x, y, z):
        return v.add(base, (x, y, z))

    profile = [(-0.01, 0.060, 0.075, 0.015), (0.03, 0.098, 0.112, 0.012), (0.08, 0.122, 0.130, 0.006),
               (0.14, 0.132, 0.138, 0.0), (0.20, 0.130, 0.136, -0.004), (0.25, 0.112, 0.118, -0.006),
               (0.285, 0.072, 0.078, -0.006), (0.30, 0.005, 0.005, -0.006)]
    s.rings([ring(p(0, y, dz), x, z, bone) for y, x, z, dz in profile], look.skin, 18, (True, False))
    s.ball(p(0, 0.115, 0.145), (0.026, 0.034, 0.034), look.skin, 10, bone, 0.96)
    for side in (-1, 1):
        s.ball(p(side * 0.052, 0.155, 0.114), (0.027, 0.031, 0.022), look.white, 10, bone)
        s.ball(p(side * 0.050, 0.154, 0.130), (0.014, 0.017, 0.010), look.dark, 8, bone)
        s.ball(p(side * 0.133, 0.13, -0.005), (0.02, 0.036, 0.026), look.skin, 8, bone, 0.92)
        s.beam(p(side * 0.082, 0.196, 0.112), p(side * 0.022, 0.200, 0.137), 0.010, look.hair, 6, None, bone)
    jaw = {"jaw": 1}
    s.ball(p(0, 0.018, 0.052), (0.070, 0.040, 0.072), look.skin, 12, jaw, 0.98)
    s.ball(p(0, 0.052, 0.116), (0.036, 0.010, 0.016), look.mouth, 8, {"Bip01 Head": 0.5, "jaw": 0.5})
    s.rings([ring(p(0, y, dz), x, z, bone) for y, x, z, dz in
             ((0.085, 0.118, 0.085, -0.055), (0.14, 0.139, 0.118, -0.028), (0.20, 0.139, 0.140, -0.012),
              (0.26, 0.118, 0.126, -0.010), (0.30, 0.06, 0.07, -0.008), (0.312, 0.004, 0.004, -0.008))],
            look.hair, 16, (True, False))
    if look.beard:
        s.rings([ring(p(0, y, dz), x, z, {"Bip01 Head": 0.35, "jaw": 0.65}) for y, x, z, dz in
                 ((-0.085, 0.02, 0.02, 0.10), (-0.05, 0.07, 0.06, 0.075), (0.0, 0.108, 0.100, 0.045),
                  (0.05, 0.124, 0.110, 0.022), (0.085, 0.128, 0.10, 0.0))], look.hair, 14, (True, False))
        s.ball(p(0, 0.078, 0.135), (0.062, 0.018, 0.024), look.hair, 10, bone)
    hat(s, look, p)


def hat(s, look, p):
    bone = {"hat": 1}
    if look.cap:
        s.rings([ring(p(0, y, dz), x, z, bone) for y, x, z, dz in
                 ((0.225, 0.140, 0.146, -0.004), (0.265, 0.142, 0.148, -0.004))], look.dark, 18, (False, False))
        s.rings([ring(p(0, y, dz), x, z, bone) for y, x, z, dz in
                 ((0.265, 0.142, 0.148, -0.004), (0.315, 0.178, 0.184, -0.006), (0.335, 0.165, 0.170, -0.008),
                  (0.345, 0.01, 0.01, -0.008))], look.hat, 18, (False, False))
        brim = []
        for i in range(9):
            a = math.pi * (i / 8.0)
            brim.append((math.cos(a) * 0.135, math.sin(a)))
        for (x0, d0), (x1, d1) in zip(brim, brim[1:]):
            quad = [p(x0, 0.236, 0.045 + d0 * 0.088), p(x0 * 1.02, 0.215, 0.05 + d0 * 0.175),
                    p(x1 * 1.02, 0.215, 0.05 + d1 * 0.175), p(x1, 0.236, 0.045 + d1 * 0.088)]
            for points in (quad, list(reversed(quad))):
                s.polygon(points, look.dark, weights=[bone] * 4)
        s.ball(p(0, 0.282, 0.158), (0.024, 0.022, 0.012), look.gold, 8, bone)
    else:
        s.rings([ring(p(0, y, dz), x, z, bone) for y, x, z, dz in
                 ((0.205, 0.146, 0.152, -0.008), (0.250, 0.150, 0.156, -0.008))], look.hat, 16, (False, False), 0.85)
        s.rings([ring(p(0, y, dz), x, z, bone) for y, x, z, dz in
                 ((0.248, 0.143, 0.149, -0.008), (0.290, 0.126, 0.132, -0.010), (0.325, 0.085, 0.09, -0.012),
                  (0.340, 0.01, 0.01, -0.012))], look.hat, 16, (False, False))
        s.ball(p(0, 0.352, -0.012), (0.030, 0.028, 0.030), look.white, 8, bone)


def arm(s, look, at, letter, side):
    clavicle, upper = "Bip01 %s Clavicle" % letter, "Bip01 %s UpperArm" % letter
    fore, hand = "Bip01 %s Forearm" % letter, "Bip01 %s Hand" % letter
    top, elbow, wrist = at[upper], at[fore], at[hand]

    def down(point, y):
        return v.add(point, (0, -y, 0))

    s.ball(v.add(top, (-side * 0.015, -0.01, 0)), (0.072, 0.064, 0.072), look.coat, 12, {upper: 0.6, clavicle: 0.4})
    limb(s, [(down(top, 0.0), 0.064, 1.05, {upper: 1}), (down(top, 0.10), 0.060, 1.05, {upper: 1}),
             (down(top, 0.21), 0.054, 1.05, {upper: 1}), (down(elbow, -0.02), 0.051, 1.05, {upper: 0.75, fore: 0.25}),
             (down(elbow, 0.02), 0.051, 1.05, {upper: 0.25, fore: 0.75}), (down(elbow, 0.09), 0.050, 1.05, {fore: 1}),
             (down(elbow, 0.20), 0.048, 1.05, {fore: 1})], look.coat)
    s.rings([ring(down(elbow, 0.185), 0.054, 0.057, {fore: 1}), ring(down(elbow, 0.225), 0.054, 0.057, {fore: 1})],
            look.shirt, 12, (True, True))
    limb(s, [(down(wrist, -0.035), 0.034, 1.1, {fore: 0.6, hand: 0.4}), (down(wrist, 0.0), 0.034, 1.15, {hand: 1})], look.skin)
    s.ball(down(wrist, 0.055), (0.034, 0.062, 0.048), look.skin, 10, {hand: 1})
    s.ball(v.add(down(wrist, 0.085), (-side * 0.006, 0, 0.006)), (0.028, 0.045, 0.040), look.skin, 10, {hand: 1})
    s.beam(v.add(wrist, (-side * 0.01, -0.03, 0.034)), v.add(wrist, (-side * 0.018, -0.085, 0.058)), 0.017,
           look.skin, 7, 0.013, {hand: 1})


def leg(s, look, at, letter, side):
    thigh, calf, foot = ("Bip01 %s %s" % (letter, part) for part in ("Thigh", "Calf", "Foot"))
    hip, knee, ankle = at[thigh], at[calf], at[foot]

    def down(point, y, z=0.0):
        return v.add(point, (0, -y, z))

    limb(s, [(down(hip, -0.05), 0.088, 1.1, {"Bip01 Pelvis": 0.7, thigh: 0.3}), (down(hip, 0.06), 0.096, 1.1, {thigh: 1}),
             (down(hip, 0.20), 0.087, 1.08, {thigh: 1}), (down(knee, -0.04), 0.074, 1.08, {thigh: 0.8, calf: 0.2}),
             (down(knee, 0.03), 0.071, 1.08, {thigh: 0.25, calf: 0.75}), (down(knee, 0.14), 0.070, 1.08, {calf: 1}),
             (down(knee, 0.22), 0.074, 1.05, {calf: 1})], look.trousers, (True, True), 14)
    limb(s, [(down(knee, 0.17), 0.083, 1.05, {calf: 1}), (down(knee, 0.21), 0.083, 1.05, {calf: 1}),
             (down(knee, 0.30), 0.066, 1.1, {calf: 1}), (down(ankle, -0.02), 0.062, 1.2, {calf: 0.5, foot: 0.5}),
             (down(ankle, 0.05), 0.064, 1.25, {foot: 1})], look.boots, (True, True), 14)
    rows = [(-0.075, 0.045, 0.050), (-0.04, 0.062, 0.064), (0.04, 0.062, 0.060), (0.12, 0.064, 0.048), (0.175, 0.050, 0.034)]
    s.rings([(v.add(ankle, (0, -0.075 + h - 0.035, z)), (x, 0, 0), (0, h, 0), {foot: 1}) for z, x, h in rows],
            look.boots, 12, (True, True))
    s.box_weights(v.add(ankle, (0, -0.068, 0.05)), (0.125, 0.024, 0.27), look.dark, {foot: 1})


class Body(Solid):
    def box_weights(self, center, size, material, weights):
        """A plain box that hangs on bones."""
        half = [x * 0.5 for x in size]
        for axis in range(3):
            u, w = (axis + 1) % 3, (axis + 2) % 3
            for side in (-1, 1):
                points = []
                for a, b in ((-1, -1), (1, -1), (1, 1), (-1, 1))[::side]:
                    point = list(center)
                    point[axis] += side * half[axis]
                    point[u] += a * half[u]
                    point[w] += b * half[w]
                    points.append(tuple(point))
                self.polygon(points, material, weights=[weights] * 4)


def build(look):
    s = Body(41)
    # Less light reaches the legs and the underside of the chin.
    s.shade = lambda p: 0.72 + 0.28 * min(max(p[1] / 1.1, 0.0), 1.0)
    at = places()
    torso(s, look, at)
    head(s, look, at)
    for letter, side in SIDES:
        arm(s, look, at, letter, side)
        leg(s, look, at, letter, side)
    return s


class Poser:
    """Collects turns in degrees by bone and moment: about x (forwards), y (left), z (away to the left)."""

    def __init__(self, duration, steps):
        self.duration, self.steps = duration, steps
        self.curves = {}

    def turn(self, bone, function):
        """`function` of 0 to 1 gives three angles."""
        keys = [(self.duration * i / self.steps, v.euler(*function(i / self.steps))) for i in range(self.steps + 1)]
        self.curves[(bone, "rotation")] = keys

    def move(self, bone, function):
        rest = next(offset for name, _, offset in SKELETON if name == bone)
        keys = [(self.duration * i / self.steps, v.add(rest, function(i / self.steps))) for i in range(self.steps + 1)]
        self.curves[(bone, "translation")] = keys

    def clip(self, name):
        return glb.Clip(name, self.curves)


def wave(u, phase=0.0, times=1):
    return math.sin(2 * math.pi * (u * times + phase))


def relaxed_arms(p, lift=0.0):
    for letter, side in SIDES:
        p.turn("Bip01 %s UpperArm" % letter, lambda u, side=side: (2 + lift + 1.5 * wave(u, 0.1), 0, side * (9 + 1.2 * wave(u))))
        p.turn("Bip01 %s Forearm" % letter, lambda u, side=side: (-16 + 2 * wave(u, 0.3), 0, 0))


def idle():
    p = Poser(3.2, 16)
    relaxed_arms(p)
    p.turn("Bip01 Spine", lambda u: (1.0 * wave(u), 2.0 * wave(u, 0.2), 0.8 * wave(u, 0.5)))
    p.turn("Bip01 Spine1", lambda u: (-1.8 * wave(u, 0.08), 0, 0))
    p.turn("Bip01 Head", lambda u: (1.5 * wave(u, 0.3), 5.0 * wave(u, 0.6), 1.2 * wave(u)))
    p.move("Bip01", lambda u: (0.008 * wave(u, 0.25), 0.006 * wave(u), 0))
    return p.clip("Idle")


def walk():
    p = Poser(1.0, 16)
    for letter, side in SIDES:
        phase = 0.0 if side > 0 else 0.5
        p.turn("Bip01 %s Thigh" % letter, lambda u, f=phase: (-27 * wave(u, f) - 3, 0, 0))
        p.turn("Bip01 %s Calf" % letter, lambda u, f=phase: (8 + 46 * max(wave(u, f + 0.22), 0.0) ** 1.3, 0, 0))
        p.turn("Bip01 %s Foot" % letter, lambda u, f=phase: (-6 + 16 * wave(u, f + 0.52), 0, 0))
        p.turn("Bip01 %s UpperArm" % letter, lambda u, f=phase, side=side: (24 * wave(u, f), 0, side * 8))
        p.turn("Bip01 %s Forearm" % letter, lambda u, f=phase: (-26 + 12 * wave(u, f), 0, 0))
    p.turn("Bip01 Spine", lambda u: (4, -5 * wave(u), 1.5 * wave(u, 0.25)))
    p.turn("Bip01 Spine1", lambda u: (1, 8 * wave(u), 0))
    p.turn("Bip01 Head", lambda u: (-3, -4 * wave(u), 0))
    p.move("Bip01", lambda u: (0.015 * wave(u, 0.25), -0.022 + 0.022 * wave(u, 0.12, 2), 0))
    return p.clip("Walk")


def greeting():
    p = Poser(2.4, 24)

    def rise(u):
        return min(u / 0.18, 1.0, (1.0 - u) / 0.2) if 0 < u < 1 else 0.0

    def soft(u):
        r = max(rise(u), 0.0)
        return r * r * (3 - 2 * r)

    relaxed_arms(p)
    p.turn("Bip01 R UpperArm", lambda u: (2, -18 * soft(u), -9 - 122 * soft(u)))
    p.turn("Bip01 R Forearm", lambda u: (-16 + 10 * soft(u), 0, soft(u) * (-26 + 26 * wave(u, 0, 4))))
    p.turn("Bip01 R Hand", lambda u: (0, 0, soft(u) * 14 * wave(u, -0.1, 4)))
    p.turn("Bip01 R Clavicle", lambda u: (0, 0, -14 * soft(u)))
    p.turn("Bip01 Spine", lambda u: (-2 * soft(u), 4 * soft(u), 3 * soft(u)))
    p.turn("Bip01 Head", lambda u: (-4 * soft(u), 2 * wave(u), -4 * soft(u)))
    p.turn("jaw", lambda u: (10 * soft(u) * max(wave(u, 0.1, 3), 0), 0, 0))
    p.move("Bip01", lambda u: (0, 0.012 * soft(u) * abs(wave(u, 0, 2)), 0))
    return p.clip("Wave")


def talk():
    p = Poser(2.0, 24)
    relaxed_arms(p)
    p.turn("Bip01 L UpperArm", lambda u: (-22 - 8 * wave(u, 0.1, 2), 0, 12))
    p.turn("Bip01 L Forearm", lambda u: (-58 - 20 * wave(u, 0.0, 2), 0, 8 * wave(u, 0.2)))
    p.turn("Bip01 Spine1", lambda u: (2 * wave(u, 0, 2), 4 * wave(u), 0))
    p.turn("Bip01 Head", lambda u: (5 * wave(u, 0.1, 2), 6 * wave(u, 0.4), 3 * wave(u, 0.2)))
    p.turn("jaw", lambda u: (9 * abs(wave(u, 0.05, 3)) + 4 * abs(wave(u, 0.3, 5)), 0, 0))
    p.move("Bip01", lambda u: (0, 0.005 * wave(u, 0, 2), 0))
    return p.clip("Talk")


LOOKS = {
    "sailor": Look("#e0a27c", "#33557f", "#f0ead8", "#394150", "#3a2a20", "#5c3b22", "#b8402e", False, False),
    "harbour_master": Look("#d99a78", "#28344a", "#e8e0cc", "#4b4a52", "#2a2320", "#cfcac0", "#28344a", True, True),
}


def make(name):
    bones = [bone for bone, _, _ in SKELETON]
    nodes = [glb.Node(bone, parent, offset) for bone, parent, offset in SKELETON]
    nodes.append(glb.Node("body", solid=build(LOOKS[name]), skinned=True))
    return nodes, [idle(), walk(), greeting(), talk()], bones
