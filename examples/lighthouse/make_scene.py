#!/usr/bin/env python3
"""Makes lighthouse.glb, the example scene: an island with a lighthouse, a boat, a flag and the sea around them.

It shows each thing that an export carries: a hierarchy, several materials with textures, vertex colours, a skinned
and animated flag, animated nodes, visibility, texture movement, cameras and lights, and marks of the exporter's
attribute pages in `extras`. Python's standard library alone; the same bytes at each run.

    examples/lighthouse/make_scene.py [OUTPUT.glb]
"""
import json
import math
import os
import struct
import sys
import zlib

# ---------------------------------------------------------------------------------------------- small maths


def add(a, b):
    return tuple(x + y for x, y in zip(a, b))


def scale(a, s):
    return tuple(x * s for x in a)


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def normalize(a):
    length = math.sqrt(sum(x * x for x in a))
    return scale(a, 1.0 / length) if length else (0.0, 1.0, 0.0)


def axis_angle(axis, degrees):
    """Quaternion x, y, z, w of a turn about an axis."""
    half = math.radians(degrees) / 2
    x, y, z = scale(normalize(axis), math.sin(half))
    return (x, y, z, math.cos(half))


def multiply(a, b):
    """Quaternion product: b first, then a."""
    ax, ay, az, aw = a
    bx, by, bz, bw = b
    return (aw * bx + ax * bw + ay * bz - az * by, aw * by - ax * bz + ay * bw + az * bx,
            aw * bz + ax * by - ay * bx + az * bw, aw * bw - ax * bx - ay * by - az * bz)


class Noise:
    """A small generator of our own, so that each run gives the same picture."""

    def __init__(self, seed):
        self.state = seed

    def __call__(self):
        self.state = (self.state * 1103515245 + 12345) & 0x7FFFFFFF
        return self.state / 0x7FFFFFFF


# --------------------------------------------------------------------------------------------------- pictures


def png(width, height, pixel):
    """PNG of RGBA pixels; `pixel(x, y)` gives four numbers from 0 to 255."""
    rows = b"".join(b"\0" + bytes(max(0, min(255, int(c))) for x in range(width) for c in pixel(x, y))
                    for y in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) +
            chunk(b"IEND", b""))


def stripes():
    noise = Noise(1)

    def pixel(x, y):
        red = (y // 16) % 2 == 0
        shade = 0.92 + 0.08 * noise() - (0.10 if x % 16 == 0 or y % 8 == 0 else 0.0)
        base = (196, 48, 40) if red else (240, 236, 226)
        return (*[c * shade for c in base], 255)

    return png(64, 128, pixel)


def ground():
    noise = Noise(2)

    def pixel(x, y):
        dx, dy = x - 63.5, y - 63.5
        wobble = 6 * math.sin(math.atan2(dy, dx) * 5) + 8 * (noise() - 0.5)
        radius = math.hypot(dx, dy) + wobble
        grass, sand = (96, 142, 62), (222, 200, 146)
        base = grass if radius < 42 else sand
        shade = 0.88 + 0.16 * noise()
        return (*[c * shade for c in base], 255)

    return png(128, 128, pixel)


def planks():
    noise = Noise(3)
    tint = [0.8 + 0.25 * noise() for _ in range(8)]

    def pixel(x, y):
        shade = tint[y // 8] * (0.94 + 0.1 * noise()) * (0.6 if y % 8 == 0 else 1.0)
        return (*[c * shade for c in (150, 102, 60)], 255)

    return png(64, 64, pixel)


def waves():
    def pixel(x, y):
        a = math.sin(2 * math.pi * (x + 6 * math.sin(2 * math.pi * y / 64)) / 32)
        b = math.sin(2 * math.pi * (y + 5 * math.sin(2 * math.pi * x / 64)) / 21.333)
        light = 0.5 + 0.25 * a + 0.25 * b
        return (30 + 60 * light, 110 + 70 * light, 150 + 70 * light, 255)

    return png(64, 64, pixel)


def waves_normal():
    def pixel(x, y):
        dx = math.cos(2 * math.pi * x / 32) * 0.35
        dy = math.cos(2 * math.pi * y / 16) * 0.25
        n = normalize((-dx, -dy, 1.0))
        return (*[127.5 + 127.5 * c for c in n], 255)

    return png(64, 64, pixel)


def banner():
    def pixel(x, y):
        cx, cy = x - 31.5, y - 15.5
        star = math.hypot(cx, cy) < 8 + 3 * math.cos(5 * math.atan2(cy, cx) + math.pi / 2)
        return (250, 214, 70, 255) if star else (36, 76, 150, 255)

    return png(64, 32, pixel)


def leaves():
    noise = Noise(4)

    def pixel(x, y):
        u, v = (x - 31.5) / 32, (y - 31.5) / 32
        inside = abs(v) < 0.42 * math.cos(u * math.pi / 2) * (0.75 + 0.25 * math.cos(u * 40))
        shade = 0.8 + 0.3 * noise()
        return (60 * shade, 130 * shade, 50 * shade, 255 if inside else 0)

    return png(64, 64, pixel)


# --------------------------------------------------------------------------------------------------- geometry


class Geometry:
    """Indexed triangles of one material."""

    def __init__(self):
        self.positions, self.normals, self.coordinates, self.colors, self.indices = [], [], [], [], []
        self.joints, self.weights = [], []

    def vertex(self, position, normal, coordinate, color=None):
        self.positions.append(position)
        self.normals.append(normalize(normal))
        self.coordinates.append(coordinate)
        if color is not None:
            self.colors.append(color)
        return len(self.positions) - 1

    def quad(self, a, b, c, d):
        self.indices += [a, b, c, a, c, d]


def lathe(profile, segments, u_repeat=1.0, squash=None):
    """Turns a profile of (radius, height, v) about the y axis, bottom first; normals follow the slope."""
    geometry = Geometry()
    for i, (radius, height, v) in enumerate(profile):
        before, after = profile[max(i - 1, 0)], profile[min(i + 1, len(profile) - 1)]
        slope = (after[1] - before[1], before[0] - after[0])
        for s in range(segments + 1):
            angle = 2 * math.pi * s / segments
            x, z = math.cos(angle), -math.sin(angle)
            stretch = squash(angle) if squash else 1.0
            geometry.vertex((x * radius * stretch, height, z * radius * stretch), (x * slope[0], slope[1], z * slope[0]),
                            (u_repeat * s / segments, v))
    row = segments + 1
    for i in range(len(profile) - 1):
        for s in range(segments):
            a = i * row + s
            geometry.quad(a, a + 1, a + row + 1, a + row)
    return geometry


def box(size, center=(0, 0, 0)):
    geometry = Geometry()
    for axis in range(3):
        for sign in (1, -1):
            normal = tuple(sign if i == axis else 0 for i in range(3))
            u = tuple(1 if i == (axis + 1) % 3 else 0 for i in range(3))
            v = scale(cross(normal, u), 1)
            corners = []
            for s, t in ((-1, -1), (1, -1), (1, 1), (-1, 1)):
                corner = add(add(normal, scale(u, s)), scale(v, t))
                position = tuple(c + k * e / 2 for c, k, e in zip(center, corner, size))
                corners.append(geometry.vertex(position, normal, ((s + 1) / 2, (1 - t) / 2)))
            geometry.quad(*corners)
    return geometry


def sheet(width, depth, columns, rows, repeat):
    """A level grid, facing up."""
    geometry = Geometry()
    for r in range(rows + 1):
        for c in range(columns + 1):
            u, v = c / columns, r / rows
            geometry.vertex(((u - 0.5) * width, 0, (v - 0.5) * depth), (0, 1, 0), (u * repeat, v * repeat))
    for r in range(rows):
        for c in range(columns):
            a = r * (columns + 1) + c
            geometry.quad(a, a + columns + 1, a + columns + 2, a + 1)
    return geometry


def flag_cloth(length, height, columns, bones):
    """An upright cloth with both faces, each column held by the two nearest bones."""
    geometry = Geometry()
    for side in (1, -1):
        for c in range(columns + 1):
            for r in (0, 1):
                u = c / columns
                geometry.vertex((u * length, (r - 0.5) * height, 0), (0, 0, side), (u, 1 - r))
                place = u * (bones - 1)
                first = min(int(place), bones - 2)
                share = place - first
                geometry.joints.append((first, first + 1, 0, 0))
                geometry.weights.append((1 - share, share, 0.0, 0.0))
    face = (columns + 1) * 2
    for c in range(columns):
        a = c * 2
        geometry.quad(a, a + 2, a + 3, a + 1)
        geometry.quad(face + a, face + a + 1, face + a + 3, face + a + 2)
    return geometry


def palm_leaf(length):
    geometry = Geometry()
    steps = 5
    for i in range(steps + 1):
        t = i / steps
        x, y = length * t, 0.35 * math.sin(t * math.pi * 0.9) - 0.5 * t * t
        for side in (-1, 1):
            geometry.vertex((x, y, side * 0.28), (0.3 * t, 1, side * 0.2), (t, 0.5 + 0.5 * side))
    for i in range(steps):
        a = i * 2
        geometry.quad(a, a + 1, a + 3, a + 2)
    return geometry


def rock(seed, radius):
    """A low-poly stone with vertex colours and flat faces."""
    noise = Noise(seed)
    rings, segments = 5, 8
    points = []
    for r in range(rings + 1):
        latitude = math.pi * (r / rings - 0.5)
        ring = []
        for s in range(segments):
            swell = radius * (0.75 + 0.4 * noise())
            longitude = 2 * math.pi * s / segments
            ring.append((swell * math.cos(latitude) * math.cos(longitude), swell * 0.7 * math.sin(latitude),
                         -swell * math.cos(latitude) * math.sin(longitude)))
        points.append(ring)
    geometry = Geometry()
    for r in range(rings):
        for s in range(segments):
            a, b = points[r][s], points[r][(s + 1) % segments]
            c, d = points[r + 1][(s + 1) % segments], points[r + 1][s]
            for triangle in ((a, b, c), (a, c, d)):
                normal = cross(add(triangle[1], scale(triangle[0], -1)), add(triangle[2], scale(triangle[0], -1)))
                if sum(x * x for x in normal) < 1e-12:
                    continue
                grey = 0.35 + 0.25 * (r / rings) + 0.08 * noise()
                first = [geometry.vertex(p, normal, (0, 0), (grey, grey * 0.97, grey * 0.9, 1.0)) for p in triangle]
                geometry.indices += first
    return geometry


def join(*parts):
    """One geometry of several, each moved by an offset."""
    whole = Geometry()
    for part, offset in parts:
        base = len(whole.positions)
        whole.positions += [add(p, offset) for p in part.positions]
        whole.normals += part.normals
        whole.coordinates += part.coordinates
        whole.indices += [i + base for i in part.indices]
    return whole


# ------------------------------------------------------------------------------------------------------- glTF

FLOAT, USHORT, UBYTE = 5126, 5123, 5121
TYPES = {1: "SCALAR", 2: "VEC2", 3: "VEC3", 4: "VEC4", 16: "MAT4"}
FORMATS = {FLOAT: "f", USHORT: "H", UBYTE: "B"}


class Document:
    def __init__(self):
        self.binary = bytearray()
        self.json = {
            "asset": {"version": "2.0", "generator": "examples/lighthouse/make_scene.py"},
            "extensionsUsed": ["KHR_lights_punctual", "KHR_materials_unlit", "KHR_texture_transform",
                               "KHR_node_visibility", "KHR_animation_pointer"],
            "scene": 0, "scenes": [{"name": "Lighthouse", "nodes": []}], "nodes": [], "meshes": [], "materials": [],
            "textures": [], "images": [], "samplers": [{"wrapS": 10497, "wrapT": 10497}], "skins": [], "cameras": [],
            "accessors": [], "bufferViews": [], "animations": [],
            "extensions": {"KHR_lights_punctual": {"lights": []}},
        }

    def put(self, key, item):
        self.json[key].append(item)
        return len(self.json[key]) - 1

    def view(self, data):
        while len(self.binary) % 4:
            self.binary.append(0)
        index = self.put("bufferViews", {"buffer": 0, "byteOffset": len(self.binary), "byteLength": len(data)})
        self.binary += data
        return index

    def accessor(self, values, component=FLOAT, bounds=False):
        width = len(values[0]) if isinstance(values[0], tuple) else 1
        flat = [x for value in values for x in (value if width > 1 else (value,))]
        data = struct.pack(f"<{len(flat)}{FORMATS[component]}", *flat)
        item = {"bufferView": self.view(data), "componentType": component, "count": len(values), "type": TYPES[width]}
        if bounds:
            packed = struct.unpack(f"<{len(flat)}{FORMATS[component]}", data)
            columns = [packed[i::width] for i in range(width)]
            item["min"], item["max"] = [min(c) for c in columns], [max(c) for c in columns]
        return self.put("accessors", item)

    def texture(self, name, data):
        image = self.put("images", {"name": name, "mimeType": "image/png", "bufferView": self.view(data)})
        return self.put("textures", {"name": name, "source": image, "sampler": 0})

    def material(self, name, color=(1, 1, 1, 1), texture=None, metallic=0.0, roughness=0.8, **more):
        surface = {"baseColorFactor": list(color), "metallicFactor": metallic, "roughnessFactor": roughness}
        if texture is not None:
            surface["baseColorTexture"] = texture if isinstance(texture, dict) else {"index": texture}
        return self.put("materials", {"name": name, "pbrMetallicRoughness": surface, **more})

    def primitive(self, geometry, material):
        attributes = {"POSITION": self.accessor(geometry.positions, bounds=True),
                      "NORMAL": self.accessor(geometry.normals), "TEXCOORD_0": self.accessor(geometry.coordinates)}
        if geometry.colors:
            attributes["COLOR_0"] = self.accessor(geometry.colors)
        if geometry.joints:
            attributes["JOINTS_0"] = self.accessor(geometry.joints, UBYTE)
            attributes["WEIGHTS_0"] = self.accessor(geometry.weights)
        return {"attributes": attributes, "indices": self.accessor(geometry.indices, USHORT), "material": material}

    def mesh(self, name, *parts):
        return self.put("meshes", {"name": name, "primitives": [self.primitive(g, m) for g, m in parts]})

    def node(self, name, parent=None, **more):
        index = self.put("nodes", {"name": name, **more})
        if parent is None:
            self.json["scenes"][0]["nodes"].append(index)
        else:
            self.json["nodes"][parent].setdefault("children", []).append(index)
        return index

    def light(self, **more):
        lights = self.json["extensions"]["KHR_lights_punctual"]["lights"]
        lights.append(more)
        return {"KHR_lights_punctual": {"light": len(lights) - 1}}

    def write(self, path):
        self.json["buffers"] = [{"byteLength": len(self.binary)}]
        text = json.dumps(self.json, separators=(",", ":")).encode()
        text += b" " * (-len(text) % 4)
        binary = bytes(self.binary) + b"\0" * (-len(self.binary) % 4)
        total = 12 + 8 + len(text) + 8 + len(binary)
        with open(path, "wb") as file:
            file.write(struct.pack("<4sII", b"glTF", 2, total))
            file.write(struct.pack("<I4s", len(text), b"JSON") + text)
            file.write(struct.pack("<I4s", len(binary), b"BIN\0") + binary)


class Animation:
    def __init__(self, document, name):
        self.document, self.name, self.channels, self.samplers = document, name, [], []

    def curve(self, target, times, values, interpolation="LINEAR"):
        self.samplers.append({"input": self.document.accessor(times, bounds=True),
                              "output": self.document.accessor(values), "interpolation": interpolation})
        self.channels.append({"sampler": len(self.samplers) - 1, "target": target})

    def node(self, node, path, times, values, interpolation="LINEAR"):
        self.curve({"node": node, "path": path}, times, values, interpolation)

    def pointer(self, pointer, times, values, interpolation="LINEAR"):
        target = {"path": "pointer", "extensions": {"KHR_animation_pointer": {"pointer": pointer}}}
        self.curve(target, times, values, interpolation)

    def pointer_bytes(self, pointer, times, values):
        self.samplers.append({"input": self.document.accessor(times, bounds=True),
                              "output": self.document.accessor(values, UBYTE), "interpolation": "STEP"})
        target = {"path": "pointer", "extensions": {"KHR_animation_pointer": {"pointer": pointer}}}
        self.channels.append({"sampler": len(self.samplers) - 1, "target": target})

    def finish(self):
        self.document.put("animations", {"name": self.name, "channels": self.channels, "samplers": self.samplers})


# ------------------------------------------------------------------------------------------------- the scene

SECONDS = 4.0
FRAMES = 120


def moments(count):
    return [SECONDS * i / (count - 1) for i in range(count)]


def build_island(d, materials):
    profile = [(6.0, -0.8, 0), (5.6, -0.1, 0), (4.6, 0.25, 0), (3.0, 0.5, 0), (0.001, 0.62, 0)]
    land = lathe(profile, 28, squash=lambda a: 1 + 0.10 * math.sin(3 * a) + 0.05 * math.cos(5 * a))
    land.coordinates = [(0.5 + p[0] / 13, 0.5 + p[2] / 13) for p in land.positions]
    island = d.node("Island", mesh=d.mesh("Island", (land, materials["Ground"])))
    for i, (x, z, size) in enumerate(((3.6, 1.8, 0.55), (4.1, 1.1, 0.35), (-3.2, 2.6, 0.45))):
        d.node(f"Rock{i + 1}", island, mesh=d.mesh(f"Rock{i + 1}", (rock(11 + i, size), materials["Stone"])),
               translation=[x, 0.35, z])
    trunk = lathe([(0.16, 0, 0), (0.13, 0.8, 1), (0.11, 1.6, 2), (0.09, 2.3, 3)], 8, 1)
    palm = d.node("Palm", island, mesh=d.mesh("Palm", (trunk, materials["Wood"])), translation=[-2.4, 0.5, 1.0],
                  rotation=axis_angle((0, 0, 1), -8))
    leaf = d.mesh("Leaf", (palm_leaf(1.5), materials["Leaf"]))
    for i in range(6):
        turn = multiply(axis_angle((0, 1, 0), 60 * i + 10), axis_angle((0, 0, 1), 14))
        d.node(f"Leaf{i + 1}", palm, mesh=leaf, translation=[0, 2.3, 0], rotation=turn)
    return island


def build_tower(d, island, materials):
    tower_profile = [(1.15, 0, 0), (0.98, 1.6, 1), (0.84, 3.2, 2), (0.74, 4.8, 3)]
    gallery = lathe([(0.74, 4.8, 0), (1.1, 4.85, 0.3), (1.1, 5.0, 0.6), (0.6, 5.0, 1)], 20, 6)
    roof = lathe([(0.85, 6.0, 0), (0.45, 6.5, 0.6), (0.001, 6.8, 1)], 20, 4)
    tower = d.node("Tower", island, translation=[0.3, 0.45, -0.6],
                   mesh=d.mesh("Tower", (lathe(tower_profile, 20, 2), materials["Stripes"]),
                               (join((gallery, (0, 0, 0)), (roof, (0, 0, 0))), materials["Metal"]),
                               (box((0.6, 1.1, 0.3), (0, 0.55, 1.05)), materials["Wood"])))
    glass = lathe([(0.55, 5.0, 0), (0.55, 6.0, 1)], 16, 1)
    d.node("Lantern", tower, mesh=d.mesh("Lantern", (glass, materials["Glass"])))
    head = d.node("LampHead", tower, translation=[0, 5.5, 0],
                  mesh=d.mesh("LampHead", (join((box((0.2, 0.35, 0.2)), (0, 0, 0)),
                                                (box((0.3, 0.3, 0.06)), (0, 0, -0.14))), materials["Glow"])))
    beam = d.light(name="Beam", type="spot", color=[1.0, 0.93, 0.7], intensity=60.0,
                   spot={"innerConeAngle": math.radians(8), "outerConeAngle": math.radians(14)})
    d.node("Beam", head, extensions=beam, rotation=axis_angle((1, 0, 0), -12))
    return tower, head


def build_flag(d, tower, materials):
    pole = lathe([(0.035, 0, 0), (0.03, 1.6, 1)], 8, 1)
    mast = d.node("FlagPole", tower, mesh=d.mesh("FlagPole", (pole, materials["Metal"])), translation=[0, 6.75, 0])
    bones, length = 5, 1.4
    joints, parent, offset = [], mast, (0.03, 1.3, 0)
    inverse = []
    # The pole stands at this place in the scene when nothing moves.
    base = (0.3, 0.45 + 6.75 + 1.3, -0.6)
    for i in range(bones):
        parent = d.node(f"Flag{i}", parent, translation=list(offset))
        joints.append(parent)
        offset = (length / (bones - 1), 0, 0)
        place = (base[0] + 0.03 + i * offset[0], base[1], base[2])
        inverse.append((1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, *scale(place, -1), 1.0))
    cloth = flag_cloth(length, 0.7, 12, bones)
    cloth.positions = [add(p, add(base, (0.03, 0, 0))) for p in cloth.positions]
    skin = d.put("skins", {"name": "Flag", "joints": joints, "inverseBindMatrices": d.accessor(inverse)})
    d.node("Flag", mesh=d.mesh("Flag", (cloth, materials["Banner"])), skin=skin)
    return joints


def build_boat(d, materials):
    hull = lathe([(0.001, -0.35, 0), (0.42, -0.2, 0.3), (0.62, 0.1, 0.7), (0.68, 0.3, 1)], 16, 3)
    hull.positions = [(x * 1.9, y, z * 0.8) for x, y, z in hull.positions]
    hull.normals = [normalize((x / 1.9, y, z / 0.8)) for x, y, z in hull.normals]
    deck = sheet(2.2, 0.9, 1, 1, 2)
    boat = d.node("Boat", translation=[5.5, -0.15, 4.2], rotation=axis_angle((0, 1, 0), 30),
                  mesh=d.mesh("Boat", (join((hull, (0, 0, 0)), (deck, (0, 0.12, 0))), materials["Wood"])),
                  extras={"TQ4X_ForPennonCombineGroupUse": True, "TQ4X_ForPennonCombineGroupValue": 3})
    mast = d.node("Mast", boat, mesh=d.mesh("Mast", (lathe([(0.05, 0, 0), (0.04, 1.9, 1)], 8), materials["Wood"])),
                  translation=[0, 0.1, 0])
    sail = Geometry()
    for side in (1, -1):
        base = [sail.vertex(p, (0, 0, side), c) for p, c in
                (((0.06, 0.3, 0), (0, 1)), ((1.0, 0.35, 0), (1, 1)), ((0.06, 1.8, 0), (0, 0)))]
        sail.indices += base if side == 1 else base[::-1]
    d.node("Sail", mast, mesh=d.mesh("Sail", (sail, materials["Sail"])))
    lamp = d.light(name="BoatLamp", type="point", color=[1.0, 0.6, 0.3], intensity=4.0)
    glow = d.node("BoatLamp", boat, extensions={**lamp, "KHR_node_visibility": {"visible": True}},
                  translation=[-0.9, 0.6, 0], mesh=d.mesh("BoatLamp", (box((0.14, 0.2, 0.14)), materials["Glow"])))
    return boat, glow


def build_stage(d):
    sun = d.light(name="Sun", type="directional", color=[1.0, 0.96, 0.88], intensity=3.0)
    d.node("Sun", extensions=sun, translation=[8, 12, 6],
           rotation=multiply(axis_angle((0, 1, 0), 40), axis_angle((1, 0, 0), -50)))
    wide = d.put("cameras", {"name": "Overview", "type": "perspective",
                             "perspective": {"yfov": math.radians(40), "aspectRatio": 16 / 9, "znear": 0.1, "zfar": 200}})
    dolly = d.node("CameraDolly", translation=[0, 2.6, 0])
    d.node("Overview", dolly, camera=wide, translation=[0, 3.2, 17], rotation=axis_angle((1, 0, 0), -9))
    chart = d.put("cameras", {"name": "Chart", "type": "orthographic",
                              "orthographic": {"xmag": 12, "ymag": 9, "znear": 0.1, "zfar": 50}})
    d.node("Chart", camera=chart, translation=[0, 20, 0], rotation=axis_angle((1, 0, 0), -90))
    return dolly


def build_materials(d):
    stripe, soil, plank = d.texture("stripes", stripes()), d.texture("ground", ground()), d.texture("planks", planks())
    wave, ripple = d.texture("waves", waves()), d.texture("ripples", waves_normal())
    cloth, leaf = d.texture("banner", banner()), d.texture("leaf", leaves())
    moving = {"index": wave, "extensions": {"KHR_texture_transform": {"offset": [0, 0], "scale": [4, 4]}}}
    return {
        "Ground": d.material("Ground", texture=soil, roughness=0.95),
        "Stone": d.material("Stone", roughness=0.9),
        "Stripes": d.material("Stripes", texture=stripe, roughness=0.5),
        "Metal": d.material("Metal", (0.18, 0.2, 0.22, 1), metallic=0.8, roughness=0.35),
        "Wood": d.material("Wood", texture=plank, roughness=0.8),
        "Glass": d.material("Glass", (0.75, 0.9, 0.95, 0.35), roughness=0.1, alphaMode="BLEND", doubleSided=True),
        "Glow": d.material("Glow", (1.0, 0.92, 0.6, 1), extensions={"KHR_materials_unlit": {}}),
        "Banner": d.material("Banner", texture=cloth, roughness=0.9),
        "Sail": d.material("Sail", (0.96, 0.93, 0.85, 1), roughness=0.9),
        "Leaf": d.material("Leaf", texture=leaf, alphaMode="MASK", doubleSided=True),
        "Sea": d.material("Sea", (1, 1, 1, 0.85), texture=moving, roughness=0.15, alphaMode="BLEND",
                          normalTexture={"index": ripple}, extras={"TQ4X_ForPennonRenderPrioUsePriority": True,
                                                                   "TQ4X_ForPennonRenderPrioPriority": 200}),
    }


def animate(d, head, joints, boat, glow, dolly, sea):
    show = Animation(d, "Evening")
    times = moments(9)
    show.node(head, "rotation", times, [axis_angle((0, 1, 0), 45 * i) for i in range(9)])
    for i, joint in enumerate(joints):
        fine = moments(25)
        swing = [axis_angle((0, 1, 0), (3 + 4 * i) * math.sin(2 * math.pi * (2 * t / SECONDS) - 0.9 * i)) for t in fine]
        show.node(joint, "rotation", fine, swing)
    bob = moments(17)
    show.node(boat, "translation", bob,
              [(5.5, -0.15 + 0.12 * math.sin(2 * math.pi * t / SECONDS), 4.2) for t in bob])
    roll = [multiply(axis_angle((0, 1, 0), 30), axis_angle((1, 0, 0), 5 * math.sin(2 * math.pi * t / SECONDS + 1)))
            for t in bob]
    show.node(boat, "rotation", bob, roll)
    show.node(dolly, "rotation", [0.0, SECONDS], [axis_angle((0, 1, 0), -10), axis_angle((0, 1, 0), 30)])
    show.pointer_bytes(f"/nodes/{glow}/extensions/KHR_node_visibility/visible",
                       [0.0, 1.0, 1.5, 3.0, 3.5], [1, 0, 1, 0, 1])
    offset = f"/materials/{sea}/pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/offset"
    show.pointer(offset, [0.0, SECONDS], [(0.0, 0.0), (0.5, 0.25)])
    show.pointer("/extensions/KHR_lights_punctual/lights/1/intensity", [0.0, 2.0, SECONDS], [3.0, 1.5, 3.0])
    show.finish()


def main():
    d = Document()
    materials = build_materials(d)
    island = build_island(d, materials)
    tower, head = build_tower(d, island, materials)
    joints = build_flag(d, tower, materials)
    boat, glow = build_boat(d, materials)
    dolly = build_stage(d)
    d.node("Sea", mesh=d.mesh("Sea", (sheet(40, 40, 8, 8, 1), materials["Sea"])), translation=[0, -0.35, 0])
    animate(d, head, joints, boat, glow, dolly, materials["Sea"])
    default = os.path.join(os.path.dirname(os.path.abspath(__file__)), "lighthouse.glb")
    d.write(sys.argv[1] if len(sys.argv) > 1 else default)


if __name__ == "__main__":
    main()
