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

# The tree of all parts, whatever is shown; what is set last of it and the list of parts holds.
check("first branches", list(channel.PartTree), ["/Parts/Wholemesh"])
tree = channel.GetProperty("PartTree").SMProperty.GetDomain("data_assembly").GetDataAssembly()
below = tree.GetChildNodes(0, False)
check("branches", [tree.GetNodeName(node) for node in below], ["Surfaces", "Volumes", "Wholemesh"])
check("volumes", len(tree.GetDataSetIndices(below[1])), 3)


def shown():
    """The numbers of cells of the volumes are those of the whole mesh together."""
    channel.UpdatePipeline()
    return channel.GetDataInformation().GetNumberOfCells()


whole = shown()
channel.PartTree = ["/Parts/Volumes"]
check("cells of the volumes", shown(), whole)
channel.PartTree = ["/Parts/Volumes/wake"]
of_wake = shown()
check("fewer cells in a volume", 0 < of_wake < whole, True)
channel.Parts = ["ALL_ELEMENTS"]
check("cells of the list", shown(), whole)
channel.Parts = ["wake"]
check("cells of a volume of the list", shown(), of_wake)
print("as wanted")
