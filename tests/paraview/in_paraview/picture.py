"""picture.py PLUGIN FOLDER PICTURES SCRATCH: draws the samples and compares with the kept pictures. With the variable
FLD_NEW_PICTURES set, keeps the new ones instead, to be looked at before they are committed."""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import plugin
from paraview import simple
from vtkmodules.vtkImagingCore import vtkImageDifference
from vtkmodules.vtkIOImage import vtkPNGReader

options = plugin.arguments("folder", "pictures", "scratch")
plugin.load(options)
simple._DisableFirstRenderCameraReset()


def draw(name, file, parts, array, value_range, time, position):
    """Draws parts of a sample, coloured; undefined values get the colour for them."""
    view = simple.CreateView("RenderView")
    view.ViewSize = [300, 200]
    view.OrientationAxesVisibility = 0
    view.UseColorPaletteForBackground = 0
    view.Background = [1.0, 1.0, 1.0]
    reader = plugin.open_dataset(os.path.join(options.folder, file))
    reader.UpdatePipelineInformation()
    reader.Parts = parts
    simple.UpdatePipeline(time, reader)
    view.ViewTime = time
    display = simple.Show(reader, view)
    display.Representation = "Surface"
    simple.ColorBy(display, array)
    colours = simple.GetColorTransferFunction(array[1])
    colours.RescaleTransferFunction(*value_range)
    colours.NanColor = [1.0, 1.0, 0.0]
    view.CameraViewUp = [0.0, 0.0, 1.0]
    view.CameraPosition = position
    view.CameraFocalPoint = [0.0, 0.0, 0.0]
    simple.ResetCamera(view)
    simple.GetActiveCamera().Dolly(1.6)
    path = os.path.join(options.scratch, name + ".png")
    simple.SaveScreenshot(path, view, ImageResolution=[300, 200])
    simple.Delete(view)
    return path


def read_picture(path):
    reader = vtkPNGReader()
    reader.SetFileName(path)
    reader.Update()
    return reader.GetOutput()


def compare(path, kept):
    difference = vtkImageDifference()
    difference.SetInputData(read_picture(path))
    difference.SetImageData(read_picture(kept))
    difference.Update()
    # In hundreds of a pixel that is altogether wrong; lines are drawn a little differently by other drivers.
    error = difference.GetThresholdedError()
    print(os.path.basename(path), "differs by", error)
    return error < 100


drawn = [
    draw("channel", "channel/channel.fld", ["floor", "obstacle", "@wake_plane"], ("POINTS", "Temperature"),
         (293.15, 325.0), 0.0, [1.0, -2.0, 2.0]),
    draw("wake_material", "channel/channel.fld", ["upstream", "around_obstacle", "wake"], ("CELLS", "MatOfElements"),
         (1.0, 3.0), 0.0, [-1.0, -2.0, 1.5]),
    draw("blanked_floor", "overset/overset.fld", ["floor", "cylinder"], ("POINTS", "Pressure"), (-100.0, 60.0), 0.0,
         [0.5, -2.0, 3.0]),
    draw("impeller_late", "tank/tank_0.fld", ["disc", "hub"] + [f"blade_{i}" for i in range(1, 7)],
         ("POINTS", "Velocity"), (0.0, 1.0), 0.1, [1.0, -1.5, 1.0]),
]
wrong = 0
for path in drawn:
    kept = os.path.join(options.pictures, os.path.basename(path))
    if os.environ.get("FLD_NEW_PICTURES"):
        os.replace(path, kept)
    elif not compare(path, kept):
        wrong += 1
sys.exit(1 if wrong else 0)
