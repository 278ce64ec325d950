"""Draws the velocity around and along the axis against the radius in the annulus sector.

    python3 swirl_by_radius.py SAMPLES PICTURE.png
"""

import sys
from pathlib import Path

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import numpy as np  # noqa: E402

import vantrel_fld  # noqa: E402

samples, picture = Path(sys.argv[1]), sys.argv[2]
with vantrel_fld.open(samples / "sector" / "sector.fld") as sector:
    outlet = sector.parts["outlet"]
    x, y, _ = outlet.points().T
    velocity_x, velocity_y, along = outlet.values("Velocity").T
    radius = np.hypot(x, y)
    around = (x * velocity_y - y * velocity_x) / radius
    figure, axes = plt.subplots(figsize=(7, 4), layout="constrained")
    axes.scatter(radius, around, s=8, label="around the axis")
    axes.scatter(radius, along, s=8, label="along the axis")
    axes.set(xlabel="radius [m]", ylabel=sector.variables["Velocity"].label, title=outlet.name)
    axes.legend()
    figure.savefig(picture, dpi=120)
