"""Datasets for the tests: the samples, which fldtool writes, and changed copies of their files."""

import os
import shutil
import subprocess
from pathlib import Path

import pytest

import vantrel_fld

SAMPLES = {
    "channel": "channel/channel.fld",
    "tank": "tank/tank_0.fld",
    "overset": "overset/overset.fld",
    "sector": "sector/sector.fld",
}


@pytest.fixture(scope="session")
def sample_folder(tmp_path_factory) -> Path:
    folder = tmp_path_factory.mktemp("samples")
    subprocess.run([os.environ.get("FLDTOOL", "fldtool"), "sample", str(folder)], check=True, stdout=subprocess.DEVNULL)
    return folder


@pytest.fixture(scope="session")
def sample_path(sample_folder):
    """The file to open of a sample, by its name."""
    return lambda name: sample_folder / SAMPLES[name]


@pytest.fixture
def open_sample(sample_path):
    """Opens a sample by its name."""
    opened = []

    def open_it(name, **options):
        opened.append(vantrel_fld.open(sample_path(name), **options))
        return opened[-1]

    yield open_it
    for dataset in opened:
        dataset.close()


@pytest.fixture
def odd_folder(tmp_path) -> Path:
    """A folder of its own for the test with the datasets of odd_datasets.cpp."""
    program = os.environ.get("ODD_DATASETS")
    if program is None:
        pytest.skip("ODD_DATASETS does not name the program that writes them")
    subprocess.run([program, str(tmp_path)], check=True)
    return tmp_path


@pytest.fixture
def tank_copy(sample_folder, tmp_path) -> Path:
    """The folder of the tank's files, which may be changed."""
    return Path(shutil.copytree(sample_folder / "tank", tmp_path / "tank"))


@pytest.fixture
def edited(sample_path, tmp_path):
    """Writes a copy of a sample's first file with some bytes replaced by as many others."""

    def edit(name, **replaced):
        content = sample_path(name).read_bytes()
        for old, new in replaced.items():
            assert len(old.encode()) == len(new) and old.encode() in content
            content = content.replace(old.encode(), new)
        path = tmp_path / f"edited_{name}.fld"
        path.write_bytes(content)
        return path

    return edit
