"""A dataset: its steps, parts and variables."""

from __future__ import annotations

import math
import os
from collections import Counter
from collections.abc import Iterable
from functools import cached_property
from types import TracebackType
from typing import TYPE_CHECKING, Any

import numpy as np

from . import _core, _listing
from ._errors import Error
from ._mesh import SharedMeshes
from ._parts import Part, PartInfo, Parts
from ._steps import Step, Steps
from ._variables import Statistics, Variable, Variables, VectorStatistics

if TYPE_CHECKING:
    import meshio
    import pyvista

PartChoices = Iterable["str | int | Part"]
VariableChoices = Iterable["str | int | Variable"]


def open(
    path: str | bytes | os.PathLike[Any],
    *,
    simplify: bool = False,
    groups: bool = True,
    plugin: str | bytes | os.PathLike[Any] | None = None,
) -> Dataset:
    """Open the dataset that a file belongs to.

    Parameters
    ----------
    path
        Any file of the dataset; the others of its series are found by their names.
    simplify
        Look for the variables in the first file of a series only: for long series of files that are laid out
        alike.
    groups
        Let the reader group the surfaces (`Dataset.groups`).
    plugin
        The reader to use; otherwise the variable FLD_PLUGIN names it, or it is the package's own.

    Raises
    ------
    Error
        The file cannot be read, or is no FLD file.
    """
    return Dataset(path, simplify=simplify, groups=groups, plugin=plugin)


class Dataset:
    """A dataset that is open. Made by `vantrel_fld.open`, closed by ``with`` or `close`."""

    def __init__(
        self,
        path: str | bytes | os.PathLike[Any],
        *,
        simplify: bool = False,
        groups: bool = True,
        plugin: str | bytes | os.PathLike[Any] | None = None,
    ) -> None:
        self.path: str = os.fsdecode(path)
        reader = b"" if plugin is None else os.fsencode(plugin)
        self._core = _core.Dataset(os.fsencode(path), bool(simplify), bool(groups), reader)
        # Times are single precision: the shortest number that says the same is what the solver meant.
        self._times = [float(str(np.float32(time))) for time in self._core.times()]
        self._geometry_steps = self._core.geometry_steps()
        self._infos: dict[int, list[PartInfo]] = {}
        self._meshes = SharedMeshes(self)

    def close(self) -> None:
        """Close the dataset. Arrays that it gave stay valid; whatever has to be read raises Error from then on."""
        self._core.close()

    @property
    def is_open(self) -> bool:
        """Whether it has not been closed yet."""
        return self._core.is_open()

    def __enter__(self) -> Dataset:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        traceback: TracebackType | None,
    ) -> None:
        self.close()

    def __reduce__(self) -> Any:
        raise TypeError("a Dataset cannot be pickled or copied: open its path again instead")

    # Time.

    @cached_property
    def steps(self) -> Steps:
        """The steps: ``steps[0]``, ``steps[-1]``, ``steps[2:5]``, ``for step in steps``."""
        return Steps(self, self._times)

    @property
    def times(self) -> np.ndarray:
        """The solution times of the steps: (steps,) float64, in the solver's unit (s, usually)."""
        return np.array(self._times)

    def at_time(self, time: float) -> Step:
        """The step whose time is nearest, the earlier one of two. ValueError unless `time` is finite."""
        if not math.isfinite(time):
            raise ValueError(f"no time is near {time}")
        return min(self.steps, key=lambda step: abs(step.time - time))

    @cached_property
    def files(self) -> list[str]:
        """The paths of the steps' files; empty where they are not all known (``simplify``)."""
        return [os.fsdecode(path) for path in self._core.files()]

    def _step_index(self, step: int | Step) -> int:
        if isinstance(step, Step) and step._dataset is not self:
            raise ValueError("the step belongs to another dataset")
        return self.steps.index_of(step)

    def _file_of(self, index: int) -> str:
        return self.files[index] if self.files else self.path

    # Parts.

    @property
    def parts(self) -> Parts:
        """The parts of the first step, by name or number: ``parts["blade_1"]``, ``parts[3]``."""
        return self.parts_at(0)

    def parts_at(self, step: int | Step) -> Parts:
        """The parts of a step. A Part goes by its kind and name, so it is the same one at other steps."""
        index = self._step_index(step)
        return Parts(Part(self, info, index) for info in self._infos_at(index))

    @cached_property
    def groups(self) -> dict[str, Parts]:
        """The reader's groups of surfaces; surfaces are in at most one."""
        surfaces = self.parts.surfaces
        made = {}
        for name, members in self._core.groups():
            file_names = set(members)
            made[name] = Parts(part for part in surfaces if part._info.file_name in file_names)
        return made

    def _infos_at(self, index: int) -> list[PartInfo]:
        geometry = self._geometry_steps[index]
        if geometry not in self._infos:
            seen: Counter[tuple[str, str]] = Counter()
            infos = []
            for number, file_name, name, kind, region_set, nodes, elements in self._core.parts(index):
                occurrence = seen[kind, file_name]
                seen[kind, file_name] += 1
                infos.append(
                    PartInfo(number, file_name, name, kind, region_set, nodes, elements, occurrence)
                )
            self._infos[geometry] = infos
        return self._infos[geometry]

    def _find_part(self, part: PartInfo, index: int) -> PartInfo | None:
        infos = self._infos_at(index)
        if part.number <= len(infos) and infos[part.number - 1].identity == part.identity:
            return infos[part.number - 1]
        return next((info for info in infos if info.identity == part.identity), None)

    def _chosen_infos(self, index: int, parts: PartChoices | None) -> list[PartInfo]:
        every = self.parts_at(index)
        if parts is None:
            return [part._info for part in every if part.kind != "whole"]
        choices = [parts] if isinstance(parts, (str, Part)) else parts
        return [part._info for part in every.select(*choices)]

    # Variables.

    @cached_property
    def variables(self) -> Variables:
        """The variables of all steps, by name or number: ``variables["Pressure"]``."""
        return Variables(Variable(*row) for row in self._core.variables())

    def _chosen_variables(self, variables: VariableChoices | None) -> list[Variable]:
        if variables is None:
            return list(self.variables)
        choices = [variables] if isinstance(variables, (str, Variable)) else variables
        return [self.variables[choice] for choice in choices]

    def statistics(
        self,
        step: int | Step = 0,
        *,
        parts: PartChoices | None = None,
        variables: VariableChoices | None = None,
    ) -> dict[str, dict[str, Statistics | VectorStatistics]]:
        """Range, mean and counts at a step: ``statistics(3)["Pressure"]["blade_1"].maximum``.

        Of surfaces and volumes unless ``parts`` are chosen (see `Parts.select`). What the step lacks is left
        out.
        """
        index = self._step_index(step)
        made: dict[str, dict[str, Statistics | VectorStatistics]] = {}
        infos = self._chosen_infos(index, parts)
        for variable in self._chosen_variables(variables):
            for info in infos:
                found = Part(self, info, index)._statistics(variable, index, info)
                if found is not None:
                    made.setdefault(variable.name, {})[info.name] = found
        return made

    def bounds(self, step: int | Step = 0) -> np.ndarray | None:
        """The box around a step's surfaces and volumes, or around its whole mesh when these have no nodes.

        (2, 3) float32, lowest and highest corner; None when there are no nodes at all.
        """
        index = self._step_index(step)
        regions = [info for info in self._infos_at(index) if info.kind != "whole"]
        whole = [info for info in self._infos_at(index) if info.kind == "whole"]
        for infos in (regions, whole):
            boxes = [self._core.bounds(index, info.number) for info in infos]
            boxes = [box for box in boxes if box is not None]
            if boxes:
                lowest, highest = zip(*boxes)
                return np.array([np.min(lowest, axis=0), np.max(highest, axis=0)])
        return None

    # Other programs' meshes.

    def to_pyvista(
        self,
        step: int | Step = 0,
        *,
        parts: PartChoices | None = None,
        variables: VariableChoices | None = None,
    ) -> pyvista.MultiBlock:
        """A step as a pyvista MultiBlock.

        Blocks "Surfaces", with the reader's groups as blocks in it, and "Volumes" hold an UnstructuredGrid for
        each part; "Whole mesh" is there when its part is chosen. Values per node are point data, those per
        element cell data, NaN where undefined; the time is in the field data "TimeValue".

        Parameters
        ----------
        parts
            What `Parts.select` takes; surfaces and volumes without it.
        variables
            Names, numbers or Variables; all without it.
        """
        from ._pyvista import multi_block

        index = self._step_index(step)
        chosen = self._chosen_infos(index, parts)
        return multi_block(self, index, chosen, self._chosen_variables(variables))

    def to_meshio(
        self,
        step: int | Step = 0,
        *,
        parts: PartChoices | None = None,
        variables: VariableChoices | None = None,
    ) -> meshio.Mesh:
        """A step as one meshio Mesh, with the parts one behind the other and as cell sets.

        The parameters are those of `to_pyvista`. NaN stands where a part has no value.
        """
        index = self._step_index(step)
        return self._to_meshio(index, self._chosen_infos(index, parts), variables)

    def _to_meshio(
        self, index: int, infos: list[PartInfo], variables: VariableChoices | None
    ) -> meshio.Mesh:
        from ._meshio import mesh_of

        return mesh_of(self, index, infos, self._chosen_variables(variables))

    def save(
        self,
        path: str | bytes | os.PathLike[Any],
        *,
        steps: Iterable[int | Step] | None = None,
        parts: PartChoices | None = None,
        variables: VariableChoices | None = None,
        precision: str = "single",
        compress: bool = False,
    ) -> None:
        """Write steps into one VTKHDF file, which VTK 9.4, ParaView 5.13 and later versions open.

        A mesh that does not change is in the file once. The file is complete after every step, and writing it
        takes the memory of one step. Python's other threads wait.

        Parameters
        ----------
        path
            The file, usually named ``.vtkhdf``; one that is there is replaced when the first step is complete.
        steps
            The steps; all without it.
        parts
            What `Parts.select` takes, at the first of these steps; surfaces and volumes without it.
        variables
            Names, numbers or Variables; all without it.
        precision
            "single" or "double", of coordinates and values in the file.
        compress
            With zlib.

        Raises
        ------
        Error
            A step cannot be read; the file has the steps before it.
        OSError
            The file cannot be written.
        NotImplementedError
            The package was built without HDF5, as wheels are; ``fldtool convert`` writes such files too.
        """
        from ._save import save

        save(self, path, steps, parts, variables, precision, compress)

    # What it tells about itself.

    @property
    def reader(self) -> dict[str, str]:
        """The reader's name, release and version of the interface."""
        return self._core.reader()

    @property
    def diagnostics(self) -> str:
        """What the reader wrote to the standard error stream so far."""
        return self._core.diagnostics()

    def __repr__(self) -> str:
        if not self.is_open:
            return f"<Dataset {self.path!r}, closed>"
        try:
            return _listing.text(self)
        except Error as error:
            return f"<Dataset {self.path!r}, unreadable: {error}>"

    def _repr_html_(self) -> str:
        return _listing.html(self)
