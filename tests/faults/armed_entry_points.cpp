#include "tests/faults/armed_entry_points.h"

#include "tests/faults/failing_files.h"
#include "tests/support/failing_memory.h"

namespace faults {
namespace {

struct InsideCall {
  InsideCall() {
    FailingMemory::plan().resume();
    FailingFiles::plan().resume();
  }
  ~InsideCall() {
    FailingMemory::plan().pause();
    FailingFiles::plan().pause();
  }
  InsideCall(const InsideCall&) = delete;
  InsideCall& operator=(const InsideCall&) = delete;
};

template <auto EntryPoint>
struct Armed;

template <class Result, class... Parameters, Result (*EntryPoint)(Parameters...)>
struct Armed<EntryPoint> {
  static Result call(Parameters... parameters) {
    const InsideCall inside;
    return EntryPoint(parameters...);
  }
};

}  // namespace

const host::EntryPoints& armed_entry_points() {
  static const host::EntryPoints table = [] {
    host::EntryPoints entry_points;
#define ARM_ENTRY_POINT(member) entry_points.member.function = &Armed<&::USERD_##member>::call;
    HOST_REQUIRED_ENTRY_POINTS(ARM_ENTRY_POINT)
    HOST_OPTIONAL_ENTRY_POINTS(ARM_ENTRY_POINT)
#undef ARM_ENTRY_POINT
    return entry_points;
  }();
  return table;
}

}  // namespace faults
