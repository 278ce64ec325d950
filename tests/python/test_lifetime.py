"""Who owns what, for how long, and from which thread or process."""

import copy
import gc
import os
import pickle
import subprocess
import sys
import threading
import time

import numpy as np
import pytest

import vantrel_fld


def test_arrays_outlive_the_dataset(sample_path):
    with vantrel_fld.open(sample_path("tank")) as tank:
        blade = tank.parts["blade_1"]
        arrays = [blade.values("Pressure"), blade.values("Velocity"), blade.points(), blade.cells()["quad"]]
        kept = [array.copy() for array in arrays]
    del tank, blade
    gc.collect()
    for array, copied in zip(arrays, kept):
        np.testing.assert_array_equal(array, copied)


def test_a_mesh_at_rest_is_the_same_object_at_every_step(open_sample):
    tank = open_sample("tank")
    wall, blade = tank.parts["tank_wall"], tank.parts["blade_1"]
    first = wall.points(step=0)
    cells = wall.cells(step=0)
    for step in tank.steps:
        assert wall.points(step) is first
        assert wall.cells(step)["quad"] is cells["quad"]
    at_first, corners = blade.points(step=0), blade.cells(step=0)
    assert blade.points(step=1) is not at_first
    assert blade.cells(step=1)["quad"] is corners["quad"]


def test_shared_arrays_cannot_be_written_to_and_values_can(open_sample):
    blade = open_sample("tank").parts["blade_1"]
    for array in (blade.points(), blade.cells()["quad"]):
        with pytest.raises(ValueError):
            array += 1
    values = blade.values("Pressure")
    values += 1
    np.testing.assert_array_equal(blade.values("Pressure"), values - 1)


def test_arrays_that_nobody_holds_are_not_kept(open_sample):
    zone = open_sample("tank").parts["tank_zone"]
    import weakref

    points = weakref.ref(zone.points())
    gc.collect()
    assert points() is None


def test_a_closed_dataset_says_so(sample_path):
    tank = vantrel_fld.open(sample_path("tank"))
    blade = tank.parts["blade_1"]
    tank.close()
    tank.close()
    assert not tank.is_open
    for ask in (blade.points, blade.cells, blade.bounds, lambda: blade.values(1), lambda: tank.diagnostics):
        with pytest.raises(vantrel_fld.Error, match="tank_0.fld: the dataset is closed"):
            ask()


def test_datasets_are_independent(open_sample):
    tank, channel, other = open_sample("tank"), open_sample("channel"), open_sample("tank")
    a = tank.parts["blade_1"].values("Pressure", step=1)
    channel.parts["wake"].values("Pressure")
    b = other.parts["blade_1"].values("Pressure", step=5)
    np.testing.assert_array_equal(tank.parts["blade_1"].values("Pressure", step=1), a)
    other.close()
    np.testing.assert_array_equal(tank.parts["blade_1"].values("Pressure", step=5), b)


def _pages():
    with open("/proc/self/statm") as statm:
        return int(statm.read().split()[1])


def test_a_thousand_openings_leave_nothing_behind(sample_path):
    def open_and_close():
        with vantrel_fld.open(sample_path("sector")) as sector:
            sector.parts["hub"].values("Velocity")

    for _ in range(50):
        open_and_close()
    pages, files = _pages(), len(os.listdir("/proc/self/fd"))
    for _ in range(1000):
        open_and_close()
    gc.collect()
    assert len(os.listdir("/proc/self/fd")) == files
    assert (_pages() - pages) * os.sysconf("SC_PAGE_SIZE") < 4 << 20


def test_two_threads_on_one_dataset_wait_for_each_other(open_sample):
    tank = open_sample("tank")
    names = [f"blade_{i}" for i in range(1, 7)]
    wanted = {(n, s): tank.parts[n].values("Velocity", step=s) for n in names for s in range(8)}
    wrong = []

    def work(offset):
        for i in range(200):
            name, step = names[(i + offset) % 6], (i * 5 + offset) % 8
            if not np.array_equal(tank.parts[name].values("Velocity", step=step), wanted[name, step]):
                wrong.append((name, step))

    threads = [threading.Thread(target=work, args=(offset,)) for offset in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong


def test_closing_while_another_thread_reads_is_an_error_there_at_most(sample_path):
    for _ in range(20):
        tank = vantrel_fld.open(sample_path("tank"))
        zone = tank.parts["tank_zone"]
        errors = []

        def work():
            try:
                for step in range(8):
                    zone.values("Velocity", step=step)
            except vantrel_fld.Error as error:
                errors.append(str(error))

        thread = threading.Thread(target=work)
        thread.start()
        time.sleep(0.002)
        tank.close()
        thread.join()
        assert all("closed" in error for error in errors)


def test_other_threads_go_on_while_files_are_read(open_sample):
    zone = open_sample("tank").parts["tank_zone"]
    count = 0
    stop = False

    def work():
        nonlocal count
        while not stop:
            count += 1
            time.sleep(0)

    # Nobody gives Python's lock up but by a call that releases it.
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1000)
    thread = threading.Thread(target=work)
    try:
        thread.start()
        before = count
        for step in range(8):
            zone.values("Velocity", step=step)
        after = count
    finally:
        stop = True
        sys.setswitchinterval(interval)
        thread.join()
    assert after > before


def test_pickling_and_copying_are_refused(open_sample):
    tank = open_sample("tank")
    for thing in (tank, tank.parts["hub"], tank.steps[0]):
        for refuse in (pickle.dumps, copy.deepcopy):
            with pytest.raises(TypeError, match="cannot be pickled or copied"):
                refuse(thing)


def test_a_forked_process_is_told_to_open_the_file_itself(open_sample, sample_path):
    tank = open_sample("tank")
    child = os.fork()
    if child == 0:
        status = 1
        try:
            try:
                tank.parts["hub"].points()
            except vantrel_fld.Error as error:
                own = vantrel_fld.open(sample_path("tank"))
                if "opened by another process" in str(error) and own.parts["hub"].points().shape == (661, 3):
                    status = 0
        finally:
            os._exit(status)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 0
    assert tank.parts["hub"].points().shape == (661, 3)


def test_the_process_may_end_with_datasets_open(sample_path):
    script = "import sys, vantrel_fld; d = vantrel_fld.open(sys.argv[1]); p = d.parts[1].points()"
    done = subprocess.run([sys.executable, "-c", script, sample_path("tank")], capture_output=True)
    assert done.returncode == 0 and done.stderr == b""


def test_the_standard_error_stream_is_the_process_s_own_between_calls(open_sample, capfd):
    tank = open_sample("tank")
    os.write(2, b"mine\n")
    tank.parts["hub"].values("Pressure", step=2)
    assert capfd.readouterr().err == "mine\n"
