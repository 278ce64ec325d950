// operator new of a program's own objects, but not of the libraries that it loads. The program is linked
// with --wrap for each of these names.
#include <cstddef>
#include <new>

#include "tests/support/failing_memory.h"

FaultPlan& FailingMemory::plan() {
  static constinit FaultPlan the_plan;
  return the_plan;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker asks for
extern "C" {
void* __real__Znwm(std::size_t size);
void* __real__Znam(std::size_t size);
void* __real__ZnwmSt11align_val_t(std::size_t size, std::align_val_t alignment);

void* __wrap__Znwm(std::size_t size) {
  if (FailingMemory::plan().strikes()) throw std::bad_alloc();
  return __real__Znwm(size);
}
void* __wrap__Znam(std::size_t size) {
  if (FailingMemory::plan().strikes()) throw std::bad_alloc();
  return __real__Znam(size);
}
void* __wrap__ZnwmSt11align_val_t(std::size_t size, std::align_val_t alignment) {
  if (FailingMemory::plan().strikes()) throw std::bad_alloc();
  return __real__ZnwmSt11align_val_t(size, alignment);
}
}
// NOLINTEND(bugprone-reserved-identifier)
