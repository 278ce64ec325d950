#include "tests/reader/linked_entry_points.h"

namespace reader_test {

const host::EntryPoints& linked_entry_points() {
  static const host::EntryPoints table = [] {
    host::EntryPoints entry_points;
#define LINK_ENTRY_POINT(member) entry_points.member.function = ::USERD_##member;
    HOST_REQUIRED_ENTRY_POINTS(LINK_ENTRY_POINT)
    HOST_OPTIONAL_ENTRY_POINTS(LINK_ENTRY_POINT)
#undef LINK_ENTRY_POINT
    return entry_points;
  }();
  return table;
}

}  // namespace reader_test
