"""Parts and steps as pyvista meshes."""

from __future__ import annotations

from typing import TYPE_CHECKING

import pyvista
from vtkmodules.vtkCommonCore import vtkPoints
from vtkmodules.vtkCommonDataModel import vtkCellArray, vtkWedge

from ._mesh import vtk_cells

if TYPE_CHECKING:
    from collections.abc import Sequence

    from ._dataset import Dataset
    from ._parts import PartInfo
    from ._variables import Variable


def _turns_prisms() -> bool:
    """Whether this VTK wants a prism's first triangle to look outwards, as older versions do.

    The reader's looks inwards. A version shows what it wants by the faces that it makes, which look outwards.
    """
    prism = vtkWedge()
    for corner in range(6):
        prism.GetPointIds().SetId(corner, corner)
    return prism.GetFace(0).GetPointIds().GetId(1) == 1


_TURNS_PRISMS = _turns_prisms()


def part_grid(
    dataset: Dataset, index: int, info: PartInfo, variables: Sequence[Variable]
) -> pyvista.UnstructuredGrid:
    """A part with its values. The arrays are the grid's alone, so that it can be changed in place."""
    core = dataset._core
    grid = pyvista.UnstructuredGrid()
    points = vtkPoints()
    points.SetData(pyvista.convert_array(core.points(index, info.number)))
    grid.SetPoints(points)
    offsets, connectivity, types = vtk_cells(core.cells(index, info.number), _TURNS_PRISMS)
    cells = vtkCellArray()
    cells.SetData(pyvista.convert_array(offsets), pyvista.convert_array(connectivity))
    grid.SetCells(pyvista.convert_array(types), cells)
    for variable in variables:
        values = core.values(index, info.number, variable.number, None, False)
        if values is None:
            continue
        data = grid.point_data if variable.location == "node" else grid.cell_data
        if len(values) > 0:
            data[variable.name] = values
        else:  # pyvista refuses empty vectors
            data.VTKObject.AddArray(pyvista.convert_array(values, variable.name))
    grid.field_data["TimeValue"] = [dataset._times[index]]
    return grid


def multi_block(
    dataset: Dataset, index: int, infos: Sequence[PartInfo], variables: Sequence[Variable]
) -> pyvista.MultiBlock:
    """Parts with their values, in the reader's groups."""
    by_number = {info.number: info for info in infos}

    def blocks(folders: list[tuple[str, list[int], list]]) -> pyvista.MultiBlock:
        made = pyvista.MultiBlock()
        for name, numbers, inner in folders:
            block = blocks(inner)
            for number in numbers:
                info = by_number[number]
                block.append(part_grid(dataset, index, info, variables), info.name)
            made.append(block, name)
        return made

    step = blocks(dataset._core.part_tree(index, list(by_number)))
    step.field_data["TimeValue"] = [dataset._times[index]]
    return step
