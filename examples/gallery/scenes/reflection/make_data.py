#!/usr/bin/env python3
"""Makes knot.x, a knotted tube, and sky_0.webp to sky_5.webp, an evening sky over water; ImageMagick packs these."""
import math
import struct
import subprocess
import zlib
from math import cos, pi, sin

AROUND, ALONG = 16, 138


def spine(t):
    return ((2 + cos(3 * t)) * cos(2 * t), (2 + cos(3 * t)) * sin(2 * t), 1.15 * sin(3 * t))


def unit(v):
    size = math.sqrt(sum(a * a for a in v))
    return tuple(a / size for a in v)


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def knot():
    points, normals, faces = [], [], []
    for i in range(ALONG):
        t = 2 * pi * i / ALONG
        before, at, after = spine(t - 0.01), spine(t), spine(t + 0.01)
        forward = unit([b - a for a, b in zip(before, after)])
        side = unit(cross(forward, [a + c - 2 * b for a, b, c in zip(before, at, after)]))
        up = cross(side, forward)
        for j in range(AROUND):
            angle = 2 * pi * j / AROUND
            normal = [cos(angle) * s + sin(angle) * u for s, u in zip(side, up)]
            radius = 0.62 + 0.1 * cos(6 * t)
            points.append([p + radius * n for p, n in zip(at, normal)])
            normals.append(normal)
            right, on = (j + 1) % AROUND, (i + 1) % ALONG
            faces.append([i * AROUND + j, on * AROUND + j, on * AROUND + right, i * AROUND + right])
    return points, normals, faces


def write_knot(path):
    points, normals, faces = knot()
    rows = lambda values: ",\n".join(";".join("%.3f" % a for a in v) + ";" for v in values) + ";"
    quads = ",\n".join("4;" + ",".join(map(str, f)) + ";" for f in faces) + ";"
    with open(path, "w") as out:
        out.write("xof 0302txt 0032\nMesh {\n%d;\n%s\n%d;\n%s\n" % (len(points), rows(points), len(faces), quads))
        out.write("MeshNormals {\n%d;\n%s\n%d;\n%s\n}\n}\n" % (len(normals), rows(normals), len(faces), quads))


def hashed(x, y):
    n = (x * 374761393 + y * 668265263) & 0xFFFFFFFF
    n = ((n ^ (n >> 13)) * 1274126177) & 0xFFFFFFFF
    return ((n ^ (n >> 16)) & 0xFFFF) / 65535


def noise(x, y):
    ix, iy = math.floor(x), math.floor(y)
    fx, fy = x - ix, y - iy
    fx, fy = fx * fx * (3 - 2 * fx), fy * fy * (3 - 2 * fy)
    low = hashed(ix, iy) * (1 - fx) + hashed(ix + 1, iy) * fx
    high = hashed(ix, iy + 1) * (1 - fx) + hashed(ix + 1, iy + 1) * fx
    return low * (1 - fy) + high * fy


def mix(a, b, t):
    return [p + (q - p) * t for p, q in zip(a, b)]


def step(low, high, x):
    t = min(max((x - low) / (high - low), 0), 1)
    return t * t * (3 - 2 * t)


SUN = unit((0.5, 0.16, -1.0))


def sky(d):
    color = mix((1.0, 0.58, 0.34), (0.84, 0.32, 0.42), step(0.0, 0.22, d[1]))
    color = mix(color, (0.3, 0.2, 0.52), step(0.12, 0.5, d[1]))
    color = mix(color, (0.06, 0.09, 0.28), step(0.35, 0.95, d[1]))
    toward = max(sum(a * b for a, b in zip(d, SUN)), 0)
    away = step(0.2, -0.9, sum(a * b for a, b in zip(d, SUN)))
    color = mix(color, mix((0.86, 0.66, 0.78), (0.32, 0.56, 0.8), step(0.05, 0.5, d[1])), 0.85 * away)
    x, z = d[0] / (d[1] + 0.12), d[2] / (d[1] + 0.12)
    streaks = sum(noise(0.55 * x * 2**i + 7 * i, 1.3 * z * 2**i) / 2**i for i in range(4)) / 1.9
    cloud = step(0.5, 0.78, streaks) * step(0.03, 0.2, d[1])
    lit = mix((0.62, 0.34, 0.5), (1.0, 0.74, 0.5), step(0.2, 0.95, toward))
    color = mix(color, lit, 0.75 * cloud)
    return [c + g * (0.5 * toward**40) + step(0.9965, 0.9975, toward) for c, g in zip(color, (1.0, 0.7, 0.4))], toward


def seen(d):
    """The colour from there, and how much brighter than white it shines."""
    if d[1] >= 0:
        color, toward = sky(d)
        return color, step(0.985, 0.997, toward)
    wave = 0.05 * (noise(9 * d[0] / (0.1 - d[1]), 9 * d[2] / (0.1 - d[1])) - 0.5)
    color, toward = sky(unit((d[0] + wave, -d[1] + wave, d[2])))
    deep = (0.02, 0.12, 0.22)
    return mix(mix(color, deep, 0.35), deep, step(0.0, 0.7, -d[1])), 0.4 * step(0.97, 0.995, toward)


FACES = [lambda s, t: (-1, -t, s), lambda s, t: (s, -1, -t), lambda s, t: (-s, -t, -1),
         lambda s, t: (1, -t, -s), lambda s, t: (s, 1, t), lambda s, t: (s, -t, 1)]


def write_face(number, side):
    rows = b""
    for y in range(side):
        rows += b"\0"
        for x in range(side):
            color, glow = seen(unit(FACES[number]((x + 0.5) / side * 2 - 1, (y + 0.5) / side * 2 - 1)))
            rows += bytes(min(max(round(255 * c), 0), 255) for c in color) + bytes([round(250 - 200 * glow)])
    chunk = lambda kind, data: struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")
    subprocess.run(["convert", "png:-", "-quality", "92", "sky_%d.webp" % number], input=png, check=True)


if __name__ == "__main__":
    write_knot("knot.x")
    for face in range(6):
        write_face(face, 512)
