// The table of a reader library's entry points, one member each, named without the common prefix. A member's
// function type is that of the declaration in interface/userd_api.h.
#pragma once

#include "host/entry_point_list.h"
#include "interface/userd_api.h"

namespace host {

// One entry point: where it is in the loaded library (null when the library lacks it) and its plain name.
template <typename Signature>
struct EntryPoint;

template <typename Result, typename... Parameters>
struct EntryPoint<Result(Parameters...)> {
  Result (*function)(Parameters...) = nullptr;
  const char* name = "";

  explicit operator bool() const { return function != nullptr; }

  // Calls the function as it stands: no exception is translated, nothing is captured.
  Result operator()(Parameters... parameters) const { return function(parameters...); }
};

struct EntryPoints {
// A member's name cannot stand in parentheses.
// NOLINTNEXTLINE(bugprone-macro-parentheses)
#define HOST_DECLARE(member) EntryPoint<decltype(::USERD_##member)> member{nullptr, "USERD_" #member};
  HOST_REQUIRED_ENTRY_POINTS(HOST_DECLARE)
  HOST_OPTIONAL_ENTRY_POINTS(HOST_DECLARE)
#undef HOST_DECLARE
};

}  // namespace host
