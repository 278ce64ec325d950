"""Datasets as VTKHDF files: what Dataset.save writes, and what VTK reads of them where it is new enough."""

import os
import subprocess
import sys

import numpy as np
import pytest

import vantrel_fld
from vantrel_fld import _core
from vantrel_fld._mesh import vtk_cells

needs_hdf5 = pytest.mark.skipif(not hasattr(_core, "SeriesFile"), reason="built without HDF5")
SAMPLES = ["channel", "tank", "overset", "sector"]


def _convert(source, target, *options):
    """Writes a VTKHDF file with fldtool."""
    command = [os.environ.get("FLDTOOL", "fldtool"), "convert", source, target, *options]
    done = subprocess.run(command, capture_output=True, text=True)
    if "built without HDF5" in done.stderr or "convert: no such command" in done.stderr:
        pytest.skip("fldtool writes no such files")
    assert done.returncode == 0, done.stderr


def _vtk_blocks(path):
    """Gives the times that VTK finds in a file, and a function that gives the grids of a step by name."""
    reader_module = pytest.importorskip("vtkmodules.vtkIOHDF")
    from vtkmodules.vtkCommonCore import vtkVersion
    from vtkmodules.vtkCommonExecutionModel import vtkStreamingDemandDrivenPipeline

    if (vtkVersion.GetVTKMajorVersion(), vtkVersion.GetVTKMinorVersion()) < (9, 4):
        pytest.skip("this VTK reads no collections")
    pyvista = pytest.importorskip("pyvista")
    reader = reader_module.vtkHDFReader()
    reader.SetFileName(str(path))
    reader.UpdateInformation()

    def blocks(step):
        reader.SetStep(step)
        reader.Update()
        output = reader.GetOutputDataObject(0)
        return {
            output.GetMetaData(i).Get(output.NAME()): pyvista.wrap(output.GetPartition(i, 0))
            for i in range(output.GetNumberOfPartitionedDataSets())
        }

    return reader.GetOutputInformation(0).Get(vtkStreamingDemandDrivenPipeline.TIME_STEPS()), blocks


@pytest.mark.parametrize("options", [(), ("--compress", "zlib"), ("--precision", "double")], ids=str)
@pytest.mark.parametrize("name", SAMPLES)
def test_vtk_finds_what_the_arrays_say(open_sample, sample_path, tmp_path, name, options):
    path = tmp_path / "out.vtkhdf"
    _convert(sample_path(name), path, "--parts", "all", *options)
    times, blocks_at = _vtk_blocks(path)
    dataset = open_sample(name)
    if len(dataset.steps) > 1:
        np.testing.assert_array_equal(times, dataset.times)
    for step in dataset.steps:
        blocks = blocks_at(step.index)
        assert sorted(blocks) == sorted(step.parts.names)
        for part in step.parts:
            grid = blocks[part.name]
            np.testing.assert_array_equal(grid.points, part.points())
            # Files have the corners of prisms as VTK up to 9.6 has them.
            offsets, corners, types = vtk_cells(part.cells(), turns_prisms=True)
            np.testing.assert_array_equal(grid.cell_offsets, offsets)
            np.testing.assert_array_equal(grid.cell_connectivity, corners)
            np.testing.assert_array_equal(grid.celltypes, types)
            for variable in dataset.variables:
                data = grid.point_data if variable.location == "node" else grid.cell_data
                np.testing.assert_array_equal(data[variable.name], part.values(variable))


def test_vtk_finds_the_hierarchy(sample_path, tmp_path):
    _convert(sample_path("tank"), tmp_path / "out.vtkhdf", "--steps", "0,3")
    times, _ = _vtk_blocks(tmp_path / "out.vtkhdf")
    assert times == (0, 0.075)
    from vtkmodules.vtkIOHDF import vtkHDFReader

    reader = vtkHDFReader()
    reader.SetFileName(str(tmp_path / "out.vtkhdf"))
    reader.Update()
    output = reader.GetOutputDataObject(0)
    tree = output.GetDataAssembly()

    def names_below(path):
        indices = tree.GetDataSetIndices(tree.GetFirstNodeByPath(path))
        return [output.GetMetaData(i).Get(output.NAME()) for i in indices]

    assert names_below("/assembly/Volumes") == ["impeller_zone", "tank_zone"]
    assert names_below("/assembly/Surfaces/Grouping_Regions") == ["&VFG_impeller"]
    assert "blade_1" in names_below("/assembly/Surfaces")


@needs_hdf5
@pytest.mark.parametrize("name", SAMPLES)
def test_a_file_is_that_of_fldtool(open_sample, sample_path, tmp_path, name):
    ours, theirs = tmp_path / "ours.vtkhdf", tmp_path / "theirs.vtkhdf"
    open_sample(name).save(ours)
    _convert(sample_path(name), theirs)
    assert ours.read_bytes() == theirs.read_bytes()


@needs_hdf5
def test_steps_parts_and_variables_are_chosen(open_sample, sample_path, tmp_path):
    tank = open_sample("tank")
    ours, theirs = tmp_path / "ours.vtkhdf", tmp_path / "theirs.vtkhdf"
    tank.save(ours, steps=[2, tank.steps[-1]], parts=["blade_*"], variables="Pressure", compress=True)
    choice = ["--steps", "2,last", "--parts", "blade_*", "--variables", "Pressure", "--compress", "zlib"]
    _convert(sample_path("tank"), theirs, *choice)
    assert ours.read_bytes() == theirs.read_bytes()
    tank.save(ours, steps=tank.steps[:1], parts=[tank.parts["hub"]], precision="double")
    _convert(sample_path("tank"), theirs, "--steps", "0", "--parts", "hub", "--precision", "double")
    assert ours.read_bytes() == theirs.read_bytes()


@needs_hdf5
def test_what_cannot_be_saved(open_sample, tmp_path):
    tank = open_sample("tank")
    with pytest.raises(FileNotFoundError) as caught:
        tank.save(tmp_path / "none" / "out.vtkhdf")
    assert caught.value.filename == str(tmp_path / "none" / "out.vtkhdf")
    with pytest.raises(ValueError, match="precision"):
        tank.save(tmp_path / "out.vtkhdf", precision="half")
    with pytest.raises(ValueError, match="no step"):
        tank.save(tmp_path / "out.vtkhdf", steps=[])
    with pytest.raises(KeyError, match="nearest"):
        tank.save(tmp_path / "out.vtkhdf", parts=["blade_9"])
    with pytest.raises(KeyError, match="nearest"):
        tank.save(tmp_path / "out.vtkhdf", variables=["Presure"])
    assert list(tmp_path.iterdir()) == []


@needs_hdf5
def test_a_step_that_cannot_be_read_leaves_the_steps_before(tank_copy, sample_path, tmp_path):
    cut = tank_copy / "tank_40.fld"
    with vantrel_fld.open(tank_copy / "tank_0.fld") as tank:
        cut.write_bytes(cut.read_bytes()[:20000])
        with pytest.raises(vantrel_fld.Error, match="tank_40.fld, step 4: "):
            tank.save(tmp_path / "out.vtkhdf", parts=["hub"])
    times, blocks_at = _vtk_blocks(tmp_path / "out.vtkhdf")
    assert len(times) == 4
    with vantrel_fld.open(sample_path("tank")) as tank:
        hub = tank.parts["hub"]
        np.testing.assert_array_equal(blocks_at(3)["hub"]["Pressure"], hub.values("Pressure", step=3))


@needs_hdf5
def test_a_full_file_is_an_error_after_which_others_are_saved(sample_path, tmp_path):
    script = """
import resource, signal, sys, vantrel_fld
signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
tank = vantrel_fld.open(sys.argv[1])
resource.setrlimit(resource.RLIMIT_FSIZE, (100000, resource.RLIM_INFINITY))
try:
    tank.save(sys.argv[2])
except OSError as error:
    print(error.strerror, error.filename == sys.argv[2])
resource.setrlimit(resource.RLIMIT_FSIZE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
tank.save(sys.argv[2], steps=[0], parts=["hub"])
"""
    command = [sys.executable, "-c", script, sample_path("tank"), tmp_path / "out.vtkhdf"]
    done = subprocess.run(command, capture_output=True, text=True)
    assert (done.returncode, done.stdout, done.stderr) == (0, "File too large True\n", "")
    assert [path.name for path in tmp_path.iterdir()] == ["out.vtkhdf"]


@needs_hdf5
def test_a_closed_dataset_saves_nothing(sample_path, tmp_path):
    tank = vantrel_fld.open(sample_path("tank"))
    tank.close()
    with pytest.raises(vantrel_fld.Error, match="closed"):
        tank.save(tmp_path / "out.vtkhdf")
    assert list(tmp_path.iterdir()) == []


def test_a_package_without_hdf5_says_so(open_sample, tmp_path, monkeypatch):
    monkeypatch.delattr(_core, "SeriesFile", raising=False)
    with pytest.raises(NotImplementedError, match="fldtool convert"):
        open_sample("tank").save(tmp_path / "out.vtkhdf")
