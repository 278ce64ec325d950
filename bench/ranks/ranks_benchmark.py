"""How the plug-in for ParaView reads on one and on several processes, as a table; scripts/benchmark-ranks runs it.

  ranks_benchmark.py RANK_READER BOX_SERIES FOLDER [ROW...] [--scale S] [--runs N]

The datasets are boxes of hexahedra, written into FOLDER and removed again. Without rows all are measured. --scale 0.1
makes every mesh a tenth as large. Figures are medians over the runs; those of ranks are the largest of any rank.
"""
import argparse
import glob
import json
import os
import shutil
import statistics
import subprocess

WHOLE = "ALL_ELEMENTS"
VOLUME = "volume_1"
SCALAR = "scalar_1"


class Runs:
    def __init__(self, options):
        self.options = options
        self.folders = {}

    def dataset(self, millions):
        """The first file of two steps over a box of so many million elements."""
        if millions not in self.folders:
            folder = os.path.join(self.options.folder, f"box_{millions}")
            steps = "5" if millions == 16 else "2"
            subprocess.run([self.options.box_series, folder, "--millions", str(millions * self.options.scale), "--steps", steps],
                           check=True)
            self.folders[millions] = folder
        return os.path.join(self.folders[millions], "box_0.fld")

    def remove(self, millions):
        shutil.rmtree(self.folders.pop(millions))

    def read(self, ranks, file, *arguments):
        """What each line of a run says: {"opening": ..., "steps": [...], "floors": [...]}."""
        command = [self.options.rank_reader, file, *arguments]
        if ranks > 1:
            command = ["mpiexec", "--allow-run-as-root", "--oversubscribe", "-n", str(ranks), *command]
        output = subprocess.run(command, check=True, capture_output=True, text=True).stdout
        result = {"steps": [], "floors": []}
        for line in output.splitlines():
            said = json.loads(line)
            if said["what"] == "opening":
                result["opening"] = said
            else:
                result[said["what"] + "s"].append(said)
        return result

    def median(self, what, *run):
        """The median of what(result) over the runs."""
        self.read(*run)  # brings the files into the page cache
        return statistics.median(what(self.read(*run)) for _ in range(self.options.runs))


def row(name, what, goal, ratio, details):
    met = "" if goal is None else ("yes" if ratio <= goal else "no")
    print(f"| {name} | {what} | {'stated' if goal is None else goal} | {ratio:.3g} | {details} | {met} |", flush=True)


def millions(runs, number):
    """The size of a mesh as the table has it."""
    return f"{number * runs.options.scale:.3g} M"


def mib(size):
    return f"{size / 2**20:.0f} MiB"


def bytes_read(runs):
    file = runs.dataset(16)
    for parts, arrays in (([WHOLE], [SCALAR]), ([VOLUME], [SCALAR, "MatOfElements"])):
        for ranks in (1, 2, 4):
            arguments = [word for part in parts for word in ("--part", part)]
            arguments += [word for array in arrays for word in ("--variable", array)]
            step = runs.read(ranks, file, *arguments)["steps"][0]
            name = f"{millions(runs, 16)}, {parts[0]}, {' and '.join(arrays)}, {ranks} rank{'s' if ranks > 1 else ''}"
            row("bytes", f"bytes read / bytes of the arrays: {name}", 1.05, sum(step["bytes"]) / step["needed"],
                f"{mib(sum(step['bytes']))}, {sum(step['reads'])} reads, {sum(step['small_reads'])} below 256 KiB")
            if ranks > 1:
                row("messages", f"bytes sent / bytes of the shares: {name}", None, sum(step["sent"]) / sum(step["share"]),
                    f"{mib(sum(step['sent']))} of {mib(sum(step['share']))}")


def memory(runs):
    file = runs.dataset(64)
    size = millions(runs, 64)
    for layers in (0, 1):
        result = runs.read(4, file, "--variable", SCALAR, "--steps", "2", "--layers", str(layers))
        for number, step in enumerate(result["steps"]):
            worst = max(peak / share for peak, share in zip(step["peak"], step["share"]))
            row("memory", f"peak of a rank / its share, {size} on 4 ranks, {layers} layers of ghost cells, step {number}", 1.6,
                worst, f"{mib(max(step['peak']))} of {mib(max(step['share']))}")
    opening = result["opening"]
    row("opening", f"opening {size} on 4 ranks: milliseconds", 50, opening["seconds"] * 1e3,
        f"{opening['first_rank_seconds'] * 1e3:.1f} ms of it on the first rank; "
        f"{max(opening['bytes']) / 2**10:.0f} KiB read")
    runs.remove(64)


def step_at_rest(runs):
    file = runs.dataset(16)
    run = (1, file, "--variable", SCALAR, "--steps", "5")
    runs.read(*run)
    pairs = []
    for _ in range(runs.options.runs):
        said = runs.read(*run)
        pairs += [(step["seconds"], floor["seconds"]) for step, floor in zip(said["steps"][1:], said["floors"])]
    row("step", f"a step at rest with one scalar, {millions(runs, 16)} / reading and swapping it", 1.3,
        statistics.median(a / b for a, b in pairs),
        f"{statistics.median(a for a, _ in pairs):.3f} s of {statistics.median(b for _, b in pairs):.3f} s")


def vtu(runs):
    for width in (32, 64):
        compare_with_vtu(runs, width)
    runs.remove(8)


def compare_with_vtu(runs, width):
    file = runs.dataset(8)
    grid = os.path.join(os.path.dirname(file), "box.vtu")
    arguments = ("--variable", SCALAR)
    runs.read(1, file, *arguments, "--write", grid, *(["--wide"] if width == 64 else []))
    pairs = []
    for _ in range(runs.options.runs + 1):
        ours = runs.read(1, file, *arguments)
        pairs.append((ours["opening"]["seconds"] + ours["steps"][0]["seconds"], ours["steps"][0]["peak"][0],
                      *[runs.read(1, grid)["steps"][0][what] for what in ("seconds", "peak")]))
    pairs = pairs[1:]
    for what, ours, theirs, text in (("time", 0, 2, lambda figure: f"{figure:.2f} s"), ("memory", 1, 3, mib)):
        them = [pair[theirs] if what == "time" else pair[theirs][0] for pair in pairs]
        us = [pair[ours] for pair in pairs]
        row("vtu", f"{what} of one process, {millions(runs, 8)} / of VTK's reader of .vtu, raw, point numbers of {width} bits", 0.8,
            statistics.median(a / b for a, b in zip(us, them)),
            f"{text(statistics.median(us))} of {text(statistics.median(them))}")


def many_parts(runs):
    folder = os.path.join(runs.options.folder, "box_parts")
    subprocess.run([runs.options.box_series, folder, "--millions", "4", "--steps", "1", "--volumes", "20000"], check=True)
    seconds = runs.median(lambda said: said["opening"]["seconds"], 1, os.path.join(folder, "box_0.fld"))
    row("parts", "opening 20,000 volumes: seconds", 1, seconds, "")


ROWS = {"bytes": bytes_read, "step": step_at_rest, "vtu": vtu, "parts": many_parts, "memory": memory}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("rank_reader", help="the program of this name in the benchmark preset's build")
    parser.add_argument("box_series", help="likewise")
    parser.add_argument("folder", help="for the datasets")
    parser.add_argument("rows", nargs="*", metavar="ROW", help=f"rows of the table: {', '.join(ROWS)} (default: all)")
    parser.add_argument("--scale", type=float, default=1.0, help="factor for the size of every mesh (default: 1)")
    parser.add_argument("--runs", type=int, default=5, help="how many runs; figures are their medians (default: 5)")
    options = parser.parse_args()
    for name in options.rows:
        if name not in ROWS:
            parser.error(f"there is no row {name}")
    runs = Runs(options)
    print("| row | what / against what | goal | ratio | figures | met |\n|---|---|---|---|---|---|")
    try:
        for name, measure in ROWS.items():
            if not options.rows or name in options.rows:
                measure(runs)
    finally:
        for folder in glob.glob(os.path.join(options.folder, "box_*")):
            shutil.rmtree(folder)


if __name__ == "__main__":
    main()
