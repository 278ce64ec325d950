"""example.py EXAMPLE PLUGIN SAMPLES PICTURES NAME...: runs an example and looks at the pictures of these names. On each there has to
be something besides the background and the scale, and no two are alike."""
import os
import runpy
import sys

from vtkmodules.util.numpy_support import vtk_to_numpy
from vtkmodules.vtkIOImage import vtkPNGReader

example, plugin, samples, pictures, *names = sys.argv[1:]
paths = [os.path.join(pictures, name) for name in names]
for path in paths:
    if os.path.exists(path):
        os.remove(path)


def pixels_of(path):
    reader = vtkPNGReader()
    reader.SetFileName(path)
    reader.Update()
    return vtk_to_numpy(reader.GetOutput().GetPointData().GetScalars())


sys.argv = [example, "--plugin", plugin, samples, pictures]
sys.path.insert(0, os.path.dirname(example))
runpy.run_path(example, run_name="__main__")

seen = set()
for path in paths:
    if not os.path.exists(path):
        sys.exit(f"{path} was not written")
    pixels = pixels_of(path)
    drawn = (pixels != pixels[0]).any(axis=1).mean()
    print(f"{os.path.basename(path)}: {100 * drawn:.0f} % of it is drawn on")
    if drawn < 0.15:
        sys.exit(f"{path} shows next to nothing")
    if pixels.tobytes() in seen:
        sys.exit(f"{path} is like another picture")
    seen.add(pixels.tobytes())
