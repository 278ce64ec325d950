"""The processor time that `fldtool page` takes beside `fldtool convert` of the same parts and variables.

  box_series FOLDER --millions 1 --steps 8
  python3 page_benchmark.py FLDTOOL FOLDER     (scripts/benchmark page does both)

Both take the surfaces of the box at all steps; they run in turn, after one run of each that is not counted, and what
counts is the median of the runs. The ratio has to stay below 1.5.
"""
import os
import tempfile

from paired_runs import box_of, box_parser, processor_time, ratio_of

GOAL = 1.5


def main():
    options = box_parser().parse_args()
    dataset = box_of(options)
    with tempfile.TemporaryDirectory(dir=options.folder) as out:
        page = [options.fldtool, "page", dataset, os.path.join(out, "box.html"), "--parts", "surfaces"]
        convert = [options.fldtool, "convert", dataset, os.path.join(out, "box.pvd"), "--parts", "surfaces"]
        ratio, page_time, convert_time = ratio_of(page, convert, options.runs, processor_time)
        size = os.path.getsize(os.path.join(out, "box.html"))
    print(f"page {page_time:.3f} s, convert {convert_time:.3f} s, ratio {ratio:.2f} (at most {GOAL}); {size / 1e6:.2f} MB")
    return 0 if ratio <= GOAL else 1


if __name__ == "__main__":
    raise SystemExit(main())
