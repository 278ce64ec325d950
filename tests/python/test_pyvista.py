"""Meshes of pyvista; only where it is installed."""

import numpy as np
import pytest

pyvista = pytest.importorskip("pyvista")

import vantrel_fld  # noqa: E402


def _grids(blocks):
    for block in blocks:
        if isinstance(block, pyvista.MultiBlock):
            yield from _grids(block)
        else:
            yield block


@pytest.mark.parametrize("name", ["channel", "tank", "overset", "sector"])
def test_grids_hold_what_the_arrays_say(open_sample, name):
    dataset = open_sample(name)
    for part in dataset.steps[-1].parts:
        grid = part.to_pyvista()
        np.testing.assert_array_equal(grid.points, part.points())
        cells = part.cells()
        types = {"tri": 5, "quad": 9, "tet": 10, "pyramid": 14, "prism": 13, "hex": 12}
        assert grid.celltypes.tolist() == [types[s] for s, c in cells.items() for _ in range(len(c))]
        corners = [frozenset(row) for array in cells.values() for row in array.tolist()]
        offsets = np.cumsum([array.shape[1] for array in cells.values() for _ in array])
        made = np.split(grid.cell_connectivity, offsets[:-1])
        assert [frozenset(row) for row in made] == corners
        for variable in dataset.variables:
            data = grid.point_data if variable.location == "node" else grid.cell_data
            np.testing.assert_array_equal(data[variable.name], part.values(variable))
        if part.kind != "surface" and not (name == "sector" and part.kind == "whole"):
            assert (grid.compute_cell_sizes()["Volume"] > 0).all()


def test_the_hierarchy_of_a_step(open_sample):
    mesh = open_sample("tank").to_pyvista(step=3)
    assert mesh.keys() == ["Surfaces", "Volumes"]
    assert mesh["Volumes"].keys() == ["impeller_zone", "tank_zone"]
    assert mesh["Surfaces"]["Grouping_Regions"].keys() == ["&VFG_impeller"]
    assert mesh["Surfaces"]["blade_1"].field_data["TimeValue"][0] == 0.075
    assert mesh.field_data["TimeValue"][0] == 0.075
    mesh = open_sample("tank").to_pyvista(parts=["whole", "hub"], variables=["Pressure"])
    assert mesh.keys() == ["Surfaces", "Whole mesh"]
    assert mesh["Surfaces"]["hub"].array_names == ["Pressure", "TimeValue"]


def test_a_grid_may_be_changed_in_place(open_sample):
    hub = open_sample("tank").parts["hub"]
    before = hub.points().copy()
    held = hub.points()
    grid = hub.to_pyvista()
    grid.points += 1
    np.testing.assert_array_equal(hub.points(), before)
    np.testing.assert_array_equal(held, before)


def test_undefined_values_are_nan(open_sample):
    grid = open_sample("channel").parts["wake"].to_pyvista()
    assert np.isnan(grid["Temperature"]).sum() == 150


def test_grids_outlive_the_dataset(sample_path):
    with vantrel_fld.open(sample_path("tank")) as tank:
        grid = tank.parts["hub"].to_pyvista()
        points = tank.parts["hub"].points().copy()
    np.testing.assert_array_equal(grid.points, points)


@pytest.fixture
def reader(sample_path):
    from vantrel_fld.pyvista_reader import FLDReader

    return FLDReader(sample_path("tank"))


def test_the_reader_chooses_parts_variables_and_step(reader):
    assert reader.time_values == [0, 0.025, 0.05, 0.075, 0.1, 0.125, 0.15, 0.175]
    assert reader.cell_array_names == ["MatOfElements"]
    assert reader.point_array_names == ["Pressure", "Temperature", "Velocity"]
    assert reader.part_status("hub") and not reader.part_status("ALL_ELEMENTS")
    reader.disable_all_parts()
    reader.enable_part("blade_1")
    reader.disable_point_array("Temperature")
    reader.set_active_time_point(3)
    assert reader.active_time_value == 0.075
    mesh = reader.read()
    assert mesh.keys() == ["Surfaces"] and mesh[0].keys() == ["blade_1"]
    blade = mesh[0]["blade_1"]
    assert set(blade.point_data.keys()) == {"Pressure", "Velocity"}
    np.testing.assert_array_equal(blade["Pressure"], reader.dataset.parts["blade_1"].values("Pressure", step=3))
    reader.set_active_time_value(0.175)
    reader.enable_all_parts()
    assert reader.read().keys() == ["Surfaces", "Volumes", "Whole mesh"]
    with pytest.raises(KeyError, match="the nearest are: blade_1"):
        reader.enable_part("blade_11")
    with pytest.raises(ValueError):
        reader.set_active_time_value(0.08)
    with pytest.raises(IndexError):
        reader.set_active_time_point(8)


def test_pyvista_read_finds_the_reader(sample_path):
    from importlib.metadata import entry_points

    if not any(point.name == ".fld" for point in entry_points(group="pyvista.readers")):
        pytest.skip("the package is not installed, so pyvista does not know of it")
    mesh = pyvista.read(sample_path("tank"))
    assert mesh.keys() == ["Surfaces", "Volumes"]
    reader = pyvista.get_reader(sample_path("tank"))
    reader.set_active_time_point(3)
    assert reader.read().field_data["TimeValue"][0] == 0.075
