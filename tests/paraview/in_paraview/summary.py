"""summary.py PLUGIN FOLDER FILE [SAMPLE...]: what there is of the samples (all, or those named) at the first and last step,
on all parts and on some, written to FILE as JSON. If FILE is there already, the summaries have to agree: runs on other
numbers of ranks have the same datasets. On each rank there has to be its share of every part and no more."""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import agreement
import plugin
import shares
from paraview import servermanager, simple

SAMPLES = {
    "channel": "channel/channel.fld",
    "overset": "overset/overset.fld",
    "sector": "sector/sector.fld",
    "tank": "tank/tank_0.fld",
}

# What only shares have: which nodes are the same, and what other shares have too.
OF_SHARES = ("GlobalNodeIds", "vtkGhostType")


def arrays_of(attributes):
    """Ranges of the arrays' components. An array of nothing but undefined values has none."""
    found = {}
    for array in attributes:
        if array.Name in OF_SHARES:
            continue
        ranges = [array.GetRange(c) for c in range(array.GetNumberOfComponents())]
        found[array.Name] = [list(r) if r[0] <= r[1] else None for r in ranges]
    return found


def summary_of(reader, time):
    simple.UpdatePipeline(time, reader)
    return {
        "cells": shares.own_cells(reader, time),
        "bounds": reader.GetDataInformation().GetBounds(),
        "points": arrays_of(reader.PointData[:]),
        "per cell": arrays_of(reader.CellData[:]),
    }


def integrals_of(reader, time):
    integrals = simple.IntegrateVariables(Input=reader)
    simple.UpdatePipeline(time, integrals)
    table = servermanager.Fetch(integrals)
    result = {}
    for data in (table.GetPointData(), table.GetCellData()):
        for i in range(data.GetNumberOfArrays()):
            array = data.GetArray(i)
            if array.GetName() in OF_SHARES:
                continue
            result[array.GetName()] = list(array.GetTuple(0)) if array.GetNumberOfTuples() else []
    simple.Delete(integrals)
    return result


def summary_of_sample(sample, file):
    reader = plugin.open_dataset(file)
    reader.UpdatePipelineInformation()
    # A single step's time is no list.
    times = list(reader.TimestepValues) if hasattr(reader.TimestepValues, "__len__") else [reader.TimestepValues]
    parts = list(reader.Parts.Available)
    if not parts or len(times) < 1:
        sys.exit(f"{file} did not open")
    reader.Parts = parts
    steps = {}
    for time in sorted({times[0], times[-1]}):
        steps[str(time)] = {"all": summary_of(reader, time), "integrals": integrals_of(reader, time)}
    shares.check(reader, sample)
    # The whole mesh, which comes last, and some of the others.
    for part in parts[::-4]:
        reader.Parts = [part]
        steps[str(times[-1])][part] = summary_of(reader, times[-1])
    simple.Delete(reader)
    return {"times": times, "parts": parts, "steps": steps}


options = plugin.arguments("folder", "file", "samples...")
plugin.load(options)
result = {sample: summary_of_sample(sample, os.path.join(options.folder, file))
          for sample, file in SAMPLES.items() if sample in (options.samples or SAMPLES)}
agreement.keep_or_compare(options.file, result)
