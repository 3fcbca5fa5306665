#!/usr/bin/env python3
"""Draws Velko's icon, a broom on a rounded square, and writes it as .icns: draw_icon.py OUT.icns

With a second argument, a folder, each size is also written there as a PNG, to look at.
"""
import math
import struct
import sys
import zlib
from pathlib import Path

CANVAS = 1024  # the unit of every coordinate below
ROWS = 4       # scan lines per row of pixels


def mixed(a, b, t):
    return tuple(x + (y - x) * t for x, y in zip(a, b))


class Shape:
    """A filled outline whose colour changes from its top to its bottom."""

    def __init__(self, outline, top, bottom=None, alpha=1.0):
        self.outline, self.top, self.bottom, self.alpha = outline, top, bottom or top, alpha

    def colour(self, y):
        ys = [point[1] for point in self.outline]
        t = (y - min(ys)) / max(1e-6, max(ys) - min(ys))
        return mixed(self.top, self.bottom, min(1.0, max(0.0, t)))


# Outlines

def curve(*points, steps=24):
    """A Bézier curve of four points."""
    result = []
    for step in range(steps + 1):
        t = step / steps
        u = 1 - t
        weights = (u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t)
        result.append(tuple(sum(w * p[axis] for w, p in zip(weights, points)) for axis in (0, 1)))
    return result


def rounded_square(centre, half, exponent=5.0, steps=240):
    """A square whose corners flow into its sides."""
    result = []
    for step in range(steps):
        angle = 2 * math.pi * step / steps
        c, s = math.cos(angle), math.sin(angle)
        result.append((centre + half * math.copysign(abs(c) ** (2 / exponent), c),
                       centre + half * math.copysign(abs(s) ** (2 / exponent), s)))
    return result


def bar(x0, y0, x1, y1, w0, w1):
    """A straight bar with round ends, from half width w0 to half width w1."""
    length = math.hypot(x1 - x0, y1 - y0)
    dx, dy = (x1 - x0) / length, (y1 - y0) / length
    across = math.atan2(dy, dx) + math.pi / 2
    result = []
    for centre, width, start in (((x0, y0), w0, across), ((x1, y1), w1, across + math.pi)):
        for step in range(13):
            angle = start + math.pi * step / 12
            result.append((centre[0] + width * math.cos(angle), centre[1] + width * math.sin(angle)))
    return result


def sparkle(x, y, size):
    """A star of four points with hollow sides."""
    result = []
    for corner in range(4):
        a, b = math.pi / 2 * corner, math.pi / 2 * (corner + 1)
        p = (x + size * math.cos(a), y + size * math.sin(a))
        q = (x + size * math.cos(b), y + size * math.sin(b))
        near = 0.13
        result += curve(p, (x + (p[0] - x) * near, y + (p[1] - y) * near),
                        (x + (q[0] - x) * near, y + (q[1] - y) * near), q, steps=10)[:-1]
    return result


def placed(outline, shift=(0, 0)):
    """Turns and moves an outline of the upright broom to its place in the icon."""
    angle, scale = math.radians(38), 0.93
    c, s = math.cos(angle) * scale, math.sin(angle) * scale
    return [(526 + (x - 512) * c - (y - 500) * s + shift[0], 508 + (x - 512) * s + (y - 500) * c + shift[1])
            for x, y in outline]


# The broom, upright

BRISTLE_TOP, BRISTLE_BOTTOM = 560, 842


def bristle_edge(t):
    """Half the width of the bristles at a height: 0 is at the band, 1 at the floor."""
    return 84 + 148 * t ** 0.72


def bristles(left, right):
    """A strip of the bristles between two fractions of their width, with a soft lower end."""
    def side(fraction):
        return [(512 + fraction * bristle_edge(step / 16), BRISTLE_TOP + (BRISTLE_BOTTOM - BRISTLE_TOP) * step / 16)
                for step in range(17)]

    bottom = []
    for step in range(25):
        fraction = right + (left - right) * step / 24
        droop = 34 * math.cos(fraction * math.pi / 2)
        bottom.append((512 + fraction * bristle_edge(1), BRISTLE_BOTTOM + droop))
    return side(right) + bottom + side(left)[::-1]


def strand(fraction, until):
    """The dark gap between two bundles of bristles."""
    points = []
    for width in (-1, 1):
        row = []
        for step in range(13):
            t = until * step / 12
            half = 5.5 * math.sin(math.pi * min(1.0, step / 12)) ** 0.8
            row.append((512 + fraction * bristle_edge(t) + width * half,
                        BRISTLE_TOP + 6 + (BRISTLE_BOTTOM - BRISTLE_TOP) * t))
        points += row if width < 0 else row[::-1]
    return points


def collar(top, bottom, bow_top=14, bulge=0):
    """A piece of the band that holds the bristles. It is curved."""
    def half(y):
        return 62 + (y - 470) * 0.30 + bulge

    bow = 14
    return (curve((512 - half(top), top), (482, top + bow_top), (542, top + bow_top), (512 + half(top), top))
            + curve((512 + half(bottom), bottom), (542, bottom + bow), (482, bottom + bow),
                    (512 - half(bottom), bottom)))


def picture():
    gold, amber, brown = (255, 214, 110), (240, 158, 52), (190, 104, 28)
    cream, wood = (255, 240, 214), (224, 176, 122)
    red, wine = (255, 112, 104), (206, 52, 82)
    white, night = (255, 255, 255), (4, 44, 66)
    handle = bar(512, 96, 512, 500, 21, 25)
    whole = bristles(-1, 1)
    shadow = (14, 26)
    return [
        Shape(rounded_square(512, 412), (94, 226, 205), (13, 110, 148)),
        Shape(placed(handle, shadow), night, alpha=0.20),
        Shape(placed(collar(474, 570, -12), shadow), night, alpha=0.20),
        Shape(placed(whole, shadow), night, alpha=0.20),
        Shape(placed(handle), cream, wood),
        Shape(placed(bar(503, 100, 503, 480, 6, 7)), white, alpha=0.55),
        Shape(placed(whole), gold, amber),
        Shape(placed(bristles(0.42, 1)), (248, 186, 76), (222, 132, 40)),
        Shape(placed(bristles(-1, -0.62)), (255, 230, 150), (250, 186, 84)),
        *[Shape(placed(strand(f, u)), brown, alpha=0.55)
          for f, u in ((-0.72, 0.80), (-0.45, 0.92), (-0.17, 0.84), (0.12, 0.95), (0.40, 0.86), (0.70, 0.78))],
        Shape(placed(collar(474, 574, -12)), red, wine),
        Shape(placed(collar(497, 507, bulge=1)), (255, 206, 190), alpha=0.85),
        Shape(placed(collar(533, 543, bulge=1)), (255, 206, 190), alpha=0.85),
        Shape(sparkle(318, 318, 92), white),
        Shape(sparkle(446, 236, 40), white, alpha=0.92),
        Shape(sparkle(742, 716, 58), white, alpha=0.95),
    ]


# From outlines to pixels

def crossings(outline, y):
    found = []
    for (x0, y0), (x1, y1) in zip(outline, outline[1:] + outline[:1]):
        if (y0 <= y) != (y1 <= y):
            found.append((x0 + (y - y0) * (x1 - x0) / (y1 - y0), 1 if y1 > y0 else -1))
    return sorted(found)


def spans(outline, y):
    """The parts of a scan line that are inside the outline, by winding number."""
    winding, start, result = 0, 0.0, []
    for x, direction in crossings(outline, y):
        if winding == 0:
            start = x
        winding += direction
        if winding == 0 and x > start:
            result.append((start, x))
    return result


def coverage(outline, row, size):
    """How much of each pixel of a row is inside the outline, as {pixel: 0 to 1}."""
    sums = {}
    for line in range(ROWS):
        for start, end in spans(outline, row + (line + 0.5) / ROWS):
            start, end = max(0.0, start), min(float(size), end)
            for pixel in range(int(start), math.ceil(end)):
                part = min(end, pixel + 1) - max(start, pixel)
                if part > 0:
                    sums[pixel] = sums.get(pixel, 0.0) + part / ROWS
    return sums


def blend(pixels, at, colour, alpha):
    """Draws a colour over a pixel of red, green, blue and alpha."""
    below = pixels[at + 3] / 255
    above = alpha + below * (1 - alpha)
    for channel in range(3):
        mix = colour[channel] * alpha + pixels[at + channel] * below * (1 - alpha)
        pixels[at + channel] = round(mix / above)
    pixels[at + 3] = round(above * 255)


def rendered(size):
    pixels = bytearray(size * size * 4)
    scale = size / CANVAS
    for shape in picture():
        outline = [(x * scale, y * scale) for x, y in shape.outline]
        top = max(0, int(min(y for _, y in outline)))
        bottom = min(size, math.ceil(max(y for _, y in outline)))
        for row in range(top, bottom):
            colour = shape.colour((row + 0.5) / scale)
            for pixel, part in coverage(outline, row, size).items():
                alpha = min(1.0, part) * shape.alpha
                if alpha > 0.002:
                    blend(pixels, (row * size + pixel) * 4, colour, alpha)
    return bytes(pixels)


def halved(pixels, size):
    """The picture at half its size. Each pixel is the mean of four, weighted by alpha."""
    half = size // 2
    result = bytearray(half * half * 4)
    for y in range(half):
        for x in range(half):
            at = [((2 * y + dy) * size + 2 * x + dx) * 4 for dy in (0, 1) for dx in (0, 1)]
            alpha = sum(pixels[a + 3] for a in at)
            into = (y * half + x) * 4
            for channel in range(3):
                total = sum(pixels[a + channel] * pixels[a + 3] for a in at)
                result[into + channel] = round(total / alpha) if alpha else 0
            result[into + 3] = round(alpha / 4)
    return bytes(result)


# Files

def png(pixels, size):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    stride = size * 4
    rows = b"".join(b"\0" + pixels[y * stride:(y + 1) * stride] for y in range(size))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def packed(channel):
    """Compresses bytes: three to 130 equal bytes become two bytes, other bytes stay, up to 128 at a time."""
    result, plain, at = bytearray(), bytearray(), 0

    def flush():
        while plain:
            part = plain[:128]
            result.extend([len(part) - 1, *part])
            del plain[:128]

    while at < len(channel):
        run = 1
        while run < 130 and at + run < len(channel) and channel[at + run] == channel[at]:
            run += 1
        if run >= 3:
            flush()
            result.extend([run + 125, channel[at]])
        else:
            plain.extend(channel[at:at + run])
        at += run
    flush()
    return bytes(result)


def argb(pixels):
    return b"ARGB" + b"".join(packed(pixels[channel::4]) for channel in (3, 0, 1, 2))


def icns(images):
    """The container: 16 and 32 points as packed channels, the rest as PNG."""
    parts = [(b"ic04", argb(images[16])), (b"ic05", argb(images[32]))]
    parts += [(kind, png(images[size], size)) for kind, size in (
        (b"ic07", 128), (b"ic08", 256), (b"ic09", 512), (b"ic10", 1024),
        (b"ic11", 32), (b"ic12", 64), (b"ic13", 256), (b"ic14", 512))]
    body = b"".join(kind + struct.pack(">I", len(data) + 8) + data for kind, data in parts)
    return b"icns" + struct.pack(">I", len(body) + 8) + body


def main(out, folder=None):
    images, size = {1024: rendered(1024)}, 1024
    while size > 16:
        images[size // 2] = halved(images[size], size)
        size //= 2
    Path(out).write_bytes(icns(images))
    for size, pixels in images.items() if folder else ():
        (Path(folder) / f"icon-{size}.png").write_bytes(png(pixels, size))


if __name__ == "__main__":
    main(*sys.argv[1:])
