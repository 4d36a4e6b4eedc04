#!/usr/bin/env python3
"""Writes review models as other programs do, for trials with the whole program.

    make_samples.py FOLDER

shapes.rvm    every kind of primitive, in usual, mirrored, uneven and leaning frames; no attribute text
unit.rvm      a unit of equipment, structure, supports and pipes, with unit.TXT in Latin-1
typed.rvm     the same tree without attributes: names alone tell what is what
"""

import math
import struct
import sys
from pathlib import Path


class Rvm:
    def __init__(self):
        self.bytes = bytearray()
        self.chunk("HEAD", 2, *[self.text(t) for t in ("Review 1.0", "", "today", "user", "Unicode UTF-8")])
        self.chunk("MODL", 1, self.text("SAMPLE"), self.text("/SAMPLE-DB"))

    @staticmethod
    def text(value):
        raw = value.encode()
        words = (len(raw) + 3) // 4
        return struct.pack(">I", words) + raw.ljust(4 * words, b"\0")

    @staticmethod
    def floats(*values):
        return struct.pack(f">{len(values)}f", *values)

    def chunk(self, tag, version, *parts):
        body = struct.pack(">II", 1, version) + b"".join(parts)
        head = b"".join(b"\0\0\0" + c.encode() for c in tag)
        self.bytes += head + struct.pack(">I", len(self.bytes) + 20 + len(body)) + body

    def group(self, name, material=1):
        self.chunk("CNTB", 3, self.text(name), self.floats(0, 0, 0), struct.pack(">I", material), b"\0\0\0\0")

    def end(self):
        self.chunk("CNTE", 2)

    def primitive(self, kind, parameters, frame, role="PRIM"):
        tail = b"" if role == "PRIM" else b"\0\0\0\0"
        self.chunk(role, 1, struct.pack(">I", kind), self.floats(*frame), self.floats(*[0] * 6), tail, parameters)

    def cylinder(self, a, b, diameter, role="PRIM"):
        z = [b[i] - a[i] for i in range(3)]
        length = math.dist(a, b)
        z = [c / length for c in z]
        x = [0, 1, 0] if abs(z[1]) < 0.9 else [1, 0, 0]
        y = [z[1] * x[2] - z[2] * x[1], z[2] * x[0] - z[0] * x[2], z[0] * x[1] - z[1] * x[0]]
        axes = [c / 1000 for axis in (x, y, z) for c in axis]
        middle = [(a[i] + b[i]) / 2000 for i in range(3)]
        self.primitive(8, self.floats(diameter / 2, length), axes + middle, role)

    def box(self, middle, sizes):
        self.primitive(2, self.floats(*sizes), unit_frame(*middle))

    def color(self, material, red, green, blue):
        self.chunk("COLR", 1, struct.pack(">IBBBB", material, red, green, blue, 0))

    def write(self, path):
        self.chunk("END:", 1)
        self.bytes += b"\0" * (-len(self.bytes) % 1760)
        path.write_bytes(self.bytes)


def unit_frame(x, y, z):
    return [0.001, 0, 0, 0, 0.001, 0, 0, 0, 0.001, x / 1000, y / 1000, z / 1000]


FRAMES = {
    "usual": [1, 0, 0, 0, 1, 0, 0, 0, 1],
    "turned": [0.8, 0.6, 0, -0.6, 0.8, 0, 0, 0, 1],
    "mirrored": [-1, 0, 0, 0, 1, 0, 0, 0, 1],
    "uneven": [1, 0, 0, 0, 1.5, 0, 0, 0, 0.7],
    "leaning": [1, 0, 0, 0.3, 1, 0, 0, 0.2, 1],
}
KINDS = {
    "pyramid": (1, [400, 300, 200, 100, 50, 20, 500]),
    "wedge": (1, [400, 300, 0, 300, 0, 0, 500]),
    "box": (2, [400, 300, 200]),
    "rtorus": (3, [200, 300, 100, 1.2]),
    "ctorus": (4, [300, 60, 1.2]),
    "ring": (4, [300, 60, 2 * math.pi]),
    "dish": (5, [300, 100]),
    "cap": (6, [300, 100]),
    "highcap": (6, [200, 500]),
    "cone": (7, [300, 100, 400, 0, 0, 0, 0, 0, 0]),
    "eccentric": (7, [300, 100, 400, 80, 0, 0, 0, 0, 0]),
    "cut": (7, [200, 200, 600, 0, 0, 0.4, 0.1, 0, 0]),
    "cutboth": (7, [200, 150, 600, 0, 0, 0.4, 0, -0.3, 0]),
    "cylinder": (8, [200, 500]),
    "disc": (8, [200, 0]),
    "sphere": (9, [400]),
    "line": (10, [5, 400]),
}


def facets(rvm, polygons, frame):
    body = struct.pack(">I", len(polygons))
    for loops in polygons:
        body += struct.pack(">I", len(loops))
        for loop in loops:
            body += struct.pack(">I", len(loop))
            body += b"".join(rvm.floats(*point, 0, 0, 1) for point in loop)
    rvm.primitive(11, body, frame)


def shapes(folder):
    rvm = Rvm()
    rvm.group("/SHAPES")
    for row, (name, axes) in enumerate(FRAMES.items()):
        rvm.group("/ZONE-" + name)
        for column, (word, (kind, parameters)) in enumerate(KINDS.items()):
            rvm.group(f"/{word}-{name}", 1 + column)
            frame = [c / 1000 for c in axes] + [column * 1.0, row * 1.5, 0]
            rvm.primitive(kind, rvm.floats(*parameters), frame)
            rvm.end()
        rvm.group(f"/plate-{name}", 30)
        plate = [[[0, 0, 0], [400, 0, 0], [400, 400, 0], [200, 100, 0], [0, 400, 0]],
                 [[50, 50, 0], [50, 90, 0], [90, 90, 0], [90, 50, 0]]]
        facets(rvm, [plate], [c / 1000 for c in axes] + [len(KINDS) * 1.0, row * 1.5, 0])
        rvm.end()
        rvm.end()
    rvm.end()
    rvm.write(folder / "shapes.rvm")


class Unit:
    """Groups and blocks in step."""

    def __init__(self, typed):
        self.rvm = Rvm()
        self.typed = typed
        self.lines = ["CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&",
                      "NEW Header Information", "Source:= Sample &end& Date:= today", "END"]

    def begin(self, name, kind, material=1, shaped=True, **attributes):
        self.shaped = shaped
        if shaped:
            self.rvm.group(name, material)
        self.lines += ["NEW " + name, f"Type:= {kind} &end& Name:= {name}"]
        self.lines += [f"{key}:= {value}" for key, value in attributes.items()]

    def end(self, shaped=True):
        if shaped:
            self.rvm.end()
        self.lines.append("END")


def at(x, y, z):
    return f"E {x}mm N {y}mm U {z}mm"


def part(unit, kind, name, arrive, leave, bore, shape=None, corner=None, **more):
    middle = corner or [(arrive[i] + leave[i]) / 2 for i in range(3)]
    facts = dict(POS=at(*middle), APOS=at(*arrive), LPOS=at(*leave), ABORE=f"{bore}mm", LBORE=f"{bore}mm", ARRI=1, LEAV=2,
                 SPRE=f"/A1A/{kind}{bore}", LSTU=f"/A1A/TUBE{bore}", **more)
    unit.begin(name, kind, 5, **facts)
    if shape:
        shape()
    unit.end()


def pump(unit):
    unit.begin("/P-101A", "EQUI", 4, DESC="Förderpumpe", POS=at(0, 0, 0), REF="=1/10")
    unit.rvm.box((0, 0, 300), (800, 400, 600))
    unit.begin("/P-101A/N1", "NOZZ", 4, POS=at(600, 0, 500), BORE="100mm", SPRE="/NOZ/N100", REF="=1/11", CREF="=1/21")
    unit.rvm.cylinder((400, 0, 500), (600, 0, 500), 114)
    unit.end()
    unit.begin("/P-101A/MOTOR", "SUBE", 4)
    unit.begin("CYLINDER 1 of SUBEQUIPMENT /P-101A/MOTOR", "CYLI", 4, HEIG="400mm", DIAM="300mm")
    unit.rvm.cylinder((-400, 0, 500), (-800, 0, 500), 300)
    unit.end()
    unit.end()
    unit.end()


def frame(unit):
    unit.begin("/PR-1", "STRU", 6)
    unit.begin("/PR-1/FR", "FRMW", 6)
    for i in range(3):
        unit.begin(f"SCTN {i + 1} of FRAMEWORK /PR-1/FR", "SCTN", 6, SPRE="/HEB200", POSS=at(i * 1000, 2000, 0))
        unit.rvm.box((i * 1000, 2000, 1500), (200, 200, 3000))
        unit.end()
    unit.end()
    unit.end()
    unit.begin("/PS-1", "REST", 8)
    unit.begin("/PS-1/H1", "HANG", 8, HPOS=at(1500, 0, 500))
    unit.rvm.box((1500, 0, 350), (100, 100, 200))
    unit.end()
    unit.end()


def line(unit):
    r = unit.rvm
    tube = lambda a, b, d=114: (r.cylinder(a, b, d), r.cylinder(a, b, d + 100, "INSU"))
    unit.begin("/100-CW-1", "PIPE", 5, PSPE="/A1A", BORE="100mm", TEMP="120degC", PRES="1.6bar", ISPE="=0/0", REF="=1/20")
    unit.begin("/100-CW-1/B1", "BRAN", 5, REF="=1/21", HPOS=at(600, 0, 500), TPOS=at(3000, 2020, 500), HBOR="100mm",
               TBOR="100mm", HDIR="E", TDIR="S", HCON="FBD", TCON="OPEN", HREF="=1/11", HSTU="/A1A/TUBE100", PSPE="/A1A")
    tube((1060, 0, 500), (1500, 0, 500))
    tube((1700, 0, 500), (2848, 0, 500))
    part(unit, "GASK", "GASKET 1 of BRANCH /100-CW-1/B1", (600, 0, 500), (603, 0, 500), 100,
         lambda: r.cylinder((600, 0, 500), (603, 0, 500), 160))
    part(unit, "FLAN", "FLANGE 1 of BRANCH /100-CW-1/B1", (603, 0, 500), (660, 0, 500), 100,
         lambda: r.cylinder((603, 0, 500), (660, 0, 500), 220))
    part(unit, "WELD", "WELD 1 of BRANCH /100-CW-1/B1", (660, 0, 500), (660, 0, 500), 100)
    part(unit, "VALV", "/V-1", (660, 0, 500), (1060, 0, 500), 100, lambda: r.cylinder((660, 0, 500), (1060, 0, 500), 200),
         DTXR="'GATE VALVE, CLASS 150'", MTXX="A105", ORI="Y is N and Z is U")
    part(unit, "TEE", "TEE 1 of BRANCH /100-CW-1/B1", (1500, 0, 500), (1700, 0, 500), 100,
         lambda: r.cylinder((1500, 0, 500), (1700, 0, 500), 114), REF="=1/22", CREF="=1/23")
    part(unit, "ELBO", "ELBOW 1 of BRANCH /100-CW-1/B1", (2848, 0, 500), (3000, 152, 500), 100,
         lambda: r.primitive(4, r.floats(152, 57, math.pi / 2), [0, -0.001, 0, 0.001, 0, 0, 0, 0, 0.001, 2.848, 0.152, 0.5]),
         corner=(3000, 0, 500), ANGL="90deg", RADI="152mm")
    part(unit, "ATTA", "ATTACHMENT 1 of BRANCH /100-CW-1/B1", (3000, 1000, 500), (3000, 1000, 500), 100)
    part(unit, "FBLI", "FBLIND 1 of BRANCH /100-CW-1/B1", (3000, 2000, 500), (3000, 2020, 500), 100,
         lambda: r.cylinder((3000, 2000, 500), (3000, 2020, 500), 220))
    r.group("TUBE 3 of BRANCH /100-CW-1/B1", 5)
    tube((3000, 152, 500), (3000, 1000, 500))
    r.end()
    unit.end()
    unit.begin("/100-CW-1/B2", "BRAN", 5, REF="=1/23", HPOS=at(1600, 0, 605), TPOS=at(1600, 0, 2000), HBOR="100mm", TBOR="50mm",
               HREF="=1/22", HSTU="/A1A/TUBE100")
    part(unit, "REDU", "REDUCER 1 of BRANCH /100-CW-1/B2", (1600, 0, 900), (1600, 0, 1000), 100,
         lambda: r.primitive(7, r.floats(57, 30, 100, 0, 0, 0, 0, 0, 0), unit_frame(1600, 0, 950)))
    unit.end()
    unit.end()


def unit(folder):
    whole = Unit(True)
    whole.begin("/SITE-1", "SITE", Position=at(0, 0, 0))
    whole.begin("/ZONE-1", "ZONE")
    for build in (pump, frame, line):
        build(whole)
    whole.end()
    whole.end()
    for material, rgb in ((4, (200, 30, 30)), (5, (20, 200, 40)), (6, (120, 120, 120))):
        whole.rvm.color(material, *rgb)
    whole.rvm.write(folder / "unit.rvm")
    (folder / "unit.TXT").write_bytes("\r\n".join(whole.lines).encode("latin-1"))
    (folder / "typed.rvm").write_bytes((folder / "unit.rvm").read_bytes())


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    shapes(folder)
    unit(folder)


main()
