"""The parts of a dataset, with their meshes and values."""

from __future__ import annotations

import fnmatch
import operator
from collections.abc import Callable, Iterable, Iterator
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np

from ._errors import Error, MissingValuesError
from ._names import unknown
from ._variables import Statistics, Variable, VectorStatistics

if TYPE_CHECKING:
    import meshio
    import pyvista

    from ._dataset import Dataset
    from ._steps import Step

_KINDS = {"surfaces": "surface", "volumes": "volume", "whole": "whole"}
_AXES = {"x": 0, "y": 1, "z": 2}


class PartInfo(NamedTuple):
    """A part as it is at a step. Numbers may be others at other steps."""

    number: int
    file_name: str
    name: str
    kind: str
    region_set: int | None
    nodes: int
    elements: dict[str, int]
    occurrence: int

    @property
    def identity(self) -> tuple[str, str, int]:
        """What the part is known by at every step."""
        return (self.kind, self.file_name, self.occurrence)


class Part:
    """A part of a dataset: a surface, a volume, or the whole mesh of a region set.

    Attributes
    ----------
    name : str
        A name that no other part has: where several have the same in the file, their numbers follow
        ("wall (3)", "wall (7)").
    number : int
        The reader's number, from 1.
    kind : str
        "surface", "volume" or "whole".
    region_set : int or None
        The region set, from 0; None where the reader does not tell it.
    nodes : int
        The number of its nodes.
    elements : dict
        The number of its elements by shape: "tri", "quad", "tet", "pyramid", "prism", "hex".

    These are what they are at the step that the part was taken from: the first one for `Dataset.parts`.
    Methods take ``step`` (a number from 0, negative from the end, or a Step); without it they are about that
    same step. They raise `Error` when the reader fails or the step does not have the part.
    """

    def __init__(self, dataset: Dataset, info: PartInfo, step: int) -> None:
        self._dataset = dataset
        self._info = info
        self._step = step
        self.name = info.name
        self.number = info.number
        self.kind = info.kind
        self.region_set = info.region_set
        self.nodes = info.nodes
        self.elements = dict(info.elements)

    @property
    def group(self) -> str | None:
        """The reader's group that the part is in, if any."""
        for group, parts in self._dataset.groups.items():
            if self in parts:
                return group
        return None

    def is_in(self, step: int | Step) -> bool:
        """Whether the step has the part."""
        return self._dataset._find_part(self._info, self._dataset._step_index(step)) is not None

    def _place(self, step: int | Step | None) -> tuple[int, PartInfo]:
        if step is None:
            return self._step, self._info
        index = self._dataset._step_index(step)
        if index == self._step:
            return index, self._info
        info = self._dataset._find_part(self._info, index)
        if info is None:
            raise Error(f"the step has no part {self.name!r}", self._dataset._file_of(index), index)
        return index, info

    def points(self, step: int | Step | None = None) -> np.ndarray:
        """The coordinates of the nodes: (n, 3) float32, in the file's unit of length (m, usually).

        The array cannot be written to, because it is the same object for all steps in which nothing moves,
        as long as somebody holds it; ``copy()`` gives one of your own.
        """
        index, info = self._place(step)
        return self._dataset._meshes.points(index, info)

    def cells(self, step: int | Step | None = None) -> dict[str, np.ndarray]:
        """The elements by shape: for each an (m, k) int32 array of the rows of `points` at its corners.

        Shapes: "tri" (k = 3), "quad" (4), "tet" (4), "pyramid" (5), "prism" (6), "hex" (8), in this order
        and only those that the part has. The corners of a cell are those of its bottom, whose normal looks
        into the cell, then those of the top in the same order; a pyramid has the tip last. The arrays cannot
        be written to, like those of `points`.
        """
        index, info = self._place(step)
        return self._dataset._meshes.cells(index, info)

    def values(
        self,
        variable: str | int | Variable,
        step: int | Step | None = None,
        *,
        component: int | str | None = None,
        masked: bool = False,
    ) -> np.ndarray:
        """The values of a variable: float32, (n,) for a scalar, (n, 3) for a vector, in the variable's unit.

        A value per node, in the order of `points`, or per element, in the order of the arrays of `cells`
        (`Variable.location` says which). NaN where a value is undefined.

        Parameters
        ----------
        variable
            Name, number from 1, or Variable.
        component
            Of a vector: 0, 1, 2 or "x", "y", "z"; the result is (n,) then.
        masked
            Give a numpy.ma.MaskedArray, whose mask tells undefined values from NaN in the file.

        Raises
        ------
        KeyError
            There is no such variable.
        MissingValuesError
            The step's file lacks the variable.
        Error
            The values cannot be read.
        """
        asked = self._dataset.variables[variable]
        index, info = self._place(step)
        axis = _component_number(component, asked)
        made = self._dataset._core.values(index, info.number, asked.number, axis, masked)
        if made is None:
            raise self._missing(asked, index)
        if masked:
            return np.ma.MaskedArray(made[0], mask=made[1])
        return made

    def _missing(self, variable: Variable, index: int) -> MissingValuesError:
        return MissingValuesError(
            f"the step has no values of {variable.name!r}", self._dataset._file_of(index), index
        )

    def statistics(
        self, variable: str | int | Variable | None = None, step: int | Step | None = None
    ) -> Any:
        """Range, mean and counts of a variable's values.

        Returns `Statistics` for a scalar, `VectorStatistics` for a vector, and without a variable a dict of
        these by the names of all variables that the step has.
        """
        index, info = self._place(step)
        if variable is not None:
            asked = self._dataset.variables[variable]
            found = self._statistics(asked, index, info)
            if found is None:
                raise self._missing(asked, index)
            return found
        every = {one.name: self._statistics(one, index, info) for one in self._dataset.variables}
        return {name: found for name, found in every.items() if found is not None}

    def _statistics(
        self, variable: Variable, index: int, info: PartInfo
    ) -> Statistics | VectorStatistics | None:
        rows = self._dataset._core.statistics(index, info.number, variable.number)
        if rows is None:
            return None
        made = [Statistics(*row) for row in rows]
        return made[0] if len(made) == 1 else VectorStatistics(*made)

    def bounds(self, step: int | Step | None = None) -> np.ndarray | None:
        """The box around the nodes: (2, 3) float32, lowest and highest corner; None without nodes."""
        index, info = self._place(step)
        return self._dataset._core.bounds(index, info.number)

    def to_pyvista(
        self,
        step: int | Step | None = None,
        *,
        variables: Iterable[str | int | Variable] | None = None,
    ) -> pyvista.UnstructuredGrid:
        """The part as a pyvista UnstructuredGrid with the variables (all without a choice)."""
        from ._pyvista import part_grid

        index, info = self._place(step)
        return part_grid(self._dataset, index, info, self._dataset._chosen_variables(variables))

    def to_meshio(
        self,
        step: int | Step | None = None,
        *,
        variables: Iterable[str | int | Variable] | None = None,
    ) -> meshio.Mesh:
        """The part as a meshio Mesh with the variables (all without a choice)."""
        index, info = self._place(step)
        return self._dataset._to_meshio(index, [info], variables)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Part):
            return NotImplemented
        return self._dataset is other._dataset and self._info.identity == other._info.identity

    def __hash__(self) -> int:
        return hash((id(self._dataset), self._info.identity))

    def __repr__(self) -> str:
        elements = ", ".join(f"{count} {shape}" for shape, count in self.elements.items())
        what = f"{self.nodes} nodes, {elements or 'no elements'}"
        return f"Part({self.name!r}, number={self.number}, {self.kind}, {what})"


def _component_number(component: int | str | None, variable: Variable) -> int | None:
    if component is None:
        return None
    if variable.kind != "vector":
        raise ValueError(f"{variable.name!r} is a scalar: it has no components")
    number = _AXES.get(component, -1) if isinstance(component, str) else operator.index(component)
    if not 0 <= number < 3:
        raise ValueError(f"a component is 0, 1, 2 or 'x', 'y', 'z', not {component!r}")
    return number


class Parts:
    """Parts of a dataset, by name or number: ``parts["blade_1"]``, ``parts[3]`` (the reader's, from 1)."""

    def __init__(self, parts: Iterable[Part]) -> None:
        self._parts = list(parts)
        self._by_name = {part.name: part for part in self._parts}
        self._by_number = {part.number: part for part in self._parts}
        self._by_identity = {part._info.identity: part for part in self._parts}

    @property
    def names(self) -> list[str]:
        """The names, in the reader's order."""
        return list(self._by_name)

    @property
    def surfaces(self) -> Parts:
        """The surfaces among them."""
        return self._where(lambda part: part.kind == "surface")

    @property
    def volumes(self) -> Parts:
        """The volumes among them."""
        return self._where(lambda part: part.kind == "volume")

    @property
    def whole(self) -> Parts:
        """The whole meshes among them, one for each region set."""
        return self._where(lambda part: part.kind == "whole")

    def match(self, pattern: str) -> Parts:
        """Those whose name matches a pattern of the shell (``*``, ``?``, ``[abc]``); maybe none."""
        return self._where(lambda part: fnmatch.fnmatchcase(part.name, pattern))

    def select(self, *choices: str | int | Part) -> Parts:
        """Those that are named, in the reader's order.

        A choice is a name, a number, a Part, a pattern, or "surfaces", "volumes" or "whole". KeyError for a
        choice that no part fits.
        """
        chosen: set[int] = set()
        for choice in choices:
            chosen.update(part.number for part in self._chosen(choice))
        return self._where(lambda part: part.number in chosen)

    def _chosen(self, choice: str | int | Part) -> Iterable[Part]:
        if not isinstance(choice, str) or choice in self._by_name:
            return [self[choice]]
        if choice in _KINDS:
            return self._where(lambda part: part.kind == _KINDS[choice])
        found = self.match(choice)
        if not found:
            raise unknown("part", choice, self._by_name)
        return found

    def _where(self, fits: Callable[[Part], bool]) -> Parts:
        return Parts(part for part in self._parts if fits(part))

    def __getitem__(self, key: str | int | Part) -> Part:
        if isinstance(key, Part):
            found = self._by_identity.get(key._info.identity)
            if found != key:
                found = None
        elif isinstance(key, str):
            found = self._by_name.get(key)
        else:
            found = self._by_number.get(operator.index(key))
        if found is None:
            raise unknown("part", key.name if isinstance(key, Part) else key, self._by_name)
        return found

    def __contains__(self, key: object) -> bool:
        if isinstance(key, Part):
            return self._by_identity.get(key._info.identity) == key
        return key in self._by_name or key in self._by_number

    def __iter__(self) -> Iterator[Part]:
        return iter(self._parts)

    def __len__(self) -> int:
        return len(self._parts)

    def __repr__(self) -> str:
        return f"Parts({self.names!r})"
