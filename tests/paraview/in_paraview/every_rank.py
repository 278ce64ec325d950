"""every_rank.py PLUGIN FOLDER, in pvbatch --sym: what each rank tells. All of them tell the same progress of reading, stop where
the first one aborts it, and read the rest at the next update; an error is one message, of the first rank."""
import glob
import os
import shutil
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import plugin
from paraview import servermanager, simple
from vtkmodules.vtkCommonCore import vtkOutputWindow
from vtkmodules.vtkParallelCore import vtkMultiProcessController

PARTS = 20
VARIABLES = ["Pressure", "Velocity"]
ITEMS = PARTS * (1 + len(VARIABLES))  # a mesh and the variables of each part

options = plugin.arguments("folder")
plugin.load(options)
rank = servermanager.vtkProcessModule.GetProcessModule().GetPartitionId()
errors = []
told = []
stop_at = None


def note_error(_window, _event, text):
    errors.append(text)


def note_progress(algorithm, _event):
    told.append(algorithm.GetProgress())
    if rank == 0 and len(told) == stop_at:
        algorithm.SetAbortExecute(1)


note_error.CallDataType = "string0"
vtkOutputWindow.GetInstance().AddObserver("ErrorEvent", note_error)


def check(what, got, wanted):
    if got != wanted:
        sys.exit(f"rank {rank}: {what}: {got}, not {wanted}")


def open_dataset(file):
    dataset = plugin.open_dataset(file)
    dataset.UpdatePipelineInformation()
    return dataset


def update(dataset, time):
    """Whether each part that is there has the first variable's values."""
    told.clear()
    errors.clear()
    simple.UpdatePipeline(time, dataset)
    output = dataset.GetClientSideObject().GetOutputDataObject(0)
    grids = [output.GetPartition(i, 0) for i in range(output.GetNumberOfPartitionedDataSets())]
    return [grid.GetPointData().HasArray(VARIABLES[0]) == 1 if grid else None for grid in grids]


def check_progress(tank):
    global stop_at
    tank.Parts = tank.Parts.Available
    tank.PointArrays = VARIABLES
    tank.CellArrays = []
    tank.GetClientSideObject().AddObserver("ProgressEvent", note_progress)
    check("parts", update(tank, times[0]), [True] * PARTS)
    check("progress", [round(done * ITEMS) for done in told if 0 < done < 1], list(range(1, ITEMS)))
    # The meshes of all parts, and the first variable of two.
    stop_at = next(i for i, done in enumerate(told) if round(done * ITEMS) == PARTS + 2) + 1
    check("parts after the abort", update(tank, times[1]), [True] * 2 + [False] * (PARTS - 2))
    stop_at = None
    check("parts of the next step", update(tank, times[2]), [True] * PARTS)
    check("parts of the step that was aborted", update(tank, times[1]), [True] * PARTS)


def check_errors(folder):
    """A step without its file, and then the same dataset without its first one."""
    for file in glob.glob(os.path.join(options.folder, "tank", "*.fld")):
        if rank == 0:
            shutil.copy(file, folder)
    controller.Barrier()
    tank = open_dataset(os.path.join(folder, "tank_0.fld"))
    expected = [1 if rank == 0 else 0, []]

    def said(cause):
        return [len(errors), [text for text in errors if cause not in text]]

    for lost, cause in ("tank_30.fld", "cannot read 'Pressure' and 2 more on part 'ALL_ELEMENTS'"), ("tank_0.fld", "cannot open"):
        controller.Barrier()
        if rank == 0:
            os.remove(os.path.join(folder, lost))
        controller.Barrier()
        if lost == "tank_0.fld":
            errors.clear()
            simple.ReloadFiles(tank)
            tank.UpdatePipelineInformation()
            simple.UpdatePipeline(times[0], tank)
        else:
            check("parts of a step without its file", update(tank, times[3]), [True])
        check(f"messages without {lost}", said(cause), expected)


controller = vtkMultiProcessController.GetGlobalController()
sound = open_dataset(os.path.join(options.folder, "tank", "tank_0.fld"))
times = sound.TimestepValues
check_progress(sound)
# In one place for all ranks, which only the first one makes.
scratch = os.path.join(options.folder, "every_rank")
if rank == 0:
    shutil.rmtree(scratch, ignore_errors=True)
    os.makedirs(scratch)
controller.Barrier()
check_errors(scratch)
check("parts of the sound dataset", update(sound, times[2]), [True] * PARTS)
print(f"rank {rank}: as wanted", flush=True)
