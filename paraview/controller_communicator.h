// The process group of VTK as a communicator.
#pragma once

#include <cstdint>
#include <memory>
#include <vtkMultiProcessController.h>

#include "parallel/communicator.h"

namespace paraview {

class ControllerCommunicator : public parallel::Communicator {
 public:
  // Messages of more than `longest` bytes go in several: MPI counts with 32 bits.
  explicit ControllerCommunicator(vtkMultiProcessController* controller,
                                  std::int64_t longest = std::int64_t{1} << 30);

  int rank() const override;
  int size() const override;
  void broadcast(std::string& bytes) override;
  void exchange(const std::vector<std::span<const std::byte>>& out,
                const std::vector<std::span<std::byte>>& in) override;
  std::vector<std::int64_t> gather(std::int64_t own) override;

 private:
  void send(std::span<const std::byte> bytes, int to);
  void receive(std::span<std::byte> bytes, int from);

  vtkMultiProcessController* controller_;
  std::int64_t longest_;
};

// The communicator of a controller's group; of this process alone without one.
std::unique_ptr<parallel::Communicator> make_communicator(vtkMultiProcessController* controller);

}  // namespace paraview
