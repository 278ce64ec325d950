"""Points and cells of parts: shared between steps in which nothing moves, and as VTK has them."""

from __future__ import annotations

import weakref
from typing import TYPE_CHECKING

import numpy as np

if TYPE_CHECKING:
    from ._dataset import Dataset
    from ._parts import PartInfo

_VTK_TYPES = {"tri": 5, "quad": 9, "tet": 10, "pyramid": 14, "prism": 13, "hex": 12}
_TURNED_PRISM = [0, 2, 1, 3, 5, 4]


class SharedMeshes:
    """Hands out the same arrays for all steps that have the same mesh, as long as somebody holds them."""

    def __init__(self, dataset: Dataset) -> None:
        self._dataset = dataset
        self._points: dict[tuple[str, str, int], tuple[int, weakref.ref[np.ndarray]]] = {}
        self._cells: dict[tuple[str, str, int], tuple[int, dict[str, weakref.ref[np.ndarray]]]] = {}

    def points(self, index: int, info: PartInfo) -> np.ndarray:
        geometry = self._dataset._geometry_steps[index]
        of, held = self._points.get(info.identity, (None, None))
        old = held() if held is not None else None
        if old is not None and of == geometry:
            return old
        new = self._dataset._core.points(index, info.number)
        if old is not None and _is_same(old, new):
            new = old
        new.flags.writeable = False
        self._points[info.identity] = (geometry, weakref.ref(new))
        return new

    def cells(self, index: int, info: PartInfo) -> dict[str, np.ndarray]:
        geometry = self._dataset._geometry_steps[index]
        of, held = self._cells.get(info.identity, (None, {}))
        old = {shape: array for shape, array in ((s, ref()) for s, ref in held.items()) if array is not None}
        if old and len(old) == len(held) and of == geometry:
            return old
        new = self._dataset._core.cells(index, info.number)
        for shape, array in new.items():
            if shape in old and _is_same(old[shape], array):
                new[shape] = old[shape]
            new[shape].flags.writeable = False
        self._cells[info.identity] = (geometry, {shape: weakref.ref(array) for shape, array in new.items()})
        return new


def _is_same(a: np.ndarray, b: np.ndarray) -> bool:
    """Whether both hold the same bytes."""
    if a.shape != b.shape:
        return False
    return a.size == 0 or memoryview(a).cast("B") == memoryview(b).cast("B")


def vtk_cells(
    cells: dict[str, np.ndarray], turns_prisms: bool
) -> tuple[np.ndarray, np.ndarray, np.ndarray]:
    """All cells as VTK has them: offsets and connectivity (of one integer type) and cell types (uint8).

    With `turns_prisms` the triangles of prisms go the other way round.
    """
    blocks = [
        (corners[:, _TURNED_PRISM] if shape == "prism" and turns_prisms else corners).ravel()
        for shape, corners in cells.items()
    ]
    ends = np.cumsum([0, *map(len, blocks)])
    id_type = np.int32 if ends[-1] <= np.iinfo(np.int32).max else np.int64
    starts = [
        np.arange(first, end + 1, corners.shape[1], dtype=id_type)  # and the end, where the next block starts
        for first, end, corners in zip(ends, ends[1:], cells.values())
    ]
    types = [np.full(len(corners), _VTK_TYPES[shape], np.uint8) for shape, corners in cells.items()]
    if len(blocks) == 1:
        return starts[0], blocks[0].astype(id_type, copy=False), types[0]
    return (
        np.concatenate([*(block[:-1] for block in starts), ends[-1:]], dtype=id_type),
        np.concatenate([np.empty(0, id_type), *blocks], dtype=id_type),
        np.concatenate([np.empty(0, np.uint8), *types]),
    )
