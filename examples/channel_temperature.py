"""The hot cylinder in the channel: temperature on a cut at half height, streamlines around the cylinder. The hole in the
wake is where the file holds undefined values.

    xvfb-run -a -s "-noreset -screen 0 1280x1024x24" pvpython examples/channel_temperature.py build/samples pictures
"""
import os

from fld_plugin import arguments, colour, look, open_dataset, read, streamlines, white_view
from paraview import simple

options = arguments(__doc__)
channel = open_dataset(options.samples, "channel", "channel.fld")
volumes = ["upstream", "around_obstacle", "wake"]
channel.Parts = volumes + ["obstacle", "floor"]
read(channel)

view = white_view(900, 400)
fluid = simple.ExtractBlock(Input=channel, Assembly="Assembly", Selectors=["/Parts/Volumes"])
walls = simple.ExtractBlock(Input=channel, Assembly="Assembly", Selectors=["/Parts/Surfaces"])
shown_walls = simple.Show(walls, view)
shown_walls.ColorArrayName = ["POINTS", ""]
shown_walls.DiffuseColor = [0.75, 0.78, 0.82]
shown_walls.SetScalarBarVisibility(view, False)

cut = simple.Slice(Input=fluid)
cut.SliceType.Origin = [0.0, 0.0, 0.16]
cut.SliceType.Normal = [0.0, 0.0, 1.0]
shown_cut = simple.Show(cut, view)
colours = colour(shown_cut, view, ("POINTS", "Temperature"), 293.15, 325.0, "Temperature [K]")
colours.NanOpacity = 0.0

streamlines(fluid, view, [-0.58, -0.38, 0.2], [-0.58, 0.38, 0.2], 24, 4.0, 0.003)

look(view, [0.2, -2.2, 2.2], [0.6, 0.0, 0.1], 1.9)
simple.SaveScreenshot(os.path.join(options.pictures, "channel.png"), view)
