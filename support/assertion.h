// The reader's assertions. They stay on in every build type: a broken invariant ends the process with the C
// library's assertion report.
#pragma once

namespace fld {

// Ends the process with the C library's report of a failed assertion of `expression`, with `module` shown as
// the source.
[[noreturn]] void fail_assertion(const char* expression, const char* module, unsigned line,
                                 const char* function);

}  // namespace fld

// Ends the process unless `condition` holds. `module` and `function` are what the report shows as the source
// and the function.
#define FLD_ASSERT(condition, module, function) FLD_ASSERT_AS(condition, #condition, module, function)

// The same with the text that the report quotes.
#define FLD_ASSERT_AS(condition, text, module, function) \
  (static_cast<bool>(condition) ? void(0) : fld::fail_assertion(text, module, __LINE__, function))
