"""A dataset's steps, parts and variables as text and, for notebooks, as HTML."""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from html import escape
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from ._dataset import Dataset

_MOST_ROWS = 60


def _span(dataset: Dataset) -> str:
    times = dataset._times
    if len(times) == 1:
        return f"1 step, time {times[0]:g}"
    return f"{len(times)} steps, time {times[0]:g} to {times[-1]:g}"


def _part_rows(dataset: Dataset) -> list[Sequence[str]]:
    groups = {part: name for name, parts in dataset.groups.items() for part in parts}
    return [
        (
            str(part.number),
            part.kind,
            part.name,
            str(part.nodes),
            ", ".join(f"{count} {shape}" for shape, count in part.elements.items()),
            groups.get(part, ""),
        )
        for part in dataset.parts
    ]


def _variable_rows(dataset: Dataset) -> list[Sequence[str]]:
    return [
        (str(one.number), one.kind, one.location, one.name, one.label) for one in dataset.variables
    ]


_PART_TITLES = ("part", "kind", "name", "nodes", "elements", "group")
_VARIABLE_TITLES = ("variable", "kind", "per", "name", "label")


def _shortened(rows: list[Sequence[str]]) -> tuple[list[Sequence[str]], str]:
    if len(rows) <= _MOST_ROWS:
        return rows, ""
    return rows[:_MOST_ROWS], f"... and {len(rows) - _MOST_ROWS} more"


def _columns(titles: Sequence[str], rows: list[Sequence[str]]) -> Iterable[str]:
    rows, more = _shortened(rows)
    widths = [max(map(len, column)) for column in zip(titles, *rows)]
    for row in [titles, *rows]:
        yield "  " + "  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip()
    if more:
        yield "  " + more


def text(dataset: Dataset) -> str:
    """The dataset in lines of text."""
    lines = [f"Dataset {dataset.path}", _span(dataset), ""]
    lines += _columns(_PART_TITLES, _part_rows(dataset))
    lines.append("")
    lines += _columns(_VARIABLE_TITLES, _variable_rows(dataset))
    return "\n".join(lines)


def _table(titles: Sequence[str], rows: list[Sequence[str]]) -> str:
    rows, more = _shortened(rows)
    head = "".join(f"<th>{escape(title)}</th>" for title in titles)
    body = "".join(
        "<tr>" + "".join(f"<td>{escape(cell)}</td>" for cell in row) + "</tr>" for row in rows
    )
    note = f"<p>{escape(more)}</p>" if more else ""
    return f"<table><thead><tr>{head}</tr></thead><tbody>{body}</tbody></table>{note}"


def html(dataset: Dataset) -> str:
    """The dataset as tables."""
    if not dataset.is_open:
        return f"<p>{escape(repr(dataset))}</p>"
    return (
        f"<p><b>{escape(dataset.path)}</b>: {escape(_span(dataset))}</p>"
        + _table(_PART_TITLES, _part_rows(dataset))
        + _table(_VARIABLE_TITLES, _variable_rows(dataset))
    )
