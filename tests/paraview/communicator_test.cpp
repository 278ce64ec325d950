// Messages through a controller of VTK: who sends to whom, and how long they are.
#include <condition_variable>
#include <cstring>
#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <mutex>
#include <numeric>
#include <thread>
#include <vtkCommunicator.h>
#include <vtkDataArray.h>
#include <vtkMultiProcessController.h>
#include <vtkObjectFactory.h>

#include "paraview/controller_communicator.h"

namespace paraview_test {
namespace {

// What the ranks, threads here, send each other.
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
    arrived_.wait(lock, [&] { return !box.empty(); });
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

// Runs `work` on every rank.
template <typename Work>
std::size_t longest_message(int size, std::int64_t longest, Work work) {
  Mail mail;
  std::vector<std::thread> threads;
  for (int rank = 0; rank < size; ++rank) {
    threads.emplace_back([&, rank] {
      const auto communicator = vtkSmartPointer<MailCommunicator>::New();
      communicator->set(mail, rank, size);
      const auto controller = vtkSmartPointer<MailController>::New();
      controller->set(communicator);
      paraview::ControllerCommunicator ranks(controller, longest);
      work(ranks);
    });
  }
  for (std::thread& thread : threads) thread.join();
  return mail.longest;
}

// What rank `from` has for rank `to`.
std::vector<std::byte> parcel(int from, int to) {
  std::vector<std::byte> bytes(static_cast<std::size_t>(7 * from + 3 * to));
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::byte>(i + static_cast<std::size_t>(from));
  return bytes;
}

TEST(ControllerCommunicators, BringEveryRankWhatTheOthersHaveForIt) {
  for (const int size : {2, 3, 5}) {
    longest_message(size, 8, [size](parallel::Communicator& ranks) {
      ASSERT_EQ(ranks.size(), size);
      std::vector<std::vector<std::byte>> sent;
      std::vector<std::vector<std::byte>> received;
      for (int r = 0; r < size; ++r) {
        sent.push_back(parcel(ranks.rank(), r));
        received.emplace_back(parcel(r, ranks.rank()).size());
      }
      const std::vector<std::span<const std::byte>> out(sent.begin(), sent.end());
      const std::vector<std::span<std::byte>> in(received.begin(), received.end());
      ranks.exchange(out, in);
      for (int r = 0; r < size; ++r) {
        if (r == ranks.rank()) continue;
        EXPECT_EQ(received[static_cast<std::size_t>(r)], parcel(r, ranks.rank()));
      }
    });
  }
}

TEST(ControllerCommunicators, GatherWhatEveryRankGives) {
  for (const int size : {2, 3, 5}) {
    longest_message(size, 8, [size](parallel::Communicator& ranks) {
      constexpr std::int64_t kBillions = 5000000000;
      const std::vector<std::int64_t> all = ranks.gather(kBillions + ranks.rank());
      ASSERT_EQ(all.size(), static_cast<std::size_t>(size));
      for (int r = 0; r < size; ++r) EXPECT_EQ(all[static_cast<std::size_t>(r)], kBillions + r);
    });
  }
}

TEST(ControllerCommunicators, SendLongMessagesInPieces) {
  const auto exchange = [](parallel::Communicator& ranks) {
    std::vector<std::byte> sent(1000, std::byte{7});
    std::vector<std::byte> received(1000);
    const std::span<const std::byte> out(sent);
    const std::span<std::byte> in(received);
    ranks.exchange({out, out}, {in, in});
    EXPECT_EQ(received, sent);
  };
  EXPECT_EQ(longest_message(2, 64, exchange), 64U);
  EXPECT_EQ(longest_message(2, 4096, exchange), 1000U);
}

}  // namespace
}  // namespace paraview_test
