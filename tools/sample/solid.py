"""A heap of coloured triangles and the forms that the models are put together from. Metres, y up."""

import math

from . import vector as v


def linear(hex_color):
    """A colour as painters write it, '#rrggbb', in the linear numbers of glTF."""
    return tuple((int(hex_color[i:i + 2], 16) / 255.0) ** 2.2 for i in (1, 3, 5))


class Material:
    def __init__(self, name, color, roughness=0.9, metallic=0.0, emission=0.0, ripple=0.0):
        self.name = name
        self.color = linear(color)
        self.roughness = roughness
        self.metallic = metallic
        self.emission = emission
        self.ripple = ripple


class Solid:
    """Corners are (position, normal, tint, weights); weights are {bone: share} or None."""

    def __init__(self, seed=1):
        self.faces = {}
        self.random = v.Random(seed)
        self.offset = (0.0, 0.0, 0.0)
        self.turn = (0.0, 0.0, 0.0, 1.0)
        self.stretch = 1.0
        self.shade = lambda p: 1.0

    def place(self, offset=(0, 0, 0), rotation=(0.0, 0.0, 0.0, 1.0), stretch=1.0):
        """Where the forms that follow go."""
        self.offset, self.turn, self.stretch = offset, rotation, stretch
        return self

    def polygon(self, points, material, normals=None, tint=1.0, weights=None):
        """A flat convex face, anticlockwise from outside."""
        points = [v.add(v.rotate(self.turn, v.scale(p, self.stretch)), self.offset) for p in points]
        if normals is None:
            flat = (0.0, 0.0, 0.0)
            for i in range(1, len(points) - 1):
                flat = v.add(flat, v.cross(v.sub(points[i], points[0]), v.sub(points[i + 1], points[0])))
            normals = [v.unit(flat)] * len(points)
        else:
            normals = [v.unit(v.rotate(self.turn, n)) for n in normals]
        corners = []
        for i, point in enumerate(points):
            light = tint * self.shade(point)
            corners.append((point, normals[i], light, weights[i] if weights else None))
        faces = self.faces.setdefault(material, [])
        for i in range(1, len(corners) - 1):
            faces.append((corners[0], corners[i], corners[i + 1]))

    def box(self, center, size, material, bevel=0.02, vary=0.06, hidden=()):
        """A box with bevelled edges, which catch the light. `hidden` names faces left out, as (axis, side)."""
        tint = 1.0 + self.random.between(-vary, vary)
        half = [s * 0.5 for s in size]
        bevel = min([bevel] + [h * 0.6 for h in half])

        def corner(signs, axis):
            """The point of a corner on the face of an axis."""
            p = [signs[i] * (half[i] - (0.0 if i == axis else bevel)) for i in range(3)]
            return v.add(center, tuple(p))

        for axis in range(3):
            u, w = (axis + 1) % 3, (axis + 2) % 3
            for side in (-1, 1):
                if (axis, side) in hidden:
                    continue
                order = [(-1, -1), (1, -1), (1, 1), (-1, 1)]
                if side < 0:
                    order.reverse()
                points = []
                for a, b in order:
                    signs = [0, 0, 0]
                    signs[axis], signs[u], signs[w] = side, a, b
                    points.append(corner(signs, axis))
                self.polygon(points, material, tint=tint)
        if bevel <= 0.0:
            return
        for axis in range(3):
            u, w = (axis + 1) % 3, (axis + 2) % 3
            for a in (-1, 1):
                for b in (-1, 1):
                    ends = []
                    for along in (-1, 1):
                        signs = [0, 0, 0]
                        signs[axis], signs[u], signs[w] = along, a, b
                        ends.append((corner(signs, u), corner(signs, w)))
                    points = [ends[0][0], ends[1][0], ends[1][1], ends[0][1]]
                    if a * b < 0:
                        points.reverse()
                    self.polygon(points, material, tint=tint * 1.08)
        for a in (-1, 1):
            for b in (-1, 1):
                for c in (-1, 1):
                    signs = (a, b, c)
                    points = [corner(signs, 0), corner(signs, 1), corner(signs, 2)]
                    if a * b * c < 0:
                        points.reverse()
                    self.polygon(points, material, tint=tint * 1.08)

    def rings(self, rings, material, sides=12, caps=(True, True), tint=1.0):
        """A skin over rings of (center, right, front, weights): half axes of an ellipse, smooth."""
        circles = []
        for center, right, front, weights in rings:
            circle = []
            for i in range(sides):
                angle = 2.0 * math.pi * i / sides
                out = v.add(v.scale(right, math.cos(angle)), v.scale(front, math.sin(angle)))
                circle.append((v.add(center, out), out, weights))
            circles.append(circle)
        normals = self._ring_normals(circles, sides)
        for r in range(len(circles) - 1):
            for i in range(sides):
                j = (i + 1) % sides
                picks = [(r, i), (r, j), (r + 1, j), (r + 1, i)]
                points = [circles[a][b][0] for a, b in picks]
                self.polygon(points, material, [normals[a][b] for a, b in picks], tint,
                             [circles[a][b][2] for a, b in picks])
        for end, wanted in ((0, caps[0]), (len(circles) - 1, caps[1])):
            if wanted:
                points = [c[0] for c in circles[end]]
                weights = [c[2] for c in circles[end]]
                if end == 0:
                    points.reverse()
                self.polygon(points, material, None, tint, weights)

    @staticmethod
    def _ring_normals(circles, sides):
        """Across both directions of the skin, so that tapering shows in the light."""
        normals = []
        for r, circle in enumerate(circles):
            low, high = circles[max(r - 1, 0)], circles[min(r + 1, len(circles) - 1)]
            row = []
            for i in range(sides):
                along = v.sub(high[i][0], low[i][0])
                around = v.sub(circle[(i + 1) % sides][0], circle[(i - 1) % sides][0])
                normal = v.cross(around, along)
                row.append(v.unit(normal if v.dot(normal, normal) > 1e-12 else circle[i][1]))
            normals.append(row)
        return normals

    def cylinder(self, base, height, radius, material, top_radius=None, sides=14, tint=1.0, caps=(True, True)):
        """Upright, from the centre of its base."""
        top_radius = radius if top_radius is None else top_radius
        rings = [(base, (radius, 0, 0), (0, 0, -radius), None),
                 (v.add(base, (0, height, 0)), (top_radius, 0, 0), (0, 0, -top_radius), None)]
        self.rings(rings, material, sides, caps, tint)

    def lathe(self, base, profile, material, sides=16, tint=1.0, weights=None):
        """Turned about the upright axis: (height, radius) from below."""
        rings = [(v.add(base, (0, y, 0)), (r, 0, 0), (0, 0, -r), weights) for y, r in profile]
        self.rings(rings, material, sides, (profile[0][1] > 1e-4, profile[-1][1] > 1e-4), tint)

    def ball(self, center, radii, material, sides=14, weights=None, tint=1.0):
        """An ellipsoid."""
        steps = max(sides // 2, 4)
        rings = []
        for i in range(steps + 1):
            angle = math.pi * i / steps
            y, r = -math.cos(angle) * radii[1], max(math.sin(angle), 1e-4)
            rings.append((v.add(center, (0, y, 0)), (r * radii[0], 0, 0), (0, 0, -r * radii[2]), weights))
        self.rings(rings, material, sides, (False, False), tint)

    def beam(self, start, end, radius, material, sides=8, end_radius=None, weights=None, tint=1.0):
        """A round bar between two points."""
        along = v.unit(v.sub(end, start))
        right = v.unit(v.cross(along, (0, 0, 1) if abs(along[2]) < 0.9 else (1, 0, 0)))
        front = v.cross(right, along)
        end_radius = radius if end_radius is None else end_radius
        front = v.scale(front, -1.0)
        rings = [(start, v.scale(right, radius), v.scale(front, -radius), weights),
                 (end, v.scale(right, end_radius), v.scale(front, -end_radius), weights)]
        self.rings(rings, material, sides, (True, True), tint)

    def torus(self, center, radius, thickness, material, axis=(0, 1, 0), sides=20, tint=1.0):
        """A ring about an axis."""
        axis = v.unit(axis)
        right = v.unit(v.cross(axis, (0, 0, 1) if abs(axis[2]) < 0.9 else (1, 0, 0)))
        front = v.cross(axis, right)
        small = 8
        for i in range(sides):
            for j in range(small):
                picks = [(i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1)]
                points, normals = [], []
                for a, b in picks:
                    angle, tilt = 2 * math.pi * a / sides, 2 * math.pi * b / small
                    out = v.add(v.scale(right, math.cos(angle)), v.scale(front, math.sin(angle)))
                    normal = v.add(v.scale(out, math.cos(tilt)), v.scale(axis, math.sin(tilt)))
                    points.append(v.add(center, v.add(v.scale(out, radius), v.scale(normal, thickness))))
                    normals.append(normal)
                self.polygon(points, material, normals, tint)

    def prism(self, outline, depth, material, tint=1.0, bevel_tint=1.0):
        """An outline in x and y, anticlockwise seen from +z, drawn out to both sides of z = 0."""
        half = depth * 0.5
        self.polygon([(x, y, half) for x, y in outline], material, tint=tint)
        self.polygon([(x, y, -half) for x, y in reversed(outline)], material, tint=tint)
        for i, (x, y) in enumerate(outline):
            nx, ny = outline[(i + 1) % len(outline)]
            self.polygon([(x, y, half), (x, y, -half), (nx, ny, -half), (nx, ny, half)], material,
                         tint=tint * bevel_tint)

    def sheet(self, points, material, tint=1.0):
        """A face seen from both sides."""
        self.polygon(points, material, tint=tint)
        self.polygon(list(reversed(points)), material, tint=tint)


def ground_shade(height, low):
    """Darkens towards the ground, as if light came less there."""
    return lambda p: low + (1.0 - low) * min(max(p[1] / height, 0.0), 1.0)
