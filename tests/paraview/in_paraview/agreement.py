"""Results in a file, with which those of other runs have to agree."""
import json
import math
import os
import sys


def agree(a, b, path=""):
    """Ends the program where they differ. Sums come in another order, so numbers agree within 1e-9."""
    if isinstance(a, dict) and isinstance(b, dict) and a.keys() == b.keys():
        for key in a:
            agree(a[key], b[key], f"{path}/{key}")
    elif isinstance(a, (list, tuple)) and isinstance(b, (list, tuple)) and len(a) == len(b):
        for i, (x, y) in enumerate(zip(a, b)):
            agree(x, y, f"{path}/{i}")
    elif isinstance(a, float) and isinstance(b, float):
        same = math.isclose(a, b, rel_tol=1e-9, abs_tol=1e-9) or (math.isnan(a) and math.isnan(b))
        if not same:
            sys.exit(f"{path}: {a} before, {b} now")
    elif a != b:
        sys.exit(f"{path}: {a} before, {b} now")


def keep_or_compare(path, result):
    """Writes the result as JSON if there is no file yet. If there is one, what of it the result has too has to agree: runs
    on other numbers of ranks have the same datasets."""
    result = json.loads(json.dumps(result))
    if os.path.exists(path):
        with open(path) as before:
            known = json.load(before)
            agree({name: known[name] for name in result}, result)
    else:
        with open(path, "w") as file:
            json.dump(result, file)
