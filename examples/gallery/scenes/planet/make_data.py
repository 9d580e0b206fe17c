#!/usr/bin/env python3
"""Makes planet.dds: a planet of seas, deserts, woods and ice as DXT1 blocks with all levels."""
import math
import struct

WIDTH, HEIGHT = 1024, 512


def table(seed):
    state, values = seed, []
    for _ in range(4096):
        state = (state * 1103515245 + 12345) & 0x7FFFFFFF
        values.append((state >> 8 & 0xFFFF) / 65535)
    return values


VALUES = table(77)


def noise(x, y, z):
    ix, iy, iz = math.floor(x), math.floor(y), math.floor(z)
    fx, fy, fz = x - ix, y - iy, z - iz
    fx, fy, fz = fx * fx * (3 - 2 * fx), fy * fy * (3 - 2 * fy), fz * fz * (3 - 2 * fz)
    ax, bx = ix * 1619, (ix + 1) * 1619
    ay, by = iy * 31337, (iy + 1) * 31337
    az, bz = iz * 6971, (iz + 1) * 6971
    at = lambda n: VALUES[((n ^ (n >> 9)) * 40503 >> 4) & 4095]
    a = at(ax + ay + az) * (1 - fx) + at(bx + ay + az) * fx
    b = at(ax + by + az) * (1 - fx) + at(bx + by + az) * fx
    c = at(ax + ay + bz) * (1 - fx) + at(bx + ay + bz) * fx
    d = at(ax + by + bz) * (1 - fx) + at(bx + by + bz) * fx
    return (a * (1 - fy) + b * fy) * (1 - fz) + (c * (1 - fy) + d * fy) * fz


def layers(p, scale, count):
    total, weight, weights = 0.0, 1.0, 0.0
    for i in range(count):
        total += weight * noise(p[0] * scale + 9 * i, p[1] * scale, p[2] * scale - 5 * i)
        weights += weight
        weight *= 0.55
        scale *= 2.03
    return total / weights


def mix(a, b, t):
    return tuple(p + (q - p) * t for p, q in zip(a, b))


def step(low, high, x):
    t = min(max((x - low) / (high - low), 0), 1)
    return t * t * (3 - 2 * t)


def color(p):
    bend = layers(p, 2.2, 2) - 0.5
    q = tuple(a + 0.7 * bend for a in p)
    height = layers(q, 1.7, 7)
    grain = layers((p[2], p[0], p[1]), 11.0, 3)
    cold = abs(p[1]) + 0.16 * (grain - 0.5) + 0.5 * max(height - 0.55, 0)
    sea = mix((4, 22, 66), (12, 92, 128), step(0.34, 0.5, height))
    sea = mix(sea, (64, 176, 172), step(0.49, 0.522, height))
    land = mix((214, 150, 84), (118, 62, 44), step(0.55, 0.68, height + 0.12 * (grain - 0.5)))
    woods = step(0.34, 0.56, layers(q, 2.9, 3) + 0.25 * (abs(p[1]) - 0.3)) * (1 - step(0.56, 0.66, height))
    land = mix(land, mix((38, 84, 52), (96, 118, 54), grain), 0.85 * woods)
    land = mix((236, 204, 148), land, step(0.522, 0.545, height))
    land = mix(land, (232, 226, 224), step(0.66, 0.74, height))
    surface = mix(sea, land, step(0.519, 0.525, height))
    return mix(surface, (236, 244, 250), step(0.8, 0.87, cold))


def picture():
    rows = []
    for y in range(HEIGHT):
        up = math.pi * (0.5 - (y + 0.5) / HEIGHT)
        row = []
        for x in range(WIDTH):
            around = 2 * math.pi * x / WIDTH
            row.append(color((math.cos(up) * math.cos(around), math.sin(up), math.cos(up) * math.sin(around))))
        rows.append(row)
    return rows


def smaller(rows):
    halves = lambda n: [(i, min(i + 1, n - 1)) for i in range(0, max(n - 1, 1), 2)]
    return [[tuple(sum(rows[y][x][k] for y in ys for x in xs) / 4 for k in range(3)) for xs in halves(len(rows[0]))]
            for ys in halves(len(rows))]


def packed(c):
    r, g, b = (min(max(v, 0), 255) for v in c)
    return round(r * 31 / 255) << 11 | round(g * 63 / 255) << 5 | round(b * 31 / 255)


def unpacked(n):
    return ((n >> 11) * 255 / 31, (n >> 5 & 63) * 255 / 63, (n & 31) * 255 / 31)


def block(pixels):
    """Two colours at the ends of the line through the sixteen, and for each the nearest of four between."""
    middle = [sum(p[k] for p in pixels) / 16 for k in range(3)]
    far = max(pixels, key=lambda p: sum((a - b) ** 2 for a, b in zip(p, middle)))
    axis = [a - b for a, b in zip(far, middle)]
    along = [sum(a * b for a, b in zip(p, axis)) for p in pixels]
    ends = [packed(pixels[along.index(max(along))]), packed(pixels[along.index(min(along))])]
    high, low = max(ends), min(ends)
    if high == low:
        return struct.pack("<HHI", high, low, 0)
    a, b = unpacked(high), unpacked(low)
    choices = [a, b, mix(a, b, 1 / 3), mix(a, b, 2 / 3)]
    bits = 0
    for i, p in enumerate(pixels):
        best = min(range(4), key=lambda k: sum((u - v) ** 2 for u, v in zip(p, choices[k])))
        bits |= best << (2 * i)
    return struct.pack("<HHI", high, low, bits)


def blocks(rows):
    data = b""
    for y in range(0, len(rows), 4):
        for x in range(0, len(rows[0]), 4):
            at = lambda i: rows[min(y + i // 4, len(rows) - 1)][min(x + i % 4, len(rows[0]) - 1)]
            data += block([at(i) for i in range(16)])
    return data


def write(path):
    rows, levels = picture(), []
    while True:
        levels.append(blocks(rows))
        if len(rows) == len(rows[0]) == 1:
            break
        rows = smaller(rows)
    header = struct.pack("<4s7I44x", b"DDS ", 124, 0xA1007, HEIGHT, WIDTH, len(levels[0]), 0, len(levels))
    header += struct.pack("<2I4s5I5I", 32, 4, b"DXT1", 0, 0, 0, 0, 0, 0x401008, 0, 0, 0, 0)
    with open(path, "wb") as out:
        out.write(header + b"".join(levels))


if __name__ == "__main__":
    write("planet.dds")
