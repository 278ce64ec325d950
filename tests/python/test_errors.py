"""Files that are missing, cut, damaged or contradict themselves."""

import random
import subprocess
import sys

import numpy as np
import pytest

import vantrel_fld


def test_a_missing_file(tmp_path):
    path = tmp_path / "none.fld"
    with pytest.raises(vantrel_fld.Error) as caught:
        vantrel_fld.open(path)
    assert caught.value.reason == f"FILE NOT FOUND : {path}"
    assert caught.value.file == str(path) and caught.value.step is None
    assert str(caught.value) == f"{path}: FILE NOT FOUND : {path}"


def test_no_fld_file(tmp_path):
    path = tmp_path / "text.fld"
    path.write_text("no result of a solver\n" * 9)
    with pytest.raises(vantrel_fld.Error, match="text.fld: "):
        vantrel_fld.open(path)
    with pytest.raises(vantrel_fld.Error):
        vantrel_fld.open(tmp_path)
    with pytest.raises(TypeError):
        vantrel_fld.open(None)


def test_no_reader(sample_path, tmp_path):
    with pytest.raises(vantrel_fld.Error, match="cannot load the reader library"):
        vantrel_fld.open(sample_path("tank"), plugin=tmp_path / "none.so")


def test_a_path_of_any_bytes(sample_path, tmp_path):
    path = bytes(tmp_path) + b"/\x8a\x4f \xff.fld"
    with open(path, "wb") as file:
        file.write(sample_path("sector").read_bytes())
    with vantrel_fld.open(path) as sector:
        assert sector.parts["hub"].nodes > 0
        repr(sector)


def _read_all(path):
    """Reads everything; how many errors there were."""
    errors = 0
    try:
        with vantrel_fld.open(path) as dataset:
            for step in dataset.steps:
                try:
                    parts = list(step.parts)
                except vantrel_fld.Error:
                    errors += 1
                    continue
                for part in parts:
                    for ask in (part.points, part.cells, part.bounds, part.statistics):
                        try:
                            ask()
                        except vantrel_fld.Error as error:
                            assert error.reason and error.file
                            errors += 1
    except vantrel_fld.Error:
        errors += 1
    return errors


def test_files_cut_off_anywhere(sample_path, tmp_path):
    content = sample_path("sector").read_bytes()
    choice = random.Random(1)
    failed = 0
    for _ in range(60):
        path = tmp_path / "cut.fld"
        path.write_bytes(content[: choice.randrange(len(content))])
        failed += _read_all(path) > 0
    assert failed > 50


def test_files_with_damaged_bytes(sample_path, tmp_path):
    content = sample_path("sector").read_bytes()
    choice = random.Random(2)
    failed = 0
    for _ in range(60):
        damaged = bytearray(content)
        for _ in range(20):
            # The first kilobytes have more of what others depend on.
            damaged[min(int(choice.expovariate(1 / 5000)), len(content) - 1)] = choice.randrange(256)
        path = tmp_path / "damaged.fld"
        path.write_bytes(damaged)
        failed += _read_all(path) > 0
    assert failed > 10


def test_a_step_s_file_that_is_cut_names_it_and_the_step(tank_copy):
    cut = tank_copy / "tank_40.fld"
    with vantrel_fld.open(tank_copy / "tank_0.fld") as tank:
        blade = tank.parts["tank_wall"]
        before = blade.values("Pressure", step=3)
        cut.write_bytes(cut.read_bytes()[:20000])
        with pytest.raises(vantrel_fld.Error) as caught:
            blade.values("Pressure", step=4)
        assert caught.value.step == 4 and caught.value.file == str(cut)
        assert str(caught.value).startswith(f"{cut}, step 4: ")
        np.testing.assert_array_equal(blade.values("Pressure", step=3), before)
        assert blade.values("Pressure", step=5).shape == before.shape


def test_a_variable_that_a_step_lacks(tank_copy):
    lacking = tank_copy / "tank_20.fld"
    lacking.write_bytes(lacking.read_bytes().replace(b"Pressure", b"Presence"))
    with vantrel_fld.open(tank_copy / "tank_0.fld") as tank:
        hub = tank.parts["hub"]
        with pytest.raises(vantrel_fld.MissingValuesError, match="tank_20.fld, step 2: .* no values of 'Pressure'"):
            hub.values("Pressure", step=2)
        with pytest.raises(vantrel_fld.MissingValuesError):
            hub.statistics("Pressure", step=2)
        assert "Pressure" not in hub.statistics(step=2) and "Presence" in hub.statistics(step=2)
        assert hub.values("Presence", step=2).shape == (661,)


def test_a_failed_assertion_of_the_reader_is_an_error(tank_copy, sample_path):
    # The fifth file moves the mesh of cycle 0; now it is that of a cycle that no file has.
    moved = tank_copy / "tank_40.fld"
    content = bytearray(moved.read_bytes())
    base_cycle = content.index(b"LS_ALE") + 124
    assert content[base_cycle - 4 : base_cycle + 8] == bytes([0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0, 4])
    content[base_cycle + 3] = 99
    moved.write_bytes(content)
    script = """
import sys, vantrel_fld
tank = vantrel_fld.open(sys.argv[1])
hub = tank.parts["hub"]
first = hub.points()
try:
    hub.points(step=4)
except vantrel_fld.Error as error:
    assert error.reason.startswith("the reader gave up: ") and "Assertion" in error.reason, error
    assert error.step == 4, error.step
try:
    hub.points(step=1)
except vantrel_fld.Error as error:
    print(error.reason)
with vantrel_fld.open(sys.argv[2]) as other:
    assert (other.parts["hub"].points() == first).all()
"""
    arguments = [sys.executable, "-c", script, tank_copy / "tank_0.fld", sample_path("tank")]
    done = subprocess.run(arguments, capture_output=True, text=True)
    assert (done.returncode, done.stdout, done.stderr) == (0, "the reader has given up before\n", "")
