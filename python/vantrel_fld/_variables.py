"""The variables of a dataset."""

from __future__ import annotations

import operator
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from typing import NamedTuple

from ._names import unknown


@dataclass(frozen=True)
class Variable:
    """A variable of a dataset.

    Attributes
    ----------
    number : int
        The reader's number, from 1.
    name : str
        Its name; where several have the same, their numbers follow: "f (1)", "f (2)".
    label : str
        What it is called in full, with the unit: "Static pressure [Pa]"; may be empty.
    unit : str
        What the label has in brackets at its end: "Pa"; may be empty.
    kind : str
        "scalar" or "vector".
    location : str
        "node" or "element": what there is a value for.
    """

    number: int
    name: str
    label: str
    unit: str
    kind: str
    location: str

    @property
    def components(self) -> int:
        """3 for a vector, else 1."""
        return 3 if self.kind == "vector" else 1


class Statistics(NamedTuple):
    """Range, mean and counts of values. The first three are None where there is no number."""

    minimum: float | None
    maximum: float | None
    mean: float | None
    numbers: int
    """Values that are numbers."""
    undefined: int
    """Places without a value."""
    not_numbers: int
    """Values that are NaN in the file."""


class VectorStatistics(NamedTuple):
    """Statistics of a vector's components and of its magnitude."""

    x: Statistics
    y: Statistics
    z: Statistics
    magnitude: Statistics


class Variables:
    """The variables of a dataset, by name or number: ``variables["Pressure"]``, ``variables[1]``."""

    def __init__(self, variables: Iterable[Variable]) -> None:
        self._by_number = {variable.number: variable for variable in variables}
        self._by_name = {variable.name: variable for variable in self._by_number.values()}

    @property
    def names(self) -> list[str]:
        """The names, in the reader's order."""
        return list(self._by_name)

    def __getitem__(self, key: str | int | Variable) -> Variable:
        if isinstance(key, Variable):
            key = key.name
        if isinstance(key, str):
            found = self._by_name.get(key)
        else:
            found = self._by_number.get(operator.index(key))
        if found is None:
            raise unknown("variable", key, self._by_name)
        return found

    def __contains__(self, key: object) -> bool:
        if isinstance(key, Variable):
            return self._by_name.get(key.name) == key
        return key in self._by_name or key in self._by_number

    def __iter__(self) -> Iterator[Variable]:
        return iter(self._by_number.values())

    def __len__(self) -> int:
        return len(self._by_number)

    def __repr__(self) -> str:
        return f"Variables({self.names!r})"
