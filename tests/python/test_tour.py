"""The examples of docs/python.md do what they say, one after the other, beside the files of the tank."""

import re
from importlib.metadata import entry_points
from pathlib import Path

import pytest

import vantrel_fld

PAGE = Path(__file__).parents[2] / "docs" / "python.md"
BLOCKS = re.findall(r"^```python\n(.*?)^```$", PAGE.read_text(encoding="utf-8"), re.DOTALL | re.MULTILINE)
OPTIONAL = ("meshio", "pyvista", "vtkmodules")


def test_the_page_has_examples():
    assert len(BLOCKS) == 5 and all("tank" in block for block in BLOCKS)


@pytest.mark.parametrize("block", BLOCKS, ids=lambda block: block.split("\n")[0])
def test_an_example_works(block, tank_copy, monkeypatch):
    monkeypatch.chdir(tank_copy)
    with vantrel_fld.open("tank_0.fld") as tank:
        if "vtkHDFReader" in block:
            version = pytest.importorskip("vtkmodules.vtkCommonCore").vtkVersion()
            if (version.GetVTKMajorVersion(), version.GetVTKMinorVersion()) < (9, 4):
                pytest.skip("this VTK reads no collections")
            try:
                tank.save("tank.vtkhdf")
            except NotImplementedError:
                pytest.skip("built without HDF5")
        known = {"vantrel_fld": vantrel_fld, "tank": tank, "blade": tank.parts["blade_1"]}
        if "pyvista.read" in block:
            known["pyvista"] = pytest.importorskip("pyvista")
            if not any(point.name == ".fld" for point in entry_points(group="pyvista.readers")):
                pytest.skip("the package is not installed, so pyvista does not know of it")
        try:
            exec(compile(block, PAGE.name, "exec"), known)
        except ModuleNotFoundError as error:
            if error.name.split(".")[0] not in OPTIONAL:
                raise
            pytest.skip(f"there is no {error.name}")
