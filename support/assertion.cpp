#include "support/assertion.h"

#undef NDEBUG  // glibc declares __assert_fail only when assertions are on
#include <assert.h>

namespace fld {

void fail_assertion(const char* expression, const char* module, unsigned line, const char* function) {
  __assert_fail(expression, module, line, function);
}

}  // namespace fld
