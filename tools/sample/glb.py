"""Writes binary glTF files."""

import json
import struct

FLOAT, USHORT, UINT, UBYTE = 5126, 5123, 5125, 5121


class Node:
    def __init__(self, name, parent=None, translation=(0, 0, 0), solid=None, skinned=False):
        self.name = name
        self.parent = parent
        self.translation = translation
        self.solid = solid
        self.skinned = skinned


class Clip:
    """Curves are {(node name, 'translation' or 'rotation'): [(seconds, value)]}."""

    def __init__(self, name, curves):
        self.name = name
        self.curves = curves


class Writer:
    def __init__(self):
        self.data = bytearray()
        self.views = []
        self.accessors = []
        self.materials = {}
        self.json_materials = []

    def accessor(self, packed, component, kind, count, normalized=False, bounds=None, target=None):
        while len(self.data) % 4:
            self.data.append(0)
        view = {"buffer": 0, "byteOffset": len(self.data), "byteLength": len(packed)}
        if target:
            view["target"] = target
        self.views.append(view)
        self.data += packed
        entry = {"bufferView": len(self.views) - 1, "componentType": component, "count": count, "type": kind}
        if normalized:
            entry["normalized"] = True
        if bounds:
            entry["min"], entry["max"] = bounds
        self.accessors.append(entry)
        return len(self.accessors) - 1

    def floats(self, rows, kind, bounds=False):
        flat = [round(x, 5) for row in rows for x in row]
        limits = None
        if bounds:
            columns = list(zip(*[[round(x, 5) for x in row] for row in rows]))
            limits = ([min(c) for c in columns], [max(c) for c in columns])
        return self.accessor(struct.pack("<%df" % len(flat), *flat), FLOAT, kind, len(rows), bounds=limits)

    def material(self, material):
        if material.name not in self.materials:
            entry = {"name": material.name,
                     "pbrMetallicRoughness": {"baseColorFactor": [1.0, 1.0, 1.0, 1.0],
                                              "metallicFactor": material.metallic,
                                              "roughnessFactor": material.roughness}}
            if material.emission:
                entry["emissiveFactor"] = [material.emission] * 3
            if material.ripple:
                entry["extras"] = {"ripple": material.ripple}
            self.materials[material.name] = len(self.json_materials)
            self.json_materials.append(entry)
        return self.materials[material.name]

    def primitive(self, material, faces, bones):
        corners, order, indices = {}, [], []
        for face in faces:
            for point, normal, tint, weights in face:
                color = tuple(min(max(int(c * tint * 255 + 0.5), 0), 255) for c in material.color)
                shares = tuple(sorted((weights or {}).items()))
                key = (tuple(round(x, 5) for x in point), tuple(round(x, 3) for x in normal), color, shares)
                if key not in corners:
                    corners[key] = len(order)
                    order.append(key)
                indices.append(corners[key])
        attributes = {
            "POSITION": self.floats([k[0] for k in order], "VEC3", bounds=True),
            "NORMAL": self.floats([k[1] for k in order], "VEC3"),
            "COLOR_0": self.accessor(bytes(x for k in order for x in k[2] + (255,)), UBYTE, "VEC4", len(order),
                                     normalized=True)}
        if bones:
            attributes["JOINTS_0"], attributes["WEIGHTS_0"] = self.weights(order, bones)
        wide = len(order) > 65535
        packed = struct.pack("<%d%s" % (len(indices), "I" if wide else "H"), *indices)
        return {"attributes": attributes, "material": self.material(material),
                "indices": self.accessor(packed, UINT if wide else USHORT, "SCALAR", len(indices), target=34963)}

    def weights(self, order, bones):
        joints, shares = bytearray(), bytearray()
        for key in order:
            best = sorted(key[3], key=lambda item: -item[1])[:4]
            total = sum(share for _, share in best)
            values = [int(share / total * 255 + 0.5) for _, share in best]
            values[0] += 255 - sum(values)
            joints += bytes([bones.index(name) for name, _ in best] + [0] * (4 - len(best)))
            shares += bytes(values + [0] * (4 - len(best)))
        return (self.accessor(bytes(joints), UBYTE, "VEC4", len(order)),
                self.accessor(bytes(shares), UBYTE, "VEC4", len(order), normalized=True))


def world_of(nodes, node):
    x, y, z = node.translation
    while node.parent:
        node = next(n for n in nodes if n.name == node.parent)
        x, y, z = x + node.translation[0], y + node.translation[1], z + node.translation[2]
    return x, y, z


def write(path, nodes, clips=(), bones=()):
    """`nodes` parents first; a skinned node's mesh hangs on `bones`, names of nodes that rest unturned."""
    writer = Writer()
    names = [node.name for node in nodes]
    document = {"asset": {"version": "2.0", "generator": "make_sample"}, "scene": 0,
                "scenes": [{"nodes": [i for i, n in enumerate(nodes) if not n.parent]}], "nodes": [],
                "meshes": []}
    for node in nodes:
        entry = {"name": node.name}
        if any(node.translation):
            entry["translation"] = [round(x, 5) for x in node.translation]
        children = [i for i, n in enumerate(nodes) if n.parent == node.name]
        if children:
            entry["children"] = children
        if node.solid:
            primitives = [writer.primitive(m, f, list(bones) if node.skinned else None)
                          for m, f in node.solid.faces.items()]
            entry["mesh"] = len(document["meshes"])
            document["meshes"].append({"name": node.name, "primitives": primitives})
            if node.skinned:
                entry["skin"] = 0
        document["nodes"].append(entry)
    if bones:
        rows = []
        for bone in bones:
            x, y, z = world_of(nodes, nodes[names.index(bone)])
            rows.append((1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -x, -y, -z, 1))
        document["skins"] = [{"joints": [names.index(b) for b in bones],
                              "inverseBindMatrices": writer.floats(rows, "MAT4")}]
    if clips:
        document["animations"] = [animation(writer, clip, names) for clip in clips]
    document["materials"] = writer.json_materials
    document["accessors"] = writer.accessors
    document["bufferViews"] = writer.views
    document["buffers"] = [{"byteLength": len(writer.data)}]
    save(path, document, bytes(writer.data))


def animation(writer, clip, names):
    channels, samplers = [], []
    for (node, path), keys in clip.curves.items():
        times = writer.floats([(t,) for t, _ in keys], "SCALAR", bounds=True)
        values = writer.floats([value for _, value in keys], "VEC4" if path == "rotation" else "VEC3")
        channels.append({"sampler": len(samplers), "target": {"node": names.index(node), "path": path}})
        samplers.append({"input": times, "output": values, "interpolation": "LINEAR"})
    return {"name": clip.name, "channels": channels, "samplers": samplers}


def save(path, document, data):
    text = json.dumps(document, separators=(",", ":")).encode()
    text += b" " * (-len(text) % 4)
    data += b"\0" * (-len(data) % 4)
    total = 12 + 8 + len(text) + 8 + len(data)
    with open(path, "wb") as file:
        file.write(struct.pack("<4sII", b"glTF", 2, total))
        file.write(struct.pack("<I4s", len(text), b"JSON") + text)
        file.write(struct.pack("<I4s", len(data), b"BIN\0") + data)
