#include "paraview/exchange.h"

#include <algorithm>
#include <vtkFloatArray.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>
#include <vtkNew.h>
#include <vtkTypeInt32Array.h>

namespace paraview {
namespace {

constexpr int kTag = 7304;
constexpr int kReader = 0;  // the rank that reads

// The kinds of messages.
enum class Kind { plan, cells, points, values, discard, end };

// The beginning of every message; arrays follow by themselves.
struct Header {
  Kind kind = Kind::end;
  int part = 0;
  int variable = 0;
  vtkTypeInt64 count = 0;    // cells, points or tuples
  vtkTypeInt64 corners = 0;  // of all cells
  int width = 0;             // components; 0 for no values
  Ending ending = Ending::complete;
};

void put(vtkMultiProcessStream& stream, const Header& header) {
  stream << static_cast<int>(header.kind) << header.part << header.variable << header.count << header.corners
         << header.width << static_cast<int>(header.ending);
}

Header take_header(vtkMultiProcessStream& stream) {
  Header header;
  header.kind = static_cast<Kind>(take<int>(stream));
  stream >> header.part >> header.variable >> header.count >> header.corners >> header.width;
  header.ending = static_cast<Ending>(take<int>(stream));
  return header;
}

template <typename Value>
void send(vtkMultiProcessController* controller, const Value* values, std::int64_t count, int rank) {
  if (count > 0) controller->Send(values, static_cast<vtkIdType>(count), rank, kTag);
}

template <typename Value>
void receive(vtkMultiProcessController* controller, Value* values, std::int64_t count) {
  if (count > 0) controller->Receive(values, static_cast<vtkIdType>(count), kReader, kTag);
}

void send_header(vtkMultiProcessController* controller, const Header& header, int rank) {
  vtkMultiProcessStream stream;
  put(stream, header);
  controller->Send(stream, rank, kTag);
}

vtkdata::Cells receive_cells(vtkMultiProcessController* controller, const Header& header) {
  vtkNew<vtkTypeInt32Array> offsets;
  vtkNew<vtkTypeInt32Array> corners;
  vtkdata::Cells cells{vtkSmartPointer<vtkCellArray>::New(), vtkSmartPointer<vtkUnsignedCharArray>::New()};
  cells.types->SetNumberOfValues(header.count);
  corners->SetNumberOfValues(header.corners);
  offsets->SetNumberOfValues(header.count + 1);
  receive(controller, cells.types->GetPointer(0), header.count);
  receive(controller, corners->GetPointer(0), header.corners);
  receive(controller, offsets->GetPointer(0), header.count + 1);
  cells.connectivity->SetData(offsets, corners);
  return cells;
}

vtkSmartPointer<vtkPoints> receive_points(vtkMultiProcessController* controller, const Header& header) {
  auto points = vtkSmartPointer<vtkPoints>::New();
  points->SetDataType(VTK_FLOAT);
  points->SetNumberOfPoints(header.count);
  receive(controller, vtkFloatArray::SafeDownCast(points->GetData())->GetPointer(0), header.count * 3);
  return points;
}

vtkSmartPointer<vtkDataArray> receive_values(vtkMultiProcessController* controller, const Header& header,
                                             const DatasetInfo& info) {
  if (header.width == 0) return nullptr;
  auto values = vtkSmartPointer<vtkFloatArray>::New();
  values->SetNumberOfComponents(header.width);
  values->SetNumberOfTuples(header.count);
  receive(controller, values->GetPointer(0), header.count * header.width);
  for (const VariableInfo& variable : info.variables) {
    if (variable.number == header.variable) set_identity(values, variable);
  }
  return values;
}

}  // namespace

Outlet::Outlet(ShareStore& own, vtkMultiProcessController* controller, int piece, int pieces)
    : own_(own), controller_(controller) {
  if (controller != nullptr) ranks_ = std::max(controller->GetNumberOfProcesses(), 1);
  share_count_ = ranks_ > 1 ? ranks_ : std::max(pieces, 1);
  own_share_ = ranks_ > 1 ? kReader : std::clamp(piece, 0, share_count_ - 1);
}

void Outlet::plan(const StepPlan& plan) {
  own_.follow(plan);
  if (ranks_ == 1) return;
  vtkMultiProcessStream stream;
  put(stream, Header{.kind = Kind::plan});
  put(stream, plan);
  for (int rank = 1; rank < ranks_; ++rank) controller_->Send(stream, rank, kTag);
}

void Outlet::cells(int share, int part, const vtkdata::Cells& cells) {
  if (is_own(share)) return own_.set_cells(part, cells);
  vtkTypeInt32Array* corners = cells.connectivity->GetConnectivityArray32();
  const Header header{.kind = Kind::cells,
                      .part = part,
                      .count = cells.types->GetNumberOfValues(),
                      .corners = corners->GetNumberOfValues()};
  send_header(controller_, header, share);
  send(controller_, cells.types->GetPointer(0), header.count, share);
  send(controller_, corners->GetPointer(0), header.corners, share);
  send(controller_, cells.connectivity->GetOffsetsArray32()->GetPointer(0), header.count + 1, share);
}

void Outlet::points(int share, int part, const vtkSmartPointer<vtkPoints>& points) {
  if (is_own(share)) return own_.set_points(part, points);
  const Header header{.kind = Kind::points, .part = part, .count = points->GetNumberOfPoints()};
  send_header(controller_, header, share);
  send(controller_, vtkFloatArray::SafeDownCast(points->GetData())->GetPointer(0), header.count * 3, share);
}

void Outlet::values(int share, int part, int variable, const vtkSmartPointer<vtkDataArray>& values) {
  if (is_own(share)) return own_.set_values(part, variable, values);
  Header header{.kind = Kind::values, .part = part, .variable = variable};
  if (values) {
    header.count = values->GetNumberOfTuples();
    header.width = values->GetNumberOfComponents();
  }
  send_header(controller_, header, share);
  if (values) {
    send(controller_, vtkFloatArray::SafeDownCast(values)->GetPointer(0), header.count * header.width, share);
  }
}

void Outlet::discard(int part) {
  own_.discard(part);
  for (int rank = 1; rank < ranks_; ++rank)
    send_header(controller_, {.kind = Kind::discard, .part = part}, rank);
}

void Outlet::end(Ending ending) {
  if (ending == Ending::failed) own_.clear();
  for (int rank = 1; rank < ranks_; ++rank)
    send_header(controller_, {.kind = Kind::end, .ending = ending}, rank);
}

Ending follow_transfer(vtkMultiProcessController* controller, ShareStore& store, const DatasetInfo& info) {
  while (true) {
    vtkMultiProcessStream stream;
    controller->Receive(stream, kReader, kTag);
    const Header header = take_header(stream);
    switch (header.kind) {
      case Kind::plan:
        store.follow(take_step_plan(stream));
        break;
      case Kind::cells:
        store.set_cells(header.part, receive_cells(controller, header));
        break;
      case Kind::points:
        store.set_points(header.part, receive_points(controller, header));
        break;
      case Kind::values:
        store.set_values(header.part, header.variable, receive_values(controller, header, info));
        break;
      case Kind::discard:
        store.discard(header.part);
        break;
      case Kind::end:
        if (header.ending == Ending::failed) store.clear();
        return header.ending;
    }
  }
}

void broadcast(vtkMultiProcessController* controller, vtkMultiProcessStream& stream) {
  if (controller != nullptr && controller->GetNumberOfProcesses() > 1) controller->Broadcast(stream, kReader);
}

void set_identity(vtkDataArray* values, const VariableInfo& variable) {
  values->SetName(variable.name.c_str());
  if (!variable.unit.empty()) {
    values->GetInformation()->Set(vtkDataArray::UNITS_LABEL(), variable.unit.c_str());
  }
}

}  // namespace paraview
