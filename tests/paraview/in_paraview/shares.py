"""What each rank has of a dataset. In a module of its own, because a programmable filter puts other functions in the place of
sum, min and max in the main one."""
import sys

from paraview import servermanager, simple

# Runs on every rank: a point (rank, part, cells) for each part.
COUNT_CELLS = """
from vtkmodules.vtkCommonCore import vtkPoints
from vtkmodules.vtkParallelCore import vtkMultiProcessController
counts = vtkPoints()
parts = self.GetInputDataObject(0, 0)
for part in range(parts.GetNumberOfPartitionedDataSets()):
    share = parts.GetPartition(part, 0)
    cells = share.GetNumberOfCells() if share else 0
    counts.InsertNextPoint(vtkMultiProcessController.GetGlobalController().GetLocalProcessId(), part, cells)
self.GetOutputDataObject(0).SetPoints(counts)
"""


def check(reader, sample):
    """The shares of a part are as long as each other, within one cell."""
    counter = simple.ProgrammableFilter(Input=reader, OutputDataSetType="vtkPolyData", Script=COUNT_CELLS)
    simple.UpdatePipeline(proxy=counter)
    counts = servermanager.Fetch(counter).GetPoints()
    simple.Delete(counter)
    cells_of_part = {}
    cells_of_rank = {}
    for i in range(counts.GetNumberOfPoints()):
        rank, part, cells = (int(number) for number in counts.GetPoint(i))
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
    if sum(cells_of_rank.values()) != reader.GetDataInformation().GetNumberOfCells():
        sys.exit(f"{sample}: the shares are not the whole")
