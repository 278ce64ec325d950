"""The reader behind ``pyvista.get_reader("tank_0.fld")`` and ``pyvista.read("tank_0.fld")``.

pyvista finds it through its entry point for readers. Parts, variables and the step are chosen before reading::

    reader = pyvista.get_reader("tank_0.fld")
    reader.disable_all_parts()
    reader.enable_part("blade_1")
    reader.set_active_time_point(3)
    mesh = reader.read()
"""

from __future__ import annotations

import operator

import pyvista
from pyvista.core.utilities.reader import BaseReader, BaseVTKReader, PointCellDataSelection, TimeReader

from ._dataset import Dataset
from ._names import unknown


class _Source(BaseVTKReader):
    """What pyvista takes for the VTK reader: the dataset and the choices."""

    def __init__(self) -> None:
        super().__init__()
        self.dataset: Dataset | None = None
        self.step = 0
        self.parts: dict[str, bool] = {}
        self.node_variables: dict[str, bool] = {}
        self.element_variables: dict[str, bool] = {}

    def UpdateInformation(self) -> None:
        self.dataset = Dataset(self._filename)
        self.step = 0
        self.parts = {part.name: part.kind != "whole" for part in self.dataset.parts}
        self.node_variables = {v.name: True for v in self.dataset.variables if v.location == "node"}
        self.element_variables = {v.name: True for v in self.dataset.variables if v.location == "element"}

    def Update(self) -> None:
        # Parts that only later steps have are read unless they are a whole mesh.
        parts = [
            part
            for part in self.dataset.parts_at(self.step)
            if self.parts.get(part.name, part.kind != "whole")
        ]
        wanted = {**self.node_variables, **self.element_variables}
        self._data_object = self.dataset.to_pyvista(
            self.step, parts=parts, variables=[name for name, is_on in wanted.items() if is_on]
        )

    # The methods that pyvista's selection of arrays calls.

    def GetNumberOfPointArrays(self) -> int:
        return len(self.node_variables)

    def GetPointArrayName(self, index: int) -> str:
        return list(self.node_variables)[index]

    def GetPointArrayStatus(self, name: str) -> int:
        return int(self.node_variables[name])

    def SetPointArrayStatus(self, name: str, status: int) -> None:
        self.node_variables[name] = bool(status)

    def GetNumberOfCellArrays(self) -> int:
        return len(self.element_variables)

    def GetCellArrayName(self, index: int) -> str:
        return list(self.element_variables)[index]

    def GetCellArrayStatus(self, name: str) -> int:
        return int(self.element_variables[name])

    def SetCellArrayStatus(self, name: str, status: int) -> None:
        self.element_variables[name] = bool(status)


class FLDReader(BaseReader, PointCellDataSelection, TimeReader):
    """Reads a step of an FLD dataset as a MultiBlock (see `vantrel_fld.Dataset.to_pyvista`)."""

    _class_reader = _Source

    @property
    def dataset(self) -> Dataset:
        """The open dataset."""
        return self.reader.dataset

    @property
    def part_names(self) -> list[str]:
        """The names of the parts of the first step."""
        return list(self.reader.parts)

    def part_status(self, name: str) -> bool:
        """Whether a part is going to be read. KeyError for a part that is not there."""
        return self.reader.parts[self._known(name)]

    def enable_part(self, name: str) -> None:
        """Read this part. KeyError for a part that is not there."""
        self.reader.parts[self._known(name)] = True

    def disable_part(self, name: str) -> None:
        """Do not read this part. KeyError for a part that is not there."""
        self.reader.parts[self._known(name)] = False

    def enable_all_parts(self) -> None:
        """Read all parts, whole meshes too, which are left out otherwise."""
        self.reader.parts = dict.fromkeys(self.reader.parts, True)

    def disable_all_parts(self) -> None:
        """Read no part."""
        self.reader.parts = dict.fromkeys(self.reader.parts, False)

    def _known(self, name: str) -> str:
        if name not in self.reader.parts:
            raise unknown("part", name, self.reader.parts)
        return name

    @property
    def number_time_points(self) -> int:
        """The number of steps."""
        return len(self.dataset.steps)

    def time_point_value(self, time_point: int) -> float:
        """The time of a step."""
        return self.dataset.steps[time_point].time

    @property
    def active_time_point(self) -> int:
        """The step that is going to be read."""
        return self.reader.step

    @property
    def active_time_value(self) -> float:
        """The time of the step that is going to be read."""
        return self.time_point_value(self.reader.step)

    def set_active_time_value(self, time_value: float) -> None:
        """Choose the step with this time. ValueError when there is none; see `time_values`."""
        if time_value not in self.time_values:
            raise ValueError(f"no step has the time {time_value}; there are {self.time_values}")
        self.reader.step = self.time_values.index(time_value)

    def set_active_time_point(self, time_point: int) -> None:
        """Choose the step by its number, from 0. IndexError when there is none."""
        self.reader.step = self.dataset.steps[operator.index(time_point)].index

    def read(self, **options: object) -> pyvista.MultiBlock:
        """The chosen parts and variables at the chosen step."""
        return super().read(**options)
