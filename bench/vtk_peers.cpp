// The readers of VTK. Each selects one scalar, as a user does who looks at one.
#include <algorithm>
#include <stdexcept>
#include <vtkCGNSReader.h>
#include <vtkCellArray.h>
#include <vtkDataArraySelection.h>
#include <vtkFloatArray.h>
#include <vtkHDFReader.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkTypeInt64Array.h>
#include <vtkUnstructuredGrid.h>
#include <vtkUnstructuredGridReader.h>
#include <vtkUnstructuredGridWriter.h>
#include <vtkXMLUnstructuredGridReader.h>

#include "bench/comparison.h"
#include "bench/peer_files.h"
#include "bench/peers.h"
#include "vtk/grid_file.h"

namespace bench {

namespace {

constexpr vtkIdType kHexahedronCorners = 8;

vtkNew<vtkUnstructuredGrid> grid_of(const PeerMesh& mesh) {
  const auto nodes = static_cast<vtkIdType>(mesh.nodes);
  const auto elements = static_cast<vtkIdType>(mesh.elements);
  vtkNew<vtkFloatArray> places;
  places->SetNumberOfComponents(3);
  places->SetNumberOfTuples(nodes);
  vtkNew<vtkFloatArray> scalar;
  scalar->SetName(kPeerScalar);
  scalar->SetNumberOfTuples(nodes);
  for (vtkIdType n = 0; n < nodes; ++n) {
    for (int axis = 0; axis < 3; ++axis) places->SetTypedComponent(n, axis, mesh.axes[axis][n]);
    scalar->SetValue(n, mesh.scalar[n]);
  }
  vtkNew<vtkTypeInt64Array> corners;
  corners->SetNumberOfValues(elements * kHexahedronCorners);
  vtkNew<vtkTypeInt64Array> offsets;
  offsets->SetNumberOfValues(elements + 1);
  for (vtkIdType i = 0; i < elements * kHexahedronCorners; ++i) corners->SetValue(i, mesh.corners[i] - 1);
  for (vtkIdType e = 0; e <= elements; ++e) offsets->SetValue(e, e * kHexahedronCorners);
  vtkNew<vtkPoints> points;
  points->SetData(places);
  vtkNew<vtkCellArray> cells;
  cells->SetData(offsets, corners);
  vtkNew<vtkUnstructuredGrid> grid;
  grid->SetPoints(points);
  grid->SetCells(VTK_HEXAHEDRON, cells);
  grid->GetPointData()->SetScalars(scalar);
  return grid;
}

void select_scalar(vtkDataArraySelection* selection) {
  selection->DisableAllArrays();
  selection->EnableArray(kPeerScalar);
}

void check(vtkDataSet* data, std::size_t nodes, std::size_t elements) {
  auto* const grid = vtkUnstructuredGrid::SafeDownCast(data);
  vtkDataArray* const scalar = grid == nullptr ? nullptr : grid->GetPointData()->GetArray(kPeerScalar);
  if (scalar == nullptr || scalar->GetNumberOfTuples() != static_cast<vtkIdType>(nodes) ||
      grid->GetNumberOfPoints() != static_cast<vtkIdType>(nodes) ||
      grid->GetNumberOfCells() != static_cast<vtkIdType>(elements) ||
      grid->GetCells()->GetNumberOfConnectivityIds() !=
          static_cast<vtkIdType>(elements) * kHexahedronCorners) {
    throw std::runtime_error("a peer did not read the mesh");
  }
}

#ifdef BENCH_HAS_CGNS
// The first grid somewhere below a block; null when there is none.
vtkUnstructuredGrid* first_grid(vtkDataObject* block) {
  if (auto* const grid = vtkUnstructuredGrid::SafeDownCast(block)) return grid;
  auto* const blocks = vtkMultiBlockDataSet::SafeDownCast(block);
  for (unsigned i = 0; blocks != nullptr && i < blocks->GetNumberOfBlocks(); ++i) {
    if (auto* const grid = first_grid(blocks->GetBlock(i))) return grid;
  }
  return nullptr;
}
#endif

}  // namespace

Peer vtu_peer() {
  Peer peer{.name = "vtu",
            .what = "VTK's reader of .vtu, appended raw",
            .extension = ".vtu",
            .time_goal = goal_of_threads(0.90, 0.55)};
  peer.write = [](const PeerMesh& mesh, const std::filesystem::path& path) {
    if (!vtkdata::write_grid(path, grid_of(mesh))) {
      throw std::runtime_error("cannot write " + path.string());
    }
  };
  peer.read = [](const std::filesystem::path& path, std::size_t nodes, std::size_t elements, Trial& trial) {
    const vtkNew<vtkXMLUnstructuredGridReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    select_scalar(reader->GetPointDataArraySelection());
    reader->Update();
    trial.end();
    check(reader->GetOutput(), nodes, elements);
  };
  return peer;
}

Peer legacy_peer() {
  Peer peer{.name = "legacy",
            .what = "VTK's reader of legacy binary .vtk",
            .extension = ".vtk",
            .time_goal = goal_of_threads(0.65, 0.40)};
  peer.write = [](const PeerMesh& mesh, const std::filesystem::path& path) {
    vtkNew<vtkUnstructuredGridWriter> writer;
    writer->SetFileName(path.c_str());
    writer->SetInputData(grid_of(mesh));
    writer->SetFileTypeToBinary();
    if (writer->Write() != 1) throw std::runtime_error("cannot write " + path.string());
  };
  peer.read = [](const std::filesystem::path& path, std::size_t nodes, std::size_t elements, Trial& trial) {
    const vtkNew<vtkUnstructuredGridReader> reader;
    reader->SetFileName(path.c_str());
    reader->SetScalarsName(kPeerScalar);
    reader->Update();
    trial.end();
    check(reader->GetOutput(), nodes, elements);
  };
  return peer;
}

Peer vtkhdf_peer() {
  Peer peer{.name = "vtkhdf", .what = "VTK's reader of VTKHDF", .extension = ".hdf", .time_goal = 0.5};
#ifdef BENCH_HAS_HDF5
  peer.write = write_vtkhdf;
  peer.read = [](const std::filesystem::path& path, std::size_t nodes, std::size_t elements, Trial& trial) {
    const vtkNew<vtkHDFReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    select_scalar(reader->GetPointDataArraySelection());
    reader->Update();
    trial.end();
    check(reader->GetOutputAsDataSet(), nodes, elements);
  };
#else
  peer.missing = "HDF5";
#endif
  return peer;
}

Peer cgns_peer() {
  Peer peer{.name = "cgns", .what = "VTK's reader of CGNS", .extension = ".cgns", .time_goal = 0.5};
#ifdef BENCH_HAS_CGNS
  peer.write = write_cgns;
  peer.read = [](const std::filesystem::path& path, std::size_t nodes, std::size_t elements, Trial& trial) {
    const vtkNew<vtkCGNSReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->EnableAllBases();
    reader->DisableAllPointArrays();
    reader->SetPointArrayStatus(kPeerScalar, 1);
    reader->Update();
    trial.end();
    check(first_grid(reader->GetOutput()), nodes, elements);
  };
#else
  peer.missing = "CGNS";
#endif
  return peer;
}

}  // namespace bench
