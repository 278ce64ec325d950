"""What the package raises."""

from __future__ import annotations


class Error(Exception):
    """A dataset that cannot be read, or an assertion of the reader.

    Attributes
    ----------
    reason : str
        The reader's own words.
    file : str
        The file that was being read; the one that was opened, if it is not known.
    step : int or None
        The step that was being read, from 0; None while the dataset was opened.
    """

    def __init__(self, reason: str, file: str = "", step: int | None = None) -> None:
        super().__init__(reason, file, step)
        self.reason = reason
        self.file = file
        self.step = step

    def __str__(self) -> str:
        where = self.file if self.step is None else f"{self.file}, step {self.step}"
        return f"{where}: {self.reason}" if where else self.reason


class MissingValuesError(Error):
    """A variable that has no values at a step: the step's file lacks it."""


class UnknownNameError(KeyError):
    """A name that the dataset does not have; the message has the nearest ones."""

    def __str__(self) -> str:
        return str(self.args[0])
