#!/usr/bin/env python3
"""Prints the expected numbers used by ColorValueTest and OklabTest.

Computed independently of the C++ code: the sRGB <-> Display P3 route goes
through CIE XYZ with the matrices published for CSS Color 4 (D65), and OKLAB
uses the reference matrices by its author, with Python's own float arithmetic.
"""
import math

SRGB_TO_XYZ = [[506752 / 1228815, 87881 / 245763, 12673 / 70218],
               [87098 / 409605, 175762 / 245763, 12673 / 175545],
               [7918 / 409605, 87881 / 737289, 1001167 / 1053270]]
XYZ_TO_SRGB = [[12831 / 3959, -329 / 214, -1974 / 3959],
               [-851781 / 878810, 1648619 / 878810, 36519 / 878810],
               [705 / 12673, -2585 / 12673, 705 / 667]]
P3_TO_XYZ = [[608311 / 1250200, 189793 / 714400, 198249 / 1000160],
             [35783 / 156275, 247089 / 357200, 198249 / 2500400],
             [0, 32229 / 714400, 5220557 / 5000800]]
XYZ_TO_P3 = [[446124 / 178915, -333277 / 357830, -72051 / 178915],
             [-14852 / 17905, 63121 / 35810, 423 / 17905],
             [11844 / 330415, -50337 / 660830, 316169 / 330415]]


def mul(m, v):
    return [sum(m[i][k] * v[k] for k in range(3)) for i in range(3)]


def decode(x):
    a = abs(x)
    y = a / 12.92 if a <= 0.04045 else ((a + 0.055) / 1.055) ** 2.4
    return math.copysign(y, x)


def encode(x):
    a = abs(x)
    y = a * 12.92 if a <= 0.0031308 else 1.055 * a ** (1 / 2.4) - 0.055
    return math.copysign(y, x)


def srgb_to_p3(rgb):
    return [encode(c) for c in mul(XYZ_TO_P3, mul(SRGB_TO_XYZ, [decode(c) for c in rgb]))]


def p3_to_srgb(rgb):
    return [encode(c) for c in mul(XYZ_TO_SRGB, mul(P3_TO_XYZ, [decode(c) for c in rgb]))]


def linear_to_oklab(r, g, b):
    l = 0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b
    m = 0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b
    s = 0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b
    l, m, s = (math.copysign(abs(x) ** (1 / 3), x) for x in (l, m, s))
    return [0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s]


def show(label, values):
    print(f"{label}: " + ", ".join(f"{v:.12f}" for v in values))


for rgb in ([0.2, 0.4, 0.6], [1, 0, 0], [0.9, 0.1, 0.3]):
    show(f"sRGB {rgb} -> P3", srgb_to_p3(rgb))
for rgb in ([1, 0, 0], [0, 1, 0], [0.25, 0.5, 0.75]):
    show(f"P3 {rgb} -> extended sRGB", p3_to_srgb(rgb))
show("extended sRGB [-0.1, 1.2, 0.5] -> P3", srgb_to_p3([-0.1, 1.2, 0.5]))
show("linear of sRGB [0.5, -0.5, 0.02]", [decode(c) for c in (0.5, -0.5, 0.02)])
for rgb in ([1, 0, 0], [0, 1, 0], [0, 0, 1], [1, 1, 1]):
    show(f"OKLAB of linear {rgb}", linear_to_oklab(*rgb))
lab = linear_to_oklab(*[decode(c) for c in p3_to_srgb([1, 0, 0])])
show("OKLAB of P3 red", lab)
show("OKLCH of P3 red (L, C, h radians)", [lab[0], math.hypot(lab[1], lab[2]), math.atan2(lab[2], lab[1])])
lab = linear_to_oklab(-0.2, 0.5, 1.3)
show("OKLAB of linear [-0.2, 0.5, 1.3]", lab)
