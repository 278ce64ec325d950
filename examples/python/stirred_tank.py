"""Draws the impeller of the stirred tank, coloured by speed, in the faint tank.

    python3 stirred_tank.py SAMPLES PICTURE.png
"""

import sys
from pathlib import Path

import numpy as np
import pyvista

import vantrel_fld

samples, picture = Path(sys.argv[1]), sys.argv[2]
with vantrel_fld.open(samples / "tank" / "tank_0.fld") as tank:
    step = tank.at_time(0.075)
    plotter = pyvista.Plotter(off_screen=True, window_size=(900, 700))
    for part in tank.parts.select("blade_*", "disc", "hub", "shaft", "tank_bottom"):
        grid = part.to_pyvista(step, variables=["Velocity"])
        grid["speed [m/s]"] = np.linalg.norm(grid["Velocity"], axis=1)
        plotter.add_mesh(grid, scalars="speed [m/s]", clim=(0, 1), cmap="viridis")
    plotter.add_mesh(tank.parts["tank_wall"].to_pyvista(step, variables=[]), color="white", opacity=0.15)
    plotter.add_text(f"{step.time:g} s", font_size=12)
    plotter.camera_position = [(0.7, -0.8, 0.75), (0, 0, 0.22), (0, 0, 1)]
    plotter.screenshot(picture)
