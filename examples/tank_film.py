"""A film of the stirred tank: the impeller turns, with the speed of the water on it and on a cut below it. Writes
tank.0000.png, tank.0001.png, ... of which a program for films makes one:

    pvpython examples/tank_film.py build/samples pictures
    ffmpeg -framerate 8 -i pictures/tank.%04d.png tank.mp4
"""
import os

from fld_plugin import arguments, colour, look, open_dataset, read, white_view
from paraview import simple

options = arguments(__doc__)
tank = open_dataset(options.samples, "tank", "tank_0.fld")
blades = [name for name in tank.Parts.Available if name.startswith("blade_")]
tank.Parts = blades + ["disc", "hub", "shaft", "impeller_zone", "tank_zone"]
tank.PointArrays = ["Velocity"]
tank.CellArrays = []
read(tank)

view = white_view(720, 480)
steel = simple.ExtractBlock(Input=tank, Assembly="Assembly", Selectors=["/Parts/Surfaces"])
water = simple.ExtractBlock(Input=tank, Assembly="Assembly", Selectors=["/Parts/Volumes"])
shown_steel = simple.Show(steel, view)
shown_steel.ColorArrayName = ["POINTS", ""]
shown_steel.DiffuseColor = [0.7, 0.72, 0.76]

cut = simple.Slice(Input=water)
cut.SliceType.Origin = [0.0, 0.0, 0.15]
cut.SliceType.Normal = [0.0, 0.0, 1.0]
shown_cut = simple.Show(cut, view)
colour(shown_cut, view, ("POINTS", "Velocity"), 0.0, 0.9, "Speed [m/s]")
look(view, [0.5, -0.9, 0.8], [0.0, 0.0, 0.2], 1.2)

animation = simple.GetAnimationScene()
animation.UpdateAnimationUsingDataTimeSteps()
simple.SaveAnimation(os.path.join(options.pictures, "tank.png"), view, SuffixFormat=".%04d",
                     FrameWindow=[0, len(tank.TimestepValues) - 1])
