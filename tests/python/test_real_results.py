"""Results of solvers in the folder FLD_REAL_DATA, against what is known of them."""

import json
import os
from pathlib import Path

import numpy as np
import pytest

import vantrel_fld


@pytest.fixture(params=["tjunction", "propeller"])
def known(request):
    data = os.environ.get("FLD_REAL_DATA")
    if not data:
        pytest.skip("FLD_REAL_DATA is not set: the solver results are not compared")
    folder = Path(data) / request.param
    expected = json.loads((folder / "expected.json").read_text())
    with vantrel_fld.open(folder / expected["files"][0]) as dataset:
        yield dataset, expected


def test_the_description(known):
    dataset, expected = known
    assert [Path(path).name for path in dataset.files] == expected["files"]
    np.testing.assert_allclose(dataset.times, [step["time"] for step in expected["steps"]], rtol=1e-6)
    assert {name: [part._info.file_name for part in parts] for name, parts in dataset.groups.items() if len(parts)} == {
        name: parts for name, parts in expected["groups"].items() if parts
    }
    for variable, wanted in zip(dataset.variables, expected["variables"], strict=True):
        assert (variable.number, variable.kind, variable.location) == (
            wanted["number"],
            wanted["type"],
            wanted["per"],
        )
        assert variable.label in wanted["description"] and wanted["name"] in variable.name
    for part, wanted in zip(dataset.parts, expected["parts"], strict=True):
        assert (part.number, part.kind, part.nodes) == (wanted["number"], wanted["kind"], wanted["nodes"])
        assert part.elements == wanted["elements"]
        assert part._info.file_name == wanted["name"]


def test_elements(known):
    dataset, expected = known
    for wanted in expected["elements"]:
        cells = dataset.parts[wanted["part"]].cells()[wanted["shape"]]
        assert (cells[wanted["element"] - 1] + 1).tolist() == wanted["nodes"]


def test_boxes_and_points_of_every_step(known):
    dataset, expected = known
    tolerance = expected["tolerance"]["coordinates"]
    relative = expected["tolerance"]["values_relative"]
    for step, wanted_step in zip(dataset.steps, expected["steps"], strict=True):
        parts = step.parts
        for part, wanted in zip(parts, wanted_step["parts"], strict=True):
            if wanted["bounds"] is not None:
                np.testing.assert_allclose(part.bounds(), wanted["bounds"], rtol=0, atol=tolerance)
        for point in wanted_step["points"]:
            part, row = parts[point["part"]], point["node"] - 1
            np.testing.assert_allclose(part.points()[row], point["xyz"], rtol=0, atol=tolerance)
            for name, wanted in point["values"].items():
                if wanted is None:
                    with pytest.raises(vantrel_fld.MissingValuesError):
                        part.values(name)
                elif wanted == "undefined":
                    assert np.isnan(part.values(name)[row]).all()
                else:
                    np.testing.assert_allclose(part.values(name)[row], wanted, rtol=relative)


def test_statistics_of_every_step(known):
    dataset, expected = known
    relative = expected["tolerance"]["values_relative"]
    for step, wanted_step in zip(dataset.steps, expected["steps"], strict=True):
        for part, wanted_part in zip(step.parts, wanted_step["parts"], strict=True):
            for name, wanted in wanted_part["values"].items():
                if wanted is None:
                    continue
                found = part.statistics(name)
                rows = zip(found[:3], wanted, strict=True) if isinstance(wanted, list) else [(found, wanted)]
                for one, its in rows:
                    assert one.undefined == its["undefined"] and one.not_numbers == 0
                    assert (one.minimum is None) == (its["min"] is None)
                    if one.minimum is None:
                        continue
                    np.testing.assert_allclose([one.minimum, one.maximum], [its["min"], its["max"]], rtol=relative)
                    largest = max(abs(one.minimum), abs(one.maximum))
                    slack = largest * expected["tolerance"]["mean_relative_to_largest"]
                    assert abs(one.mean - its["mean"]) <= slack
