"""FLD result files (version 4) of computational fluid dynamics solvers as NumPy arrays.

    import vantrel_fld

    with vantrel_fld.open("tank_0.fld") as tank:          # any file of the series
        print(tank)                                       # steps, parts, variables
        blade = tank.parts["blade_1"]
        u = blade.values("Velocity", step=3)              # (n, 3) float32
        xyz, cells = blade.points(step=3), blade.cells(step=3)
        mesh = tank.to_pyvista(step=3)                    # with pyvista installed

Steps count from 0, and from the end with negative numbers; `Dataset.at_time` finds one by its time. Parts and
variables go by their names; their numbers, from 1, are those of fldtool and of other programs with the same
reader. Nodes count from 0, as rows of arrays do. Undefined values are NaN.

Nothing is read before it is asked for. Arrays own their memory and stay when the dataset is closed. Python's
other threads go on while files are read; datasets used by several threads wait for each other. While a call
reads, the process's standard error stream is captured; `Dataset.diagnostics` has what the reader wrote.
"""

from __future__ import annotations

from ._core import version as __version__
from ._dataset import Dataset, open
from ._errors import Error, MissingValuesError, UnknownNameError
from ._parts import Part, Parts
from ._steps import Step, Steps
from ._variables import Statistics, Variable, Variables, VectorStatistics

__all__ = [
    "Dataset",
    "Error",
    "MissingValuesError",
    "Part",
    "Parts",
    "Statistics",
    "Step",
    "Steps",
    "UnknownNameError",
    "Variable",
    "Variables",
    "VectorStatistics",
    "open",
]

# Shown, and found in tracebacks, under the package's name.
for _name in __all__:
    globals()[_name].__module__ = __name__
del _name
