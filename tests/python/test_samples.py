"""Every part of every sample at every step, against the formulas that the samples are made from."""

import numpy as np
import pytest

import formulas

# The largest magnitude of a field, to which single precision is relative.
SCALES = {"Velocity": 20.0, "Pressure": 1.1e5, "Temperature": 330.0}
# Rounding of the coordinates matters where a field is steep.
TOLERANCE = 4e-6


@pytest.mark.parametrize("name", ["channel", "tank", "sector", "overset"])
def test_values_are_those_of_the_formulas(open_sample, name):
    dataset = open_sample(name)
    fields = getattr(formulas, name)
    compared = 0
    for step in dataset.steps:
        for part in step.parts:
            x, y, z = part.points().astype(float).T
            if name == "sector" and part.kind == "whole":
                # The whole mesh of cylindrical coordinates is delivered as radius, angle and height.
                x, y = x * np.cos(y), x * np.sin(y)
            for variable in ("Velocity", "Pressure", "Temperature"):
                if variable not in dataset.variables:
                    continue
                values = part.values(variable)
                with np.errstate(all="ignore"):
                    wanted = np.asarray(getattr(fields, variable)(x, y, z, step.time)).T
                if name == "overset":
                    # Blanked nodes have no values; everything else must be right.
                    is_blanked = (np.hypot(x, y) < 0.38) & (part.region_set != 1)
                    if np.isnan(values).any():
                        assert np.isnan(values[is_blanked]).all()
                    wanted = np.where(np.isnan(values), np.nan, wanted)
                np.testing.assert_allclose(
                    values, wanted, rtol=0, atol=SCALES[variable] * TOLERANCE, err_msg=f"{part} {variable}"
                )
                compared += values.size
    assert compared > 10000


def test_arrays_have_the_shapes_and_types_that_are_promised(open_sample):
    dataset = open_sample("channel")
    part = dataset.parts["around_obstacle"]
    points = part.points()
    assert points.shape == (5552, 3) and points.dtype == np.dtype("=f4") and points.flags.c_contiguous
    cells = part.cells()
    assert {shape: array.shape for shape, array in cells.items()} == {
        "tet": (10240, 4),
        "pyramid": (2560, 5),
        "hex": (1920, 8),
    }
    for array in cells.values():
        assert array.dtype == np.dtype("=i4") and array.min() >= 0 and array.max() < 5552
    assert np.unique(np.concatenate([array.ravel() for array in cells.values()])).size == 5552
    velocity = part.values("Velocity")
    assert velocity.shape == (5552, 3) and velocity.dtype == np.dtype("=f4") and velocity.flags.c_contiguous
    assert part.values("Velocity", component="y").shape == (5552,)
    np.testing.assert_array_equal(part.values("Velocity", component=1), velocity[:, 1])
    assert part.values("MatOfElements").shape == (10240 + 2560 + 1920,)


def test_materials_are_one_for_each_element_in_the_order_of_the_shapes(open_sample):
    dataset = open_sample("channel")
    numbers = [np.unique(part.values("MatOfElements")).tolist() for part in dataset.parts.volumes]
    assert numbers == [[1.0], [2.0], [3.0]]


def _volumes(points, corners, faces):
    """By the divergence theorem, over triangles that look outwards."""
    total = 0
    for face in faces:
        a, *rest = (points[corners[:, corner]].astype(float) for corner in face)
        for b, c in zip(rest, rest[1:]):
            total = total + np.einsum("ij,ij->i", a, np.cross(b, c)) / 6
    return total


FACES = {
    "tet": [(0, 2, 1), (0, 1, 3), (1, 2, 3), (2, 0, 3)],
    "pyramid": [(0, 3, 2, 1), (0, 1, 4), (1, 2, 4), (2, 3, 4), (3, 0, 4)],
    "prism": [(0, 2, 1), (3, 4, 5), (0, 1, 4, 3), (1, 2, 5, 4), (2, 0, 3, 5)],
    "hex": [(0, 3, 2, 1), (4, 5, 6, 7), (0, 1, 5, 4), (1, 2, 6, 5), (2, 3, 7, 6), (3, 0, 4, 7)],
}


@pytest.mark.parametrize("name", ["channel", "tank", "overset"])
def test_cells_have_their_bottom_first_looking_inwards(open_sample, name):
    dataset = open_sample(name)
    for part in dataset.parts.volumes:
        for shape, corners in part.cells().items():
            assert (_volumes(part.points(), corners, FACES[shape]) > 0).all(), (part, shape)


def test_the_impeller_turns_and_the_tank_stands(open_sample):
    tank = open_sample("tank")
    blade, wall = tank.parts["blade_1"], tank.parts["tank_wall"]
    at_first = blade.points(step=0).astype(float)
    for step in tank.steps:
        angle = formulas.tank.angle(step.time)
        turn = np.array([[np.cos(angle), -np.sin(angle), 0], [np.sin(angle), np.cos(angle), 0], [0, 0, 1]])
        np.testing.assert_allclose(blade.points(step), at_first @ turn.T, atol=1e-7)
        np.testing.assert_array_equal(wall.points(step), wall.points(step=0))


def test_undefined_values_are_nan_and_known_from_the_mask(open_sample):
    channel = open_sample("channel")
    wake = channel.parts["wake"]
    values = wake.values("Temperature")
    assert np.isnan(values).sum() == 150
    masked = wake.values("Temperature", masked=True)
    assert masked.mask.sum() == 150 and masked.mask.shape == values.shape
    np.testing.assert_array_equal(masked.mask, np.isnan(values))
    assert masked.mean() == pytest.approx(np.nanmean(values))
    overset = open_sample("overset")
    vector = overset.parts.match("ALL_ELEMENTS*").select("whole")
    masked = next(iter(vector)).values("Velocity", masked=True)
    assert masked.mask.shape == masked.shape and masked.mask.any() and not masked.mask.all()


def test_variables_of_two_region_sets_are_kept_apart(open_sample):
    background, ring = open_sample("overset").parts.whole
    for _ in range(2):
        assert np.isnan(background.values("Pressure")).any()
        assert not np.isnan(ring.values("Pressure")).any()
        assert background.values("Pressure").size == background.nodes != ring.nodes


def test_statistics_and_bounds(open_sample):
    tank = open_sample("tank")
    blade = tank.parts["blade_1"]
    values = blade.values("Velocity", step=3).astype(float)
    found = blade.statistics("Velocity", step=3)
    for axis, one in enumerate(found[:3]):
        assert one.minimum == values[:, axis].min() and one.maximum == values[:, axis].max()
        assert one.mean == pytest.approx(values[:, axis].mean(), abs=1e-6)
        assert one.numbers == 60 and one.undefined == 0 and one.not_numbers == 0
    assert found.magnitude.maximum == pytest.approx(np.linalg.norm(values, axis=1).max(), rel=1e-6)
    assert set(blade.statistics()) == {"Pressure", "Temperature", "Velocity", "MatOfElements"}
    every = tank.statistics(3, variables=["Velocity"], parts=["blade_*"])
    assert list(every) == ["Velocity"] and len(every["Velocity"]) == 6
    assert every["Velocity"]["blade_1"] == found
    assert open_sample("channel").parts["wake"].statistics("Temperature").undefined == 150
    points = blade.points(step=6)
    np.testing.assert_array_equal(blade.bounds(step=6), [points.min(axis=0), points.max(axis=0)])
    np.testing.assert_allclose(tank.bounds()[:, 2], [0, 0.5], atol=1e-7)
