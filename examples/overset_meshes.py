"""Two overlapping meshes: below, the background with the nodes blanked that it leaves to the ring; above, the ring.

    pvpython examples/overset_meshes.py build/samples pictures
"""
import os

from fld_plugin import arguments, colour, look, open_dataset, read, white_view
from paraview import simple

options = arguments(__doc__)
overset = open_dataset(options.samples, "overset", "overset.fld")
overset.Parts = ["floor", "ring_ceiling", "cylinder"]
read(overset)

view = white_view(800, 500)
shown = simple.Show(overset, view)
shown.Representation = "Surface With Edges"
shown.EdgeColor = [0.4, 0.4, 0.4]
colours = colour(shown, view, ("POINTS", "Pressure"), -180.0, 60.0, "Static pressure [Pa]")
colours.NanColor = [1.0, 1.0, 1.0]
look(view, [0.6, -1.6, 2.4], [0.0, 0.0, 0.0], 1.4)
simple.SaveScreenshot(os.path.join(options.pictures, "overset.png"), view)
