"""Swirl in a sixth of an annulus: streamlines through the sector that was calculated, and the walls of all six, of which five are
turned copies. The file has cylindrical coordinates; what comes out of it is Cartesian.

    pvpython examples/sector_swirl.py build/samples pictures
"""
import math
import os

from fld_plugin import arguments, colour, look, open_dataset, read, white_view
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
seeds = simple.StreamTracer(Input=fluid, SeedType="Line")
seeds.Vectors = ["POINTS", "Velocity"]
seeds.SeedType.Point1 = [0.31 * math.cos(angle), 0.31 * math.sin(angle), 0.01]
seeds.SeedType.Point2 = [0.59 * math.cos(angle), 0.59 * math.sin(angle), 0.01]
seeds.SeedType.Resolution = 12
seeds.MaximumStreamlineLength = 2.0
tubes = simple.Tube(Input=seeds, Radius=0.004)
shown_lines = simple.Show(tubes, view)
shown_lines.ColorArrayName = ["POINTS", ""]
shown_lines.DiffuseColor = [0.15, 0.2, 0.3]

look(view, [1.2, 0.9, 1.3], [0.0, 0.0, 0.2], 1.3)
simple.SaveScreenshot(os.path.join(options.pictures, "sector.png"), view)
