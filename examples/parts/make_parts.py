#!/usr/bin/env python3
"""Writes the example parts. Run it in this folder; the parts are kept beside it.

bracket.stl       text, an angle bracket of 3 mm with one wall of 1.2 mm
housing.stl       binary with a header that begins with "solid", an open box of 2 mm walls
broken_cover.stl  text, a plate that lacks a facet and has one turned around
"""
import math
import struct


def ring(outline, z):
    return [(x, y, z) for x, y in outline]


def band(lower, upper):
    """Facets between two rings of equal length, outward for counter-clockwise rings."""
    facets = []
    for i in range(len(lower)):
        j = (i + 1) % len(lower)
        facets += [(lower[i], lower[j], upper[j]), (lower[i], upper[j], upper[i])]
    return facets


def turned(facets):
    return [(a, c, b) for a, b, c in facets]


def fan(points):
    """Facets of a convex ring, upward for a counter-clockwise one."""
    return [(points[0], points[i], points[i + 1]) for i in range(1, len(points) - 1)]


def extrude(outline, caps, height):
    """A prism; `caps` are triples of numbers of the outline's points."""
    low, high = ring(outline, 0.0), ring(outline, height)
    top = [tuple(high[i] for i in cap) for cap in caps]
    bottom = turned([tuple(low[i] for i in cap) for cap in caps])
    return band(low, high) + top + bottom


def bracket():
    # The foot is 3 thick, the upright wall 1.2.
    outline = [(0, 0), (40, 0), (40, 3), (1.2, 3), (1.2, 30), (0, 30), (0, 3)]
    caps = [(0, 1, 2), (0, 2, 3), (0, 3, 6), (6, 3, 4), (6, 4, 5)]
    return extrude(outline, caps, 20.0)


def rounded(width, depth, radius, inset, steps=4):
    points = []
    corners = [(width - radius, depth - radius, 0), (radius, depth - radius, 90),
               (radius, radius, 180), (width - radius, radius, 270)]
    for x, y, start in corners:
        for step in range(steps + 1):
            angle = math.radians(start + 90.0 * step / steps)
            reach = radius - inset
            points.append((x + reach * math.cos(angle), y + reach * math.sin(angle)))
    return points


def housing():
    wall, height = 2.0, 25.0
    outer = rounded(60.0, 40.0, 6.0, 0.0)
    inner = rounded(60.0, 40.0, 6.0, wall)
    return (turned(fan(ring(outer, 0.0))) + band(ring(outer, 0.0), ring(outer, height))
            + band(ring(outer, height), ring(inner, height))
            + band(ring(inner, height), ring(inner, wall)) + fan(ring(inner, wall)))


def broken_cover():
    outline = [(0, 0), (60, 0), (60, 40), (0, 40)]
    facets = extrude(outline, [(0, 1, 2), (0, 2, 3)], 2.5)
    return turned(facets[:1]) + facets[1:-1]


def normal(facet):
    a, b, c = facet
    u, v = [q - p for p, q in zip(a, b)], [q - p for p, q in zip(a, c)]
    n = (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])
    size = math.sqrt(sum(x * x for x in n))
    return tuple(x / size for x in n)


def words(values):
    return " ".join(f"{value + 0.0:g}" for value in values)


def write_text(path, name, facets):
    with open(path, "w", encoding="ascii", newline="\n") as file:
        file.write(f"solid {name}\n")
        for facet in facets:
            file.write(f"  facet normal {words(normal(facet))}\n    outer loop\n")
            for corner in facet:
                file.write(f"      vertex {words(corner)}\n")
            file.write("    endloop\n  endfacet\n")
        file.write(f"endsolid {name}\n")


def write_binary(path, name, facets):
    with open(path, "wb") as file:
        file.write(f"solid {name}".encode("ascii").ljust(80))
        file.write(struct.pack("<I", len(facets)))
        for facet in facets:
            values = normal(facet) + tuple(value for corner in facet for value in corner)
            file.write(struct.pack("<12fH", *values, 0))


write_text("bracket.stl", "bracket", bracket())
write_binary("housing.stl", "housing", housing())
write_text("broken_cover.stl", "broken_cover", broken_cover())
