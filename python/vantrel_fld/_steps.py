"""The steps of a dataset."""

from __future__ import annotations

import operator
from collections.abc import Iterator, Sequence
from typing import TYPE_CHECKING, Any, overload

if TYPE_CHECKING:
    import numpy as np
    import pyvista

    from ._dataset import Dataset
    from ._parts import Parts


class Step:
    """One step of a dataset.

    Attributes
    ----------
    index : int
        Its place in the series, from 0.
    time : float
        The solution time in the solver's unit (s, usually).
    """

    def __init__(self, dataset: Dataset, index: int, time: float) -> None:
        self._dataset = dataset
        self.index = index
        self.time = time

    @property
    def file(self) -> str | None:
        """The path of the step's file; None when it is not known, which may be so with ``simplify``."""
        files = self._dataset.files
        return files[self.index] if files else None

    @property
    def parts(self) -> Parts:
        """The step's parts. Their methods are about this step unless another one is named."""
        return self._dataset.parts_at(self)

    def to_pyvista(self, **choices: Any) -> pyvista.MultiBlock:
        """The step as a pyvista MultiBlock; see `Dataset.to_pyvista`."""
        return self._dataset.to_pyvista(self, **choices)

    def bounds(self) -> np.ndarray | None:
        """The box around the step's parts; see `Dataset.bounds`."""
        return self._dataset.bounds(self)

    def __index__(self) -> int:
        return self.index

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Step):
            return NotImplemented
        return self._dataset is other._dataset and self.index == other.index

    def __hash__(self) -> int:
        return hash((id(self._dataset), self.index))

    def __repr__(self) -> str:
        return f"Step({self.index}, time={self.time:g})"


class Steps(Sequence[Step]):
    """The steps of a dataset, in the order of its files. Slices are lists of steps."""

    def __init__(self, dataset: Dataset, times: Sequence[float]) -> None:
        self._steps = [Step(dataset, index, time) for index, time in enumerate(times)]

    def __len__(self) -> int:
        return len(self._steps)

    @overload
    def __getitem__(self, index: int) -> Step: ...
    @overload
    def __getitem__(self, index: slice) -> list[Step]: ...
    def __getitem__(self, index: int | slice) -> Step | list[Step]:
        if isinstance(index, slice):
            return self._steps[index]
        return self._steps[self.index_of(index)]

    def __iter__(self) -> Iterator[Step]:
        return iter(self._steps)

    def index_of(self, step: int | Step) -> int:
        """The index of a step, which may be counted from the end. IndexError when there is none."""
        if isinstance(step, bool):
            raise TypeError("a step is a number or a Step, not a bool")
        try:
            asked = operator.index(step)
        except TypeError:
            raise TypeError(
                f"a step is a number or a Step, not {type(step).__name__}; at_time() finds one by its time"
            ) from None
        count = len(self._steps)
        if not -count <= asked < count:
            raise IndexError(f"step {asked} is outside 0 to {count - 1}")
        return asked % count

    def __repr__(self) -> str:
        return f"Steps({self._steps!r})"
