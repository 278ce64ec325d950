#include "support/worker_threads.h"

#include <atomic>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <pthread.h>
#include <sched.h>
#include <signal.h>

#include "support/pause.h"

namespace fld {

namespace {

// Below this size, creating a thread costs more than it saves.
constexpr int64_t kDefaultLeastBytes = int64_t{1} << 20;
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

cpu_set_t usable_cores() {
  cpu_set_t cores;
  if (sched_getaffinity(0, sizeof cores, &cores) != 0) CPU_ZERO(&cores);
  return cores;
}

// A piece of work, and the thread that was made for it.
struct Task {
  void (*work)(void* context, int k) = nullptr;
  void* context = nullptr;
  pthread_t thread = {};
  int k = 0;
  std::atomic<bool> is_taken = false;

  // Does the work unless another thread has begun it. Returns whether it did.
  bool run() {
    if (is_taken.exchange(true, std::memory_order_relaxed)) return false;
    work(context, k);
    return true;
  }
};

void* run_task(void* task) {
  static_cast<Task*>(task)->run();
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

// A thread that has not begun by then waits for a core with other work to do.
constexpr int64_t kLateStart = 500'000;  // ns
// While it is on, the system places the threads.
Pause pause_after_late_start;

// Number of threads for large arrays.
int most_threads(const cpu_set_t& cores) {
  static const std::optional<int64_t> wanted = positive_variable("FLD_THREADS");
  return static_cast<int>(std::clamp<int64_t>(wanted ? *wanted : CPU_COUNT(&cores), 1, kMaxThreads));
}

// Has new threads start on other cores than the calling thread, if there are enough. The system may start
// them on its core, and move them only after the milliseconds that the work takes.
void start_elsewhere(pthread_attr_t& attributes, cpu_set_t cores) {
  const int own = sched_getcpu();
  if (own < 0 || most_threads(cores) > CPU_COUNT(&cores) || pause_after_late_start.is_on()) return;
  CPU_CLR(static_cast<size_t>(own), &cores);
  pthread_attr_setaffinity_np(&attributes, sizeof cores, &cores);
}

// Creates threads for tasks[1] to tasks[count - 1]. Returns the first one that has none.
int create_threads(Task* tasks, int count, const cpu_set_t& cores) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return 1;
  int k = 1;
  if (pthread_attr_setstacksize(&attributes, kStackSize) == 0) {
    const SignalsBlocked blocked;
    start_elsewhere(attributes, cores);
    while (k < count && pthread_create(&tasks[k].thread, &attributes, run_task, &tasks[k]) == 0) ++k;
  }
  pthread_attr_destroy(&attributes);
  return k;
}

}  // namespace

int threads_for(int64_t bytes) {
  static const int64_t least_bytes = positive_variable("FLD_THREADS_FROM").value_or(kDefaultLeastBytes);
  return bytes < least_bytes ? 1 : most_threads(usable_cores());
}

void run_in_threads(int count, void (*work)(void* context, int k), void* context) {
  Task tasks[kMaxThreads];
  for (int k = 0; k < count; ++k) {
    tasks[k].work = work;
    tasks[k].context = context;
    tasks[k].k = k;
  }
  const cpu_set_t cores = usable_cores();
  const int created = create_threads(tasks, count, cores);
  const int64_t start = nanoseconds(CLOCK_MONOTONIC);
  tasks[0].run();
  const bool was_long = nanoseconds(CLOCK_MONOTONIC) - start > kLateStart;
  for (int k = 1; k < count; ++k) {
    const bool had_not_begun = tasks[k].run();
    if (had_not_begun && was_long) pause_after_late_start.begin();
  }
  for (int k = 1; k < created; ++k) {
    pthread_setaffinity_np(tasks[k].thread, sizeof cores, &cores);
    pthread_join(tasks[k].thread, nullptr);
  }
}

}  // namespace fld
