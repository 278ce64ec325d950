"""Parts as one meshio mesh."""

from __future__ import annotations

from typing import TYPE_CHECKING

import meshio
import numpy as np

if TYPE_CHECKING:
    from collections.abc import Sequence

    from ._dataset import Dataset
    from ._parts import PartInfo
    from ._variables import Variable

_TYPES = {
    "tri": "triangle",
    "quad": "quad",
    "tet": "tetra",
    "pyramid": "pyramid",
    "prism": "wedge",
    "hex": "hexahedron",
}


def mesh_of(
    dataset: Dataset, index: int, infos: Sequence[PartInfo], variables: Sequence[Variable]
) -> meshio.Mesh:
    """The parts one behind the other, each a cell set of its own where there are several."""
    core = dataset._core
    first = 0
    points = []
    cells = []
    owners = []
    for info in infos:
        points.append(core.points(index, info.number))
        for shape, corners in core.cells(index, info.number).items():
            corners += np.int32(first)
            cells.append((_TYPES[shape], corners))
            owners.append(info.name)
        first += info.nodes
    sets = {
        info.name: [
            np.arange(len(corners) if owner == info.name else 0)
            for (_, corners), owner in zip(cells, owners)
        ]
        for info in infos
    }
    mesh = meshio.Mesh(
        np.concatenate(points) if points else np.empty((0, 3), np.float32),
        cells,
        cell_sets=sets if len(infos) > 1 else {},
    )
    for variable in variables:
        _add_values(mesh, dataset, index, infos, variable)
    mesh.field_data["TimeValue"] = np.array([dataset._times[index]])
    return mesh


def _add_values(
    mesh: meshio.Mesh, dataset: Dataset, index: int, infos: Sequence[PartInfo], variable: Variable
) -> None:
    """Adds a variable's values, unless no part has any."""
    given = [dataset._core.values(index, info.number, variable.number, None, False) for info in infos]
    if all(values is None for values in given):
        return
    tail = (3,) if variable.kind == "vector" else ()
    is_nodal = variable.location == "node"
    counts = [info.nodes if is_nodal else sum(info.elements.values()) for info in infos]
    every = np.concatenate(
        [
            np.full((count, *tail), np.nan, np.float32) if values is None else values
            for values, count in zip(given, counts)
        ]
    )
    if is_nodal:
        mesh.point_data[variable.name] = every
    else:
        sizes = [len(block.data) for block in mesh.cells]
        mesh.cell_data[variable.name] = np.split(every, np.cumsum(sizes)[:-1])
