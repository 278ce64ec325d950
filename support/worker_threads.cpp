#include "support/worker_threads.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <pthread.h>
#include <sched.h>
#include <signal.h>

namespace fld {

namespace {

// Below this size, creating a thread costs more than it saves.
constexpr int64_t kDefaultLeastBytes = int64_t{4} << 20;
// The work is loops with few local variables. A host's limit of memory may not allow for the default stacks.
constexpr size_t kStackSize = size_t{256} << 10;

// A positive number from the environment.
std::optional<int64_t> positive_variable(const char* name) {
  const char* const text = getenv(name);
  if (text == nullptr) return {};
  const char* const end = text + strlen(text);
  int64_t value = 0;
  const auto [rest, error] = std::from_chars(text, end, value);
  return error == std::errc() && rest == end && value > 0 ? std::optional(value) : std::nullopt;
}

int usable_cores() {
  cpu_set_t cores;
  return sched_getaffinity(0, sizeof cores, &cores) == 0 ? CPU_COUNT(&cores) : 1;
}

// What a thread does.
struct Task {
  void (*work)(void* context, int k);
  void* context;
  int k;
  pthread_t thread;
};

void* run_task(void* task) {
  const auto* const mine = static_cast<const Task*>(task);
  mine->work(mine->context, mine->k);
  return nullptr;
}

// Blocks all signals: a new thread has the signal mask of its creator.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t before_;
};

// Creates threads for tasks[1] to tasks[count - 1]. Returns the first one that has none.
int create_threads(Task* tasks, int count) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return 1;
  int k = 1;
  if (pthread_attr_setstacksize(&attributes, kStackSize) == 0) {
    const SignalsBlocked blocked;
    while (k < count && pthread_create(&tasks[k].thread, &attributes, run_task, &tasks[k]) == 0) ++k;
  }
  pthread_attr_destroy(&attributes);
  return k;
}

}  // namespace

int threads_for(int64_t bytes) {
  static const int64_t least_bytes = positive_variable("FLD_THREADS_FROM").value_or(kDefaultLeastBytes);
  if (bytes < least_bytes) return 1;
  static const std::optional<int64_t> wanted = positive_variable("FLD_THREADS");
  return static_cast<int>(std::clamp<int64_t>(wanted ? *wanted : usable_cores(), 1, kMaxThreads));
}

void run_in_threads(int count, void (*work)(void* context, int k), void* context) {
  Task tasks[kMaxThreads];
  for (int k = 0; k < count; ++k) tasks[k] = {work, context, k, {}};
  const int created = create_threads(tasks, count);
  work(context, 0);
  for (int k = created; k < count; ++k) work(context, k);
  for (int k = 1; k < created; ++k) pthread_join(tasks[k].thread, nullptr);
}

}  // namespace fld
