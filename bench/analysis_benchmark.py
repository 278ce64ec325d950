"""The processor time of `fldtool integrate` and `fldtool probe` beside reading what they need and building VTK's locator,
and what `fldtool history` of a mesh at rest reads.

  box_series FOLDER --millions 8 --steps 1
  python3 analysis_benchmark.py FLDTOOL ANALYSIS_FLOOR FOLDER     (scripts/benchmark analysis does both)

The sides run in turn, after one run of each that is not counted, and what counts is the median of the ratios, which have
to stay below 1.5. With a folder of --steps files, --history prints the bytes that a step of a history of one point adds,
beside those of the variable; reading more than twice as much is too much.
"""
import os
import random
import subprocess
import tempfile

from paired_runs import box_of, box_parser, processor_time, ratio_of

GOAL = 1.5
HISTORY_GOAL = 2.0


def bytes_read(words):
    """Bytes that a command, a single process, asked of files."""
    process = subprocess.Popen(words, stdout=subprocess.DEVNULL)
    os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOWAIT)
    with open(f"/proc/{process.pid}/io") as counters:
        read = int(counters.readline().split()[1])
    if process.wait() != 0:
        raise SystemExit(f"failed: {words}")
    return read


def compare(name, words, floor, runs):
    ratio, ours, least = ratio_of(words, floor, runs, processor_time)
    print(f"{name} {ours:.2f} s, reading and locator {least:.2f} s, ratio {ratio:.2f} (at most {GOAL})", flush=True)
    return ratio <= GOAL


def history(fldtool, folder):
    """Whether each step of a history reads little more than its variable."""
    steps = len([name for name in os.listdir(folder) if name.endswith(".fld")])
    dataset = os.path.join(folder, "box_0.fld")

    def read(last):
        return bytes_read([fldtool, "history", dataset, "--at", "0.31,0.42,0.53", "--variable", "scalar_1", "--jobs", "1",
                           "--steps", f"0-{last}"])

    per_step = (read(steps - 1) - read(1)) / (steps - 2)
    # A later file has two scalars and a vector: five lists of numbers.
    variable = os.path.getsize(os.path.join(folder, "box_1.fld")) / 5
    print(f"history of {steps} steps: {per_step / 1e6:.3f} MB per step, the variable {variable / 1e6:.3f} MB, "
          f"ratio {per_step / variable:.2f} (at most {HISTORY_GOAL})")
    return per_step <= HISTORY_GOAL * variable


def main():
    parser = box_parser("floor")
    parser.add_argument("--history", help="a folder with a series, for the bytes of its steps")
    parser.add_argument("--points", type=int, default=1000)
    options = parser.parse_args()
    dataset = box_of(options)
    generator = random.Random(1)
    with tempfile.NamedTemporaryFile("w", suffix=".csv") as points:
        points.write("x,y,z\n")
        for _ in range(options.points):
            points.write(",".join(str(generator.random()) for _ in range(3)) + "\n")
        points.flush()
        is_met = [compare("integrate", [options.fldtool, "integrate", dataset, "--step", "0", "--parts", "surfaces"],
                          [options.floor, dataset, "--surfaces"], options.runs),
                  compare("probe", [options.fldtool, "probe", dataset, "--step", "0", "--at-file", points.name],
                          [options.floor, dataset], options.runs)]
    if options.history:
        is_met.append(history(options.fldtool, options.history))
    return 0 if all(is_met) else 1


if __name__ == "__main__":
    raise SystemExit(main())
