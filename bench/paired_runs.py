"""Two commands in turn, and the median of the ratios of their times; and the command line of the benchmarks that do it."""
import argparse
import os
import resource
import statistics
import subprocess
import time


def elapsed(words):
    """Elapsed seconds of a command."""
    before = time.perf_counter()
    subprocess.run(words, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - before


def processor_time(words):
    """Seconds of the processor for a command, the system's share included."""

    def used():
        usage = resource.getrusage(resource.RUSAGE_CHILDREN)
        return usage.ru_utime + usage.ru_stime

    before = used()
    subprocess.run(words, check=True, stdout=subprocess.DEVNULL)
    return used() - before


def ratio_of(first, second, runs, seconds):
    """(ratio, first, second): medians of `runs` runs of each command after one that is not counted.

    `seconds` is one of the functions above.
    """
    times = [(seconds(first), seconds(second)) for _ in range(1 + runs)][1:]
    columns = (statistics.median(column) for column in zip(*times))
    return statistics.median(a / b for a, b in times), *columns


def box_parser(*programs):
    """A parser for FLDTOOL, other `programs`, FOLDER and --runs; after parsing, box_of(options) is the dataset."""
    parser = argparse.ArgumentParser()
    for program in ("fldtool", *programs):
        parser.add_argument(program)
    parser.add_argument("folder", help="where box_series has written")
    parser.add_argument("--runs", type=int, default=5)
    return parser


def box_of(options):
    """The first file that box_series wrote."""
    return os.path.join(options.folder, "box_0.fld")
