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
enum class Kind : std::int64_t { plan, cells, points, values, discard, end };

// The fixed-size beginning of every message.
struct Header {
  Kind kind = Kind::end;
  std::int64_t part = 0;
  std::int64_t variable = 0;
  std::int64_t count = 0;    // bytes, cells, points or tuples
  std::int64_t corners = 0;  // of all cells
  std::int64_t width = 0;    // components; 0 for no values
  Ending ending = Ending::complete;

  using Numbers = std::array<std::int64_t, 7>;
  Numbers numbers() const {
    return {static_cast<std::int64_t>(kind),  part, variable, count, corners, width,
            static_cast<std::int64_t>(ending)};
  }
  static Header from(const Numbers& n) {
    return {static_cast<Kind>(n[0]), n[1], n[2], n[3], n[4], n[5], static_cast<Ending>(n[6])};
  }
};

template <typename Value>
void send(vtkMultiProcessController* controller, const Value* values, std::int64_t count, int rank) {
  if (count > 0) controller->Send(values, static_cast<vtkIdType>(count), rank, kTag);
}

template <typename Value>
void receive(vtkMultiProcessController* controller, Value* values, std::int64_t count) {
  if (count > 0) controller->Receive(values, static_cast<vtkIdType>(count), kReader, kTag);
}

void send_header(vtkMultiProcessController* controller, const Header& header, int rank) {
  const Header::Numbers numbers = header.numbers();
  send(controller, numbers.data(), std::int64_t{numbers.size()}, rank);
}

Header receive_header(vtkMultiProcessController* controller) {
  Header::Numbers numbers{};
  receive(controller, numbers.data(), std::int64_t{numbers.size()});
  return Header::from(numbers);
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
  values->SetNumberOfComponents(static_cast<int>(header.width));
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
  const std::string bytes = to_bytes(plan);
  for (int rank = 1; rank < ranks_; ++rank) {
    send_header(controller_, {.kind = Kind::plan, .count = static_cast<std::int64_t>(bytes.size())}, rank);
    send(controller_, bytes.data(), static_cast<std::int64_t>(bytes.size()), rank);
  }
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
    const Header header = receive_header(controller);
    const auto part = static_cast<int>(header.part);
    switch (header.kind) {
      case Kind::plan: {
        std::string bytes(static_cast<std::size_t>(header.count), '\0');
        receive(controller, bytes.data(), header.count);
        store.follow(step_plan_from(bytes));
        break;
      }
      case Kind::cells:
        store.set_cells(part, receive_cells(controller, header));
        break;
      case Kind::points:
        store.set_points(part, receive_points(controller, header));
        break;
      case Kind::values:
        store.set_values(part, static_cast<int>(header.variable), receive_values(controller, header, info));
        break;
      case Kind::discard:
        store.discard(part);
        break;
      case Kind::end:
        if (header.ending == Ending::failed) store.clear();
        return header.ending;
    }
  }
}

void broadcast(vtkMultiProcessController* controller, std::string& text) {
  if (controller == nullptr || controller->GetNumberOfProcesses() == 1) return;
  auto size = static_cast<std::int64_t>(text.size());
  controller->Broadcast(&size, 1, kReader);
  text.resize(static_cast<std::size_t>(size));
  if (size > 0) controller->Broadcast(text.data(), static_cast<vtkIdType>(size), kReader);
}

void set_identity(vtkDataArray* values, const VariableInfo& variable) {
  values->SetName(variable.name.c_str());
  if (!variable.unit.empty()) {
    values->GetInformation()->Set(vtkDataArray::UNITS_LABEL(), variable.unit.c_str());
  }
}

}  // namespace paraview
