"""What each rank has of a dataset. In a module of its own, because a programmable filter puts other functions in the place of
sum, min and max in the main one."""
import sys

from paraview import servermanager, simple

# Runs on every rank: a point (rank, part, own cells) for each part. Cells of other ranks' shares do not count.
COUNT_CELLS = """
from vtkmodules.vtkCommonCore import vtkPoints
from vtkmodules.vtkCommonDataModel import vtkDataSetAttributes
from vtkmodules.vtkParallelCore import vtkMultiProcessController
counts = vtkPoints()
whole = self.GetInputDataObject(0, 0)
parts = range(whole.GetNumberOfPartitionedDataSets()) if whole.IsA("vtkPartitionedDataSetCollection") else [None]
for part in parts:
    # A filter may make several partitions of a share.
    shares = [whole] if part is None else [whole.GetPartition(part, i) for i in range(whole.GetNumberOfPartitions(part))]
    cells = 0
    for share in filter(None, shares):
        marks = share.GetCellData().GetArray(vtkDataSetAttributes.GhostArrayName())
        own = range(share.GetNumberOfCells())
        cells += len([i for i in own if not marks or not marks.GetValue(i) & vtkDataSetAttributes.DUPLICATECELL])
    counts.InsertNextPoint(vtkMultiProcessController.GetGlobalController().GetLocalProcessId(), part or 0, cells)
self.GetOutputDataObject(0).SetPoints(counts)
"""


def counts(source, time=None):
    """For each rank and part: (rank, part, own cells)."""
    counter = simple.ProgrammableFilter(Input=source, OutputDataSetType="vtkPolyData", Script=COUNT_CELLS)
    simple.UpdatePipeline(time, counter)
    points = servermanager.Fetch(counter).GetPoints()
    simple.Delete(counter)
    return [tuple(int(number) for number in points.GetPoint(i)) for i in range(points.GetNumberOfPoints())]


def own_cells(source, time=None):
    """The cells of all ranks, each once."""
    return sum(cells for _, _, cells in counts(source, time))


def check(reader, sample):
    """The shares of a part are as long as each other, within one cell."""
    cells_of_part = {}
    cells_of_rank = {}
    for rank, part, cells in counts(reader):
        cells_of_part.setdefault(part, []).append(cells)
        cells_of_rank[rank] = cells_of_rank.get(rank, 0) + cells
    for rank in sorted(cells_of_rank):
        print(f"{sample}: rank {rank} has {cells_of_rank[rank]} cells")
    ranks = servermanager.ActiveConnection.GetNumberOfDataPartitions()
    if sorted(cells_of_rank) != list(range(ranks)):
        sys.exit(f"{sample}: shares on the ranks {sorted(cells_of_rank)} of {ranks}")
    for part, cells in cells_of_part.items():
        if max(cells) - min(cells) > 1:
            sys.exit(f"{sample}: the shares of part {part} have {cells} cells")
