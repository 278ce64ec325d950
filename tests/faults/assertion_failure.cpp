#include "tests/faults/assertion_failure.h"

#include "support/assertion.h"

namespace fld {

void fail_assertion(const char* expression, const char* module, unsigned /*line*/, const char* function) {
  throw faults::AssertionFailure(std::string(module) + ": " + function + ": " + expression);
}

}  // namespace fld
