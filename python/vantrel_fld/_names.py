"""Finding things by their names."""

from __future__ import annotations

import difflib
from collections.abc import Iterable

from ._errors import UnknownNameError


def unknown(kind: str, name: object, names: Iterable[str]) -> UnknownNameError:
    """The error for a name that is not there, with up to three names like it."""
    known = list(names)
    by_small_letters = {other.casefold(): other for other in known}
    asked = str(name).casefold()
    # Names that begin like it first: "wall (3)" and "wall (7)" for "wall".
    near = [other for other in by_small_letters if asked and other.startswith(asked)]
    near += difflib.get_close_matches(asked, by_small_letters.keys() - near, n=3, cutoff=0.5)
    if near:
        hint = "; the nearest are: " + ", ".join(by_small_letters[other] for other in near[:3])
    elif known:
        more = ", ..." if len(known) > 5 else ""
        hint = "; there are: " + ", ".join(known[:5]) + more
    else:
        hint = "; there are none"
    return UnknownNameError(f"no {kind} {name!r}{hint}")
