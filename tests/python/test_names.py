"""Finding steps, parts and variables."""

import numpy as np
import pytest

import vantrel_fld


def test_parts_by_name_number_pattern_and_kind(open_sample):
    tank = open_sample("tank")
    blade = tank.parts["blade_1"]
    assert (blade.name, blade.number, blade.kind, blade.region_set) == ("blade_1", 3, "surface", 0)
    assert tank.parts[3] == blade and tank.parts[np.int64(3)] == blade and tank.parts[blade] == blade
    assert tank.parts.match("blade_*").names == [f"blade_{i}" for i in range(1, 7)]
    assert len(tank.parts.match("nothing*")) == 0
    assert tank.parts.volumes.names == ["impeller_zone", "tank_zone"]
    assert tank.parts.whole.names == ["ALL_ELEMENTS"]
    assert len(tank.parts.surfaces) == 17
    assert tank.parts.select("volumes", 3, "*_wall", blade).names == [
        "blade_1",
        "tank_wall",
        "impeller_zone",
        "tank_zone",
    ]
    assert "blade_1" in tank.parts and 20 in tank.parts and "blade" not in tank.parts and 21 not in tank.parts
    assert blade in tank.parts and blade not in tank.parts.volumes
    other = open_sample("tank").parts["blade_1"]
    assert other not in tank.parts
    with pytest.raises(KeyError, match="no part 'blade_1'"):
        tank.parts[other]


def test_unknown_names_tell_the_nearest(open_sample):
    tank = open_sample("tank")
    with pytest.raises(KeyError, match=r"^no part 'Blade_11'; the nearest are: blade_1, "):
        tank.parts["Blade_11"]
    with pytest.raises(vantrel_fld.UnknownNameError, match="no variable 'velocty'; the nearest are: Velocity"):
        tank.parts[1].values("velocty")
    with pytest.raises(KeyError, match="no variable 'zzz'; there are: Pressure, Temperature, Velocity, MatOfElements$"):
        tank.variables["zzz"]
    for number in (0, 21, -1):
        with pytest.raises(KeyError, match=f"no part {number}"):
            tank.parts[number]
    with pytest.raises(KeyError, match="no part 'x[*]'"):
        tank.parts.select("x*")
    with pytest.raises(TypeError):
        tank.parts[1.5]


def test_two_parts_of_one_name_are_told_apart(edited):
    with vantrel_fld.open(edited("tank", blade_2=b"blade_1")) as tank:
        assert tank.parts.names[2:5] == ["blade_1 (3)", "blade_1 (4)", "blade_3"]
        with pytest.raises(KeyError, match=r"the nearest are: blade_1 \(3\), blade_1 \(4\)"):
            tank.parts["blade_1"]
        first, second = tank.parts["blade_1 (3)"], tank.parts["blade_1 (4)"]
        assert first != second and len({first, second}) == 2
        assert not np.array_equal(first.points(), second.points())


def test_names_are_japanese_where_the_file_says_so(edited):
    with vantrel_fld.open(edited("tank", disc="円板".encode("shift_jis"))) as tank:
        assert tank.parts["円板"].nodes == 720


def test_steps_by_index_time_and_slice(open_sample):
    tank = open_sample("tank")
    assert len(tank.steps) == 8
    np.testing.assert_array_equal(tank.times, [0, 0.025, 0.05, 0.075, 0.1, 0.125, 0.15, 0.175])
    assert tank.steps[-1].index == 7 and tank.steps[2:4] == [tank.steps[2], tank.steps[3]]
    assert [step.index for step in tank.steps] == list(range(8))
    assert tank.at_time(0.075).index == 3
    assert (tank.at_time(-5).index, tank.at_time(0.09).index, tank.at_time(9).index) == (0, 4, 7)
    for wrong in ("nan", "inf", "-inf"):
        with pytest.raises(ValueError, match=f"no time is near {wrong}"):
            tank.at_time(float(wrong))
    blade = tank.parts["blade_1"]
    same = [blade.values("Pressure", step) for step in (3, -5, np.int32(3), tank.steps[3], tank.at_time(0.075))]
    for values in same[1:]:
        np.testing.assert_array_equal(values, same[0])
    np.testing.assert_array_equal(tank.steps[3].parts["blade_1"].values("Pressure"), same[0])
    for wrong in (8, -9):
        with pytest.raises(IndexError, match=f"step {wrong} is outside 0 to 7"):
            blade.values("Pressure", step=wrong)
    for wrong in (0.075, "3", True):
        with pytest.raises(TypeError):
            blade.values("Pressure", step=wrong)
    with pytest.raises(ValueError, match="another dataset"):
        blade.values("Pressure", step=open_sample("channel").steps[0])


def test_steps_know_their_files(open_sample, sample_path):
    tank = open_sample("tank")
    folder = sample_path("tank").parent
    assert [step.file for step in tank.steps] == [str(folder / f"tank_{10 * i}.fld") for i in range(8)]


def test_any_file_of_the_series_opens_it(sample_path):
    with vantrel_fld.open(str(sample_path("tank").parent / "tank_30.fld")) as tank:
        assert len(tank.steps) == 8


def test_variables_have_labels_and_units(open_sample):
    tank = open_sample("tank")
    pressure = tank.variables["Pressure"]
    assert pressure.label == "Static pressure [Pa]" and pressure.unit == "Pa"
    assert (pressure.kind, pressure.location, pressure.components) == ("scalar", "node", 1)
    assert tank.variables[3].name == "Velocity" and tank.variables[3].components == 3
    assert tank.variables["MatOfElements"].location == "element" and tank.variables["MatOfElements"].unit == ""
    assert pressure in tank.variables and 5 not in tank.variables
    part = tank.parts[1]
    np.testing.assert_array_equal(part.values(pressure), part.values(1))


def test_components_are_those_of_vectors(open_sample):
    part = open_sample("tank").parts[1]
    for wrong in (3, -1, "w"):
        with pytest.raises(ValueError, match="a component is 0, 1, 2"):
            part.values("Velocity", component=wrong)
    with pytest.raises(ValueError, match="is a scalar"):
        part.values("Pressure", component=0)


def test_groups(open_sample):
    tank = open_sample("tank")
    assert {name: parts.names for name, parts in tank.groups.items()} == {
        "Grouping_Regions": ["&VFG_impeller"],
        "Undefined_Regions": ["@sliding"],
    }
    assert tank.parts["@sliding"].group == "Undefined_Regions" and tank.parts["hub"].group is None
    assert open_sample("tank", groups=False).groups == {}


def test_the_simplifying_option_is_handed_over(open_sample):
    tank = open_sample("tank", simplify=True)
    assert len(tank.steps) == 8 and np.isfinite(tank.parts["hub"].values("Pressure", step=5)).all()


def test_it_tells_about_itself(open_sample, sample_path):
    tank = open_sample("tank")
    text = repr(tank)
    assert text == str(tank)
    for piece in (str(sample_path("tank")), "8 steps, time 0 to 0.175", "blade_1", "Static pressure [Pa]", "53 quad"):
        assert piece in text
    html = tank._repr_html_()
    assert "<td>&amp;VFG_impeller</td>" in html and html.count("<table>") == 2
    assert repr(tank.steps[3]) == "Step(3, time=0.075)"
    assert "blade_1" in repr(tank.parts["blade_1"]) and "Velocity" in repr(tank.variables)
    assert tank.reader == {"name": "Vantrel FLD", "release": "1.02", "interface": "2.04"}
    assert "IN ( FLD): " in tank.diagnostics
    tank.close()
    assert repr(tank).endswith("closed>") and "closed" in tank._repr_html_()


def test_help_is_the_documentation():
    import pydoc

    text = pydoc.plain(pydoc.render_doc(vantrel_fld))
    for name in vantrel_fld.__all__:
        assert name in text
        assert getattr(vantrel_fld, name).__doc__
    for piece in ("(n, 3) float32", "(m, k) int32", "NaN where a value is undefined", "KeyError"):
        assert piece in text
