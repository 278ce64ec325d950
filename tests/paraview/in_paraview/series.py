"""series.py PLUGIN FOLDER: the samples as ParaView opens files: by their extension, and a series as one dataset."""
import glob
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import plugin
from paraview import simple

options = plugin.arguments("folder")
plugin.load(options)


def check(what, got, wanted):
    if got != wanted:
        sys.exit(f"{what}: {got}, not {wanted}")


def steps(reader):
    reader.UpdatePipelineInformation()
    return len(reader.TimestepValues)


series = glob.glob(os.path.join(options.folder, "tank", "*.fld"))
check("files", len(series), 8)
check("steps of one file", steps(simple.OpenDataFile(series[3])), 8)
grouped = simple.OpenDataFile(series)
check("steps of the group", steps(grouped), 8)
check("readers of the group", type(grouped).__name__, "FLDReader")
channel = simple.OpenDataFile(os.path.join(options.folder, "channel", "channel.fld"))
channel.UpdatePipelineInformation()
check("whole mesh", "ALL_ELEMENTS" in channel.Parts.Available, True)
check("parts", list(channel.Parts), ["ALL_ELEMENTS"])
check("variables", list(channel.PointArrays), ["Pressure", "Temperature", "Velocity"])
check("materials", list(channel.CellArrays), ["MatOfElements"])
check("options", (channel.SimplifyReading, channel.GroupParts, channel.KeepCoordinates), (0, 1, 0))
print("as wanted")
