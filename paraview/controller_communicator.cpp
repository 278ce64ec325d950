#include "paraview/controller_communicator.h"

#include <algorithm>

namespace paraview {
namespace {

constexpr int kTag = 7304;

}  // namespace

ControllerCommunicator::ControllerCommunicator(vtkMultiProcessController* controller, std::int64_t longest)
    : controller_(controller), longest_(longest) {}

int ControllerCommunicator::rank() const {
  return controller_->GetLocalProcessId();
}

int ControllerCommunicator::size() const {
  return controller_->GetNumberOfProcesses();
}

void ControllerCommunicator::broadcast(std::string& bytes) {
  auto size = static_cast<std::int64_t>(bytes.size());
  controller_->Broadcast(&size, 1, 0);
  bytes.resize(static_cast<std::size_t>(size));
  for (std::int64_t begin = 0; begin < size; begin += longest_) {
    controller_->Broadcast(bytes.data() + begin, static_cast<vtkIdType>(std::min(longest_, size - begin)), 0);
  }
}

void ControllerCommunicator::send(std::span<const std::byte> bytes, int to) {
  const auto* from = reinterpret_cast<const char*>(bytes.data());
  const auto size = static_cast<std::int64_t>(bytes.size());
  for (std::int64_t begin = 0; begin < size; begin += longest_)
    controller_->Send(from + begin, static_cast<vtkIdType>(std::min(longest_, size - begin)), to, kTag);
}

void ControllerCommunicator::receive(std::span<std::byte> bytes, int from) {
  auto* to = reinterpret_cast<char*>(bytes.data());
  const auto size = static_cast<std::int64_t>(bytes.size());
  for (std::int64_t begin = 0; begin < size; begin += longest_)
    controller_->Receive(to + begin, static_cast<vtkIdType>(std::min(longest_, size - begin)), from, kTag);
}

// In each round every rank has one partner, which has it in turn; of a pair the lower one sends first, so
// nobody waits for who waits.
void ControllerCommunicator::exchange(const std::vector<std::span<const std::byte>>& out,
                                      const std::vector<std::span<std::byte>>& in) {
  const int own = rank();
  const int ranks = size();
  for (int round = 0; round < ranks; ++round) {
    const int partner = (round - own + ranks) % ranks;
    const auto index = static_cast<std::size_t>(partner);
    if (partner == own) continue;
    if (own < partner) send(out[index], partner);
    receive(in[index], partner);
    if (own > partner) send(out[index], partner);
  }
}

// MPI does this in fewer rounds than there are ranks.
std::vector<std::int64_t> ControllerCommunicator::gather(std::int64_t own) {
  std::vector<std::int64_t> all(static_cast<std::size_t>(size()));
  controller_->AllGather(&own, all.data(), 1);
  return all;
}

std::unique_ptr<parallel::Communicator> make_communicator(vtkMultiProcessController* controller) {
  if (controller == nullptr || controller->GetNumberOfProcesses() == 1) {
    return std::make_unique<parallel::SingleProcess>();
  }
  return std::make_unique<ControllerCommunicator>(controller);
}

}  // namespace paraview
