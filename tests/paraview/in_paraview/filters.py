"""filters.py PLUGIN FOLDER FILE: what users put behind the reader, over the samples, and over results of solvers where FLD_REAL_DATA
tells where they are, written to FILE as JSON. If FILE is there already, all of it has to agree: it is the same on any number of
ranks."""
import os
import shutil
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import agreement
import plugin
import shares
from paraview import servermanager, simple

options = plugin.arguments("folder", "file")
plugin.load(options)


def open_dataset(file, parts=None):
    dataset = plugin.open_dataset(os.path.join(options.folder, file))
    dataset.UpdatePipelineInformation()
    if parts:
        dataset.Parts = parts
    return dataset


def point_range(source, name, time=None):
    simple.UpdatePipeline(time, source)
    return source.PointData[name].GetRange()


def rows(source):
    simple.UpdatePipeline(proxy=source)
    return source.GetDataInformation().GetNumberOfRows()


def has_values(source):
    """Whether a filter that goes its own way on each rank comes to an end with something."""
    simple.UpdatePipeline(proxy=source)
    return source.GetDataInformation().GetNumberOfPoints() > 100


channel = open_dataset("channel/channel.fld")
tank = open_dataset("tank/tank_0.fld")
overset = open_dataset("overset/overset.fld")
times = tank.TimestepValues
between = (times[0] + times[1]) / 2
results = {}

clip = simple.Clip(Input=channel)
clip.ClipType.Origin = [0.3, 0, 0.16]
results["clip"] = shares.own_cells(clip)
cut = simple.Slice(Input=channel)
cut.SliceType.Origin = [0.31, 0, 0.16]
results["slice"] = shares.own_cells(cut)
results["contour"] = shares.own_cells(simple.Contour(Input=channel, ContourBy=["POINTS", "Temperature"], Isosurfaces=[300.0]))
results["contour of overset meshes"] = shares.own_cells(
    simple.Contour(Input=overset, ContourBy=["POINTS", "Pressure"], Isosurfaces=[0.5]))
results["threshold"] = shares.own_cells(
    simple.Threshold(Input=channel, Scalars=["CELLS", "MatOfElements"], LowerThreshold=2, UpperThreshold=3))
results["surface"] = shares.own_cells(simple.ExtractSurface(Input=channel))
volumes = simple.ExtractBlock(Input=open_dataset("channel/channel.fld", ["wake", "inlet", "ALL_ELEMENTS"]), Assembly="Assembly",
                              Selectors=["/Parts/Volumes"])
results["block"] = shares.own_cells(volumes)
results["merged blocks"] = shares.own_cells(simple.MergeBlocks(Input=tank), times[3])
results["ghost cells"] = shares.own_cells(simple.GhostCellsGenerator(Input=channel))
results["redistributed"] = shares.own_cells(simple.RedistributeDataSet(Input=channel))
line = simple.PlotOverLine(Input=channel, Point1=[-0.5, 0.05, 0.16], Point2=[1.7, 0.05, 0.16])
results["line"] = point_range(line, "Pressure")
probe = simple.ProbeLocation(Input=channel, ProbeType="Fixed Radius Point Source")
probe.ProbeType.Center = [0.5, 0.1, 0.16]
results["probe"] = point_range(probe, "Pressure")
results["calculator"] = point_range(simple.Calculator(Input=channel, Function="mag(Velocity)", ResultArrayName="speed"), "speed")
stream = simple.StreamTracer(Input=channel, Vectors=["POINTS", "Velocity"], SeedType="Line")
stream.SeedType.Point1, stream.SeedType.Point2 = [-0.55, -0.3, 0.16], [-0.55, 0.3, 0.16]
results["streamlines"] = has_values(stream)
glyphs = simple.Glyph(Input=channel, GlyphType="Arrow", OrientationArray=["POINTS", "Velocity"], GlyphMode="Every Nth Point")
results["glyphs"] = has_values(glyphs)
results["between steps"] = point_range(simple.TemporalInterpolator(Input=tank), "Pressure", between)
results["statistics over time"] = point_range(simple.TemporalStatistics(Input=tank), "Pressure_average")
# A surface's cells, drawn and picked.
view = simple.CreateRenderView()
simple.Show(channel, view)
simple.ResetCamera(view)
simple.Render(view)
simple.SelectSurfaceCells(Rectangle=[0, 0, 2000, 2000], View=view)
picked = simple.ExtractSelection(Input=channel)
results["picked"] = has_values(picked)
simple.ClearSelection(channel)
simple.Delete(view)
# Written by ParaView and read again.
saved = os.path.join(options.folder, f"saved_on_{servermanager.ActiveConnection.GetNumberOfDataPartitions()}")
shutil.rmtree(saved, ignore_errors=True)
simple.SaveData(os.path.join(saved, "channel.vtpc"), proxy=channel)
results["saved"] = shares.own_cells(simple.OpenDataFile(os.path.join(saved, "channel.vtpc")))
# Over time, also of a variable that only the first step has.
of_node = simple.IDSelectionSource(IDs=[0, 5], FieldType="POINT")
results["plot of a selection"] = rows(simple.PlotSelectionOverTime(Input=tank, Selection=of_node)) > 0
results["plot of all"] = rows(simple.PlotDataOverTime(Input=tank)) > 0
real = os.environ.get("FLD_REAL_DATA")
if real:
    junction = open_dataset(os.path.join(real, "tjunction", "tjunction_0.fld"))
    results["plot of a variable that steps lack"] = rows(simple.PlotDataOverTime(Input=junction)) > 0
print(results)
agreement.keep_or_compare(options.file, results)
