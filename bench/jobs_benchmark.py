"""The time that `fldtool convert` takes with two jobs beside one job.

  box_series FOLDER --millions 1 --steps 8
  python3 jobs_benchmark.py FLDTOOL FOLDER     (scripts/benchmark jobs does both)

Both convert all parts at all steps; they run in turn, after one run of each that is not counted, and what counts is
the median of the runs. On two cores the ratio has to stay below 0.6.
"""
import os
import tempfile

from paired_runs import box_of, box_parser, elapsed, ratio_of

GOAL = 0.6


def main():
    options = box_parser().parse_args()
    dataset = box_of(options)
    with tempfile.TemporaryDirectory(dir=options.folder) as out:

        def convert(jobs):
            return [options.fldtool, "convert", dataset, os.path.join(out, "box.pvd"), "--jobs", str(jobs)]

        ratio, two, one = ratio_of(convert(2), convert(1), options.runs, elapsed)
    print(f"two jobs {two:.3f} s, one job {one:.3f} s, ratio {ratio:.2f} (at most {GOAL})")
    return 0 if ratio <= GOAL else 1


if __name__ == "__main__":
    raise SystemExit(main())
