"""second_opinion.py FLDTOOL FILE...: `fldtool integrate` and `fldtool probe` against VTK's own filters over what
`fldtool convert` writes: vtkIntegrateAttributes and vtkProbeFilter agree within 1e-5 of the largest value. Each file is
looked at at its last step. Results of solvers below FLD_REAL_DATA, if that is set, are looked at too."""
import glob
import json
import math
import os
import random
import subprocess
import sys
import tempfile

from paraview import simple  # noqa: F401  (loads the modules)
from paraview.modules.vtkRemotingCore import vtkPVSession  # noqa: F401
from vtkmodules.vtkCommonCore import vtkPoints
from vtkmodules.vtkCommonDataModel import vtkCellLocatorStrategy, vtkPolyData
from vtkmodules.vtkFiltersCore import vtkProbeFilter
from vtkmodules.vtkFiltersParallel import vtkIntegrateAttributes
from vtkmodules.vtkIOXML import vtkXMLUnstructuredGridReader

TOLERANCE = 1e-5
POINTS = 400


def run(*words):
    return subprocess.run(words, check=True, stdout=subprocess.PIPE, text=True).stdout


def read_grid(path):
    reader = vtkXMLUnstructuredGridReader()
    reader.SetFileName(path)
    reader.Update()
    return reader.GetOutput()


def largest(array):
    """The largest absolute value of an array, 0 of one without numbers."""
    ranges = [array.GetFiniteRange(c) for c in range(array.GetNumberOfComponents())]
    return max([abs(end) for ends in ranges for end in ends if ends[0] <= ends[1]], default=0.0)


def expect(what, ours, theirs, scale):
    if not math.isclose(ours, theirs, rel_tol=TOLERANCE, abs_tol=TOLERANCE * scale):
        sys.exit(f"{what}: fldtool {ours}, VTK {theirs}")


def compare_integrals(name, part, grid):
    """How many integrals of a part were compared."""
    filter = vtkIntegrateAttributes()
    filter.SetInputData(grid)
    filter.Update()
    result = filter.GetOutput()
    measure = part.get("area", part.get("volume"))
    sizes = result.GetCellData().GetArray("Area" if "area" in part else "Volume")
    expect(f"{name}: size", measure, sizes.GetValue(0), 0)
    compared = 1
    for variable in part["variables"]:
        per_element = variable["per"] == "element"
        data = result.GetCellData() if per_element else result.GetPointData()
        values = (grid.GetCellData() if per_element else grid.GetPointData()).GetArray(variable["name"])
        for component in variable["components"]:
            if component["component"] in ("magnitude", "normal") or component["undefined"] > 0:
                continue
            index = "xyz".index(component["component"] or "x")
            theirs = data.GetArray(variable["name"]).GetComponent(0, index)
            expect(f"{name}: {variable['name']} {component['component']}", component["integral"], theirs,
                   measure * largest(values))
            compared += 1
    return compared


def compare_probes(name, fldtool, file, step, grid, folder):
    """How many values at points were compared."""
    generator = random.Random(7)
    box = grid.GetBounds()
    table = os.path.join(folder, "points.csv")
    points = vtkPoints()
    points.SetDataTypeToDouble()
    with open(table, "w") as text:
        for _ in range(POINTS):
            at = [generator.uniform(box[2 * axis], box[2 * axis + 1]) for axis in range(3)]
            text.write(",".join(map(repr, at)) + "\n")
            points.InsertNextPoint(at)
    ours = json.loads(run(fldtool, "probe", "--json", file, "--at-file", table, "--step", step))
    where = vtkPolyData()
    where.SetPoints(points)
    filter = vtkProbeFilter()
    filter.SetInputData(where)
    filter.SetSourceData(grid)
    # The usual strategy looks around the nearest node, and misses elements where meshes touch that share no node.
    filter.SetFindCellStrategy(vtkCellLocatorStrategy())
    filter.Update()
    data = filter.GetOutput().GetPointData()
    valid = data.GetArray(filter.GetValidPointMaskArrayName())
    compared = disagreeing = 0
    for i, answer in enumerate(ours["steps"][0]["answers"]):
        if (answer["found"] == "inside") != (valid.GetComponent(i, 0) == 1):
            disagreeing += 1
            continue
        if answer["found"] != "inside":
            continue
        for column, value in zip(ours["columns"], answer["values"]):
            variable, _, component = column["name"].rpartition("_")
            if component not in ("x", "y", "z") or not data.HasArray(variable):
                variable, component = column["name"], "x"
            if data.GetArray(variable) is None and value is None:
                continue  # not at this step
            theirs = data.GetArray(variable).GetComponent(i, "xyz".index(component))
            source = grid.GetPointData().GetArray(variable) or grid.GetCellData().GetArray(variable)
            if value is None or math.isnan(theirs):
                continue
            expect(f"{name}: {column['name']} at {points.GetPoint(i)}", value, theirs, largest(source))
            compared += 1
    # Points within rounding of a surface.
    if disagreeing > POINTS // 100:
        sys.exit(f"{name}: {disagreeing} of {POINTS} points are inside for one and outside for the other")
    return compared


def main(fldtool, *files):
    for file in files:
        info = json.loads(run(fldtool, "info", "--json", file))
        step = str(len(info["steps"]) - 1)
        # The whole mesh of a mesh in cylindrical coordinates is written as it is.
        is_cylindrical = os.path.basename(file).startswith("sector")
        parts = "surfaces,volumes" if is_cylindrical else "all"
        with tempfile.TemporaryDirectory() as folder:
            run(fldtool, "convert", file, os.path.join(folder, "out.pvd"), "--steps", step, "--parts", parts,
                "--precision", "double")
            integrals = json.loads(run(fldtool, "integrate", "--json", file, "--steps", step, "--parts", parts))
            compared = 0
            for part in integrals["steps"][0]["parts"]:
                pattern = os.path.join(folder, "out", f"step_*{step}", f"part_{part['part']}_*.vtu")
                (path,) = glob.glob(pattern)
                grid = read_grid(path)
                name = f"{file}: part {part['name']}"
                compared += compare_integrals(name, part, grid)
                if part["kind"] == "whole" and not is_cylindrical:
                    compared += compare_probes(name, fldtool, file, step, grid, folder)
            if compared < 20:
                sys.exit(f"{file}: only {compared} numbers were compared")
            print(f"{file}: {compared} numbers agree")


results = os.environ.get("FLD_REAL_DATA")
main(*sys.argv[1:], *(sorted(glob.glob(os.path.join(results, "*", "*_0.fld"))) if results else []))
