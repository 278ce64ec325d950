"""Meshes of meshio; only where it is installed."""

import numpy as np
import pytest

meshio = pytest.importorskip("meshio")


def test_a_part(open_sample):
    part = open_sample("channel").parts["around_obstacle"]
    mesh = part.to_meshio()
    np.testing.assert_array_equal(mesh.points, part.points())
    assert [block.type for block in mesh.cells] == ["tetra", "pyramid", "hexahedron"]
    for block, corners in zip(mesh.cells, part.cells().values()):
        np.testing.assert_array_equal(block.data, corners)
    np.testing.assert_array_equal(mesh.point_data["Velocity"], part.values("Velocity"))
    np.testing.assert_array_equal(np.concatenate(mesh.cell_data["MatOfElements"]), part.values("MatOfElements"))


def test_parts_one_behind_the_other(open_sample, tmp_path):
    tank = open_sample("tank")
    mesh = tank.to_meshio(step=3, parts=["hub", "volumes"], variables=["Pressure", "MatOfElements"])
    parts = [tank.parts[name] for name in ("hub", "impeller_zone", "tank_zone")]
    np.testing.assert_array_equal(mesh.points, np.concatenate([part.points(step=3) for part in parts]))
    np.testing.assert_array_equal(
        mesh.point_data["Pressure"], np.concatenate([part.values("Pressure", step=3) for part in parts])
    )
    assert list(mesh.cell_sets) == ["hub", "impeller_zone", "tank_zone"]
    prisms = mesh.cells[4]
    assert prisms.type == "wedge"
    expected = parts[2].cells()["prism"] + parts[0].nodes + parts[1].nodes
    np.testing.assert_array_equal(prisms.data, expected)
    mesh.write(tmp_path / "tank.vtu")
    again = meshio.read(tmp_path / "tank.vtu")
    np.testing.assert_array_equal(again.points, mesh.points)
