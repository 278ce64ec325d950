#include "tests/paraview/controller_ranks.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>
#include <vtkCommunicator.h>
#include <vtkDataArray.h>
#include <vtkObjectFactory.h>
#include <vtkSmartPointer.h>

namespace paraview_test {
namespace {

// What the ranks send each other.
class Mail {
 public:
  void put(int from, int to, const void* data, std::size_t size) {
    const std::lock_guard lock(mutex_);
    longest = std::max(longest, size);
    boxes_[{from, to}].emplace_back(static_cast<const char*>(data), size);
    arrived_.notify_all();
  }
  void get(int from, int to, void* data, std::size_t size) {
    std::unique_lock lock(mutex_);
    auto& box = boxes_[{from, to}];
    const auto is_there = [&] { return !box.empty(); };
    if (!arrived_.wait_for(lock, std::chrono::minutes(1), is_there)) {
      std::cerr << "rank " << to << " waits for rank " << from << " in vain\n";
      std::abort();
    }
    EXPECT_EQ(box.front().size(), size);
    std::memcpy(data, box.front().data(), std::min(size, box.front().size()));
    box.pop_front();
  }

  std::size_t longest = 0;

 private:
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::map<std::pair<int, int>, std::deque<std::string>> boxes_;
};

class MailCommunicator : public vtkCommunicator {
 public:
  static MailCommunicator* New();
  vtkTypeMacro(MailCommunicator, vtkCommunicator);

  int SendVoidArray(const void* data, vtkIdType length, int type, int to, int /*tag*/) override {
    mail->put(LocalProcessId, to, data, static_cast<std::size_t>(length) * width(type));
    return 1;
  }
  int ReceiveVoidArray(void* data, vtkIdType length, int type, int from, int /*tag*/) override {
    mail->get(from, LocalProcessId, data, static_cast<std::size_t>(length) * width(type));
    return 1;
  }
  void set(Mail& with, int rank, int size) {
    mail = &with;
    MaximumNumberOfProcesses = size;
    SetNumberOfProcesses(size);
    LocalProcessId = rank;
  }

  Mail* mail = nullptr;

 private:
  static std::size_t width(int type) { return static_cast<std::size_t>(vtkDataArray::GetDataTypeSize(type)); }
};
vtkStandardNewMacro(MailCommunicator);

class MailController : public vtkMultiProcessController {
 public:
  static MailController* New();
  vtkTypeMacro(MailController, vtkMultiProcessController);

  void Initialize(int* /*argc*/, char*** /*argv*/, int /*initialized*/) override {}
  void Initialize(int* /*argc*/, char*** /*argv*/) override {}
  void Finalize() override {}
  void Finalize(int /*finalized*/) override {}
  void SingleMethodExecute() override {}
  void MultipleMethodExecute() override {}
  void CreateOutputWindow() override {}
  void set(vtkCommunicator* communicator) {
    Communicator = communicator;
    RMICommunicator = communicator;
    communicator->Register(this);
    communicator->Register(this);
  }
};
vtkStandardNewMacro(MailController);

}  // namespace

std::size_t run_on_ranks(int size, const std::function<void(vtkMultiProcessController*)>& work) {
  Mail mail;
  std::vector<std::thread> threads;
  for (int rank = 0; rank < size; ++rank) {
    threads.emplace_back([&, rank] {
      const auto communicator = vtkSmartPointer<MailCommunicator>::New();
      communicator->set(mail, rank, size);
      const auto controller = vtkSmartPointer<MailController>::New();
      controller->set(communicator);
      work(controller);
    });
  }
  for (std::thread& thread : threads) thread.join();
  return mail.longest;
}

}  // namespace paraview_test
