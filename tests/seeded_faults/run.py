#!/usr/bin/env python3
"""Seeds faults into a copy of the tree and tells which of them the tests find. README.md beside this file tells how.

All faults of faults.txt are put into the copy at once, each behind a switch; the copy is built once, and then the test
programs run with one switch on after the other.
"""
import argparse
import json
import os
import re
import signal
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
SWITCH = "SEEDED_FAULT"
HEADER = """#pragma once
#include <cstdlib>
inline bool seeded(int fault) {
    static const char* const text = std::getenv("%s");
    static const int chosen = text != nullptr ? std::atoi(text) : 0;
    return chosen == fault;
}
""" % SWITCH
# Tests of other things than the code that is seeded.
LEFT_OUT = re.compile(r"install|.*_judged|.*_in_c|.*_format|.*duplicate.*")


@dataclass
class Fault:
    number: int
    file: str
    rooms: list
    what: str = ""
    original: str = ""
    seeded: str = ""

    def text(self):
        return re.sub(r"\bSEEDED\b", f"seeded({self.number})", self.seeded)


def read_table(path):
    """`@ number file: rooms`, `what`, then lines of the original behind "- " and of the seeded text behind "+ "."""
    faults = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("@ "):
            number, file, *rooms = line[2:].replace(":", " ").split()
            faults.append(Fault(int(number), file, rooms))
        elif line.startswith("- "):
            faults[-1].original += ("\n" if faults[-1].original else "") + line[2:]
        elif line.startswith("+ "):
            faults[-1].seeded += ("\n" if faults[-1].seeded else "") + line[2:]
        elif line and not line.startswith("#"):
            faults[-1].what = line
    return faults


def table_errors(faults):
    numbers = [fault.number for fault in faults]
    errors = [f"fault {n} stands twice" for n in sorted(set(numbers)) if numbers.count(n) > 1]
    for fault in faults:
        path = ROOT / fault.file
        count = path.read_text(encoding="utf-8").count(fault.original) if path.is_file() else 0
        if not fault.original or count != 1:
            errors.append(f"fault {fault.number}: its original stands {count} times in {fault.file}")
        if "SEEDED" not in fault.seeded:
            errors.append(f"fault {fault.number}: its text has no SEEDED")
    return errors


def write_when_changed(path, data):
    if not path.is_file() or path.read_bytes() != data:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


def copy_tree(tree, faults):
    """The files of the repository with all faults in; what has not changed keeps its time."""
    by_file = {}
    for fault in faults:
        by_file.setdefault(fault.file, []).append(fault)
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                            capture_output=True).stdout.decode()
    names = {name for name in listed.split("\0") if name and (ROOT / name).is_file()}
    for name in sorted(names):
        data = (ROOT / name).read_bytes()
        if name in by_file:
            text = data.decode("utf-8")
            for fault in by_file[name]:
                text = text.replace(fault.original, fault.text())
            data = (f'#include "{tree}/seeded.h"\n' + text).encode("utf-8")
        write_when_changed(tree / name, data)
        if os.access(ROOT / name, os.X_OK):
            (tree / name).chmod(0o755)
    for path in tree.rglob("*"):
        if path.is_file() and str(path.relative_to(tree)) not in names:
            path.unlink()
    write_when_changed(tree / "seeded.h", HEADER.encode())


def build(tree, folder, jobs):
    flags = ["-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG", "-DTESSARO_BENCH=OFF"]
    subprocess.run(["cmake", "-S", tree, "-B", folder, "-G", "Ninja", *flags], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", folder, "--", f"-j{jobs}"], check=True)


@dataclass
class Test:
    name: str
    command: list
    seconds: float = 0


def tests_of(folder):
    listed = subprocess.run(["ctest", "--test-dir", folder, "--show-only=json-v1"], check=True, capture_output=True)
    tests = [Test(test["name"], test["command"]) for test in json.loads(listed.stdout)["tests"]]
    return [test for test in tests if not LEFT_OUT.fullmatch(test.name)]


def run(test, folder, fault, limit):
    """None when the test passes, else how it failed."""
    environment = dict(os.environ, GTEST_FAIL_FAST="1", **({SWITCH: str(fault)} if fault else {}))
    process = subprocess.Popen(test.command, cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)
    try:
        output = process.communicate(timeout=limit)[0].decode("utf-8", "replace")
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        return "does not end"
    if process.returncode == 0:
        return None
    failed = re.search(r"^\[  FAILED  \] (\S+?),? ", output, re.MULTILINE)
    started = re.findall(r"^\[ RUN      \] (\S+)", output, re.MULTILINE)
    if failed:
        return failed.group(1)
    return f"crash in {started[-1]}" if started else f"status {process.returncode}"


def finder(fault, tests, folder):
    """The test that finds a fault: those of the named rooms are asked first, then the others, the quickest ahead."""
    order = sorted(tests, key=lambda t: (fault.rooms.index(t.name) if t.name in fault.rooms else 99, t.seconds))
    for test in order:
        how = run(test, folder, fault.number, max(30, 10 * test.seconds))
        if how is not None:
            return f"{test.name}: {how}"
    return None


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", type=Path, help="where the copy and its build go; kept, so that a second run is quick")
    parser.add_argument("--only", default="", help="numbers of faults, or names of rooms whose tests stand first")
    parser.add_argument("--jobs", type=int, default=1, help="of the build")
    parser.add_argument("--check", action="store_true", help="only see whether all originals are still there")
    arguments = parser.parse_args()
    faults = read_table(HERE / "faults.txt")
    errors = table_errors(faults)
    if errors or arguments.check:
        print("\n".join(errors) or f"{len(faults)} faults have their place")
        return 1 if errors else 0
    only = set(filter(None, arguments.only.split(",")))
    chosen = [f for f in faults if not only or str(f.number) in only or only.intersection(f.rooms)]
    folder = arguments.folder.resolve()
    copy_tree(folder / "tree", faults)
    build(folder / "tree", folder / "build", arguments.jobs)
    tests = tests_of(folder / "build")
    for test in tests:
        start = time.monotonic()
        how = run(test, folder / "build", 0, 600)
        test.seconds = time.monotonic() - start
        if how is not None:
            print(f"{test.name} fails without a fault: {how}")
            return 1
    missed = 0
    for fault in chosen:
        found = finder(fault, tests, folder / "build")
        missed += found is None
        print(f"{fault.number:3}  {fault.file:60}  {fault.what:70}  {found or 'NOBODY'}", flush=True)
    print(f"{len(chosen)} faults, {missed} found by nobody")
    return 0


if __name__ == "__main__":
    sys.exit(main())
