"""What the examples share: the command line, the plug-in, and views.

Every example takes the folder with the samples (fldtool sample FOLDER) and the folder for the pictures.
"""
import argparse
import glob
import os

from paraview import simple

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PLACES = [
    os.path.join(ROOT, "build", "release", "bin", "paraview-*", "plugins", "FLDReader", "FLDReader.so"),
    "/usr/local/lib*/paraview-*/plugins/FLDReader/FLDReader.so",
    "/usr/lib/*/paraview-*/plugins/FLDReader/FLDReader.so",
]


def arguments(description):
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("samples", help="folder with the samples")
    parser.add_argument("pictures", help="folder for the pictures")
    parser.add_argument("--plugin", help="FLDReader.so; looked for when it is not given")
    options = parser.parse_args()
    os.makedirs(options.pictures, exist_ok=True)
    load(options.plugin)
    return options


def load(path=None):
    """Loads the plug-in: the one given, else the first that is found."""
    found = [path] if path else [name for place in PLACES for name in sorted(glob.glob(place))]
    if not found:
        raise SystemExit("FLDReader.so was not found: build it, or name it with --plugin")
    simple.LoadPlugin(found[0], remote=False, ns=globals())


def open_dataset(*path):
    """The reader of a dataset, which is opened by this. Nothing of its meshes and values is read yet."""
    reader = FLDReader(FileNames=[os.path.join(*path)])  # noqa: F821, the plug-in brings it
    reader.UpdatePipelineInformation()
    return reader


def read(dataset):
    """Reads what is switched on. The program ends when there is nothing of it."""
    simple.UpdatePipeline(proxy=dataset)
    if dataset.GetDataInformation().GetNumberOfCells() == 0:
        raise SystemExit(f"{dataset.FileNames[0]}: no cells on the parts {', '.join(dataset.Parts)}")


def white_view(width, height):
    view = simple.CreateView("RenderView")
    view.ViewSize = [width, height]
    view.OrientationAxesVisibility = 0
    view.UseColorPaletteForBackground = 0
    view.Background = [1.0, 1.0, 1.0]
    return view


def look(view, position, focus, zoom=1.0):
    view.CameraViewUp = [0.0, 0.0, 1.0]
    view.CameraPosition = position
    view.CameraFocalPoint = focus
    simple.ResetCamera(view)
    simple.GetActiveCamera().Dolly(zoom)


def colour(display, view, array, low, high, title):
    """Colours by an array, with a scale beside the picture."""
    simple.ColorBy(display, array)
    colours = simple.GetColorTransferFunction(array[1])
    colours.RescaleTransferFunction(low, high)
    bar = simple.GetScalarBar(colours, view)
    bar.Title = title
    bar.ComponentTitle = ""
    bar.TitleColor = bar.LabelColor = [0.0, 0.0, 0.0]
    bar.WindowLocation = "Upper Right Corner"
    bar.AddRangeLabels = 0
    bar.Visibility = 1
    return colours


def streamlines(fluid, view, first, last, count, length, radius):
    """Dark tubes along the velocity, from `count` + 1 points of a line on."""
    seeds = simple.StreamTracer(Input=fluid, SeedType="Line")
    seeds.Vectors = ["POINTS", "Velocity"]
    seeds.SeedType.Point1 = first
    seeds.SeedType.Point2 = last
    seeds.SeedType.Resolution = count
    seeds.MaximumStreamlineLength = length
    shown = simple.Show(simple.Tube(Input=seeds, Radius=radius), view)
    shown.ColorArrayName = ["POINTS", ""]
    shown.DiffuseColor = [0.15, 0.2, 0.3]
