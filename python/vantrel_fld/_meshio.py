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
    points = [core.points(index, info.number) for info in infos]
    cells = []
    owners = []
    elements = []  # of each part
    first = 0
    for info, xyz in zip(infos, points):
        by_shape = core.cells(index, info.number)
        elements.append(sum(map(len, by_shape.values())))
        for shape, corners in by_shape.items():
            corners += np.int32(first)
            cells.append((_TYPES[shape], corners))
            owners.append(info.name)
        first += len(xyz)
    sets = {
        info.name: [
            np.arange(len(corners) if owner == info.name else 0)
            for (_, corners), owner in zip(cells, owners)
        ]
        for info in infos
    }
    mesh = meshio.Mesh(
        np.concatenate([np.empty((0, 3), np.float32), *points]),
        cells,
        cell_sets=sets if len(infos) > 1 else {},
    )
    for variable in variables:
        given = [core.values(index, info.number, variable.number, None, False) for info in infos]
        if all(values is None for values in given):
            continue
        if variable.location == "node":
            mesh.point_data[variable.name] = _joined(given, [len(xyz) for xyz in points], variable)
        elif cells:
            ends = np.cumsum([len(corners) for _, corners in cells])
            mesh.cell_data[variable.name] = np.split(_joined(given, elements, variable), ends[:-1])
    mesh.field_data["TimeValue"] = np.array([dataset._times[index]])
    return mesh


def _joined(given: Sequence[np.ndarray | None], counts: Sequence[int], variable: Variable) -> np.ndarray:
    """The values of all parts, with as many NaN as a part counts where it has none."""
    tail = (3,) if variable.kind == "vector" else ()
    return np.concatenate(
        [
            np.full((count, *tail), np.nan, np.float32) if values is None else values
            for values, count in zip(given, counts)
        ]
    )
