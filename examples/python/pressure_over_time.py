"""Draws the pressure on a blade of the stirred tank over time: mean and range.

    python3 pressure_over_time.py SAMPLES PICTURE.png
"""

import sys
from pathlib import Path

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402

import vantrel_fld  # noqa: E402

samples, picture = Path(sys.argv[1]), sys.argv[2]
with vantrel_fld.open(samples / "tank" / "tank_0.fld") as tank:
    pressure = tank.variables["Pressure"]
    blade = tank.parts["blade_1"]
    found = [blade.statistics(pressure, step) for step in tank.steps]
    figure, axes = plt.subplots(figsize=(7, 4), layout="constrained")
    axes.fill_between(
        tank.times, [one.minimum for one in found], [one.maximum for one in found], alpha=0.2, label="range"
    )
    axes.plot(tank.times, [one.mean for one in found], marker="o", label="mean")
    axes.set(xlabel="time [s]", ylabel=pressure.label, title=blade.name)
    axes.legend()
    figure.savefig(picture, dpi=120)
