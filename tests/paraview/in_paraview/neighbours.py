"""neighbours.py PLUGIN FOLDER FILE: what needs the neighbours of cells (faces drawn, contours, gradients) of a sample, and of real
results where FLD_REAL_DATA tells where they are, written to FILE as JSON. If FILE is there already, all of it has to agree:
it is the same on any number of ranks."""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import agreement
import plugin
import shares
from paraview import servermanager, simple

# A file, its last time, a variable, and where in its range there is a contour.
DATASETS = {
    "sector": ("sector/sector.fld", 0.0, "Pressure", 0.41),
    "propeller": ("propeller/propeller_57.fld", 0.02, "k", 0.1),
}


def drawn_cells(reader):
    """How many faces ParaView draws."""
    view = simple.CreateRenderView()
    display = simple.Show(reader, view)
    display.Representation = "Surface"
    simple.Render(view)
    cells = display.SMProxy.GetRepresentedDataInformation().GetNumberOfCells()
    simple.Delete(view)
    return cells


def integral(source, name, time):
    integrals = simple.IntegrateVariables(Input=source)
    simple.UpdatePipeline(time, integrals)
    table = servermanager.Fetch(integrals)
    array = table.GetPointData().GetArray(name) or table.GetCellData().GetArray(name)
    result = list(array.GetTuple(0)) if array and array.GetNumberOfTuples() else []
    simple.Delete(integrals)
    return result


def results_of(reader, time, variable, height):
    simple.UpdatePipeline(time, reader)
    drawn = drawn_cells(reader)
    low, high = reader.PointData[variable].GetRange()
    contour = simple.Contour(Input=reader, ContourBy=["POINTS", variable], Isosurfaces=[low + height * (high - low)])
    gradient = simple.Gradient(Input=reader, ScalarArray=["POINTS", variable])
    results = {
        "drawn": drawn,
        "contour": shares.own_cells(contour, time),
        "contour's area": integral(contour, "Area", time),
        "gradient": integral(gradient, "Gradient", time),
    }
    simple.Delete(gradient)
    simple.Delete(contour)
    return results


options = plugin.arguments("folder", "file")
plugin.load(options)
result = {}
for name, (file, time, variable, height) in DATASETS.items():
    folder = options.folder if name == "sector" else os.environ.get("FLD_REAL_DATA")
    if not folder:
        continue
    dataset = plugin.open_dataset(os.path.join(folder, file))
    dataset.UpdatePipelineInformation()
    dataset.Parts = [part for part in dataset.Parts.Available if part.startswith("ALL_ELEMENTS")]
    result[name] = results_of(dataset, time, variable, height)
    print(name, result[name])
    simple.Delete(dataset)
if "propeller" in result and result["propeller"]["drawn"] != 4196:
    sys.exit(f"{result['propeller']['drawn']} faces of the propeller")
agreement.keep_or_compare(options.file, result)
