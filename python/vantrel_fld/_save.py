"""Datasets as VTKHDF files."""

from __future__ import annotations

import os
from collections.abc import Iterable
from typing import TYPE_CHECKING, Any

from . import _core
from ._steps import Step

if TYPE_CHECKING:
    from ._dataset import Dataset, PartChoices, VariableChoices


def save(
    dataset: Dataset,
    path: str | bytes | os.PathLike[Any],
    steps: Iterable[int | Step] | None,
    parts: PartChoices | None,
    variables: VariableChoices | None,
    precision: str,
    compress: bool,
) -> None:
    """Write steps into one file; see `Dataset.save`."""
    if not hasattr(_core, "SeriesFile"):
        raise NotImplementedError(
            "this vantrel_fld was built without HDF5; 'fldtool convert FILE OUT.vtkhdf' writes the same file"
        )
    if precision not in ("single", "double"):
        raise ValueError(f"the precision is 'single' or 'double', not {precision!r}")
    indices = [dataset._step_index(step) for step in (dataset.steps if steps is None else steps)]
    if not indices:
        raise ValueError("no step is to be written")
    chosen = {info.identity for info in dataset._chosen_infos(indices[0], parts)}
    numbers = [variable.number for variable in dataset._chosen_variables(variables)]
    try:
        series = _core.SeriesFile(
            dataset._core,
            os.fsencode(path),
            indices[0],
            numbers,
            len(indices),
            precision == "double",
            bool(compress),
        )
        try:
            for index in indices:
                wanted = [
                    info.number
                    for info in dataset._infos_at(index)
                    if info.identity in chosen or (parts is None and info.kind != "whole")
                ]
                series.write_step(index, wanted)
        finally:
            series.close()
    except OSError as error:
        raise OSError(error.errno, error.strerror, os.fspath(path)) from None
