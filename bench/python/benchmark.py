"""Compares the Python package with the same requests in C++ through host/, and with pyvista reading a .vtu file; and
`fldtool convert` to one .vtkhdf file with the .pvd series.

    python3 bench/python/benchmark.py BIN [--millions N] [--runs N]      (scripts/benchmark-python does it)

BIN has fldtool, box_series and host_session. Sides run in turn, each time in a new process, after a run of each that is
not counted; ratios and differences are the medians of the runs'. Memory is what the process grows by, from before the
dataset is opened to its peak. Without pyvista its row is left out.

A virtual machine may have given free memory back to its own host, and getting a huge page again takes milliseconds. So
before each run as many huge pages are taken and released as a run needs; --as-it-is leaves that out.
"""

import argparse
import importlib.util
import mmap
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

MIB = 1 << 20
HUGE_PAGE = 2 * MIB
START = """
import sys, time, numpy, vantrel_fld
def memory(word):
    return next(int(line.split()[1]) * 1024 for line in open("/proc/self/status") if line.startswith(word))
time.sleep(0.2)  # the threads of the library behind numpy look for work for a while after the import
before = memory("VmRSS:")
start = time.perf_counter()
"""
ARRAYS = START + """
data = vantrel_fld.open(sys.argv[1])
name = next(v.name for v in data.variables if v.kind == "scalar" and v.location == "node")
held = [(part.points(), part.cells(), part.values(name)) for part in data.parts]
print(time.perf_counter() - start, memory("VmHWM:") - before)
"""
SMALL = START + """
data = vantrel_fld.open(sys.argv[1])
name = next(v.name for v in data.variables if v.kind == "scalar" and v.location == "node")
part = data.parts[1]
start = time.perf_counter()
for _ in range(int(sys.argv[2])):
    part.values(name)
print(time.perf_counter() - start, memory("VmHWM:") - before)
"""
GRID = "import pyvista" + START + """
grid = vantrel_fld.open(sys.argv[1]).parts[sys.argv[2]].to_pyvista()
print(time.perf_counter() - start, memory("VmHWM:") - before)
"""
VTU = "import pyvista" + START + """
grid = pyvista.read(sys.argv[1])
print(time.perf_counter() - start, memory("VmHWM:") - before)
"""
SMALL_REQUESTS = 10000
# More than a side needs for a million hexahedra, at its peak and in what it releases before.
BYTES_PER_MILLION = 320 * MIB


def measured(command):
    """Seconds and bytes that a program prints of itself."""
    seconds, peak = subprocess.run(command, check=True, capture_output=True, text=True).stdout.split()
    return float(seconds), int(peak)


def timed(command):
    """Seconds until a command ends; its memory is not asked for."""
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start, 0


def python(script, *arguments):
    return [sys.executable, "-c", script, *map(str, arguments)]


def fetch_huge_pages(size):
    """Makes the machine have so many bytes in huge pages at hand."""
    if size == 0:
        return
    with mmap.mmap(-1, size, mmap.MAP_PRIVATE | mmap.MAP_ANONYMOUS) as memory:
        memory.madvise(mmap.MADV_HUGEPAGE)
        for page in range(0, size, HUGE_PAGE):
            memory[page] = 1


def in_turn(ours, theirs, options, measure=measured):
    """What both sides measured in each run, without the first."""

    def run(command):
        fetch_huge_pages(0 if options.as_it_is else int(options.millions * BYTES_PER_MILLION))
        return measure(command)

    return [(run(ours), run(theirs)) for _ in range(1 + options.runs)][1:]


def print_row(name, what, goal, value, ours, theirs):
    met = "" if goal == "-" else "yes" if float(value.split()[0]) <= float(goal.split()[0]) else "no"
    print(f"| {name} | {what} | {goal} | {value} | {ours} | {theirs} | {met} |")


def print_ratio(name, what, goal, turns):
    ratio = statistics.median(a[0] / b[0] for a, b in turns)
    a, b = (statistics.median(turn[side][0] for turn in turns) for side in range(2))
    print_row(name, what, goal, f"{ratio:.2f}", f"{a:.4f} s", f"{b:.4f} s")


def compare_python(tools, folder, options):
    box = folder / "box_0.fld"
    subprocess.run([tools / "box_series", folder, "--millions", str(options.millions), "--steps", "1"], check=True)
    hexahedra = f"{options.millions:g} M hexahedra"
    what = f"opening {hexahedra}, mesh and a scalar of all parts"
    session = [tools / "host_session", box]
    turns = in_turn(python(ARRAYS, box), [*session, "axes"], options)
    print_ratio("python-axes", f"{what} / the same in C++, as the reader has them", "-", turns)
    turns = in_turn(python(ARRAYS, box), [*session, "arrays"], options)
    print_ratio("python", f"{what} / the same arrays in C++", "1.05", turns)
    more = statistics.median(a[1] - b[1] for a, b in turns) / MIB
    a, b = (statistics.median(turn[side][1] for turn in turns) / MIB for side in range(2))
    what = "peak memory more than C++ needs"
    print_row("python-memory", what, "16 MiB", f"{more:.1f} MiB", f"{a:.1f} MiB", f"{b:.1f} MiB")
    if importlib.util.find_spec("pyvista") is None:
        print("python-vtu: left out, there is no pyvista", file=sys.stderr)
    else:
        import vantrel_fld

        with vantrel_fld.open(box) as dataset:
            part = next(iter(dataset.parts.volumes)).name
        convert = [tools / "fldtool", "convert", box, folder / "x.pvd", "--parts", part]
        subprocess.run(convert, check=True, stdout=subprocess.DEVNULL)
        vtu = next((folder / "x").rglob("*.vtu"))
        turns = in_turn(python(GRID, box, part), python(VTU, vtu), options)
        print_ratio("python-vtu", f"a pyvista grid of {hexahedra} / pyvista reading its .vtu", "0.90", turns)
    small = folder / "small"
    subprocess.run([tools / "box_series", small, "--millions", "0.000729", "--steps", "1"], check=True)
    small /= "box_0.fld"
    count = str(SMALL_REQUESTS)
    turns = in_turn(python(SMALL, small, count), [tools / "host_session", small, "small", count], options)
    each = [[side[0] / SMALL_REQUESTS * 1e6 for side in turn] for turn in turns]
    more = statistics.median(a - b for a, b in each)
    a, b = (statistics.median(turn[side] for turn in each) for side in range(2))
    what = f"{count} times the values of 100 nodes, each, more than C++"
    print_row("python-small", what, "30 us", f"{more:.1f} us", f"{a:.1f} us", f"{b:.1f} us")


def bytes_of_arrays(dataset):
    """Of the arrays that a file with surfaces and volumes has to hold, whose mesh is at rest."""
    total = 0
    for part in dataset.parts:
        if part.kind == "whole":
            continue
        nodes, elements = part.nodes, sum(part.elements.values())
        corners = sum(array.size for array in part.cells().values())
        total += nodes * 12 + corners * 8 + (elements + 1) * 8 + elements
        for variable in dataset.variables:
            width = 12 if variable.kind == "vector" else 4
            total += len(dataset.steps) * width * (nodes if variable.location == "node" else elements)
    return total


def compare_files(tools, folder, options):
    subprocess.run([tools / "box_series", folder, "--millions", str(options.millions / 8), "--steps", "8"], check=True)
    box, one, series = folder / "box_0.fld", folder / "x.vtkhdf", folder / "x.pvd"
    for jobs in ("1", None):
        several = [] if jobs is None else ["--jobs", jobs]
        commands = [[tools / "fldtool", "convert", box, out] for out in (one, series)]
        turns = in_turn(commands[0], commands[1] + several, options, timed)
        what = f"8 steps of {options.millions / 8:g} M hexahedra at rest in one file / as .pvd series"
        name, how = ("vtkhdf-writing", "by one job") if jobs else ("vtkhdf-jobs", "by a job for each core")
        print_ratio(name, f"{what}, {how}", "1.30", turns)
    import vantrel_fld

    with vantrel_fld.open(box) as dataset:
        arrays = bytes_of_arrays(dataset)
    size = one.stat().st_size
    what = "the size of that file / of its arrays"
    print_row("vtkhdf-size", what, "1.02", f"{size / arrays:.4f}", f"{size / MIB:.1f} MiB", f"{arrays / MIB:.1f} MiB")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bin", type=Path)
    parser.add_argument("--millions", type=float, default=8, help="hexahedra of the large mesh, in millions")
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--as-it-is", action="store_true", help="take memory as the machine has it at the moment")
    parser.add_argument("--rows", choices=("arrays", "files"), help="only the rows about arrays, or about files")
    options = parser.parse_args()
    print("| row | what / against what | goal | ratio | this | against | met |\n|---|---|---|---|---|---|---|")
    rows = {"arrays": compare_python, "files": compare_files}
    for compare in [rows[options.rows]] if options.rows else rows.values():
        with tempfile.TemporaryDirectory() as folder:
            compare(options.bin, Path(folder), options)


if __name__ == "__main__":
    main()
