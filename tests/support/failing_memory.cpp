#include "tests/support/failing_memory.h"

#include <cstddef>

FaultPlan& FailingMemory::plan() {
  static constinit FaultPlan the_plan;
  return the_plan;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker and the sanitizer ask for
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);

void* __wrap_malloc(size_t size) {
  return FailingMemory::plan().strikes() ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
  return FailingMemory::plan().strikes() ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* block, size_t size) {
  return FailingMemory::plan().strikes() ? nullptr : __real_realloc(block, size);
}

// AddressSanitizer otherwise ends the process where the C library returns null.
__attribute__((visibility("default"))) const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}
}
// NOLINTEND(bugprone-reserved-identifier)
