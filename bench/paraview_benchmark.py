"""Time and memory of the plug-in beside ParaView's own reader of .vtu files, for the same mesh.

  box_series FOLDER
  pvpython paraview_benchmark.py write PLUGIN FOLDER     writes FOLDER/vtu/box_<step>.vtu and .pvtu of two pieces
  pvbatch --sym paraview_benchmark.py fld PLUGIN FOLDER  measures the plug-in,
  pvbatch --sym paraview_benchmark.py vtu PLUGIN FOLDER  ParaView's reader (on several ranks that of .pvtu)
  pvbatch --sym paraview_benchmark.py large PLUGIN FOLDER  the whole mesh, a picture of its six sides, integrals
  pvpython paraview_benchmark.py opening PLUGIN FOLDER  how long opening takes: for box_series --volumes 20000

A measurement prints seconds, and in brackets those of the processor, for opening, reading the first step, its
picture (the mesh's surface, and drawing), reading the next step and its picture, integrating it, and the peak of each
rank's memory.
"""
import glob
import os
import sys
import time

from paraview import servermanager, simple

PART = "volume_1"
VARIABLE = "scalar_1"


def files_of(folder, extension):
    return sorted(glob.glob(os.path.join(folder, "" if extension == "fld" else "vtu", "box_?." + extension)))


def plug_in_reader(plugin, folder):
    simple.LoadPlugin(plugin, remote=False, ns=globals())
    reader = FLDReader(FileNames=files_of(folder, "fld"))  # noqa: F821, from the plug-in
    reader.UpdatePipelineInformation()
    reader.Parts = [PART]
    return reader


def write(plugin, folder):
    """Everything that the plug-in reads, uncompressed, whole and in two pieces."""
    from vtkmodules.vtkIOParallelXML import vtkXMLPUnstructuredGridWriter
    from vtkmodules.vtkIOXML import vtkXMLUnstructuredGridWriter

    def write_file(writer, grid, name):
        writer.SetInputData(grid)
        writer.SetFileName(os.path.join(folder, "vtu", name))
        writer.SetDataModeToAppended()
        writer.EncodeAppendedDataOff()
        writer.SetCompressorTypeToNone()
        writer.Write()

    os.makedirs(os.path.join(folder, "vtu"), exist_ok=True)
    reader = plug_in_reader(plugin, folder)
    for step, moment in enumerate(reader.TimestepValues):
        simple.UpdatePipeline(moment, reader)
        algorithm = reader.GetClientSideObject()
        whole = algorithm.GetOutputDataObject(0).GetPartition(0, 0)
        write_file(vtkXMLUnstructuredGridWriter(), whole, f"box_{step}.vtu")
        # The list of the pieces comes with copies of the whole, in whose place the pieces go.
        pieces = vtkXMLPUnstructuredGridWriter()
        pieces.SetNumberOfPieces(2)
        pieces.SetEndPiece(1)
        write_file(pieces, whole, f"box_{step}.pvtu")
        for piece in range(2):
            algorithm.UpdatePiece(piece, 2, 0)
            part = algorithm.GetOutputDataObject(0).GetPartition(0, 0)
            write_file(vtkXMLUnstructuredGridWriter(), part, f"box_{step}_{piece}.vtu")


def peak_memory():
    with open("/proc/self/status") as status:
        return [int(line.split()[1]) // 1024 for line in status if line.startswith("VmHWM")][0]


def measure(what, plugin, folder):
    rank = servermanager.vtkProcessModule.GetProcessModule().GetPartitionId()
    ranks = servermanager.vtkProcessModule.GetProcessModule().GetNumberOfLocalPartitions()
    view = simple.CreateView("RenderView")
    view.ViewSize = [600, 400]

    clocks = [(time.perf_counter(), time.process_time())]

    def tell():
        clocks.append((time.perf_counter(), time.process_time()))
        (before, busy_before), (now, busy_now) = clocks[-2:]
        return f"{now - before:.1f} s ({busy_now - busy_before:.1f})"

    if what == "fld":
        reader = plug_in_reader(plugin, folder)
    elif ranks > 1:
        reader = simple.XMLPartitionedUnstructuredGridReader(FileName=files_of(folder, "pvtu"))
    else:
        reader = simple.XMLUnstructuredGridReader(FileName=files_of(folder, "vtu"))
    reader.UpdatePipelineInformation()
    opening = tell()
    times = reader.TimestepValues
    simple.UpdatePipeline(times[0], reader)
    reading = tell()
    view.ViewTime = times[0]
    display = simple.Show(reader, view)
    simple.ColorBy(display, ("POINTS", VARIABLE))
    simple.ResetCamera(view)
    simple.Render(view)
    picture = tell()
    simple.UpdatePipeline(times[1], reader)
    next_reading = tell()
    view.ViewTime = times[1]
    simple.Render(view)
    next_picture = tell()
    integral = simple.IntegrateVariables(Input=reader)
    simple.UpdatePipeline(times[1], integral)
    integrating = tell()
    volume = integral.CellData["Volume"].GetRange()[1]

    cells = reader.GetDataInformation().GetNumberOfCells()
    peak = peak_memory()
    print(f"{what} rank {rank} of {ranks}: {cells} cells; opening {opening}, reading {reading}, picture {picture}, "
          f"next step: reading {next_reading}, picture {next_picture}, integral {integrating} (volume {volume:.6g}); "
          f"peak {peak} MiB", flush=True)


def large(plugin, folder):
    """What needs least comes first: the surface of the mesh takes ParaView more memory than the mesh."""
    rank = servermanager.vtkProcessModule.GetProcessModule().GetPartitionId()
    start = time.perf_counter()
    at_rest = peak_memory()

    def tell(what):
        print(f"rank {rank}: {what}; {time.perf_counter() - start:.1f} s, peak {peak_memory() - at_rest} MiB over ParaView "
              f"without data", flush=True)

    def result(arrays, name):
        """Which the first rank has."""
        return f"{arrays[name].GetRange()[1]:.6g}" if rank == 0 else "of the first rank"

    reader = plug_in_reader(plugin, folder)
    reader.Parts = ["ALL_ELEMENTS"]
    reader.PointArrays = [VARIABLE]
    reader.CellArrays = []
    simple.UpdatePipeline(0, reader)
    share = reader.GetClientSideObject().GetOutputDataObject(0).GetActualMemorySize() // 1024
    tell(f"read, a share of {share} MiB")
    integral = simple.IntegrateVariables(Input=reader)
    simple.UpdatePipeline(0, integral)
    tell(f"mesh integrated, volume {result(integral.CellData, 'Volume')}")
    sides = FLDReader(FileNames=files_of(folder, "fld"))  # noqa: F821, from the plug-in
    sides.UpdatePipelineInformation()
    sides.PartTree = ["/Parts/Surfaces"]
    sides.PointArrays = [VARIABLE]
    view = simple.CreateView("RenderView")
    view.ViewSize = [600, 400]
    simple.ColorBy(simple.Show(sides, view), ("POINTS", VARIABLE))
    view.CameraPosition = [4, 3, 2]
    simple.ResetCamera(view)
    simple.SaveScreenshot(os.path.join(folder, "sides.png"), view)
    tell("drawn")
    integral = simple.IntegrateVariables(Input=sides)
    simple.UpdatePipeline(0, integral)
    tell(f"sides integrated, area {result(integral.CellData, 'Area')}")
    simple.Hide(sides, view)
    simple.Show(reader, view).Representation = "Outline"
    simple.Render(view)
    tell("outline drawn")
    display = simple.Show(reader, view)
    display.Representation = "Surface"
    simple.Render(view)
    tell("surface of the mesh drawn")


def opening(plugin, folder):
    """From the name of the file to the properties that the panel shows, five times."""
    simple.LoadPlugin(plugin, remote=False, ns=globals())
    for _ in range(5):
        start = time.perf_counter()
        reader = FLDReader(FileNames=files_of(folder, "fld"))  # noqa: F821, from the plug-in
        reader.UpdatePipelineInformation()
        print(f"{len(reader.Parts.Available)} parts: {time.perf_counter() - start:.2f} s", flush=True)
        simple.Delete(reader)


if __name__ == "__main__":
    task, plugin_path, data = sys.argv[1:4]
    if task == "write":
        write(plugin_path, data)
    elif task == "large":
        large(plugin_path, data)
    elif task == "opening":
        opening(plugin_path, data)
    else:
        measure(task, plugin_path, data)
