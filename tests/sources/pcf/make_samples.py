#!/usr/bin/env python3
"""Writes the samples of piping component files beside this script, in samples/: every construct that files of other producers
hold, in several dialects, and damaged ones. Run it again after a change; what it writes is kept in the repository."""
import pathlib

HERE = pathlib.Path(__file__).resolve().parent / "samples"
EAST, NORTH, UP, WEST, DOWN = (1, 0, 0), (0, 1, 0), (0, 0, 1), (-1, 0, 0), (0, 0, -1)


class Line:
    """A pipeline that is laid part by part from a point in a direction."""

    def __init__(self, bore, at=(1000.0, 2000.0, 3000.0), way=EAST, number=lambda v: f"{v:.4f}"):
        self.text, self.bore, self.at, self.way, self.number = [], bore, at, way, number

    def record(self, key, *members):
        self.text.append(key)
        self.text += [f"    {member}" for member in members]
        return self

    def point(self, at, *more):
        return " ".join([*(self.number(v) for v in at), *map(str, more)])

    def ahead(self, length, way=None):
        way = way or self.way
        return tuple(a + length * w for a, w in zip(self.at, way))

    def straight(self, key, length, *members, bore=None, ends=("", "")):
        start, self.at = self.at, self.ahead(length)
        out = self.bore if bore is None else bore
        self.record(key, f"END-POINT {self.point(start, self.bore, ends[0])}".rstrip(),
                    f"END-POINT {self.point(self.at, out, ends[1])}".rstrip(), *members)
        self.bore = out
        return self

    def turn(self, key, way, reach, *members):
        start, centre = self.at, self.ahead(reach)
        self.at = centre
        self.at = self.ahead(reach, way)
        self.way = way
        return self.record(key, f"END-POINT {self.point(start, self.bore)}", f"END-POINT {self.point(self.at, self.bore)}",
                           f"CENTRE-POINT {self.point(centre)}", *members)

    def tee(self, key, way, half, reach, bore, *members):
        start, centre = self.at, self.ahead(half)
        self.at = centre
        branch = self.ahead(reach, way)
        self.at = self.ahead(half)
        self.record(key, f"END-POINT {self.point(start, self.bore)}", f"END-POINT {self.point(self.at, self.bore)}",
                    f"CENTRE-POINT {self.point(centre)}", f"BRANCH1-POINT {self.point(branch, bore)}", *members)
        return branch

    def weld(self):
        return self.record("WELD", f"END-POINT {self.point(self.at, self.bore)}", f"END-POINT {self.point(self.at, self.bore)}",
                           "SKEY WW")

    def bolts(self, *members):
        return self.record("BOLT", f"CO-ORDS {self.point(self.at)}", *members)


HEADER = ["ISOGEN-FILES ISOGEN.FLS", "UNITS-BORE MM", "UNITS-CO-ORDS MM", "UNITS-WEIGHT KGS", "UNITS-BOLT-DIA MM",
          "UNITS-BOLT-LENGTH MM"]


def write(name, lines, end="\n", encoding="utf-8"):
    (HERE / name).write_bytes((end.join(lines) + end).encode(encoding))


def header(reference, *members, bore="MM"):
    return [*(line.replace("UNITS-BORE MM", f"UNITS-BORE {bore}") for line in HEADER), f"PIPELINE-REFERENCE {reference}",
            *(f"    {member}" for member in members)]


def full_line():
    """A line with every kind of component between two pieces of equipment, a side line, an olet, supports and bolts."""
    line = Line(100)
    line.record("END-CONNECTION-EQUIPMENT", f"CO-ORDS {line.point(line.at)}", "CONNECTION-REFERENCE P-101/N1")
    line.straight("GASKET", 3, "ITEM-CODE GA100")
    line.straight("FLANGE", 62, "SKEY FLWN", "ITEM-CODE FL100", "WEIGHT 5.2").bolts(
        "BOLT-DIA 16", "BOLT-LENGTH 90", "BOLT-QUANTITY 8")
    line.text[-4] = f"    CO-ORDS {line.point(line.ahead(-62))}"
    line.weld().straight("PIPE", 1200, "ITEM-CODE PI100", "MATERIAL-IDENTIFIER 1")
    line.weld().turn("ELBOW", UP, 152, "SKEY ELBW", "ANGLE 9000", "ITEM-CODE EL100").weld()
    run_start = line.at
    line.straight("PIPE", 2000, "ITEM-CODE PI100").weld()
    branch = line.tee("TEE", NORTH, 105, 105, 80, "SKEY TEBW", "ITEM-CODE TE10080")
    line.weld().straight("PIPE", 500)
    line.straight("REDUCER-CONCENTRIC", 102, "SKEY RCBW", bore=80)
    line.straight("PIPE", 300)
    line.straight("FLANGE", 52, "SKEY FLWN", "ITEM-CODE FL80")
    line.straight("GASKET", 3)
    line.straight("VALVE", 203, "SKEY VTFL", "SPINDLE-DIRECTION EAST", "NAME V-1001")
    line.straight("GASKET", 3)
    line.straight("FLANGE", 52, "SKEY FLWN")
    line.straight("INSTRUMENT", 180, "SKEY IDPL", "TAG FT-7")
    line.straight("FILTER", 240, "SKEY FYBW")
    line.straight("COUPLING", 40, "SKEY COSW")
    line.straight("UNION", 60, "SKEY UNSW")
    line.straight("MISC-COMPONENT", 150, "SKEY XXBW")
    line.straight("CAP", 51, "SKEY KABW")
    line.record("END-POSITION-CLOSED", f"CO-ORDS {line.point(line.at)}")
    side = Line(80, branch, NORTH)
    side.straight("PIPE", 800).turn("BEND", EAST, 240, "SKEY PB", "BEND-RADIUS 240").straight("PIPE", 600)
    side.straight("VALVE", 203, "SKEY VGFL").straight("FLANGE-BLIND", 20, "SKEY FLBL")
    olet = tuple(a + 900 * w for a, w in zip(run_start, UP))
    outlet = (olet[0] + 95, olet[1], olet[2])
    line.record("OLET", f"CENTRE-POINT {line.point(olet)}", f"BRANCH1-POINT {line.point(outlet, 25)}", "SKEY SKSW")
    drain = Line(25, outlet, EAST).straight("PIPE", 200).straight("VALVE", 90, "SKEY VBSW").straight("PLUG", 30, "SKEY PLSC")
    line.record("SUPPORT", f"CO-ORDS {line.point((1700.0, 2000.0, 3000.0))}", "SKEY ANCH", "NAME PS-1", "GUID 77")
    line.record("FLOW-ARROW", f"CO-ORDS {line.point((1500.0, 2000.0, 3000.0))}")
    line.record("MESSAGE-SQUARE", f"CO-ORDS {line.point((1500.0, 2000.0, 3000.0))}", "TEXT PIPE THIS WAY")
    materials = ["MATERIALS", "ITEM-CODE PI100", "    DESCRIPTION PIPE SMLS SCH40", "ITEM-CODE FL100",
                 "    DESCRIPTION FLANGE WN 150#"]
    return header("/100-CW-1001", "PIPING-SPEC A1B", "NOMINAL-CLASS 150", "AREA 12", "PIPELINE-TEMP 60", "ATTRIBUTE1 first",
                  "REVISION 3") + line.text + side.text + drain.text + materials


def inch_line():
    """The dialect in inches with decimal commas, tabs, lower-case keywords and one-ended closings."""
    line = Line(2, number=lambda v: f"{v:.2f}".replace(".", ","))
    line.straight("pipe", 500).turn("elbow", NORTH, 76, "skey ELBW").straight("PIPE", 400)
    line.straight("REDUCER-ECCENTRIC", 76, "SKEY REBW", "FLAT-DIRECTION DOWN", bore="1,5")
    line.at = (line.at[0], line.at[1], line.at[2])
    line.straight("PIPE", 300)
    line.record("CAP", f"END-POINT {line.point(line.at, '1,5')}", "<SKEY>")
    return [text.replace("    ", "\t") for text in header("L-2", "PIPING-SPEC S2", bore="INCH") + line.text]


def eccentric_line():
    line = Line(150)
    line.straight("PIPE", 500)
    start = line.at
    line.at = (line.at[0] + 140, line.at[1], line.at[2] - 27)
    line.record("REDUCER-ECCENTRIC", f"END-POINT {line.point(start, 150)}", f"END-POINT {line.point(line.at, 100)}",
                "SKEY REBW", "FLAT-DIRECTION DOWN")
    line.bore = 100
    line.straight("PIPE", 500)
    return header("ECC-1") + line.text


def lengthless_line():
    """Reducers and gaskets of no length, a valve whose coordinates are all zero, a bore of zero, a gap and an overlap."""
    line = Line(100)
    line.straight("PIPE", 800)
    line.record("REDUCER-CONCENTRIC", f"END-POINT {line.point(line.at, 100)}", f"END-POINT {line.point(line.at, 80)}")
    line.bore = 80
    line.straight("PIPE", 700)
    line.record("GASKET", f"END-POINT {line.point(line.at, 80)}", f"END-POINT {line.point(line.at, 80)}")
    line.straight("FLANGE", 52, "SKEY FLSO", bore=0)
    line.bore = 80
    line.at = line.ahead(4)
    line.straight("PIPE", 400)
    line.record("VALVE", "END-POINT 0 0 0 80", "END-POINT 0 0 0 80", "SKEY VBFL")
    line.at = line.ahead(-3)
    line.straight("PIPE", 600)
    return header("NO-LENGTH") + line.text


def two_pipelines():
    first = Line(50).straight("PIPE", 300)
    second = Line(50, (1000.0, 2600.0, 3000.0)).straight("PIPE", 300)
    second.record("TEE-SET-ON", f"CENTRE-POINT {second.point((1150.0, 2600.0, 3000.0))}",
                  f"BRANCH1-POINT {second.point((1150.0, 2600.0, 3100.0), 25)}", "SKEY TESO")
    return header("TWO-A", "PIPING-SPEC A1") + first.text + ["PIPELINE-REFERENCE TWO-B", "PIPING-SPEC B1"] + second.text


def odd_records():
    """What no reader knows, cannot read, or must not take for a component."""
    line = Line(50).straight("PIPE", 300)
    line.record("PIPE", "END-POINT a b c 50", "END-POINT 1 2 3 50")
    line.record("ELBOW", f"END-POINT {line.point(line.at, 50)}")
    line.record("WARP-DRIVE", "POWER 9")
    line.straight("NEW-THING", 120)
    line.record("MESSAGE", f"CO-ORDS {line.point(line.at)}", "TEXT VALVE", "TEXT   END-POINT 1 2 3 4")
    line.record("OLET", f"CENTRE-POINT {line.point((9e5, 9e5, 9e5))}", f"BRANCH1-POINT {line.point((9e5, 9e5, 9.001e5), 20)}")
    line.record("BOLT", f"CO-ORDS {line.point((5e5, 5e5, 5e5))}", "BOLT-DIA 20")
    line.record("SUPPORT", "SKEY 01HG")
    return header("ODD", "PIPING-SPEC", "INSULATION-SPEC HC50") + line.text


def main():
    HERE.mkdir(exist_ok=True)
    write("full.pcf", full_line())
    write("inch.pcf", inch_line(), end="\r\n")
    write("eccentric.pcf", eccentric_line())
    write("lengthless.pcf", lengthless_line())
    write("two.pcf", two_pipelines(), end="\r\n", encoding="utf-8-sig")
    write("odd.pcf", odd_records())
    write("windows.pcf", header("RÖHRE-Ø", "ATTRIBUTE1 Grün €") + Line(50).straight("PIPE", 300).text, encoding="cp1252")


if __name__ == "__main__":
    main()
