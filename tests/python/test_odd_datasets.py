"""Datasets at the edges: parts without anything, a single node, no parts, other meshes at other steps."""

import shutil

import numpy as np
import pytest

import vantrel_fld
from vantrel_fld import _core

DATASETS = ["empty_parts", "one_node", "no_regions", "empty_regions", "japanese", "other_0"]


@pytest.fixture
def open_odd(odd_folder):
    """Opens one of the odd datasets by its name."""
    opened = []

    def open_it(name):
        opened.append(vantrel_fld.open(odd_folder / f"{name}.fld"))
        return opened[-1]

    yield open_it
    for dataset in opened:
        dataset.close()


def test_an_empty_part_has_empty_arrays(open_odd):
    dataset = open_odd("empty_parts")
    for name in ("no faces", "no elements"):
        part = dataset.parts[name]
        assert part.nodes == 0 and part.elements == {}
        assert part.points().shape == (0, 3) and part.points().dtype == np.float32
        assert part.cells() == {}
        assert part.values("p").shape == (0,)
        assert part.values("v").shape == (0, 3)
        assert part.values("v", component="y").shape == (0,)
        masked = part.values("v", masked=True)
        assert masked.shape == masked.mask.shape == (0, 3)
        assert part.bounds() is None
        assert part.statistics("p") == (None, None, None, 0, 0, 0)
        assert "no elements)" in repr(part)
    np.testing.assert_array_equal(dataset.bounds(), [[0, 0, 0], [1, 1, 1]])
    fluid = dataset.parts["fluid"]
    np.testing.assert_array_equal(fluid.values("v"), [[1, 2, 3], [2, 4, 6], [3, 6, 9], [4, 8, 12]])


def test_a_mesh_of_one_node(open_odd):
    dataset = open_odd("one_node")
    for name in ("point", "cell", "ALL_ELEMENTS"):
        part = dataset.parts[name]
        np.testing.assert_array_equal(part.points(), [[1, 2, 3]])
        np.testing.assert_array_equal(part.values("p"), [7])
        np.testing.assert_array_equal(part.bounds(), [[1, 2, 3], [1, 2, 3]])
    np.testing.assert_array_equal(dataset.parts["point"].cells()["tri"], [[0, 0, 0]])
    np.testing.assert_array_equal(dataset.parts["cell"].cells()["tet"], [[0, 0, 0, 0]])


def test_a_dataset_without_surfaces_and_volumes(open_odd):
    dataset = open_odd("no_regions")
    assert dataset.parts.names == ["ALL_ELEMENTS"]
    np.testing.assert_array_equal(dataset.bounds(), [[0, 0, 0], [1, 1, 1]])
    assert dataset.statistics() == {} and dataset.groups == {}
    assert "ALL_ELEMENTS" in repr(dataset)


def test_a_dataset_whose_surfaces_and_volumes_are_empty(open_odd):
    dataset = open_odd("empty_regions")
    assert dataset.parts.names == ["no faces", "no elements", "ALL_ELEMENTS"]
    np.testing.assert_array_equal(dataset.bounds(), [[0, 0, 0], [1, 1, 1]])


def test_names_in_japanese(open_odd):
    dataset = open_odd("japanese")
    fluid = dataset.parts.match("流*")["流体"]
    pressure = dataset.variables["圧力"]
    assert (pressure.label, pressure.unit) == ("静圧 [Pa]", "Pa")
    np.testing.assert_array_equal(fluid.values("圧力"), [1, 2, 3, 4])
    assert list(dataset.statistics(parts=["流体"])) == ["圧力", "MatOfElements"]
    with pytest.raises(KeyError, match="no part '流'; the nearest are: 流体"):
        dataset.parts["流"]


def test_other_meshes_at_other_steps(open_odd):
    dataset = open_odd("other_0")
    assert [step.parts.volumes.names for step in dataset.steps] == [["fluid"], ["lower", "upper"], ["fluid"]]
    fluid = dataset.parts["fluid"]
    assert fluid.is_in(-1) and not fluid.is_in(1)
    with pytest.raises(vantrel_fld.Error, match="other_1.fld, step 1: the step has no part 'fluid'"):
        fluid.points(step=1)
    lower = dataset.steps[1].parts["lower"]
    assert lower.points().shape == (10, 3) and set(lower.cells()) == {"prism", "hex"}
    whole = dataset.parts["ALL_ELEMENTS"]
    assert [whole.values("p", step=step).tolist() for step in (0, 1, -1)] == [[1, 2, 3, 4], [1.5] * 11, [1, 2, 3, 4]]
    with pytest.raises(vantrel_fld.MissingValuesError, match="step 1: the step has no values of 'v'"):
        whole.values("v", step=1)
    # The mesh of a step is not taken for that of another, whoever holds what.
    held = [whole.points(step=step) for step in range(3)]
    assert [len(points) for points in held] == [4, 11, 4]
    np.testing.assert_array_equal(held[0], held[2])


def test_a_file_that_becomes_another_one_while_the_dataset_is_open(open_odd, odd_folder):
    dataset = open_odd("other_0")
    whole = dataset.parts["ALL_ELEMENTS"]
    first = whole.points()
    kept = first.copy()
    shutil.copy(odd_folder / "other_1.fld", odd_folder / "other_2.fld")
    # Whichever mesh the reader gives, its arrays belong together.
    points, cells = whole.points(step=2), whole.cells(step=2)
    assert all(corners.max() < len(points) for corners in cells.values())
    try:
        assert len(whole.values("p", step=2)) == len(points)
    except vantrel_fld.Error as error:
        assert error.step == 2
    np.testing.assert_array_equal(first, kept)
    np.testing.assert_array_equal(whole.points(step=0), kept)
    (odd_folder / "other_1.fld").unlink()
    with pytest.raises(vantrel_fld.Error, match="step 1: "):
        whole.values("p", step=1)
    np.testing.assert_array_equal(whole.values("p", step=0), [1, 2, 3, 4])


@pytest.mark.skipif(not hasattr(_core, "SeriesFile"), reason="built without HDF5")
@pytest.mark.parametrize("name", DATASETS)
def test_they_can_be_saved(open_odd, odd_folder, name):
    open_odd(name).save(odd_folder / "out.vtkhdf", parts=["*"])
    assert (odd_folder / "out.vtkhdf").stat().st_size > 0


@pytest.mark.parametrize("name", DATASETS)
def test_they_become_meshes_of_other_packages(open_odd, name):
    dataset = open_odd(name)
    wanted = sum(part.nodes for part in dataset.parts)
    pyvista = pytest.importorskip("pyvista")
    blocks = dataset.to_pyvista(parts=["*"])
    grids = list(blocks.recursive_iterator("blocks"))
    assert all(isinstance(grid, pyvista.UnstructuredGrid) for grid in grids)
    assert sum(grid.n_points for grid in grids) == wanted
    names = {variable.name for variable in dataset.variables}
    assert all({*grid.point_data.keys(), *grid.cell_data.keys()} == names for grid in grids)
    pytest.importorskip("meshio")
    mesh = dataset.to_meshio(parts=["*"])
    assert len(mesh.points) == wanted
