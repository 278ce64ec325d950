"""Swirl in a sixth of an annulus: streamlines through the sector that was calculated, and the walls of all six, of which five are
turned copies. The file has cylindrical coordinates; what comes out of it is Cartesian.

    pvpython examples/sector_swirl.py build/samples pictures
"""
import math
import os

from fld_plugin import arguments, colour, look, open_dataset, read, streamlines, white_view
from paraview import simple

options = arguments(__doc__)
sector = open_dataset(options.samples, "sector", "sector.fld")
sector.Parts = ["hub", "inlet", "inner", "outer"]
read(sector)

view = white_view(700, 560)
walls = simple.ExtractBlock(Input=sector, Assembly="Assembly", Selectors=["/Parts/Surfaces"])
fluid = simple.ExtractBlock(Input=sector, Assembly="Assembly", Selectors=["/Parts/Volumes"])
for i in range(6):
    turned = simple.Transform(Input=walls)
    turned.Transform.Rotate = [0.0, 0.0, 60.0 * i]
    shown = simple.Show(turned, view)
    colour(shown, view, ("POINTS", "Pressure"), 100985.0, 101265.0, "Pressure [Pa]")

angle = math.radians(5.0)
seeds = [[radius * math.cos(angle), radius * math.sin(angle), 0.01] for radius in (0.31, 0.59)]
streamlines(fluid, view, seeds[0], seeds[1], 12, 2.0, 0.004)

look(view, [1.2, 0.9, 1.3], [0.0, 0.0, 0.2], 1.3)
simple.SaveScreenshot(os.path.join(options.pictures, "sector.png"), view)
